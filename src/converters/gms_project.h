#pragma once

#include "converters/model_state.h"

namespace plx {

/// What the steps of a GMS converter print. Faults hold one "%s" for the line that has them.
struct GmsTexts {
    const char* super_file;  ///< status lines of the steps
    const char* name_file;
    const char* grid;
    const char* basic;
    const char* no_basic;  ///< no basic package in the name file
    const char* bad_placement;
    const char* bad_columns;
    const char* bad_rows;
    const char* bad_elevation;
};

/// Names the super file of an HDF5 project (.gpr): the text of its dataset "3DGridModule/3DGrid 0/MODFLOW
/// Model 0/Name File", relative to the project. It may be the super file's own name (.mfs) or that of the
/// name file
/// (.mfn) beside it. False after a message when the project does not name one.
bool find_super_file(ModelState& model);

// The steps that both GMS converters share.

/// Reads the super file into the factory.
void parse_super_file(ModelState& model, const GmsTexts& texts);
/// Reads the name file and opens what it names, except for files whose names are those of results.
void parse_gms_name_file(ModelState& model, const GmsTexts& texts);
/// Reads the discretization file. Units of the super file stay.
void parse_gms_grid(ModelState& model, const GmsTexts& texts);
/// Reads the basic package.
void parse_gms_basic(ModelState& model, const GmsTexts& texts);

/// Finds and reads the porosity, whose source is named like the super file unless the host has set one, and
/// opens the result files that the name file lists by their usual names.
void read_gms_results(ModelState& model);

}  // namespace plx
