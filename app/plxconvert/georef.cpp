#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "plxconvert/commands.h"
#include "plxconvert/control_points.h"
#include "plxconvert/georef_report.h"
#include "plxconvert/image_map.h"
#include "plxconvert/image_neighbours.h"
#include "plxconvert/messages.h"
#include "plxconvert/paths.h"
#include "plxconvert/project_points.h"
#include "plxconvert/residual_plot.h"

namespace plx::tool {

namespace {

struct Options {
    std::string file, image;
    std::optional<std::string> plot, points;
    std::vector<int> size;
    int type = 4;
    bool prescribed = false, json = false, reverse = false;
};

const char* const kSigns =
    "\nColumns and rows of an image count from 0 in the middle of its first pixel, columns to the\n"
    "right and rows downwards; world X counts to the right (east) and Y upwards (north). A line of\n"
    "a GCP file is X, minus Y, column, row: its second number is the world's Y with the sign\n"
    "changed, as hosts write it. Everywhere else Y has its own sign. Hosts may also have written\n"
    "minus row; when all rows are negative, there is a warning.\n";

const char* const kTypes =
    "\nTypes: 1 translation; 2 similarity of the first two points; 3 scale and offset per axis;\n"
    "4 to 7 polynomials of degree 1 to 4, from 3, 6, 10 and 15 points. Fewer points lower the type;\n"
    "two points make a similarity. The fit is well-conditioned; --prescribed is that of the class\n"
    "GeoRef, whose normal equations lose digits on large coordinates.\n";

std::vector<ControlPoint> read_points(const std::filesystem::path& file) {
    bool more = false;
    std::vector<ControlPoint> points = read_control_points(file, PointOrder::gcp_file, more);
    if (more) {
        print_warning(file.filename().string() + ": only the first " + std::to_string(kMostControlPoints) +
                      " control points count");
    }
    warn_if_rows_negative(file, points);
    return points;
}

/// Warns of what the numbers of a fit do not show.
void warn_about(const ImageMap& map, bool back = false) {
    if (map.prescribed() && !map.message().empty()) print_warning(map.message());
    warn_if_singular(back ? map.back() : map.fit(), back ? " of the way back" : "");
}

/// The same for commands that do not print the fit.
void warn_about_unseen(ImageMap& map, const Options& options) {
    ImageMap other(map.points(), options.type, !options.prescribed);
    warn_if_lowered(map, options.type);
    warn_about(map, options.reverse);
    warn_if_different(map, other, options.reverse);
}

/// The image that is to get or has neighbours.
std::filesystem::path image_file(const Options& options) {
    std::filesystem::path image = input_file(options.image, "an image");
    if (!is_placing_file(image)) return image;
    throw InputFault("'" + options.image + "' is a GCP file or a world file; give the image");
}

std::filesystem::path plot_file(const std::optional<std::string>& given,
                                const std::filesystem::path& source) {
    if (!given) return {};
    std::filesystem::path plot = output_file(*given);
    std::error_code fault;
    if (std::filesystem::equivalent(plot, source, fault))
        throw InputFault("--plot would replace the GCP file");
    return plot;
}

int fit(const Options& options) {
    const std::filesystem::path file = input_file(options.file, "a GCP file");
    const std::filesystem::path plot = plot_file(options.plot, file);
    const std::vector<ControlPoint> points = read_points(file);
    ImageMap map(points, options.type, options.prescribed), other(points, options.type, !options.prescribed);
    const std::string name = file.filename().string();
    warn_about(map);
    if (!map.is_number()) print_warning("the fit is not a number");
    if (options.json) {
        print_fit_json(name, options.type, map, other);
    } else {
        print_fit_text(name, options.type, map, other);
    }
    if (plot.empty()) return kDone;
    write_residual_plot(plot, name + ": type " + std::to_string(map.type()) + ", " + type_title(map.type()),
                        map);
    if (!options.json) std::printf("picture in %s\n", plot.string().c_str());
    return kDone;
}

int project(const Options& options) {
    ImageMap map(read_points(input_file(options.file, "a GCP file")), options.type, options.prescribed);
    warn_about_unseen(map, options);
    project_points(map, options.reverse);
    return kDone;
}

int world(const Options& options) {
    const std::filesystem::path image = image_file(options), points = input_file(options.file, "a GCP file");
    ImageMap map(read_points(points), options.type, options.prescribed);
    warn_about_unseen(map, options);
    write_world_file(image, points, map);
    return kDone;
}

ImageSize size_of(const Options& options, const std::filesystem::path& image) {
    if (!options.size.empty()) return {options.size[0], options.size[1]};
    if (const auto size = image_size(image)) return *size;
    throw InputFault("'" + image.string() + "' does not tell its size: give --size COLUMNS ROWS");
}

int gcp(const Options& options) {
    const std::filesystem::path image = image_file(options);
    if (!options.points) {
        const Neighbours found = neighbours_of(image);
        if (found.world.empty())
            throw InputFault("no world file is beside '" + image.string() + "'; give --points");
        write_gcp_file(image, corners_by_world_file(found.world, size_of(options, image)));
        return kDone;
    }
    bool more = false;
    const std::filesystem::path file = input_file(*options.points, "a file with points");
    const auto points = read_control_points(file, PointOrder::image_first, more);
    warn_if_rows_negative(file, points);
    if (more) {
        throw InputFault("more points than the " + std::to_string(kMostControlPoints) +
                         " that a GCP file may hold");
    }
    write_gcp_file(image, points);
    return kDone;
}

using Work = int (*)(const Options&);

CLI::App* add(CLI::App& georef, Action& action, const char* name, const char* what, Work work,
              const std::shared_ptr<Options>& options) {
    CLI::App* command = georef.add_subcommand(name, what);
    command->callback([options, work, &action] {
        for (const int pixels : options->size) {
            if (pixels < 1) throw CLI::ParseError("--size: at least 1 column and 1 row", kWrongUsage);
        }
        action = [options, work] { return work(*options); };
    });
    return command;
}

void add_fit_options(CLI::App& command, Options& options) {
    command.add_option("GCPFILE", options.file, "Control points of an image")->required()->option_text(" ");
    command.add_option("--type", options.type, "Fit type, 1 to 7 (default: 4, first degree; see below)")
        ->option_text("N")
        ->check(CLI::Range(1, 7));
    command.add_flag("--prescribed", options.prescribed, "The arithmetic of the class GeoRef");
}

/// An option whose empty value is one, unlike what the parser makes of it for optional ones.
CLI::Option* add_file_option(CLI::App& command, const char* name, std::optional<std::string>& file,
                             const char* what) {
    return command
        .add_option_function<std::string>(
            name, [&file](const std::string& given) { file = given; }, what)
        ->option_text("FILE");
}

void add_image(CLI::App& command, Options& options, const char* what) {
    command.add_option("IMAGE", options.image, what)->required()->option_text(" ");
}

using Given = std::shared_ptr<Options>;

void add_fit(CLI::App& georef, Action& action, const Given& options) {
    CLI::App* command = add(georef, action, "fit", "Coefficients and residuals", &fit, options);
    add_fit_options(*command, *options);
    command->add_flag("--json", options->json, "Print one JSON object");
    add_file_option(*command, "--plot", options->plot, "Draw the residuals (SVG)");
    command->footer(
        std::string(kSigns) + kTypes +
        "\nA residual is the world point of the file minus where the fit puts it. When the two fits\n"
        "differ by more than a thousandth of a pixel, there or on the way back at the control points,\n"
        "the difference is told.");
}

void add_project(CLI::App& georef, Action& action, const Given& options) {
    CLI::App* command =
        add(georef, action, "project", "Lines of image columns and rows to X and Y", &project, options);
    add_fit_options(*command, *options);
    command->add_flag("--reverse", options->reverse, "X and Y to columns and rows");
    command->footer(
        std::string(kSigns) + kTypes +
        "\nReads a point from each line of standard input and writes one to each of standard output;\n"
        "empty lines and those that begin with '#' are passed on. The way back is a fit of the\n"
        "exchanged points: for types 3 to 7 it is the inverse only as far as the points fit.");
}

void add_world(CLI::App& georef, Action& action, const Given& options) {
    CLI::App* command = add(georef, action, "world", "Write the world file of an image", &world, options);
    add_fit_options(*command, *options);
    add_image(*command, *options, "The image; only its name is used");
    command->footer(
        std::string(kSigns) + kTypes +
        "\nThe file is beside the image: site.tif gets site.tfw. Older ones are kept as\n"
        "site.tfw.backup, .backup1 to .backup10; the oldest is dropped then. World files hold\n"
        "first-degree maps with six decimals; their last two numbers are the place of the middle\n"
        "of the first pixel.");
}

void add_gcp(CLI::App& georef, Action& action, const Given& options) {
    CLI::App* command = add(georef, action, "gcp", "Write the GCP file of an image", &gcp, options);
    add_image(*command, *options, "The image; its name is used, and its size without --points");
    add_file_option(*command, "--points", options->points,
                    "Lines of column, row, X and Y (default: three corners by the image's world file)");
    command->add_option("--size", options->size, "Size of the image, when its header does not tell")
        ->option_text("COLUMNS ROWS")
        ->expected(2);
    command->footer(
        std::string(kSigns) +
        "\nAn older site.gcp is kept as site.gcp.backup, .backup1 to .backup10; the oldest is dropped\n"
        "then. GCP files have six decimals.");
}

int show(const Options& options) {
    show_neighbours(image_file(options));
    return kDone;
}

void add_show(CLI::App& georef, Action& action, const Given& options) {
    CLI::App* command = add(georef, action, "show", "What lies beside an image", &show, options);
    add_image(*command, *options, "The image; its name and its size are used");
    command->footer(std::string(kSigns) + "\nA GCP file counts before a world file.");
}

}  // namespace

void add_georef_command(CLI::App& app, Action& action) {
    const auto options = std::make_shared<Options>();
    CLI::App* georef = app.add_subcommand("georef", "Place images in the world by control points");
    georef->require_subcommand(1);
    georef->footer(std::string(kSigns) +
                   "\nExamples:\n"
                   "  plxconvert georef fit site.gcp --type 5 --plot residuals.svg\n"
                   "  plxconvert georef project site.gcp < pixels.txt > places.txt\n"
                   "  plxconvert georef gcp site.png --points measured.txt\n"
                   "  plxconvert georef world site.gcp site.png\n"
                   "  plxconvert georef show site.png");
    for (const auto add_command : {&add_fit, &add_project, &add_world, &add_gcp, &add_show}) {
        add_command(*georef, action, options);
    }
}

}  // namespace plx::tool
