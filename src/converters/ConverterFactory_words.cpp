// Word and array readers over C streams, for converter classes that read inputs of their own.

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "converters/model_state.h"
#include "formats/modflow_words.h"
#include "plxutils/converters/ConverterFactory.h"

namespace {

/// The text to read an array from; null, and the array 0, after a message when there is none.
plx::TextSource* array_source(plx::ModelState& model, FILE* f, VX1DArray<double>& values) {
    plx::TextSource* in = model.streams.text_of(f);
    if (in != nullptr) return in;
    std::fill_n(values.data, values.size, 0.0);
    model.fail("no open file to read an array from");
    return nullptr;
}

}  // namespace

int ConverterFactory::read_word(FILE* f, String& word, bool rest_of_line, bool space_ends_word,
                                bool fixed_width, int width) {
    word = "";
    plx::TextSource* in = model().streams.text_of(f);
    if (in == nullptr) return static_cast<int>(plx::WordEnd::kEndOfFile);
    std::string text;
    plx::WordStyle style;
    style.rest_of_line = rest_of_line;
    style.space_ends_word = space_ends_word;
    style.fixed_width = fixed_width;
    style.width = width;
    style.tab_separates = reading_rules.tab_separates_words;
    const plx::WordEnd end = plx::read_word(*in, text, style);
    word.Assign(text.data(), text.size());
    return static_cast<int>(end);
}

void ConverterFactory::parse_data(FILE* f, VX1DArray<double>& values, double multiplier) {
    plx::ModelState& m = model();
    plx::TextSource* in = array_source(m, f, values);
    if (in == nullptr) return;
    plx::read_array_words(*in, {values.data, static_cast<std::size_t>(values.size)}, multiplier,
                          m.text_rules(), m.text_used);
    m.note_text_rules();
}

void ConverterFactory::parse_record(FILE* f, VX1DArray<double>& values) {
    plx::ModelState& m = model();
    plx::TextSource* in = array_source(m, f, values);
    if (in == nullptr) return;
    plx::ArrayTarget target;
    target.values = {values.data, static_cast<std::size_t>(values.size)};
    target.columns = ncol > 0 && values.size == nrow * ncol ? ncol : values.size;
    target.what = "an array";
    plx::read_array_record(*in, m.streams, m.text_rules(), m.text_used, target, m.problems);
    m.note_text_rules();
    m.report_problems();
}

bool ConverterFactory::skip(VXFileReader& reader, int words, int lines) {
    if (words < 0 || lines < 0 || !reader.isOpened()) {
        std::printf("MODFLOW : skip - input error\n");
        return false;
    }
    const String delimiters("\r\n\t ,");
    for (int i = 0; i < lines; ++i) {
        if (reader.ReadLine(delimiters, false, false, false) < 0) {
            std::printf("MODFLOW : skip - number of offset lines exceeds file length\n");
            return false;
        }
    }
    while (words > 0) {
        const int found = reader.ReadLine(delimiters, false, false, false);
        if (found < 0) {
            std::printf("MODFLOW : skip - number of words exceeds file length\n");
            return false;
        }
        words -= found;
    }
    return true;
}
