// Sizing of a vector that receives a result. Internal.
#pragma once

#include <cstddef>
#include <vector>

namespace KwMath_930 {

/// Gives target size elements (none for a negative size) unless it has them already.
/// Returns: false when the allocation failed; target is unchanged then.
inline bool ResizeTarget(std::vector<double>& target, int size) {
    const std::size_t wanted = size > 0 ? static_cast<std::size_t>(size) : 0;
    try {
        target.resize(wanted);
    } catch (...) {
        return false;
    }
    return true;
}

}  // namespace KwMath_930
