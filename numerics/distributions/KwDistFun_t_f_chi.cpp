// The t and F distributions. (Chi-square lies beside gamma.) Test: KwDistFun_t_f_chi_test.cpp.
#include "numerics/distributions/KwDistFun.h"

#include <algorithm>
#include <cmath>

#include "numerics/distributions/detail/beta_inverse.h"
#include "numerics/distributions/detail/checks.h"
#include "numerics/distributions/detail/gamma_parts.h"
#include "numerics/distributions/detail/incomplete_beta.h"
#include "numerics/distributions/detail/invert.h"
#include "numerics/distributions/detail/log_gamma.h"
#include "numerics/distributions/detail/search.h"
#include "numerics/distributions/detail/t_and_f.h"

namespace KwMath_930 {

using detail::AroundZero;
using detail::BetaPrefix;
using detail::Fail;
using detail::FiniteOrMissing;
using detail::InvertBeta;
using detail::IsPositive;
using detail::kExpFloor;
using detail::kLastRoughStep;
using detail::LogMiss;
using detail::Missing;
using detail::PointOfF;
using detail::PointOfT;
using detail::ProbabilityOrMissing;
using detail::Refine;
using detail::SearchIncreasing;
using detail::Tails;
using detail::TailsOfF;
using detail::TwoSum;
using detail::UnitPoint;

namespace {

constexpr double kPi = 3.141592653589793;
constexpr double kLogRootPi = 0.5723649429247001;
constexpr double kNormalDf = 1e8;
constexpr double kNormalDensityDf = 1e10;  // above it the rounding of log Gamma would be more than what t differs

// 0.5 + atan(t)/pi; far left the same by the complementary angle.
double Cauchy(double t) {
    return t < -1.0 ? std::atan(-1.0 / t) / kPi : 0.5 + std::atan(t) / kPi;
}

// P(T <= t), t finite and not 0, df neither 1 nor normal.
double LowerOfT(double t, double df) {
    const Tails around = AroundZero(t, df);
    if (std::abs(t) > 1.0) {
        return t > 1.0 ? 1.0 - around.upper / 2.0 : around.upper / 2.0;
    }
    return t > 0.0 ? 0.5 + around.lower / 2.0 : 0.5 - around.lower / 2.0;
}

// |t| times twice the density of t.
double WeightedT(double t, double df) {
    const UnitPoint at = PointOfT(t, df);
    return at.x.hi > 0.0 && at.y.hi > 0.0 ? BetaPrefix(at, 0.5, 0.5 * df) : 0.0;
}

double WeightedF(double f, double df1, double df2) {
    const UnitPoint at = PointOfF(f, df1, df2);
    return at.x.hi > 0.0 && at.y.hi > 0.0 ? BetaPrefix(at, 0.5 * df1, 0.5 * df2) * (0.5 * df1) : 0.0;
}

// f after a last step on the logarithm of a tail that is the power of a small shape: there p tells f far better than
// the rounding of p suggests.
double SharpenF(double f, double p, double df1, double df2) {
    constexpr double kSmallDf = 0.1;
    const UnitPoint at = PointOfF(f, df1, df2);
    if (std::min(df1, df2) > kSmallDf || !(at.x.hi > 0.0) || !(at.y.hi > 0.0)) {
        return f;
    }
    const bool isLower = df1 <= df2;
    const double miss =
        isLower ? LogMiss(at, 0.5 * df1, 0.5 * df2, p) : LogMiss(at.Swapped(), 0.5 * df2, 0.5 * df1, TwoSum(1.0, -p));
    const Tails tails = TailsOfF(f, df1, df2);
    const double step = miss * (isLower ? -tails.lower : tails.upper) / WeightedF(f, df1, df2);
    return std::abs(step) < kLastRoughStep ? f + f * step : f;
}

}  // namespace

double KwDistFun::zarncdft(const double& t, const double& df, long& ier) {
    ier = 0;
    if (!(df > 0.0) || std::isnan(t)) {
        return Fail(ier, 1);
    }
    if (df > kNormalDf) {
        const double p = prbnrm(t);
        return p == Missing() ? Fail(ier, 2) : p;
    }
    if (t == 0.0) {
        return 0.5;
    }
    if (std::isinf(t)) {
        return t > 0.0 ? 1.0 : 0.0;
    }
    return ProbabilityOrMissing(df == 1.0 ? Cauchy(t) : LowerOfT(t, df));
}

double KwDistFun::zarncdff(const double& f, const double& df1, const double& df2, long& ier) {
    ier = 0;
    if (!IsPositive(df1) || !IsPositive(df2) || std::isnan(f)) {
        return Fail(ier, 1);
    }
    return f <= 0.0 ? 0.0 : ProbabilityOrMissing(TailsOfF(f, df1, df2).lower);
}

// Two tails of the incomplete beta function make the t; a Newton step in t itself ends it.
double KwDistFun::zarnidft(const double& p, const double& df, long& ier) {
    ier = 0;
    if (!(df > 0.0) || !(p > 0.0 && p < 1.0)) {
        return Fail(ier, 1);
    }
    if (p == 0.5) {
        return 0.0;
    }
    if (df > kNormalDf) {
        return probit(p);
    }
    const double tail = std::min(p, 1.0 - p);
    const Tails target{2.0 * std::abs(p - 0.5), 2.0 * tail};  // of P(|T| < |t|)
    const double deviate = -probit(std::min(0.5, std::min(target.lower, target.upper)));
    const UnitPoint at = InvertBeta(target, 0.5, 0.5 * df, deviate, kLastRoughStep);
    const double start = std::sqrt(df) * std::sqrt(at.x.hi) / std::sqrt(at.y.hi);
    if (!std::isfinite(start)) {
        return Missing();
    }
    const double t = Refine(
        start, target, std::numeric_limits<double>::max(), [df](double x) { return AroundZero(x, df); },
        [df](double x) { return WeightedT(x, df); });
    return FiniteOrMissing(p < 0.5 ? -t : t);
}

double KwDistFun::zarnidff(const double& p, const double& df1, const double& df2, long& ier) {
    ier = 0;
    if (!IsPositive(df1) || !IsPositive(df2) || !(p > 0.0 && p < 1.0)) {
        return Fail(ier, 1);
    }
    const double deviate = -probit(std::min(p, 1.0 - p));
    const Tails target{p, 1.0 - p};
    const UnitPoint at = InvertBeta(target, 0.5 * df1, 0.5 * df2, deviate, kLastRoughStep);
    const double start = (df2 / df1) * (at.x.hi / at.y.hi);
    if (!std::isfinite(start) || start == 0.0) {
        return FiniteOrMissing(start);
    }
    const double f = Refine(
        start, target, std::numeric_limits<double>::max(), [df1, df2](double x) { return TailsOfF(x, df1, df2); },
        [df1, df2](double x) { return WeightedF(x, df1, df2); });
    return FiniteOrMissing(SharpenF(f, p, df1, df2));
}

double KwDistFun::CdfT(double t, double df) {
    long ier = 0;
    return zarncdft(t, df, ier);
}

double KwDistFun::PdfT(double t, double df, long& ier) {
    ier = 0;
    if (!(df > 0.0) || std::isnan(t)) {
        return Fail(ier, 1);
    }
    if (df > kNormalDensityDf) {
        return PdfNormalStandard(t);
    }
    double log = dnlgam((df + 1.0) / 2.0) - 0.5 * std::log(df) - dnlgam(df / 2.0) - kLogRootPi;
    if (t != 0.0) {
        log -= (df + 1.0) / 2.0 * std::log(1.0 + t * t / df);
    }
    return log < kExpFloor ? 0.0 : FiniteOrMissing(std::exp(log));
}

double KwDistFun::IdfT(double p, double df, double nc, double tol) {
    long ier = 0;
    if (!std::isfinite(nc) || std::isnan(tol) || std::isnan(p)) {
        return Missing();
    }
    if (nc == 0.0) {
        return zarnidft(p, df, ier);
    }
    if (!(df > 0.0) || !(p > 0.0 && p < 1.0)) {
        return Missing();
    }
    // The non-central quantile lies about nc + the central one; the search widens from there.
    return SearchIncreasing([df, nc](double t) { return NonCentralCdfT(t, df, nc, 0.0); }, p, nc,
                            std::max(1.0, std::abs(nc)), -std::numeric_limits<double>::max(),
                            std::numeric_limits<double>::max(), tol);
}

double KwDistFun::SigT(double t, double df) {
    if (!(df > 0.0) || std::isnan(t)) {
        return Missing();
    }
    if (t == 0.0) {
        return 0.5;
    }
    if (std::isinf(t)) {
        return t > 0.0 ? 0.0 : 1.0;
    }
    if (df == 1.0) {
        return Cauchy(-t);
    }
    return std::isinf(df) ? prbnrm(-t) : ProbabilityOrMissing(LowerOfT(-t, df));
}

double KwDistFun::CdfF(double f, double df1, double df2) {
    long ier = 0;
    return zarncdff(f, df1, df2, ier);
}

double KwDistFun::IdfF(double p, double df1, double df2) {
    if (p == 0.0 && IsPositive(df1) && IsPositive(df2)) {
        return 0.0;
    }
    long ier = 0;
    return zarnidff(p, df1, df2, ier);
}

double KwDistFun::SigF(double f, double df1, double df2) {
    if (!IsPositive(df1) || !IsPositive(df2) || std::isnan(f)) {
        return Missing();
    }
    if (f <= 0.0) {
        return 1.0;
    }
    const Tails tails = TailsOfF(f, df1, df2);
    return ProbabilityOrMissing(f >= 1.0 ? tails.upper : 1.0 - tails.lower);
}

}  // namespace KwMath_930
