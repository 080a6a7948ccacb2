#pragma once

#include <span>
#include <string>
#include <vector>

#include "formats/fortran_format.h"
#include "formats/grid_geometry.h"
#include "formats/hdf5_reader.h"
#include "formats/problems.h"
#include "formats/text_source.h"

namespace plx {

/// Where the text readers follow the modelling programs instead of the plain rules. The same struct, handed
/// back, tells which of them made a difference.
struct TextRules {
    bool skip_empty_words = false;  ///< an empty word in an array is no value (plain: it stores 0.0)
    bool unit_zero_is_constant =
        false;  ///< a fixed control record with unit 0 fills the array with its second field
    bool zero_multiplier_is_one = false;  ///< a multiplier 0 in unit, EXTERNAL and OPEN/CLOSE records means 1
    bool obey_formats = false;            ///< the control record's Fortran format decides how values are cut
    bool tab_separates = false;           ///< a tab separates words like a blank
    bool hdf5_records = false;            ///< the keyword HDF5 announces an array in an HDF5 file
    bool check_words = false;             ///< a word that is no number is a problem (plain: it is 0)
};

/// Other streams that an array record may name.
class ArrayStreams {
public:
    virtual ~ArrayStreams() = default;
    /// The stream open at a Fortran unit; null when there is none. For the unit of the file that is being
    /// read this is the very source that is being read.
    virtual TextSource* unit(int number) = 0;
    /// Opens a file named in an OPEN/CLOSE record, relative to the project's folder; null when it cannot be
    /// opened. The source lives until the next call.
    virtual TextSource* open(const std::string& name) = 0;
    /// The HDF5 file that a record of `from` names, relative to the folder of that input; negative when it
    /// cannot be opened. It stays open at least until the next call.
    virtual Hdf5Id hdf5_file(const std::string& /*name*/, const TextSource& /*from*/) { return -1; }
    /// The largest grid that the files of the model can be meant for: a few lines of constants may announce
    /// any.
    virtual long long most_cells() const { return kMaxCells; }
};

struct ArrayTarget {
    std::span<double> values;  ///< as many as wanted, row by row
    int columns = 1;           ///< values a row: a Fortran READ starts each row on a new line
    bool whole = false;        ///< integers (matters for binary external files only)
    std::string what;          ///< shown in problems: "DELR", "IBOUND of layer 2"
};

/// Reads one array-control record and the array it announces.
///
/// Source: CONSTANT, INTERNAL, EXTERNAL and OPEN/CLOSE records of MODFLOW 2000 and later, and the older fixed
/// record of unit, multiplier, format and print flag. With `hdf5_records` also those of GMS: HDF5, multiplier
/// (0 means 1), print flag, file, dataset and, for a part of it, the number of axes and first index (from 0)
/// and length on each. The record is traced on standard output. A field that
/// its line does not hold is empty: the next line is never taken for it. Comment lines before the record are
/// passed over.
///
/// With `obey_formats` the format "(BINARY)", or a negative unit, announces 4-byte values, little-endian,
/// after a 44-byte header (KSTP, KPER, PERTIM, TOTIM, TEXT, NCOL, NROW, ILAY) that is missing before
/// one-dimensional arrays.
///
/// @param target   what the file does not hold is set to 0.
/// @param used     set where a rule of `rules` changed what was read.
/// @return false when the stream was missing or ended early; a problem says so.
bool read_array_record(TextSource& in, ArrayStreams& streams, const TextRules& rules, TextRules& used,
                       const ArrayTarget& target, Problems& problems);

/// Reads values.size() free-format words times `multiplier`, the plain reading, and drops what is left of the
/// last word's line. False when the file ended first; the other values are 0.
bool read_array_words(TextSource& in, std::span<double> values, double multiplier, const TextRules& rules,
                      TextRules& used);

/// A control record, and where and in which form the array that it announces is found.
struct ArrayControl {
    enum class Form { kEnded, kMissing, kConstant, kWords, kListDirected, kFormatted, kBinary, kHdf5 };
    Form form = Form::kMissing;    ///< kEnded: the file ended before the record; kMissing: no such stream
    double value = 0.0;            ///< the constant or the multiplier
    TextSource* source = nullptr;  ///< where the values are
    FortranFormat format;          ///< for kFormatted
    Hdf5Id hdf5 = -1;              ///< for kHdf5: the open file
    std::string dataset;           ///< and the dataset's path in it
    Hdf5Slab slab;                 ///< and the part that is wanted
    std::string place;             ///< and the record and the file, for problems: "a.dis: line 7: a.h5"
};

/// Reads arrays one after the other from one file, with everything that they share.
class ArrayReader {
public:
    /// An ArrayTarget whose values are not there yet.
    struct Shape {
        std::size_t count = 0;
        int columns = 1;
        bool whole = false;
        std::string what;
        bool unused = false;  ///< nobody wants the values: those that lie in an HDF5 file are left there
    };

    ArrayReader(TextSource& in, ArrayStreams& streams, const TextRules& rules, TextRules& used,
                Problems& problems)
        : in_(in), streams_(streams), rules_(rules), used_(used), problems_(problems) {}

    /// Reads a record and its array into `values`, which is sized only when the file can hold that many.
    /// @return false as read_array_record does; `values` is empty when the reader is then at its end.
    bool read(const Shape& shape, std::vector<double>& values);
    bool read_into(const ArrayTarget& target);
    /// True when the file was cut or announced more than it can hold, so that nothing can be read behind it.
    /// A stream that is missing does not end the reader: its array is 0.
    bool ended() const { return ended_; }

private:
    bool read_control(const std::string& what, ArrayControl& control);
    bool has_room(const ArrayControl& control, const Shape& shape);
    bool read_values(const ArrayControl& control, const ArrayTarget& target);
    bool read_hdf5(const ArrayControl& control, const ArrayTarget& target);
    ArrayFindings read_findings(const ArrayControl& control, const ArrayTarget& target);

    TextSource& in_;
    ArrayStreams& streams_;
    const TextRules& rules_;
    TextRules& used_;
    Problems& problems_;
    bool ended_ = false;
};

}  // namespace plx
