// The non-central distributions and the searches for a non-centrality. Test: KwDistFun_noncentral_test.cpp.
#include "numerics/distributions/KwDistFun.h"

#include <algorithm>
#include <cmath>

#include "numerics/distributions/detail/checks.h"
#include "numerics/distributions/detail/noncentral.h"
#include "numerics/distributions/detail/search.h"
#include "numerics/distributions/detail/t_and_f.h"

namespace KwMath_930 {

using detail::Fail;
using detail::FiniteOrMissing;
using detail::IsPositive;
using detail::kMostNoncentrality;
using detail::kMostNoncentralityT;
using detail::Missing;
using detail::NoncentralBeta;
using detail::NoncentralGamma;
using detail::NoncentralT;
using detail::NoncentralTDensity;
using detail::PointOfF;
using detail::ProbabilityOrMissing;
using detail::SearchIncreasing;
using detail::Tail;
using detail::Tails;
using detail::TailsOfF;
using detail::UnitPoint;

namespace {

bool IsNoncentrality(double nc) {
    return nc >= 0.0 && nc <= kMostNoncentrality;
}

// More degrees of freedom than this, infinitely many among them, leave T - nc normal to double precision.
constexpr double kNormalFrom = 1e20;

bool IsOpenProbability(double p) {
    return p > 0.0 && p < 1.0;
}

// The search for nc on the smaller tail of p: the lower one falls with nc, the upper one rises. tailOf(tail, nc).
template <class TailOf>
double SearchNoncentrality(const TailOf& tailOf, double p, double start, double least, double most, double tol) {
    const double step = std::max(1.0, 0.25 * std::abs(start));
    if (p > 0.5) {
        return SearchIncreasing([&](double nc) { return tailOf(Tail::kUpper, nc); }, 1.0 - p, start, step, least, most,
                                tol);
    }
    const double minus =
        SearchIncreasing([&](double x) { return tailOf(Tail::kLower, -x); }, p, -start, step, -most, -least, tol);
    return minus == Missing() ? minus : 0.0 - minus;
}

}  // namespace

double KwDistFun::ncdbet(const double& x, const double& a, const double& b, const double& nc, long& ier) {
    ier = 0;
    if (!IsPositive(a) || !IsPositive(b) || !IsNoncentrality(nc) || std::isnan(x)) {
        return Fail(ier, 1);
    }
    if (x <= 0.0 || x >= 1.0) {
        return x > 0.0 ? 1.0 : 0.0;
    }
    if (nc == 0.0) {
        return cdfbet(x, a, b, ier);
    }
    return ProbabilityOrMissing(NoncentralBeta(Tail::kLower, UnitPoint(x), a, b, 0.5 * nc, 0.0));
}

double KwDistFun::NonCentralCdfT(double t, double df, double nc, double tol) {
    if (!(df > 0.0) || std::isnan(t) || std::isnan(tol) || !(std::abs(nc) <= kMostNoncentralityT)) {
        return Missing();
    }
    if (nc == 0.0) {
        long ier = 0;
        return zarncdft(t, df, ier);
    }
    if (t == 0.0) {
        return prbnrm(-nc);
    }
    if (std::isinf(t)) {
        return t > 0.0 ? 1.0 : 0.0;
    }
    if (df > kNormalFrom) {
        return CdfNorm(t, nc, 1.0);
    }
    return ProbabilityOrMissing(NoncentralT(Tail::kLower, t, df, nc, tol));
}

double KwDistFun::NonCentralPdfT(double t, double df, double nc, long& ier) {
    ier = 0;
    if (!(df > 0.0) || std::isnan(t) || !(std::abs(nc) <= kMostNoncentralityT)) {
        return Fail(ier, 1);
    }
    if (nc == 0.0) {
        return PdfT(t, df, ier);
    }
    if (df > kNormalFrom) {
        return PdfNormal(t, nc, 1.0);
    }
    return FiniteOrMissing(std::isinf(t) ? 0.0 : NoncentralTDensity(t, df, nc));
}

double KwDistFun::NonCentralCdfF(double f, double df1, double df2, double nc, double tol) {
    if (!IsPositive(df1) || !IsPositive(df2) || !IsNoncentrality(nc) || std::isnan(f) || std::isnan(tol)) {
        return Missing();
    }
    if (nc == 0.0 || f <= 0.0 || std::isinf(f)) {
        return CdfF(f, df1, df2);
    }
    const UnitPoint at = PointOfF(f, df1, df2);
    if (!(at.x.hi > 0.0) || !(at.y.hi > 0.0)) {
        return at.x.hi > 0.0 ? 1.0 : 0.0;
    }
    return ProbabilityOrMissing(NoncentralBeta(Tail::kLower, at, 0.5 * df1, 0.5 * df2, 0.5 * nc, tol));
}

double KwDistFun::NonCentralCdfChi(double x, double df, double nc) {
    if (!IsPositive(df) || !IsNoncentrality(nc) || std::isnan(x)) {
        return Missing();
    }
    if (nc == 0.0 || x <= 0.0 || std::isinf(x)) {
        return CdfChi(x, df);
    }
    return ProbabilityOrMissing(NoncentralGamma(Tail::kLower, 0.5 * x, 0.5 * df, 0.5 * nc, 0.0));
}

double KwDistFun::FindNCParamT(double p, double t, double df, double tol, double most) {
    if (!IsOpenProbability(p) || !std::isfinite(t) || !(df > 0.0) || std::isnan(tol) || std::isnan(most)) {
        return Missing();
    }
    const double limit = most > 0.0 ? std::min(most, kMostNoncentralityT) : kMostNoncentralityT;
    const double start = std::clamp(t - probit(p), -kMostNoncentralityT, limit);
    const auto tailOf = [&](Tail tail, double nc) {
        if (t == 0.0 || nc == 0.0) {
            const double sign = tail == Tail::kLower ? 1.0 : -1.0;
            return t == 0.0 ? CdfStdNorm(-sign * nc) : tail == Tail::kLower ? CdfT(t, df) : SigT(t, df);
        }
        if (df > kNormalFrom) {
            return tail == Tail::kLower ? CdfNorm(t, nc, 1.0) : CdfNorm(nc, t, 1.0);
        }
        return ProbabilityOrMissing(NoncentralT(tail, t, df, nc, 0.0));
    };
    return SearchNoncentrality(tailOf, p, start, -kMostNoncentralityT, limit, tol);
}

double KwDistFun::FindNCParamF(double p, double f, double df1, double df2, double tol) {
    if (!IsOpenProbability(p) || !IsPositive(f) || !IsPositive(df1) || !IsPositive(df2) || std::isnan(tol)) {
        return Missing();
    }
    // What f calls for if its denominator is 1; with few degrees of freedom below, f may be anything.
    constexpr double kMostStart = 1e4;
    const double start = std::clamp(df1 * f - df1, 0.0, kMostStart);
    const UnitPoint at = PointOfF(f, df1, df2);
    if (!(at.x.hi > 0.0) || !(at.y.hi > 0.0)) {
        return Missing();
    }
    const auto tailOf = [&](Tail tail, double nc) {
        if (nc == 0.0) {
            const Tails tails = TailsOfF(f, df1, df2);
            return tail == Tail::kLower ? tails.lower : tails.upper;
        }
        return ProbabilityOrMissing(NoncentralBeta(tail, at, 0.5 * df1, 0.5 * df2, 0.5 * nc, 0.0));
    };
    return SearchNoncentrality(tailOf, p, start, 0.0, kMostNoncentrality, tol);
}

double KwDistFun::FindNCParamChi(double p, double x, double df, double tol) {
    if (!IsOpenProbability(p) || !IsPositive(x) || !IsPositive(df) || std::isnan(tol)) {
        return Missing();
    }
    const double start = std::clamp(x - df, 0.0, kMostNoncentrality);
    const auto tailOf = [&](Tail tail, double nc) {
        if (nc == 0.0) {
            return tail == Tail::kLower ? CdfChi(x, df) : SigChi(x, df);
        }
        return ProbabilityOrMissing(NoncentralGamma(tail, 0.5 * x, 0.5 * df, 0.5 * nc, 0.0));
    };
    return SearchNoncentrality(tailOf, p, start, 0.0, kMostNoncentrality, tol);
}

}  // namespace KwMath_930
