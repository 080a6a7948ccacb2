#pragma once

#include <cstdio>
#include <functional>
#include <memory>

#include "plxutils/converters/ConversionReport.h"
#include "plxutils/converters/ReadingRules.h"
#include "plxutils/converters/Results.h"
#include "plxutils/core/VX1DArray.h"
#include "plxutils/core/VXArray.h"
#include "plxutils/core/VXFile.h"
#include "plxutils/core/VXFileReader.h"
#include "plxutils/core/VXString.h"
#include "plxutils/export.h"

class ConverterFactory;

namespace plx {
struct ModelState;
ModelState& plx_model_state(ConverterFactory& factory);
}  // namespace plx

/// Conversion of one groundwater model; the base class reads plain MODFLOW-88/96 models by their name file.
///
/// A host constructs the class that fits its model, hands it to Converter::create_converter once and destroys
/// it. Steps take no arguments and return nothing: a failed step prints its message on standard output,
/// switches off the outputs that depend on it, and the conversion goes on.
class PLX_EXPORT ConverterFactory {
public:
    ConverterFactory();
    ConverterFactory(const ConverterFactory&) = delete;
    ConverterFactory& operator=(const ConverterFactory&) = delete;

    /// Reads the project and its inputs and scans the result files.
    virtual void parsePROJECT();
    /// Writes field files, companion files, time file and boundary flows of everything that was parsed.
    virtual void write_to_PLX();
    /// Writes the transport results below `folder`.
    virtual void write_MT3D(VXFile& folder, VXFile& field_file, bool compress, int count, Results& results,
                            VXArray<double>& values);
    /// Reads the MODFLOW name file and opens what it names.
    virtual void parseNAM();
    /// Loads the current step's flows and boundary terms.
    virtual void parseCCF_data();
    /// Scans the flow file: record positions and the terms it holds.
    virtual void parseCCF_datapos();
    virtual void parseMT3D_CCF_data();
    virtual void parseMT3D_CCF_datapos();
    /// Scans the head file: record positions and step times.
    virtual void parseHED_datapos();
    /// Loads the current step's heads.
    virtual void parseHED_data();
    /// Reads the basic package.
    virtual void parseBA6();
    /// Reads the porosity file.
    virtual void parsePOR();
    /// Reads the MT3D settings.
    virtual void parseMTS();
    /// Reads the next transport time of every species; 0 when there is none.
    virtual int parseConcentration(VXArray<double>& values, float& time);

    virtual ~ConverterFactory();

    VXFile project_file;

    // Inputs found while parsing; one counts as set when it has a path.
    VXFile name_file, super_file, gms_name_file, basic_file, bcf_file, discretization_file, head_file,
        flow_file, mt3d_project_file, mt3d_transport_file, porosity_file, hdf5_file, grid_file;

    VX1DArray<double> default_porosity;  ///< per layer from the top
    bool crop_to_extents = false;
    bool compress = false;
    double x_min = 0.0, x_max = 0.0, y_min = 0.0, y_max = 0.0;  ///< cropping rectangle, model coordinates

    bool out_elevation = false;
    bool out_geo_layer = false;
    bool out_head_nodes = false;
    bool out_ccf = false;
    bool out_elev_top = false;
    bool out_elev_bottom = false;
    bool out_material = false;
    bool out_porosity = false;
    bool out_head_cells = false;
    bool out_boundary_flows = false;
    bool out_mt3d = false;

    bool has_storage = false;
    bool has_constant_head = false;
    bool has_general_head = false;
    bool has_wells = false;
    bool has_drains = false;
    bool has_recharge = false;
    bool has_et = false;
    bool has_river_leakage = false;

    // Fortran unit numbers as the name file assigns them, -1: none.
    int bas_unit = -1, hed_unit = -1, ccf_unit = -1, bcf_unit = -1, dis_unit = -1;
    /// Open streams by unit number; text units are read through blocks, so their positions run ahead.
    VX1DArray<FILE*> unit_files;

    int nlay = 0, nrow = 0, ncol = 0, nper = 0;
    int total_steps = 0;  ///< sum of the step counts of all stress periods
    int x_direction = 1, row_order = -1, z_direction = 1;
    double x_origin = 0.0, y_origin = 0.0, z_origin = 0.0;
    double rotation = 0.0;  ///< degrees about the vertical, counter-clockwise
    String time_units, length_units;
    double start_date = 0.0;  ///< days since 30 December 1899
    VX1DArray<int> layer_materials;
    int mt3d_ccf_mode = 0;
    VX1DArray<String> species_names;

    // Additions for programs; hosts may leave them alone.

    /// How inputs are read where the modelling programs differ from the plain rules.
    plx::ReadingRules reading_rules;
    /// Where the output folders are made; empty means beside the project. The folder must exist.
    String output_folder;
    /// False keeps the converters that keep a conversion log from creating it.
    bool keep_log = true;
    /// Called after each field file with the number written and the number expected.
    std::function<void(int done, int total)> on_step;
    plx::ConversionReport report;

protected:
    // Reading helpers over the streams of unit_files.

    /// Reads one MODFLOW word: 0 at the end of the file, 1 when it ended at a separator, a closing quote or
    /// the width, 2 when it ended at the end of the line.
    int read_word(FILE* f, String& word, bool rest_of_line, bool space_ends_word, bool fixed_width,
                  int width);
    /// Reads an array-control record and its array into `values`, whose size the caller has set.
    void parse_record(FILE* f, VX1DArray<double>& values);
    /// Reads as many words as `values` holds, each times `multiplier`.
    void parse_data(FILE* f, VX1DArray<double>& values, double multiplier);
    /// Passes over lines, then words, of a text; false after a message when the input ends first.
    bool skip(VXFileReader& reader, int words, int lines);
    void parseBCF();

    // Grid helpers; layers, rows and columns count from 0.

    /// Splits a cell number (layer-major) into layer k, row i and column j; all 0 for numbers below 1.
    void get_cell_pos(int n, int& k, int& i, int& j);
    /// True when a cell that touches the corner node at row line r and column line c of layer k has the
    /// flag 1. `active` is indexed by (row * ncol + column, layer).
    bool node_active(const int& r, const int& c, const int& k, VXArray<int>& active);
    /// World centre of the cell in column i, row j, layer k: means of its corner columns and rows (`corners`
    /// indexed by (column line, row line, 2k, component)) and of its elevations (`elevations` indexed by (row
    /// * ncol + column, surface)), turned by `rotation` degrees and moved.
    bool cell_center(double& x, double& y, double& z, VXArray<double>& elevations, VXArray<double>& corners,
                     VXArray<int>& active, double rotation, double dx, double dy, double dz, int i, int j,
                     int k);
    /// True without cropping, else for points in the cropping rectangle, edges included.
    bool check_extents(double x, double y);

    plx::ModelState& model() { return *model_; }

private:
    friend plx::ModelState& plx::plx_model_state(ConverterFactory& factory);
    std::unique_ptr<plx::ModelState> model_;
};
