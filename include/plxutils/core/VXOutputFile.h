#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>
#include <type_traits>

#include "plxutils/core/VXFile.h"
#include "plxutils/core/VXString.h"
#include "plxutils/export.h"

struct gzFile_s;

namespace plx {
class WholeFile;
}

/// Byte stream for writing, plain or gzip.
///
/// Text calls write CR LF for every LF; raw calls write bytes as they are. Nothing prints. On a closed stream
/// every write returns 0 or false. Plain output is buffered, so a full disk may show only in Failed(), after
/// Close. What was written until then is under the file's name: plx::WholeFile shows complete files only.
class PLX_EXPORT VXOutputFile {
public:
    VXOutputFile();
    ~VXOutputFile();
    VXOutputFile(const VXOutputFile&) = delete;
    VXOutputFile& operator=(const VXOutputFile&) = delete;

    /// Creates or truncates the stored file name, or continues it when `append` is true (gzip: as a further
    /// member), closing what was open. `compressed` alone chooses gzip, level 9; the name does not matter.
    bool Open(const char* name, bool compressed, bool append);
    /// A mode text in the manner of fopen would silently convert to bool.
    bool Open(const char*, const char*, bool) = delete;
    /// Completes the file. False only when nothing was open: ask Failed() whether every byte was written.
    bool Close();

    /// Writes the text; every LF becomes CR LF, also in a CR LF. Returns the number of bytes written.
    int Write(String text);
    /// Writes the text and a line end. Text and LF together are cut to 8192 bytes, so that a longer text
    /// loses its line end. Returns the number of bytes written.
    int WriteLine(String text);
    /// Writes printf-style output, cut to 8192 bytes, as Write does. A String argument is taken as its text.
    template <class... A>
    int Format(const char* fmt, const A&... args) {
        return FormatText(fmt, Arg(args)...);
    }
    template <class... A>
    int Format(const String& fmt, const A&... args) {
        return FormatText(fmt.c_str(), Arg(args)...);
    }
    /// Writes n bytes as they are; returns the number written, 0 for n < 1.
    int WriteRawBytes(const char* p, int n);
    /// Write a little-endian 32-bit integer or IEEE double; true when all bytes were written.
    bool WriteRawInt(int v);
    bool WriteRawDouble(double v);
    /// Full stored path of the file.
    String Filename() const;
    /// True when a write, or the closing, since the last Open came up short (a full disk). Stays until the
    /// next Open.
    bool Failed() const { return failed_; }

private:
    friend class plx::WholeFile;

    /// Takes over the descriptor of an empty file that is open for writing; it is closed when that fails.
    bool OpenDescriptor(int descriptor, bool useGzip);
    bool Opened();

    static const char* Arg(const String& s) { return s.c_str(); }
    static const char* Arg(const char* s) { return s; }
    template <class T>
    static T Arg(const T& v) {
        static_assert(std::is_arithmetic<T>::value || std::is_enum<T>::value || std::is_pointer<T>::value,
                      "printf argument");
        return v;
    }
    int FormatText(const char* fmt, ...);
    int WriteText(const char* text, std::size_t n);
    int WriteBytes(const char* bytes, std::size_t n);

    bool isOpen, compressed;
    VXFile file;
    std::FILE* fp;
    gzFile_s* gz;
    std::unique_ptr<char[]> buffer_;  // the C stream's; lives as long as it
    std::string translated_;
    bool failed_;
};
