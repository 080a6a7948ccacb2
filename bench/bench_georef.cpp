// Georeferencing: points projected by a third-degree fit against its terms alone, reverse projections against
// a fit for each, and the points and the floor for `plxconvert georef project`.
//
// bench_georef                     Google Benchmark
// bench_georef files FOLDER COUNT  writes FOLDER/site.gcp and FOLDER/points
// bench_georef floor               reads points from standard input and writes results to standard output

#include <benchmark/benchmark.h>

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "plxutils/georef/GeoRef.h"
#include "random_points.h"

namespace {

using namespace bench;

constexpr std::size_t kPoints = 1000000;
constexpr int kReverse = 1000;
constexpr int kThirdDegree = 6;  // the fit type
constexpr int kLattice = 4;
constexpr std::size_t kControlPoints = std::size_t{kLattice} * kLattice;
constexpr std::size_t kTerms = 10;

using Terms = std::array<double, kTerms>;
/// By 1, x, y, x2, xy, y2, x3, x2y, xy2, y3 of places in the unit square.
constexpr Terms kX = {12.0, 30.5, 1.25, -2.5, 0.5, 0.75, 0.25, -0.125, 0.5, 0.0625};
constexpr Terms kY = {-7.0, -0.5, 22.75, 0.375, -1.5, 2.0, 0.125, 0.25, -0.75, 0.5};

/// The floor: the terms and the two sums, nothing else.
inline void evaluate(const Terms& cx, const Terms& cy, double x, double y, double& X, double& Y) {
    const Terms t = {1.0, x, y, x * x, x * y, y * y, x * x * x, x * x * y, x * y * y, y * y * y};
    double sum_x = 0.0, sum_y = 0.0;
    for (std::size_t k = 0; k < kTerms; ++k) {
        sum_x += cx[k] * t[k];
        sum_y += cy[k] * t[k];
    }
    X = sum_x;
    Y = sum_y;
}

struct ControlPoints {
    std::array<double, kControlPoints> x, y, X, Y;

    ControlPoints() {
        for (std::size_t i = 0; i < kControlPoints; ++i) {
            x[i] = static_cast<double>(i % kLattice) / (kLattice - 1);
            y[i] = static_cast<double>(i / kLattice) / (kLattice - 1);
            evaluate(kX, kY, x[i], y[i], X[i], Y[i]);
        }
    }
    GeoRef fit() const {
        GeoRef georef(static_cast<int>(kControlPoints), x.data(), y.data(), X.data(), Y.data());
        georef.process_type(kThirdDegree);
        return georef;
    }
};

struct Places {
    std::vector<double> x, y;

