// Writes the files of a conversion of a generated model with as little work as possible: the grid is in
// memory, heads and flows come from the result files a layer at a time, numbers go straight into blocks. What
// a converter needs beyond this is its own doing.

#include <array>
#include <chrono>
#include <cmath>
#include <string>

#include "model_grid.h"
#include "printer.h"

namespace {

using namespace bench;

constexpr double kPorosity = 0.25;

/// One node of the mesh and the shares of the up to four cells around it; 0 where there is none.
struct Node {
    std::uint32_t line = 0, column_line = 0;
    double z = 0.0;
    std::array<double, 4> weights{};
};

struct Mesh {
    std::vector<double> x, y, centre_x, centre_y;
    std::vector<Node> nodes;             ///< by layer, top and bottom, row line, column line
    std::vector<std::uint32_t> numbers;  ///< of the row and column lines within a surface
    std::size_t per_surface = 0;
    std::vector<std::size_t> cells;  ///< active ones of a layer

    /// Cell m (0 to 3) around a node, or -1: the order decides how sums are rounded.
    static std::ptrdiff_t cell_around(const Grid& grid, const Node& node, std::size_t m) {
        const std::size_t row = node.line - (m & 1);
        const std::size_t column = node.column_line - (m >> 1);
        if (row >= grid.rows || column >= grid.columns || !grid.active[row * grid.columns + column])
            return -1;
        return static_cast<std::ptrdiff_t>(row * grid.columns + column);
    }
};

void set_weights(const Grid& grid, const Mesh& mesh, std::size_t layer, bool in_space, Node& node) {
    double sum = 0.0;
    for (std::size_t m = 0; m < 4; ++m) {
        const std::ptrdiff_t cell = Mesh::cell_around(grid, node, m);
        node.weights[m] = 0.0;
        if (cell < 0) continue;
        const auto at = static_cast<std::size_t>(cell);
        const double dx = mesh.x[node.column_line] - mesh.centre_x[at % grid.columns];
        const double dy = mesh.y[node.line] - mesh.centre_y[at / grid.columns];
        const double middle = (grid.surfaces[layer][at] + grid.surfaces[layer + 1][at]) * 0.5;
        const double dz = in_space ? node.z - middle : 0.0;
        const double distance = std::sqrt(dx * dx + dy * dy + dz * dz);
        node.weights[m] = distance * distance;
        sum += node.weights[m];
    }
    for (double& weight : node.weights) weight /= sum;
}

template <typename Value>
double average(const Grid& grid, const Node& node, const Value* values) {
    double sum = 0.0;
    for (std::size_t m = 0; m < 4; ++m) {
        if (node.weights[m] == 0.0) continue;
        sum += node.weights[m] * static_cast<double>(values[Mesh::cell_around(grid, node, m)]);
    }
    return sum;
}

Mesh build_mesh(const Grid& grid) {
    Mesh mesh;
    mesh.x.push_back(0.0);
    for (const double width : grid.column_widths) mesh.x.push_back(mesh.x.back() + width);
    double y = 0.0;
    for (const double width : grid.row_widths) y += width;
    mesh.y.push_back(y);
    for (const double width : grid.row_widths) mesh.y.push_back(mesh.y.back() - width);
    for (std::size_t j = 0; j < grid.columns; ++j) mesh.centre_x.push_back((mesh.x[j] + mesh.x[j + 1]) * 0.5);
    for (std::size_t i = 0; i < grid.rows; ++i) mesh.centre_y.push_back((mesh.y[i] + mesh.y[i + 1]) * 0.5);
    std::vector<Node> surface;
    for (std::uint32_t r = 0; r <= grid.rows; ++r) {
        for (std::uint32_t c = 0; c <= grid.columns; ++c) {
            const Node node{r, c, 0.0, {}};
            mesh.numbers.push_back(static_cast<std::uint32_t>(surface.size()));
            bool exists = false;
            for (std::size_t m = 0; m < 4; ++m) exists |= Mesh::cell_around(grid, node, m) >= 0;
            if (exists) surface.push_back(node);
        }
    }
    mesh.per_surface = surface.size();
    for (std::size_t plane = 0; plane < 2 * grid.layers; ++plane) {
        for (Node node : surface) {
            set_weights(grid, mesh, plane / 2, false, node);
            node.z = average(grid, node, grid.surfaces[plane / 2 + plane % 2].data());
            set_weights(grid, mesh, plane / 2, true, node);
            mesh.nodes.push_back(node);
        }
    }
    for (std::size_t cell = 0; cell < grid.layer_cells(); ++cell) {
        if (grid.active[cell]) mesh.cells.push_back(cell);
    }
    return mesh;
}

/// The result files, read step after step.
class Results {
public:
    Results(const std::filesystem::path& folder, const Grid& grid)
        : grid_(grid),
          heads_(open(files_folder(folder, grid) / (grid.gms ? "bench.hed" : "bench.hds"))),
          budget_(open(files_folder(folder, grid) / (grid.gms ? "bench.ccf" : "bench.cbb"))),
          heads(grid.cells()) {
        for (std::vector<float>* flows : {&storage, &faces[0], &faces[1], &faces[2]})
            flows->resize(grid.cells());
        wells.resize(grid.columns);
        layer_of_recharge.resize(grid.layer_cells());
        recharge.resize(grid.layer_cells());
    }
    Results(const Results&) = delete;
    Results& operator=(const Results&) = delete;
    ~Results() {
        std::fclose(heads_);
        std::fclose(budget_);
    }

