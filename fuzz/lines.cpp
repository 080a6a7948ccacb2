#include <cstdio>

#include "plxutils/core/VXFileReader.h"
#include "support/fuzz_files.h"

using namespace plx;

namespace {

// A file's words in all the ways in which they are asked for.
void read_words(const VXFileReader& reader) {
    for (int i = 0; i <= reader.WordsFound(); ++i) {
        int whole = 0, flag = 0;
        double v = 0.0;
        reader.WordToInt(i, whole);
        reader.WordToDouble(i, v);
        reader.WordToChemValue(i, 0.5, -1.0, v, flag);
        reader.WordToGeoValue(i, v);
        if (i < 3) reader.FindWord(reader.GetWord(i), i % 2 == 0);
    }
    VX1DArray<String> words;
    reader.CopyCurrentWords(words, 1);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Input input(data, size);
    // Bits 3 and 4 choose the separators, bit 5 raw numbers before the text.
    static constexpr const char* kDelimiters[] = {" \t,", "", ";\"", "\r\n\t ,"};
    VXFileReader reader;
    if (!reader.Open(fuzz::write_file("lines.txt", input.bytes()).c_str())) __builtin_trap();
    if (input.flag(5)) {
        int whole = 0;
        double v = 0.0;
        reader.ReadRawInt(whole);
        reader.ReadRawDouble(v);
    }
    const char* const delimiters = kDelimiters[(input.choices() >> 3) & 3];
    while (reader.ReadLine(delimiters, input.flag(0), input.flag(1), input.flag(2)) >= 0) read_words(reader);
    return 0;
}
