#pragma once

#include "plxutils/export.h"

/* Converts a MODFLOW-family model into PLX field files with one call, and tells what was written.
 *
 * Results are the folders GENERAL, MODFLOW and MT3D in the destination. The conversion's trace goes to
 * standard output, which is flushed at the end; what the library says through the error hook of
 * GMSCallbacks.h it says there too. Nothing throws. */

#ifdef __cplusplus
extern "C" {
#endif

/* In C++, too, any int may be handed in for one of these. */
#ifdef __cplusplus
#define PLX_ENUM_TYPE : int
#else
#define PLX_ENUM_TYPE
#endif

typedef struct PLX_ConversionReport PLX_ConversionReport;

/* Called after each field file with the number written and the number expected, those of transport and those
 * of flow counting by themselves, and with the caller's pointer. Flow steps whose time is not known are
 * expected, too, and get no file: the number written may stay below the other. */
typedef void (*PLX_StepFunc)(int done, int total, void* user);

/* What PLX_report_count and PLX_report_text tell of. */
typedef enum PLX_ReportTexts PLX_ENUM_TYPE {
    PLX_REPORT_ERRORS = 0,   /* faults that left the result incomplete, each a line without an end */
    PLX_REPORT_WARNINGS = 1, /* what a person should know although everything asked for was written */
    PLX_REPORT_FILES = 2     /* the files written, as names that the system's own calls open */
} PLX_ReportTexts;

/* What PLX_report_number tells. */
typedef enum PLX_ReportNumber PLX_ENUM_TYPE {
    PLX_REPORT_NODES = 0,
    PLX_REPORT_CELLS = 1,           /* active cells */
    PLX_REPORT_STEPS = 2,           /* flow time steps whose field file was written */
    PLX_REPORT_TRANSPORT_TIMES = 3, /* transport times whose field file was written */
    PLX_REPORT_BYTES = 4            /* written, before compression */
} PLX_ReportNumber;

/* Reads a model and writes its field files. An argument that cannot be used is an error of the report, and
 * nothing is written then.
 *
 * @param project  name file (.nam, .mfn), super file (.mfs), HDF5 project (.gpr) or Visual MODFLOW project
 *   (.vmf), as a name that the system's own calls open.
 * @param kind  "modflow" (88 and 96), "modflow2000", "gms", "gms_hdf5", "visual", or "auto" or null: the file
 *   tells.
 * @param outputs  eleven flags, in this order: elevation, geologic layer, heads on nodes, flows, top and
 *   bottom of cells, material, porosity, heads on cells, boundary flows (only with flows), transport. One
 *   that is set and that the model does not have is an error, the others being written; porosity that
 *   neither the model nor the call has is a warning, and 0.0 is written. Null: all that the model has, and
 *   porosity only when it is given.
 * @param porosity  porosity_count fractions from 0 to 1, one for each layer from the top; the last one serves
 *   the layers that are left. Null, or 0 or less of them: none.
 * @param extents  xmin, ymin, xmax, ymax; only cells whose centre lies in that rectangle, edges included, are
 *   written; no cell there is a warning. Null: all cells.
 * @param compress  not 0 writes gzip field files (.pfz).
 * @param rules  "modflow" or null reads the files as the modelling programs themselves do, "prescribed" as
 *   PLX has always done.
 * @param destination  an existing folder; null or empty: the folder of the project, where a conversion log of
 *   the kinds that keep one lies too.
 * @param step  may be null; user is handed through.
 * @return a report, also when the conversion failed: then it holds errors. The caller releases it with
 *   PLX_report_delete. Null when there is no memory. */
PLX_EXPORT PLX_ConversionReport* PLX_convert_modflow(const char* project, const char* kind,
                                                     const int* outputs, const double* porosity,
                                                     int porosity_count, const double* extents, int compress,
                                                     const char* rules, const char* destination,
                                                     PLX_StepFunc step, void* user);
/* Null is ignored. */
PLX_EXPORT void PLX_report_delete(PLX_ConversionReport* report);
/* The number of texts; 0 for null and for an unknown kind. */
PLX_EXPORT int PLX_report_count(const PLX_ConversionReport* report, PLX_ReportTexts texts);
/* Copies text i into dst, a buffer of len bytes, always with a NUL, cut when it does not fit.
 * Returns the length of the whole text; -1 when there is no such text. dst may be null to ask for the length.
 */
PLX_EXPORT int PLX_report_text(const PLX_ConversionReport* report, PLX_ReportTexts texts, int i, char* dst,
                               int len);
/* 0 for null and for an unknown number. */
PLX_EXPORT long long PLX_report_number(const PLX_ConversionReport* report, PLX_ReportNumber number);

#ifdef __cplusplus
}
#endif
