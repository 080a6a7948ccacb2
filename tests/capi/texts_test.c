#include <math.h>
#include <stdio.h>
#include <string.h>

#include "capi/checks.h"
#include "plxutils/c/plxutils_c.h"

#define COUNT(table) ((int)(sizeof(table) / sizeof *(table)))

static void test_null_texts(void) {
    char text[4] = "abc";
    double v = 7;
    int n = 7;
    const Result results[] = {
        {"Open", VXFileReader_Open(NULL, "a"), 0},
        {"Close", VXFileReader_Close(NULL), 0},
        {"ReadLine", VXFileReader_ReadLine(NULL, " ", 1, 1, 0), -1},
        {"WordsFound", VXFileReader_WordsFound(NULL), 0},
        {"CurrentLine", VXFileReader_CurrentLine(NULL, text, 4), 0},
        {"GetWord", VXFileReader_GetWord(NULL, 0, text, 4), 0},
        {"FindWord", VXFileReader_FindWord(NULL, "a", 1), -1},
        {"WordToInt", VXFileReader_WordToInt(NULL, 0, &n), 0},
        {"WordToDouble", VXFileReader_WordToDouble(NULL, 0, &v), 0},
        {"WordToChemValue", VXFileReader_WordToChemValue(NULL, 0, &v), 0},
        {"CurrentLineNumber", VXFileReader_CurrentLineNumber(NULL), 0},
        {"Filename", VXFileReader_Filename(NULL, text, 4), 0},
        {"isEOF", VXFileReader_isEOF(NULL), -1},
        {"writer's Open", VXFileWriter_Open(NULL, "a"), 0},
        {"OpenForAppend", VXFileWriter_OpenForAppend(NULL, "a"), 0},
        {"OpenCompressed", VXFileWriter_OpenCompressed(NULL, "a"), 0},
        {"writer's Close", VXFileWriter_Close(NULL), 0},
        {"writer's Filename", VXFileWriter_Filename(NULL, text, 4), 0},
        {"Write", VXFileWriter_Write(NULL, "a"), 0},
        {"WriteLine", VXFileWriter_WriteLine(NULL, "a"), 0},
        {"SetExtension", SetExtension(NULL, NULL), 0},
        {"StrToWords", StrToWords("a b", NULL, 2, 2), 0},
        {"StrToWords of length 0", StrToWords("a b", text, 2, 0), 0},
        {"StrToWordsDelim", StrToWordsDelim(" ", NULL, text, 1, 4), 0},
        {"FileExists", FileExists(NULL), 0},
        {"BackupFile", BackupFile(NULL), 0},
        {"l2u", l2u(NULL), 0},
        {"u2l", u2l(NULL), 0},
    };
    check_results(results, COUNT(results));
    VXFileReader_delete(NULL);
    VXFileWriter_delete(NULL);
    FixFilenameString(NULL);
    SetFileTag(NULL, NULL);
    check(v == 7 && n == 7, "values of null readers");
}

static void test_writer(void) {
    char name[64] = "x";
    VXFileWriterHandle* const writer = VXFileWriter_new();
    check(VXFileWriter_Write(writer, "early") == 0 && VXFileWriter_Close(writer) == 0, "not open yet");
    check(VXFileWriter_Filename(writer, name, sizeof name) == 0 && name[0] == '\0', "no name yet");
    check(VXFileWriter_Open(writer, NULL) == 0, "a file without a name");
    check(VXFileWriter_Open(writer, in_folder("out.txt")) == -1, "Open");
    check(VXFileWriter_Write(writer, "a\nb") == 4 && VXFileWriter_Write(writer, NULL) == 0, "Write");
    check(VXFileWriter_WriteLine(writer, "abc") == 5 && VXFileWriter_WriteLine(writer, NULL) == 2, "lines");
    check(VXFileWriter_Filename(writer, name, 3) == -1 && name[1] == ':', "a drive fits in two bytes");
    check(VXFileWriter_OpenForAppend(writer, in_folder("out.txt")) == -1, "another file closes the first");
    check(VXFileWriter_WriteLine(writer, "end") == 5, "an appended line");
    check(VXFileWriter_Close(writer) == -1 && VXFileWriter_WriteLine(writer, "late") == 0, "closed");
    check(take("out.txt", "a\r\nbabc\r\n\r\nend\r\n"), "the written file");
    check(VXFileWriter_OpenCompressed(writer, in_folder("out.gz")) == -1, "OpenCompressed");
    check(VXFileWriter_WriteLine(writer, "<2 ND 4.5d1 12.7 # words") == 26, "bytes before compression");
    VXFileWriter_delete(writer);
}

