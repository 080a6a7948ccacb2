#include "support/temp_folder.h"

#include <atomic>
#include <random>

namespace plx::test {

TempFolder::TempFolder() {
    static std::atomic<unsigned> counter{0};
    static const unsigned seed = std::random_device{}();
    std::ostringstream name;
    name << "plx_test_" << std::hex << seed << "_" << counter++;
    path_ = std::filesystem::temp_directory_path() / name.str();
    std::filesystem::create_directories(path_);
}

TempFolder::~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string TempFolder::write(std::string_view name, std::string_view bytes) const {
    const auto target = path_ / name;
    std::filesystem::create_directories(target.parent_path());
    std::ofstream out(target, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return target.string();
}

std::string TempFolder::read(std::string_view name) const { return read_bytes(path_ / name); }

std::string read_bytes(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

}  // namespace plx::test
