// log Gamma by Stirling's series and tables of polynomials. Test: KwDistFun_gamma_test.cpp.
#include "numerics/distributions/detail/log_gamma.h"

#include <cmath>
#include <limits>

#include "numerics/distributions/detail/DoubleDouble.h"
#include "numerics/distributions/detail/polynomial.h"
#include "numerics/distributions/detail/tables.h"

namespace KwMath_930::detail {

namespace {

constexpr double kLogRootPi = 0.5723649429247001;
constexpr double kLogRootTwoPi = 0.9189385332046728;

double Stirling(double x) {
    const double r = 1.0 / x;
    if (x > 1e290) {
        return (x - 0.5) * (std::log(x) - 1.0);
    }
    const DoubleDouble leading = DoubleDouble(x - 0.5) * Log(x) - DoubleDouble(x);
    return leading.hi + (leading.lo + (kLogRootTwoPi + r * Polynomial(kStirlingSeries, r * r)));
}

// (x - 1)(x - 2) times a polynomial in z = x - 4.5/(x + 0.5): both zeros keep their relative accuracy.
double LowPiece(double x, double fromOne) {
    const double z = x - 4.5 / (x + 0.5);
    const int piece = static_cast<int>(std::floor(z + 4.0));
    return fromOne * (fromOne - 1.0) * Polynomial(kLogGammaLow[piece], z - (piece - 3.5));
}

}  // namespace

double LogGamma(double x) {
    if (!(x > 0.0)) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    if (x >= 8.0) {
        return Stirling(x);
    }
    if (x >= 3.5) {
        const int piece = static_cast<int>(x) - 3;
        return Polynomial(kLogGammaMiddle[piece], x - (piece + 3.5));
    }
    if (x == 1.0 || x == 2.0) {
        return 0.0;
    }
    if (x > 0.5) {
        return LowPiece(x, x - 1.0);
    }
    if (x == 0.5) {
        return kLogRootPi;
    }
    return -std::log(x * Polynomial(kReciprocalGamma[x < 0.25 ? 0 : 1], x));
}

double LogGamma1p(double x) {
    return LowPiece(1.0 + x, x);
}

}  // namespace KwMath_930::detail
