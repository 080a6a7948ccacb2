#pragma once

#include "plxutils/export.h"

/* Writes a text file, plain or gzip, with CR LF at the end of each line.
 *
 * Order of calls: VXFileWriter_new; one of the three Open functions; VXFileWriter_Write and
 * VXFileWriter_WriteLine; VXFileWriter_Close; VXFileWriter_delete. A writer can write one file after another.
 * Booleans are -1 for true and 0 for false; every function gives 0 for a null writer. A null text counts as
 * an empty one. Nothing prints and nothing throws. A name without a folder is not found: give an absolute
 * one, or ./name. */

#ifdef __cplusplus
extern "C" {
#endif

typedef struct VXFileWriterHandle VXFileWriterHandle;

/* A writer without a file. Null when there is no memory. */
PLX_EXPORT VXFileWriterHandle* VXFileWriter_new(void);
/* Completes the file and releases the writer; null is ignored. */
PLX_EXPORT void VXFileWriter_delete(VXFileWriterHandle* writer);
/* Creates or empties a plain file, closing the one before. -1 when it is open, else 0. */
PLX_EXPORT int VXFileWriter_Open(VXFileWriterHandle* writer, const char* name);
/* Continues a plain file at its end; it is created when it is missing. -1 when it is open, else 0. */
PLX_EXPORT int VXFileWriter_OpenForAppend(VXFileWriterHandle* writer, const char* name);
/* Creates or empties a gzip file, whatever its name. -1 when it is open, else 0. */
PLX_EXPORT int VXFileWriter_OpenCompressed(VXFileWriterHandle* writer, const char* name);
/* Completes the file. -1 when one was open, 0 otherwise; whether all of it was written tells
 * VXFileWriter_Failed. */
PLX_EXPORT int VXFileWriter_Close(VXFileWriterHandle* writer);
/* -1 when something could not be written since the file was opened, 0 otherwise. Output is buffered, so that
 * a full disk may show only after VXFileWriter_Close. */
PLX_EXPORT int VXFileWriter_Failed(VXFileWriterHandle* writer);
/* Name of the file in the library's stored form, a relative name staying relative, by the rule for texts of
 * VXFileReader.h: -1, or 0 with an empty buffer when there is none. */
PLX_EXPORT int VXFileWriter_Filename(VXFileWriterHandle* writer, char* dst, int len);
/* Writes the text with CR LF for every LF. Returns the bytes written, before compression; 0 when nothing is
 * open. */
PLX_EXPORT int VXFileWriter_Write(VXFileWriterHandle* writer, const char* text);
/* The same with a line end after the text. Text and LF together are cut to 8192 bytes, so that a longer text
 * loses its line end. */
PLX_EXPORT int VXFileWriter_WriteLine(VXFileWriterHandle* writer, const char* text);

#ifdef __cplusplus
}
#endif
