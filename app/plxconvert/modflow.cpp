#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "plxconvert/closing_table.h"
#include "plxconvert/commands.h"
#include "plxconvert/console.h"
#include "plxconvert/messages.h"
#include "plxconvert/model_kind.h"
#include "plxconvert/outputs.h"
#include "plxconvert/paths.h"
#include "plxconvert/progress_bar.h"
#include "plxconvert/words.h"
#include "plxutils/converters/Converter.h"
#include "plxutils/converters/finish_report.h"
#include "plxutils/core/VXFile.h"
#include "plxutils/core/WholeFile.h"

namespace plx::tool {

namespace {

struct Options {
    std::string project, kind = "auto", outputs = "all", porosity, dest, rules = "modflow";
    std::vector<double> crop;
    bool compress = false, trace = false, quiet = false;
    // Filled by check().
    OutputChoice choice;
    std::vector<double> porosities;
};

const char* const kFooter =
    "\nKinds:\n"
    "  modflow         MODFLOW-88/96 by its name file (.nam) with BAS and BCF\n"
    "  modflow2000     MODFLOW-2000/2005 by its name file (.nam) with DIS and BAS6\n"
    "  gms             GMS model by its super file (.mfs)\n"
    "  gms_hdf5        the model of a GMS project (.gpr) that is an HDF5 file\n"
    "  visual          Visual MODFLOW project (.vmf)\n"
    "\n"
    "Rules:\n"
    "  modflow         read the files as the modelling programs themselves do\n"
    "  prescribed      read them as PLX has always done; for results that must equal older ones\n"
    "\n"
    "Results are folders GENERAL and MODFLOW (and MT3D) with one field file for each saved time\n"
    "step, beside PROJECT or in --dest; the trace of the conversion is plxconvert.log there.\n"
    "Surfaces and boreholes of a GMS project are the work of 'plxconvert gms'.\n"
    "\n"
    "Examples:\n"
    "  plxconvert modflow site.nam\n"
    "  plxconvert modflow site.mfs --dest results\n"
    "      A model saved by GMS, turned and moved to its place in the world.\n"
    "  plxconvert modflow site.nam --outputs head_nodes,head_cells,elevation\n"
    "      Heads only, on nodes and cells.\n"
    "  plxconvert modflow site.nam --crop 500 0 2500 1800 --dest cropped\n"
    "      Only cells whose centre lies in that rectangle, in the world for models with a place.\n"
    "  plxconvert modflow site.nam --porosity 0.3 --compress --quiet\n"
    "      One porosity for all layers, gzip field files, nothing printed but errors.";

void check(Options& options) {
    try {
        if (!options.porosity.empty() && !parse_numbers(options.porosity, options.porosities)) {
            throw std::invalid_argument("--porosity: '" + options.porosity + "' is not a list of numbers");
        }
        for (const double porosity : options.porosities) {
            if (porosity < 0.0 || porosity > 1.0) {
                throw std::invalid_argument("--porosity: values are fractions from 0 to 1");
            }
        }
        options.choice = parse_outputs(options.outputs, !options.porosities.empty());
        check_rectangle("--crop", options.crop);
    } catch (const std::invalid_argument& fault) {
        throw CLI::ParseError(fault.what(), kWrongUsage);
    }
}

void run_converter(ConverterFactory& factory, const std::filesystem::path& project, Options& options) {
    const bool crop = !options.crop.empty();
    std::array<double, 4> box{};
    if (crop) std::copy(options.crop.begin(), options.crop.end(), box.begin());
    factory.reading_rules = options.rules == "modflow" ? ReadingRules::modflow() : ReadingRules::prescribed();
    VXFile file(project.string().c_str());
    Converter().create_converter(factory, file, static_cast<int>(options.porosities.size()),
                                 options.porosities.empty() ? nullptr : options.porosities.data(),
                                 options.compress, options.choice.flags.data(), crop, box[0], box[2], box[1],
                                 box[3]);
}

int convert(Options& options) {
    const std::filesystem::path project = input_file(options.project);
    const ModelKind kind = find_kind(project, options.kind);
    const auto place = options.dest.empty() ? project.parent_path() : result_folder(options.dest);
    const std::string log = (place / "plxconvert.log").string();
    const auto factory = make_converter(kind);
    if (!options.dest.empty()) {
        factory->output_folder = place.string().c_str();
        // A destination of its own means that nothing appears beside the project.
        factory->keep_log = false;
    }
    ProgressBar bar(!options.quiet && error_stream_is_terminal());
    factory->on_step = [&bar](int done, int total) { bar.show(done, total); };
    bar.say("reading " + project.filename().string());

    const auto start = std::chrono::steady_clock::now();
    const ErrorCollector collector;
    OutputDiversion diversion(!options.trace, log);
    run_converter(*factory, project, options);
    diversion.end();
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    bar.erase();

    finish_report(*factory, collector.heard(),
                  {options.porosities.size(), "--porosity", options.choice.named});
    const ConversionReport& report = factory->report;
    if (diversion.failed()) {
        factory->report.errors.push_back(log + ": " + kNotAllWritten);
    }
    for (const std::string& error : report.errors) print_error(error);
    if (!options.quiet) {
        if (!options.trace && !diversion.kept()) print_warning(log + ": cannot be opened for writing");
        for (const std::string& warning : report.warnings) print_warning(warning);
        const RunFacts facts{
            project.string(), kind_title(kind), options.rules, place.string(), diversion.kept() ? log : "",
            options.compress, seconds.count()};
        if (!report.files.empty()) print_closing_table(facts, report);
    }
    return report.errors.empty() ? kDone : kInputFault;
}

void add_options(CLI::App& command, Options& options) {
    command
        .add_option("PROJECT", options.project,
                    "The model's name file (.nam), super file (.mfs) or project (.gpr, .vmf)")
        ->required()
        ->option_text(" ");
    command.add_option("--kind", options.kind, "auto (the default: PROJECT tells) or a kind (see below)")
        ->option_text("KIND")
        ->check(CLI::IsMember(kind_words()));
    command.add_option("--outputs", options.outputs, "Results to write, comma separated (see below)")
        ->option_text("LIST");
    command
        .add_option("--porosity", options.porosity,
                    "Porosity of the layers from the top; one value serves all")
        ->option_text("V[,V...]");
    command.add_flag("--compress", options.compress, "Write gzip field files (.pfz)");
    command.add_option("--crop", options.crop, "Only cells whose centre lies in the rectangle")
        ->option_text("XMIN YMIN XMAX YMAX")
        ->expected(4);
    command.add_option("--dest", options.dest, "Folder of the results (default: beside PROJECT)")
        ->option_text("DIR");
    command.add_option("--rules", options.rules, "modflow (the default) or prescribed (see below)")
        ->option_text("RULES")
        ->check(CLI::IsMember({"modflow", "prescribed"}));
    command.add_flag("--trace", options.trace, "Print the conversion's trace, do not log it");
    command.add_flag("--quiet", options.quiet, "Print errors only");
}

}  // namespace

void add_modflow_command(CLI::App& app, Action& action) {
    const auto options = std::make_shared<Options>();
    CLI::App* command = app.add_subcommand("modflow", "Convert a MODFLOW model into field files");
    add_options(*command, *options);
    command->footer("Outputs:\n" + outputs_help() + kFooter);
    command->callback([options, &action] {
        check(*options);
        action = [options] { return convert(*options); };
    });
}

}  // namespace plx::tool
