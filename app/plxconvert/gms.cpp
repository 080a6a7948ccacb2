#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "plxconvert/commands.h"
#include "plxconvert/console.h"
#include "plxconvert/gms_report.h"
#include "plxconvert/gms_types.h"
#include "plxconvert/info_gms.h"
#include "plxconvert/info_output.h"
#include "plxconvert/messages.h"
#include "plxconvert/paths.h"
#include "plxconvert/progress_bar.h"
#include "plxconvert/words.h"
#include "plxutils/core/VXNativePath.h"
#include "plxutils/gms/GMSCallbacks.h"
#include "plxutils/gms/GMStoPLX.h"

namespace plx::tool {

namespace {

struct Options {
    std::string project, dest, types = "all", rules = "modern";
    std::vector<double> extents;
    std::optional<double> time;
    bool plain = false, subfolders = false, quiet = false, json = false;
    std::array<bool, kGmsTypes> wanted{};  // filled by check()
};

const char* const kFooter =
    "\nRules:\n"
    "  modern          read dataset files as newer versions of GMS write them, with several times\n"
    "  prescribed      read them as PLX has always done; for results that must equal older ones\n"
    "\n"
    "Surfaces are .gmf files, TINs also field files (.pfz, .pff), boreholes a .pgf file. Surfaces\n"
    "and boreholes are written whole, also with --extents.\n"
    "\n"
    "Examples:\n"
    "  plxconvert gms site.gpr --dest surfaces\n"
    "  plxconvert gms site.gpr --dest surfaces --types tin,scat2d --plain --subfolders\n"
    "      TINs and scatter points only, not compressed, each in a folder of its own.\n"
    "  plxconvert gms site.gpr --dest surfaces --time 365 --json\n"
    "      The values nearest to time 365; one JSON object tells what was written.";

void check(Options& options) {
    try {
        options.wanted = parse_gms_types(options.types);
        check_rectangle("--extents", options.extents);
        if (options.time && !std::isfinite(*options.time)) {
            throw std::invalid_argument("--time: the time must be finite");
        }
    } catch (const std::invalid_argument& fault) {
        throw CLI::ParseError(fault.what(), kWrongUsage);
    }
}

void print_status(const char* text) {
    if (text == nullptr || *text == '\0') return;
    const std::string line = text;
    std::fputs(line.c_str(), stdout);
    if (line.back() != '\n') std::fputc('\n', stdout);
    std::fflush(stdout);
}

// The hook is a C function without user data, so it needs a place to find the bar.
ProgressBar* status_bar = nullptr;

/// Files that were written come with three blanks in front.
void show_file(const char* text) {
    const std::string line = text == nullptr ? "" : text;
    if (status_bar != nullptr && line.rfind("   ", 0) == 0) status_bar->say("wrote " + line.substr(3));
}

/// Shows the library's status texts while it lives: all of them on a terminal, else the file at hand.
class StatusDisplay {
public:
    StatusDisplay(bool all, ProgressBar& bar) {
        status_bar = &bar;
        GMS_SetStatusFunc(all ? &print_status : &show_file);
    }
    ~StatusDisplay() {
        GMS_SetStatusFunc(nullptr);
        status_bar = nullptr;
    }
    StatusDisplay(const StatusDisplay&) = delete;
    StatusDisplay& operator=(const StatusDisplay&) = delete;
};

void configure(GMStoPLX* converter, const GmsReport& report, const Options& options) {
    GMStoPLX_Set_Project(converter, report.project.c_str());
    GMStoPLX_Set_Destination(converter, report.place.c_str());
    GMStoPLX_Compress(converter, options.plain ? 0 : 1);
    GMStoPLX_Use_Subfolders(converter, options.subfolders ? 1 : 0);
    const auto& on = options.wanted;
    GMStoPLX_Object_Types(converter, on[0], on[1], on[2], on[3], on[4], on[5], on[6], on[7], on[8]);
    if (!options.extents.empty()) {
        GMStoPLX_Extents(converter, 1, options.extents[0], options.extents[1], options.extents[2],
                         options.extents[3]);
    }
    GMStoPLX_Lenient_Datasets(converter, options.rules == "modern" ? 1 : 0);
    if (options.time) GMStoPLX_Choose_Time(converter, 1, *options.time);
}

void run_converter(GmsReport& report, const Options& options) {
    const bool to_terminal = !options.quiet && !options.json && output_stream_is_terminal();
    ProgressBar bar(!options.quiet && !to_terminal && error_stream_is_terminal());
    bar.say("reading " + path_of(report.project).filename().string());
    const ErrorCollector collector;
    const StatusDisplay display(to_terminal, bar);
    // The end of a converter prints a line for each of its datasets.
    OutputDiversion whole(!to_terminal, "");
    std::unique_ptr<GMStoPLX, decltype(&GMStoPLX_delete)> converter(GMStoPLX_new(), &GMStoPLX_delete);
    if (!converter) throw std::bad_alloc();
    configure(converter.get(), report, options);
    GMStoPLX_parse_project(converter.get());
    for (const std::string& stored : converter->filesWritten) {
        GmsReport::File file{VXNativePath(stored.c_str()).c_str(), 0};
        const auto same = [&file](const GmsReport::File& known) { return known.path == file.path; };
        if (std::any_of(report.files.begin(), report.files.end(), same)) {
            // The names of its files are what hosts look for; telling is all that can be done.
            report.warnings.push_back("'" + file.path +
                                      "' holds the last of several objects of the same name");
            continue;
        }
        std::error_code fault;
        const auto size = std::filesystem::file_size(file.path, fault);
        if (!fault) file.size = size;
        report.files.push_back(std::move(file));
    }
    report.bytes = converter->bytesWritten;
    report.errors = collector.texts();
    OutputDiversion end(to_terminal, "");
    converter.reset();
}

/// Why a conversion wrote nothing: the library says nothing of a project that it cannot read, nor of objects
/// that were not asked for.
std::string why_nothing(const GmsReport& report, bool lenient) {
    OutputDiversion diversion(true, "");
    const GmsProjectSummary summary = summarize_gms_project(report.project.c_str(), lenient);
    if (!summary.problem.empty()) return "'" + report.project + "' cannot be read: " + summary.problem;
    const std::string contents = contents_of(summary);
    return "nothing was written: the project holds " + (contents.empty() ? "no objects" : contents);
}

std::string project_kind(const std::filesystem::path& project) {
    std::string kind = gms_kind(project);
    if (kind == "datasets") {
        throw InputFault("'" + project.string() + "' is a GMS dataset file; give the project that names it");
    }
    if (kind.empty()) {
        throw InputFault("'" + project.string() +
                         "' is no GMS project: neither an HDF5 file nor a text that names GMS files");
    }
    return kind;
}

int convert(const Options& options) {
    const auto start = std::chrono::steady_clock::now();
    const std::filesystem::path project = input_file(options.project, "the project file (.gpr)");
    GmsReport report;
    report.kind = project_kind(project);
    report.project = project.string();
    report.place = result_folder(options.dest).string();
    run_converter(report, options);
    if (report.files.empty()) report.errors.push_back(why_nothing(report, options.rules == "modern"));
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    report.seconds = seconds.count();

    if (!options.quiet) {
        for (const std::string& warning : report.warnings) print_warning(warning);
    }
    for (const std::string& error : report.errors) print_error(error);
    if (options.json) {
        print_report_json(report);
    } else if (!options.quiet) {
        if (!options.extents.empty() && !report.files.empty()) {
            print_warning("--extents does not crop surfaces and boreholes: they were written whole");
        }
        if (!report.files.empty()) print_report(report);
    }
    return report.errors.empty() ? kDone : kInputFault;
}

std::string types_help() {
    std::string help = "Types:\n";
    for (const GmsType& type : gms_types()) {
        std::string name = type.name;
        name.resize(16, ' ');
        help += "  " + name + type.help + "\n";
    }
    return help;
}

void add_options(CLI::App& command, Options& options) {
    command.add_option("PROJECT", options.project, "The project file (.gpr), text or HDF5")
        ->required()
        ->option_text(" ");
    command.add_option("--dest", options.dest, "Folder of the results, made when it is missing")
        ->required()
        ->option_text("DIR");
    command.add_flag("--plain", options.plain, "Write plain field files (.pff)");
    command.add_flag("--subfolders", options.subfolders, "A subfolder for each type: TINS, SCATTER2D, BORE");
    command.add_option("--types", options.types, "Types to convert, comma separated, or all (see below)")
        ->option_text("LIST");
    command.add_option("--extents", options.extents, "Only what lies in the rectangle (see below)")
        ->option_text("XMIN YMIN XMAX YMAX")
        ->expected(4);
    command.add_option("--time", options.time, "Values of the time step nearest to T (default: the first)")
        ->option_text("T");
    command.add_option("--rules", options.rules, "modern (the default) or prescribed (see below)")
        ->option_text("RULES")
        ->check(CLI::IsMember({"modern", "prescribed"}));
    command.add_flag("--quiet", options.quiet, "Print errors only");
    command.add_flag("--json", options.json, "Print one JSON object");
}

}  // namespace

void add_gms_command(CLI::App& app, Action& action) {
    const auto options = std::make_shared<Options>();
    CLI::App* command = app.add_subcommand("gms", "Convert a GMS project into surfaces and boreholes");
    add_options(*command, *options);
    command->footer(types_help() + kFooter);
    command->callback([options, &action] {
        check(*options);
        action = [options] { return convert(*options); };
    });
}

}  // namespace plx::tool
