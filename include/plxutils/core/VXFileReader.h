#pragma once

#include <cstdio>

#include "plxutils/core/VX1DArray.h"
#include "plxutils/core/VXInputFile.h"
#include "plxutils/core/VXString.h"
#include "plxutils/export.h"

/// Reads a text file, plain or gzip, line by line and splits each line into words.
///
/// Words are counted from 0. Nothing prints, except "[%d] index out of bounds." to standard output for a
/// negative word index. After Close the words are no longer given; the line, its number and the word count
/// stay until the next Open or ReadLine. Stream functions are those of VXInputFile.
class PLX_EXPORT VXFileReader {
public:
    VXFileReader();
    ~VXFileReader();

    /// Also sets the line number to 0.
    bool Open(const char* name);
    /// VXInputFile::Assign; the line number goes on.
    bool AssignToOpen(std::FILE* fp, const char* name);
    bool Close();
    bool isOpened() const;
    bool isEOF() const;
    int ReadRawBytes(char* buf, int n);
    bool ReadRawInt(int& v);
    bool ReadRawDouble(double& v);
    String Filename() const;

    /// Reads the next line and splits it into words.
    ///
    /// @param delims        set of single-byte separators; runs of them count as one.
    /// @param skipComments  skip empty lines and lines whose first byte is '#', and cut comments at the end
    /// of a line.
    /// @param trim          remove blanks, tabs, CR and LF at both ends of the line first.
    /// @param atMarker      keep only what follows the first "@@"; a line without it has no words.
    /// @return number of words; 0 for a line without words; -1 when no line is left (known only after a read
    /// has come
    ///         up short), when the input is damaged, or when not open.
    int ReadLine(String delims, bool skipComments, bool trim, bool atMarker);
    int WordsFound() const { return wordCount; }
    /// The line as trimmed and cut at the marker.
    String CurrentLine() const { return curLine; }
    /// Number of physical lines read since Open, skipped ones and the read that found the end included.
    int CurrentLineNumber() const { return lineNumber; }
    /// Word i; empty when there is none.
    String GetWord(int i) const;
    /// Copies the words from `first` on into out[0], out[1], ... and returns their number. For a negative
    /// `first` the words that do not exist are empty, each with the message.
    int CopyCurrentWords(VX1DArray<String>& out, int first) const;
    /// Index of the first or last word equal to w, or -1. Without `caseSensitive` ASCII letters compare
    /// without case.
    int FindWord(String w, bool caseSensitive) const;
    int FindLastWord(String w, bool caseSensitive) const;

    /// Word i as a decimal number, truncated toward zero. Text that is no number gives 0 and true; false,
    /// with v as it was, only for an empty or missing word. Out of range gives -2147483648.
    bool WordToInt(int i, int& v) const;
    /// Word i as a decimal number with an optional exponent (e, E, d or D): its longest valid prefix, 0 when
    /// there is none. False, with v as it was, only for an empty or missing word.
    bool WordToDouble(int i, double& v) const;
    /// Reads a chemistry measurement, in the unit of the file.
    ///
    /// @param dlFactor          what a value below the detection limit ("<5") is multiplied by.
    /// @param nondetectValue    value of "nondetect", "nd", "non-detect".
    /// @param[out] v     the value; -1.0e9 for "missing", "na", "nm", "unk", "unknown", "unmeasured",
    /// "not-measured" and
    ///                   when false is returned.
    /// @param[out] flag  0 measured or missing, 1 below the detection limit (also on "<" with no number), 2
    /// non-detect.
    /// @return false when the word is empty, missing or no number.
    bool WordToChemValue(int i, double dlFactor, double nondetectValue, double& v, int& flag) const;
    /// Reads the elevation of a geologic surface: "missing", "unknown", "unk", "na", "short", "terminated",
    /// "term" give -1.0e9, "pinch", "pinched", "pinch-out" give +1.0e9, anything else is a number.
    /// @return false, with v = -1.0e9, when the word is empty, missing or no number.
    bool WordToGeoValue(int i, double& v) const;

private:
    VXFileReader(const VXFileReader&) : VXFileReader() {}
    VXFileReader& operator=(const VXFileReader&) { return *this; }

    bool NextLine(bool trim);
    void TrimLine(bool trim);
    void SplitCurLine(String delims, bool comments);
    const String& Word(int i) const;

    VXInputFile in;
    int lineNumber;
    String curLine;
    int wordCount;
    VX1DArray<String> words;
};

namespace plx {

/// VXFileReader::WordToChemValue for a word that stands by itself.
PLX_EXPORT bool read_chem_word(const char* word, double dlFactor, double nondetectValue, double& v,
                               int& flag);

}  // namespace plx

/// Splits a line into words.
///
/// A word that begins with a double quote or an apostrophe runs to the next such character (or to the end of
/// the line), may hold separators and may be empty; quotes inside other words are ordinary bytes. With
/// `comments` a '#' at the beginning of a word ends the line. Without separators the whole line is one word.
///
/// @param[out] count  number of words, also the size of `words`.
PLX_EXPORT void LineToWords(String line, String delims, int& count, VX1DArray<String>& words, bool comments);
