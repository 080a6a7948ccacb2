#pragma once

#include <filesystem>
#include <vector>

#include "results.h"

namespace valley {

/// The flow-transport link file that MT3DMS reads its flows from, of version MT3D4.00.00, without record
/// marks: the flags of the packages, then for each step the saturated thickness, the face flows, the storage
/// and one record for each kind of boundary. Signs are those of the budget file.
class LinkFile {
public:
    /// Throws std::runtime_error when the file cannot be made.
    LinkFile(const std::filesystem::path& path, const Model& model);
    void write(const Model& model, const Step& step, const std::vector<Term>& terms);
    void close() { file_.close(); }
    void publish() { file_.publish(); }

private:
    ResultFile file_;
};

}  // namespace valley
