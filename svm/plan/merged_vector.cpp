// What the merge of a support vector with a case amounts to: the merge of the kernels, with the case's side known.
#include "svm/plan/merged_vector.h"

namespace KwBrevix_930::plan {

void MergeWithCase(const SVMVectorInstance& vector, std::size_t columns, MergedVector& merged) {
    merged.matched.clear();
    merged.unmatched.clear();
    // The column that the case's side of the merge has come to.
    std::int64_t next = 0;
    for (std::size_t q = 0; q < vector.indices.size(); ++q) {
        const std::int32_t index = vector.indices[q];
        if (index >= next && index < static_cast<std::int64_t>(columns)) {
            merged.matched.push_back({index, vector.values[q]});
            next = std::int64_t{index} + 1;
        } else {
            merged.unmatched.push_back(vector.values[q]);
            if (index >= next)
                next = static_cast<std::int64_t>(columns);
        }
    }
}

}  // namespace KwBrevix_930::plan
