// The normal distribution, and the exponential's kernel beside it. Test: KwDistFun_normal_test.cpp.
#include "numerics/distributions/KwDistFun.h"

#include <cmath>

#include "numerics/distributions/detail/DoubleDouble.h"
#include "numerics/distributions/detail/checks.h"
#include "numerics/distributions/detail/error_function.h"
#include "numerics/distributions/detail/polynomial.h"
#include "numerics/power/KwPower.h"

namespace KwMath_930 {

using detail::DoubleDouble;
using detail::Erf;
using detail::Erfc;
using detail::ExpHalfSquare;
using detail::Fail;
using detail::FiniteOrMissing;
using detail::IsPositive;
using detail::Missing;
using detail::Polynomial;
using detail::ScaledErfc;
using detail::TwoProduct;
using detail::TwoSum;

namespace {

constexpr double kInverseRootTwoPi = 0.3989422804014327;

// Whether z = (x - mean)/sd and all that it is made of are finite, and what rounding takes from it can be put back.
inline bool IsOrdinary(double z, double sd) {
    return std::abs(z) < 50.0 && sd > 1e-280 && sd < 1e280;
}

// An ordinary z with what its rounding leaves, so that a far tail does not see the rounding.
inline DoubleDouble Standardise(double x, double mean, double sd, double z) {
    const DoubleDouble difference = TwoSum(x, -mean);
    const DoubleDouble product = TwoProduct(z, sd);
    const double rest = ((difference.hi - product.hi) - product.lo) + difference.lo;
    return {z, rest * (1.0 / sd)};
}

bool IsNormal(double x, double mean, double sd) {
    return !std::isnan(x) && std::isfinite(mean) && IsPositive(sd);
}

// The z > 1 that cuts off tail, one Newton step from an approximation.
double RefineDeviate(double z, double tail) {
    constexpr double kRootHalf = 0.7071067811865476;
    const double scaled = ScaledErfc(z * kRootHalf);
    const double reached = 0.5 * ExpHalfSquare(z) * scaled;
    return z + (reached / tail - 1.0) * (scaled * (0.5 / kInverseRootTwoPi));
}

// AS 241's forms for |p - 1/2| > 0.425, p = 1/2 + q, and a step that puts right what the logarithm rounds.
double TailDeviate(double p, double q) {
    static constexpr double kC[] = {1.42343711074968357734e0,  4.63033784615654529590e0, 5.76949722146069140550e0,
                                    3.64784832476320460504e0,  1.27045825245236838258e0, 2.41780725177450611770e-1,
                                    2.27238449892691845833e-2, 7.74545014278341407640e-4};
    static constexpr double kD[] = {1.0,
                                    2.05319162663775882187e0,
                                    1.67638483018380384940e0,
                                    6.89767334985100004550e-1,
                                    1.48103976427480074590e-1,
                                    1.51986665636164571966e-2,
                                    5.47593808499534494600e-4,
                                    1.05075007164441684324e-9};
    static constexpr double kE[] = {6.65790464350110377720e0,  5.46378491116411436990e0,  1.78482653991729133580e0,
                                    2.96560571828504891230e-1, 2.65321895265761230930e-2, 1.24266094738807843860e-3,
                                    2.71155556874348757815e-5, 2.01033439929228813265e-7};
    static constexpr double kF[] = {1.0,
                                    5.99832206555887937690e-1,
                                    1.36929880922735805310e-1,
                                    1.48753612908506148525e-2,
                                    7.86869131145613259100e-4,
                                    1.84631831751005468180e-5,
                                    1.42151175831644588870e-7,
                                    2.04426310338993978564e-15};
    const double tail = q < 0.0 ? p : 1.0 - p;
    const double r = std::sqrt(-std::log(tail));
    const double z = r <= 5.0 ? Polynomial(kC, r - 1.6) / Polynomial(kD, r - 1.6)
                              : Polynomial(kE, r - 5.0) / Polynomial(kF, r - 5.0);
    const double refined = RefineDeviate(z, tail);
    return q < 0.0 ? -refined : refined;
}

// Source: Wichura, Algorithm AS 241, PPND16, with its coefficients; 0 < p < 1.
inline double Deviate(double p) {
    static constexpr double kA[] = {3.3871328727963666080e0, 1.3314166789178437745e2, 1.9715909503065514427e3,
                                    1.3731693765509461125e4, 4.5921953931549871457e4, 6.7265770927008700853e4,
                                    3.3430575583588128105e4, 2.5090809287301226727e3};
    static constexpr double kB[] = {1.0,
                                    4.2313330701600911252e1,
                                    6.8718700749205790830e2,
                                    5.3941960214247511077e3,
                                    2.1213794301586595867e4,
                                    3.9307895800092710610e4,
                                    2.8729085735721942674e4,
                                    5.2264952788528545610e3};
    const double q = p - 0.5;
    if (std::abs(q) > 0.425) {
        return TailDeviate(p, q);
    }
    const double r = 0.180625 - q * q;
    return q * Polynomial(kA, r) / Polynomial(kB, r);
}

}  // namespace

double KwDistFun::prbnrm(const double& x) {
    static const double rootTwo = std::sqrt(2.0);
    if (x > 0.0) {
        return (1.0 + derf(x / rootTwo)) / 2.0;
    }
    if (x < 0.0) {
        // erfc(-x / sqrt 2)/2; the exponent is formed from x itself, without the rounding of the quotient.
        const double y = -x / rootTwo;
        return y < 0.5 ? derfc(y) / 2.0 : ExpHalfSquare(x) * ScaledErfc(y) / 2.0;
    }
    return 0.5;
}

double KwDistFun::derf(const double& x) {
    return Erf(x);
}

double KwDistFun::derfc(const double& x) {
    return Erfc(x);
}

double KwDistFun::probit(const double& p) {
    return p > 0.0 && p < 1.0 ? Deviate(p) : Missing();
}

double KwDistFun::cdfexp(const double& x, const double& rate, long& ier) {
    ier = 0;
    if (!IsPositive(rate) || std::isnan(x)) {
        return Fail(ier, 1);
    }
    if (x <= 0.0) {
        return 0.0;
    }
    return KwPower::ExpUnderflow(-rate * x) ? 1.0 : -std::expm1(-rate * x);
}

double KwDistFun::CdfStdNorm(double x) {
    return prbnrm(x);
}

double KwDistFun::CdfNorm(double x, double mean, double sd) {
    const double z = (x - mean) / sd;
    if (!IsOrdinary(z, sd)) {
        return IsNormal(x, mean, sd) ? prbnrm(z) : Missing();
    }
    return prbnrm(z) + kInverseRootTwoPi * ExpHalfSquare(z) * Standardise(x, mean, sd, z).lo;
}

double KwDistFun::PdfNormalStandard(double x) {
    return std::isnan(x) ? Missing() : kInverseRootTwoPi * ExpHalfSquare(x);
}

double KwDistFun::PdfNormal(double x, double mean, double sd) {
    const double perSd = 1.0 / sd;
    const double z = (x - mean) * perSd;
    if (IsOrdinary(z, sd)) {
        return ExpHalfSquare(Standardise(x, mean, sd, z)) * (kInverseRootTwoPi * perSd);
    }
    if (!IsNormal(x, mean, sd)) {
        return Missing();
    }
    const double height = ExpHalfSquare((x - mean) / sd);
    return height > 0.0 ? FiniteOrMissing(height * (kInverseRootTwoPi / sd)) : 0.0;
}

double KwDistFun::IdfStdNorm(double p) {
    return probit(p);
}

double KwDistFun::IdfNorm(double p, double mean, double sd) {
    if (!(p > 0.0 && p < 1.0) || !std::isfinite(mean) || !IsPositive(sd)) {
        return Missing();
    }
    return FiniteOrMissing(mean + sd * Deviate(p));
}

}  // namespace KwMath_930
