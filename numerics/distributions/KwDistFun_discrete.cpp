// The binomial, negative binomial and hypergeometric distributions. Test: KwDistFun_discrete_test.cpp.
// Source for the probabilities: Loader, Fast and accurate computation of binomial probabilities (2000).
#include "numerics/distributions/KwDistFun.h"

#include <algorithm>
#include <cmath>

#include "numerics/distributions/detail/checks.h"
#include "numerics/distributions/detail/gamma_parts.h"
#include "numerics/distributions/detail/incomplete_beta.h"

namespace KwMath_930 {

using detail::BetaPrefix;
using detail::DoubleDouble;
using detail::Exp;
using detail::Fail;
using detail::FiniteOrMissing;
using detail::IncompleteBeta;
using detail::IsPositive;
using detail::IsProbability;
using detail::Log;
using detail::LogBeta;
using detail::Missing;
using detail::ProbabilityOrMissing;
using detail::UnitPoint;

namespace {

constexpr double kMostPopulation = 1e12;

bool IsWhole(double x) {
    return std::floor(x) == x;
}

// x^n to about one rounding.
double WholePower(const DoubleDouble& x, double n) {
    return Exp(DoubleDouble(n) * Log(x));
}

// P(X = k) for whole 0 <= k <= n, 0 < p < 1.
double BinomialMass(double k, double n, double p) {
    const UnitPoint at(p);
    if (k == 0.0) {
        return WholePower(at.y, n);
    }
    if (k == n) {
        return WholePower(at.x, n);
    }
    return BetaPrefix(at, k, n - k) * (n / (n - k));
}

// The flag for a binomial n and p: 3 for an n that is not whole, 1 for what is out of its domain.
long BinomialFlag(double n, double p) {
    if (!IsWhole(n)) {
        return 3;
    }
    return n >= 1.0 && std::isfinite(n) && IsProbability(p) ? 0 : 1;
}

// P(X = k) of the hypergeometric distribution, by three binomials of the same probability; k within the support.
double HyperMass(double k, double n, double m, double size) {
    if (n == 0.0 || m == 0.0 || n == size || m == size) {
        return 1.0;
    }
    const double p = n / size;
    const auto mass = [p](double hits, double trials) { return trials == 0.0 ? 1.0 : BinomialMass(hits, trials, p); };
    return mass(k, m) * (mass(n - k, size - m) / mass(n, size));
}

// P(X <= k) summed downwards from k in blocks, each from a term taken afresh, so that no error builds up.
double HyperLower(double k, double n, double m, double size, double least) {
    constexpr int kBlock = 64;
    constexpr double kNegligible = 1e-21;  // some thousand terms of about one size may follow
    double total = 0.0;
    double term = 1.0;
    for (double j = k; j >= least && term > kNegligible * total;) {
        term = HyperMass(j, n, m, size);
        double sum = term;
        for (int i = 1; i < kBlock && j > least && term > kNegligible * total; ++i) {
            term *= (j * (size - m - n + j)) / ((m - j + 1.0) * (n - j + 1.0));
            sum += term;
            j -= 1.0;
        }
        j -= 1.0;
        total += sum;
    }
    return total;
}

}  // namespace

// log of n over k; n >= k >= 0.
double KwDistFun::dnlbnc(const double& n, const double& k) {
    if (!(k >= 0.0 && k <= n) || !std::isfinite(n)) {
        return Missing();
    }
    const double rest = n - k;
    if (k == 0.0 || rest == 0.0) {
        return 0.0;
    }
    return FiniteOrMissing(-LogBeta(rest, k) + std::log(n / (rest * k)));
}

double KwDistFun::CdfBin(double k, double n, double p, long& ier) {
    ier = BinomialFlag(n, p);
    if (ier != 0 || std::isnan(k)) {
        return Fail(ier, ier != 0 ? ier : 1);
    }
    const double hits = std::floor(k);
    if (p == 0.0) {
        return hits >= 0.0 ? 1.0 : 0.0;
    }
    if (p == 1.0 || hits >= n) {
        return hits >= n ? 1.0 : 0.0;
    }
    if (hits < 0.0) {
        return 0.0;
    }
    return ProbabilityOrMissing(IncompleteBeta(UnitPoint(p), hits + 1.0, n - hits).upper);
}

double KwDistFun::PdfBin(double k, double n, double p, long& ier) {
    ier = BinomialFlag(n, p);
    if (ier != 0 || std::isnan(k)) {
        return Fail(ier, ier != 0 ? ier : 1);
    }
    if (!IsWhole(k) || k < 0.0 || k > n) {
        return 0.0;
    }
    if (p == 0.0 || p == 1.0) {
        return k == (p == 0.0 ? 0.0 : n) ? 1.0 : 0.0;
    }
    return ProbabilityOrMissing(BinomialMass(k, n, p));
}

double KwDistFun::IdfBin(double prob, double n, double p, long& ier) {
    ier = BinomialFlag(n, p);
    if (ier != 0 || !IsProbability(prob)) {
        return Fail(ier, ier != 0 ? ier : 1);
    }
    if (prob == 0.0 || prob == 1.0) {
        return prob == 0.0 ? 0.0 : n;
    }
    // From the normal quantile, steps widen until they enclose the answer; halving ends it.
    const auto reaches = [&](double k) { return CdfBin(k, n, p, ier) >= prob; };
    double low = -1.0;  // does not reach prob
    double high = n;    // reaches it
    double k = std::clamp(std::floor(n * p + probit(prob) * std::sqrt(n * p * (1.0 - p))), 0.0, n);
    for (double step = 1.0; k > low && k < high; step *= 2.0) {
        const bool isHigh = reaches(k);
        const bool turned = isHigh ? low >= 0.0 : high < n;
        (isHigh ? high : low) = k;
        k = turned ? low : isHigh ? k - step : k + step;
    }
    while (high - low > 1.0) {
        const double middle = std::floor(0.5 * low + 0.5 * high);
        if (!(middle > low && middle < high)) {
            break;
        }
        (reaches(middle) ? high : low) = middle;
    }
    return high;
}

double KwDistFun::PdfNegBin(double k, double r, double p, long& ier) {
    ier = 0;
    if (!IsPositive(r) || !(p > 0.0 && p <= 1.0) || std::isnan(k)) {
        return Fail(ier, 1);
    }
    if (!IsWhole(k) || k < 0.0 || std::isinf(k)) {
        return 0.0;
    }
    if (p == 1.0) {
        return k == 0.0 ? 1.0 : 0.0;
    }
    const UnitPoint at(p);
    return ProbabilityOrMissing(k == 0.0 ? WholePower(at.x, r) : BetaPrefix(at, r, k) * (r / k));
}

double KwDistFun::CDFHyper(double k, double n, double m, double N, int& ier) {
    ier = 0;
    if (!IsWhole(n) || !IsWhole(m) || !IsWhole(N)) {
        ier = 3;
        return Missing();
    }
    if (std::isnan(k) || !(n >= 0.0 && m >= 0.0 && n <= N && m <= N && N <= kMostPopulation)) {
        ier = 1;
        return Missing();
    }
    const double hits = std::floor(k);
    const double least = std::max(0.0, n + m - N);
    const double most = std::min(n, m);
    if (hits < least || hits >= most) {
        return hits < least ? 0.0 : 1.0;
    }
    if (hits <= n * (m / N)) {
        return ProbabilityOrMissing(HyperLower(hits, n, m, N, least));
    }
    // More than k marked drawn is fewer than n - k unmarked drawn.
    const double unmarked = N - m;
    return ProbabilityOrMissing(1.0 - HyperLower(n - hits - 1.0, n, unmarked, N, std::max(0.0, n + unmarked - N)));
}

double KwDistFun::PdfHyper(long k, long n, long m, long N) {
    if (n < 0 || m < 0 || n > N || m > N || static_cast<double>(N) > kMostPopulation) {
        return Missing();
    }
    const auto hits = static_cast<double>(k);
    const auto drawn = static_cast<double>(n);
    const auto marked = static_cast<double>(m);
    const auto size = static_cast<double>(N);
    if (hits < std::max(0.0, drawn + marked - size) || hits > std::min(drawn, marked)) {
        return 0.0;
    }
    return HyperMass(hits, drawn, marked, size);
}

}  // namespace KwMath_930
