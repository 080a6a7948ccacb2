#include "plxconvert/info_model.h"

#include <algorithm>

#include "plxconvert/commands.h"
#include "plxconvert/console.h"
#include "plxconvert/messages.h"
#include "plxconvert/model_kind.h"
#include "plxconvert/outputs.h"

namespace plx::tool {

namespace {

bool names(const std::vector<std::string>& texts, const std::string& file) {
    return std::any_of(texts.begin(), texts.end(),
                       [&file](const std::string& text) { return text.find(file) != std::string::npos; });
}

/// Adds what is wrong with the result files, but for files that the conversion's own messages name. Files
/// that are missing or empty are those of a model that has not run: no more than a warning.
void add_problems(const ModelSummary& summary, ModelReading& reading) {
    const std::vector<std::string> errors = reading.errors, warnings = reading.warnings;
    for (const ResultSummary& result : summary.results) {
        if (result.problem.empty() || names(errors, result.file)) continue;
        const bool nothing = result.kind == "missing" || result.problem == "the file is empty";
        if (nothing && names(warnings, result.file)) continue;
        (nothing ? reading.warnings : reading.errors).push_back(result.file + ": " + result.problem);
    }
}

}  // namespace

ModelReading read_model(const std::filesystem::path& project) {
    const ModelKind kind = find_kind(project, "auto");
    const auto factory = make_converter(kind);
    factory->reading_rules = ReadingRules::modflow();
    factory->keep_log = false;
    for (const Output& output : output_table()) {
        // No porosity is shown, so a damaged transport package is no fault of the description.
        (*factory).*output.flag = output.flag != &ConverterFactory::out_porosity;
    }
    factory->project_file.SetFile(project.string().c_str());

    ModelDescription model{project.filename().string(), kind_word(kind), kind_title(kind), {}};
    const ErrorCollector collector;
    OutputDiversion diversion(true, "");
    factory->parsePROJECT();
    model.summary = summarize_model(*factory);
    diversion.end();

    ModelReading reading;
    reading.errors = collector.merged_with(factory->report);
    reading.warnings = factory->report.warnings;
    add_problems(model.summary, reading);
    if (model.summary.layers > 0 && !model.summary.layer.empty()) {
        reading.model = std::move(model);
    } else if (reading.errors.empty()) {
        reading.errors.push_back("'" + project.string() + "' gives no grid");
    }
    return reading;
}

int describe_model(const std::filesystem::path& project, bool json) {
    const ModelReading reading = read_model(project);
    for (const std::string& error : reading.errors) print_error(error);
    for (const std::string& warning : reading.warnings) print_warning(warning);
    if (!reading.model) return kInputFault;
    if (json) {
        print_json(*reading.model);
    } else {
        print_text(*reading.model);
    }
    return reading.errors.empty() ? kDone : kInputFault;
}

}  // namespace plx::tool
