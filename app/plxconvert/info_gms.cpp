#include "plxconvert/info_gms.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "plxconvert/commands.h"
#include "plxconvert/console.h"
#include "plxconvert/info_model.h"
#include "plxconvert/info_output.h"
#include "plxconvert/messages.h"
#include "plxconvert/model_kind.h"
#include "plxconvert/words.h"

namespace plx::tool {

std::string gms_kind(const std::filesystem::path& file) {
    std::string kind = gms_file_kind(file.string().c_str());
    if (kind.empty() && lower(file.extension().string()) == ".gpr") kind = "text";
    return kind;
}

std::string gms_title(const std::string& kind) {
    if (kind == "datasets") return "GMS dataset file";
    return kind == "hdf5" ? "GMS project (HDF5)" : "GMS project (text)";
}

std::string contents_of(const GmsProjectSummary& summary) {
    std::vector<std::pair<std::string, long long>> types;
    for (const GmsObjectSummary& object : summary.objects) {
        const auto same = [&object](const auto& known) { return known.first == object.type; };
        const auto found = std::find_if(types.begin(), types.end(), same);
        if (found == types.end()) {
            types.emplace_back(object.type, 1);
        } else {
            ++found->second;
        }
    }
    std::string text;
    if (summary.has_model) types.emplace_back("MODFLOW model", 1);
    for (const auto& [type, count] : types) text += (text.empty() ? "" : ", ") + counted(count, type);
    return text;
}

namespace {

GmsDescription read_project(const std::filesystem::path& file, const std::string& kind) {
    const ErrorCollector collector;
    OutputDiversion diversion(true, "");
    GmsDescription project{file.filename().string(), {}, {}, {}};
    const std::string path = file.string();
    project.summary = kind == "datasets" ? summarize_gms_datasets(path.c_str(), true)
                                         : summarize_gms_project(path.c_str(), true);
    diversion.end();
    const GmsProjectSummary& summary = project.summary;
    project.errors = collector.texts();
    if (!summary.problem.empty()) project.errors.push_back("'" + path + "': " + summary.problem);
    if (kind == "text" && summary.problem.empty() && summary.files.empty()) {
        if (is_binary(file)) {
            throw InputFault("'" + path + "' is no GMS project: it is neither text nor an HDF5 file");
        }
        project.errors.push_back("'" + path + "' is a GMS project that names no files");
    }
    return project;
}

}  // namespace

int describe_gms(const std::filesystem::path& file, const std::string& kind, bool json) {
    GmsDescription project = read_project(file, kind);
    const GmsProjectSummary& summary = project.summary;
    std::vector<std::string>& errors = project.errors;
    // Only the extension .gpr says that the model is meant: other HDF5 files have groups of the same names.
    if (summary.has_model && lower(file.extension().string()) == ".gpr") {
        ModelReading reading = read_model(file);
        project.model = std::move(reading.model);
        errors.insert(errors.end(), reading.errors.begin(), reading.errors.end());
        for (const std::string& warning : reading.warnings) print_warning(warning);
    }
    for (const std::string& error : errors) print_error(error);
    const bool empty =
        summary.files.empty() && summary.objects.empty() && summary.datasets.empty() && !summary.has_model;
    if (!errors.empty() && empty && !json) return kInputFault;
    if (json) {
        print_json(project);
    } else {
        print_text(project);
    }
    return errors.empty() ? kDone : kInputFault;
}

}  // namespace plx::tool
