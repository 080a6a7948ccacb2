#include "converters/gms_concentrations.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <vector>

#include "converters/folder_names.h"
#include "converters/model_state.h"
#include "converters/transport.h"
#include "formats/gms_steps.h"
#include "formats/layer_records.h"

namespace plx {
namespace {

struct FieldTexts {
    GmsField field;
    const char* told;  ///< what hosts look for; empty where they know no text
    const char* meaning;
};

// Deliberate: spelling, blanks and line ends are those that hosts compare with.
constexpr std::array<FieldTexts, 18> kTexts{{
    {GmsField::kType, "MT3D : Write_File - Invalid Type\n", "no type"},
    {GmsField::kFloatSize, "MT3D : Write_File - Invalid Floating Type\n", "no size of the numbers"},
    {GmsField::kFlagSize, "MT3D : Write_File - Invalid status flag size", "no size of the status flags"},
    {GmsField::kObjectId, "MT3D : Write - FileInvalid Object ID\n", "no object number"},
    {GmsField::kValueCount, "MT3D : Write File - Invalid Number of data values\n", "no number of values"},
    {GmsField::kCellCount, "MT3D : Write File - FileInvalid Number of cells\n", "no number of cells"},
    {GmsField::kName, "MT3D : Write File - FileInvalid Object name\n", "no name"},
    {GmsField::kReferenceTime, "MT3D : Write File - Invalid Reference Time\n",
     "no reference time or status switch"},
    {GmsField::kActivity, "MT3D : Write File - Invalid ACTTS Value 0.000000\n", "no ACTTS value"},
    {GmsField::kMapping, "MT3D : Write File - Invalid MAPTS Value 0.000000\n", "no MAPTS value"},
    {GmsField::kTime, "MT3D : Write File - Invalid Time Size Time\n", "no time"},
    {GmsField::kStatus, "MT3D : Write File - Invalid Cell Status\n", "the cells' status is cut short"},
    {GmsField::kValue, "MT3D - Write FileInvalid Data Value 0.000000\n",
     "the concentrations of this time are cut short"},
    {GmsField::kTimeUnits, "", "no time units"},
    {GmsField::kMarkers, "", "no record markers where a record must end"},
    {GmsField::kVectors, "", "vectors where concentrations must be"},
    {GmsField::kNoStep, "", "the file ends before any time step"},
    {GmsField::kUnknownCards, "", "too many unknown cards, the file is damaged"},
}};

/// Prints a fault and keeps it in the report.
void tell_fault(ModelState& model, const SpeciesFile& species) {
    const GmsFault& fault = species.steps->fault();
    const std::string place = species.name() + ": byte " + std::to_string(fault.position) + ": ";
    if (fault.field == GmsField::kVersion) {
        std::printf("MT3D : Write_File - Invalid Version number in species file [%d]\t\n", species.number);
        model.note(place + "no GMS dataset file begins here");
    } else if (fault.field == GmsField::kOtherCount) {
        model.fail(place + std::to_string(fault.number) + " values, the time steps before have " +
                   std::to_string(species.steps->values()));
    }
    for (const FieldTexts& texts : kTexts) {
        if (texts.field != fault.field) continue;
        std::printf("%s", texts.told);
        if (*texts.told != '\0') {
            model.note(place + texts.meaning);
        } else {
            model.fail(place + texts.meaning);
        }
    }
}

void tell_unknown_card(std::int32_t card) {
    std::printf("MT3D : Write File - Invalid Card [%d] found\n", card);
}

/// Sets up the reading of an open GMS file; false after a message for one that does not belong to the model.
bool adopt_gms_file(ModelState& model, const std::string& path, SpeciesFile& species) {
    species.steps = std::make_unique<GmsSteps>(species.stream.get(), display_name(path));
    species.steps->on_unknown_card = tell_unknown_card;
    if (!species.steps->open()) {
        tell_fault(model, species);
        return false;
    }
    if (static_cast<std::size_t>(species.steps->values()) != model.size().cells()) {
        model.fail(species.name() + ": " + std::to_string(species.steps->values()) +
                   " concentrations in a time step, the model has " + std::to_string(model.size().cells()) +
                   " cells");
        return false;
    }
    if (species.steps->more_datasets()) {
        model.warn(species.name() + ": the first dataset is read, what follows it is left out");
    }
    return true;
}

/// Names to try, the one that GMS itself writes first.
std::vector<std::string> names_to_try(const ModelState& model, int number) {
    const ConverterFactory& f = model.factory;
    const std::string digits = three_digits(number);
    std::vector<std::string> names;
    const auto add = [&names](const std::string& name) {
        if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
    };
    for (const VXFile* file : {&f.project_file, &f.super_file}) {
        const std::string title = file->GetFileTitle().c_str();
        // GMS puts two zeros before every number, also before one of two digits.
        add(title + "00" + std::to_string(number) + ".con");
        if (!f.reading_rules.result_files_by_content) return names;
        for (const char* end : {".con", ".ucn"}) add(title + digits + end);
        add(title + "." + digits + ".ucn");
    }
    add("mt3d" + digits + ".ucn");
    return names;
}

void add_species(ModelState& model, const FolderNames& folders, int number) {
    const std::vector<std::string> names = names_to_try(model, number);
    FolderNames::Opened found = folders.open_first(names);
    if (!found.stream) {
        tell_missing(model, folders, names.front(), number);
        return;
    }
    SpeciesFile species;
    species.number = number;
    species.stream = std::move(found.stream);
    const bool by_content = model.factory.reading_rules.result_files_by_content;
    const bool layers = by_content && detect_layer_layout(species.stream.get()).has_value();
    if (layers || found.tried > 0) model.factory.report.rules_used.result_files_by_content = true;
    if (layers ? adopt_species(model, found.path, species) : adopt_gms_file(model, found.path, species)) {
        model.transport.species.push_back(std::move(species));
    }
}

}  // namespace

std::vector<String> gms_transport_folders(const ModelState& model) {
    const ConverterFactory& f = model.factory;
    const String project = f.project_file.GetDirectoryName();
    std::vector<String> folders = {project + "\\" + f.project_file.GetFileTitle() + "_MT3DMS"};
    if (!f.reading_rules.result_files_by_content) return folders;
    // The folder of the super file has the one for transport beside it, whatever the project's name is now.
    const String inputs = f.super_file.GetDirectoryName();
    const std::string beside = inputs.c_str();
    const std::size_t cut = beside.find_last_of('\\');
    if (cut != std::string::npos) {
        folders.push_back(
            (beside.substr(0, cut + 1) + f.super_file.GetFileTitle().c_str() + "_MT3DMS").c_str());
    }
    folders.push_back(inputs);
    folders.push_back(project);
    return folders;
}

void find_gms_concentrations(ModelState& model) {
    std::printf("Determing MT3D file names\n");
    model.transport.species.clear();
    const FolderNames folders(gms_transport_folders(model));
    read_transport_settings(model, folders);
    // A model without cells, of which nothing was read, has no grid that a file could fit.
    if (model.flags.empty() || model.size().cells() == 0) return;
    for (int number = 1; number <= kMostSpecies; ++number) add_species(model, folders, number);
}

bool read_gms_step(ModelState& model, SpeciesFile& species, double* values, float& time) {
    double read_time = 0.0;
    const GmsSteps::Next next = species.steps->next(values, read_time);
    time = static_cast<float>(read_time);
    if (next == GmsSteps::Next::kStep) return true;
    if (next == GmsSteps::Next::kFault) tell_fault(model, species);
    warn_of_end(model, species, next == GmsSteps::Next::kFault);
    return false;
}

}  // namespace plx
