#include "plxconvert/sample_file.h"

#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

#include "plxconvert/messages.h"
#include "plxconvert/model_kind.h"
#include "plxutils/core/VXInputFile.h"

namespace plx::tool {

namespace {

/// Marks a gzip file at its beginning; and the number of its bytes, modulo 2^32, is told at its end.
bool is_gzip(const std::filesystem::path& file, std::uint32_t& told) {
    std::ifstream stream(file, std::ios::binary);
    if (stream.get() != 0x1f || stream.get() != 0x8b) return false;
    stream.seekg(-4, std::ios::end);
    told = 0;
    for (int shift = 0; shift < 32; shift += 8)
        told |= (static_cast<std::uint32_t>(stream.get()) & 255U) << shift;
    return true;
}

}  // namespace

void check_text_file(const std::filesystem::path& file) {
    const std::string path = file.string(), name = "'" + path + "' ";
    std::uint32_t told = 0;
    if (!is_gzip(file, told)) {
        if (is_binary(file)) throw InputFault(name + "is a binary file, not a text with samples");
        return;
    }
    VXInputFile stream;
    if (!stream.Open(path.c_str())) throw InputFault(name + "cannot be opened for reading");
    std::vector<char> block(std::size_t{1} << 16);
    std::uint32_t bytes = 0;
    for (int got = 0; (got = stream.ReadRawBytes(block.data(), static_cast<int>(block.size()))) > 0;) {
        bytes += static_cast<std::uint32_t>(got);
    }
    if (!stream.isEOF()) throw InputFault(name + "is damaged");
    // Of a file with several parts the end tells the size of the last one only.
    if (bytes != told) throw InputFault(name + "is cut short, or made of several gzip parts: unpack it");
}

}  // namespace plx::tool
