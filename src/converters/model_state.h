#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "converters/cell_flags.h"
#include "converters/flow_results.h"
#include "converters/head_results.h"
#include "converters/transport_results.h"
#include "converters/unit_streams.h"
#include "formats/array_record.h"
#include "formats/grid_geometry.h"
#include "formats/name_file.h"
#include "formats/problems.h"
#include "formats/stress_periods.h"
#include "plxutils/converters/ConverterFactory.h"

namespace plx {

/// A step that is written: stress period and step from 0, elapsed model time.
struct CurrentStep {
    int period = 0;
    int step = 0;
    double time = 0.0;
};

/// A file that is named like heads or flows and holds none.
struct MisnamedFile {
    std::string fault;     ///< file, and what it holds instead
    bool damaged = false;  ///< it is no result file of any kind
};

/// What a conversion knows of its model beyond the factory's public members.
struct ModelState {
    explicit ModelState(ConverterFactory& owner);

    ConverterFactory& factory;
    UnitStreams streams;
    std::vector<NameFileEntry> name_entries;

    GridGeometry geometry;
    CellFlags flags;
    StressPeriods periods;
    StepTimes times;
    CurrentStep current;
    std::vector<double> porosity;  ///< per cell, from a porosity file; empty without one

    double no_flow_head = 0.0;  ///< HNOFLO
    bool has_no_flow_head = false;
    std::optional<double> dry_head;  ///< HDRY, where the flow package gives it
    bool free_format = false;        ///< FREE in the basic package
    int default_material = 0;        ///< of layers that a list of materials leaves out
    bool gms_files = false;          ///< the model is one of GMS: HDF5 array records, "ccf" is a flow file

    HeadResults heads;
    FlowResults flows;
    std::vector<int> flow_units;                               ///< all flow files, in the name file's order
    std::vector<MisnamedFile> misnamed_heads, misnamed_flows;  ///< in the name file's order
    TransportResults transport;

    GridSize size() const { return {factory.nlay, factory.nrow, factory.ncol}; }

    /// Rules of the text readers, and the record of those that mattered.
    TextRules text_rules() const;
    TextRules text_used;
    /// Carries the used text rules over into the report.
    void note_text_rules();

    Problems problems;
    /// Moves problems found by the readers to standard output and the report.
    void report_problems();
    /// A fault that leaves the result incomplete: printed and kept in the report.
    void fail(const std::string& text);
    /// The same, kept in the report only: where the plain converters end a scan quietly.
    void note(const std::string& text);
    void warn(const std::string& text);
};

/// Sets the layout of a result file; false, after a message, for one that the conversion's rules do not read.
bool adopt_layout(ModelState& model, RecordFile& file, const ResultLayout& layout);

}  // namespace plx