    void next_step() {
        for (std::size_t k = 0; k < grid_.layers; ++k) {
            skip(heads_, 44);
            read(heads_, heads.data() + k * grid_.layer_cells(), grid_.layer_cells());
        }
        for (std::vector<float>* flows : {&storage, &faces[0], &faces[1], &faces[2]}) {
            skip(budget_, 52);
            read(budget_, flows->data(), flows->size());
        }
        skip(budget_, 52 + 8);
        read(budget_, wells.data(), wells.size());
        skip(budget_, 52);
        read(budget_, layer_of_recharge.data(), layer_of_recharge.size());
        read(budget_, recharge.data(), recharge.size());
    }

private:
    static std::FILE* open(const std::filesystem::path& path) {
        std::FILE* file = std::fopen(path.string().c_str(), "rb");
        if (file == nullptr) fail();
        return file;
    }
    static void skip(std::FILE* file, long bytes) {
        if (std::fseek(file, bytes, SEEK_CUR) != 0) fail();
    }
    template <typename Value>
    static void read(std::FILE* file, Value* to, std::size_t count) {
        if (std::fread(to, sizeof(Value), count, file) != count) fail();
    }
    [[noreturn]] static void fail() {
        std::fputs("the result files are not those of this model\n", stderr);
        std::exit(1);
    }

