// Poisson mixtures of incomplete functions are summed in parts, outwards from their largest term. Where t and delta
// have opposite signs the mixture of the t cancels, and where delta is large it is long; there a tail is the integral
// over the scale s of Phi(-+(t s - delta)) times the density of s, by the trapezoidal rule in log s, or, where its
// density is broad, in v with log s = log s0 + c (v + 1 - exp(-v)), which decays doubly exponentially on both sides.
// Sources: Benton and Krishnamoorthy, Comput. Statist. Data Anal. 43 (2003), for sums from their mode; Takahasi and
// Mori, Publ. RIMS 9 (1974), for the rule. Test: KwDistFun_noncentral_test.cpp.
#include "numerics/distributions/detail/noncentral.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "numerics/distributions/detail/error_function.h"
#include "numerics/distributions/detail/incomplete_beta.h"
#include "numerics/distributions/detail/incomplete_gamma.h"
#include "numerics/distributions/detail/polynomial.h"
#include "numerics/distributions/detail/t_and_f.h"
#include "numerics/power/KwPower.h"

namespace KwMath_930::detail {

namespace {

constexpr int kBlock = 48;
constexpr double kNegligible = 1e-18;
constexpr double kOutOfSight = 1e-4;  // times that, a weight that is yet to be summed does not matter
constexpr double kMostIndex = 2e9;
constexpr int kMostMixtureTerms = 2000000;  // some 18 sqrt(kMostIndex) are the most that a sum takes
// From this half a squared non-centrality on the integral over the scale is shorter than the mixture; above this
// multiple of df the normal factor cuts the scale's density off too sharply for the integral.
constexpr double kLongMixture = 8.0;
constexpr double kVeryLongMixture = 400.0;
constexpr double kSharpEdge = 1.75;
constexpr double kGaussianFrom = 16.0;  // the curvature from which a peak needs no bent scale
// Against a parameter above it the spread of the Poisson weights is nothing, and a beta variate is a gamma variate.
constexpr double kFixedFrom = 1e15;
constexpr double kRootHalf = 0.7071067811865476;
constexpr double kInverseRootTwoPi = 0.3989422804014327;

// At which share of the sum a sum ends.
double EndOf(double tol) {
    return tol > 0.0 ? tol * KwPower::MEpsilon() : kNegligible;
}

// A parameter a + k with the part that rounding takes from it: tails far out feel that part. tilt is the derivative of
// the logarithm of Step by the parameter, which tells by what factor a value at the rounded parameter is to be
// corrected.
struct RunningShape {
    DoubleDouble exact;

    RunningShape(double a, double k) : exact(TwoSum(a, k)) {}
    double Correct(double value, double tilt) const { return value + value * (exact.lo * tilt); }
};

// The larger root of k^2 + slope k + rest, at least 0.
double LargerRoot(double slope, double rest) {
    const double root = std::sqrt(std::max(0.0, slope * slope - 4.0 * rest));
    return std::max(0.0, slope > 0.0 ? -2.0 * rest / (slope + root) : 0.5 * (root - slope));
}

// P(a + k, z) as k runs: it falls by Step(k) from k to k + 1.
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
    // Step(k) / Step(k - 1), its reciprocal, and by how much, relatively, rounding of its constant factor takes it off.
    double Growth(double k) const { return z / (a + k); }
    double Shrinkage(double k) const { return (a + k) / z; }
    double Drift() const { return 0.0; }
    // Where Growth(k) half is k + shift.
    double Crossing(double half, double shift) const { return LargerRoot(a + shift, a * shift - half * z); }
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
    double Growth(double k) const { return at.x.hi * (a + (k - 1.0) + b) / (a + k); }
    double Shrinkage(double k) const { return (a + k) / (at.x.hi * (a + (k - 1.0) + b)); }
    double Drift() const { return at.x.lo / at.x.hi; }
    double Crossing(double half, double shift) const {
        const double scaled = half * at.x.hi;
        return LargerRoot(a + shift - scaled, a * shift - scaled * (a + b - 1.0));
    }
};

// A sum in two doubles, the second of which waits to the end.
struct RunningSum {
    double sum = 0.0;
    double rest = 0.0;

