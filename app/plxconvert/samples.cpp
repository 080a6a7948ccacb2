#include "plxconvert/samples.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <stdexcept>
#include <utility>

#include "plxconvert/messages.h"
#include "plxconvert/sample_cells.h"
#include "plxconvert/sample_columns.h"
#include "plxconvert/sample_file.h"
#include "plxconvert/words.h"
#include "plxutils/core/VXFileReader.h"

namespace plx::tool {

namespace {

constexpr double kMissing = -1.0e9;
constexpr double kLargestValue = 1e30;
constexpr std::size_t kMostFaults = 20;

/// The word as a message shows it.
std::string shown(std::string text) {
    for (char& c : text) {
        if (static_cast<unsigned char>(c) < 0x20) c = '?';
    }
    constexpr std::size_t kEnough = 40;
    if (text.size() > kEnough) text.replace(kEnough, text.npos, "...");
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
        for (std::string line; next_line(line);) {
            if (cells_of(line, kBlanks).empty()) continue;
            if (!first || !take_names(line)) take_line(cells_of(line, columns_.separator));
            first = false;
        }
        if (!reader_.isEOF()) throw InputFault("'" + file_ + "' is damaged or cut short");
        throw_faults();
        if (!set_.samples.empty()) return std::move(set_);
        throw InputFault("'" + file_ + "' holds no sample" +
                         (set_.missing > 0
                              ? ": the values of all " + counted(set_.missing, "line") + " are missing"
                              : ""));
    }

private:
    bool next_line(std::string& line) {
        if (reader_.ReadLine("", false, false, false) < 0) return false;
        line = reader_.CurrentLine().c_str();
        if (reader_.CurrentLineNumber() == 1) line.erase(0, line.size() - without_utf8_mark(line).size());
        while (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.find('\r') == std::string::npos) return true;
        throw InputFault("'" + file_ + "' has line ends that are not known: CR without LF");
    }

    void fault(const std::string& text) {
        if (++fault_count_ > kMostFaults) return;
        faults_ += (faults_.empty() ? "" : "\nplxconvert: ") + file_ + ", line " +
                   std::to_string(reader_.CurrentLineNumber()) + ": " + text;
    }

    void throw_faults() const {
        if (fault_count_ == 0) return;
        const std::size_t more = fault_count_ - std::min(fault_count_, kMostFaults);
        throw InputFault(faults_ + (more > 0 ? "\nplxconvert: and " + std::to_string(more) + " more" : ""));
    }

    /// @return false when the first line is a sample
    bool take_names(const std::string& line) {
        try {
            columns_ = find_columns(line, column_);
        } catch (const std::invalid_argument& error) {
            fault(error.what());
            throw_faults();
        }
        if (!columns_.name.empty()) set_.name = columns_.name;
        return columns_.named;
    }

    void take_line(std::vector<std::string> cells) {
        // Spreadsheets end a table with lines of separators.
        if (std::all_of(cells.begin(), cells.end(), [](const std::string& c) { return c.empty(); })) return;
        const std::size_t most = columns_.cells + columns_.spare;
        if (cells.size() <= most) {
            while (cells.size() > columns_.cells && cells.back().empty()) cells.pop_back();
        }
        if (cells.size() != columns_.cells) {
            fault("has " + counted(static_cast<long long>(cells.size()), "cell") + ", not " +
                  std::to_string(columns_.cells) + advice());
            return;
        }
        std::array<double, 3> at{};
        for (std::size_t i = 0; i < 3; ++i) {
            const std::string& word = cells[columns_.place[i]];
            if (coordinate(word, at[i])) continue;
            fault(std::string(1, "xyz"[i]) + " is " + shown(word) + ", no coordinate");
            return;
        }
        if (cells[columns_.value].empty()) {
            ++set_.missing;
            return;
        }
        take_value(at, cells[columns_.value]);
    }

    const char* advice() const {
        switch (columns_.separator) {
            case ',':
                return " (commas separate the cells)";
            case ';':
                return " (semicolons separate the cells)";
            case '\t':
                return " (tabs separate the cells)";
            default:
                return " (write 'missing' into empty cells, and quotes around names with blanks)";
        }
    }

    void take_value(const std::array<double, 3>& at, const std::string& word) {
        double value = 0.0;
        int flag = 0;
        const bool read =
            read_chem_word(word.c_str(), rules_.detection_factor, rules_.nondetect, value, flag);
        const bool has_digit = word.find_first_of("0123456789") != std::string::npos;
        const bool in_words = !has_digit && (flag == 2 || (flag == 0 && value == kMissing));
        // A number is taken from the beginning of a word; a date must not become a year.
        if (!read || !(in_words || is_measured(word)) || !(std::fabs(value) <= kLargestValue)) {
            fault("the value is " + shown(word) + ", no measurement");
            return;
        }
        if (flag == 0 && value == kMissing) {
            ++set_.missing;
            return;
        }
        set_.below_detection += flag == 1 ? 1 : 0;
        set_.nondetect += flag == 2 ? 1 : 0;
        set_.samples.push_back({at[0], at[1], at[2], value});
    }

    const std::string& file_;
    const std::string& column_;
    const ChemistryRules& rules_;
    VXFileReader reader_;
    SampleSet set_;
    SampleColumns columns_;
    std::string faults_;
    std::size_t fault_count_ = 0;
};

}  // namespace

SampleSet read_samples(const std::filesystem::path& file, const std::string& column,
                       const ChemistryRules& rules) {
    check_text_file(file);
    const std::string name = file.string();
    return SampleReader(name, column, rules).read();
}

}  // namespace plx::tool
