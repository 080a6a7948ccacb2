#pragma once

#ifndef __cplusplus
#include <stdbool.h>
#endif

#include "plxutils/export.h"

/* File-name tokens, extensions, words in fixed buffers, backups and letter case. Results are 0 for failure
 * and not 0 for success. Nothing throws; without memory a function gives what it gives for a null pointer and
 * leaves its buffer alone. */

#ifdef __cplusplus
extern "C" {
#endif

/* Expands the tokens of a file name in place and turns "/" into a backslash.
 *
 * "$XP_PATH<0>" is the installation root, "$XP_PATH<1>" to "$XP_PATH<9>" are the host's search paths; any
 * other "$...>" is a file tag (case does not count), and one without a value is removed. Expansion stops at a
 * "$XP_PATH<" that no digit follows, after 1000 replacements, or when the text passes 65536 bytes.
 *
 * @param buf  holds 1024 bytes; the result has at most 1023 characters and a NUL. Null is ignored. */
PLX_EXPORT void FixFilenameString(char* buf);

/* Reads the extension of a name, whatever its own name says: the text after the last dot of the last
 * component, tokens expanded first, ASCII letters lower-cased.
 *
 * @param ext  holds 1024 bytes.
 * @return 0 when there is no extension (`ext` is then empty) or a pointer is null. */
PLX_EXPORT int SetExtension(const char* name, char* ext);

/* Gives a file tag its value for this process; the tag file is not rewritten.
 *
 * @param tag  the complete token, "$NAME>"; an existing tag is recognised with regard to case. */
PLX_EXPORT void SetFileTag(const char* tag, const char* value);

/* Splits a text at comma, blank, tab, line feed and carriage return into words of a fixed size.
 *
 * A word that begins with a double quote reaches to the next one. Separators after a closing quote are not
 * skipped: what follows it is the next word, blanks included, up to the next quote.
 *
 * @param out      maxWords slots of wordLen bytes each, all cleared first; a longer word is cut.
 * @param maxWords at most 256; the count has 8 bits and wraps after 255.
 * @return the number of words; 0 when a pointer is null or a size below 1. */
PLX_EXPORT int StrToWords(const char* text, char* out, int maxWords, int wordLen);

/* As `StrToWords` with the caller's set of separators (null is the empty set); the text is not trimmed
 * first. */
PLX_EXPORT int StrToWordsDelim(const char* delims, const char* text, char* out, int maxWords, int wordLen);

/* True when a directory search for the name finds an entry: directories count, "*" and "?" in the last
 * component are wildcards, the root and a name with a trailing separator are not found. Tokens are not
 * expanded. */
PLX_EXPORT bool FileExists(const char* name);

/* Moves a file out of the way: name.backup is the newest copy, name.backup1 to name.backup10 are older ones,
 * and the oldest is overwritten when all are there.
 *
 * @return nonzero when the file itself was moved; 0 also when it does not exist (older copies have moved
 * then). */
PLX_EXPORT int BackupFile(const char* name);

/* Changes a-z to A-Z in place. Returns the length; 0 for null. */
PLX_EXPORT int l2u(char* s);
/* Changes A-Z to a-z in place. Returns the length; 0 for null. */
PLX_EXPORT int u2l(char* s);

#ifdef __cplusplus
}
#endif
