#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "plxconvert/commands.h"
#include "plxconvert/console.h"
#include "plxconvert/info_gms.h"
#include "plxconvert/info_output.h"
#include "plxconvert/messages.h"
#include "plxconvert/model_kind.h"
#include "plxconvert/outputs.h"
#include "plxconvert/paths.h"
#include "plxutils/converters/ModelSummary.h"

namespace plx::tool {

namespace {

const char* const kFooter =
    "A name file gives the model: grid, active cells and elevations of the layers, stress\n"
    "periods, and the result files with their saved steps and budget terms. A head, drawdown or\n"
    "flow file is described alone, by its contents. A GMS project, text or HDF5, gives its\n"
    "objects with their datasets, and its materials; a GMS dataset file its datasets with their\n"
    "times. Nothing is written.\n"
    "\n"
    "Examples:\n"
    "  plxconvert info site.nam\n"
    "  plxconvert info results/site.cbb\n"
    "      Budget terms of a flow file, with the number of records and entries.\n"
    "  plxconvert info site.nam --json\n"
    "      One JSON object: file, kind, grid, units, layers, stress_periods, results.\n"
    "  plxconvert info site.gpr --json\n"
    "      One JSON object: file, kind, files, objects, datasets, materials.";

int describe_result(const std::filesystem::path& file, bool json) {
    OutputDiversion diversion(true, "");
    const ResultSummary result = summarize_result_file(file.string().c_str());
    diversion.end();
    if (result.kind == "unreadable" || result.kind == "missing") {
        throw InputFault("'" + file.string() + "' is no result file of MODFLOW" +
                         (result.problem.empty() ? "" : ": " + result.problem));
    }
    if (json) {
        print_json(result);
    } else {
        print_text(result);
    }
    if (result.problem.empty()) return kDone;
    print_error(file.filename().string() + ": " + result.problem);
    return kInputFault;
}

int describe_model(const std::filesystem::path& project, bool json) {
    ModelDescription model;
    const ModelKind kind = find_kind(project, "auto");
    const auto factory = make_factory(kind);
    factory->reading_rules = ReadingRules::modflow();
    factory->keep_log = false;
    for (const Output& output : output_table()) (*factory).*output.flag = true;
    factory->project_file.SetFile(project.string().c_str());

    const ErrorCollector collector;
    OutputDiversion diversion(true, "");
    factory->parsePROJECT();
    model.summary = summarize_model(*factory);
    diversion.end();

    const std::vector<std::string> errors = collector.merged_with(factory->report);
    for (const std::string& error : errors) print_error(error);
    for (const std::string& warning : factory->report.warnings) print_warning(warning);
    if (model.summary.layers < 1 || model.summary.layer.empty()) {
        if (errors.empty()) print_error("'" + project.string() + "' gives no grid");
        return kInputFault;
    }
    model.file = project.filename().string();
    model.kind = kind_word(kind);
    model.title = kind_title(kind);
    if (json) {
        print_json(model);
    } else {
        print_text(model);
    }
    return errors.empty() ? kDone : kInputFault;
}

}  // namespace

void add_info_command(CLI::App& app, Action& action) {
    struct Options {
        std::string file;
        bool json = false;
    };
    const auto options = std::make_shared<Options>();
    CLI::App* command = app.add_subcommand("info", "Describe a model, a result file or a GMS project");
    command
        ->add_option("PROJECT|RESULTFILE", options->file,
                     "A name file (.nam), a head or flow file, a GMS project (.gpr) or dataset file")
        ->required()
        ->option_text(" ");
    command->add_flag("--json", options->json, "Print one JSON object");
    command->footer(kFooter);
    command->callback([options, &action] {
        action = [options] {
            const std::filesystem::path file = input_file(options->file);
            const std::string gms = gms_kind(file);
            if (!gms.empty()) return describe_gms(file, gms, options->json);
            return is_binary(file) ? describe_result(file, options->json)
                                   : describe_model(file, options->json);
        };
    });
}

}  // namespace plx::tool
