// Numbers from and to text: the library's way against the C library's.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "core/block_writer.h"
#include "formats/array_record.h"
#include "formats/text_source.h"
#include "plxutils/core/VXOutputFile.h"

namespace {

constexpr int kColumns = 316;
constexpr std::size_t kValues = kColumns * kColumns;
constexpr std::size_t kBuffer = 1 << 18;

/// Elevations and heads as models have them, from a fixed seed.
std::vector<double> values() {
    std::vector<double> result(kValues);
    std::uint64_t state = 88172645463325252U;
    for (double& value : result) {
        state ^= state << 13;
        state ^= state >> 7;
        state ^= state << 17;
        value = static_cast<double>(state >> 11) * 0x1p-53 * 2000.0 - 500.0;
    }
    return result;
}

/// A text file of all values as "%10.4f", ten a line, below a control record; the system removes it when it
/// is closed.
std::FILE* text_file(const char* format) {
    std::FILE* file = std::tmpfile();
    if (file == nullptr) std::abort();
    std::fprintf(file, "INTERNAL 1.0 %s -1\n", format);
    int column = 0;
    for (const double value : values()) {
        column = column % kColumns + 1;
        std::fprintf(file, "%10.4f%s", value, column % 10 == 0 || column == kColumns ? "\n" : "");
    }
    std::fflush(file);
    return file;
}

void array_getc_atof(benchmark::State& state) {
    std::FILE* file = text_file("(FREE)");
    std::vector<double> result(kValues);
    for (auto _ : state) {
        std::rewind(file);
        while (std::getc(file) != '\n') {
        }
        char word[64];
        std::size_t length = 0;
        std::size_t n = 0;
        for (int c = std::getc(file); c != EOF && n < kValues; c = std::getc(file)) {
            if (c != ' ' && c != '\n') {
                if (length + 1 < sizeof word) word[length++] = static_cast<char>(c);
            } else if (length > 0) {
                word[length] = 0;
                result[n++] = std::atof(word);
                length = 0;
            }
        }
        benchmark::DoNotOptimize(result.data());
        if (n != kValues) state.SkipWithError("values are missing");
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kValues));
    std::fclose(file);
}
BENCHMARK(array_getc_atof);

struct NoOtherStreams : plx::ArrayStreams {
    plx::TextSource* unit(int) override { return nullptr; }
    plx::TextSource* open(const std::string&) override { return nullptr; }
};

void array_library(benchmark::State& state, const char* format, bool obey_formats) {
    std::FILE* file = text_file(format);
    std::vector<double> result(kValues);
    const plx::TextRules rules{true, true, true, obey_formats, true};
    NoOtherStreams none;
    for (auto _ : state) {
        std::rewind(file);
        plx::TextSource source(file, "values");
        plx::TextRules used;
        plx::Problems problems;
        const plx::ArrayTarget target{result, kColumns, false, "values"};
        const bool read = plx::read_array_record(source, none, rules, used, target, problems);
        if (!read || !problems.empty()) state.SkipWithError("values are missing");
        benchmark::DoNotOptimize(result.data());
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kValues));
    std::fclose(file);
}
BENCHMARK_CAPTURE(array_library, words, "(FREE)", false);
BENCHMARK_CAPTURE(array_library, list_directed, "(FREE)", true);
BENCHMARK_CAPTURE(array_library, fixed_fields, "(10F10.4)", true);

void number_fprintf(benchmark::State& state) {
    const std::vector<double> numbers = values();
    std::FILE* file = std::fopen("/dev/null", "wb");
    if (file == nullptr) std::abort();
    std::setvbuf(file, nullptr, _IOFBF, kBuffer);
    for (auto _ : state) {
        for (const double number : numbers) std::fprintf(file, "%lf\n", number);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kValues));
    std::fclose(file);
}
BENCHMARK(number_fprintf);

void number_library(benchmark::State& state) {
    const std::vector<double> numbers = values();
    VXOutputFile file;
    if (!file.Open("/dev/null", false, false)) {
        state.SkipWithError("the null device cannot be opened");
        return;
    }
    plx::BlockWriter out(file);
    for (auto _ : state) {
        for (const double number : numbers) out.fixed(number).put('\n');
    }
    out.flush();
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kValues));
}
BENCHMARK(number_library);

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    // The library's trace of what it reads goes to standard output, so the figures go to the other one.
    if (std::freopen("/dev/null", "w", stdout) == nullptr) return 1;
    benchmark::ConsoleReporter reporter;
    reporter.SetOutputStream(&std::cerr);
    reporter.SetErrorStream(&std::cerr);
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}
