#pragma once

#include <string>
#include <vector>

#include "plxutils/gms/GMStoPLX.h"
#include "plxutils/gms/GmsSummary.h"

namespace plx {

/// "tin" to "scat3d" for 1 to 8; empty for other codes.
const char* gms_type_word(int object_type);

/// Widens the range of a summary by values of a first component, leaving out what is missing.
class ValueRange {
public:
    void add(double value);
    void store(GmsDatasetSummary& summary) const;

private:
    bool any_ = false;
    double min_ = 0.0, max_ = 0.0;
};

/// Reads a dataset file, describes what was in it and forgets it again, so that the files of a project do not
/// add up in memory.
/// @param name  as AddDataSet takes it.
/// @return false after a failure; the datasets before it are described all the same.
bool describe_datasets(GMStoPLX& converter, const std::string& name, std::vector<GmsDatasetSummary>& out);

}  // namespace plx