    const Grid& grid_;
    std::FILE* heads_;
    std::FILE* budget_;

public:
    struct Well {
        std::int32_t cell;  ///< from 1
        float flow;
    };
    std::vector<float> heads, storage;
    std::array<std::vector<float>, 3> faces;
    std::vector<Well> wells;
    std::vector<std::int32_t> layer_of_recharge;  ///< from 1
    std::vector<float> recharge;
};

std::string date_text(int days) {
    using namespace std::chrono;
    const year_month_day date{sys_days{year{1899} / 12 / 30} + std::chrono::days{days}};
    char text[64];
    std::snprintf(text, sizeof text, "%04d-%02u-%02u 00:00:00", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
    return text;
}

void write_field_header(Printer& out, const Grid& grid, const Mesh& mesh) {
    out.text("# GMStoPLX generated field file\r\nDEFINITION Mesh+Node_Data+Cell_Data\r\nNSPACE 3\r\nNNODES ");
    out.integer(mesh.nodes.size())
        .text("\r\nNUM_NODE_DATA 3\r\nNUM_CELL_DATA 6\r\nNCELL_SETS ")
        .integer(grid.layers);
    out.text(
        "\r\nNODES FILE \"..\\GENERAL\\node_coordinates.xyz\" ROW 2 X 1 Y 2 Z 3\r\n"
        "NODE_DATA_DEF 0 \"Head\" \"Linear_meters\" IN_FILE \r\n"
        "NODE_DATA_DEF 1 \"Geo_Layer\" \"Linear_\" FILE \"..\\GENERAL\\geo_layers.nd\" ROW 2 COLS 1\r\n"
        "NODE_DATA_DEF 2 \"Elevation\" \"Linear_meters\" FILE \"..\\GENERAL\\elevations.nd\" ROW 2 COLS "
        "1\r\n");
    for (std::size_t k = 0; k < grid.layers; ++k) {
        out.text("CELL_SET_DEF ")
            .integer(k)
            .text(" ")
            .integer(mesh.cells.size())
            .text(" Hex \"Layer_")
            .integer(k);
        out.text("\" FILE \"..\\GENERAL\\connectivity.conn\" ROW ")
            .integer(2 + k * mesh.cells.size())
            .text("\r\n");
    }
    out.text(
        "CELL_DATA_DEF 0 \"Head\" \"Linear_meters\" IN_FILE \r\n"
        "CELL_DATA_DEF 1 \"CCF\" \"Linear_\" VECLEN 3 IN_FILE \r\n"
        "CELL_DATA_DEF 2 \"ELEV_TOP\" \"Linear_meters\" IN_FILE \r\n"
        "CELL_DATA_DEF 3 \"ELEV_BOTTOM\" \"Linear_meters\" IN_FILE \r\n"
        "CELL_DATA_DEF 4 \"MATERIAL\" \"Linear_\" IN_FILE\r\n"
        "CELL_DATA_DEF 5 \"POROSITY\" \"Linear_\" FILE \"mod_bench.por\" ROW 2 COLS 1\r\n");
}

void write_field(Printer& out, const Grid& grid, const Mesh& mesh, const Results& results) {
    write_field_header(out, grid, mesh);
    out.text("NODE_DATA_START\r\n");
    for (std::size_t n = 0; n < mesh.nodes.size(); ++n) {
        const std::size_t layer = n / (2 * mesh.per_surface);
        out.fixed(average(grid, mesh.nodes[n], results.heads.data() + layer * grid.layer_cells()))
            .text("\r\n");
    }
    out.text("CELL_DATA_START\r\n");
    for (std::size_t k = 0; k < grid.layers; ++k) {
        for (const std::size_t at : mesh.cells) {
            const std::size_t cell = k * grid.layer_cells() + at;
            out.fixed(static_cast<double>(results.heads[cell])).text(" ");
            for (const auto& face : results.faces) out.fixed(static_cast<double>(face[cell])).text(" ");
            out.fixed(grid.surfaces[k][at])
                .text(" ")
                .fixed(grid.surfaces[k + 1][at])
                .text(" ")
                .integer(k)
                .text("\r\n");
        }
    }
}

void write_boundary_flows(Printer& out, const Grid& grid, const Mesh& mesh, const Results& results) {
    const auto line = [&](std::size_t cell, float flow, const char* end) {
        const std::size_t at = cell % grid.layer_cells();
        const std::size_t k = cell / grid.layer_cells();
        out.fixed(mesh.centre_x[at % grid.columns])
            .text(" ")
            .fixed(mesh.centre_y[at / grid.columns])
            .text(" ");
        out.fixed((grid.surfaces[k][at] + grid.surfaces[k + 1][at]) * 0.5).text(" ");
        out.fixed(static_cast<double>(flow)).text(end);
    };
    out.text("WELLS\r\n");
    for (const Results::Well& well : results.wells)
        line(static_cast<std::size_t>(well.cell - 1), well.flow, " 0.0\r\n");
    out.text("RECHARGE\r\n");
    for (std::size_t at = 0; at < grid.layer_cells(); ++at) {
        const auto layer = static_cast<std::size_t>(results.layer_of_recharge[at] - 1);
        if (results.recharge[at] != 0.0F) line(layer * grid.layer_cells() + at, results.recharge[at], "\r\n");
    }
    out.text("STORAGE\r\n");
    for (std::size_t cell = 0; cell < grid.cells(); ++cell) {
        if (results.storage[cell] != 0.0F) line(cell, results.storage[cell], "\r\n");
    }
}

void write_node_files(const std::filesystem::path& folder, const Mesh& mesh) {
    Printer xyz(folder / "node_coordinates.xyz");
    Printer layers(folder / "geo_layers.nd");
    Printer elevations(folder / "elevations.nd");
    xyz.text("# GMStoPLX generated node coordinates file\r\n");
    layers.text("# GMStoPLX generated geo_layer data file\r\n");
    elevations.text("# GMStoPLX generated elevation data file\r\n");
    for (std::size_t n = 0; n < mesh.nodes.size(); ++n) {
        const Node& node = mesh.nodes[n];
        xyz.fixed(mesh.x[node.column_line])
            .text(" ")
            .fixed(mesh.y[node.line])
            .text(" ")
            .fixed(node.z)
            .text("\r\n");
        layers.integer(n / (2 * mesh.per_surface)).text("\r\n");
        elevations.fixed(node.z).text("\r\n");
    }
}

void write_cell_files(const std::filesystem::path& folder, const Grid& grid, const Mesh& mesh) {
    Printer conn(folder / "GENERAL" / "connectivity.conn");
    Printer porosity(folder / "MODFLOW" / "mod_bench.por");
    conn.text("# GMStoPLX generated cell connectivity file\r\n");
    porosity.text("# GMStoPLX generated cell porosity value file\r\n");
    const std::size_t lines = grid.columns + 1;
    for (std::size_t k = 0; k < grid.layers; ++k) {
        for (const std::size_t cell : mesh.cells) {
            const std::size_t corner = cell / grid.columns * lines + cell % grid.columns;
            const char* blank = "";
            for (std::size_t plane = 2 * k; plane < 2 * k + 2; ++plane) {
                for (const std::size_t at : {corner, corner + lines, corner + lines + 1, corner + 1}) {
                    conn.text(blank).integer(plane * mesh.per_surface + mesh.numbers[at]);
                    blank = " ";
                }
            }
            conn.text("\r\n");
            porosity.fixed(kPorosity).text("\r\n");
        }
    }
}

void write_all(const Grid& grid, const std::filesystem::path& from, const std::filesystem::path& to) {
    const Mesh mesh = build_mesh(grid);
    std::filesystem::create_directories(to / "GENERAL");
    std::filesystem::create_directories(to / "MODFLOW");
    Results results(from, grid);
    Printer times(to / "MODFLOW" / "mod_bench.tcf");
    Printer flows(to / "MODFLOW" / "flow_data.dwr");
    flows.text("# PLX\\GRV generated file\r\nGRID\r\n0.000000 0.000000 0.000000 0.0\r\nTIME days\r\n");
    for (int step = 1; step <= grid.steps; ++step) {
        const std::string name = "mod_bench_" + std::to_string(step) + "_000.pff";
        const std::string date = date_text(step);
        results.next_step();
        times.text(date).text(", ").text(name).text(", -1\r\n");
        Printer field(to / "MODFLOW" / name);
        write_field(field, grid, mesh, results);
        flows.text(grid.steps > 1 ? "DATE " + date + "\r\n" : "STEADY_STATE\r\n");
        write_boundary_flows(flows, grid, mesh, results);
    }
    write_node_files(to / "GENERAL", mesh);
    write_cell_files(to, grid, mesh);
}

}  // namespace

int main(int argc, char** argv) {
    Arguments arguments;
    if (!read_arguments(argc, argv, 2, arguments)) {
        std::fprintf(stderr, "usage: bench_floor %s MODEL_FOLDER OUTPUT_FOLDER\n", kSizeOptions);
        return 2;
    }
    write_all(arguments.grid, arguments.folders[0], arguments.folders[1]);
    return 0;
}
