#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "core/text_number.h"
#include "formats/word_lines.h"
#include "gms/callbacks.h"
#include "gms/datasets.h"

namespace plx {
namespace {

constexpr int kMostShown = 8000;

int object_type_of(std::string_view word) {
    constexpr std::array<std::string_view, 8> kTypes = {"tin",    "bhole",  "mesh2d", "grid2d",
                                                        "scat2d", "mesh3d", "grid3d", "scat3d"};
    const auto* const found = std::find(kTypes.begin(), kTypes.end(), word);
    return found == kTypes.end() ? 0 : static_cast<int>(found - kTypes.begin()) + 1;
}

class AsciiDatasets {
public:
    AsciiDatasets(DataSetList& list, bool lenient) : list_(list), lenient_(lenient) {}

    bool read(const char* path) {
        if (!lines_.open(path)) {
            GMS_ReportError("GMStoPLX : read_ascii - Error opening %s for input\n", path);
            return false;
        }
        lines_.next();
        const std::string_view first = lines_.word(0);
        if (first != "DATASET") {
            GMS_ReportError("GMStoPLX : read_ascii - Missing -DATASET- in data file %.*s\n",
                            std::min(static_cast<int>(first.size()), kMostShown), first.data());
            return false;
        }
        lines_.next();
        if (lines_.word(0) != "OBJTYPE") return fail("Missing -OBJTYPE- in data file");
        object_type_ = object_type_of(lines_.word(1));
        bool more = lines_.next();
        if (lines_.word(0) == "REFTIME") {
            lines_.number(1, reference_time_);
            more = lines_.next();
        }
        for (; more; more = lines_.next()) {
            if (lenient_ && !at_block()) {
                take_file_card();
            } else if (!read_block()) {
                return false;
            }
        }
        return true;
    }

private:
    static bool fail(const char* what) {
        GMS_ReportError("GMStoPLX : read_ascii - %s\n", what);
        return false;
    }

    bool at_block() const { return lines_.word(0) == "BEGSCL" || lines_.word(0) == "BEGVEC"; }

    void take_file_card() {
        if (lines_.word(0) == "REFTIME") lines_.number(1, reference_time_);
        if (lines_.word(0) == "OBJTYPE") object_type_ = object_type_of(lines_.word(1));
    }

    // True also where the file ends before there is a time step.
    bool read_block() {
        if (lines_.word(0) == "BEGVEC") components_ = 3;
        if (lines_.word(0) == "BEGSCL") components_ = 1;
        GMSDataSet& set = *list_.emplace_back(std::make_unique<GMSDataSet>());
        set.objectType = object_type_;
        set.referenceTime = reference_time_;
        for (;;) {
            if (!lines_.next()) return true;
            if (lines_.word(0) == "TS") break;
            take_header_card(set);
        }
        StepFlags flags;
        for (;;) {
            if (!read_step(set, flags)) return false;
            lines_.next();
            if (lines_.word(0) == "ENDDS") return true;
            if (!lenient_ || lines_.word(0) != "TS") {
                return fail("End of Data values not reached");
            }
        }
    }

    void take_header_card(GMSDataSet& set) {
        const std::string_view card = lines_.word(0);
        if (card == "ACTTS") set.hasActivity = true;
        if (card == "OBJID") lines_.integer(1, set.objectId);
        if (card == "VECTYPE") lines_.integer(1, set.vectorType);
        if (card == "ND" && lines_.integer(1, set.numValues)) set.numValues = std::max(set.numValues, 0);
        if (card == "NC" && lines_.integer(1, set.numCells)) set.numCells = std::max(set.numCells, 0);
        if (card == "NAME") {
            const std::string_view name = lines_.word(1).substr(0, GMSDataSet::kNameSize);
            set.SetName(name.data(), static_cast<int>(name.size()));
        }
    }

    bool read_step(GMSDataSet& set, StepFlags& flags) {
        const bool time_alone = lenient_ && lines_.count() == 2;
        const bool own_flags = !time_alone && lines_.word(1) == "1";
        const double time = to_double(lines_.word(time_alone ? 1 : 2));
        TimeStep& step = *set.timeSteps.Set(std::make_unique<TimeStep>(components_, time));
        if (!own_flags) {
            flags.derive(step, set.numCells);
        } else if (!read_flags(step, set.numCells, flags)) {
            return fail("Invalid Number of Cell components");
        }
        for (int i = 0; i < set.numValues; ++i) {
            if (!read_value(step)) return fail("Invalid Number of Data components");
        }
        return true;
    }

    bool read_flags(TimeStep& step, int cells, StepFlags& flags) {
        std::vector<unsigned char> read;
        int flag = 0;
        while (static_cast<int>(read.size()) < cells && lines_.next() && lines_.integer(0, flag)) {
            read.push_back(flag != 0 ? 1 : 0);
        }
        const bool all = static_cast<int>(read.size()) == cells;
        flags.take(step, std::move(read));
        return all;
    }

    bool read_value(TimeStep& step) {
        if (!lines_.next()) return false;
        // In a block that is too short its end would count as a value of 0.
        if (lenient_ && (lines_.word(0) == "ENDDS" || lines_.word(0) == "TS")) return false;
        std::array<double, 3> value{};
        for (int i = 0; i < components_; ++i) {
            const bool planar = lenient_ && i == 2 && lines_.count() == 2;
            if (!planar && !lines_.number(i, value[static_cast<std::size_t>(i)])) return false;
        }
        std::copy_n(value.begin(), components_, step.AddRows(1));
        return true;
    }

    WordLines lines_;
    DataSetList& list_;
    bool lenient_;
    int components_ = 0;
    int object_type_ = 0;
    double reference_time_ = 0.0;
};

}  // namespace

bool read_ascii_datasets(const char* path, DataSetList& list, bool lenient) {
    return AsciiDatasets(list, lenient).read(path);
}

}  // namespace plx
