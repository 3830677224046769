// The square root of a signed sum of two scaled squares, formed without squaring large numbers.
#pragma once

#include "numerics/Export.h"

namespace KwMath_930 {

/// Arithmetic on numbers near the ends of the range. Static functions only, no state; callable from any thread.
class KW_EXPORT KwExtremeNum {
public:
    /// sqrt(sign(b) a^2 |b| + sign(d) c^2 |d|), scaled by its larger term so that no square overflows or underflows.
    /// Shape:   a term is negative when its b or d is below 0; the signs of a and c do not matter.
    /// Returns: true with the root in result; false when the sum is negative or both terms are, result untouched then.
    /// Note:    an operand that is NaN gives NaN and true, unless both terms are negative.
    static bool SumSqRoot(double a, double b, double c, double d, double& result);
};

}  // namespace KwMath_930
