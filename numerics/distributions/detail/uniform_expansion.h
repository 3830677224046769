// The incomplete gamma and beta functions for large parameters, uniformly about their transition point.
#pragma once

#include "numerics/distributions/detail/gamma_parts.h"
#include "numerics/distributions/detail/tails.h"

namespace KwMath_930::detail {

// Parameters from which the expansion holds, and the distance from the transition up to which it converges fast.
inline constexpr double kUniformFrom = 12.0;
inline constexpr double kUniformReach = 1.0;

// What UniformGamma and UniformBeta take for the distance: |eta|, where parameter * eta^2 / 2 is the deviance.
double UniformDistance(DoubleDouble deviance, double parameter);

// P(p, x) and Q(p, x); p >= kUniformFrom, the distance within reach, deviance as GammaDeviance gives it.
Tails UniformGamma(double x, double p, DoubleDouble deviance);

// I_x(a, b) and its complement; kUniformFrom <= a <= b, the distance (by a) within reach, deviance as BetaDeviance,
// isLow whether x < a/(a+b).
Tails UniformBeta(double a, double b, bool isLow, DoubleDouble deviance);

}  // namespace KwMath_930::detail
