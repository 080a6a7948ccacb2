#pragma once

#include <string>
#include <vector>

#include "core/block_writer.h"
#include "plxutils/converters/FieldFile.h"

namespace plx {

/// Source of values that stand in the first column of a companion file, from its second row.
std::string companion_column(const std::string& name);

/// Writes field files: keywords, their order and numbering. Where values come from is the caller's business;
/// he writes them after each section's start.
///
/// A file with companions is header, node data, cell data. A file that holds everything itself is own nodes,
/// node data definitions, node data, own cells, cell data: each section follows what defines it.
class FieldFileWriter {
public:
    explicit FieldFileWriter(BlockWriter& out) : out_(out) {}

    /// The whole header of a file with companions.
    void header(const FieldHeader& field);
    /// Counts and "NODES IN_FILE"; a line with x, y and z for each node follows.
    void begin_own_nodes(const FieldHeader& field);
    void node_data_definitions(const FieldHeader& field);
    /// Cell sets, cell data definitions and "CELL_START"; a line with the nodes, from 0, of each cell of all
    /// sets follows.
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
