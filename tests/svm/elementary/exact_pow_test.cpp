// pow of many values against std::pow, by every version of the loops that this processor runs.
#include "svm/elementary/exact_pow.h"

#include <cfenv>

#include <gtest/gtest.h>

#include "svm/elementary/elementary_kernels.h"
#include "tests/svm/elementary/argument_samples.h"

namespace KwSVM_700 {
namespace {

using argument_samples::AnyBits;
using argument_samples::AreSame;
using argument_samples::Specials;
using argument_samples::Uniform;

void ExpectStdPow(const std::vector<double>& x) {
    const auto usable = FindElementaryKernels();
    for (std::size_t version = 0; version < usable.count; ++version) {
        for (int degree = kSmallestDegree; degree <= kLargestDegree; ++degree) {
            const ElementaryKernels& kernels = *usable.versions[version];
            std::vector<double> y(x.size(), -1.0);
            PowBy(FindPowMethod(kernels, degree), kernels, x.data(), degree, y.data(), x.size());
            for (std::size_t i = 0; i < x.size(); ++i) {
                const double expected = std::pow(x[i], static_cast<double>(degree));
                ASSERT_TRUE(AreSame(y[i], expected)) << kernels.name << std::hexfloat << " pow(" << x[i] << ", "
                                                     << degree << ") is " << expected << ", not " << y[i];
            }
        }
    }
}

TEST(ExactPow, HasTheBitsOfStdPowWhereKernelsAskForIt) {
    ExpectStdPow(Uniform(50'000, -3.0, 3.0, 501));
    ExpectStdPow(Uniform(50'000, 0.0, 20'000.0, 502));
}

TEST(ExactPow, HasTheBitsOfStdPowForAnyBits) {
    ExpectStdPow(AnyBits(50'000, 503));
}

TEST(ExactPow, HasTheBitsOfStdPowForEveryExponent) {
    std::vector<double> x;
    for (const double mantissa : Uniform(24, -2.0, 2.0, 504)) {
        for (int exponent = -1074; exponent < 1024; ++exponent)
            x.push_back(std::ldexp(mantissa, exponent));
    }
    ExpectStdPow(x);
}

TEST(ExactPow, HasTheBitsOfStdPowForSpecialValues) {
    ExpectStdPow(Specials());
}

// Whole numbers and short fractions, whose powers are exact, ties, or next to powers of two.
TEST(ExactPow, HasTheBitsOfStdPowForShortNumbers) {
    std::vector<double> x;
    for (double whole = -3000.0; whole <= 3000.0; ++whole)
        x.insert(x.end(), {whole, whole / 256.0, std::nextafter(whole, 1e9), std::nextafter(whole, -1e9)});
    for (int bit = 24; bit < 30; ++bit) {
        for (int low = 1; low < 40; ++low)
            x.push_back(std::ldexp(1.0, bit) + low);
    }
    ExpectStdPow(x);
}

TEST(ExactPow, AnyDegreeHasTheBitsOfStdPow) {
    const auto x = Uniform(300, -2.0, 9.0, 505);
    for (const double degree :
         {-2.0, -0.0, 0.5, 1.0, 1.5, 2.0, 2.5, 3.0, 7.0, 8.0, 8.5, 9.0, 1e300, HUGE_VAL, std::nan("")}) {
        std::vector<double> y(x.size());
        Pow(x.data(), degree, y.data(), x.size());
        for (std::size_t i = 0; i < x.size(); ++i)
            ASSERT_TRUE(AreSame(y[i], std::pow(x[i], degree))) << x[i] << " to the " << degree;
    }
}

TEST(ExactPow, WorksInPlaceForAnyCount) {
    for (std::size_t n = 0; n < 600; n += n < 40 ? 1 : 93) {
        const auto x = Uniform(n, -2.0, 9.0, 506 + n);
        std::vector<double> y(x);
        y.push_back(17.25);
        Pow(y.data(), 3.0, y.data(), n);
        for (std::size_t i = 0; i < n; ++i)
            ASSERT_TRUE(AreSame(y[i], std::pow(x[i], 3.0))) << x[i];
        EXPECT_EQ(y.back(), 17.25);
    }
}

// Products of doubles are rounded more than once: where std::pow is exact to the half unit they must not be taken.
TEST(ExactPow, MethodFitsThePlatform) {
    for (int degree = kSmallestDegree; degree <= kLargestDegree; ++degree) {
        const PowMethod method = FindPowMethod(FastestElementaryKernels(), degree);
        int differing = 0;
        for (const double x : Uniform(4000, 0.5, 2.0, 507)) {
            double y = 0.0;
            PowBy(method, FastestElementaryKernels(), &x, degree, &y, 1);
            differing += y != std::pow(x, degree);
        }
        EXPECT_EQ(differing, 0) << degree;
#if defined(__GLIBC__)
        EXPECT_EQ(method, PowMethod::kRounded) << degree;
#endif
    }
}

TEST(ExactPow, SquaringMultipliesFromTheLowestBitOn) {
    const double x = 1.7320508075688772;
    const double expected[] = {x * x, x * (x * x), (x * x) * (x * x), x * ((x * x) * (x * x)),
                               (x * x) * ((x * x) * (x * x))};
    for (int degree = 2; degree <= 6; ++degree) {
        double y = 0.0;
        PowBy(PowMethod::kSquared, kBaselineElementaryKernels, &x, degree, &y, 1);
        EXPECT_EQ(y, expected[degree - 2]) << degree;
    }
}

double MultiplyUp(double power, double x, unsigned degree) {
    return degree == 0 ? power : MultiplyUp(degree % 2 != 0 ? power * x : power, x * x, degree / 2);
}

// pow as a platform may have it.
double PowByProducts(double x, double degree) {
    return MultiplyUp(1.0, x, static_cast<unsigned>(degree));
}

TEST(ExactPow, MultipliesWhereThePlatformDoes) {
    // A square is rounded once either way.
    for (int degree = 3; degree <= kLargestDegree; ++degree) {
        const PowMethod method = FindPowMethod(kBaselineElementaryKernels, degree, PowByProducts);
        EXPECT_EQ(method, PowMethod::kSquared) << degree;
        for (const double x : Uniform(2000, -40.0, 40.0, 508)) {
            double y = 0.0;
            PowBy(method, kBaselineElementaryKernels, &x, degree, &y, 1);
            ASSERT_TRUE(AreSame(y, PowByProducts(x, degree))) << x << " to the " << degree;
        }
    }
}

TEST(ExactPow, AsksAPlatformThatDoesNeither) {
    const auto isOff = [](double x, double degree) { return std::nextafter(PowByProducts(x, degree), 0.0); };
    for (int degree = kSmallestDegree; degree <= kLargestDegree; ++degree)
        EXPECT_EQ(FindPowMethod(kBaselineElementaryKernels, degree, isOff), PowMethod::kPlatform) << degree;
}

int g_wrongCalls = 0;

void PowOneUnitOff(const double* x, int degree, double* y, std::size_t n, OpenPlaces&) {
    ++g_wrongCalls;
    for (std::size_t i = 0; i < n; ++i)
        y[i] = std::nextafter(std::pow(x[i], degree), 0.0);
}

ElementaryKernels WrongKernels() {
    ElementaryKernels wrong = kBaselineElementaryKernels;
    wrong.pow = PowOneUnitOff;
    return wrong;
}

TEST(ExactPow, ComparisonFindsLoopsThatAreWrong) {
#if defined(__GLIBC__)
    EXPECT_EQ(FindPowMethod(WrongKernels(), 3), PowMethod::kPlatform);
#endif
    EXPECT_EQ(FindPowMethod(WrongKernels(), 3, PowByProducts), PowMethod::kSquared);
}

TEST(ExactPow, OfLoopsThatAreWrongIsStdPow) {
    const ElementaryKernels wrong = WrongKernels();
    const ExactPow pow(wrong);
    const int callsOfTheComparison = g_wrongCalls;
    EXPECT_GT(callsOfTheComparison, 0);
    const auto x = Uniform(3000, -4.0, 20.0, 509);
    for (int degree = kSmallestDegree; degree <= kLargestDegree; ++degree) {
        std::vector<double> y(x.size());
        pow(x.data(), degree, y.data(), x.size());
        for (std::size_t i = 0; i < x.size(); ++i)
            ASSERT_TRUE(AreSame(y[i], std::pow(x[i], static_cast<double>(degree)))) << x[i] << " to the " << degree;
    }
    EXPECT_EQ(g_wrongCalls, callsOfTheComparison);
}

// The loops' error bounds hold for rounding to nearest alone.
TEST(ExactPow, FollowsTheRoundingOfItsThread) {
    const std::vector<double> x = Uniform(20'000, -20.0, 0.0, 409);
    for (const int mode : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO, FE_TONEAREST}) {
        std::vector<double> y(x.size(), -1.0);
        std::vector<double> expected(x.size());
        std::fesetround(mode);
        Pow(x.data(), 3.0, y.data(), x.size());
        for (std::size_t i = 0; i < x.size(); ++i)
            expected[i] = std::pow(x[i], 3.0);
        std::fesetround(FE_TONEAREST);
        for (std::size_t i = 0; i < x.size(); ++i)
            ASSERT_TRUE(AreSame(y[i], expected[i])) << mode << std::hexfloat << ' ' << x[i];
    }
}

}  // namespace
}  // namespace KwSVM_700
