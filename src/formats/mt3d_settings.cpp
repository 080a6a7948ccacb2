#include "formats/mt3d_settings.h"

#include <cmath>

#include "formats/card_words.h"
#include "formats/name_file.h"
#include "plxutils/core/VXFileReader.h"

namespace plx {

namespace {

void read_card(const VXFileReader& reader, const std::string& where, Mt3dSettings& settings,
               Problems& problems) {
    const String card = reader.GetWord(0);
    if (card == "SPC") {
        settings.species.emplace_back(reader.GetWord(1).c_str());
    } else if (card == "UNITS") {
        settings.time_units = reader.GetWord(1).c_str();
    } else if (card == "REFTIME") {
        const double date = date_of_card(reader);
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
            settings.transport_package = resolve_beside(file.GetDirectoryName(), file_of_card(reader));
        } else if (cards) {
            read_card(reader, name + ": line " + std::to_string(reader.CurrentLineNumber()), settings,
                      problems);
        }
    }
    return true;
}

}  // namespace plx
