#pragma once

#include <cstdio>

#include "plxutils/core/VXFile.h"
#include "plxutils/core/VXString.h"
#include "plxutils/export.h"

struct gzFile_s;

/// Byte stream for reading. Plain and gzip files (of one or more members) read the same.
///
/// Nothing prints. On a closed stream every function returns 0 or false, isEOF true. A file that cannot be
/// decoded any further (damaged gzip data) delivers no more bytes, but isEOF stays false: loops must end on a
/// read that delivers nothing, too.
class PLX_EXPORT VXInputFile {
public:
    VXInputFile();
    VXInputFile(const VXInputFile&) = delete;
    VXInputFile& operator=(const VXInputFile&) = delete;
    ~VXInputFile();

    /// Opens a stored file name at its first byte of data, closing what was open. False when it cannot be
    /// read or is a directory.
    bool Open(const char* name);
    /// Reads from an open C stream, from its present place on; `name` is what Filename will tell. The caller
    /// keeps `fp`, whose place in the file moves with the reading. Always true; when the stream cannot be
    /// read, reads deliver nothing.
    bool Assign(std::FILE* fp, const char* name);
    /// False when nothing was open.
    bool Close();
    bool isOpened() const { return isOpen; }

    /// Reads up to n bytes as text: every CR LF becomes LF and the text ends at the first byte 0.
    /// @param[out] buf  n + 1 bytes; the text and a NUL. Untouched for n < 1.
    /// @return length of the text in buf; 0 also when nothing was read.
    int Read(char* buf, int n);
    /// Reads up to and including the next LF. A final CR LF becomes LF, which `stripEOL` removes; bytes 0 are
    /// left out; a lone CR stays.
    /// @return length of `line`; 0 also when there was no more line, and `line` is empty then.
    int ReadLine(String& line, bool stripEOL);
    /// Reads up to n bytes as they are and returns their number.
    int ReadRawBytes(char* buf, int n);
    /// Read a little-endian 32-bit integer or IEEE double. False on a short read, which leaves v as it was
    /// and consumes the bytes that were there.
    bool ReadRawInt(int& v);
    bool ReadRawDouble(double& v);
    /// True once a read has come up short at the end of the input, not already after its last byte.
    bool isEOF() const;
    /// Full stored path of the file.
    String Filename() const;

private:
    friend class VXFileReader;
    // Tells "no byte came" (false) from an empty line.
    bool NextLine(String& line, bool stripEOL);

    bool isOpen;
    VXFile file;
    gzFile_s* gz;
};
