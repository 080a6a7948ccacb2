#include "plxconvert/model_kind.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <set>
#include <vector>

#include "plxconvert/messages.h"
#include "plxconvert/words.h"
#include "plxutils/converters/MODFLOW2000_Converter.h"
#include "plxutils/core/VXFileReader.h"

namespace plx::tool {

namespace {

bool is_word(const std::string& text) {
    return !text.empty() && text.size() < 20 && std::all_of(text.begin(), text.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '(' || c == ')' || c == '_';
    });
}

/// The file types of a name file in lower case, in order.
std::vector<std::string> file_types(const std::string& name_file) {
    VXFileReader reader;
    if (!reader.Open(name_file.c_str())) throw InputFault("'" + name_file + "' cannot be opened");
    std::vector<std::string> types;
    for (int words = 0; (words = reader.ReadLine("\r\n\t ,", true, true, false)) >= 0;) {
        if (words >= 3) types.push_back(lower(reader.GetWord(0).c_str()));
    }
    return types;
}

/// Why an extension is not that of a plain name file; empty when it is.
std::string extension_fault(const std::string& extension) {
    if (extension == ".nam" || extension == ".mfn") return "";
    if (extension == ".gpr")
        return "a GMS project; 'plxconvert gms' converts its surfaces, a MODFLOW model in it is "
               "given by its name file (.nam)";
    if (extension == ".vmf") return "a Visual MODFLOW project; give a MODFLOW name file (.nam)";
    return "not a MODFLOW name file: those end in .nam";
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

ModelKind kind_by_types(const std::string& name, const std::vector<std::string>& types) {
    const auto has = [&types](const char* type) {
        return std::find(types.begin(), types.end(), type) != types.end();
    };
    if (has("dis") || has("bas6")) return ModelKind::kModflow2000;
    if (has("bas") || has("bcf")) return ModelKind::kModflow;
    throw InputFault(
        name + " names neither a discretization file (DIS, BAS6) nor a basic package (BAS, BCF): found " +
        seen_types(types));
}

}  // namespace

const char* kind_word(ModelKind kind) { return kind == ModelKind::kModflow ? "modflow" : "modflow2000"; }

const char* kind_title(ModelKind kind) {
    return kind == ModelKind::kModflow ? "MODFLOW-88/96" : "MODFLOW-2000/2005";
}

bool is_binary(const std::filesystem::path& file) {
    std::FILE* stream = std::fopen(file.string().c_str(), "rb");
    if (stream == nullptr) throw InputFault("'" + file.string() + "' cannot be opened for reading");
    std::array<char, 4096> bytes{};
    const auto count = static_cast<std::ptrdiff_t>(std::fread(bytes.data(), 1, bytes.size(), stream));
    std::fclose(stream);
    return std::find(bytes.begin(), bytes.begin() + count, '\0') != bytes.begin() + count;
}

ModelKind find_kind(const std::filesystem::path& project, const std::string& wanted) {
    const std::string name = "'" + project.string() + "'";
    const std::string extension = lower(project.extension().string());
    // GMS projects of newer versions are binary.
    if (extension != ".gpr" && is_binary(project)) {
        throw InputFault(name + " is a binary file, not a MODFLOW name file");
    }
    const std::string fault = extension_fault(extension);
    if (!fault.empty()) throw InputFault(name + " is " + fault);
    const ModelKind kind = wanted == "auto" ? kind_by_types(name, file_types(project.string()))
                           : wanted == kind_word(ModelKind::kModflow) ? ModelKind::kModflow
                                                                      : ModelKind::kModflow2000;
    if (kind == ModelKind::kModflow2000 && extension == ".mfn") {
        throw InputFault(name +
                         " is part of a GMS project; copy it to a .nam file to read it as a plain model");
    }
    return kind;
}

std::unique_ptr<ConverterFactory> make_factory(ModelKind kind) {
    if (kind == ModelKind::kModflow) return std::make_unique<ConverterFactory>();
    return std::make_unique<MODFLOW2000_Converter>();
}

}  // namespace plx::tool
