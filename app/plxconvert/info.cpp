#include <filesystem>
#include <memory>
#include <string>

#include "plxconvert/commands.h"
#include "plxconvert/console.h"
#include "plxconvert/info_gms.h"
#include "plxconvert/info_model.h"
#include "plxconvert/info_output.h"
#include "plxconvert/messages.h"
#include "plxconvert/model_kind.h"
#include "plxconvert/paths.h"
#include "plxconvert/words.h"
#include "plxutils/converters/ModelSummary.h"

namespace plx::tool {

namespace {

const char* const kFooter =
    "A model is given by its MODFLOW name file (.nam), GMS super file (.mfs), GMS project (.gpr,\n"
    "HDF5) or Visual MODFLOW project (.vmf): grid with its place and start, active cells and\n"
    "elevations of the layers, stress periods, and the result files with their saved steps and\n"
    "budget terms. A head, drawdown, flow or concentration file is described alone, by its\n"
    "contents. A GMS project, text or HDF5, gives its objects with their datasets, its materials\n"
    "and its MODFLOW model; a GMS dataset file its datasets with their times. Nothing is written.\n"
    "\n"
    "Examples:\n"
    "  plxconvert info site.nam\n"
    "  plxconvert info results/site.cbb\n"
    "      Budget terms of a flow file, with the number of records and entries.\n"
    "  plxconvert info site.mfs --json\n"
    "      One JSON object: file, kind, grid, origin, rotation, start, units, layers,\n"
    "      stress_periods, results.\n"
    "  plxconvert info site.gpr --json\n"
    "      One JSON object: file, kind, files, objects, datasets, materials, model.";

int describe_result(const std::filesystem::path& file, bool json) {
    OutputDiversion diversion(true, "");
    const ResultSummary result = summarize_result_file(file.string().c_str());
    diversion.end();
    if (result.kind == "unreadable" || result.kind == "missing") {
        throw InputFault("'" + file.string() + "' is no result file of MODFLOW or MT3D" +
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

}  // namespace

void add_info_command(CLI::App& app, Action& action) {
    struct Options {
        std::string file;
        bool json = false;
    };
    const auto options = std::make_shared<Options>();
    CLI::App* command = app.add_subcommand("info", "Describe a model, a result file or a GMS project");
    command
        ->add_option(
            "PROJECT|RESULTFILE", options->file,
            "A model's name file (.nam), super file (.mfs) or project (.gpr, .vmf), a result file, or "
            "a GMS dataset file")
        ->required()
        ->option_text(" ");
    command->add_flag("--json", options->json, "Print one JSON object");
    command->footer(kFooter);
    command->callback([options, &action] {
        action = [options] {
            const std::filesystem::path file = input_file(options->file);
            const std::string gms = has_model_extension(file.string()) ? "" : gms_kind(file);
            // Concentrations that GMS keeps as a dataset file are results, with the same words as any.
            const bool concentrations = gms == "datasets" && lower(file.extension().string()) == ".con";
            if (concentrations) return describe_result(file, options->json);
            if (!gms.empty()) return describe_gms(file, gms, options->json);
            return is_binary(file) && !has_model_extension(file.string())
                       ? describe_result(file, options->json)
                       : describe_model(file, options->json);
        };
    });
}

}  // namespace plx::tool
