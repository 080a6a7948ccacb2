/* Where a pixel of an image lies in the world, by the control points of a GCP file: the flat functions from
 * C. */

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "plxutils/c/plxutils_c.h"

enum { kMostPoints = 100, kFirstDegree = 4, kLongestName = 1024 };

/* Reads lines of world X, minus world Y, column and row into an array of four numbers for each point; their
 * number, or -1 after a message. */
static int read_points(const char* name, double (*points)[4]) {
    int count = 0;
    char path[kLongestName];
    VXFileReaderHandle* reader = VXFileReader_new();
    /* The library does not find a name without a folder. */
    const int length = snprintf(path, sizeof path, "%s%s", strpbrk(name, "/\\") ? "" : "./", name);
    if (!reader || length >= kLongestName || !VXFileReader_Open(reader, path)) {
        fprintf(stderr, "%s: cannot be opened\n", name);
        count = -1;
    }
    while (count >= 0 && count < kMostPoints && VXFileReader_ReadLine(reader, " \t,", 1, 1, 0) >= 0) {
        for (int i = 0; i < 4 && count >= 0; ++i) {
            if (!VXFileReader_WordToDouble(reader, i, &points[count][i])) {
                fprintf(stderr, "%s: line %d: four numbers expected, %d words found\n", name,
                        VXFileReader_CurrentLineNumber(reader), VXFileReader_WordsFound(reader));
                count = -1;
            }
        }
        if (count >= 0) ++count;
    }
    if (count == 0) fprintf(stderr, "%s: holds no control points\n", name);
    VXFileReader_delete(reader);
    return count;
}

int main(int argc, char** argv) {
    double points[kMostPoints][4], x = 0.0, y = 0.0;
    int count, placed;
    GeoRef* map;
    if (argc != 4) {
        fputs("usage: place_pixel GCPFILE COLUMN ROW\n", stderr);
        return 2;
    }
    count = read_points(argv[1], points);
    if (count < 1) return 1;
    map = GeoRef_new(count);
    for (int i = 0; i < count; ++i) {
        GeoRef_set_gcp_values(map, i, points[i][2], points[i][3], points[i][0], -points[i][1]);
    }
    GeoRef_process_type(map, kFirstDegree);
    placed = GeoRef_project_point(map, atof(argv[2]), atof(argv[3]), &x, &y);
    if (placed) {
        printf("X %.2f, Y %.2f by %d points, RMS %.2f\n", x, y, count, GeoRef_rms_total_error(map));
    }
    GeoRef_delete(map);
    return placed ? 0 : 1;
}
