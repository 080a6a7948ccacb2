#include <array>
#include <cmath>
#include <new>
#include <string>

#include "formats/gms_cards.h"
#include "formats/number_source.h"
#include "gms/callbacks.h"
#include "gms/datasets.h"
#include "gms/project_path.h"
#include "plxutils/gms/GMStoPLX.h"

namespace {

constexpr double kKeyTolerance = 1e-6;

bool has_key(const GMSDataSet& set, double key) { return std::fabs(set.Key() - key) < kKeyTolerance; }

using Reader = bool (*)(const char*, plx::DataSetList&, bool);

bool read_guarded(Reader reader, const char* path, GMStoPLX& owner) {
    const char* const stored = path == nullptr ? "" : path;
    try {
        return reader(stored, owner.dataSets, owner.lenientDatasets);
    } catch (const std::bad_alloc&) {
        GMS_ReportError("GMStoPLX : not enough memory for %s\n", stored);
        return false;
    }
}

}  // namespace

bool GMStoPLX::AddDataSet(const char* name) {
    const char* const given = name == nullptr ? "" : name;
    const std::string path = plx::project_path(projectSource, given).c_str();
    int first = 0;
    {
        VXInputFile file;
        if (!file.Open(path.c_str())) {
            GMS_ReportError("GMStoPLX : read_binary - Error opening %s for input\n", given);
            return false;
        }
        file.ReadRawInt(first);
    }
    const bool binary = first == plx::kBinaryVersion || first == plx::kFirstRecord;
    if (!(binary ? ReadBinary(path.c_str()) : ReadAscii(path.c_str()))) {
        GMS_ReportError("GMStoPLX : Add_Dataset - Error adding %s dataset %s\n", binary ? "binary" : "ascii",
                        given);
        return false;
    }
    GMS_ReportStatus("DATA file added! %s\n", given);
    return true;
}

bool GMStoPLX::ReadAscii(const char* path) { return read_guarded(plx::read_ascii_datasets, path, *this); }

bool GMStoPLX::ReadBinary(const char* path) { return read_guarded(plx::read_binary_datasets, path, *this); }

int GMStoPLX::CountDataSets(double key) {
    int count = 0;
    for (const auto& set : dataSets) count += has_key(*set, key) ? 1 : 0;
    return count;
}

GMSDataSet* GMStoPLX::FindDataSet(int index, double key) {
    for (const auto& set : dataSets) {
        if (has_key(*set, key) && index-- == 0) return set.get();
    }
    return nullptr;
}

bool GMStoPLX::ReadValue(VXInputFile& file, int size, double& value) {
    const auto width = static_cast<int>(plx::number_width(size));
    if (width == 0) plx::report_number_size(size);
    std::array<char, 8> bytes;
    if (width == 0 || file.ReadRawBytes(bytes.data(), width) < width) return false;
    plx::widen_numbers(size, bytes.data(), &value, 1);
    return true;
}

const TimeStep* GMStoPLX::StepOf(const GMSDataSet& dataset) const {
    return useChosenTime ? dataset.timeSteps.Nearest(chosenTime) : dataset.timeSteps.GetAt(0);
}
