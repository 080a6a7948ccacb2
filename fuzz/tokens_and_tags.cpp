#include <string>

#include "core/file_tags.h"
#include "core/file_tokens.h"
#include "formats/modflow_words.h"
#include "plxutils/core/VXFile.h"
#include "plxutils/core/VXUtilities.h"
#include "support/fuzz_files.h"

using namespace plx;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Input input(data, size);
    // A tag file, and a name whose tokens it replaces; the name goes through the whole process's tags, too.
    const auto parts = input.parts(2);
    FileTags tags;
    tags.load_once(fuzz::stored(fuzz::write_file("file_tags.txt", parts[0])).c_str());
    const std::string name(parts[1]);
    tags.set("$EXTRA>", name.c_str());
    expand_tokens(name, [&tags](std::string_view token) -> std::optional<std::string> {
        const String* const value = tags.find(token);
        if (value == nullptr) return std::nullopt;
        return std::string(value->c_str());
    });
    if (MakeFilename(name.c_str()).GetLength() > static_cast<int>(kMaxFileName)) __builtin_trap();
    VXFile file(name.c_str());
    file.SetFileAndPath("c:\\data", name.c_str());
    return 0;
}
