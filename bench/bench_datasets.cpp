// A binary dataset of many time steps: the library's reader against fread of the same bytes.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "gms/datasets.h"

namespace {

constexpr int kSteps = 48;
constexpr int kValues = 100000;

/// The file, made once, and removed at the end.
class DatasetFile {
public:
    DatasetFile() : path_((std::filesystem::temp_directory_path() / "plx_bench_datasets.dat").string()) {
        std::FILE* const file = std::fopen(path_.c_str(), "wb");
        if (file == nullptr) std::abort();
        const std::vector<int> head = {3000, 100, 1, 110, 4, 120, 4, 130, 160, 1, 170, kValues, 180, 0};
        std::fwrite(head.data(), sizeof(int), head.size(), file);
        std::vector<float> values(kValues);
        for (int step = 0; step < kSteps; ++step) {
            for (int i = 0; i < kValues; ++i)
                values[static_cast<std::size_t>(i)] = static_cast<float>(i + step) * 0.25F;
            const int card[] = {200, 0};
            const auto time = static_cast<float>(step);
            std::fwrite(card, sizeof(int), 2, file);
            std::fwrite(&time, sizeof time, 1, file);
            std::fwrite(values.data(), sizeof(float), values.size(), file);
        }
        const int end = 210;
        std::fwrite(&end, sizeof end, 1, file);
        std::fclose(file);
    }
    ~DatasetFile() { std::remove(path_.c_str()); }
    const char* path() const { return path_.c_str(); }
    std::int64_t size() const { return static_cast<std::int64_t>(std::filesystem::file_size(path_)); }

private:
    std::string path_;
};

const DatasetFile& dataset_file() {
    static const DatasetFile file;
    return file;
}

void dataset_fread(benchmark::State& state) {
    const DatasetFile& data = dataset_file();
    std::vector<char> bytes(static_cast<std::size_t>(data.size()));
    for (auto _ : state) {
        std::FILE* const file = std::fopen(data.path(), "rb");
        if (std::fread(bytes.data(), 1, bytes.size(), file) != bytes.size())
            state.SkipWithError("short read");
        std::fclose(file);
        benchmark::DoNotOptimize(bytes.data());
    }
    state.SetBytesProcessed(state.iterations() * data.size());
}
BENCHMARK(dataset_fread)->Unit(benchmark::kMillisecond);

void dataset_library(benchmark::State& state) {
    const DatasetFile& data = dataset_file();
    for (auto _ : state) {
        plx::DataSetList list;
        const bool good = plx::read_binary_datasets(data.path(), list, false);
        if (!good || list.at(0)->timeSteps.GetCount() != kSteps) state.SkipWithError("not read");
        state.PauseTiming();
        list.clear();
        state.ResumeTiming();
    }
    state.SetBytesProcessed(state.iterations() * data.size());
}
BENCHMARK(dataset_library)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
