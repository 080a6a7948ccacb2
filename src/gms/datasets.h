#pragma once

#include <memory>
#include <vector>

#include "plxutils/core/VXInputFile.h"
#include "plxutils/gms/GMSDataSet.h"

/// Readers of GMS dataset files. Failures go to the error hook.
namespace plx {

using DataSetList = std::vector<std::unique_ptr<GMSDataSet>>;

/// Append every dataset of a file to the list as soon as it begins; what was read before a failure stays.
/// @param lenient  read what newer programs write, too.
/// @throws std::bad_alloc
bool read_ascii_datasets(const char* path, DataSetList& list, bool lenient);
bool read_binary_datasets(const char* path, DataSetList& list, bool lenient);

/// Reports a size code that no number has.
void report_number_size(int size);

/// What steps without flags of their own take from the step before.
class StepFlags {
public:
    /// Gives the step flags that were read, one for each of its cells.
    void take(TimeStep& step, std::vector<unsigned char> flags);
    /// Gives the step the flags of the step before; all cells of a first step are active.
    void derive(TimeStep& step, int cells);

private:
    bool any_ = false;
    std::shared_ptr<const std::vector<unsigned char>> status_;
    int described_ = 0;
};

}  // namespace plx
