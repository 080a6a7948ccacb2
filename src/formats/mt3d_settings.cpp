#include "formats/mt3d_settings.h"

#include <cmath>
#include <string_view>

#include "core/text_number.h"
#include "formats/name_file.h"
#include "platform/platform.h"
#include "plxutils/core/VXFileReader.h"

namespace plx {

namespace {

/// Days since 30 December 1899; not-a-number when there is no such date.
double date_of_words(const VXFileReader& reader, int first) {
    platform::CalendarDate date;
    for (int* part : {&date.year, &date.month, &date.day, &date.hour, &date.minute, &date.second}) {
        const String word = reader.GetWord(first++);
        if (word.length() == 0 || word.SpanExcluding("0123456789.").length() != 0) return std::nan("");
        *part = to_int(word.c_str());
    }
    return platform::calendar_to_ole(date);
}

bool is_whole_number(const String& word) {
    return word.length() > 0 &&
           std::string_view(word.c_str()).find_first_not_of("0123456789") == std::string_view::npos;
}

void read_card(const VXFileReader& reader, const std::string& where, Mt3dSettings& settings,
               Problems& problems) {
    const String card = reader.GetWord(0);
    if (card == "SPC") {
        settings.species.emplace_back(reader.GetWord(1).c_str());
    } else if (card == "UNITS") {
        settings.time_units = reader.GetWord(1).c_str();
    } else if (card == "REFTIME") {
        const int words = reader.WordsFound();
        const double date = words > 6 ? date_of_words(reader, words - 6) : std::nan("");
        if (std::isnan(date)) {
            problems.push_back(where + ": REFTIME is no date: " + reader.CurrentLine().c_str());
        } else {
            settings.start_date = date;
        }
    }
}

}  // namespace

bool read_mt3d_settings(const VXFile& file, Mt3dSettings& settings, Problems& problems) {
    settings = {};
    VXFileReader reader;
    if (!reader.Open(file.GetFilePath().c_str())) return false;
    const std::string name = file.GetFileName().c_str();
    bool cards = true;
    while (reader.ReadLine("\r\n\t ,", false, true, false) >= 0) {
        if (reader.CurrentLine().Find("3.00.99", 0) != String::npos) settings.old_version = true;
        const String card = reader.GetWord(0);
        if (card == "CON") cards = false;
        if (card == "BTN") {
            const bool unit_first = is_whole_number(reader.GetWord(1)) && reader.WordsFound() > 2;
            const String package = reader.GetWord(unit_first ? 2 : 1);
            settings.transport_package = resolve_beside(file.GetDirectoryName(), package.c_str());
        } else if (cards) {
            read_card(reader, name + ": line " + std::to_string(reader.CurrentLineNumber()), settings,
                      problems);
        }
    }
    return true;
}

}  // namespace plx
