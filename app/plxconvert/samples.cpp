#include "plxconvert/samples.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "plxconvert/messages.h"
#include "plxconvert/model_kind.h"
#include "plxconvert/words.h"
#include "plxutils/core/VXFileReader.h"

namespace plx::tool {

namespace {

constexpr const char* kSeparators = " \t,;";
constexpr double kMissing = -1.0e9;
constexpr double kLargestValue = 1e30;
constexpr std::size_t kMostFaults = 20;

bool coordinate(std::string word, double& number) {
    if (word.size() > 1 && word[0] == '+' && word[1] != '-') word.erase(0, 1);
    std::vector<double> numbers;
    if (!parse_numbers(word, numbers) || numbers.size() != 1) return false;
    number = numbers[0];
    return std::fabs(number) <= kFarthest;
}

/// The word as a message shows it.
std::string shown(const String& word) {
    std::string text = word.c_str();
    for (char& c : text) {
        if (static_cast<unsigned char>(c) < 0x20) c = '?';
    }
    constexpr std::size_t kEnough = 40;
    if (text.size() > kEnough) text = text.substr(0, kEnough) + "...";
    return "'" + text + "'";
}

/// Reads the lines of one file; faults are collected, because a person mends them all at once.
class SampleReader {
public:
    SampleReader(const std::string& file, const std::string& column, const ChemistryRules& rules)
        : file_(file), column_(column), rules_(rules) {}

    SampleSet read() {
        if (!reader_.Open(file_.c_str())) throw InputFault("'" + file_ + "' cannot be opened for reading");
        bool first = true;
        for (int words = 0; (words = reader_.ReadLine(kSeparators, true, true, false)) >= 0;) {
            if (words == 0) continue;
            if (!first || !take_header()) take_sample(words);
            first = false;
        }
        if (!reader_.isEOF()) fault("the file is damaged or cut short from here on");
        throw_faults();
        if (!set_.samples.empty()) return std::move(set_);
        throw InputFault("'" + file_ + "' holds no sample" +
                         (set_.missing > 0
                              ? ": the values of all " + counted(set_.missing, "line") + " are missing"
                              : ""));
    }

private:
    void fault(const std::string& text) {
        if (faults_.size() == kMostFaults) {
            ++more_faults_;
            return;
        }
        faults_.push_back(file_ + ", line " + std::to_string(reader_.CurrentLineNumber()) + ": " + text);
    }

    void throw_faults() const {
        if (faults_.empty()) return;
        std::string text = faults_[0];
        for (std::size_t i = 1; i < faults_.size(); ++i) text += "\nplxconvert: " + faults_[i];
        if (more_faults_ > 0) text += "\nplxconvert: and " + std::to_string(more_faults_) + " more";
        throw InputFault(text);
    }

    /// Names between commas may hold blanks without quotes, as in "x,y,z,Nitrate (mg/l)".
    std::vector<std::string> column_names() const {
        const std::string line = reader_.CurrentLine().c_str();
        const std::size_t separator = line.find_first_of(",;\t");
        std::vector<std::string> names;
        if (separator != std::string::npos && line.find('"') == std::string::npos) {
            names = split(line, line[separator]);
        } else {
            for (int i = 0; i < reader_.WordsFound(); ++i) names.emplace_back(reader_.GetWord(i).c_str());
        }
        // The mark that spreadsheets put before their text.
        if (!names.empty() && names[0].rfind("\xef\xbb\xbf", 0) == 0) names[0].erase(0, 3);
        for (std::string& name : names) name.erase(std::remove(name.begin(), name.end(), '"'), name.end());
        return names;
    }

    /// Takes the first line as column names unless it is a sample.
    bool take_header() {
        double number = 0.0;
        for (int i = 0; i < 3; ++i) {
            if (coordinate(reader_.GetWord(i).c_str(), number)) {
                if (!column_.empty()) fault("no column names, so there is no column '" + column_ + "'");
                return false;
            }
        }
        const std::vector<std::string> names = column_names();
        words_ = static_cast<int>(names.size());
        const auto place = [&names](const std::string& wanted) {
            const auto found = std::find_if(names.begin(), names.end(), [&wanted](const std::string& name) {
                return lower(name) == lower(wanted);
            });
            return found == names.end() ? -1 : static_cast<int>(found - names.begin());
        };
        const std::array<int, 3> named = {place("x"), place("y"), place("z")};
        const auto there = std::count_if(named.begin(), named.end(), [](int i) { return i >= 0; });
        if (there == 3) {
            std::copy(named.begin(), named.end(), columns_.begin());
            columns_[3] = place("value");
            // Usually a table goes on with what was measured.
            for (int i = named[2] + 1; columns_[3] < 0 && i < named[2] + words_; ++i) {
                const int column = i % words_;
                if (std::find(named.begin(), named.end(), column) == named.end()) columns_[3] = column;
            }
        } else if (there > 0) {
            fault("the column names must have all of x, y and z, or none");
        }
        if (!column_.empty()) columns_[3] = place(column_);
        if (columns_[3] < 0 || columns_[3] >= words_) {
            fault("no column " + (column_.empty() ? "with values" : "'" + column_ + "'"));
        } else if (!names[static_cast<std::size_t>(columns_[3])].empty()) {
            set_.name = names[static_cast<std::size_t>(columns_[3])];
        }
        throw_faults();
        return true;
    }

    void take_sample(int words) {
        // Neighbouring separators count as one, so a cell that is left empty would move the others.
        if (words_ == 0) words_ = std::max(words, 4);
        if (words != words_) {
            fault("has " + counted(words, "word") + ", not " + std::to_string(words_) +
                  " (write 'missing' into empty cells, and quotes around names with blanks)");
            return;
        }
        std::array<double, 3> place{};
        for (std::size_t i = 0; i < 3; ++i) {
            const String word = reader_.GetWord(columns_[i]);
            if (coordinate(word.c_str(), place[i])) continue;
            fault(std::string(1, "xyz"[i]) + " is " + shown(word) + ", no coordinate");
            return;
        }
        double value = 0.0;
        int flag = 0;
        const bool read =
            reader_.WordToChemValue(columns_[3], rules_.detection_factor, rules_.nondetect, value, flag);
        if (!read || !(std::fabs(value) <= kLargestValue)) {
            fault("the value is " + shown(reader_.GetWord(columns_[3])) + ", no measurement");
            return;
        }
        if (flag == 0 && value == kMissing) {
            ++set_.missing;
            return;
        }
        set_.below_detection += flag == 1 ? 1 : 0;
        set_.nondetect += flag == 2 ? 1 : 0;
        set_.samples.push_back({place[0], place[1], place[2], value});
    }

    const std::string& file_;
    const std::string& column_;
    const ChemistryRules& rules_;
    VXFileReader reader_;
    SampleSet set_;
    int words_ = 0;  ///< in each line; 0 before the first
    std::array<int, 4> columns_ = {0, 1, 2, 3};
    std::vector<std::string> faults_;
    long long more_faults_ = 0;
};

}  // namespace

SampleSet read_samples(const std::filesystem::path& file, const std::string& column,
                       const ChemistryRules& rules) {
    const std::string name = file.string();
    if (lower(file.extension().string()) != ".gz" && is_binary(file)) {
        throw InputFault("'" + name + "' is a binary file, not a text with samples");
    }
    return SampleReader(name, column, rules).read();
}

}  // namespace plx::tool
