#include "converters/gms_project.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>

#include "converters/gms_concentrations.h"
#include "converters/grid_steps.h"
#include "converters/project_steps.h"
#include "converters/time_axis.h"
#include "core/text_number.h"
#include "formats/hdf5_reader.h"
#include "formats/mt3d_settings.h"
#include "formats/super_file.h"
#include "platform/host_path.h"
#include "plxutils/core/VXFileReader.h"

namespace plx {
namespace {

constexpr const char* kNotFound = "%s file not found\n";
constexpr const char* kNotOpened = "Error opening file [%s]\n";
constexpr NameFileTexts kTexts = {kNotOpened, kNotOpened, kNotFound, kNotFound, kNotOpened};
constexpr const char* kNoNameFile = "MODFLOW : (*.mfn) does not exist.\n";
constexpr const char* kNameFileSet = "3DGridModule/3DGrid 0/MODFLOW Model 0/Name File";

/// The native path; of what does not exist as much as does, and the rest as it is stored.
std::string native(const VXFile& file) {
    std::string stored = file.GetFilePath().c_str();
    std::string found = platform::native_path(stored), rest;
    std::size_t end = stored.size();
    while (found.empty() && (end = stored.find_last_of('\\', end - 1)) != std::string::npos && end > 0) {
        rest = stored.substr(end);
        found = platform::native_path(stored.substr(0, end));
    }
    if (found.empty()) return stored;
    std::replace(rest.begin(), rest.end(), '\\',
                 static_cast<char>(std::filesystem::path::preferred_separator));
    return found + rest;
}

bool is_set(const VXFile& file) { return file.GetFilePath().length() > 0; }

/// The file itself with another extension.
VXFile with_extension(const VXFile& file, const String& folder, const char* extension) {
    return VXFile(folder, file.GetFileTitle() + "." + extension);
}

std::string trimmed_name(const std::string& text) {
    const std::size_t first = text.find_first_not_of(" \t\r\n"), last = text.find_last_not_of(" \t\r\n");
    return first == std::string::npos ? std::string() : text.substr(first, last - first + 1);
}

/// Prints the converters' texts for a super file's cards that hold no numbers.
void print_faults(const SuperFile& super, const GmsTexts& texts) {
    for (const SuperFile::Fault& fault : super.faults) {
        const bool date = fault.kind == SuperFile::Fault::Kind::kDate;
        std::printf(
            date ? "MODFLOW : Write_File - Error reading Reference Time! \n%s\n" : texts.bad_placement,
            fault.line.c_str());
    }
}

void store_super_file(ModelState& model, const SuperFile& super) {
    ConverterFactory& f = model.factory;
    if (!super.name_file.empty()) f.gms_name_file = VXFile(super.name_file.c_str());
    if (super.x_reversed) f.x_direction = -1;
    if (super.y_reversed) f.row_order = -1;
    if (super.z_reversed) f.z_direction = -1;
    if (super.origin) {
        f.x_origin = (*super.origin)[0];
        f.y_origin = (*super.origin)[1];
        f.z_origin = (*super.origin)[2];
    }
    if (super.rotation) f.rotation = *super.rotation;
    if (super.start_date) f.start_date = *super.start_date;
    if (!super.length_units.empty()) f.length_units = super.length_units.c_str();
    if (!super.time_units.empty()) f.time_units = super.time_units.c_str();
    model.default_material = super.default_material.value_or(0);
    int layer = 0;
    for (const int material : super.materials) f.layer_materials[layer++] = material;
    if (layer == 0 && super.default_material) f.layer_materials[0] = *super.default_material;
}

/// Where a problem of an input was found.
struct BadLine {
    int number = 0;
    std::string text;
};

/// Finds the lines that problems speak of. They come in the file's order, so it is read once.
class BadLines {
public:
    explicit BadLines(const std::string& stored) : prefix_(display_name(stored) + ": line ") {
        open_ = reader_.Open(stored.c_str());
    }
    /// A problem of another file stands for its line itself.
    BadLine of(const std::string& problem) {
        if (!problem.starts_with(prefix_)) return {0, problem};
        const int number = to_int(problem.substr(prefix_.size()));
        while (open_ && reader_.CurrentLineNumber() < number) {
            open_ = reader_.ReadLine("\r\n", false, true, false) >= 0;
            if (open_) last_ = reader_.CurrentLine().c_str();
        }
        return {number, last_};
    }

private:
    std::string prefix_;
    VXFileReader reader_;
    std::string last_;  ///< of the file, for a problem at its end
    bool open_ = false;
};

/// True for a problem that has the array's name as a word behind the names of files.
bool speaks_of(const std::string& problem, std::string_view array) {
    const auto in_word = [&problem](std::size_t at) {
        return at < problem.size() && std::isalnum(static_cast<unsigned char>(problem[at])) != 0;
    };
    std::size_t at = problem.ends_with(')') ? problem.rfind('(') : problem.find(": ");
    while (at != std::string::npos && (at = problem.find(array, at)) != std::string::npos) {
        if ((at == 0 || !in_word(at - 1)) && !in_word(at + array.size())) return true;
        at += array.size();
    }
    return false;
}

const char* text_of(const std::string& problem, const GmsTexts& texts) {
    if (speaks_of(problem, "DELR")) return texts.bad_columns;
    if (speaks_of(problem, "DELC")) return texts.bad_rows;
    return speaks_of(problem, "TOP") || speaks_of(problem, "BOTM") ? texts.bad_elevation : nullptr;
}

void print_bad_grid(ModelState& model, const std::string& stored, const GmsTexts& texts) {
    BadLines lines(stored);
    for (const std::string& problem : model.problems) {
        const char* text = text_of(problem, texts);
        if (text != nullptr) std::printf(text, lines.of(problem).text.c_str());
    }
}

void print_bad_status(ModelState& model, const std::string& stored) {
    BadLines lines(stored);
    for (const std::string& problem : model.problems) {
        if (!speaks_of(problem, "IBOUND")) continue;
        const BadLine bad = lines.of(problem);
        std::printf("MODFLOW : Write_File - Error reading cell status on line %d!\n%s\n", bad.number,
                    bad.text.c_str());
    }
}

bool is_result(const ModelState& model, const NameFileEntry& entry) {
    return entry.type == "DATA(BINARY)" && role_by_extension(model, entry.name) != ResultRole::kNone;
}

/// Notes a result file by its name; where files are known by their contents the first record decides later.
void mark_result(ModelState& model, const NameFileEntry& entry) {
    ConverterFactory& f = model.factory;
    if (f.reading_rules.result_files_by_content) return;
    const bool heads = role_by_extension(model, entry.name) == ResultRole::kHeads;
    (heads ? f.hed_unit : f.ccf_unit) = entry.unit;
    (heads ? f.head_file : f.flow_file) = VXFile(entry.path.c_str());
}

/// Settings for concentrations alone need not name one.
bool names_transport_package(const VXFile& settings) {
    Mt3dSettings read;
    Problems ignored;  // the date is another reader's business
    return read_mt3d_settings(settings, read, ignored) && !read.transport_package.empty();
}

/// Looks for the porosity's source, an MT3D project (.mts) or a porosity file (.ptk) named like the super
/// file, unless the host has set one. The MT3D project also gives the transport settings.
void find_porosity_source(ModelState& model) {
    ConverterFactory& f = model.factory;
    const bool given = is_set(f.porosity_file);
    std::vector<String> folders = {f.super_file.GetDirectoryName()};
    const bool by_content = f.reading_rules.result_files_by_content;
    if (by_content) {
        const std::vector<String> more = gms_transport_folders(model);
        folders.insert(folders.end(), more.begin(), more.end());
    }
    for (const char* extension : {"mts", "ptk"}) {
        for (const String& folder : folders) {
            const VXFile file = with_extension(f.super_file, folder, extension);
            if (!file.FileExists() || (given && file.GetFileExtension() != "mts")) continue;
            const bool settings = file.GetFileExtension() == "mts";
            if (settings && !is_set(f.mt3d_project_file)) f.mt3d_project_file = file;
            if (settings && by_content && !names_transport_package(file)) continue;
            if (!is_set(f.porosity_file)) f.porosity_file = file;
        }
    }
    if (given && !is_set(f.mt3d_project_file) && f.porosity_file.GetFileExtension() == "mts") {
        f.mt3d_project_file = f.porosity_file;
    }
}

/// The text of the dataset that names the super file. Letters may stand one by one.
std::string read_name_text(Hdf5Id project) {
    Hdf5Array<std::string> text;
    Hdf5Array<int> bytes;
    std::string name;
    if (read_hdf5(project, kNameFileSet, text)) {
        const bool letters = std::all_of(text.values.begin(), text.values.end(),
                                         [](const std::string& part) { return part.size() <= 1; });
        for (const std::string& part : text.values) {
            if (part.empty() || (!letters && !name.empty())) break;
            name += part;
        }
    } else if (read_hdf5(project, kNameFileSet, bytes)) {
        for (const int byte : bytes.values) {
            if (byte <= 0 || byte > 255) break;
            name += static_cast<char>(byte);
        }
    }
    return name;
}

/// What a super file may say that its model does not fit.
void check_units_and_materials(ModelState& model) {
    ConverterFactory& f = model.factory;
    const std::string name = display_name(f.super_file.GetFilePath().c_str());
    const std::string time = f.time_units.c_str();
    if (!time.empty() && time != "undefined" && !is_time_word(time, f.reading_rules.full_time_words)) {
        model.warn(name + ": the time unit \"" + time + "\" is not known, times count as days");
    }
    const int given = f.layer_materials.GetSize();
    if (given < 2 || given >= f.nlay) return;
    model.warn(name + ": MAT has " + std::to_string(given) + " materials for " + std::to_string(f.nlay) +
               " layers");
    for (int k = given; k < f.nlay; ++k) f.layer_materials[k] = model.default_material;
}

}  // namespace

bool find_super_file(ModelState& model) {
    ConverterFactory& f = model.factory;
    const VXFile& project = f.project_file;
    const Hdf5Handle file = open_hdf5_file(project.GetFilePath().c_str());
    if (!file) {
        model.fail(native(project) + ": the project cannot be read as HDF5, dataset \"" + kNameFileSet +
                   "\"");
        return false;
    }
    const std::string name = trimmed_name(read_name_text(file.id()));
    if (name.empty()) {
        model.fail(native(project) + ": no text in dataset \"" + kNameFileSet + "\"");
        return false;
    }
    const VXFile named(resolve_beside(project.GetDirectoryName(), name).c_str());
    const String extension = named.GetFileExtension();
    if (extension != "mfs" && extension != "mfn") {
        model.fail(native(project) + ": dataset \"" + kNameFileSet + "\": \"" + name +
                   "\" is neither a super file (.mfs) nor a name file (.mfn)");
        return false;
    }
    f.super_file = with_extension(named, named.GetDirectoryName(), "mfs");
    if (!f.reading_rules.result_files_by_content) return true;
    // The super file's card NAME comes before it.
    const VXFile name_file = with_extension(named, named.GetDirectoryName(), "mfn");
    if (name_file.FileExists()) f.gms_name_file = name_file;
    return true;
}

void parse_super_file(ModelState& model, const GmsTexts& texts) {
    std::printf("%s", texts.super_file);
    ConverterFactory& f = model.factory;
    if (!is_set(f.super_file)) {
        std::printf("MODFLOW:: No mfs file detected.\n");
        return;
    }
    SuperFile super;
    if (!read_super_file(f.super_file, super, model.problems)) {
        std::printf("MODFLOW:: Error opening MFS file.\n");
        const std::string fault = native(f.super_file) + ": the super file cannot be opened";
        if (is_set(f.gms_name_file)) {
            model.warn(fault + ": the grid has no place and the model no date");
        } else {
            model.fail(fault);
        }
        return;
    }
    print_faults(super, texts);
    model.report_problems();
    const std::string name = display_name(f.super_file.GetFilePath().c_str());
    if (super.unstructured) {
        model.fail(name + ": line 1: MFUSGSUP, an unstructured model, whose grid cannot be converted");
        return;
    }
    store_super_file(model, super);
    if (!is_set(f.gms_name_file)) model.fail(name + ": no card NAME gives the name file");
}

void parse_gms_name_file(ModelState& model, const GmsTexts& texts) {
    std::printf("%s", texts.name_file);
    ConverterFactory& f = model.factory;
    f.name_file = f.gms_name_file;
    if (!read_name_entries(model, kNoNameFile, kNoNameFile)) return;
    for (const NameFileEntry& entry : model.name_entries) {
        if (is_result(model, entry)) {
            mark_result(model, entry);
            continue;
        }
        note_grid_package(model, entry);
        open_entry(model, entry, kTexts);
    }
    if (f.reading_rules.model_no_flow_heads) find_dry_head(model);
}

void parse_gms_grid(ModelState& model, const GmsTexts& texts) {
    std::printf("%s", texts.grid);
    ConverterFactory& f = model.factory;
    TextSource* in = model.streams.unit(f.dis_unit);
    if (in == nullptr) {
        std::printf("DIS file not detected.\n");
        if (f.report.errors.empty()) model.note("no discretization file (DIS) in the name file");
        return;
    }
    const String time = f.time_units, length = f.length_units;
    read_grid(model, *in, [&] {
        print_bad_grid(model, model.streams.path(f.dis_unit), texts);
        model.report_problems();
    });
    if (time.length() > 0) f.time_units = time;
    if (length.length() > 0) f.length_units = length;
    check_units_and_materials(model);
}

void parse_gms_basic(ModelState& model, const GmsTexts& texts) {
    std::printf("%s", texts.basic);
    ConverterFactory& f = model.factory;
    if (f.bas_unit == -1) {
        std::printf("%s", texts.no_basic);
        if (f.report.errors.empty()) model.note("no basic package (BAS6) in the name file");
        return;
    }
    TextSource* in = text_input(model, f.bas_unit, "BAS6");
    if (in == nullptr) {
        std::printf("Error reading ba6 file\n");
        return;
    }
    if (f.nlay < 1) return;
    read_active_cells(model, *in, "XSECTION option is not supported.\n");
    print_bad_status(model, model.streams.path(f.bas_unit));
    model.report_problems();
}

void read_gms_results(ModelState& model) {
    find_porosity_source(model);
    model.factory.parsePOR();
    for (const NameFileEntry& entry : model.name_entries) {
        if (is_result(model, entry)) open_entry(model, entry, kTexts);
    }
}

}  // namespace plx
