#pragma once

#include "plxutils/export.h"

/* Places an image in the world from control points, and reads and writes the files that hold such placements.
 *
 * Order of calls: GeoRef_new; GeoRef_set_gcp_values for each control point; GeoRef_process_type; projections,
 * residuals and files; GeoRef_delete. Source coordinates are image columns (x) and rows (y), destination
 * coordinates are world X and Y. Fit types: 1 translation, 2 similarity, 3 scale and offset per axis, 4 to 7
 * polynomials of degree 1 to 4; few control points lower the type. Types 1 and 2 work with the source y
 * negated: callers of GeoRef_project_point pass -y for them, and y as it is for the others.
 *
 * File names are lower-cased (ASCII letters) before use; the last dot counts, and a dot in a folder's name is
 * none. Messages go to standard output. Unless said otherwise a function returns 1 when it did its work and 0
 * when it did not, also for a null handle or a null pointer. Nothing throws. */

#ifdef __cplusplus
class GeoRef;
extern "C" {
#else
typedef struct GeoRef GeoRef;
#endif

/* n control points, all coordinates 0; a negative n counts as 0. The caller releases it with GeoRef_delete.
 * Null when there is no memory and for more than 10 million points. */
PLX_EXPORT GeoRef* GeoRef_new(int n);
/* Releases the object; null is ignored (result 0). */
PLX_EXPORT int GeoRef_delete(GeoRef* object);
/* Stores control point i: source (sx, sy), destination (dx, dy). 0 when i is outside 0 .. n - 1. */
PLX_EXPORT int GeoRef_set_gcp_values(GeoRef* object, int i, double sx, double sy, double dx, double dy);
/* Fits the control points; has to come before projections, residuals and files. */
PLX_EXPORT int GeoRef_process_type(GeoRef* object, int type);
/* Image to world. Nothing is stored on failure. */
PLX_EXPORT int GeoRef_project_point(GeoRef* object, double x, double y, double* X, double* Y);
/* World to image. Nothing is stored on failure. */
PLX_EXPORT int GeoRef_reverse_project_point(GeoRef* object, double X, double Y, double* x, double* y);
/* Distance, in world units, from control point i to where the fit puts it. 0.0 when there is no such point.
 */
PLX_EXPORT double GeoRef_rms_error(GeoRef* object, int i);
/* Root mean square of the distances of all control points; NaN when there are none. */
PLX_EXPORT double GeoRef_rms_total_error(GeoRef* object);

/* Writes the fit as the world file of an image: the extension becomes its first letter, its last letter and
 * "w" (site.tif gives site.tfw, site.jpeg site.jgw). An existing file is kept as NAME.backup, older ones as
 * NAME.backup1 to NAME.backup10.
 * imageName: receives the name of the world file, also when that could not be written; the caller's buffer
 * holds two bytes more than the name needs, as site.t gives site.ttw. Without a dot, or without an extension,
 * the result is 0 and nothing happens. */
PLX_EXPORT int GeoRef_write_world(GeoRef* object, char* imageName);
/* Writes the control points as the GCP file of an image, with the extension "gcp"; backups as above.
 * imageName: receives the name of the GCP file, also when that could not be written; the caller's buffer
 * holds three bytes more than the name needs, as "site." gives site.gcp. Without a dot the result is 0 and
 * nothing happens. */
PLX_EXPORT int GeoRef_write_gcp(GeoRef* object, char* imageName);

/* Reads what lies beside an image: its GCP file, or else its world file, as a list of mappings.
 * maps: receives the list, null when there is none; the caller releases it with GeoRef_free_gcp_mappings.
 * width, height: the image's size in pixels; used with a world file only, see parseWorldFile.
 * Returns the number of mappings. */
PLX_EXPORT int GeoRef_load_gcp_mappings(double*** maps, const char* imageName, int width, int height);
/* Copies the four values of mapping i in the order of the file, or of parseWorldFile; i is not checked
 * against the length of the list. In a GCP file that GeoRef_write_gcp wrote they are world X, minus world Y,
 * source x and source y (minus source y for fit types 1 and 2). */
PLX_EXPORT int GeoRef_get_gcp_mapping(double*** maps, int i, double* sx, double* sy, double* dx, double* dy);
/* Releases a list of n mappings and sets it to null; null is ignored. Always returns 1. */
PLX_EXPORT int GeoRef_free_gcp_mappings(double*** maps, int n);

/* Reads the GCP file of an image: a line for each mapping with four numbers between commas, blanks or tabs;
 * what is missing counts as 0, further words are left out, blank lines and lines that begin with "#" do not
 * count. At most 100 mappings are held. Numbers are decimal with a point in every locale; D is an exponent
 * like E. base: the image's name up to and including its dot; "gcp" is added. outName: unless null, receives
 * the name of the file; the caller's buffer holds four bytes more than base. maps: receives the list, null
 * when there is none; the caller releases it with GeoRef_free_gcp_mappings. Returns the number of mappings; 0
 * without a message when there is no such file. */
PLX_EXPORT int parseGCPFile(const char* base, char* outName, double*** maps);
/* Reads the world file of an image as three mappings, image rows being negative source y: of the pixels
 * (0, 0), (width - 1, 1 - height) and (0, 1 - height). The file holds A, D, B, E, C and F, one on a line
 * (blank lines and "#" lines as above, missing numbers 0), for X = A col + B row + C and
 * Y = D col + E row + F.
 * base: the image's name up to and including its dot.
 * ext: the image's extension as it is spelt; the known extensions that begin with its first letter are tried
 * in the order tfw, tiw, tifw, tiffw, jpw, jpgw, jpegw, jgw, bpw, bmw, bmpw, pgw, pngw, pnw.
 * outName: unless null, receives the name of the file; the caller's buffer holds six bytes more than base.
 * maps: receives the list, null when there is none; the caller releases it with GeoRef_free_gcp_mappings.
 * Returns 3; 0 without a message when there is no such file. */
PLX_EXPORT int parseWorldFile(const char* base, char* outName, const char* ext, double*** maps, int width,
                              int height);

#ifdef __cplusplus
}
#endif
