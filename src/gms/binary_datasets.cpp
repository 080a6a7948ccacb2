#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "formats/gms_cards.h"
#include "formats/number_source.h"
#include "gms/callbacks.h"
#include "gms/datasets.h"

namespace plx {
namespace {

/// Objects in a plane: their vectors have two components in the files of newer programs.
bool is_planar(int object_type) {
    constexpr std::array<int, 4> kPlanar = {1, 3, 4, 5};
    return std::find(kPlanar.begin(), kPlanar.end(), object_type) != kPlanar.end();
}

class BinaryDatasets {
public:
    BinaryDatasets(const char* path, DataSetList& list, bool lenient)
        : path_(path), list_(list), lenient_(lenient) {}

    bool read() {
        if (!source_.open(path_)) return fail_file("Error opening %s for input");
        int version = 0;
        if (!source_.integer(version)) return fail_file("Invalid Version number in %s");
        if (version != kBinaryVersion) {
            // Not the version but the length of the first record.
            markers_ = true;
            if (!source_.integer(version) || version != kBinaryVersion) {
                GMS_ReportError("GMStoPLX : read_binary - Unsupported Version number %d in %s\n", version,
                                path_);
                return false;
            }
        }
        for (int card = 0; source_.integer(card);) {
            if (!take_file_card(card)) return false;
        }
        return true;
    }

private:
    // `what` has one "%s" for the path.
    bool fail_file(std::string what) const {
        what.replace(what.find("%s"), 2, path_);
        GMS_ReportError("GMStoPLX : read_binary - %s\n", what.c_str());
        return false;
    }

    static bool fail_set(const char* what) {
        GMS_ReportError("GMStoPLX : data_parse - %s\n", what);
        return false;
    }

    bool has_markers() {
        int marker = 0;
        return !markers_ || (source_.integer(marker) && source_.integer(marker));
    }

    bool take_markers(int block) {
        if (has_markers()) return true;
        GMS_ReportError("GMStoPLX : read_binary - Missing block bytes for block %d\n", block);
        return false;
    }

    int size_of_floats() const { return float_codes_ ? float_code(float_size_) : float_size_; }

    bool take_file_card(int card) {
        switch (card) {
            case gms_card::kObjectType:
                return source_.integer(object_type_) || fail_file("Invalid Type in %s");
            case gms_card::kFloatSize:
                return source_.integer(float_size_) || fail_file("Invalid Floating Type size in %s");
            case gms_card::kFlagSize:
                if (!source_.integer(flag_size_)) return fail_file("Invalid status flag size in %s");
                if (has_markers()) return true;
                // Deliberate: hosts compare the text, so the blank before its end stays.
                GMS_ReportError("GMStoPLX : read_binary - Missing block bytes for block 120 \n");
                return false;
            case gms_card::kScalarSet:
                return take_markers(card) && (read_set(1) || fail_file("Error Parsing Data file : %s"));
            case gms_card::kVectorSet:
                return take_markers(card) && (read_set(3) || fail_file("Error Parsing Data Set : %s"));
            default:
                if (lenient_ && (card == gms_card::kJulianTime || card == gms_card::kTimeUnits))
                    return skip_time_card(card);
                GMS_ReportError("GMStoPLX : read_binary - Invalid Card [%d] found in %s\n", card, path_);
                return true;
        }
    }

    bool skip(int n, const char* complaint) {
        std::array<char, gms_card::kReferenceTimeBytes> ignored;
        return source_.bytes(ignored.data(), n) || fail_set(complaint);
    }

    bool skip_time_card(int card) {
        const bool skipped = card == gms_card::kJulianTime
                                 ? skip(gms_card::kJulianBytes, "Invalid Julian Reference Time")
                                 : skip(gms_card::kTimeUnitBytes, "Invalid Time Units");
        return skipped && take_markers(card);
    }

    bool read_set(int components) {
        GMSDataSet& set = *list_.emplace_back(std::make_unique<GMSDataSet>());
        set.components = components;
        set.objectType = object_type_;
        StepFlags flags;
        ended_ = false;
        for (int card = 0; !ended_;) {
            // A program that was stopped has not closed its dataset.
            if (!source_.integer(card)) return lenient_;
            if (card == gms_card::kEndOfSet) return take_end();
            if (!(card == gms_card::kTimeStep ? read_step(set, flags) : take_set_card(card, set)))
                return false;
        }
        return true;
    }

    bool take_end() {
        int marker = 0;
        if (!markers_ || source_.integer(marker)) return true;
        // Deliberate: the text names the block of the time steps, and hosts that look for it know only that.
        GMS_ReportError("GMStoPLX : read_binary - Missing block bytes for block 200\n");
        return false;
    }

