#include "plxutils/converters/ModelKind.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <set>
#include <stdexcept>

#include "core/ascii_text.h"
#include "formats/hdf5_reader.h"
#include "platform/host_path.h"
#include "platform/platform.h"
#include "plxutils/converters/GMS_Converter.h"
#include "plxutils/converters/GMS_HDF5_Converter.h"
#include "plxutils/converters/MODFLOW2000_Converter.h"
#include "plxutils/converters/Visual_MODFLOW_Converter.h"
#include "plxutils/core/VXFile.h"
#include "plxutils/core/VXFileReader.h"

namespace plx {

namespace {

/// What keeps a file from giving a model; stays in this file.
struct Problem : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct Kind {
    ModelKind kind;
    const char* word;
    const char* title;
    const char* file;       ///< what gives such a model
    const char* extension;  ///< of that file
};

constexpr Kind kKinds[] = {
    {ModelKind::kModflow, "modflow", "MODFLOW-88/96", "MODFLOW name file", ".nam"},
    {ModelKind::kModflow2000, "modflow2000", "MODFLOW-2000/2005", "MODFLOW name file", ".nam"},
    {ModelKind::kGms, "gms", "GMS", "GMS super file", ".mfs"},
    {ModelKind::kGmsHdf5, "gms_hdf5", "GMS (HDF5)", "GMS project", ".gpr"},
    {ModelKind::kVisual, "visual", "Visual MODFLOW", "Visual MODFLOW project", ".vmf"},
};

const Kind& row_of(ModelKind kind) {
    return *std::find_if(std::begin(kKinds), std::end(kKinds),
                         [kind](const Kind& row) { return row.kind == kind; });
}

bool is_word(const std::string& text) {
    return !text.empty() && text.size() < 20 && std::all_of(text.begin(), text.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '(' || c == ')' || c == '_';
    });
}

std::string lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), ascii_lower);
    return text;
}

/// Where the last dot of the file's own name is; the end without one. A dot in front makes no extension.
std::size_t extension_start(const std::string& file) {
    const std::size_t folder = file.find_last_of("/\\"), name = folder == std::string::npos ? 0 : folder + 1;
    const std::size_t dot = file.rfind('.');
    return dot == std::string::npos || dot <= name ? file.size() : dot;
}

std::string extension_of(const std::string& file) { return lower(file.substr(extension_start(file))); }

std::string quoted(const std::string& file) { return "'" + file + "'"; }

bool checked_is_binary(const std::string& file) {
    const std::optional<bool> binary = is_binary_file(file);
    if (!binary) throw Problem(quoted(file) + " cannot be opened for reading");
    return *binary;
}

/// The file types of a name file in lower case, in order.
std::vector<std::string> file_types(const std::string& name_file) {
    VXFileReader reader;
    if (!reader.Open(name_file.c_str())) throw Problem(quoted(name_file) + " cannot be opened");
    std::vector<std::string> types;
    for (int words = 0; (words = reader.ReadLine("\r\n\t ,", true, true, false)) >= 0;) {
        if (words >= 3) types.push_back(lower(reader.GetWord(0).c_str()));
    }
    return types;
}

std::string seen_types(const std::vector<std::string>& types) {
    std::string seen;
    std::set<std::string> listed;
    for (const std::string& type : types) {
        if (!is_word(type) || listed.size() == 8 || !listed.insert(type).second) continue;
        seen += (seen.empty() ? "" : ", ") + type;
    }
    return seen.empty() ? "no file types at all" : seen;
}

ModelKind kind_by_types(const std::string& project) {
    const std::vector<std::string> types = file_types(project);
    const auto has = [&types](const char* type) {
        return std::find(types.begin(), types.end(), type) != types.end();
    };
    if (has("dis") || has("bas6")) return ModelKind::kModflow2000;
    if (has("bas") || has("bcf")) return ModelKind::kModflow;
    throw Problem(quoted(project) +
                  " names neither a discretization file (DIS, BAS6) nor a basic package (BAS, BCF): found " +
                  seen_types(types));
}

/// The super file beside a GMS name file; empty when there is none.
std::string super_file_of(const std::string& name_file) {
    const std::string super = name_file.substr(0, extension_start(name_file)) + ".mfs";
    const platform::FileFacts facts = platform::find_file(super.c_str());
    if (!facts.exists || facts.directory) return "";
    const std::string found = platform::names_are_native() ? super : platform::matching_path(super);
    return found.substr(found.find_last_of("/\\") + 1);
}

/// The plain converters read a name file of GMS as they always did, when they are asked for.
ModelKind kind_of_gms_name_file(const std::string& project, const std::string& wanted) {
    const std::string super = super_file_of(project);
    if (wanted == row_of(ModelKind::kModflow).word) return ModelKind::kModflow;
    if (!super.empty()) {
        throw Problem(quoted(project) + " is the name file of a GMS model: give its super file " + super);
    }
    const ModelKind kind = kind_by_types(project);
    if (kind == ModelKind::kModflow && wanted == "auto") return kind;
    throw Problem(quoted(project) +
                  " is the name file of a GMS model, and its super file (.mfs) is not beside it; copy it "
                  "to a .nam file to read it as a plain model");
}

