#include <cstdio>
#include <exception>
#include <string>

#include "plxconvert/commands.h"
#include "plxconvert/console.h"
#include "plxconvert/interruption.h"
#include "plxconvert/messages.h"
#include "plxutils/export.h"

namespace {

constexpr const char* kExamples =
    "Examples:\n"
    "  plxconvert info site.nam\n"
    "      What the model holds: grid, layers, stress periods, results, budget terms.\n"
    "  plxconvert info site.hds --json\n"
    "      A single head or flow file, as JSON for scripts.\n"
    "  plxconvert info site.gpr\n"
    "      The surfaces, scatter points, boreholes, datasets and the model of a GMS project.\n"
    "  plxconvert modflow site.nam\n"
    "      Everything that the model has, into folders GENERAL and MODFLOW beside site.nam.\n"
    "  plxconvert modflow site.nam --dest /data/plx/site --compress --porosity 0.25,0.3,0.2\n"
    "      Compressed, into a folder of its own, with a porosity for each of three layers.\n"
    "  plxconvert modflow site.mfs\n"
    "      A model of GMS; also site.gpr (HDF5), and site.vmf of Visual MODFLOW.\n"
    "  plxconvert gms site.gpr --dest /data/plx/site\n"
    "      The surfaces and boreholes of a GMS project.\n"
    "  plxconvert interpolate wells.csv --onto site.nam -o nitrate.pff\n"
    "      Values of scattered samples at the nodes of a model.\n"
    "  plxconvert georef fit site.gcp --plot residuals.svg\n"
    "      How well control points place an image.\n"
    "\n"
    "'plxconvert COMMAND --help' tells the rest.\n"
    "Exit codes: 0 everything was written; 1 something is wrong with the input or the\n"
    "results could not be written; 2 wrong usage.";

std::string usage_fault(const CLI::App* app, const CLI::Error& error) {
    const auto used = app->get_subcommands();
    if (used.empty())
        return "plxconvert: give a command: info, modflow, gms, interpolate or georef\nTry 'plxconvert "
               "--help'.\n";
    return "plxconvert: " + std::string(error.what()) + "\nTry 'plxconvert " + used[0]->get_name() +
           " --help'.\n";
}

int run(int argc, char** argv) {
    using namespace plx::tool;
    CLI::App app("Converts groundwater models and GMS projects into PLX files.", "plxconvert");
    app.set_version_flag("--version", "plxconvert " PLX_VERSION, "Print the version");
    app.set_help_flag("-h,--help", "Print this help");
    app.failure_message(&usage_fault);
    app.require_subcommand(1);
    app.footer(kExamples);
    Action action;
    add_info_command(app, action);
    add_modflow_command(app, action);
    add_gms_command(app, action);
    add_interpolate_command(app, action);
    add_georef_command(app, action);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? kDone : kWrongUsage;
    }
    const int code = action ? action() : kWrongUsage;
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        print_error("standard output cannot be written");
        return kInputFault;
    }
    return code;
}

}  // namespace

int main(int argc, char** argv) {
    plx::tool::open_standard_streams();
    plx::tool::clean_up_when_interrupted();
    try {
        return run(argc, argv);
    } catch (const std::exception& fault) {
        plx::tool::print_error(fault.what());
    } catch (...) {
        plx::tool::print_error("unknown fault");
    }
    return plx::tool::kInputFault;
}
