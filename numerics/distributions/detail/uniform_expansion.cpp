// With A the (smaller) parameter and A eta^2/2 the deviance of x, the distribution function is
//     T * integral of exp(-A eta^2/2) g(eta), g = eta/mu, mu the relative distance of x from the mode.
// g is expanded in powers of eta; integrating the powers leaves erfc and the sum of g_m M_m, where
// M_m = eta^(m-1) + (m-1)/A M_(m-2). The series of mu follows from mu mu' = eta (q + (1-2p) mu - p mu^2), p = a/(a+b)
// (0 for the gamma function), whose singularity nearest to 0 is at |eta| = 2 sqrt(pi).
// Source: Temme, Uniform asymptotic expansions of the incomplete gamma functions and the incomplete beta function,
// Math. Comp. 29 (1975); the recurrences are ours. Test: uniform_expansion_test.cpp.
#include "numerics/distributions/detail/uniform_expansion.h"

#include <algorithm>
#include <cmath>

#include "numerics/distributions/detail/error_function.h"

namespace KwMath_930::detail {

namespace {

constexpr int kTerms = 44;
constexpr double kRootTwoPi = 2.5066282746310002;

// Coefficients by power.
struct Series {
    double terms[kTerms + 1];

    constexpr double& operator[](int n) { return terms[n]; }
    constexpr double operator[](int n) const { return terms[n]; }
};

// 2/n.
constexpr Series Reciprocals() {
    Series reciprocals{};
    for (int n = 1; n <= kTerms; ++n) {
        reciprocals[n] = 2.0 / n;
    }
    return reciprocals;
}

constexpr Series kTwoBy = Reciprocals();

// Sum of mu[i] mu[n - i] over 3 <= i <= n - 3.
constexpr double InnerSquare(const Series& mu, int n) {
    double even = 0.0;  // two sums, because one waits for its own last term
    double odd = 0.0;
    int low = 3;
    int high = n - 3;
    for (; low + 1 < high - 1; low += 2, high -= 2) {
        even += mu[low] * mu[high];
        odd += mu[low + 1] * mu[high - 1];
    }
    if (low < high) {
        even += mu[low++] * mu[high--];
    }
    const double pairs = 2.0 * (even + odd);
    return low == high ? pairs + mu[low] * mu[low] : pairs;
}

// Coefficients g_0 .. g_(terms-1) of eta/mu for the share p and q = 1 - p, from a root of q.
constexpr void ExpandDensity(double p, double q, double rootQ, int terms, Series& g) {
    Series mu;      // mu_1 eta + mu_2 eta^2 + ...
    Series square;  // of mu
    const double skew = q - p;
    const double perSlope = 0.5 / rootQ;
    const double perQ = 1.0 / q;
    mu[1] = rootQ;
    mu[2] = kTwoBy[3] * skew * rootQ * perSlope;
    square[1] = 0.0;
    square[2] = q;
    square[3] = kTwoBy[3] * skew * rootQ;
    square[4] = kTwoBy[4] * (skew * mu[2] - p * q);
    mu[3] = (square[4] - mu[2] * mu[2]) * perSlope;
    for (int n = 5; n <= terms + 1; ++n) {
        // What needs the last coefficient comes last: the next one waits for it.
        const double factor = kTwoBy[n];
        const double known = factor * p * square[n - 2];
        square[n] = factor * skew * mu[n - 2] - known;
        mu[n - 1] = mu[n - 2] * ((factor * skew - 2.0 * mu[2]) * perSlope) - (known + InnerSquare(mu, n)) * perSlope;
    }
    g[0] = 1.0 / rootQ;
    g[1] = (2.0 * mu[2] - skew) * perQ;
    for (int n = 2; n < terms; ++n) {
        g[n] = ((n + 1) * mu[n + 1] + p * mu[n - 1]) * perQ;
    }
}

constexpr Series GammaCoefficients() {
    Series g{};
    ExpandDensity(0.0, 1.0, 1.0, kTerms - 1, g);
    return g;
}

constexpr Series kGamma = GammaCoefficients();

// Sum of g_m M_m over 1 <= m < terms.
double MomentSum(const Series& g, int terms, double eta, double parameter) {
    const double step = 1.0 / parameter;
    double power = 1.0;  // eta^(m-1)
    double before = 0.0;
    double last = 1.0;
    double sum = g[1];
    for (int m = 2; m < terms; ++m) {
        power *= eta;
        const double moment = power + (m - 1) * step * before;
        before = last;
        last = moment;
        sum += g[m] * moment;
    }
    return sum;
}

// How many coefficients the moments at this eta call for: what is left out is below 2^-55.
int TermsNeeded(double eta, double parameter) {
    const double scale = std::max(std::abs(eta), 2.2 / std::sqrt(parameter)) / 3.54;
    const double terms = 4.0 - 38.0 / std::log(scale);
    return terms < kTerms - 1 ? static_cast<int>(terms) : kTerms - 1;
}

// weight is T/A.
Tails Assemble(DoubleDouble deviance, double eta, double weight, double sum) {
    const double half = 0.5 * ScaledErfc(std::sqrt(deviance.Value()));
    const double tail = Exp(-deviance) * (eta < 0.0 ? half - weight * sum : half + weight * sum);
    return eta < 0.0 ? Tails::FromLower(tail) : Tails::FromUpper(tail);
}

}  // namespace

double UniformDistance(DoubleDouble deviance, double parameter) {
    return std::sqrt(2.0 * deviance.hi / parameter);
}

Tails UniformGamma(double x, double p, DoubleDouble deviance) {
    const double distance = UniformDistance(deviance, p);
    const double eta = x < p ? -distance : distance;
    const double weight = std::exp(-StirlingError(p)) / (kRootTwoPi * std::sqrt(p));
    return Assemble(deviance, eta, weight, MomentSum(kGamma, TermsNeeded(eta, p), eta, p));
}

Tails UniformBeta(double a, double b, bool isLow, DoubleDouble deviance) {
    const double distance = UniformDistance(deviance, a);
    const double eta = isLow ? -distance : distance;
    const double sum = a + b;
    const double q = b / sum;
    const int terms = TermsNeeded(eta, a);
    Series g;
    ExpandDensity(a / sum, q, std::sqrt(q), terms, g);
    const double stirling = (StirlingError(a) - StirlingError(sum)) + StirlingError(b);
    const double weight = std::exp(-stirling) * std::sqrt(q) / (kRootTwoPi * std::sqrt(a));
    return Assemble(deviance, eta, weight, MomentSum(g, terms, eta, a));
}

}  // namespace KwMath_930::detail
