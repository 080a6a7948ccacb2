#pragma once

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "core/text_number.h"

namespace bench {

/// A file that is written in blocks with the library's own number printing, so that a ratio tells what the
/// conversion costs and not what the printing does. A fault ends the program.
class Printer {
public:
    explicit Printer(const std::filesystem::path& path)
        : name_(path.string()), file_(std::fopen(name_.c_str(), "wb")), block_(kBlock) {
        if (file_ == nullptr) fail();
        std::setvbuf(file_, nullptr, _IONBF, 0);
    }
    Printer(const Printer&) = delete;
    Printer& operator=(const Printer&) = delete;
    ~Printer() {
        flush();
        if (std::fclose(file_) != 0) fail();
    }

    Printer& text(std::string_view s) { return bytes(s.data(), s.size()); }
    Printer& bytes(const void* from, std::size_t count) {
        if (count > kBlock - used_) flush();
        if (count > kBlock) {
            if (std::fwrite(from, 1, count, file_) != count) fail();
            return *this;
        }
        std::memcpy(block_.data() + used_, from, count);
        used_ += count;
        return *this;
    }
    Printer& fixed(double value, int decimals = 6) {
        return put([&](char* to, char* end) {
            if (decimals == 6) return plx::format_fixed6(to, value);
            return std::to_chars(to, end, value, std::chars_format::fixed, decimals).ptr;
        });
    }
    template <typename Integer>
    Printer& integer(Integer value) {
        return put([&](char* to, char* end) { return std::to_chars(to, end, value).ptr; });
    }
    /// A value as it lies in memory.
    template <typename Value>
    Printer& raw(Value value) {
        return bytes(&value, sizeof value);
    }

private:
    static constexpr std::size_t kBlock = 1 << 18;

    template <typename Put>
    Printer& put(Put put_number) {
        if (kBlock - used_ < 400) flush();
        char* to = block_.data() + used_;
        used_ += static_cast<std::size_t>(put_number(to, to + 400) - to);
        return *this;
    }
    void flush() {
        if (std::fwrite(block_.data(), 1, used_, file_) != used_) fail();
        used_ = 0;
    }
    [[noreturn]] void fail() const {
        std::fprintf(stderr, "%s: cannot be written\n", name_.c_str());
        std::exit(1);
    }

    std::string name_;
    std::FILE* file_;
    std::vector<char> block_;
    std::size_t used_ = 0;
};

}  // namespace bench