    void Add(double term) {
        const DoubleDouble next = TwoSum(sum, term);
        sum = next.hi;
        rest += next.lo;
    }
    double Value() const { return sum + rest; }
};

// Sum of weight(j) F(j), weight(j) = half^(j + shift) exp(-half)/Gamma(j + shift + 1), F the lower or the upper tail of
// a family, in parts: with the weight W(k) of all j <= k the lower one is the sum of Step(k) W(k), with that of all j >
// k the upper one is the sum of Step(k) W(k) beside the tail at 0, and all terms are positive. W is summed towards the
// largest term and beyond; where no weight is left, F itself is what is left of its steps. Weights and steps follow
// from those at the largest term, or every kBlock terms anew, so that no error builds up.
template <class Family, bool isLower>
class Mixture {
public:
    Mixture(const Family& family, double half, double shift, double tol)
        : family_(family), half_(half), shift_(shift), end_(EndOf(tol)), drift_(family.Drift()) {}

    double Sum() {
        const double centre = std::max(0.0, half_ - shift_);
        const bool isRising = family_.Growth(std::max(1.0, centre)) > 1.0;  // the steps grow where the weights are
        const double largest = isRising == isLower ? centre : family_.Crossing(half_, shift_);
        const Point mode = At(std::floor(std::min(largest, kMostIndex)));
        if (mode.weight == 0.0) {
            return 0.0;  // the largest term underflows
        }
        Block nearest;
        if (!Fill(mode, mode, nearest)) {
            for (double blocks = BlocksBehind(mode); blocks > 0.0; blocks -= 1.0) {
                Block block;
                Fill(At(mode.index - kDirection * (kBlock * blocks)), mode, block);
                AddBlock(block);
            }
        }
        AddBlock(nearest);
        return AddAhead(mode);
    }

private:
    struct Point {
        double index;
        double weight;
        double step;
    };
    struct Block {
        Point points[kBlock];
        int count;
    };

    static constexpr double kDirection = isLower ? 1.0 : -1.0;

    Point At(double k) const { return {k, GammaPrefix(half_, k + shift_), family_.Step(k)}; }
    void MoveUp(Point& at) const {
        at.index += 1.0;
        at.weight *= half_ / (at.index + shift_);
        at.step *= family_.Growth(at.index);
    }
    void MoveDown(Point& at) const {
        at.weight *= (at.index + shift_) / half_;
        at.step *= family_.Shrinkage(at.index);
        at.index -= 1.0;
    }
    void Move(Point& at, bool ahead) const { ahead == isLower ? MoveUp(at) : MoveDown(at); }

    // How many blocks behind the mode the weights still matter.
    double BlocksBehind(const Point& mode) const {
        double blocks = 0.0;
        for (; blocks < kMostMixtureTerms / kBlock; blocks += 1.0) {
            const double index = mode.index - kDirection * (kBlock * (blocks + 1.0));
            if (index < 0.0) {
                break;
            }
            const Point at = At(index);
            if (!(at.weight / mode.weight * std::max(1.0, at.step / mode.step) > kOutOfSight * end_)) {
                break;
            }
        }
        return blocks;
    }

    // The points from last on backwards; true if beyond them no weight matters.
    bool Fill(const Point& last, const Point& mode, Block& block) const {
        const double least = kOutOfSight * end_ * mode.weight * mode.step;
        block.count = 0;
        for (Point at = last; block.count < kBlock; Move(at, false)) {
            block.points[block.count++] = at;
            if ((isLower && at.index == 0.0) || at.weight * std::max(at.step, mode.step) < least) {
                return true;
            }
        }
        return false;
    }

    void AddBlock(const Block& block) {
        const double drift = -kDirection * drift_;
        for (int i = block.count; i-- > 0;) {
            Add(block.points[i], drift * i);
        }
    }

    // What follows the mode.
    double AddAhead(Point at) {
        const double drift = kDirection * drift_;
        double term = total_.sum;
        for (int n = 1; n < kMostMixtureTerms && term >= 0.0; ++n) {
            if (at.weight <= end_ * weights_.sum || (!isLower && at.index == 0.0)) {
                const double rest = isLower ? family_.Lower(at.index + 1.0) : family_.Upper(at.index);
                // Whole weights add to 1: their rounding goes by division.
                return shift_ == 0.0 ? total_.Value() / weights_.Value() + rest
                                     : total_.Value() + weights_.Value() * rest;
            }
            Move(at, true);
            if (n % kBlock == 0) {
                at = At(at.index);
            }
            term = Add(at, drift * (n % kBlock));
            if (term <= end_ * total_.sum) {
                return total_.Value();
            }
        }
        return std::numeric_limits<double>::quiet_NaN();
    }

