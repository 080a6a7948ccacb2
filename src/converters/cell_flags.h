#pragma once

#include <cstdint>
#include <vector>

#include "formats/grid_geometry.h"

namespace plx {

/// Which cells of a grid are converted. Cells count layer by layer, row by row; all are inactive at first.
class CellFlags {
public:
    void resize(const GridSize& size);
    bool empty() const { return flags_.empty(); }

    /// Stores a cell's IBOUND value, already truncated.
    /// @param inside       the cell lies in the cropping rectangle; a cell outside is not converted.
    /// @param any_nonzero  every value but 0 is active; otherwise 1 and -1 only.
    void set(std::size_t cell, int ibound, bool inside, bool any_nonzero);

    bool active(std::size_t cell) const { return (flags_[cell] & kActive) != 0; }
    bool constant_head(std::size_t cell) const { return (flags_[cell] & kConstant) != 0; }
    /// Active cells of a layer.
    int active_in_layer(int layer) const { return active_[static_cast<std::size_t>(layer)]; }
    std::int64_t total_active() const;

private:
    static constexpr std::uint8_t kActive = 1, kConstant = 2;
    std::size_t per_layer_ = 0;
    std::vector<std::uint8_t> flags_;
    std::vector<int> active_;
};

}  // namespace plx
