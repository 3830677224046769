// What the maker's extension element says of one machine.
#pragma once

#include <cstdint>

#include "host/NumericValue.h"

namespace KwBrevix_930 {

struct SVMMachineExtension {
    double standardDeviation = NumericValue::GetSysmisValue();
    /// Indices among the target's categories; -1 where the extension names none.
    std::int32_t responseCategoryIndex = -1;
    std::int32_t nonresponseCategoryIndex = -1;
    /// The parameters of the sigmoid 1 / (1 + exp(A f + B)).
    double probabilityA = NumericValue::GetSysmisValue();
    double probabilityB = NumericValue::GetSysmisValue();
};

}  // namespace KwBrevix_930
