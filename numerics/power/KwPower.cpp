// Guarded exponential, power and product. Every comparison stands as it is documented, so that a NaN goes where the
// false comparison sends it. Test: KwPower_test.cpp.
#include "numerics/power/KwPower.h"

#include <cmath>

#include "numerics/power/KwMV.h"

namespace KwMath_930 {

using KwCommon_930::KwMV;

const double KwPower::gMachineMaxExp = 709.0;
const double KwPower::gMachineMinExp = -708.39;
const int KwPower::gMachineMaxInt = 2147483647;
const double KwPower::gMachineEpsilon = 2.220446049250313e-16;

namespace {

// How far 1/x may be from a whole number, in epsilons, for Power to take the real root of a negative base.
constexpr double kRootTolerance = 32.0;

bool ExactlyOneNegative(double a, double b) {
    return (a < 0.0) != (b < 0.0);
}

// True when 1/x / 2 + shift is almost a whole number: 1/x is even for shift 0, odd for shift 0.5.
bool IsOneOver(double x, double shift, double tol) {
    if (x == 0.0) {
        return false;
    }
    const double reciprocal = 1.0 / x;
    if (!(reciprocal <= KwPower::MaxInt())) {
        return false;
    }
    const double half = reciprocal / 2.0 + shift;
    return KwPower::AlmostEqual(half, std::floor(half + 0.5), tol);
}

// A negative base whose power keeps the sign: exponent odd or one over odd, log(-base) * exponent given.
KwPower::PowerStatus NegativePower(double logResult, double exponent, double& result) {
    if (KwPower::ExpUnderflow(logResult)) {
        result = -0.0;
        return KwPower::kPowerUnderflow;
    }
    if (KwPower::ExpOverflow(logResult)) {
        return exponent > 0.0 ? KwPower::kPowerNegOverflow : KwPower::kPowerOverflow;
    }
    result = -std::exp(logResult);
    return KwPower::kPowerOK;
}

}  // namespace

double KwPower::MaxExp() {
    return gMachineMaxExp;
}

double KwPower::MinExp() {
    return gMachineMinExp;
}

bool KwPower::ExpOverflow(double x) {
    return x > gMachineMaxExp;
}

bool KwPower::ExpUnderflow(double x) {
    return x < gMachineMinExp;
}

int KwPower::MaxInt() {
    return gMachineMaxInt;
}

double KwPower::MEpsilon() {
    return gMachineEpsilon;
}

bool KwPower::IsInteger(double x) {
    return x <= gMachineMaxInt && std::floor(x) == x;
}

bool KwPower::IsEvenInteger(double x) {
    return IsInteger(x) && std::floor(x / 2.0) == x / 2.0;
}

bool KwPower::IsOddInteger(double x) {
    const double half = x / 2.0 + 0.5;
    return IsInteger(x) && std::floor(half) == half;
}

bool KwPower::IsOneOverOddInteger(double x, double tol) {
    return IsOneOver(x, 0.5, tol);
}

bool KwPower::IsOneOverEvenInteger(double x, double tol) {
    return IsOneOver(x, 0.0, tol);
}

bool KwPower::AlmostEqual(double a, double b, double tol) {
    if (a == 0.0) {
        return b == 0.0;
    }
    if (b == 0.0 || ExactlyOneNegative(a, b)) {
        return false;
    }
    const double difference = std::abs(a) - std::abs(b);
    const double larger = difference < 0.0 ? std::abs(b) : std::abs(a);
    return tol * gMachineEpsilon >= std::abs(difference) / larger;
}

KwPower::PowerStatus KwPower::Exponent(double x, double& result) {
    if (ExpUnderflow(x)) {
        result = 0.0;
        return kPowerUnderflow;
    }
    if (x <= gMachineMaxExp) {
        result = std::exp(x);
        return kPowerOK;
    }
    result = KwMV::Missing();
    return kPowerOverflow;
}

KwPower::PowerStatus KwPower::Power(double base, double exponent, double& result) {
    result = KwMV::Missing();
    const bool negative = base < 0.0 || std::isnan(base);
    if (exponent == 0.0) {
        result = 1.0;
        return base == 0.0 ? kPowerZeroToZero : negative ? kPowerNegBaseZeroExp : kPowerOK;
    }
    if (base == 0.0 && exponent < 0.0) {
        return kPowerDivideByZero;
    }
    if (base == 0.0 && exponent > 0.0) {
        result = 0.0;
        return kPowerOK;
    }
    if (negative && !IsEvenInteger(exponent)) {
        if (!IsOddInteger(exponent) && !IsOneOverOddInteger(exponent, kRootTolerance)) {
            return kPowerUndefined;
        }
        return NegativePower(std::log(-base) * exponent, exponent, result);
    }
    return Exponent(std::log(std::abs(base)) * exponent, result);
}

double KwPower::Multiply(double a, double b) {
    if (a == 0.0 || b == 0.0) {
        return 0.0;
    }
    const double sign = ExactlyOneNegative(a, b) ? -1.0 : 1.0;
    const double logProduct = std::log(std::abs(a)) + std::log(std::abs(b));
    if (ExpUnderflow(logProduct)) {
        return sign * 0.0;
    }
    if (ExpOverflow(logProduct)) {
        return KwMV::Missing();
    }
    return sign * std::exp(logProduct);
}

}  // namespace KwMath_930
