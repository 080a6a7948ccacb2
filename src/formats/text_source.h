#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace plx {

/// Characters of a text input, read in blocks of 64 KiB from a C stream that stays the caller's.
///
/// CR LF counts as one line feed on every platform; a lone carriage return is handed out as it is and ends a
/// line too. Once a source reads a stream, nobody else may read it: the bytes ahead are in the source's
/// block.
class TextSource {
public:
    static constexpr int kEnd = -1;

    /// @param file  open stream, read from its current position; null gives an empty source.
    /// @param name  shown in messages (the file's name without its folder).
    TextSource(std::FILE* file, std::string name);
    /// A source of its own over a text, for instance one line of another source.
    static TextSource of_text(std::string_view text, std::string name);

    TextSource(TextSource&&) = default;
    TextSource& operator=(TextSource&&) = default;
    TextSource(const TextSource&) = delete;
    TextSource& operator=(const TextSource&) = delete;

    int get() {
        if (next_ == end_ && !fill(1)) return kEnd;
        const char c = *next_++;
        if (c == '\r' || c == '\n') return line_end(c);
        return static_cast<unsigned char>(c);
    }
    int peek();
    bool at_end() { return next_ == end_ && !fill(1); }

    /// The rest of the current line without its end; false when the source was at its end already. The view
    /// lives until the source is used again.
    bool next_line(std::string_view& line);
    bool read_line(std::string& line);
    /// What next_line would give, at most 64 KiB of it.
    std::string_view peek_line();

    /// Bytes as they are (binary arrays in external files); the number read.
    std::size_t read_bytes(void* to, std::size_t count);
    /// The next bytes as they are without taking them, fewer than `count` at the end of the file.
    std::string_view peek_bytes(std::size_t count);
    /// Bytes at hand without reading the file, for scanning in place; empty at the end only.
    std::string_view ahead();
    /// Takes bytes that ahead() showed; `lines` is the number of line ends among them.
    void advance(std::size_t bytes, int lines) {
        next_ += bytes;
        line_ += lines;
    }

    /// True when the line that next_line() or read_line() gave had an end; false for one that the file broke
    /// off.
    bool line_had_end() const { return line_had_end_; }
    /// 1-based number of the line that the next character is on.
    int line() const { return line_; }
    const std::string& name() const { return name_; }
    /// "name: line 12"
    std::string place() const;
    /// Bytes of the file that were not handed out yet: a bound for every count that the file announces. Very
    /// large for a stream without a length, such as a pipe.
    std::int64_t remaining() const { return unread_ + (end_ - next_); }

private:
    bool fill(std::size_t wanted);
    int line_end(char c);

    std::FILE* file_;
    std::string name_;
    std::vector<char> block_;
    std::string spill_;
    const char* next_ = nullptr;
    const char* end_ = nullptr;
    std::int64_t unread_ = 0;
    bool line_had_end_ = false;
    int line_ = 1;
};

}  // namespace plx
