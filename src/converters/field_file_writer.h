#pragma once

#include <string>
#include <vector>

#include "core/block_writer.h"

namespace plx {

/// One data component of a field file.
struct FieldData {
    std::string name;
    std::string units;   ///< "Linear_m" for a length in m, "Linear_" for a plain number
    std::string source;  ///< what follows the units on its line, see the constants
};

/// Values stand in the field file's own section; the blank at the end is part of the line.
inline constexpr const char* kInFile = "IN_FILE ";
/// Material numbers are announced without the blank.
inline constexpr const char* kInFileBare = "IN_FILE";
inline constexpr const char* kVectorInFile = "VECLEN 3 IN_FILE ";
/// Source of values that stand in the first column of a companion file, from its second row.
std::string companion_column(const std::string& name);

/// Cells of one type. Their corner nodes stand in a companion file or in the field file itself.
struct CellSet {
    std::string name;
    int cells = 0;
    const char* type = "Hex";
    int first_row = 2;  ///< 1-based line of the companion file
};

/// Header of a mesh field file.
struct FieldHeader {
    std::string comment;  ///< first line without "# "
    int nodes = 0;
    std::string node_file;          ///< coordinates, columns 1 to 3 from row 2; unused with own nodes
    std::string connectivity_file;  ///< shared by all cell sets; unused with own cells
    std::vector<FieldData> node_data, cell_data;
    std::vector<CellSet> cell_sets;
};

/// Writes field files: keywords, their order and numbering. Where values come from is the caller's business;
/// he writes them after each section's start.
///
/// A file with companions is header, node data, cell data. A file that holds everything itself is own nodes,
/// node data definitions, node data, own cells: each section follows what defines it.
class FieldFileWriter {
public:
    explicit FieldFileWriter(BlockWriter& out) : out_(out) {}

    /// The whole header of a file with companions.
    void header(const FieldHeader& field);
    /// Counts and "NODES IN_FILE"; a line with x, y and z for each node follows.
    void begin_own_nodes(const FieldHeader& field);
    void node_data_definitions(const FieldHeader& field);
    /// Cell sets and "CELL_START"; a line with the nodes, from 0, of each cell of all sets follows.
    void begin_own_cells(const FieldHeader& field);
    /// "NODE_DATA_START", when the header defines node data.
    void begin_node_data(const FieldHeader& field);
    /// "CELL_DATA_START", when the header defines cell data.
    void begin_cell_data(const FieldHeader& field);

private:
    void counts(const FieldHeader& field);
    void cell_set(int index, const CellSet& set);
    void definition(const char* keyword, const std::vector<FieldData>& data);

    BlockWriter& out_;
};

}  // namespace plx
