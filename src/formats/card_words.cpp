#include "formats/card_words.h"

#include <cmath>
#include <string_view>

#include "core/text_number.h"
#include "platform/platform.h"

namespace plx {
namespace {

bool is_whole_number(const String& word) {
    return word.length() > 0 &&
           std::string_view(word.c_str()).find_first_not_of("0123456789") == std::string_view::npos;
}

}  // namespace

double date_of_card(const VXFileReader& reader) {
    constexpr int kParts = 6;
    int next = reader.WordsFound() - kParts;
    if (next < 1) return std::nan("");
    platform::CalendarDate date;
    for (int* part : {&date.year, &date.month, &date.day, &date.hour, &date.minute, &date.second}) {
        const String word = reader.GetWord(next++);
        if (word.length() == 0 || word.SpanExcluding("0123456789.").length() != 0) return std::nan("");
        *part = to_int(word.c_str());
    }
    return platform::calendar_to_ole(date);
}

std::string file_of_card(const VXFileReader& reader) {
    const bool unit_first = is_whole_number(reader.GetWord(1)) && reader.WordsFound() > 2;
    return reader.GetWord(unit_first ? 2 : 1).c_str();
}

}  // namespace plx
