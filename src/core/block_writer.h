#pragma once

#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>

#include "core/text_number.h"
#include "plxutils/core/VXOutputFile.h"

namespace plx {

/// Puts text together in blocks and hands them to a VXOutputFile. Line ends become CR LF, as the stream's own
/// text calls write them, without a call per number. Do not write to the stream otherwise before flush().
class BlockWriter {
public:
    static constexpr std::size_t kBlock = 256 * 1024;

    explicit BlockWriter(VXOutputFile& out) : out_(out), block_(new char[kBlock]), end_(block_.get()) {}
    ~BlockWriter() { flush(); }
    BlockWriter(const BlockWriter&) = delete;
    BlockWriter& operator=(const BlockWriter&) = delete;

    /// The text, every LF as CR LF.
    BlockWriter& text(std::string_view s) {
        for (;;) {
            const std::size_t line_end = s.find('\n');
            raw(s.substr(0, line_end));
            if (line_end == std::string_view::npos) return *this;
            put('\n');
            s.remove_prefix(line_end + 1);
        }
    }
    /// A number as "%lf" prints it.
    BlockWriter& fixed(double v) {
        reserve(kFixedMax);
        end_ = format_fixed6(end_, v);
        return *this;
    }
    /// A number as "%d" prints it.
    BlockWriter& integer(int v) {
        reserve(kFixedMax);
        end_ = format_int(end_, v);
        return *this;
    }
    /// One byte; LF becomes CR LF.
    BlockWriter& put(char c) {
        reserve(2);
        if (c == '\n') *end_++ = '\r';
        *end_++ = c;
        return *this;
    }

    /// Hands everything to the stream. False, as from then on ok(), when a write came up short; the text is
    /// dropped.
    bool flush() {
        const auto n = static_cast<int>(end_ - block_.get());
        end_ = block_.get();
        if (n == 0 || !ok_) return ok_;
        const int written = out_.WriteRawBytes(end_, n);
        bytes_ += written;
        ok_ = written == n;
        return ok_;
    }
    bool ok() const { return ok_; }
    /// Bytes handed to the stream so far; after flush() all of them.
    std::int64_t bytes() const { return bytes_; }

private:
    void reserve(std::size_t n) {
        if (static_cast<std::size_t>(block_.get() + kBlock - end_) < n) flush();
    }
    void raw(std::string_view s) {
        while (!s.empty()) {
            reserve(1);
            const auto room = static_cast<std::size_t>(block_.get() + kBlock - end_);
            const std::size_t n = s.size() < room ? s.size() : room;
            std::memcpy(end_, s.data(), n);
            end_ += n;
            s.remove_prefix(n);
        }
    }

    VXOutputFile& out_;
    std::unique_ptr<char[]> block_;
    char* end_;
    std::int64_t bytes_ = 0;
    bool ok_ = true;
};

}  // namespace plx