void check_gms_project(const std::string& project, const ModelKindTerms& terms) {
    const Hdf5Silence silence;
    if (hdf5_kind(VXFile(project.c_str()).GetFilePath().c_str()) > 0) return;
    if (checked_is_binary(project)) {
        throw Problem(quoted(project) + " is no GMS project: it is neither text nor an HDF5 file");
    }
    throw Problem(quoted(project) + " is a GMS project written as text: " + terms.gms_converter +
                  " converts it; its MODFLOW model is given by the super file (.mfs)");
}

/// The first kind whose files have the extension.
const Kind& row_by_extension(const std::string& project) {
    const std::string extension = extension_of(project);
    const auto* const found = std::find_if(std::begin(kKinds), std::end(kKinds), [&](const Kind& row) {
        return extension == row.extension || (extension == ".mfn" && row.kind == ModelKind::kModflow);
    });
    if (found != std::end(kKinds)) return *found;
    throw Problem(quoted(project) + (checked_is_binary(project) ? " is a binary file, and" : " is") +
                  " not a MODFLOW name file (.nam), GMS super file (.mfs), GMS project (.gpr) or Visual "
                  "MODFLOW project (.vmf)");
}

/// The kind that was asked for by name; null for "auto".
const Kind* wanted_row(const std::string& wanted, const ModelKindTerms& terms) {
    if (wanted == "auto") return nullptr;
    const auto* const asked = std::find_if(std::begin(kKinds), std::end(kKinds),
                                           [&wanted](const Kind& row) { return wanted == row.word; });
    if (asked != std::end(kKinds)) return asked;
    std::string words;
    for (const std::string& word : kind_words()) words += (words.empty() ? "" : ", ") + word;
    throw Problem(terms.kind + " '" + wanted + "' is not known; the kinds are " + words);
}

ModelKind kind_of(const std::string& project, const std::string& wanted, const ModelKindTerms& terms) {
    const Kind* const asked = wanted_row(wanted, terms);
    const Kind& row = row_by_extension(project);
    if (asked != nullptr && asked->extension != std::string(row.extension)) {
        throw Problem(quoted(project) + " is no " + asked->file + ": those of " + terms.kind + " " + wanted +
                      " end in " + asked->extension);
    }
    if (row.kind == ModelKind::kGmsHdf5) {
        check_gms_project(project, terms);
        return row.kind;
    }
    if (checked_is_binary(project)) throw Problem(quoted(project) + " is a binary file, not a " + row.file);
    if (extension_of(project) == ".mfn") return kind_of_gms_name_file(project, wanted);
    if (row.kind != ModelKind::kModflow) return row.kind;
    return asked != nullptr ? asked->kind : kind_by_types(project);
}

}  // namespace

const char* kind_word(ModelKind kind) { return row_of(kind).word; }

std::vector<std::string> kind_words() {
    std::vector<std::string> words = {"auto"};
    for (const Kind& row : kKinds) words.emplace_back(row.word);
    return words;
}

const char* kind_title(ModelKind kind) { return row_of(kind).title; }

std::optional<bool> is_binary_file(const std::string& file) {
    std::FILE* stream = platform::open_file(file.c_str(), "rb");
    if (stream == nullptr) return std::nullopt;
    std::array<char, 4096> bytes{};
    const auto count = static_cast<std::ptrdiff_t>(std::fread(bytes.data(), 1, bytes.size(), stream));
    std::fclose(stream);
    return std::find(bytes.begin(), bytes.begin() + count, '\0') != bytes.begin() + count;
}

bool has_model_extension(const std::string& file) {
    const std::string extension = extension_of(file);
    return extension == ".nam" || extension == ".mfn" || extension == ".mfs" || extension == ".vmf";
}

ModelKindFinding find_model_kind(const std::string& project, const std::string& wanted,
                                 const ModelKindTerms& terms) {
    try {
        return {kind_of(project, wanted, terms), ""};
    } catch (const std::exception& problem) {
        return {std::nullopt, problem.what()};
    }
}

std::unique_ptr<ConverterFactory> make_converter(ModelKind kind) {
    switch (kind) {
        case ModelKind::kModflow2000:
            return std::make_unique<MODFLOW2000_Converter>();
        case ModelKind::kGms:
            return std::make_unique<GMS_Converter>();
        case ModelKind::kGmsHdf5:
            return std::make_unique<GMS_HDF5_Converter>();
        case ModelKind::kVisual:
            return std::make_unique<Visual_MODFLOW_Converter>();
        default:
            return std::make_unique<ConverterFactory>();
    }
}

}  // namespace plx