    double Add(const Point& at, double drift) {
        if (isLower) {
            weights_.Add(at.weight);
        }
        const double term = (at.step + at.step * drift) * weights_.Value();
        total_.Add(term);
        if (!isLower) {
            weights_.Add(at.weight);
        }
        return term;
    }

    Family family_;
    double half_;
    double shift_;
    double end_;
    double drift_;
    RunningSum weights_;
    RunningSum total_;
};

template <class Family>
double MixtureSum(const Family& family, double half, double shift, bool isLower, double tol) {
    return isLower ? Mixture<Family, true>(family, half, shift, tol).Sum()
                   : Mixture<Family, false>(family, half, shift, tol).Sum();
}

// exp(2x) - 1 - 2x from rest = exp(x) - 1 - x, without cancellation.
double DoubledRest(double x, double rest) {
    return 2.0 * rest + (x + rest) * (x + rest);
}

// exp(x) - 1 - x.
double ExpRest(double x) {
    if (std::abs(x) > 0.5) {
        return std::expm1(x) - x;
    }
    static constexpr double kTerms[] = {1.0 / 2,       1.0 / 6,        1.0 / 24,       1.0 / 120,
                                        1.0 / 720,     1.0 / 5040,     1.0 / 40320,    1.0 / 362880,
                                        1.0 / 3628800, 1.0 / 39916800, 1.0 / 479001600};
    const double half = 0.5 * x;
    return DoubledRest(half, half * half * Polynomial(kTerms, half));
}

// The integral of integrand(d) over d, its peak near d = 0, of width about 1/sqrt(curvature); it ends at terms of end
// times the sum. A narrow peak is all but Gaussian and wants no more than even nodes.
template <class Integrand>
double Trapezoid(const Integrand& integrand, double curvature, double end) {
    constexpr int kMostNodes = 1000;
    const bool isEven = curvature > kGaussianFrom;
    const double step = isEven ? 0.1875 : 0.140625;
    const double scale = std::min(0.5, 1.0 / std::sqrt(curvature));
    double sum = 2.0 * integrand(0.0);
    for (const double direction : {-1.0, 1.0}) {
        for (int i = 1; i < kMostNodes; ++i) {
            const double v = direction * step * i;
            const double bend = isEven ? 1.0 : std::exp(-v);
            const double term = (1.0 + bend) * integrand(scale * (isEven ? 2.0 * v : v + (1.0 - bend)));
            sum += term;
            if (term < end * sum) {
                break;
            }
        }
    }
    return step * scale * sum;
}

// s times the density of s = sqrt(chi-square/df); what rounding takes from df s^2/2 is put back.
double WeightedScale(double s, double df) {
    const double p = 0.5 * df;
    const DoubleDouble x = DoubleDouble(p) * TwoProduct(s, s);
    return 2.0 * p * GammaPrefix(x.hi, p) * (1.0 + x.lo * (p / x.hi - 1.0));
}

// phi(z)/Phi(-z).
double Mills(double z) {
    return z < 0.0 ? 2.0 * kInverseRootTwoPi * ExpHalfSquare(z) / Erfc(z * kRootHalf)
                   : 2.0 * kInverseRootTwoPi / ScaledErfc(z * kRootHalf);
}

// One tail of T = (Z + delta)/s for t > 0: the integral over u = log s of Phi(-z) times the density of u, where z is
// t s - delta for the upper tail and its negative for the lower one.
struct ScaleMixture {
    double t;
    double df;
    double delta;
    double sign;  // 1 for the upper tail, -1 for the lower one

