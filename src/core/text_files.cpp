#include <zlib.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <system_error>

#include "core/ascii_text.h"
#include "platform/host_path.h"
#include "platform/platform.h"
#include "plxutils/core/VXUtilities.h"

namespace {

struct CloseGz {
    void operator()(gzFile file) const { gzclose(file); }
};
struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

std::string with_carriage_returns(std::string_view text) {
    std::string lines;
    lines.reserve(text.size() + text.size() / 16);
    for (const char c : text) {
        if (c == '\n') lines += '\r';
        lines += c;
    }
    return lines;
}

/// Takes the first line off the text, its line feed included.
std::string_view take_line(std::string_view& rest) {
    const std::size_t end = rest.find('\n');
    const std::string_view line = rest.substr(0, end == std::string_view::npos ? end : end + 1);
    rest.remove_prefix(line.size());
    return line;
}

std::string_view view(const String& text) {
    return {text.c_str(), static_cast<std::size_t>(text.GetLength())};
}

}  // namespace

String ReadStringFromFile(const char* name) {
    // The expanded name as it is: a VXFile would double a name without a folder.
    const std::string native = plx::platform::native_path(MakeFilename(name).c_str());
    String text;
    if (native.empty() || !plx::platform::is_regular_file(native)) return text;
    const std::unique_ptr<gzFile_s, CloseGz> file(gzopen(native.c_str(), "rb"));
    if (!file) return text;
    char block[8192];
    try {
        // A String counts its bytes in an int.
        for (int n; text.length() < INT_MAX - static_cast<int>(sizeof block) &&
                    (n = gzread(file.get(), block, sizeof block)) > 0;) {
            text.Append(block, static_cast<std::size_t>(n));
        }
    } catch (const std::bad_alloc&) {
        return String();
    }
    return text;
}

void WriteStringToFile(const char* text, const char* name, bool textMode) {
    const std::unique_ptr<std::FILE, CloseFile> file(
        plx::platform::open_file(MakeFilename(name).c_str(), "wb"));
    if (!file || !text) return;
    if (textMode) {
        const std::string lines = with_carriage_returns(text);
        std::fwrite(lines.data(), 1, lines.size(), file.get());
    } else {
        std::fwrite(text, 1, std::strlen(text), file.get());
    }
}

String StripLineFromString(String& text, bool keepEOL) {
    std::string_view rest = view(text);
    std::string_view line = take_line(rest);
    if (!keepEOL && !line.empty() && line.back() == '\n') line.remove_suffix(1);
    String first, following;
    first.Assign(line.data(), line.size());
    following.Assign(rest.data(), rest.size());
    text.Swap(following);
    return first;
}

void RemoveCommentLinesFromString(String& text, bool keepBlankLines) {
    std::string kept;
    kept.reserve(view(text).size() + 1);
    for (std::string_view rest = view(text); !rest.empty();) {
        const std::string_view line = plx::trimmed(take_line(rest), "\n\r\t ");
        if (line.empty() ? keepBlankLines : line.front() != '#') kept.append(line) += '\n';
    }
    text.Assign(kept.data(), kept.size());
}
