#pragma once

#include "plxutils/export.h"

/* Reads a text file, plain or gzip, line by line and splits each line into words.
 *
 * Order of calls: VXFileReader_new; VXFileReader_Open; VXFileReader_ReadLine for each line, and after it the
 * words; VXFileReader_Close; VXFileReader_delete. A reader can open one file after another. Booleans are -1
 * for true and 0 for false. Words count from 0. There is no word at a negative index. A null text counts
 * as an empty one. Nothing prints and nothing throws.
 *
 * Functions that give a text write it to dst, a buffer of len bytes, in the manner of strncpy: the rest of
 * the buffer is filled with zeros, and a text of len bytes or more fills it without a NUL. They return -1, or
 * 0 with an empty buffer when there is no text. With a null dst or a len below 1 nothing is written and the
 * result is 0. */

#ifdef __cplusplus
extern "C" {
#endif

typedef struct VXFileReaderHandle VXFileReaderHandle;

/* A reader without a file. Null when there is no memory. */
PLX_EXPORT VXFileReaderHandle* VXFileReader_new(void);
/* Closes and releases the reader; null is ignored. */
PLX_EXPORT void VXFileReader_delete(VXFileReaderHandle* reader);
/* Opens a file at its first line, closing the one before. -1 when it is open, else 0. A name without a folder
 * is not found: give an absolute one, or ./name. */
PLX_EXPORT int VXFileReader_Open(VXFileReaderHandle* reader, const char* name);
/* -1 when a file was open, 0 otherwise. */
PLX_EXPORT int VXFileReader_Close(VXFileReaderHandle* reader);
/* Reads the next line and splits it.
 *
 * @param delims  single-byte separators, runs of them count as one; without any the line is one word.
 * @param skipComments  not 0 skips empty lines and lines that begin with '#', and cuts comments at the end of
 *   a line.
 * @param trim  not 0 removes blanks, tabs and line ends at both ends of the line first.
 * @param atMarker  not 0 keeps only what follows the first "@@" of the line.
 * @return the number of words; 0 for a line without words; -1 at the end of the input, when nothing is open
 *   and for a null reader. */
PLX_EXPORT int VXFileReader_ReadLine(VXFileReaderHandle* reader, const char* delims, int skipComments,
                                     int trim, int atMarker);
/* Words of the line read last; 0 for a null reader. */
PLX_EXPORT int VXFileReader_WordsFound(VXFileReaderHandle* reader);
/* The line as it was trimmed and cut at the marker. */
PLX_EXPORT int VXFileReader_CurrentLine(VXFileReaderHandle* reader, char* dst, int len);
/* Word i of the line. */
PLX_EXPORT int VXFileReader_GetWord(VXFileReaderHandle* reader, int i, char* dst, int len);
/* Index of the first word that equals w, or -1; caseSensitive 0 compares ASCII letters without case. */
PLX_EXPORT int VXFileReader_FindWord(VXFileReaderHandle* reader, const char* w, int caseSensitive);
/* Word i as a decimal number, truncated; a text that is no number gives 0 and -1. 0, with *v as it was, for
 * an empty or missing word and for null pointers. */
PLX_EXPORT int VXFileReader_WordToInt(VXFileReaderHandle* reader, int i, int* v);
/* Word i as a decimal number whose exponent letter may be e or d; otherwise as VXFileReader_WordToInt. */
PLX_EXPORT int VXFileReader_WordToDouble(VXFileReaderHandle* reader, int i, double* v);
/* Word i as a measurement of chemistry, in the unit of the file: "<5" gives a tenth of 5, "nd", "nondetect"
 * and "non-detect" -1.0e8, "missing", "na", "nm", "unk", "unknown", "unmeasured" and "not-measured" -1.0e9.
 * 0, with -1.0e9, for anything else that is no number. */
PLX_EXPORT int VXFileReader_WordToChemValue(VXFileReaderHandle* reader, int i, double* v);
/* Lines read since the file was opened, skipped ones and the read that found the end included; 0 for a null
 * reader. */
PLX_EXPORT int VXFileReader_CurrentLineNumber(VXFileReaderHandle* reader);
/* Name of the file in the library's stored form; a relative name stays relative. */
PLX_EXPORT int VXFileReader_Filename(VXFileReaderHandle* reader, char* dst, int len);
/* -1 when the end was found, when nothing is open and for a null reader; 0 otherwise. */
PLX_EXPORT int VXFileReader_isEOF(VXFileReaderHandle* reader);

#ifdef __cplusplus
}
#endif
