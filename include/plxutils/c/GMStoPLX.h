#pragma once

#include "plxutils/export.h"

/* Converts a GMS project into PLX files: surfaces (.gmf), field files (.pff, .pfz) and pre-geology (.pgf).
 *
 * Order of calls: GMStoPLX_new; the hooks of GMSCallbacks.h; GMStoPLX_Set_Project; GMStoPLX_Set_Destination;
 * options; GMStoPLX_parse_project; GMStoPLX_delete. Every function but new and delete returns the object it
 * was given, so that calls can be chained; none tells whether it succeeded: what went wrong comes through the
 * error hook. A null object is returned as null and nothing happens. From inside a hook, on the object that
 * is at work, all of them but GMStoPLX_delete do nothing. Nothing throws. */

#ifdef __cplusplus
class GMStoPLX;
extern "C" {
#else
typedef struct GMStoPLX GMStoPLX;
#endif

/* A converter with its defaults: compressed field files, no subfolders, no cropping, all kinds of objects.
 * Null when there is no memory. */
PLX_EXPORT GMStoPLX* GMStoPLX_new(void);
/* Null is ignored. From inside a hook, on the object that is at work, it is put off until that work ends, and
 * what GMStoPLX_parse_project returns is gone then. Prints "DataSet <name> deleted" to standard output for
 * each dataset that was read. */
PLX_EXPORT void GMStoPLX_delete(GMStoPLX* object);
/* The project file, text or HDF5. Not checked here. */
PLX_EXPORT GMStoPLX* GMStoPLX_Set_Project(GMStoPLX* object, const char* path);
/* An existing folder, without a separator at its end; anything else is reported and the folder stays what it
 * was. */
PLX_EXPORT GMStoPLX* GMStoPLX_Set_Destination(GMStoPLX* object, const char* path);
/* Not 0: compressed field files (.pfz). */
PLX_EXPORT GMStoPLX* GMStoPLX_Compress(GMStoPLX* object, int compress);
/* Not 0: every kind of object gets a subfolder of the destination (TINS, SCATTER2D, BORE, ...). */
PLX_EXPORT GMStoPLX* GMStoPLX_Use_Subfolders(GMStoPLX* object, int use);
/* Each kind of object is converted when its argument is not 0. */
PLX_EXPORT GMStoPLX* GMStoPLX_Object_Types(GMStoPLX* object, int modflow, int mt3d, int femwater, int image,
                                           int scat3d, int scat2d, int grid2d, int tin, int borehole);
/* Cropping rectangle in the project's coordinates, its edges included; used when `enable` is not 0. */
PLX_EXPORT GMStoPLX* GMStoPLX_Extents(GMStoPLX* object, int enable, double xmin, double ymin, double xmax,
                                      double ymax);
/* Not 0: dataset files are read as newer GMS and SMS versions write them: unknown cards before the first
 * block, a time alone in a TS line, several time steps, vectors of two components, cards 240 and 250. Off by
 * default. */
PLX_EXPORT GMStoPLX* GMStoPLX_Lenient_Datasets(GMStoPLX* object, int on);
/* When `enable` is not 0, objects get the values of the time step nearest to `time` (in the dataset's own
 * time unit); otherwise those of the first one in the file. */
PLX_EXPORT GMStoPLX* GMStoPLX_Choose_Time(GMStoPLX* object, int enable, double time);
/* Reads the project and writes the files. A second call reads again and appends to what was read before. */
PLX_EXPORT GMStoPLX* GMStoPLX_parse_project(GMStoPLX* object);

#ifdef __cplusplus
}
#endif
