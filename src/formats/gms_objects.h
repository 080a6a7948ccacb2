#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "formats/word_lines.h"

/// Objects of a GMS project as its text files hold them.
namespace plx {

/// Points with a value each.
struct GmsPoints {
    std::vector<double> x, y, z;
};

/// A triangulated surface. Node numbers of triangles are 0-based.
struct GmsTin {
    std::string name;
    int id = 0;
    GmsPoints nodes;
    std::vector<std::array<int, 3>> triangles;
};

/// A 2-D scatter point set; z is not used.
struct GmsScatter {
    std::string name;
    int id = 0;
    GmsPoints points;
};

/// A node number of a file, which counts from 1, as an index from 0; the least int stays what it is.
int zero_based(int number);

enum class GmsRead {
    kObject,        ///< one was read
    kEnd,           ///< there is no further one
    kCut,           ///< the file ends inside an object
    kBadPoints,     ///< coordinates are missing or cut short
    kBadTriangles,  ///< triangles are missing or cut short
};

/// Reads the next TIN of a file (BEGT to ENDT: TNAM, ID, VERT). One without ENDT before the end of the file
/// is no TIN.
/// @param at_vertices  called at every VERT line, with what is known of the TIN by then.
GmsRead read_tin(WordLines& lines, GmsTin& tin, const std::function<void(const GmsTin&)>& at_vertices);

/// Reads the next scatter set of a file (BEGSET to ENDSET: NAME, ID, IXY).
GmsRead read_scatter(WordLines& lines, GmsScatter& set);

}  // namespace plx
