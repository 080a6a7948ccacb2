#pragma once

namespace plx {

/// Shape codes are 0 to kShapeCodes - 1; 0 is no shape.
inline constexpr int kShapeCodes = 10;

/// What a shape code stands for.
struct CellShape {
    int nodes = 0;
    int faces = 0;
    int dimensions = 0;
    /// Nodes in each face; null for shapes without faces of their own.
    int* nodes_in_face = nullptr;
    /// Four node positions for each face, -1 beyond its nodes.
    int* face_order = nullptr;
};

/// The shape of a code; that of code 0 for any other number.
const CellShape& cell_shape(int code);

}  // namespace plx
