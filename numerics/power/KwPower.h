// Guarded exponential, power and product, whole-number tests with a one-sided bound, and a relative comparison.
#pragma once

#include "numerics/Export.h"

namespace KwMath_930 {

/// Arithmetic that stays inside the range of double precision. Static functions only, no state; callable from any
/// thread. Nothing here throws. Comparisons are written so that a NaN takes the path that its falsehood leads to.
class KW_EXPORT KwPower {
public:
    /// What Power and Exponent found out about their result.
    enum PowerStatus {
        kPowerOK = 0,              ///< result computed
        kPowerUnderflow = 1,       ///< logarithm of the result below MinExp(); result 0.0 (-0.0 for a negative one)
        kPowerOverflow = 2,        ///< logarithm of the result above MaxExp(); result missing
        kPowerNegOverflow = 3,     ///< negative base, odd exponent (or one over odd) > 0, overflow; result missing
        kPowerUndefined = 4,       ///< negative base and an exponent that gives no real power; result missing
        kPowerNegBaseZeroExp = 5,  ///< negative base, exponent 0; result 1.0
        kPowerDivideByZero = 6,    ///< base 0, negative exponent; result missing
        kPowerZeroToZero = 7       ///< base 0, exponent 0; result 1.0
    };

    static const double gMachineMaxExp;   ///< 709.0, the largest argument for which exp is computed
    static const double gMachineMinExp;   ///< -708.39, the smallest one; below it the result is taken as 0
    static const int gMachineMaxInt;      ///< 2147483647
    static const double gMachineEpsilon;  ///< 2.220446049250313e-16, that is 2^-52

    /// Returns: gMachineMaxExp.
    static double MaxExp();
    /// Returns: gMachineMinExp.
    static double MinExp();
    /// Returns: true when x > MaxExp().
    static bool ExpOverflow(double x);
    /// Returns: true when x < MinExp().
    static bool ExpUnderflow(double x);
    /// Returns: gMachineMaxInt.
    static int MaxInt();
    /// Returns: gMachineEpsilon.
    static double MEpsilon();

    /// Returns: true when x is a whole number not above MaxInt().
    /// Note:    Deliberate: the bound is one-sided, large negative whole numbers (and minus infinity) pass.
    static bool IsInteger(double x);
    /// Returns: true when x is an even whole number; bounded as IsInteger.
    static bool IsEvenInteger(double x);
    /// Returns: true when x is an odd whole number; bounded as IsInteger.
    static bool IsOddInteger(double x);

    /// Returns: true when 1/x is an odd whole number, compared by AlmostEqual with tol; false for x = 0 and for
    ///          1/x above MaxInt(). The bound is one-sided as that of IsInteger.
    static bool IsOneOverOddInteger(double x, double tol);
    /// Returns: true when 1/x is an even whole number; the rest as IsOneOverOddInteger.
    static bool IsOneOverEvenInteger(double x, double tol);

    /// Shape:   tol counts machine epsilons.
    /// Returns: true when |a| and |b| differ by at most tol * MEpsilon() relative to the larger one; false when only
    ///          one of them is 0, their signs differ or one is infinite.
    static bool AlmostEqual(double a, double b, double tol);

    /// exp(x) within the range of double precision.
    /// Returns: kPowerUnderflow with result 0.0, kPowerOK, or kPowerOverflow with result missing (also for NaN).
    static PowerStatus Exponent(double x, double& result);

    /// base to the power of exponent, formed through logarithms.
    /// Returns: the status; see PowerStatus for what result holds under each.
    /// Note:    a negative base takes whole exponents and one over an odd whole number (to 32 epsilons): the real root
    ///          with its sign. A base that is NaN goes the way of a negative base.
    static PowerStatus Power(double base, double exponent, double& result);

    /// The product of a and b, formed through logarithms so that it never overflows.
    /// Returns: 0.0 when a factor is 0 or the product underflows (-0.0 then, if exactly one factor is negative); the
    ///          missing value, whatever the signs, when it overflows; else the product to the accuracy of exp and log.
    static double Multiply(double a, double b);
};

}  // namespace KwMath_930
