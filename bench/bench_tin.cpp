// Makes a text project with a TIN of a million nodes and three binary datasets, or writes the files of its
// conversion straight from arrays: what a conversion needs beyond that is its own doing. Mode "arrays" only
// makes the arrays, so that their making can be taken off.

#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

#include "printer.h"

namespace {

using namespace bench;

constexpr int kSide = 1000;
constexpr int kDatasets = 3;

struct Tin {
    std::vector<double> x, y, z;
    std::vector<int> corners;  ///< three for each triangle, from 0
    std::vector<std::vector<float>> values;
};

Tin make_tin() {
    Tin tin;
    tin.values.resize(kDatasets);
    for (int i = 0; i < kSide * kSide; ++i) {
        tin.x.push_back(500000.0 + 12.5 * (i % kSide));
        tin.y.push_back(4100000.0 + 12.5 * (i / kSide));
        // Values with four decimals, which the text file holds exactly as they are here.
        tin.z.push_back(std::round(1e4 * (200.0 + 50.0 * std::sin(i * 0.001))) / 1e4);
        for (int d = 0; d < kDatasets; ++d) {
            tin.values[static_cast<std::size_t>(d)].push_back(
                static_cast<float>(std::cos(i * 0.01 + d) * 30.0));
        }
    }
    for (int row = 0; row + 1 < kSide; ++row) {
        for (int column = 0; column + 1 < kSide; ++column) {
            const int a = row * kSide + column, b = a + kSide;
            tin.corners.insert(tin.corners.end(), {a, a + 1, b, a + 1, b + 1, b});
        }
    }
    return tin;
}

std::string dataset_name(int d) { return "set" + std::to_string(d); }

void write_dataset(const std::filesystem::path& path, const std::vector<float>& values,
                   const std::string& name) {
    Printer out(path);
    const auto card = [&out](std::int32_t number, std::int32_t value) { out.raw(number).raw(value); };
    out.raw(std::int32_t{3000});
    card(100, 1);
    card(110, 4);
    card(120, 1);
    out.raw(std::int32_t{130});
    card(160, 1);
    card(170, static_cast<std::int32_t>(values.size()));
    card(180, 0);
    out.raw(std::int32_t{190}).text(name + std::string(40 - name.size(), '\0'));
    out.raw(std::int32_t{200}).raw(char{0}).raw(0.0F);
    out.bytes(values.data(), values.size() * sizeof(float)).raw(std::int32_t{210});
}

void write_project(const std::filesystem::path& folder, const Tin& tin) {
    Printer project(folder / "bench.gpr");
    project.text("TIN bench.tin\n");
    for (int d = 0; d < kDatasets; ++d) {
        write_dataset(folder / (dataset_name(d) + ".dat"), tin.values[static_cast<std::size_t>(d)],
                      dataset_name(d));
        project.text("DATA " + dataset_name(d) + ".dat\n");
    }
    Printer out(folder / "bench.tin");
    out.text("TIN\nBEGT\nTNAM bench\nID 1\nVERT ").integer(tin.x.size()).text("\n");
    for (std::size_t i = 0; i < tin.x.size(); ++i) {
        out.fixed(tin.x[i], 2).text(" ").fixed(tin.y[i], 2).text(" ").fixed(tin.z[i], 4).text("\n");
    }
    out.text("TRI ").integer(tin.corners.size() / 3).text("\n");
    for (std::size_t i = 0; i < tin.corners.size(); ++i) {
        out.integer(tin.corners[i] + 1).text(i % 3 == 2 ? "\n" : " ");
    }
    out.text("ENDT\n");
}

template <class Values>
void write_points(Printer& out, const Tin& tin, const Values& values) {
    for (std::size_t i = 0; i < tin.x.size(); ++i) {
        out.fixed(tin.x[i]).text(" ").fixed(tin.y[i]).text(" ");
        out.fixed(static_cast<double>(values[i])).text("\r\n");
    }
}

void write_field(Printer& out, const Tin& tin) {
    out.text("# GMStoPLX generated .pff file\r\nDEFINITION Mesh+Node_Data\r\nNSPACE 3\r\nNNODES ");
    out.integer(tin.x.size()).text("\r\nNUM_NODE_DATA 4\r\nNCELL_SETS 1\r\nNODES IN_FILE\r\n");
    write_points(out, tin, tin.z);
    out.text("NODE_DATA_DEF 0 \"Elevation\" \"Linear_\" IN_FILE\r\n");
    for (int d = 0; d < kDatasets; ++d) {
        out.text("NODE_DATA_DEF ")
            .integer(d + 1)
            .text(" \"" + dataset_name(d) + "\" \"Linear_\" IN_FILE\r\n");
    }
    out.text("NODE_DATA_START\r\n");
    for (std::size_t i = 0; i < tin.z.size(); ++i) {
        out.fixed(tin.z[i]).text(" ");
        for (const auto& values : tin.values) out.fixed(static_cast<double>(values[i])).text(" ");
        out.text("\r\n");
    }
    out.text("CELL_SET_DEF 0 ")
        .integer(tin.corners.size() / 3)
        .text(" Tri \"TIN\" IN_FILE\r\nCELL_START\r\n");
    for (std::size_t i = 0; i < tin.corners.size(); ++i) {
        out.integer(tin.corners[i]).text(i % 3 == 2 ? "\r\n" : " ");
    }
}

void write_floor(const std::filesystem::path& folder, const Tin& tin) {
    constexpr std::string_view kHead = "# GMStoPLX generated .gmf file\r\nSurface 1\r\n";
    for (int d = 0; d < kDatasets; ++d) {
        Printer out(folder / ("bench_" + dataset_name(d) + ".gmf"));
        write_points(out.text(kHead), tin, tin.values[static_cast<std::size_t>(d)]);
    }
    Printer surface(folder / "tin_bench_elevation.gmf");
    write_points(surface.text(kHead), tin, tin.z);
    Printer field(folder / "tin_bench_elevation.pff");
    write_field(field, tin);
}

}  // namespace

int main(int argc, char** argv) {
    const std::string_view mode = argc == 3 ? argv[1] : "";
    if (mode != "project" && mode != "floor" && mode != "arrays") {
        std::fputs("usage: bench_tin project|floor|arrays FOLDER\n", stderr);
        return 2;
    }
    const Tin tin = make_tin();
    if (mode == "project") {
        write_project(argv[2], tin);
    } else if (mode == "floor") {
        write_floor(argv[2], tin);
    }
    return 0;
}