    double Slope(double s, double mills) const { return df * (1.0 - s) * (1.0 + s) - sign * t * s * mills; }
    double Curvature(double s, double z, double mills) const {
        const double pull = t * s * mills;
        return std::max(2.0 * df * s * s + sign * pull + pull * (t * s) * (1.0 - z / mills),
                        0.1 * (2.0 * df * s * s + pull));
    }
    // About where the integrand has its peak: Newton's method from the peak that it has where Phi is Gaussian.
    double Peak() const {
        double s = 1.0;
        if (sign * (t - delta) > 0.0) {
            const double mixed = t * delta;
            const double root = std::hypot(mixed, 2.0 * std::sqrt(df) * std::sqrt(df + t * t));
            s = mixed > 0.0 ? (mixed + root) / (2.0 * (df + t * t)) : 2.0 * df / (root - mixed);
        }
        for (int i = 0; i < 40; ++i) {
            const double z = sign * (t * s - delta);
            const double mills = Mills(z);
            const double curvature = Curvature(s, z, mills);
            const double step = std::clamp(Slope(s, mills) / curvature, -1.0, 1.0);
            s *= std::exp(step);
            if (step * step * curvature < 1e-3) {
                break;
            }
        }
        return s;
    }
    double Integral(double end) const;
};

double ScaleMixture::Integral(double end) const {
    const double s = Peak();
    const DoubleDouble exactZ = TwoProduct(sign * t, s) - DoubleDouble(sign * delta);
    const double z = exactZ.hi;
    if (z > 38.5) {
        return 0.0;
    }
    const double mills = Mills(z);
    const double drift = df * (1.0 - s) * (1.0 + s);
    const double spread = 0.5 * df * s * s;
    const double pull = sign * t * s;
    // Phi(-z) = exp(-z^2/2) E(z)/2 for z > 0: beside the peak the exponentials are divided by the peak's.
    const double level = z > 0.0 ? 0.5 * z * z : 0.0;
    const auto integrand = [&](double x) {
        const double rest = ExpRest(x);
        const double shift = pull * (x + rest);
        const double at = z + shift;
        double exponent = drift * x - spread * DoubledRest(x, rest);
        double factor = 0.0;
        if (at > 0.0) {
            exponent -= z > 0.0 ? shift * (z + 0.5 * shift) : 0.5 * at * at;
            factor = ScaledErfc(at * kRootHalf);
        } else {
            exponent += level;
            factor = Erfc(at * kRootHalf);
        }
        return KwPower::ExpUnderflow(exponent) ? 0.0 : std::exp(exponent) * factor;
    };
    const double integral = Trapezoid(integrand, Curvature(s, z, mills), end);
    const double edge = 0.5 * (z > 0.0 ? ExpHalfSquare(z) * (1.0 - mills * exactZ.lo) : 1.0);
    return edge * WeightedScale(s, df) * integral;
}

// P(s < at) or P(s > at) for s = sqrt(chi-square/df), and its density there times at.
struct ScalePoint {
    double probability;
    double weighted;
};

ScalePoint ScaleAt(double at, double df, bool isLower) {
    const double p = 0.5 * df;
    const DoubleDouble x = DoubleDouble(p) * TwoSquare(at);
    const Tails tails = IncompleteGamma(x.hi, p);
    const double weighted = 2.0 * p * GammaPrefix(x.hi, p);
    const double shift = 0.5 * weighted * (x.lo / x.hi);
    return {isLower ? tails.lower + shift : tails.upper - shift, weighted};
}

// The same tail as ScaleMixture::Integral by parts: the integral over z = t s - delta of the normal density times
// P(s < (z + delta)/t) or P(s > ...), for a delta of 20 and more; NaN where z + delta comes near 0 on the way.
double NormalMixture(double t, double df, double delta, bool isUpper, double end) {
    constexpr int kMostNodes = 400;
    // Nodes at whole multiples of a power of two are exact, so that nothing disturbs their spacing: 1/8 to 1/4 in z.
    const double step = std::exp2(std::floor(std::log2(0.25 / t)));
    double z = 0.0;
    for (int i = 0; i < 8; ++i) {
        const double s = (z + delta) / t;
        const ScalePoint at = ScaleAt(s, df, isUpper);
        const double pull = at.weighted / at.probability / (t * s);
        z = std::max(0.5 * z + (isUpper ? 0.5 : -0.5) * pull, 10.0 - delta);
    }
    const double middle = std::floor((z + delta) / t / step) * step;
    double sum = 0.0;
    for (const double direction : {-1.0, 1.0}) {
        for (int i = direction < 0.0 ? 0 : 1; i < kMostNodes; ++i) {
            const double s = middle + direction * step * i;
            const DoubleDouble here = TwoProduct(t, s) - DoubleDouble(delta);
            if (!(here.hi + delta > 2.0)) {
                return std::numeric_limits<double>::quiet_NaN();
            }
            const double term = ExpHalfSquare(here) * ScaleAt(s, df, isUpper).probability;
            sum += term;
            if (term <= end * sum) {
                break;
            }
        }
    }
    return step * t * kInverseRootTwoPi * sum;
}

// P(T > t) or P(T <= t), t > 0, by the Poisson mixtures.
double PoissonMixture(const UnitPoint& at, double df, double delta, bool isUpper, double tol) {
    const double half = 0.5 * delta * delta;
    const double sum = MixtureSum(BetaFamily{at, 0.5, 0.5 * df}, half, 0.0, !isUpper, tol) +
                       MixtureSum(BetaFamily{at, 1.0, 0.5 * df}, half, 0.5, !isUpper, tol);
    return isUpper ? 0.5 * sum : 0.5 * Erfc(delta * kRootHalf) + 0.5 * sum;
}

// The tail on either side of t > 0 by the shortest form that is exact there.
double TailOfT(const UnitPoint& at, double t, double df, double delta, bool isUpper, double tol) {
    const double half = 0.5 * delta * delta;
    if (delta < 0.0 || (half > kLongMixture && half < kSharpEdge * df)) {
        return ScaleMixture{t, df, delta, isUpper ? 1.0 : -1.0}.Integral(EndOf(tol));
    }
    const double value = half > kVeryLongMixture ? NormalMixture(t, df, delta, isUpper, EndOf(tol))
                                                 : std::numeric_limits<double>::quiet_NaN();
    return std::isfinite(value) ? value : PoissonMixture(at, df, delta, isUpper, tol);
}

}  // namespace

