#include "plxconvert/info_model.h"

#include "plxconvert/commands.h"
#include "plxconvert/console.h"
#include "plxconvert/messages.h"
#include "plxconvert/model_kind.h"
#include "plxconvert/outputs.h"

namespace plx::tool {

ModelReading read_model(const std::filesystem::path& project) {
    const ModelKind kind = find_kind(project, "auto");
    const auto factory = make_factory(kind);
    factory->reading_rules = ReadingRules::modflow();
    factory->keep_log = false;
    for (const Output& output : output_table()) (*factory).*output.flag = true;
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