/* Reads what the writer left. */
static void test_reader(void) {
    char text[10];
    double v = 7;
    int n = 7;
    VXFileReaderHandle* const reader = VXFileReader_new();
    check(VXFileReader_isEOF(reader) == -1 && VXFileReader_Close(reader) == 0, "not open yet");
    check(VXFileReader_ReadLine(reader, " ", 1, 1, 0) == -1, "no line yet");
    check(VXFileReader_Open(reader, NULL) == 0 && VXFileReader_Open(reader, in_folder("none")) == 0, "none");
    check(VXFileReader_Open(reader, in_folder("out.gz")) == -1, "a compressed file");
    check(VXFileReader_ReadLine(reader, NULL, 0, 1, 0) == 1 && VXFileReader_isEOF(reader) == 0,
          "no separators");
    VXFileReader_Open(reader, in_folder("out.gz"));
    check(VXFileReader_ReadLine(reader, " ", 1, 1, 0) == 4 && VXFileReader_WordsFound(reader) == 4, "words");
    memset(text, 'x', sizeof text);
    check(VXFileReader_CurrentLine(reader, text, 3) == -1 && memcmp(text, "<2 x", 4) == 0, "no NUL");
    check(VXFileReader_GetWord(reader, 2, text, 9) == -1, "a word");
    check(memcmp(text, "4.5d1\0\0\0\0x", 10) == 0, "zeros fill the buffer");
    check(VXFileReader_GetWord(reader, 4, text, 9) == 0 && text[0] == '\0', "past the last word");
    check(VXFileReader_GetWord(reader, 2, text, 0) + VXFileReader_GetWord(reader, 2, text, -5) == 0,
          "no room");
    check(VXFileReader_GetWord(reader, 2, NULL, 9) == 0 && text[1] == '.', "no buffer");
    check(VXFileReader_FindWord(reader, "nd", 0) == 1 && VXFileReader_FindWord(reader, "nd", 1) == -1,
          "find");
    check(VXFileReader_FindWord(reader, NULL, 1) == -1, "find nothing");
    check(VXFileReader_WordToChemValue(reader, 0, &v) == -1 && v == 2 * 0.1, "below detection");
    check(VXFileReader_WordToChemValue(reader, 1, &v) == -1 && v == -1.0e8, "non-detect");
    check(VXFileReader_WordToDouble(reader, 2, &v) == -1 && v == 45.0, "a double");
    check(VXFileReader_WordToInt(reader, 3, &n) == -1 && n == 12, "an integer");
    check(VXFileReader_WordToInt(reader, 9, &n) + VXFileReader_WordToDouble(reader, 9, &v) == 0, "no word");
    check(VXFileReader_WordToInt(reader, 3, NULL) == 0, "no place for an integer");
    check(VXFileReader_WordToDouble(reader, 2, NULL) == 0, "no place for a double");
    check(VXFileReader_WordToChemValue(reader, 0, NULL) == 0, "no place for a measurement");
    check(VXFileReader_ReadLine(reader, " ", 1, 1, 0) == -1 && VXFileReader_isEOF(reader) == -1, "the end");
    check(VXFileReader_CurrentLineNumber(reader) == 2 && VXFileReader_Close(reader) == -1, "two reads");
    VXFileReader_delete(reader);
    remove(in_folder("out.gz"));
}

static void test_utilities(void) {
    char name[1024] = "$PLX_TEST>/data", extension[1024], words[3][4], text[] = "aZ-9";
    SetFileTag("$PLX_TEST>", "c:\\mine");
    FixFilenameString(name);
    check(strcmp(name, "c:\\mine\\data") == 0, name);
    check(SetExtension("c:\\a.b\\FILE.TXT", extension) != 0 && strcmp(extension, "txt") == 0, extension);
    check(SetExtension("c:\\a.b\\file", extension) == 0 && extension[0] == '\0', extension);
    check(StrToWords(" one, \"t w\"", words[0], 3, 4) == 2 && strcmp(words[1], "t w") == 0, words[1]);
    check(StrToWordsDelim(";", "a b;c", words[0], 3, 4) == 2 && strcmp(words[0], "a b") == 0, words[0]);
    check(l2u(text) == 4 && strcmp(text, "AZ-9") == 0 && u2l(text) == 4 && strcmp(text, "az-9") == 0, text);
    write_file("old.txt", "kept");
    check(FileExists(in_folder("old.txt")) && BackupFile(in_folder("old.txt")) != 0, "a backup");
    check(!FileExists(in_folder("old.txt")) && take("old.txt.backup", "kept"), "the backup");
    check(BackupFile(in_folder("old.txt")) == 0, "nothing to keep");
    check(RoundDouble(-2.5, 0) == -3 && RoundDouble(1234, -2) == 1200, "rounding");
    check(fabs(rad_to_deg(deg_to_rad(30)) - 30) < 1e-12 && fabs(PI() - 3.14159265358979) < 1e-14, "angles");
}

void test_texts(void) {
    test_null_texts();
    test_writer();
    test_reader();
    test_utilities();
}
