#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace plx {

/// How a binary result file is laid out.
struct ResultLayout {
    bool record_markers = false;  ///< Fortran sequential records: each write stands between two int32 lengths
    int real_bytes = 4;           ///< 4 or 8
};

/// Little-endian binary result file, read in blocks through a C stream that stays the caller's. With record
/// markers the markers are passed over, so that the same reads serve both kinds of file; records that a
/// compiler split into parts (negative lengths) are read as one. The stream may be moved by others between
/// two calls.
///
/// A read or skip that cannot be served leaves the file at its end: everything after it fails too, until a
/// seek.
class RecordFile {
public:
    /// @param file  null is an empty file.
    /// @param name  for the messages of the callers.
    RecordFile(std::FILE* file, std::string name);

    /// To be set before the first read.
    void set_layout(const ResultLayout& layout) { layout_ = layout; }
    const ResultLayout& layout() const { return layout_; }
    const std::string& name() const { return name_; }
    /// "name: byte 44", for messages.
    std::string place(std::int64_t position) const { return name_ + ": byte " + std::to_string(position); }
    std::int64_t size() const { return size_; }
    /// Bytes from the position to the end of the file, markers included: no count in the file can ask for
    /// more.
    std::int64_t remaining() const { return size_ - position_; }
    /// Absolute position in the file of the next byte (a record boundary when one was reached).
    std::int64_t position() const { return position_; }
    /// True where a record begins; always true without markers.
    bool at_record_start() const { return record_left_ == 0; }
    /// Positions must be ones that position() gave at the start of a record. False outside the file.
    bool seek(std::int64_t position);
    /// False at the end of the file or on a damaged marker; `to` is then undefined.
    bool read(void* to, std::size_t bytes);
    bool skip(std::int64_t bytes);
    bool read_int(std::int32_t& v) { return read(&v, sizeof v); }
    /// A real of the layout's size.
    bool read_real(double& v) { return read_reals(&v, 1); }
    /// `count` reals of the layout's size as float32 / double.
    bool read_reals(float* to, std::size_t count);
    bool read_reals(double* to, std::size_t count);
    bool at_end() const { return position_ >= size_; }

private:
    bool fail();
    bool fill_block();
    bool read_bytes(void* to, std::size_t bytes);
    bool open_record();
    bool close_record();

    std::FILE* file_;
    std::string name_;
    ResultLayout layout_;
    std::int64_t size_ = 0;
    std::int64_t position_ = 0;
    std::int64_t record_length_ = 0, record_left_ = 0;  ///< of the open record; nothing left: none is open
    std::vector<unsigned char> block_;
    std::int64_t block_begin_ = 0, block_end_ = 0;  ///< positions in the file
};

}  // namespace plx
