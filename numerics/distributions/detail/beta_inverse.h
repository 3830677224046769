// The inverse of the incomplete beta function, from both ends.
#pragma once

#include "numerics/distributions/detail/gamma_parts.h"
#include "numerics/distributions/detail/invert.h"
#include "numerics/distributions/detail/tails.h"

namespace KwMath_930::detail {

// The point at which I_x(a, b) and its complement are the target's tails, both positive. deviate is the normal deviate
// of the smaller tail, taken positive; lastStep as Refine takes it.
UnitPoint InvertBeta(const Tails& target, double a, double b, double deviate, double lastStep = kLastStep);

}  // namespace KwMath_930::detail
