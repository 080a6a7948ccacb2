#include "support/temp_folder.h"

#include <atomic>
#include <random>

#include "support/host_system.h"

namespace plx::test {

TempFolder::TempFolder() {
    static std::atomic<unsigned> counter{0};
    static const unsigned seed = std::random_device{}();
    std::ostringstream name;
    name << "plx_test_" << std::hex << seed << "_" << counter++;
    path_ = std::filesystem::temp_directory_path() / name.str();
    if (kWindows) path_ = path_of(stored_form(path_.string()));
    std::filesystem::create_directories(path_);
}

TempFolder::~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string TempFolder::write(std::string_view name, std::string_view bytes) const {
    const auto target = path_ / path_of(name);
    std::filesystem::create_directories(target.parent_path());
    std::ofstream out(target, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return file(name);
}

std::string TempFolder::file(std::string_view name) const {
    return (path_ / path_of(name)).make_preferred().string();
}

std::string TempFolder::text(std::string_view name) const {
    std::string text = read(name);
    std::erase(text, '\r');
    return text;
}

std::string TempFolder::read(std::string_view name) const { return read_bytes(path_ / path_of(name)); }

std::filesystem::path path_of(std::string_view name) { return std::u8string(name.begin(), name.end()); }

std::string read_bytes(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

}  // namespace plx::test
