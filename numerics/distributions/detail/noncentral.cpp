// A mixture starts from the end of its range from which the recurrence of the incomplete function only adds, and takes
// its weights afresh every kBlock terms, so that no error builds up. Where t and delta have opposite signs the mixture
// of the t cancels; there the tail is the integral over the scale s of Phi(-(|t| s + |delta|)) times the density of s,
// by the trapezoidal rule in v with log s = log s0 + c (v + 1 - exp(-v)), which decays doubly exponentially on both
// sides. Sources: Benton and Krishnamoorthy, Comput. Statist. Data Anal. 43 (2003), for sums from their mode; Takahasi
// and Mori, Publ. RIMS 9 (1974), for the rule. Test: KwDistFun_noncentral_test.cpp.
#include "numerics/distributions/detail/noncentral.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "numerics/distributions/detail/error_function.h"
#include "numerics/distributions/detail/incomplete_beta.h"
#include "numerics/distributions/detail/incomplete_gamma.h"
#include "numerics/distributions/detail/t_and_f.h"
#include "numerics/power/KwPower.h"

namespace KwMath_930::detail {

namespace {

constexpr int kBlock = 16;
constexpr double kNegligible = 1e-19;
constexpr double kMostIndex = 2e9;
constexpr int kMostMixtureTerms = 2000000;  // some 18 sqrt(kMostIndex) are the most that a sum takes
constexpr double kRootHalf = 0.7071067811865476;
constexpr double kInverseRootTwoPi = 0.3989422804014327;

// A parameter a + k with the part that rounding takes from it: tails far out feel that part. tilt is the derivative of
// the logarithm of Step by the parameter, which tells by what factor a value at the rounded parameter is to be
// corrected.
struct RunningShape {
    DoubleDouble exact;

    RunningShape(double a, double k) : exact(TwoSum(a, k)) {}
    double Correct(double value, double tilt) const { return value + value * (exact.lo * tilt); }
};

// P(a + k, z) as k runs: F(k) - F(k + 1) = Step(k).
struct GammaFamily {
    double z;
    double a;

    double Tilt(double shape) const { return std::log(z / (shape + 0.5)); }
    double Lower(double k) const {
        const RunningShape shape(a, k);
        const double lower = IncompleteGamma(z, shape.exact.hi).lower;
        return lower < 0.5 ? shape.Correct(lower, Tilt(shape.exact.hi)) : lower;
    }
    double Upper(double k) const { return IncompleteGamma(z, a + k).upper; }
    double Step(double k) const {
        const RunningShape shape(a, k);
        return shape.Correct(GammaPrefix(z, shape.exact.hi), Tilt(shape.exact.hi));
    }
    // Step(k) / Step(k - 1)
    double Growth(double k) const { return z / (a + k); }
};

// I_x(a + k, b) as k runs.
struct BetaFamily {
    UnitPoint at;
    double a;
    double b;

