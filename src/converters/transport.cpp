#include "converters/transport.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <limits>

#include "converters/folder_names.h"
#include "converters/gms_concentrations.h"
#include "converters/model_state.h"
#include "formats/concentration_records.h"
#include "formats/mt3d_settings.h"

namespace plx {
namespace {

const char* message_of(ConcentrationField field) {
    switch (field) {
        case ConcentrationField::kTransportStep:
            return "MT3D : parseConcentration - Invalid Transport Step\n";
        case ConcentrationField::kStep:
            return "MT3D : parseConcentration - Invalid Timestep Index\n";
        case ConcentrationField::kPeriod:
            return "MT3D : parseConcentration - Invalid Time Period Index\n";
        case ConcentrationField::kTime:
            return "MT3D : parseConcentration - Invalid Time\n";
        case ConcentrationField::kText:
            return "MT3D : parseConcentration - Invalid Text\n";
        case ConcentrationField::kColumns:
            return "MT3D : parseConcentration - Invalid NCOL\n";
        // The x is part of the text that hosts look for.
        case ConcentrationField::kRows:
            return "MT3D : parseConcentration - Invalid NROWx\n";
        case ConcentrationField::kLayer:
            return "MT3D : parseConcentration - Invalid ILAY\n";
        default:
            return "MT3D : parseConcentration - Invalid concentration value\n";
    }
}

/// Names to try under the conversion's rules; the first `plain` of them are those of the plain rules.
std::vector<std::string> names_to_try(const ModelState& model, int number, std::size_t& plain) {
    const std::string title = model.factory.project_file.GetFileTitle().c_str();
    std::vector<std::string> names = species_file_names(title, number, model.transport.naming_style);
    plain = names.size();
    if (!model.factory.reading_rules.result_files_by_content) return names;
    const std::string digits = three_digits(number);
    for (const std::string& name :
         {title + digits + ".ucn", title + "." + digits + ".ucn", "mt3d" + digits + ".ucn"}) {
        if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
    }
    return names;
}

void add_species(ModelState& model, const FolderNames& folder, int number) {
    std::size_t plain = 0;
    const std::vector<std::string> names = names_to_try(model, number, plain);
    FolderNames::Opened found = folder.open_first(names);
    if (!found.stream) {
        tell_missing(model, folder, names.front(), number);
        return;
    }
    if (found.tried >= plain) model.factory.report.rules_used.result_files_by_content = true;
    SpeciesFile species;
    species.number = number;
    species.stream = std::move(found.stream);
    if (adopt_species(model, found.path, species)) model.transport.species.push_back(std::move(species));
}

/// Tells why there is no further time: a file cut within it, or one that ends before the others.
void tell_end(ModelState& model, const SpeciesFile& species, int layer, std::int64_t position) {
    const RecordFile& file = *species.file;
    const bool cut = layer > 0 || position < file.size();
    if (cut) model.note(file.place(position) + ": the concentrations of this time are cut short");
    warn_of_end(model, species, cut);
}

/// Species are written together, as if all stood at the last one's time.
void compare_times(ModelState& model, const SpeciesFile& species, float time, float first_time) {
    if (time == first_time || model.transport.told_other_times) return;
    model.transport.told_other_times = true;
    model.warn(species.name() + ": stands at time " + std::to_string(time) +
               " where the first species is at " + std::to_string(first_time));
}

/// By the plain rules records count in their order, whatever layer they name, as those of heads do.
bool takes_any_layer(const ModelState& model) { return !model.factory.reading_rules.head_records_only; }

/// Reads one layer; false after a message.
bool read_layer(ModelState& model, SpeciesFile& species, int layer, double* values, float& time) {
    RecordFile& in = *species.file;
    const std::int64_t position = in.position();
    LayerHeader header;
    ConcentrationField field = read_concentration_header(in, header);
    if (field == ConcentrationField::kNone) {
        const bool any = takes_any_layer(model);
        const std::string fault =
            concentration_grid_fault(header, model.size(), any ? header.layer : layer + 1);
        if (!fault.empty()) {
            model.fail(in.place(position) + ": " + fault);
            return false;
        }
        if (header.layer != layer + 1 && !species.told_layers) {
            species.told_layers = true;
            model.warn(in.place(position) + ": layer " + std::to_string(header.layer) +
                       " is taken for layer " + std::to_string(layer + 1));
        }
        if (!in.read_reals(values, model.size().per_layer())) field = ConcentrationField::kValues;
    }
    time = static_cast<float>(header.total_time);
    if (field == ConcentrationField::kNone) return true;
    std::printf("%s", message_of(field));
    tell_end(model, species, layer, position);
    return false;
}

/// Reads a time of one species, a value for each cell; false after a message.
bool read_species(ModelState& model, SpeciesFile& species, double* values, float& time) {
    if (species.steps) return read_gms_step(model, species, values, time);
    const GridSize size = model.size();
    for (int layer = 0; layer < size.layers; ++layer, values += size.per_layer()) {
        if (!read_layer(model, species, layer, values, time)) return false;
    }
    return true;
}

}  // namespace

std::string three_digits(int number) {
    std::string text = std::to_string(number);
    return std::string(3 - std::min<std::size_t>(text.size(), 3), '0') + text;
}

void tell_missing(ModelState& model, const FolderNames& folders, const std::string& name, int number) {
    std::printf("MT3D : Write_File - Error opening %s for input\n", folders.first_path(name).c_str());
    const VX1DArray<String>& names = model.factory.species_names;
    if (number > names.GetSize() || names[number - 1].length() == 0) return;
    model.warn(name + ": the concentrations of species " + names[number - 1].c_str() + " are not there");
}

bool adopt_species(ModelState& model, const std::string& path, SpeciesFile& species) {
    const std::string name = display_name(path);
    species.file = std::make_unique<RecordFile>(species.stream.get(), name);
    const auto layout = detect_layer_layout(species.stream.get());
    const bool plain = !model.factory.reading_rules.result_files_by_content;
    if (!layout) {
        // By the plain rules a file that ends within its first header ends the transport times.
        if (plain && species.file->size() < kConcentrationHeader) return true;
        model.fail(name + ": byte 0: no concentration record begins here");
        return false;
    }
    if (!adopt_layout(model, *species.file, *layout)) return false;
    const std::string fault =
        check_first_concentrations(*species.file, model.size(), takes_any_layer(model), species.time_bytes);
    if (!fault.empty()) model.fail(fault);
    return fault.empty();
}

void warn_of_end(ModelState& model, const SpeciesFile& species, bool cut) {
    if (cut) {
        model.warn(species.name() + ": the transport results end with the last time that is whole");
        return;
    }
    const auto& all = model.transport.species;
    const bool first = &species == &all.front();
    const bool others_go_on =
        std::any_of(all.begin(), all.end(), [](const SpeciesFile& s) { return !s.at_end(); });
    if (first && !others_go_on) return;
    model.warn(species.name() + ": ends before the other species do, whose later times are left out");
}

void read_transport_settings(ModelState& model, const FolderNames& folders) {
    ConverterFactory& f = model.factory;
    if (model.transport.settings_read || f.species_names.GetSize() > 0) return;
    const auto is_set = [&f] { return f.mt3d_project_file.GetFilePath().length() > 0; };
    if (!is_set() && f.porosity_file.GetFileExtension() == "mts") f.mt3d_project_file = f.porosity_file;
    if (!is_set() && f.reading_rules.result_files_by_content) {
        if (const auto beside = folders.find((f.project_file.GetFileTitle() + ".mts").c_str())) {
            f.mt3d_project_file = VXFile(beside->c_str());
            f.report.rules_used.result_files_by_content = true;
        }
    }
    if (is_set()) f.parseMTS();
}

std::vector<std::string> species_file_names(const std::string& title, int number, int style) {
    const std::string digits = three_digits(number);
    if (style == 0) return {title + std::to_string(number) + ".ucn"};
    if (style == 1) return {title + "." + digits + ".ucn"};
    return {title + digits + ".ucn", title + "." + digits + ".ucn"};
}

void find_concentrations(ModelState& model) {
    std::printf("Determing MT3D file names\n");
    model.transport.species.clear();
    const FolderNames folder({model.factory.project_file.GetDirectoryName()});
    read_transport_settings(model, folder);
    // A model without cells, of which nothing was read, has no grid that a file could fit.
    if (model.flags.empty() || model.size().cells() == 0) return;
    for (int number = 1; number <= kMostSpecies; ++number) add_species(model, folder, number);
}

bool has_concentrations(const ModelState& model) { return !model.transport.species.empty(); }

int count_transport_times(const ModelState& model) {
    std::int64_t times = has_concentrations(model) ? std::numeric_limits<int>::max() : 0;
    for (const SpeciesFile& species : model.transport.species) {
        times = std::min(times, species.times());
    }
    return static_cast<int>(times);
}

bool read_transport_time(ModelState& model, VXArray<double>& values, float& time) {
    auto& all = model.transport.species;
    if (all.empty()) return false;
    const GridSize size = model.size();
    const int cells = static_cast<int>(size.cells()), count = static_cast<int>(all.size());
    const bool sized = values.dims.ires() == cells && values.dims.jres() == count &&
                       values.dims.kres() == 1 && values.dims.veclen() == 1;
    if (!sized && !values.SetDimensions(cells, count, 1, 1)) {
        model.fail("no memory for " + std::to_string(count) + " concentrations in each of " +
                   std::to_string(cells) + " cells");
        return false;
    }
    double* next = values.data;
    float first_time = 0.0F;
    for (SpeciesFile& species : all) {
        if (!read_species(model, species, next, time)) return false;
        next += size.cells();
        if (&species == &all.front()) first_time = time;
        compare_times(model, species, time, first_time);
    }
    return true;
}

}  // namespace plx

int ConverterFactory::parseConcentration(VXArray<double>& values, float& time) {
    return plx::read_transport_time(model(), values, time) ? 1 : 0;
}

void ConverterFactory::parseMTS() {
    // Every converter prints this line, whatever its class: hosts look for it.
    std::printf("GMS_HDF5_Converter parseMTS\n");
    plx::ModelState& m = model();
    m.transport.settings_read = true;
    plx::Mt3dSettings settings;
    if (!plx::read_mt3d_settings(mt3d_project_file, settings, m.problems)) {
        const String name = mt3d_project_file.GetFileName();
        std::printf("MT3D : Write_File - Error opening .mts file [%s]\n", name.c_str());
        if (name.length() > 0) m.note(std::string(name.c_str()) + ": the MT3D settings cannot be opened");
        return;
    }
    for (const std::string& species : settings.species)
        species_names[species_names.GetSize()] = species.c_str();
    if (settings.start_date) start_date = *settings.start_date;
    if (settings.old_version) m.transport.naming_style = 1;
    m.transport.time_units = settings.time_units;
    m.report_problems();
    std::printf("End of species list\n");
    if (species_names.GetSize() == 0) std::printf("Project contains no MT3D data.\n");
}
