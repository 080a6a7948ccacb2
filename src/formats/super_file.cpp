#include "formats/super_file.h"

#include <cmath>

#include "core/ascii_text.h"
#include "core/text_number.h"
#include "formats/card_words.h"
#include "formats/name_file.h"
#include "plxutils/core/VXFileReader.h"

namespace plx {
namespace {

using Kind = SuperFile::Fault::Kind;

bool number_of_word(const VXFileReader& reader, int i, double& value) {
    const String word = reader.GetWord(i);
    const char* const end = word.c_str() + word.length();
    return word.length() > 0 && parse_double(word.c_str(), end, value) == end;
}

class SuperFileReader {
public:
    SuperFileReader(const VXFile& file, VXFileReader& reader, SuperFile& out, Problems& problems)
        : file_(file), reader_(reader), out_(out), problems_(problems) {}

    void read() {
        bool first = true;
        while (reader_.ReadLine("\r\n\t ,", true, true, false) >= 0) {
            const String card = reader_.GetWord(0);
            if (first && card == "MFUSGSUP") {
                out_.unstructured = true;
                return;
            }
            first = false;
            if (in_materials_ && read_materials()) continue;
            in_materials_ = card == "MAT";
            if (!read_card(card)) return;
        }
    }

private:
    /// True for a line of the material list; any other ends the list and is a card.
    bool read_materials() {
        double value = 0.0;
        if (!number_of_word(reader_, 0, value)) return false;
        for (int i = 0; i < reader_.WordsFound(); ++i) {
            if (!number_of_word(reader_, i, value)) {
                complain(std::string("material \"") + reader_.GetWord(i).c_str() + "\" is no number");
                break;
            }
            out_.materials.push_back(truncate_to_int(value));
        }
        return true;
    }

    /// False when nothing may be read behind the card.
    bool read_card(const String& card) {
        if (card == "NAME") {
            const std::string name = file_of_card(reader_);
            if (!name.empty()) out_.name_file = resolve_beside(file_.GetDirectoryName(), name);
        } else if (card == "IJK") {
            read_directions();
        } else if (card == "ORIG") {
            return read_origin();
        } else if (card == "ROTZ") {
            double degrees = 0.0;
            if (!number_of_word(reader_, 1, degrees)) return fault(Kind::kPlacement, "ROTZ is no angle");
            out_.rotation = degrees;
        } else if (card == "REFTIME") {
            const double date = date_of_card(reader_);
            if (std::isnan(date)) {
                fault(Kind::kDate, "REFTIME is no date");
            } else {
                out_.start_date = date;
            }
        } else if (card == "UNITS") {
            out_.length_units = unit(1);
            out_.time_units = unit(2);
        } else if (card == "DMAT") {
            double material = 0.0;
            if (number_of_word(reader_, 1, material)) {
                out_.default_material = truncate_to_int(material);
            } else {
                complain("DMAT has no material number");
            }
        }
        return true;
    }

    /// Units become parts of lines; what a damaged pair of quotes has between them could break those.
    std::string unit(int i) const {
        std::string text = reader_.GetWord(i).c_str();
        std::erase_if(text, is_control);
        return text;
    }

    void read_directions() {
        for (int i = 1; i <= 3; ++i) {
            const String word = reader_.GetWord(i);
            out_.x_reversed |= word == "-x";
            out_.y_reversed |= word == "-y";
            out_.z_reversed |= word == "-z";
        }
    }

    bool read_origin() {
        std::array<double, 3> origin{};
        for (int axis = 0; axis < 3; ++axis) {
            if (!number_of_word(reader_, axis + 1, origin[static_cast<std::size_t>(axis)])) {
                return fault(Kind::kPlacement, "ORIG is no point");
            }
        }
        out_.origin = origin;
        return true;
    }

    bool fault(Kind kind, const std::string& what) {
        const std::string line = reader_.CurrentLine().c_str();
        out_.faults.push_back({kind, line});
        complain(what + ": " + line);
        return false;
    }

    void complain(const std::string& what) {
        problems_.push_back(std::string(file_.GetFileName().c_str()) + ": line " +
                            std::to_string(reader_.CurrentLineNumber()) + ": " + what);
    }

    const VXFile& file_;
    VXFileReader& reader_;
    SuperFile& out_;
    Problems& problems_;
    bool in_materials_ = false;
};

}  // namespace

bool read_super_file(const VXFile& file, SuperFile& out, Problems& problems) {
    out = {};
    VXFileReader reader;
    if (!reader.Open(file.GetFilePath().c_str())) return false;
    SuperFileReader(file, reader, out, problems).read();
    return true;
}

}  // namespace plx
