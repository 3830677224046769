// The non-central distributions: Poisson mixtures of incomplete functions, and the integrals of the non-central t.
#pragma once

#include "numerics/distributions/detail/gamma_parts.h"

namespace KwMath_930::detail {

inline constexpr double kMostNoncentrality = 1e9;   // of chi-square, F and beta
inline constexpr double kMostNoncentralityT = 4e4;  // of t

// Which tail is wanted; the other is not formed.
enum class Tail { kLower, kUpper };

// Sum over j of Poisson(j; half) P(a + j, z), or Q(a + j, z); z > 0, half > 0. tol > 0 ends it at a term of tol
// epsilons.
double NoncentralGamma(Tail tail, double z, double a, double half, double tol);

// Sum over j of Poisson(j; half) I_x(a + j, b), or of the complement.
double NoncentralBeta(Tail tail, const UnitPoint& at, double a, double b, double half, double tol);

// P(T <= t), or P(T > t); t finite and not 0, delta not 0, |delta| at most kMostNoncentralityT.
double NoncentralT(Tail tail, double t, double df, double delta, double tol);

// The density of T at t; df finite.
double NoncentralTDensity(double t, double df, double delta);

}  // namespace KwMath_930::detail