    double Tilt(double shape) const { return std::log(at.x.hi * ((shape + b - 0.5) / (shape + 0.5))); }
    double Lower(double k) const {
        const RunningShape shape(a, k);
        const double lower = IncompleteBeta(at, shape.exact.hi, b).lower;
        return lower < 0.5 && shape.exact.lo != 0.0 ? shape.Correct(lower, Tilt(shape.exact.hi)) : lower;
    }
    double Upper(double k) const { return IncompleteBeta(at, a + k, b).upper; }
    double Step(double k) const {
        const RunningShape shape(a, k);
        const double step = BetaPrefix(at, shape.exact.hi, b);
        return shape.exact.lo != 0.0 ? shape.Correct(step, Tilt(shape.exact.hi)) : step;
    }
    double Growth(double k) const { return at.x.hi * (a + k - 1.0 + b) / (a + k); }
};

// The index at which the terms stop growing: the last j at which ratio(j) = term(j)/term(j - 1) is at least 1.
template <class Ratio>
double LastGrowing(const Ratio& ratio, double most) {
    double low = 0.0;
    double high = most;
    while (high - low > 1.0) {
        const double middle = std::floor(0.5 * (low + high));
        (ratio(middle) >= 1.0 ? low : high) = middle;
    }
    return low;
}

// Sum of weight(j) value(j), weight(j) = half^(j + shift) exp(-half)/Gamma(j + shift + 1): lower tails from the top
// down, upper tails from the bottom up, each in the direction in which value only grows by Step.
template <class Family>
double Mixture(const Family& family, double half, double shift, bool isLower, double tol) {
    const auto ratio = [&](double j) {
        const double growth = family.Growth(j);
        return half / (j + shift) * (isLower ? std::min(1.0, growth) : std::max(1.0, family.Growth(j - 1.0)));
    };
    const double mode = LastGrowing(ratio, kMostIndex);
    const auto valueAt = [&](double j) { return isLower ? family.Lower(j) : family.Upper(j); };
    if (!(GammaPrefix(half, mode + shift) * valueAt(mode) > 0.0)) {
        return 0.0;  // the largest term underflows
    }
    double j = mode;
    double size = 1.0;
    for (int n = 0; n < kMostMixtureTerms && size > kNegligible * 1e-2 && (isLower || j > 0.0); ++n) {
        if (isLower) {
            size *= ratio(++j);
        } else {
            size /= ratio(j--);
        }
    }
    const double end = tol > 0.0 ? tol * KwPower::MEpsilon() : kNegligible;
    const double direction = isLower ? -1.0 : 1.0;
    DoubleDouble value(valueAt(j));
    DoubleDouble total;
    double weight = 0.0;
    double step = 0.0;
    for (int n = 0; n < kMostMixtureTerms; ++n, j += direction) {
        if (n % kBlock == 0) {
            weight = GammaPrefix(half, j + shift);
            step = isLower ? (j > 0.0 ? family.Step(j - 1.0) : 0.0) : family.Step(j);
        }
        const double term = weight * value.hi;
        total = total + DoubleDouble(term);
        const bool isPastMode = isLower ? j <= mode : j >= mode;
        if ((isLower && j == 0.0) || (isPastMode && term <= end * total.hi)) {
            return total.Value();
        }
        value = value + DoubleDouble(step);
        if (isLower) {
            weight *= (j + shift) / half;
            step /= j > 1.0 ? family.Growth(j - 1.0) : 1.0;
        } else {
            weight *= half / (j + 1.0 + shift);
            step *= family.Growth(j + 1.0);
        }
    }
    return std::numeric_limits<double>::quiet_NaN();
}

// exp(x) - 1 - x.
double ExpRest(double x) {
    if (std::abs(x) > 0.5) {
        return std::expm1(x) - x;
    }
    double term = 0.5 * x * x;
    double sum = 0.0;
    for (int n = 3; std::abs(term) > 1e-18 * sum && n < 24; ++n) {
        sum += term;
        term *= x / n;
    }
    return sum;
}

// The integral of exp(exponent(d)) factor(d) over d, its peak of about 1 at d = 0, of width about 1/sqrt(curvature).
template <class Integrand>
double Trapezoid(const Integrand& integrand, double curvature) {
    constexpr double kStep = 0.0625;
    constexpr int kMostNodes = 1000;
    const double scale = std::min(0.5, 1.0 / std::sqrt(curvature));
    double sum = 2.0 * integrand(0.0);
    for (const double direction : {-1.0, 1.0}) {
        for (int i = 1; i < kMostNodes; ++i) {
            const double v = direction * kStep * i;
            const double bend = std::exp(-v);
            const double term = (1.0 + bend) * integrand(scale * (v - std::expm1(-v)));
            sum += term;
            if (term < 1e-19 * sum) {
                break;
            }
        }
    }
    return kStep * scale * sum;
}

// s times the density of s = sqrt(chi-square/df); what rounding takes from df s^2/2 is put back.
double WeightedScale(double s, double df) {
    const double p = 0.5 * df;
    const DoubleDouble x = DoubleDouble(p) * TwoProduct(s, s);
    return 2.0 * p * GammaPrefix(x.hi, p) * (1.0 + x.lo * (p / x.hi - 1.0));
}

// P(T > t; -d) for t, d > 0.
double OppositeTail(double t, double df, double d) {
    // phi(z)/Phi(-z)
    const auto mills = [](double z) { return 0.7978845608028654 / ScaledErfc(z * kRootHalf); };
    double low = -745.0;
    double high = 0.0;
    for (int i = 0; i < 60; ++i) {
        const double middle = 0.5 * (low + high);
        const double s = std::exp(middle);
        (-df * std::expm1(2.0 * middle) > t * s * mills(t * s + d) ? low : high) = middle;
    }
    const double u = 0.5 * (low + high);
    const double s = std::exp(u);
    const DoubleDouble exactZ = TwoProduct(t, s) + DoubleDouble(d);
    const double z = exactZ.hi;
    if (z > 38.5) {
        return 0.0;
    }
    const double slope = mills(z);
    const double curvature = 2.0 * df * s * s + t * s * slope * (1.0 + t * s * (slope - z));
    const double height = ScaledErfc(z * kRootHalf);
    const double drift = -df * std::expm1(2.0 * u);
    const double integral = Trapezoid(
        [&](double x) {
            const double shift = t * s * std::expm1(x);
            const double exponent = drift * x - 0.5 * df * s * s * ExpRest(2.0 * x) - shift * (z + 0.5 * shift);
            return KwPower::ExpUnderflow(exponent)
                       ? 0.0
                       : std::exp(exponent) * ScaledErfc(std::max(0.0, z + shift) * kRootHalf) / height;
        },
        curvature);
    const double edge = 0.5 * ExpHalfSquare(z) * height * (1.0 - slope * exactZ.lo);
    return edge * WeightedScale(s, df) * integral;
}

}  // namespace

// The mixture is formed for the tail that lies away from the mean: the other is its complement.
double NoncentralGamma(Tail tail, double z, double a, double half, double tol) {
    const Tail formed = z > a + half ? Tail::kUpper : Tail::kLower;
    const double value = Mixture(GammaFamily{z, a}, half, 0.0, formed == Tail::kLower, tol);
    return formed == tail ? value : 1.0 - value;
}

double NoncentralBeta(Tail tail, const UnitPoint& at, double a, double b, double half, double tol) {
    const Tail formed = at.x.hi * b > at.y.hi * (a + half) ? Tail::kUpper : Tail::kLower;
    const double value = Mixture(BetaFamily{at, a, b}, half, 0.0, formed == Tail::kLower, tol);
    return formed == tail ? value : 1.0 - value;
}

double NoncentralT(Tail tail, double t, double df, double delta, double tol) {
    // By reflection t > 0: then the tail of opposite signs is an upper one.
    if (t < 0.0) {
        return NoncentralT(tail == Tail::kLower ? Tail::kUpper : Tail::kLower, -t, df, -delta, tol);
    }
    if (delta < 0.0) {
        const double upper = OppositeTail(t, df, -delta);
        return tail == Tail::kUpper ? upper : 1.0 - upper;
    }
    const UnitPoint at = PointOfT(t, df);
    const double normal = 0.5 * Erfc(delta * kRootHalf);  // P(T <= 0)
    if (!(at.x.hi > 0.0) || !(at.y.hi > 0.0)) {
        const double lower = at.x.hi > 0.0 ? 1.0 : normal;
        return tail == Tail::kLower ? lower : 1.0 - lower;
    }
    const Tail formed = t > delta ? Tail::kUpper : Tail::kLower;
    const double half = 0.5 * delta * delta;
    const double sum = Mixture(BetaFamily{at, 0.5, 0.5 * df}, half, 0.0, formed == Tail::kLower, tol) +
                       Mixture(BetaFamily{at, 1.0, 0.5 * df}, half, 0.5, formed == Tail::kLower, tol);
    const double value = formed == Tail::kLower ? normal + 0.5 * sum : 0.5 * sum;
    return formed == tail ? value : 1.0 - value;
}

double NoncentralTDensity(double t, double df, double delta) {
    const double whole = df + t * t;
    const double mixed = t * delta;
    if (!(whole < 1e150)) {
        return 0.0;
    }
    const double root = std::hypot(mixed, 2.0 * std::sqrt(whole) * std::sqrt(df + 1.0));
    const double s = mixed > 0.0 ? (mixed + root) / (2.0 * whole) : 2.0 * (df + 1.0) / (root - mixed);
    const double square = 0.5 * whole * s * s;
    const double cross = mixed * s;
    const DoubleDouble z = TwoProduct(t, s) - DoubleDouble(delta);
    const double height = kInverseRootTwoPi * ExpHalfSquare(z.hi) * (1.0 - z.hi * z.lo);
    if (height == 0.0) {
        return 0.0;
    }
    const double integral = Trapezoid(
        [&](double x) {
            const double exponent = cross * ExpRest(x) - square * ExpRest(2.0 * x);
            return KwPower::ExpUnderflow(exponent) ? 0.0 : std::exp(exponent);
        },
        4.0 * square - cross);
    return s * height * WeightedScale(s, df) * integral;
}

}  // namespace KwMath_930::detail
