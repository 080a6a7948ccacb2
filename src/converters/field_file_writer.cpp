#include "converters/field_file_writer.h"

#include <algorithm>

#include "core/ascii_text.h"

namespace plx {
namespace {

/// A name between double quotes, which it cannot hold itself: one that did would end its line's grammar.
std::string quoted(std::string name) {
    std::erase(name, '"');
    std::replace_if(name.begin(), name.end(), is_control, ' ');
    return '"' + name + '"';
}

}  // namespace

std::string companion_column(const std::string& name) { return "FILE \"" + name + "\" ROW 2 COLS 1"; }

void FieldFileWriter::definition(const char* keyword, const std::vector<FieldData>& data) {
    int index = 0;
    for (const FieldData& d : data) {
        out_.text(keyword).put(' ').integer(index++);
        out_.put(' ').text(quoted(d.name)).put(' ').text(quoted(d.units)).put(' ').text(d.source).put('\n');
    }
}

void FieldFileWriter::counts(const FieldHeader& field) {
    out_.text("# ").text(field.comment).text("\nDEFINITION Mesh");
    if (!field.node_data.empty()) out_.text("+Node_Data");
    if (!field.cell_data.empty()) out_.text("+Cell_Data");
    out_.text("\nNSPACE 3\nNNODES ").integer(field.nodes).put('\n');
    if (!field.node_data.empty()) {
        out_.text("NUM_NODE_DATA ").integer(static_cast<int>(field.node_data.size())).put('\n');
    }
    if (!field.cell_data.empty()) {
        out_.text("NUM_CELL_DATA ").integer(static_cast<int>(field.cell_data.size())).put('\n');
    }
    out_.text("NCELL_SETS ").integer(static_cast<int>(field.cell_sets.size())).put('\n');
}

void FieldFileWriter::cell_set(int index, const CellSet& set) {
    out_.text("CELL_SET_DEF ").integer(index).put(' ').integer(set.cells).put(' ').text(set.type);
    out_.put(' ').text(quoted(set.name));
}

void FieldFileWriter::header(const FieldHeader& field) {
    counts(field);
    out_.text("NODES FILE \"").text(field.node_file).text("\" ROW 2 X 1 Y 2 Z 3\n");
    node_data_definitions(field);
    int index = 0;
    for (const CellSet& set : field.cell_sets) {
        cell_set(index++, set);
        out_.text(" FILE \"").text(field.connectivity_file).text("\" ROW ");
        out_.integer(set.first_row).put('\n');
    }
    definition("CELL_DATA_DEF", field.cell_data);
}

void FieldFileWriter::begin_own_nodes(const FieldHeader& field) {
    counts(field);
    out_.text("NODES IN_FILE\n");
}

void FieldFileWriter::node_data_definitions(const FieldHeader& field) {
    definition("NODE_DATA_DEF", field.node_data);
}

void FieldFileWriter::begin_own_cells(const FieldHeader& field) {
    int index = 0;
    for (const CellSet& set : field.cell_sets) {
        cell_set(index++, set);
        out_.text(" IN_FILE\n");
    }
    definition("CELL_DATA_DEF", field.cell_data);
    out_.text("CELL_START\n");
}

void FieldFileWriter::begin_node_data(const FieldHeader& field) {
    if (!field.node_data.empty()) out_.text("NODE_DATA_START\n");
}

void FieldFileWriter::begin_cell_data(const FieldHeader& field) {
    if (!field.cell_data.empty()) out_.text("CELL_DATA_START\n");
}

}  // namespace plx
