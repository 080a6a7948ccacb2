#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>

#include "core/text_number.h"

namespace plx {

/// Puts the lines of cgPoint::PrintPoint together in blocks and writes them to standard output.
class NodeDump {
public:
    explicit NodeDump(std::string_view heading) : block_(new char[kBlock]), end_(block_.get()) {
        put(heading);
    }
    ~NodeDump() { flush(); }
    NodeDump(const NodeDump&) = delete;
    NodeDump& operator=(const NodeDump&) = delete;

    /// A line up to its values: "Point: [%lf,%lf,%lf-%d]".
    void place(double x, double y, double z, int values) {
        reserve();
        put("Point: [");
        end_ = format_fixed6(end_, x);
        put(",");
        end_ = format_fixed6(end_, y);
        put(",");
        end_ = format_fixed6(end_, z);
        put("-");
        end_ = format_int(end_, values);
        put("]");
    }
    /// " [%1.1lf]"
    void value(double v) {
        reserve();
        put(" [");
        end_ = format_tenths(end_, v);
        put("]");
    }
    /// The same of three integers, and the end of the line.
    void last_values(int a, int b, int c) {
        reserve();
        for (const int v : {a, b, c}) {
            put(" [");
            if (v < 0) put("-");
            end_ = format_unsigned(end_, static_cast<std::uint64_t>(std::abs(std::int64_t{v})));
            put(".0]");
        }
        put("\n");
    }

private:
    static constexpr std::size_t kBlock = 256 * 1024;

    static char* format_tenths(char* out, double v) {
        // Also false for NaN.
        if (!(std::fabs(v) < 8e12)) return format_fixed_any(out, v, 1);
        if (std::signbit(v)) *out++ = '-';
        const double magnitude = std::fabs(v);
        std::uint64_t bits;
        std::memcpy(&bits, &magnitude, sizeof bits);
        const std::uint64_t tenths = scaled_integer(bits, 10);
        out = format_unsigned(out, tenths / 10);
        *out++ = '.';
        *out++ = static_cast<char>('0' + tenths % 10);
        return out;
    }
    void put(std::string_view s) {
        std::memcpy(end_, s.data(), s.size());
        end_ += s.size();
    }
    /// Room for four numbers and what stands between them.
    void reserve() {
        if (end_ + 5 * kFixedMax > block_.get() + kBlock) flush();
    }
    void flush() {
        std::fwrite(block_.get(), 1, static_cast<std::size_t>(end_ - block_.get()), stdout);
        end_ = block_.get();
    }

    std::unique_ptr<char[]> block_;
    char* end_;
};

}  // namespace plx
