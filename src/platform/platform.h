#pragma once

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

/// What the library asks of the operating system. There are two implementations, chosen by the build.
///
/// "Stored" names are in the library's form: backslashes, a drive, mostly lower case. Every function that
/// takes one finds the native path itself. Nothing here prints or throws.
namespace plx::platform {

/// True where stored names are the system's own names (Windows); false where they must be translated.
bool names_are_native();

/// Opens a file; null for a directory or when it cannot be opened. `mode` is that of fopen; open in binary.
std::FILE* open_file(const char* stored, const char* mode);

struct FileFacts {
    bool exists = false;
    bool read_only = false;  ///< no write permission is set for anyone, or the read-only attribute
    bool directory = false;
    std::int64_t size = 0;  ///< bytes; 0 for a directory
};

/// Looks a name up as a directory search does: "*" and "?" are wildcards in the last component only,
/// directories count, case does not. Null, empty, the root and a trailing separator are not found.
FileFacts find_file(const char* stored);

/// Names, in lower case (ASCII letters) and in no order, of everything in a folder; of all folders that the
/// stored name may mean where they differ in case only. Empty when there is none.
/// @return nothing when a folder may not be listed, so that names in it can only be tried one by one.
std::optional<std::vector<std::string>> folder_names(const char* stored);

/// Makes one directory as it is spelt; true also when it is there already. Parents are not made.
bool make_directory(const char* stored);

/// Moves a file over an existing one if need be, by copying where the volumes differ.
/// @return false when the source is missing or could not be moved.
bool replace_move(const char* from_stored, const char* to_stored);

/// True for an existing file that is neither a folder nor a device or pipe.
bool is_regular_file(const std::string& native);
/// A native path in UTF-8: itself on POSIX; on Windows a path in the code page of the process, translated.
std::string utf8_path(const std::string& native);
/// A native name made absolute, "." and ".." resolved in the text.
std::string full_path(const std::string& name);
/// The whole command line of this process as one text; a word with blanks is in double quotes.
std::string command_line();
/// Drive letter and colon of the system drive; "c:" on POSIX.
std::string system_drive();
/// Native path of the running program; empty when unknown.
std::string executable_path();
/// Value of an environment variable; empty when it is not set.
std::string environment(const char* name);

/// 64-bit positions. `origin` is SEEK_SET, SEEK_CUR or SEEK_END; tell and file_size give -1 on failure.
bool seek(std::FILE* file, std::int64_t offset, int origin);
std::int64_t tell(std::FILE* file);
/// Bytes of an open regular file, what is still in its write buffer included; the position stays.
std::int64_t file_size(std::FILE* file);

/// A clock that never goes back: count of ticks, and ticks per second.
std::int64_t clock_count();
std::int64_t clock_frequency();

/// A value of an ini file: section and key compare without case, blanks around them and the value are
/// dropped, and so is one pair of quotes around the value. Only the first section of that name counts.
/// @return `fallback` (null is empty) when the file, the section or the key is missing.
std::string ini_value(const char* stored_file, const char* section, const char* key, const char* fallback);

/// A date of the Gregorian calendar, also before its introduction; month and day count from 1.
struct CalendarDate {
    int year = 0, month = 0, day = 0;
    int hour = 0, minute = 0, second = 0;
};

/// Reads an OLE automation date: whole days since 30 December 1899, with the fraction of the day counting
/// forward also for negative dates (-1.25 is 6:00 on 29 December 1899). Rounds to the second.
/// @return false, and `date` unchanged, outside the years 1 to 9999 or for a value that is not a number.
bool ole_to_calendar(double ole_date, CalendarDate& date);

/// The OLE date of a calendar date; not-a-number when there is no such date in the years 1 to 9999.
double calendar_to_ole(const CalendarDate& date);

/// "year-month-day hours:minutes:seconds", zero-padded ("1899-12-30 00:00:00"), or "Invalid DateTime".
std::string date_text(double ole_date);

}  // namespace plx::platform
