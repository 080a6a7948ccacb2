#pragma once

#include <memory>
#include <string>
#include <vector>

#include "plxutils/export.h"

namespace plx {

/// Values stand in the field file's own section; the blank at the end is part of the line.
inline constexpr const char* kInFile = "IN_FILE ";
/// Material numbers are announced without the blank.
inline constexpr const char* kInFileBare = "IN_FILE";
/// Three values for each node or cell.
inline constexpr const char* kVectorInFile = "VECLEN 3 IN_FILE ";

/// One data component of a field file. Texts hold no double quotes and no line ends.
struct FieldData {
    std::string name;
    std::string units;   ///< "Linear_m" for a length in m, "Linear_" for a plain number
    std::string source;  ///< what follows the units on its line, as `kInFile`
};

/// Cells of one type. Their corner nodes stand in a companion file or in the field file itself.
struct CellSet {
    std::string name;
    int cells = 0;
    std::string type = "Hex";  ///< "Tri", "Quad", "Tet", "Pyr", "Prism" or "Hex"
    int first_row = 2;         ///< 1-based line of the companion file
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

/// Writes a field file that holds its whole mesh: nodes, cells, and the data of both.
///
/// The sections follow each other in the order of the functions, each begun after the lines of the one
/// before: nodes (x y z, one line for each), node data (all values of a node in a line), cells (the nodes of
/// a cell, from 0; all cells of the first set, then those of the next), cell data (all values of a cell in a
/// line). The number of lines and of values in them is what the header announces; it is the caller's to keep.
/// The file has its name when it is complete (see WholeFile).
/// Before `open`, after `close` and after a failed write all calls but `open` do nothing.
///
///     FieldFile file;
///     if (!file.open("/data/block.pff", false)) return false;
///     file.begin_nodes(header);
///     for (const Node& n : nodes) { file.value(n.x); file.value(n.y); file.value(n.z); file.end_line(); }
///     file.node_data_definitions();
///     file.begin_node_data();
///     ...
///     return file.close();
class PLX_EXPORT FieldFile {
public:
    FieldFile();
    /// Completes the file, as `close`; while an exception unwinds, discards it.
    ~FieldFile();
    FieldFile(const FieldFile&) = delete;
    FieldFile& operator=(const FieldFile&) = delete;

    /// Begins a file, completing what was open.
    ///
    /// @param path      native path, also one relative to the working folder, or a name in stored form. The
    ///                  file's own name is lower-cased, as all names that the library makes.
    /// @param compress  gzip, by custom for names that end in .pfz.
    /// @return false when the file cannot be created; so too when the path cannot be stored (`VXCanStorePath`
    ///         tells why). Nothing is printed.
    bool open(const char* path, bool compress);

    /// Counts and "NODES IN_FILE". The header is kept for the sections that follow.
    void begin_nodes(const FieldHeader& header);
    /// The lines that name the node data; nothing when there are none.
    void node_data_definitions();
    /// "NODE_DATA_START", when the header defines node data.
    void begin_node_data();
    /// The lines that name cell sets and cell data, and "CELL_START".
    void begin_cells();
    /// "CELL_DATA_START", when the header defines cell data.
    void begin_cell_data();

    /// A number with six decimals and a blank.
    void value(double v);
    /// A whole number and a blank.
    void integer(int i);
    void end_line();

    /// Completes the file. False when none was open or it could not be completed (a full disk); an older file
    /// is there then.
    bool close();
    /// Ends without the file.
    void discard();
    /// A clause that tells why the last `close` of an open file gave false; empty when it did not.
    const char* fault() const { return fault_; }

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
    int exceptions_;
    const char* fault_ = "";
};

}  // namespace plx
