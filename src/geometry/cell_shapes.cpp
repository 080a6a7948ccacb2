#include "geometry/cell_shapes.h"

namespace {

// Deliberately writable: hosts get these tables as int*, and one that writes there must not hit a constant.
int point_counts[] = {1};
int point_faces[] = {0, -1, -1, -1};
int line_counts[] = {2};
int line_faces[] = {0, 1, -1, -1};
int triangle_counts[] = {3};
int triangle_faces[] = {0, 1, 2, -1};
int quad_counts[] = {4};
int quad_faces[] = {0, 1, 2, 3};
int tet_counts[] = {3, 3, 3, 3};
int tet_faces[] = {1, 2, 0, -1, 2, 3, 0, -1, 3, 1, 0, -1, 1, 3, 2, -1};
int hex_counts[] = {4, 4, 4, 4, 4, 4};
int hex_faces[] = {0, 1, 2, 3, 1, 5, 6, 2, 3, 2, 6, 7, 0, 3, 7, 4, 0, 4, 5, 1, 4, 7, 6, 5};
int prism_counts[] = {3, 3, 4, 4, 4};
int prism_faces[] = {5, 4, 3, -1, 0, 1, 2, -1, 1, 4, 5, 2, 1, 0, 3, 4, 0, 2, 5, 3};
int pyramid_counts[] = {3, 3, 3, 3, 4};
int pyramid_faces[] = {0, 1, 2, -1, 0, 2, 3, -1, 0, 3, 4, -1, 4, 1, 0, -1, 1, 4, 3, 2};

const plx::CellShape shapes[plx::kShapeCodes] = {
    {},
    {1, 1, 0, point_counts, point_faces},
    {2, 1, 1, line_counts, line_faces},
    {2, 1, 1, nullptr, nullptr},
    {3, 1, 2, triangle_counts, triangle_faces},
    {4, 1, 2, quad_counts, quad_faces},
    {4, 4, 3, tet_counts, tet_faces},
    {8, 6, 3, hex_counts, hex_faces},
    {6, 5, 3, prism_counts, prism_faces},
    {5, 5, 3, pyramid_counts, pyramid_faces},
};

}  // namespace

const plx::CellShape& plx::cell_shape(int code) { return shapes[code > 0 && code < kShapeCodes ? code : 0]; }
