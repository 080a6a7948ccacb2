#include "converters/cell_flags.h"

#include <numeric>

namespace plx {

void CellFlags::resize(const GridSize& size) {
    per_layer_ = size.per_layer();
    flags_.assign(size.cells(), 0);
    active_.assign(static_cast<std::size_t>(size.layers), 0);
}

void CellFlags::set(std::size_t cell, int ibound, bool inside, bool any_nonzero) {
    const bool was_active = active(cell);
    const bool is_active = inside && ibound != 0 && (any_nonzero || ibound == 1 || ibound == -1);
    flags_[cell] = static_cast<std::uint8_t>((is_active ? kActive : 0) | (ibound < 0 ? kConstant : 0));
    active_[cell / per_layer_] += static_cast<int>(is_active) - static_cast<int>(was_active);
}

std::int64_t CellFlags::total_active() const {
    return std::accumulate(active_.begin(), active_.end(), std::int64_t{0});
}

}  // namespace plx
