// The standard normal distribution.
#pragma once

namespace KwBrevix_930 {

/// Density.
double NormalDensity(double x);

/// Probability of a value up to x. Accurate in both tails.
/// Source: the complementary error function.
double NormalProbability(double x);

/// The x whose probability is p. p: strictly between 0 and 1; 0 and 1 give the infinities, others NaN.
/// Source: M. J. Wichura, Algorithm AS 241, Applied Statistics 37 (1988) 477-484, routine PPND16, and one step of
/// Halley's method behind it.
double NormalQuantile(double p);

}  // namespace KwBrevix_930
