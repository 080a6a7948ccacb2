#pragma once

/* The flat C interface of PLXUtils: everything that a host reaches without the C++ classes.
 *
 * Handles. An object is a pointer to an incomplete type; only the functions of its family take it. X_new
 * makes it (null without memory), X_delete releases it, and it must not be used afterwards; X_delete takes
 * null. The order of the calls between stands on top of each header. A call in the wrong order, such as
 * reading from a reader that was never opened, is answered like a call that failed.
 *
 * Null. A null handle or buffer, and a buffer of length 0 or less, is no fault of its own: the function gives
 * the value by which it tells failure and touches nothing. Those values are 0 or an empty text, but -1 where
 * -1 means "none" or "at the end" (VXFileReader_ReadLine, _FindWord, _isEOF, PLX_report_text); GMStoPLX
 * functions give the null handle back. Null is no failure to GeoRef_free_gcp_mappings and
 * PLX_set_host_services, which give 1, and PLX_convert_modflow gives a report with an error. A null text
 * counts as an empty one unless a function says otherwise; GMS_DoError, GMS_DoStatus and GMS_PromptValue hand
 * it on to the hook as null.
 *
 * Booleans. VXFileReader and VXFileWriter return -1 for true and 0 for false. GeoRef, PLX_ and the utilities
 * return 1 (or not 0) and 0. Flags that are handed in are true when they are not 0.
 *
 * Texts are 8-bit and end with NUL. File names are in the encoding that the system's own calls take: bytes,
 * mostly UTF-8, on Linux, the ANSI code page on Windows. A name without a folder is not found: give an
 * absolute one, or ./name. Either separator counts, except to PLX_convert_modflow, which takes those of the
 * system. Names that the reader and the writer give back are in stored form: lower case (ASCII letters),
 * backslashes and, unless the name was relative and stays so, a drive, where "c:" is "/" on Linux; a
 * PLX_ConversionReport gives names that the system's own calls open. Numbers have a decimal point in every
 * locale.
 *
 * Buffers belong to the caller. Those with a length are never written beyond it: VXFileReader and
 * VXFileWriter fill them as strncpy does, possibly without a NUL, PLX_report_text always ends the text.
 * Buffers without a length have the size that the function names (FixFilenameString, SetExtension,
 * GeoRef_write_world, ...).
 *
 * Who frees what. Handles: their X_delete. Lists of mappings: GeoRef_free_gcp_mappings. Reports:
 * PLX_report_delete. Every other text or array belongs to whom it came from; texts handed to a callback are
 * gone when it returns. Nothing is released with free().
 *
 * Callbacks. A registered function has to stay callable until it is replaced, or switched off with null,
 * which may happen from inside it, too; functions that are handed to a single call, until that call returns.
 * They may call the library. A C++ exception of the library's own runtime that one throws ends at the
 * library's call to it, and the work goes on as if it had returned 0. Not allowed out of a callback are
 * exceptions of another compiler's runtime, longjmp and ending the thread.
 *
 * Threads. The library starts none and takes no lock around its work: use it from one thread at a time. The
 * callbacks of GMSCallbacks.h, the host's services, the file tags, the search paths and the installation's
 * folder belong to the whole process, the last three for as long as it lives.
 *
 * Exceptions. Nothing that is thrown inside passes the interface; a function then gives its value for
 * failure. Messages of the library go to standard output or to the error and status callbacks, as each header
 * says.
 *
 * Versions. PLX_VERSION_MAJOR, PLX_VERSION_MINOR, PLX_VERSION_PATCH and the text PLX_VERSION are those of the
 * headers; PLX_version() is that of the library that was loaded. */

#include "plxutils/c/GMSCallbacks.h"
#include "plxutils/c/GMStoPLX.h"
#include "plxutils/c/GeoRef.h"
#include "plxutils/c/HostServices.h"
#include "plxutils/c/ModelConversion.h"
#include "plxutils/c/Numeric.h"
#include "plxutils/c/Utilities.h"
#include "plxutils/c/VXFileReader.h"
#include "plxutils/c/VXFileWriter.h"
#include "plxutils/c/Version.h"
#include "plxutils/export.h"
