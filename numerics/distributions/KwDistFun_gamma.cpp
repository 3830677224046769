// The gamma and chi-square distributions and log Gamma. Test: KwDistFun_gamma_test.cpp.
#include "numerics/distributions/KwDistFun.h"

#include <algorithm>
#include <cmath>

#include "numerics/distributions/detail/as91_constants.h"
#include "numerics/distributions/detail/checks.h"
#include "numerics/distributions/detail/gamma_parts.h"
#include "numerics/distributions/detail/incomplete_gamma.h"
#include "numerics/distributions/detail/invert.h"
#include "numerics/distributions/detail/log_gamma.h"
#include "numerics/distributions/detail/polynomial.h"
#include "numerics/power/KwPower.h"

namespace KwMath_930 {

using detail::Fail;
using detail::FiniteOrMissing;
using detail::GammaPrefix;
using detail::IncompleteGamma;
using detail::IsPositive;
using detail::kSmallDf;
using detail::kSmallTail;
using detail::kStartTolerance;
using detail::kWilsonHilferty;
using detail::LogGamma;
using detail::Missing;
using detail::ProbabilityOrMissing;
using detail::Refine;
using detail::Tails;
using detail::TwoProduct;

namespace {

constexpr double kLogTwo = 0.6931471805599453;
constexpr int kMostTaylorSteps = 20;

// AS 91's start for df <= 0.32 and a p that is not small.
double StartSmallDf(double p, double logGamma, double c) {
    double x = 0.4;
    const double a = std::log1p(-p);
    for (int i = 0; i < kMostTaylorSteps; ++i) {
        const double before = x;
        const double p1 = 1.0 + x * (4.67 + x);
        const double p2 = x * (6.73 + x * (6.66 + x));
        const double t = -0.5 + (4.67 + 2.0 * x) / p1 - (6.73 + x * (13.32 + 3.0 * x)) / p2;
        x -= (1.0 - std::exp(a + logGamma + 0.5 * x + c * kLogTwo) * p2 / p1) / t;
        if (!(std::abs(before / x - 1.0) > kStartTolerance)) {
            break;
        }
    }
    return x;
}

// One step of AS 91's seven-term Taylor series for shape + 1 = c + 1, from the miss in probability at x.
double TaylorStep(double x, double miss, double logGamma, double c) {
    const double half = 0.5 * x;
    const double t = miss * std::exp((c + 1.0) * kLogTwo + logGamma + half - c * std::log(x));
    const double b = t / x;
    const double a = 0.5 * t - b * c;
    const double s1 = (210.0 + a * (140.0 + a * (105.0 + a * (84.0 + a * (70.0 + 60.0 * a))))) / 420.0;
    const double s2 = (420.0 + a * (735.0 + a * (966.0 + a * (1141.0 + 1278.0 * a)))) / 2520.0;
    const double s3 = (210.0 + a * (462.0 + a * (707.0 + 932.0 * a))) / 2520.0;
    const double s4 = (252.0 + a * (672.0 + 1182.0 * a) + c * (294.0 + a * (889.0 + 1740.0 * a))) / 5040.0;
    const double s5 = (84.0 + 264.0 * a + c * (175.0 + 606.0 * a)) / 2520.0;
    const double s6 = (120.0 + c * (346.0 + 127.0 * c)) / 5040.0;
    return t * (1.0 + 0.5 * t * s1 - b * c * (s1 - b * (s2 - b * (s3 - b * (s4 - b * (s5 - b * s6))))));
}

double GammaWeighted(double x, double shape) {
    return shape * GammaPrefix(x, shape);
}

}  // namespace

double KwDistFun::dnlgam(const double& x) {
    return FiniteOrMissing(LogGamma(x));
}

double KwDistFun::zarndnlgam(const double& x) {
    return dnlgam(x);
}

double KwDistFun::gammad(const double& x, const double& p, const bool& lower, long& ier) {
    ier = 0;
    if (!IsPositive(p) || std::isnan(x)) {
        return Fail(ier, 1);
    }
    if (x <= 0.0 || std::isinf(x)) {
        return (x > 0.0) == lower ? 1.0 : 0.0;
    }
    const Tails tails = IncompleteGamma(x, p);
    return ProbabilityOrMissing(lower ? tails.lower : tails.upper);
}

// Source: Best and Roberts, Algorithm AS 91, Appl. Statist. 24 (1975); Newton steps on the smaller tail end it.
double KwDistFun::zarnidfchi(const double& p, const double& df, long& ier) {
    ier = 0;
    if (!IsPositive(df) || !(p > 0.0 && p < 1.0)) {
        return Fail(ier, 1);
    }
    const double shape = 0.5 * df;
    const double c = shape - 1.0;
    const double logGamma = LogGamma(shape);
    double x = 0.0;
    if (df < -kSmallTail * std::log(p)) {
        x = std::exp((std::log(p * shape) + logGamma) / shape + kLogTwo);
    } else if (df <= kSmallDf) {
        x = StartSmallDf(p, logGamma, c);
    } else {
        const double p1 = kWilsonHilferty / df;
        const double root = std::max(1e-3, probit(p) * std::sqrt(p1) + 1.0 - p1);  // kept positive
        x = df * root * root * root;
        if (x > 2.2 * df + 6.0) {
            x = -2.0 * (std::log1p(-p) - c * std::log(0.5 * x) + logGamma);
        }
        const double step = TaylorStep(x, p - IncompleteGamma(0.5 * x, shape).lower, logGamma, c);
        x = x + step > 0.5 * x && x + step < 2.0 * x ? x + step : x;
    }
    const double half = Refine(
        0.5 * x, Tails{p, 1.0 - p}, std::numeric_limits<double>::max(),
        [shape](double at) { return IncompleteGamma(at, shape); },
        [shape](double at) { return GammaWeighted(at, shape); });
    return FiniteOrMissing(2.0 * half);
}

double KwDistFun::idfchb(const double& p, const double& shape, long& ier) {
    const double x = zarnidfchi(p, 2.0 * shape, ier);
    return ier == 0 ? 0.5 * x : Missing();
}

double KwDistFun::CdfChi(double x, double df) {
    long ier = 0;
    return IsPositive(df) ? gammad(0.5 * x, 0.5 * df, true, ier) : Missing();
}

double KwDistFun::SigChi(double x, double df) {
    if (!IsPositive(df) || std::isnan(x)) {
        return Missing();
    }
    long ier = 0;
    return x <= 0.0 ? 1.0 : gammad(0.5 * x, 0.5 * df, false, ier);
}

double KwDistFun::IdfChi(double p, double df) {
    long ier = 0;
    if (p == 0.0 && IsPositive(df)) {
        return 0.0;
    }
    return zarnidfchi(p, df, ier);
}

double KwDistFun::CdfGam(double x, double shape, double rate) {
    if (!IsPositive(shape) || !IsPositive(rate) || std::isnan(x)) {
        return Missing();
    }
    if (x <= 0.0) {
        return 0.0;
    }
    if (shape == 1.0) {
        return KwPower::ExpUnderflow(-rate * x) ? 1.0 : 1.0 - std::exp(-rate * x);
    }
    // What rounding takes from rate x is put back by the density.
    long ier = 0;
    const double scaled = rate * x;
    const double lower = gammad(scaled, shape, true, ier);
    const bool isBeyondSplitting = !(scaled > 1e-250 && scaled < 1e280 && x < 1e280 && rate < 1e280);
    if (lower == Missing() || lower == 0.0 || isBeyondSplitting) {
        return lower;
    }
    return ProbabilityOrMissing(lower + GammaWeighted(scaled, shape) * (TwoProduct(rate, x).lo / scaled));
}

double KwDistFun::PdfGamma(double x, double shape, double rate) {
    if (!IsPositive(shape) || !IsPositive(rate) || std::isnan(x)) {
        return Missing();
    }
    if (x < 0.0) {
        return 0.0;
    }
    if (x == 0.0) {
        return shape > 1.0 ? 0.0 : shape == 1.0 ? rate : Missing();
    }
    const double scaled = rate * x;
    if (std::isinf(scaled)) {
        return 0.0;
    }
    const double start = std::log(rate) - scaled;
    const double log = shape == 1.0 ? start : (shape - 1.0) * std::log(scaled) + start - dnlgam(shape);
    if (KwPower::ExpUnderflow(log)) {
        return 0.0;
    }
    return log <= KwPower::MaxExp() ? std::exp(log) : Missing();
}

double KwDistFun::IdfGam(const double& p, const double& shape, const double& rate) {
    if (!IsPositive(shape) || !IsPositive(rate)) {
        return Missing();
    }
    if (p == 0.0) {
        return 0.0;
    }
    long ier = 0;
    const double x = idfchb(p, shape, ier);
    return ier == 0 && x != Missing() ? FiniteOrMissing(x / rate) : Missing();
}

}  // namespace KwMath_930