    Places() {
        for (const Place& p : random_places(kPoints, 1)) {
            x.push_back(p[0]);
            y.push_back(p[1]);
        }
    }
};

const Places& places() {
    static const Places all;
    return all;
}

/// What both ways of projecting have to find, within the rounding of a fit.
bool is_projection(const std::vector<double>& X, const std::vector<double>& Y) {
    for (std::size_t i = 0; i < kPoints; ++i) {
        double wanted_x = 0.0, wanted_y = 0.0;
        evaluate(kX, kY, places().x[i], places().y[i], wanted_x, wanted_y);
        if (!(std::fabs(X[i] - wanted_x) < 1e-8 && std::fabs(Y[i] - wanted_y) < 1e-8)) return false;
    }
    return true;
}

template <class Project>
void project_all(benchmark::State& state, const Project& project) {
    const Places& at = places();
    std::vector<double> X(kPoints), Y(kPoints);
    for (auto _ : state) {
        for (std::size_t i = 0; i < kPoints; ++i) project(at.x[i], at.y[i], X[i], Y[i]);
        benchmark::DoNotOptimize(X.data());
        benchmark::DoNotOptimize(Y.data());
        benchmark::ClobberMemory();
    }
    if (!is_projection(X, Y)) state.SkipWithError("points are projected elsewhere");
}

void project_library(benchmark::State& state) {
    GeoRef georef = ControlPoints().fit();
    project_all(state, [&](double x, double y, double& X, double& Y) { georef.project_point(x, y, X, Y); });
}
BENCHMARK(project_library)->Unit(benchmark::kMillisecond);

void project_plain(benchmark::State& state) {
    Terms cx = kX, cy = kY;
    benchmark::DoNotOptimize(cx);
    benchmark::DoNotOptimize(cy);
    project_all(state, [=](double x, double y, double& X, double& Y) { evaluate(cx, cy, x, y, X, Y); });
}
BENCHMARK(project_plain)->Unit(benchmark::kMillisecond);

/// A thousand reverse projections with the fit that each needs: one for all of them, or one for each because
/// a point was stored before it.
void reverse_all(benchmark::State& state, bool refit) {
    const ControlPoints at;
    GeoRef georef = at.fit();
    const auto touch = [&] { georef.set_gcp_values(0, at.x[0], at.y[0], at.X[0], at.Y[0]); };
    double sum = 0.0;
    for (auto _ : state) {
        touch();
        sum = 0.0;
        for (std::size_t i = 0; i < kReverse; ++i) {
            if (refit) touch();
            double x = 0.0, y = 0.0;
            georef.reverse_project_point(at.X[i % kControlPoints], at.Y[i % kControlPoints], x, y);
            sum += x + y;
        }
        benchmark::DoNotOptimize(sum);
    }
    double wanted = 0.0;
    for (std::size_t i = 0; i < kReverse; ++i) wanted += at.x[i % kControlPoints] + at.y[i % kControlPoints];
    if (!(std::fabs(sum - wanted) < 0.05 * wanted)) state.SkipWithError("the way back leads elsewhere");
}

void reverse_kept(benchmark::State& state) { reverse_all(state, false); }
BENCHMARK(reverse_kept);
void reverse_refitted(benchmark::State& state) { reverse_all(state, true); }
BENCHMARK(reverse_refitted);

/// Pixels of an image in the unit square, the square's projections in a map's coordinates.
constexpr double kColumns = 4000.0, kRows = 3000.0, kEast = 431000.0, kNorth = 5387000.0, kWorld = 100.0;

void project_pixel(double column, double row, double& X, double& Y) {
    evaluate(kX, kY, column / kColumns, row / kRows, X, Y);
    X = kEast + kWorld * X;
    Y = kNorth - kWorld * Y;
}

void write_files(const std::string& folder, std::size_t count) {
    std::FILE* gcp = std::fopen((folder + "/site.gcp").c_str(), "w");
    std::FILE* points = std::fopen((folder + "/points").c_str(), "w");
    if (gcp == nullptr || points == nullptr) std::exit(1);
    const ControlPoints at;
    for (std::size_t i = 0; i < kControlPoints; ++i) {
        const double column = kColumns * at.x[i], row = kRows * at.y[i];
        double X = 0.0, Y = 0.0;
        project_pixel(column, row, X, Y);
        std::fprintf(gcp, "%.9f %.9f %.9f %.9f\n", X, -Y, column, row);
    }
    std::mt19937 random(1);
    for (std::size_t i = 0; i < count; ++i) {
        const double column = kColumns * unit(random), row = kRows * unit(random);
        std::fprintf(points, "%.3f %.3f\n", column, row);
    }
    if (std::fclose(gcp) != 0 || std::fclose(points) != 0) std::exit(1);
}

/// A number with as many digits as the converter prints.
void put(std::string& out, double value, char after) {
    char number[32];
    const auto last = std::to_chars(number, number + sizeof number, value, std::chars_format::general, 15);
    *last.ptr = after;
    out.append(number, static_cast<std::size_t>(last.ptr - number) + 1);
}

/// Reads and prints in blocks of whole lines; nothing of a line is looked at but its two numbers.
void print_floor() {
    constexpr std::size_t kBlock = std::size_t{1} << 18;
    std::vector<char> block(kBlock);
    std::string out;
    std::size_t kept = 0;
    for (std::size_t got = 1; got != 0;) {
        got = std::fread(block.data() + kept, 1, kBlock - kept, stdin);
        const std::string_view text(block.data(), kept + got);
        const char* p = text.data();
        const char* const end = p + (text.rfind('\n') + 1);
        while (p != end) {
            double column = 0.0, row = 0.0, X = 0.0, Y = 0.0;
            const auto first = std::from_chars(p, end, column);
            const auto second = std::from_chars(first.ptr + 1, end, row);
            if (first.ec != std::errc{} || second.ec != std::errc{}) std::exit(1);
            project_pixel(column, row, X, Y);
            put(out, X, ' ');
            put(out, Y, '\n');
            p = second.ptr + 1;
        }
        if (std::fwrite(out.data(), 1, out.size(), stdout) != out.size()) std::exit(1);
        out.clear();
        kept = static_cast<std::size_t>(text.data() + text.size() - end);
        std::memmove(block.data(), end, kept);
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 4 && std::string_view(argv[1]) == "files") {
        write_files(argv[2], std::strtoul(argv[3], nullptr, 10));
    } else if (argc == 2 && std::string_view(argv[1]) == "floor") {
        print_floor();
    } else {
        benchmark::Initialize(&argc, argv);
        benchmark::RunSpecifiedBenchmarks();
    }
    return 0;
}
