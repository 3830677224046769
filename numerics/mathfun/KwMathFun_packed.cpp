// Vector helpers, products with a packed triangle stored row by row. Test: KwMathFun_packed_test.cpp.
#include "numerics/mathfun/KwMathFun.h"

#include <cstddef>

#include "numerics/matrix/packed_triangle.h"
#include "numerics/power/KwMV.h"

namespace KwMath_930 {

using KwCommon_930::KwMV;

namespace {

// True when v holds every element of a walk of n elements from index 0.
bool HoldsWalk(const std::vector<double>& v, int n, int inc) {
    const std::ptrdiff_t last = std::ptrdiff_t{n - 1} * inc;
    return !v.empty() && last >= 0 && static_cast<std::size_t>(last) < v.size();
}

}  // namespace

double KwMathFun::VSV(const std::vector<double>& s, int n, const std::vector<double>& v) {
    if (n < 0 || v.size() < static_cast<std::size_t>(n) || s.size() < packed_triangle::Size(n)) {
        return KwMV::Missing();
    }
    const double* run = s.data();
    double form = 0.0;
    for (int i = 0; i < n; ++i) {
        double left = 0.0;
        for (int j = 0; j < i; ++j) {
            left += run[j] * v.data()[j];
        }
        form += v.data()[i] * (2.0 * left + run[i] * v.data()[i]);
        run += i + 1;
    }
    return form;
}

double KwMathFun::RVD(const std::vector<double>& s, int n, int row, const std::vector<double>& v, int inc) {
    if (n < 1 || row < 0 || row >= n || s.size() < packed_triangle::Size(n) || !HoldsWalk(v, n, inc)) {
        return KwMV::Missing();
    }
    const auto element = [&](int k) { return v[static_cast<std::size_t>(std::ptrdiff_t{k} * inc)]; };
    double sum = 0.0;
    for (int k = 0; k <= row; ++k) {
        sum += s[packed_triangle::Index(row, k)] * element(k);
    }
    packed_triangle::VisitBelowDiagonal(row, n, [&](int k, std::size_t index) { sum += s[index] * element(k); });
    return sum;
}

void KwMathFun::LTGltl(int n, std::vector<double>& packed) {
    if (packed.size() < packed_triangle::Size(n)) {
        return;
    }
    // Row i of the product is the sum over the rows k of L from i down, each times its element i; the rows above are
    // products by then.
    for (int i = 0; i < n; ++i) {
        double* target = packed.data() + packed_triangle::RowStart(i);
        const double diagonal = target[i];
        for (int j = 0; j <= i; ++j) {
            target[j] *= diagonal;
        }
        for (int k = i + 1; k < n; ++k) {
            const double* run = packed.data() + packed_triangle::RowStart(k);
            const double factor = run[i];
            for (int j = 0; j <= i; ++j) {
                target[j] += factor * run[j];
            }
        }
    }
}

}  // namespace KwMath_930
