// One support vector, as a sparse vector.
#pragma once

#include <cstdint>
#include <vector>

namespace KwBrevix_930 {

struct SVMVectorInstance {
    /// A slot for the vector's norm; -1.0 means not computed. Scoring neither reads nor fills it.
    double normCache = -1.0;
    /// Zero-based columns, strictly as read: neither sorted nor checked.
    std::vector<std::int32_t> indices;
    /// As many as indices.
    std::vector<double> values;
};

}  // namespace KwBrevix_930
