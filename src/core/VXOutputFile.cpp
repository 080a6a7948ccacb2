#include "plxutils/core/VXOutputFile.h"

#include <zlib.h>

#include <algorithm>
#include <climits>
#include <cstdarg>
#include <cstring>
#include <new>

#include "core/format_text.h"
#include "platform/descriptor.h"
#include "platform/host_path.h"
#include "platform/platform.h"

namespace {

constexpr std::size_t kBuffer = 128 * 1024;
// zlib counts the bytes of one call in an int.
constexpr std::size_t kZlibMost = std::size_t{1} << 30;

std::size_t write_gzip(gzFile gz, const char* bytes, std::size_t n) {
    std::size_t done = 0;
    while (done < n) {
        const int written = gzwrite(gz, bytes + done, static_cast<unsigned>(std::min(n - done, kZlibMost)));
        if (written <= 0) break;
        done += static_cast<std::size_t>(written);
    }
    return done;
}

}  // namespace

VXOutputFile::VXOutputFile() : isOpen(false), compressed(false), fp(nullptr), gz(nullptr), failed_(false) {}

VXOutputFile::~VXOutputFile() { Close(); }

bool VXOutputFile::Open(const char* name, bool useGzip, bool append) {
    Close();
    compressed = useGzip;
    file.SetFile(name);
    const String path = file.GetFilePath();
    if (compressed) {
        const std::string native = plx::platform::target_path(path.c_str());
        if (!native.empty()) gz = gzopen(native.c_str(), append ? "ab9" : "wb9");
    } else {
        fp = plx::platform::open_file(path.c_str(), append ? "a+b" : "wb");
    }
    return Opened();
}

bool VXOutputFile::OpenDescriptor(int descriptor, bool useGzip) {
    compressed = useGzip;
    if (compressed) {
        gz = gzdopen(descriptor, "wb9");
    } else {
        fp = plx::platform::stream_of(descriptor, "wb");
    }
    if (!Opened()) plx::platform::close_descriptor(descriptor);
    return isOpen;
}

bool VXOutputFile::Opened() {
    failed_ = false;
    isOpen = gz != nullptr || fp != nullptr;
    if (gz) gzbuffer(gz, kBuffer);
    if (fp) {
        buffer_.reset(new (std::nothrow) char[kBuffer]);
        if (buffer_) std::setvbuf(fp, buffer_.get(), _IOFBF, kBuffer);
    }
    return isOpen;
}

bool VXOutputFile::Close() {
    if (!isOpen) return false;
    isOpen = false;
    const bool good = gz ? gzclose(gz) == Z_OK : std::fclose(fp) == 0;
    failed_ = failed_ || !good;
    gz = nullptr;
    fp = nullptr;
    buffer_.reset();
    return true;
}

int VXOutputFile::WriteBytes(const char* bytes, std::size_t n) {
    const std::size_t written = gz ? write_gzip(gz, bytes, n) : std::fwrite(bytes, 1, n, fp);
    failed_ = failed_ || written < n;
    return static_cast<int>(std::min<std::size_t>(written, INT_MAX));
}

int VXOutputFile::WriteText(const char* text, std::size_t n) {
    if (!isOpen || n == 0) return 0;
    const char* last = text + n;
    translated_.clear();
    while (const void* found = std::memchr(text, '\n', static_cast<std::size_t>(last - text))) {
        const char* line_end = static_cast<const char*>(found);
        translated_.append(text, line_end).append("\r\n");
        text = line_end + 1;
    }
    if (translated_.empty()) return WriteBytes(text, n);
    translated_.append(text, last);
    return WriteBytes(translated_.data(), translated_.size());
}

int VXOutputFile::Write(String text) {
    return WriteText(text.c_str(), static_cast<std::size_t>(text.length()));
}

int VXOutputFile::WriteLine(String text) {
    plx::FormatBuffer line;
    std::size_t n = std::min(std::strlen(text.c_str()), plx::kFormatMax);
    std::memcpy(line, text.c_str(), n);
    // A text that fills the buffer goes out without a line end; files with such lines exist and are compared.
    if (n < plx::kFormatMax) line[n++] = '\n';
    return WriteText(line, n);
}

int VXOutputFile::FormatText(const char* fmt, ...) {
    if (!isOpen) return 0;
    plx::FormatBuffer text;
    va_list args;
    va_start(args, fmt);
    const std::size_t n = plx::format_text(text, fmt, args);
    va_end(args);
    return WriteText(text, n);
}

int VXOutputFile::WriteRawBytes(const char* p, int n) {
    return isOpen && p && n > 0 ? WriteBytes(p, static_cast<std::size_t>(n)) : 0;
}

bool VXOutputFile::WriteRawInt(int v) {
    char bytes[sizeof v];
    std::memcpy(bytes, &v, sizeof v);
    return WriteRawBytes(bytes, sizeof bytes) == static_cast<int>(sizeof bytes);
}

bool VXOutputFile::WriteRawDouble(double v) {
    char bytes[sizeof v];
    std::memcpy(bytes, &v, sizeof v);
    return WriteRawBytes(bytes, sizeof bytes) == static_cast<int>(sizeof bytes);
}

String VXOutputFile::Filename() const { return file.GetFilePath(); }
