#include "plxutils/core/VXInputFile.h"

#include <zlib.h>

#include <climits>
#include <cstring>
#include <new>
#include <string>

#include "platform/descriptor.h"
#include "platform/host_path.h"
#include "platform/platform.h"

namespace {

constexpr unsigned kReadAhead = 64 * 1024;

// A longer line is damage: memory for it would have no bound.
constexpr int kMaxLine = 64 * 1024 * 1024;

gzFile open_native(const std::string& native) {
    // gzopen would take a directory for an empty file, and reading a device or a pipe may never end.
    if (native.empty() || !plx::platform::is_regular_file(native)) return nullptr;
    gzFile gz = gzopen(native.c_str(), "rb");
    if (gz) gzbuffer(gz, kReadAhead);
    return gz;
}

// In place; returns the new length.
int to_line_feeds(char* text, int length) {
    int kept = 0;
    for (int i = 0; i < length; ++i) {
        if (text[i] == '\r' && i + 1 < length && text[i + 1] == '\n') continue;
        text[kept++] = text[i];
    }
    text[kept] = 0;
    return kept;
}

}  // namespace

VXInputFile::VXInputFile() : isOpen(false), gz(nullptr) {}

VXInputFile::~VXInputFile() { Close(); }

bool VXInputFile::Open(const char* name) {
    Close();
    file.SetFile(name);
    gz = open_native(plx::platform::native_path(file.GetFilePath().c_str()));
    if (gz) gzrewind(gz);
    isOpen = gz != nullptr;
    return isOpen;
}

bool VXInputFile::Assign(std::FILE* fp, const char* name) {
    Close();
    file.SetFile(name);
    isOpen = true;
    const int descriptor = plx::platform::duplicate_descriptor(fp);
    if (descriptor >= 0) {
        gz = gzdopen(descriptor, "rb");
        if (gz) {
            gzrewind(gz);
        } else {
            plx::platform::close_descriptor(descriptor);
        }
    }
    // True even without a readable stream: hosts take false for "out of memory" and give up.
    return true;
}

bool VXInputFile::Close() {
    if (!isOpen) return false;
    isOpen = false;
    if (gz) gzclose(gz);
    gz = nullptr;
    return true;
}

int VXInputFile::Read(char* buf, int n) {
    const int got = ReadRawBytes(buf, n);
    if (got == 0) return 0;
    const void* end = std::memchr(buf, 0, static_cast<std::size_t>(got));
    const int length = end ? static_cast<int>(static_cast<const char*>(end) - buf) : got;
    return to_line_feeds(buf, length);
}

bool VXInputFile::NextLine(String& line, bool stripEOL) {
    line.Assign("", 0);
    if (!gz) return false;
    char chunk[4096];
    std::size_t n = 0;
    bool any = false;
    bool ended = false;
    try {
        while (!ended && line.length() < kMaxLine) {
            const int c = gzgetc(gz);
            if (c < 0) break;
            any = true;
            if (c == 0) continue;
            if (n == sizeof chunk) {
                // The last byte stays behind: it may be the CR of the line end.
                line.Append(chunk, n - 1);
                chunk[0] = chunk[n - 1];
                n = 1;
            }
            chunk[n++] = static_cast<char>(c);
            ended = c == '\n';
        }
        if (ended) {
            --n;
            if (n > 0 && chunk[n - 1] == '\r') --n;
            if (!stripEOL) chunk[n++] = '\n';
        }
        line.Append(chunk, n);
    } catch (const std::bad_alloc&) {
        line.Assign("", 0);
        return false;
    }
    return any;
}

int VXInputFile::ReadLine(String& line, bool stripEOL) {
    if (!isOpen) return 0;
    NextLine(line, stripEOL);
    return line.length();
}

int VXInputFile::ReadRawBytes(char* buf, int n) {
    if (!isOpen || !gz || !buf || n < 1) return 0;
    const int got = gzread(gz, buf, static_cast<unsigned>(n));
    return got < 0 ? 0 : got;
}

bool VXInputFile::ReadRawInt(int& v) {
    char bytes[sizeof v];
    if (ReadRawBytes(bytes, sizeof bytes) < static_cast<int>(sizeof bytes)) return false;
    std::memcpy(&v, bytes, sizeof v);
    return true;
}

bool VXInputFile::ReadRawDouble(double& v) {
    char bytes[sizeof v];
    if (ReadRawBytes(bytes, sizeof bytes) < static_cast<int>(sizeof bytes)) return false;
    std::memcpy(&v, bytes, sizeof v);
    return true;
}

bool VXInputFile::isEOF() const {
    if (!isOpen) return true;
    return gz && gzeof(gz) == 1;
}

String VXInputFile::Filename() const { return file.GetFilePath(); }