    bool take_set_card(int card, GMSDataSet& set) {
        switch (card) {
            case gms_card::kVectorType:
                return take_integer(set.vectorType, "Invalid Vector Type ID") && take_markers(card);
            case gms_card::kObjectId:
                return take_integer(set.objectId, "Invalid Object ID") && take_markers(card);
            case gms_card::kValueCount:
                return take_count(set.numValues, "Invalid Number of data values") && take_markers(card);
            case gms_card::kCellCount:
                return take_count(set.numCells, "Invalid Number of cells") && take_markers(card);
            case gms_card::kName:
                return take_name(set) && take_markers(card);
            case gms_card::kReferenceTime:
                return take_reference_time(set) && take_markers(card);
            // Deliberate: hosts know the markers of this card by the number of the other reference time card.
            case gms_card::kReferenceText:
                return skip(gms_card::kReferenceTextBytes, "Invalid Reference Time") &&
                       take_markers(gms_card::kReferenceTime);
            case gms_card::kActivity:
                set.hasActivity = true;
                return skip_number("Invalid ACTTS Value 0.000000") && take_markers(card);
            case gms_card::kMapping:
                return skip_number("Invalid MAPTS Value 0.000000") && take_markers(card);
            case gms_card::kJulianTime:
            case gms_card::kTimeUnits:
                return !lenient_ || skip_time_card(card);
            default:
                return true;
        }
    }

    bool take_integer(int& v, const char* complaint) { return source_.integer(v) || fail_set(complaint); }

    bool take_count(int& v, const char* complaint) {
        if (!take_integer(v, complaint)) return false;
        v = std::max(v, 0);
        return true;
    }

    bool take_name(GMSDataSet& set) {
        std::array<char, gms_card::kNameBytes> name;
        if (!source_.bytes(name.data(), gms_card::kNameBytes)) return fail_set("Invalid Object name");
        set.SetName(name.data(), gms_card::kNameBytes);
        return true;
    }

    bool take_reference_time(GMSDataSet& set) {
        constexpr const char* kComplaint = "Invalid Reference Time";
        if (!source_.number(8, set.referenceTime)) return fail_set(kComplaint);
        return skip(gms_card::kReferenceTimeBytes - 8, kComplaint);
    }

    bool skip_number(const char* complaint) {
        double ignored = 0.0;
        return source_.number(size_of_floats(), ignored) || fail_set(complaint);
    }

    bool read_step(GMSDataSet& set, StepFlags& flags) {
        float_codes_ = true;
        double own_flags = 0.0, time = 0.0;
        if (!source_.number(flag_size_, own_flags)) return fail_set("Invalid Reference Time");
        if (!source_.number(size_of_floats(), time)) return fail_set("Invalid Time Size Time");
        if (!take_markers(gms_card::kTimeStep)) return false;
        auto made = std::make_unique<TimeStep>(set.components, time);
        TimeStep& step = *made;
        // What was complete is kept by lenient reading, so a step is entered when all of it is there.
        if (!lenient_) set.timeSteps.Set(std::move(made));
        if (own_flags == 0.0) {
            flags.derive(step, set.numCells);
        } else if (!read_flags(step, static_cast<std::size_t>(set.numCells), flags)) {
            return fail_set("Invalid Cell Status");
        }
        if (!read_values(set, step)) return false;
        if (!lenient_) return take_markers(gms_card::kTimeStep);
        set.timeSteps.Set(std::move(made));
        ended_ = !has_markers();
        return true;
    }

    bool read_flags(TimeStep& step, std::size_t cells, StepFlags& flags) {
        std::vector<unsigned char> read;
        std::vector<double> block;
        bool all = true;
        while (all && read.size() < cells) {
            block.resize(std::min(cells - read.size(), NumberSource::kBlock));
            const std::size_t got = source_.numbers(flag_size_, block.data(), block.size());
            all = got == block.size();
            for (std::size_t i = 0; i < got; ++i) read.push_back(block[i] != 0.0 ? 1 : 0);
        }
        flags.take(step, std::move(read));
        return all;
    }

    bool read_values(const GMSDataSet& set, TimeStep& step) {
        const bool planar = lenient_ && set.components == 3 && is_planar(set.objectType);
        const std::size_t width = planar ? 2 : static_cast<std::size_t>(set.components);
        while (step.numValues < set.numValues) {
            const int before = step.numValues;
            const std::size_t rows =
                source_.room_for(static_cast<std::size_t>(set.numValues - before), size_of_floats(), width);
            double* const out = step.AddRows(static_cast<int>(rows));
            const std::size_t got = source_.numbers(size_of_floats(), out, rows * width);
            if (planar) spread(out, got / width);
            if (got == rows * width) continue;
            const auto whole = static_cast<int>(got / width);
            step.KeepRows(before + whole);
            fail_set("Invalid Data Value");
            GMS_ReportError("Dataset %s data value [%d][%d]\n", set.name, before + whole,
                            static_cast<int>(got % width));
            return false;
        }
        return true;
    }

    // Makes three components of two; from the end, because the rows grow in place.
    static void spread(double* values, std::size_t rows) {
        for (std::size_t i = rows; i-- > 0;) {
            const double x = values[2 * i], y = values[2 * i + 1];
            values[3 * i] = x;
            values[3 * i + 1] = y;
            values[3 * i + 2] = 0.0;
        }
    }

    NumberSource source_{report_number_size};
    const char* path_;
    DataSetList& list_;
    bool lenient_;
    bool markers_ = false;
    bool ended_ = false;  ///< in a dataset, where the file was found to end
    int object_type_ = 0, float_size_ = 0, flag_size_ = 0;
    /// From the first time step on, numbers of 4 bytes are floats.
    bool float_codes_ = false;
};

}  // namespace

void report_number_size(int size) { GMS_ReportError("read_double_value : size %d not supported\n", size); }

bool read_binary_datasets(const char* path, DataSetList& list, bool lenient) {
    return BinaryDatasets(path, list, lenient).read();
}

}  // namespace plx
