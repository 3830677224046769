// The arguments of the incomplete beta function behind t and F. Test: KwDistFun_t_f_chi_test.cpp.
#include "numerics/distributions/detail/t_and_f.h"

#include <cmath>

#include "numerics/distributions/detail/incomplete_beta.h"

namespace KwMath_930::detail {

namespace {

// Products up to here can be split exactly, and down to here their rounding error is a normal number.
bool IsSplittable(double x) {
    return x > 1e-250 && x < 1e280;
}

// u/(u + v) where u or v is out of the exact range: one double each is all there is.
UnitPoint RoughRatio(double uOverV) {
    return {1.0 / (1.0 + 1.0 / uOverV), 1.0 / (1.0 + uOverV)};
}

}  // namespace

UnitPoint PointOfT(double t, double df) {
    const double square = t * t;
    if (!IsSplittable(square) || !IsSplittable(df)) {
        return RoughRatio(std::abs(t) / df * std::abs(t));
    }
    return UnitPoint::Ratio(TwoProduct(t, t), DoubleDouble(df));
}

Tails AroundZero(double t, double df) {
    const UnitPoint at = PointOfT(t, df);
    if (at.x.hi <= 0.0) {
        return {0.0, 1.0};
    }
    if (at.y.hi <= 0.0) {
        return {1.0, 0.0};
    }
    return IncompleteBeta(at, 0.5, 0.5 * df);
}

UnitPoint PointOfF(double f, double df1, double df2) {
    const double product = df1 * f;
    if (!IsSplittable(product) || !IsSplittable(df1) || !IsSplittable(f) || !IsSplittable(df2)) {
        return RoughRatio(df1 / df2 * f);
    }
    return UnitPoint::Ratio(TwoProduct(df1, f), DoubleDouble(df2));
}

Tails TailsOfF(double f, double df1, double df2) {
    if (std::isinf(f)) {
        return {1.0, 0.0};
    }
    const UnitPoint at = PointOfF(f, df1, df2);
    if (!(at.x.hi > 0.0)) {
        return {0.0, 1.0};
    }
    return at.y.hi > 0.0 ? IncompleteBeta(at, 0.5 * df1, 0.5 * df2) : Tails{1.0, 0.0};
}

}  // namespace KwMath_930::detail