// The mixture is formed for the tail that lies away from the mean: the other is its complement.
double NoncentralGamma(Tail tail, double z, double a, double half, double tol) {
    if (a > kFixedFrom) {
        const Tails tails = IncompleteGamma(z, a + half);
        return tail == Tail::kLower ? tails.lower : tails.upper;
    }
    const Tail formed = z > a + half ? Tail::kUpper : Tail::kLower;
    const double value = MixtureSum(GammaFamily{z, a}, half, 0.0, formed == Tail::kLower, tol);
    return formed == tail ? value : 1.0 - value;
}

double NoncentralBeta(Tail tail, const UnitPoint& at, double a, double b, double half, double tol) {
    if (a > kFixedFrom) {
        const Tails tails = IncompleteBeta(at, a + half, b);
        return tail == Tail::kLower ? tails.lower : tails.upper;
    }
    if (b > kFixedFrom) {
        const double z = -(b + 0.5 * (a - 1.0)) * (at.y.hi < 0.5 ? std::log(at.y.hi) : std::log1p(-at.x.hi));
        if (!(z > 0.0) || !(z < 1e300)) {
            return (z > 0.0) == (tail == Tail::kLower) ? 1.0 : 0.0;
        }
        return NoncentralGamma(tail, z, a, half, tol);
    }
    // A b below 1 heaps up what lies at 1: there the mean says little about the larger tail.
    const bool isRight = b < 1.0 ? IncompleteBeta(at, a + half, b).lower > 0.5 : at.x.hi * b > at.y.hi * (a + half);
    const Tail formed = isRight ? Tail::kUpper : Tail::kLower;
    const double value = MixtureSum(BetaFamily{at, a, b}, half, 0.0, formed == Tail::kLower, tol);
    return formed == tail ? value : 1.0 - value;
}

double NoncentralT(Tail tail, double t, double df, double delta, double tol) {
    // By reflection t > 0: then the tail of opposite signs is an upper one.
    if (t < 0.0) {
        return NoncentralT(tail == Tail::kLower ? Tail::kUpper : Tail::kLower, -t, df, -delta, tol);
    }
    const UnitPoint at = PointOfT(t, df);
    if (!(at.x.hi > 0.0) || !(at.y.hi > 0.0)) {
        const double lower = at.x.hi > 0.0 ? 1.0 : 0.5 * Erfc(delta * kRootHalf);
        return tail == Tail::kLower ? lower : 1.0 - lower;
    }
    // Few degrees of freedom leave most of T beyond any t: there P(s > delta/t) tells which tail is the smaller.
    const double share = delta / t;
    const bool isRight =
        df < 2.0 && delta > 0.0 ? IncompleteGamma(0.5 * df * share * share, 0.5 * df).upper > 0.5 : t > delta;
    const Tail formed = isRight ? Tail::kUpper : Tail::kLower;
    const double value = TailOfT(at, t, df, delta, formed == Tail::kUpper, tol);
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
    const double height = kInverseRootTwoPi * ExpHalfSquare(z);
    if (height == 0.0) {
        return 0.0;
    }
    const double integral = Trapezoid(
        [&](double x) {
            const double rest = ExpRest(x);
            const double exponent = cross * rest - square * DoubledRest(x, rest);
            return KwPower::ExpUnderflow(exponent) ? 0.0 : std::exp(exponent);
        },
        4.0 * square - cross, kNegligible);
    return s * height * WeightedScale(s, df) * integral;
}

}  // namespace KwMath_930::detail
