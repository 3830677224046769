// Vector helpers, comparisons of vectors, their largest elements, binary search, small predicates.
// Test: KwMathFun_search_test.cpp.
#include "numerics/mathfun/KwMathFun.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include "numerics/power/KwMV.h"
#include "numerics/power/KwPower.h"

namespace KwMath_930 {

using KwCommon_930::KwMV;

namespace {

// The largest two of the elements that take(element) admits, missing where there are not as many.
template <class Take>
void FindTwo(const std::vector<double>& v, double& largest, double& second, Take take) {
    largest = KwMV::Missing();
    second = KwMV::Missing();
    int taken = 0;
    for (const double element : v) {
        if (!take(element)) {
            continue;
        }
        if (taken == 0 || element > largest) {
            second = largest;
            largest = element;
        } else if (taken == 1 || element > second) {
            second = element;
        }
        taken = std::min(taken + 1, 2);
    }
}

template <class Number>
int Search(const std::vector<Number>& v, int lo, int hi, Number value, bool upper) {
    const auto at = [&](int index) { return v[static_cast<std::size_t>(index)]; };
    if (lo < 0 || lo > hi || static_cast<std::size_t>(hi) >= v.size()) {
        return -2;
    }
    if (value > at(hi) || (upper && value == at(hi))) {
        return -1;
    }
    if (lo > 0 && (at(lo - 1) > value || (!upper && at(lo - 1) == value))) {
        return -1;
    }
    if (lo == hi) {
        return lo;
    }
    int first = lo;
    int last = hi - 1;
    int mid = lo;
    while (first <= last) {
        mid = first + (last - first) / 2;
        if (at(mid) == value) {
            return upper ? mid + 1 : mid;
        }
        if (at(mid) > value) {
            last = mid - 1;
        } else {
            first = mid + 1;
        }
    }
    return at(mid) > value ? mid : mid + 1;
}

}  // namespace

double KwMathFun::VMaxRelDiff(const std::vector<double>& a, const std::vector<double>& b, double tol) {
    const double offset = tol == 0.0 ? 1e-6 : std::abs(tol);
    double largest = 0.0;
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
        const double difference = std::abs(a[i] - b[i]) / (std::abs(b[i]) + offset);
        if (difference > largest) {
            largest = difference;
        }
    }
    return largest;
}

double KwMathFun::VNrm1Diff(const std::vector<double>& a, const std::vector<double>& b) {
    double sum = 0.0;
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
        sum += std::abs(a[i] - b[i]);
    }
    return sum;
}

void KwMathFun::FindTwoLargest(const std::vector<double>& v, double& largest, double& second) {
    FindTwo(v, largest, second, [](double) { return true; });
}

void KwMathFun::FindTwoLargestNonMiss(const std::vector<double>& v, double& largest, double& second) {
    FindTwo(v, largest, second, [](double element) { return !KwMV::IsMissing(element); });
}

int KwMathFun::BinSearch(const std::vector<double>& v, int lo, int hi, double value, bool upper) {
    return Search(v, lo, hi, value, upper);
}

int KwMathFun::BinSearch(const std::vector<int>& v, int lo, int hi, int value, bool upper) {
    return Search(v, lo, hi, value, upper);
}

bool KwMathFun::QLReps(double a, double b) {
    return b > 0.0 && b * KwPower::gMachineEpsilon > std::abs(a);
}

double KwMathFun::ReplaceIfSmall(double a, double b) {
    if (std::abs(a) >= b) {
        return a;
    }
    return a < 0.0 ? -b : b;
}

bool KwMathFun::IsValidDouble(double x) {
    return x >= std::numeric_limits<double>::lowest() && x <= std::numeric_limits<double>::max();
}

}  // namespace KwMath_930
