#pragma once

#include "plxutils/converters/ConverterFactory.h"
#include "plxutils/core/VXFile.h"
#include "plxutils/export.h"

/// Entry of every conversion of a single groundwater model.
class PLX_EXPORT Converter {
public:
    Converter() = default;
    Converter& operator=(const Converter&) = default;

    /// Number of entries that `outputs` of create_converter must hold.
    static constexpr int kOutputs = 11;

    /// Reads the model of `project` with `factory` and writes its field files into the folders GENERAL,
    /// MODFLOW and MT3D beside it (or below factory.output_folder).
    ///
    /// @param porosity  porosity_count values, one per layer from the top; null leaves the default empty.
    /// @param compress  field and flow files are gzip streams (.pfz, .dwz).
    /// @param outputs   eleven flags: Elevation, Geo_Layer, Head at nodes, CCF, ELEV_TOP, ELEV_BOTTOM,
    /// MATERIAL,
    ///                  POROSITY, Head of cells, boundary flows, MT3D; null leaves all off, only geometry is
    ///                  written.
    /// @param crop      only cells whose centre lies in the rectangle (model coordinates, edges included) are
    /// written.
    ///
    /// Nothing is returned or thrown: a project that does not exist prints "Project file [%s] does not
    /// exist.\n" and nothing else happens; other faults print their message and switch off the outputs that
    /// depend on them. factory.report tells afterwards what was written and what was wrong.
    void create_converter(ConverterFactory& factory, VXFile& project, int porosity_count, double* porosity,
                          bool compress, int* outputs, bool crop, double x_min, double x_max, double y_min,
                          double y_max);
};
