#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "plxutils/c/GMStoPLX.h"
#include "plxutils/core/VX1DArray.h"
#include "plxutils/core/VXFile.h"
#include "plxutils/core/VXInputFile.h"
#include "plxutils/core/VXString.h"
#include "plxutils/export.h"
#include "plxutils/gms/BOREbuilder.h"
#include "plxutils/gms/FEMWbuilder.h"
#include "plxutils/gms/GMSDataSet.h"
#include "plxutils/gms/GRID2Dbuilder.h"
#include "plxutils/gms/IMAGEbuilder.h"
#include "plxutils/gms/MODFLOWbuilder.h"
#include "plxutils/gms/MT3Dbuilder.h"
#include "plxutils/gms/SCAT2Dbuilder.h"
#include "plxutils/gms/SCAT3Dbuilder.h"
#include "plxutils/gms/TINbuilder.h"

namespace plx {
struct GMStoPLXHandles;
}

/// Converts one GMS project, text or HDF5, into PLX files. Made and destroyed through the C interface only
/// (GMStoPLX_new, GMStoPLX_delete); messages go to the hooks of GMSCallbacks.h.
class PLX_EXPORT GMStoPLX {
public:
    GMStoPLX(const GMStoPLX&) = delete;
    GMStoPLX& operator=(const GMStoPLX&) = delete;

    void SetProject(const char* path);
    /// Reports a path that is missing or no folder and leaves the destination as it was.
    void SetDestination(const char* path);
    /// Runs the whole conversion. False when a text project could not be opened; everything else that goes
    /// wrong is reported only.
    bool parse_header();

    /// True when cropping is off or the point is not outside the rectangle; its edges, and coordinates that
    /// are not numbers, count as inside.
    bool InExtents(double x, double y) const;
    /// A value of an HDF5 project's settings; sections and keys compare exactly. Empty, after a status
    /// message, when it is not there.
    String ReadIniValue(const char* section, const char* key);
    /// A value of section "Units" of a text project's settings file, or the default.
    /// @param buffer  20 bytes; the value is cut to 19 and a NUL.
    void ReadUnitsValue(const char* key, const char* def, char* buffer);

    /// Reads a dataset file named by the project: binary when it begins with 3000 or a record marker of 28,
    /// else text. What was read before a failure stays in dataSets.
    bool AddDataSet(const char* name);
    bool ReadAscii(const char* path);
    bool ReadBinary(const char* path);
    /// Number of datasets of an object; keys compare within 1e-6.
    int CountDataSets(double key);
    /// Dataset `index` (from 0, in the order read) of an object, or null.
    GMSDataSet* FindDataSet(int index, double key);
    /// Reads one little-endian number: size 1 is an unsigned byte, 2 and 4 signed integers, 6 a 32-bit and 8
    /// a 64-bit float. Another size is reported; a short read is not. False leaves `value` as it was.
    bool ReadValue(VXInputFile& file, int size, double& value);
    /// The step that objects take: the first of the file, or the nearest to chosenTime. Null without steps.
    const TimeStep* StepOf(const GMSDataSet& dataset) const;

    bool compress = true;
    bool hdf5Project = false;
    bool cropToExtents = false;
    bool useSubfolders = false;
    VXFile settingsFile, projectSource, destination;
    long long currentGroup = -1;  ///< HDF5 identifier that the running builder reads; -1 for none
    long long iniGroup = -1;      ///< HDF5 identifier of the project's settings; -1 for none
    VX1DArray<int> materialIds;
    VX1DArray<String> materialNames;
    bool convertMODFLOW = true, convertMT3D = true, convertFEMWATER = true, convertIMAGE = true,
         convertSCAT3D = true, convertSCAT2D = true, convertGRID2D = true, convertTIN = true,
         convertBOREHOLE = true;
    double xmin = 0.0, ymin = 0.0, xmax = 0.0, ymax = 0.0;
    MODFLOWbuilder modflow{this};
    MT3Dbuilder mt3d{this};
    FEMWbuilder femwater{this};
    IMAGEbuilder image{this};
    SCAT3Dbuilder scat3d{this};
    SCAT2Dbuilder scat2d{this};
    GRID2Dbuilder grid2d{this};
    TINbuilder tin{this};
    BOREbuilder borehole{this};
    std::vector<std::unique_ptr<GMSDataSet>> dataSets;

    bool lenientDatasets = false;  ///< see GMStoPLX_Lenient_Datasets
    bool useChosenTime = false;
    double chosenTime = 0.0;
    /// Stored names of the files that were written completely, in order, and their bytes before compression.
    std::vector<std::string> filesWritten;
    std::int64_t bytesWritten = 0;

private:
    friend struct plx::GMStoPLXHandles;
    GMStoPLX();
    ~GMStoPLX();

    void ParseHdf5Project();
    bool ParseTextProject();
};
