#pragma once

#include "plxutils/c/Utilities.h"
#include "plxutils/core/VXString.h"
#include "plxutils/export.h"

/// Whole-file texts and edits of texts by lines. File-name tokens, extensions, words in fixed buffers and
/// backups are plain C: c/Utilities.h.

/// The name with its tokens expanded, as `FixFilenameString` does it; at most 1023 characters.
PLX_EXPORT String MakeFilename(const char* name);

/// All bytes of a file, decompressed when it is a gzip file. Tokens in the name are expanded; line ends are
/// kept.
///
/// @return empty when the file cannot be opened. What was decoded before damage in a compressed file is
/// returned, in whole blocks.
PLX_EXPORT String ReadStringFromFile(const char* name);

/// Writes a text to a file, which is created or truncated. Tokens in the name are expanded.
///
/// @param textMode  true turns each line feed into carriage return and line feed.
/// Nothing happens when the file cannot be opened, and a failed write is not reported.
PLX_EXPORT void WriteStringToFile(const char* text, const char* name, bool textMode);

/// Removes the first line from a text and returns it, with its line feed when `keepEOL` is true. Without a
/// line feed the whole text is the line.
PLX_EXPORT String StripLineFromString(String& text, bool keepEOL);

/// Trims every line of blanks, tabs and line ends and drops those that begin with "#"; empty lines stay only
/// when `keepBlankLines` is true. Each line that stays ends with a line feed.
PLX_EXPORT void RemoveCommentLinesFromString(String& text, bool keepBlankLines);
