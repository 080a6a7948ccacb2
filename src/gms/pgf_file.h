#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/block_writer.h"

namespace plx {

/// Writes a pre-geology file (.pgf): a title, the names of the layers, the number of contacts, and a line for
/// each contact. Names must not hold blanks.
class PgfWriter {
public:
    explicit PgfWriter(BlockWriter& out) : out_(out) {}

    void header(std::string_view title, const std::vector<std::string>& layers, int contacts);
    /// @param layer  0-based position of the material in its list; -1 for one that is not in it.
    void contact(double x, double y, double z, int layer, std::string_view bore);

private:
    BlockWriter& out_;
};

}  // namespace plx
