// One support vector machine of a model.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "pmml/SVMMachineExtension.h"
#include "pmml/SVMVectorInstance.h"

namespace KwBrevix_930 {

struct ST_SUPPORTVECTORMACHINE {
    ST_SUPPORTVECTORMACHINE() = default;
    ST_SUPPORTVECTORMACHINE(const ST_SUPPORTVECTORMACHINE&) = delete;
    ST_SUPPORTVECTORMACHINE& operator=(const ST_SUPPORTVECTORMACHINE&) = delete;
    virtual ~ST_SUPPORTVECTORMACHINE();

    /// Indices among the target's categories; the number of categories for a text that names none of them.
    std::int32_t targetCategoryIndex = -1;
    std::int32_t alternateTargetCategoryIndex = -1;
    double threshold = 0.0;
    /// The machine's constant term.
    double bias = 0.0;
    /// In the order of their elements; owned by the model data.
    std::vector<SVMVectorInstance*> supportVectors;
    /// One for each support vector.
    std::vector<double> coefficients;
    /// Null where the machine has none.
    std::unique_ptr<SVMMachineExtension> extension;
};

}  // namespace KwBrevix_930
