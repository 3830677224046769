// Checks of places in a vector and of lists of indices. Internal.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace KwMath_930 {

/// Returns: true when offset + k inc lies in 0 .. size-1 for every k < count; inc may be negative or 0.
inline bool AreStridedPlacesInside(std::size_t size, int count, int offset, int inc) {
    const std::int64_t last = offset + std::int64_t{count - 1} * inc;
    return count < 1 ||
           (std::min<std::int64_t>(offset, last) >= 0 && std::cmp_less(std::max<std::int64_t>(offset, last), size));
}

/// Index of place k of a walk whose step grows by one: offset + k inc + k(k-1)/2.
constexpr std::int64_t GrowingPlace(int k, int offset, int inc) {
    return offset + std::int64_t{k} * inc + std::int64_t{k} * (k - 1) / 2;
}

/// Returns: true when GrowingPlace(k, offset, inc) lies in 0 .. size-1 for every k < count.
inline bool AreGrowingPlacesInside(std::size_t size, int count, int offset, int inc) {
    for (int k = 0; k < count; ++k) {
        const std::int64_t place = GrowingPlace(k, offset, inc);
        if (place < 0 || !std::cmp_less(place, size)) {
            return false;
        }
    }
    return true;
}

/// Returns: true when every index lies in 0 .. bound-1.
inline bool AreIndices(const std::vector<int>& indices, int bound) {
    return std::all_of(indices.begin(), indices.end(), [bound](int index) { return index >= 0 && index < bound; });
}

/// Returns: true when the two lists make a sparse vector of size bound: the same length, every index in 0 .. bound-1.
inline bool AreEntries(const std::vector<int>& indices, const std::vector<double>& values, int bound) {
    return indices.size() == values.size() && AreIndices(indices, bound);
}

}  // namespace KwMath_930
