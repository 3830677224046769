// The beta distribution. Test: KwDistFun_beta_test.cpp.
#include "numerics/distributions/KwDistFun.h"

#include <algorithm>
#include <cmath>

#include "numerics/distributions/detail/beta_inverse.h"
#include "numerics/distributions/detail/checks.h"
#include "numerics/distributions/detail/incomplete_beta.h"

namespace KwMath_930 {

using detail::Fail;
using detail::IncompleteBeta;
using detail::InvertBeta;
using detail::IsPositive;
using detail::IsProbability;
using detail::kExpFloor;
using detail::Missing;
using detail::PeizerPratt;
using detail::ProbabilityOrMissing;
using detail::UnitPoint;

double KwDistFun::cdfbet(const double& x, const double& a, const double& b, long& ier) {
    ier = 0;
    if (!IsPositive(a) || !IsPositive(b) || std::isnan(x)) {
        return Fail(ier, 1);
    }
    if (x <= 0.0) {
        return 0.0;
    }
    if (x >= 1.0) {
        return 1.0;
    }
    if (a == 1.0 && b == 1.0) {
        return x;
    }
    if (a == 1.0) {
        const double exponent = b * std::log(1.0 - x);
        return exponent < kExpFloor ? 1.0 : 1.0 - std::exp(exponent);
    }
    if (b == 1.0) {
        const double exponent = a * std::log(x);
        return exponent < kExpFloor ? 0.0 : std::exp(exponent);
    }
    return ProbabilityOrMissing(IncompleteBeta(UnitPoint(x), a, b).lower);
}

double KwDistFun::cbtaux(const double& x) {
    return x >= 0.0 ? PeizerPratt(x) : Missing();
}

double KwDistFun::betinv(const double& p, const double& a, const double& b, long& ier) {
    ier = 0;
    if (!IsPositive(a) || !IsPositive(b) || !IsProbability(p)) {
        return Fail(ier, 1);
    }
    if (p == 0.0 || p == 1.0) {
        return p;
    }
    const double deviate = -probit(std::min(p, 1.0 - p));
    return InvertBeta({p, 1.0 - p}, a, b, deviate).x.Value();
}

double KwDistFun::CdfBeta(double x, double a, double b) {
    long ier = 0;
    return cdfbet(x, a, b, ier);
}

double KwDistFun::IdfBeta(const double& p, const double& a, const double& b) {
    long ier = 0;
    return betinv(p, a, b, ier);
}

}  // namespace KwMath_930
