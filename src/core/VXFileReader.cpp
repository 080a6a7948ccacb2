#include "plxutils/core/VXFileReader.h"

#include <climits>
#include <cstdint>
#include <initializer_list>
#include <string_view>

#include "core/ascii_text.h"
#include "core/text_number.h"
#include "core/word_splitter.h"

namespace {

constexpr double kNoData = -1.0e9;
constexpr double kPinched = 1.0e9;

std::string_view view(const String& text) { return {text.c_str(), static_cast<std::size_t>(text.length())}; }

bool is_one_of(std::string_view word, std::initializer_list<std::string_view> names) {
    for (const std::string_view name : names) {
        if (plx::equal_no_case(word, name)) return true;
    }
    return false;
}

bool scan_number(std::string_view text, double& v) {
    double number;
    if (!plx::parse_double(text.data(), text.data() + text.size(), number)) return false;
    v = number;
    return true;
}

int split(std::string_view line, std::string_view delims, VX1DArray<String>& words, bool comments) {
    const plx::Separators separators(delims);
    int count = 0;
    plx::for_each_word(line, separators, comments, [&](std::string_view) { return ++count > 0; });
    if (!words.SetSize(count, String())) {
        words.SetSize(0, String());
        return 0;
    }
    String* word = words.data;
    plx::for_each_word(line, separators, comments, [&](std::string_view text) {
        (word++)->Assign(text.data(), text.size());
        return true;
    });
    return count;
}

bool chem_value(std::string_view word, double dlFactor, double nondetectValue, double& v, int& flag) {
    flag = 0;
    v = kNoData;
    if (word.empty()) return false;
    if (is_one_of(word, {"unmeasured", "not-measured", "nm", "missing", "unknown", "unk", "na"})) return true;
    if (is_one_of(word, {"nondetect", "nd", "non-detect"})) {
        v = nondetectValue;
        flag = 2;
        return true;
    }
    // The flag stays 1 when no number follows; hosts use it to point at the broken detection limit.
    if (word.front() == '<') flag = 1;
    while (!word.empty() && word.front() == '<') word.remove_prefix(1);
    if (!scan_number(word, v)) return false;
    if (flag == 1) v *= dlFactor;
    return true;
}

}  // namespace

VXFileReader::VXFileReader() : lineNumber(0), wordCount(0) {}

VXFileReader::~VXFileReader() = default;

bool VXFileReader::Open(const char* name) {
    lineNumber = 0;
    return in.Open(name);
}

bool VXFileReader::AssignToOpen(std::FILE* fp, const char* name) { return in.Assign(fp, name); }

bool VXFileReader::Close() { return in.Close(); }

bool VXFileReader::isOpened() const { return in.isOpened(); }

bool VXFileReader::isEOF() const { return in.isEOF(); }

int VXFileReader::ReadRawBytes(char* buf, int n) { return in.ReadRawBytes(buf, n); }

bool VXFileReader::ReadRawInt(int& v) { return in.ReadRawInt(v); }

bool VXFileReader::ReadRawDouble(double& v) { return in.ReadRawDouble(v); }

String VXFileReader::Filename() const { return in.Filename(); }

bool VXFileReader::NextLine(bool trim) {
    const bool any = in.NextLine(curLine, true);
    ++lineNumber;
    TrimLine(trim);
    return any;
}

void VXFileReader::TrimLine(bool trim) {
    if (trim) curLine.Trim("\n\r\t ");
}

void VXFileReader::SplitCurLine(String delims, bool comments) {
    wordCount = split(view(curLine), view(delims), words, comments);
}

int VXFileReader::ReadLine(String delims, bool skipComments, bool trim, bool atMarker) {
    if (!in.isOpened() || in.isEOF()) {
        curLine.Assign("", 0);
        words.SetSize(0, String());
        wordCount = 0;
        return -1;
    }
    bool any = NextLine(trim);
    if (skipComments) {
        // A read without a byte ends the loop, too: damaged input never comes to its end.
        while (any && (curLine.length() == 0 || curLine[0] == '#') && !in.isEOF()) any = NextLine(trim);
    }
    if (atMarker) {
        const int marker = curLine.Find("@@", 0);
        if (marker < 0) {
            curLine.Assign("", 0);
        } else {
            curLine.erase(0, marker + 2);
            TrimLine(trim);
        }
    }
    SplitCurLine(delims, skipComments);
    if (wordCount > 0) return wordCount;
    return any && !in.isEOF() ? 0 : -1;
}

const String& VXFileReader::Word(int i) const {
    // The fill value is the empty word.
    return in.isOpened() && i < wordCount ? words[i] : words.fill;
}

String VXFileReader::GetWord(int i) const { return Word(i); }

int VXFileReader::CopyCurrentWords(VX1DArray<String>& out, int first) const {
    const std::int64_t wanted = std::int64_t{wordCount} - first;
    const int n = wanted > 0 && wanted <= INT_MAX ? static_cast<int>(wanted) : 0;
    if (!out.SetSize(n, String())) return 0;
    for (int i = 0; i < n; ++i) {
        const String& word = words[first + i];
        out.data[i].Assign(word.c_str(), static_cast<std::size_t>(word.length()));
    }
    return n;
}

int VXFileReader::FindWord(String w, bool caseSensitive) const {
    for (int i = 0; in.isOpened() && i < wordCount; ++i) {
        if (caseSensitive ? words[i] == w : plx::equal_no_case(view(words[i]), view(w))) return i;
    }
    return -1;
}

int VXFileReader::FindLastWord(String w, bool caseSensitive) const {
    for (int i = in.isOpened() ? wordCount - 1 : -1; i >= 0; --i) {
        if (caseSensitive ? words[i] == w : plx::equal_no_case(view(words[i]), view(w))) return i;
    }
    return -1;
}

bool VXFileReader::WordToInt(int i, int& v) const {
    double number;
    if (!WordToDouble(i, number)) return false;
    v = plx::truncate_to_int(number);
    return true;
}

bool VXFileReader::WordToDouble(int i, double& v) const {
    const std::string_view word = view(Word(i));
    if (word.empty()) return false;
    v = plx::to_double(word);
    return true;
}

bool VXFileReader::WordToChemValue(int i, double dlFactor, double nondetectValue, double& v,
                                   int& flag) const {
    return chem_value(view(Word(i)), dlFactor, nondetectValue, v, flag);
}

bool plx::read_chem_word(const char* word, double dlFactor, double nondetectValue, double& v, int& flag) {
    return chem_value(word == nullptr ? "" : word, dlFactor, nondetectValue, v, flag);
}

bool VXFileReader::WordToGeoValue(int i, double& v) const {
    v = kNoData;
    const std::string_view word = view(Word(i));
    if (word.empty()) return false;
    if (is_one_of(word, {"missing", "unknown", "unk", "na", "short", "terminated", "term"})) return true;
    if (is_one_of(word, {"pinch", "pinched", "pinch-out"})) {
        v = kPinched;
        return true;
    }
    return scan_number(word, v);
}

void LineToWords(String line, String delims, int& count, VX1DArray<String>& words, bool comments) {
    count = split(view(line), view(delims), words, comments);
}
