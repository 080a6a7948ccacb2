#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include "plxconvert/commands.h"
#include "plxconvert/console.h"
#include "plxconvert/estimator.h"
#include "plxconvert/messages.h"
#include "plxconvert/paths.h"
#include "plxconvert/progress_bar.h"
#include "plxconvert/samples.h"
#include "plxconvert/target_mesh.h"
#include "plxconvert/words.h"
#include "plxutils/converters/FieldFile.h"

namespace plx::tool {

namespace {

constexpr int kDeepest = 12;
constexpr double kFewDigits = 1e-3;

struct Options {
    std::string samples, onto, output, column;
    std::vector<int> grid;
    std::vector<double> box;
    InterpolationRules rules;
    ChemistryRules chemistry;
    bool compress = false, quiet = false;
};

const char* const kFooter =
    "\nSamples are lines of cells between commas, semicolons, tabs or blanks, whichever the first line\n"
    "has; what follows a '#' is a comment. Columns are found by their names in the first line: x\n"
    "(or easting), y (northing), z (elevation) and value (or --value); without names they are the\n"
    "first four. An empty value, 'missing', 'na', 'nm' or 'unknown' leaves a sample out, 'nd' is a\n"
    "non-detect, and '<5' is below a detection limit of 5.\n"
    "\n"
    "A node's value is the weighted mean of the samples in reach; a node without any takes that of\n"
    "the nearest sample. Distances are measured with all heights multiplied by the anisotropy.\n"
    "Unless given, the reach is the distance within which about 50 samples lie when they are spread\n"
    "evenly, yet at most a quarter of the diagonal of all samples.\n"
    "  method 1    weights 1/d^P\n"
    "  method 2    weights ((R-d)/(R*d))^P, R the distance of the farthest sample in reach\n"
    "\n"
    "Examples:\n"
    "  plxconvert interpolate wells.csv --onto site.nam -o nitrate.pff\n"
    "      On the nodes of a model, as 'plxconvert modflow' writes them.\n"
    "  plxconvert interpolate wells.csv --grid 50 40 10 -o nitrate.pfz\n"
    "      On a grid of 50 x 40 x 10 cells around the samples, gzip.\n"
    "  plxconvert interpolate wells.csv --value Sulfate --grid 20 20 5 --box 0 0 -30 800 600 0 \\\n"
    "      --reach 250 --anisotropy 20 --dl-factor 0.1 -o sulfate.pff";

[[noreturn]] void wrong_usage(const std::string& text) { throw CLI::ParseError(text, kWrongUsage); }

void check_grid(const Options& options) {
    if (options.grid.empty() == options.onto.empty()) wrong_usage("give --onto or --grid, one of them");
    double nodes = 1.0;
    for (const int cells : options.grid) {
        if (cells < 1) wrong_usage("--grid: at least 1 cell in each direction");
        nodes *= cells + 1.0;
    }
    if (nodes > static_cast<double>(kMostNodes)) {
        wrong_usage("--grid: more than " + std::to_string(kMostNodes) + " nodes");
    }
    if (options.box.empty()) return;
    if (options.grid.empty()) wrong_usage("--box goes with --grid");
    for (std::size_t i = 0; i < 3; ++i) {
        const double low = options.box[i], high = options.box[i + 3];
        if (!(std::fabs(low) <= kFarthest && std::fabs(high) <= kFarthest)) {
            wrong_usage("--box: coordinates must be from -1e12 to 1e12");
        }
        if (!(low < high)) wrong_usage("--box: each minimum must be below its maximum");
    }
}

/// Also turns the output's name into the one that a compressed file has.
void check(Options& options, const CLI::App& command) {
    check_grid(options);
    const InterpolationRules& rules = options.rules;
    if (rules.power < 1 || rules.power > 10) wrong_usage("--power: a whole number from 1 to 10");
    if (command.count("--depth") > 0 && (rules.depth < 1 || rules.depth > kDeepest)) {
        wrong_usage("--depth: from 1 to " + std::to_string(kDeepest));
    }
    if (command.count("--reach") > 0 && !(rules.reach >= 0.0 && std::isfinite(rules.reach))) {
        wrong_usage("--reach: a finite distance, 0 or more");
    }
    if (!(rules.anisotropy > 0.0 && rules.anisotropy <= 1e6)) {
        wrong_usage("--anisotropy: above 0, at most 1000000");
    }
    const ChemistryRules& chemistry = options.chemistry;
    if (!(chemistry.detection_factor >= 0.0 && std::isfinite(chemistry.detection_factor)) ||
        !std::isfinite(chemistry.nondetect)) {
        wrong_usage("--dl-factor and --nondetect: finite numbers, the factor not below 0");
    }
    const std::filesystem::path output = path_of(options.output);
    const std::string extension = lower(output.extension().string());
    if (extension != ".pff" && extension != ".pfz") wrong_usage("-o: the file must end in .pff or .pfz");
    if (options.compress && extension == ".pff") {
        options.output = std::filesystem::path(output).replace_extension(".pfz").string();
    }
    options.compress = options.compress || extension == ".pfz";
}

/// The samples' extents; a direction in which they have none is given a thickness around them.
Box box_around(const std::vector<Sample>& samples, bool quiet) {
    constexpr double kNone = std::numeric_limits<double>::infinity();
    Box box = {kNone, kNone, kNone, -kNone, -kNone, -kNone};
    for (const Sample& s : samples) {
        const std::array<double, 3> place = {s.x, s.y, s.z};
        for (std::size_t i = 0; i < 3; ++i) {
            box[i] = std::min(box[i], place[i]);
            box[i + 3] = std::max(box[i + 3], place[i]);
        }
    }
    double widest = std::max({box[3] - box[0], box[4] - box[1], box[5] - box[2]});
    const double thickness = widest > 0.0 ? widest / 100.0 : 1.0;
    for (std::size_t i = 0; i < 3; ++i) {
        if (box[i] < box[i + 3]) continue;
        box[i] -= thickness / 2.0;
        box[i + 3] += thickness / 2.0;
        std::array<char, 96> text{};
        std::snprintf(text.data(), text.size(),
                      "the samples have no extent in %c: the grid is %g thick there (--box sets it)",
                      "xyz"[i], thickness);
        if (!quiet) print_warning(text.data());
    }
    return box;
}

struct Result {
    double smallest = std::numeric_limits<double>::infinity();
    double largest = -std::numeric_limits<double>::infinity();
};

FieldHeader header_of(const TargetMesh& mesh, const std::string& name) {
    FieldHeader header;
    header.comment = "plxconvert generated field file";
    header.nodes = mesh.nodes();
    header.node_data = {{name, "Linear_", kInFile}};
    header.cell_sets = mesh.cell_sets();
    return header;
}

/// Every node's value goes to the file as soon as it is known, so that large meshes need no room for them.
Result write_field(FieldFile& file, const TargetMesh& mesh, const FieldHeader& header, Estimator& estimator,
                   ProgressBar& bar) {
    Result result;
    file.begin_nodes(header);
    for (int i = 0; i < mesh.nodes(); ++i) {
        for (const double coordinate : mesh.node(i)) file.value(coordinate);
        file.end_line();
    }
    file.node_data_definitions();
    file.begin_node_data();
    constexpr int kBetweenLooks = 64;
    for (int i = 0; i < mesh.nodes(); ++i) {
        if (i % kBetweenLooks == 0) bar.show(i, mesh.nodes(), "node");
        const double value = estimator.at(mesh.node(i));
        result.smallest = std::min(result.smallest, value);
        result.largest = std::max(result.largest, value);
        file.value(value);
        file.end_line();
    }
    file.begin_cells();
    for (int i = 0; i < mesh.cells(); ++i) {
        for (const int node : mesh.cell(i)) file.integer(node);
        file.end_line();
    }
    return result;
}

/// Where the file goes; an input that it would replace, or that has its name while it is written, is refused.
std::filesystem::path output_of(const Options& options, const std::filesystem::path& samples,
                                const std::filesystem::path& project) {
    std::filesystem::path output = output_file(options.output);
    std::error_code fault;
    std::filesystem::path target = std::filesystem::weakly_canonical(output, fault);
    if (fault) target = output;
    const std::filesystem::path part = target.parent_path() / ("~" + target.filename().string() + ".part");
    for (const std::filesystem::path& path : {output, part}) {
        if (std::filesystem::equivalent(samples, path, fault)) {
            throw InputFault("-o would replace the samples");
        }
        if (!project.empty() && std::filesystem::equivalent(project, path, fault)) {
            throw InputFault("-o would replace the model");
        }
    }
    return output;
}

/// Writes the whole file or, when that fails, nothing: one that stood there survives a fault.
template <class Write>
Result write_whole(const std::filesystem::path& output, bool compress, Write write) {
    FieldFile field;
    if (!field.open(output.string().c_str(), compress)) {
        throw InputFault("'" + output.string() + "' cannot be opened for writing");
    }
    const Result result = write(field);
    if (!field.close()) throw InputFault(output.string() + ": " + field.fault());
    return result;
}

/// Refuses places between which distances lose their meaning, before anything is written.
void check_places(const std::vector<Sample>& samples, const TargetMesh& mesh, double anisotropy) {
    const auto check = [anisotropy](const char* what, double x, double y, double z) {
        const double farthest = std::max({std::fabs(x), std::fabs(y), std::fabs(z * anisotropy)});
        if (farthest <= kFarthestStretched) return;
        std::array<char, 128> text{};
        std::snprintf(text.data(), text.size(), "%s at %g %g %g lies too far away (heights count %g-fold)",
                      what, x, y, z, anisotropy);
        throw InputFault(text.data());
    };
    for (const Sample& s : samples) check("the sample", s.x, s.y, s.z);
    for (int i = 0; i < mesh.nodes(); ++i) {
        const std::array<double, 3> node = mesh.node(i);
        check("the node", node[0], node[1], node[2]);
    }
}

void print_count(const char* name, std::size_t count) { std::printf("  %-18s%14zu\n", name, count); }
void print_value(const char* name, double value) { std::printf("  %-18s%14g\n", name, value); }

void print_table(const std::string& file, const SampleSet& set, const TargetMesh& mesh,
                 const InterpolationRules& rules, const Estimator& estimator, const Result& result,
                 double seconds, const std::string& output) {
    const auto size = [](int count) { return static_cast<std::size_t>(count); };
    std::printf("%s: samples of %s\n", file.c_str(), set.name.c_str());
    print_count("samples read", set.samples.size() + size(set.missing));
    print_count("missing", size(set.missing));
    print_count("below detection", size(set.below_detection));
    print_count("non-detect", size(set.nondetect));
    print_value("reach", rules.reach);
    print_count("cells", size(mesh.cells()));
    print_count("nodes", size(mesh.nodes()));
    print_count("within reach", size(estimator.in_reach()));
    print_count("took the nearest", size(estimator.took_nearest()));
    print_value("smallest value", result.smallest);
    print_value("largest value", result.largest);
    std::printf("  %-18s%14.2f\n", "seconds", seconds);
    std::printf("result in %s\n", output.c_str());
}

std::unique_ptr<TargetMesh> make_grid(const Options& options, const std::vector<Sample>& samples) {
    Box box{};
    std::copy(options.box.begin(), options.box.end(), box.begin());
    if (options.box.empty()) box = box_around(samples, options.quiet);
    return make_grid_mesh({options.grid[0], options.grid[1], options.grid[2]}, box);
}

int interpolate(Options& options) {
    const auto start = std::chrono::steady_clock::now();
    const std::filesystem::path file = input_file(options.samples, "the file with samples");
    const std::filesystem::path project = options.onto.empty() ? "" : input_file(options.onto);
    const std::filesystem::path output = output_of(options, file, project);
    ProgressBar bar(!options.quiet && error_stream_is_terminal());
    bar.say("reading " + file.filename().string());
    const SampleSet set = read_samples(file, options.column, options.chemistry);
    bar.erase();
    if (!project.empty()) bar.say("reading " + project.filename().string());
    const std::unique_ptr<TargetMesh> mesh =
        project.empty() ? make_grid(options, set.samples) : read_model_mesh(project);
    check_places(set.samples, *mesh, options.rules.anisotropy);
    complete(options.rules, set.samples);
    Estimator estimator(options.rules, set.samples);
    const Result result = write_whole(output, options.compress, [&](FieldFile& field) {
        return write_field(field, *mesh, header_of(*mesh, set.name), estimator, bar);
    });
    bar.erase();
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    if (!options.quiet) {
        const double greatest = std::max(std::fabs(result.smallest), std::fabs(result.largest));
        if (greatest > 0.0 && greatest < kFewDigits) {
            print_warning("field files keep six decimals: give these small values in a smaller unit");
        }
        print_table(file.string(), set, *mesh, options.rules, estimator, result, seconds.count(),
                    output.string());
    }
    return kDone;
}

void add_rules(CLI::App& command, Options& options) {
    command.add_option("--method", options.rules.method, "1 (the default) or 2 (see below)")
        ->option_text("M")
        ->check(CLI::IsMember({1, 2}));
    command.add_option("--power", options.rules.power, "Power of the distance, 1 to 10 (default: 2)")
        ->option_text("P");
    command
        .add_option("--reach", options.rules.reach,
                    "Farthest sample that counts (default: about 50 samples in reach, see below)")
        ->option_text("R");
    command
        .add_option("--depth", options.rules.depth,
                    "Depth of the search tree, 1 to 12 (default: by the number of samples)")
        ->option_text("D");
    command.add_option("--anisotropy", options.rules.anisotropy, "Stretches heights (default: 10)")
        ->option_text("A");
    command
        .add_option("--dl-factor", options.chemistry.detection_factor,
                    "What '<5' is multiplied by (default: 0.5)")
        ->option_text("F");
    command.add_option("--nondetect", options.chemistry.nondetect, "Value of a non-detect (default: 0)")
        ->option_text("V");
}

void add_options(CLI::App& command, Options& options) {
    command.add_option("SAMPLES", options.samples, "Text file with x, y, z and a value in each line")
        ->required()
        ->option_text(" ");
    command
        .add_option("--onto", options.onto, "A model that 'plxconvert modflow' takes: values at its nodes")
        ->option_text("PROJECT");
    command.add_option("--grid", options.grid, "A grid of as many cells instead, around the samples")
        ->option_text("NX NY NZ")
        ->expected(3);
    command.add_option("--box", options.box, "Where the grid is")
        ->option_text("XMIN YMIN ZMIN XMAX YMAX ZMAX")
        ->expected(6);
    command.add_option("-o,--output", options.output, "Field file to write: .pff, or .pfz for gzip")
        ->required()
        ->option_text("OUT");
    command.add_option("--value", options.column, "Name of the column with the values")->option_text("NAME");
    add_rules(command, options);
    command.add_flag("--compress", options.compress, "Write gzip, with extension .pfz");
    command.add_flag("--quiet", options.quiet, "Print errors only");
}

}  // namespace

void add_interpolate_command(CLI::App& app, Action& action) {
    const auto options = std::make_shared<Options>();
    CLI::App* command = app.add_subcommand("interpolate", "Spread values of scattered samples over a mesh");
    add_options(*command, *options);
    command->footer(kFooter);
    command->callback([options, command, &action] {
        check(*options, *command);
        action = [options] { return interpolate(*options); };
    });
}

}  // namespace plx::tool
