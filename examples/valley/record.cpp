#include "record.h"

#include <bit>
#include <stdexcept>
#include <system_error>

namespace valley {

static_assert(std::endian::native == std::endian::little, "values are written as they lie in memory");

Record& Record::raw(const void* from, std::size_t count) {
    const char* first = static_cast<const char*>(from);
    bytes_.insert(bytes_.end(), first, first + count);
    return *this;
}

ResultFile::ResultFile(const std::filesystem::path& name) : name_(name), temporary_(name) {
    temporary_ += ".part";
    file_.open(temporary_, std::ios::binary);
    if (!file_) throw std::runtime_error(temporary_.string() + ": cannot be written");
}

ResultFile::~ResultFile() {
    std::error_code nothing_to_remove;
    file_.close();
    std::filesystem::remove(temporary_, nothing_to_remove);
}

void ResultFile::write(const Record& record) {
    file_.write(record.bytes().data(), static_cast<std::streamsize>(record.bytes().size()));
}

void ResultFile::close() {
    file_.close();
    if (!file_) throw std::runtime_error(temporary_.string() + ": could not be written in full");
}

void ResultFile::publish() { std::filesystem::rename(temporary_, name_); }

}  // namespace valley
