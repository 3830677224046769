// exp of many values against std::exp, by every version of the loops that this processor runs.
#include "svm/elementary/exact_exp.h"

#include <cfenv>
#include <thread>

#include <gtest/gtest.h>

#include "svm/elementary/check_points.h"
#include "svm/elementary/elementary_kernels.h"
#include "tests/svm/elementary/argument_samples.h"

namespace KwSVM_700 {
namespace {

using argument_samples::AnyBits;
using argument_samples::AreSame;
using argument_samples::Specials;
using argument_samples::Uniform;

void ExpectStdExp(const std::vector<double>& x) {
    const auto usable = FindElementaryKernels();
    for (std::size_t version = 0; version < usable.count; ++version) {
        std::vector<double> y(x.size(), -1.0);
        ExpBy(*usable.versions[version], 1.0, x.data(), y.data(), x.size());
        for (std::size_t i = 0; i < x.size(); ++i) {
            ASSERT_TRUE(AreSame(y[i], std::exp(x[i]))) << usable.versions[version]->name << std::hexfloat << " exp("
                                                       << x[i] << ") is " << std::exp(x[i]) << ", not " << y[i];
        }
    }
}

TEST(ExactExp, HasTheBitsOfStdExpWhereKernelsAskForIt) {
    ExpectStdExp(Uniform(300'000, -40.0, 1.0, 401));
    ExpectStdExp(Uniform(100'000, -0.01, 0.01, 402));
}

TEST(ExactExp, HasTheBitsOfStdExpInTheWholeRange) {
    ExpectStdExp(Uniform(300'000, -760.0, 720.0, 403));
    ExpectStdExp(AnyBits(200'000, 404));
}

TEST(ExactExp, HasTheBitsOfStdExpForEveryExponent) {
    std::vector<double> x;
    for (const double mantissa : Uniform(24, -2.0, 2.0, 405)) {
        for (int exponent = -1074; exponent < 1024; ++exponent)
            x.push_back(std::ldexp(mantissa, exponent));
    }
    ExpectStdExp(x);
}

TEST(ExactExp, HasTheBitsOfStdExpForSpecialValues) {
    ExpectStdExp(Specials());
}

// The ends of the pieces, where another table entry takes over.
TEST(ExactExp, HasTheBitsOfStdExpAroundEachPiece) {
    std::vector<double> x;
    for (int k = -262'144; k <= 262'144; k += 3) {
        const double end = (k + 0.5) * (0x1.62e42fefa39efp-1 / 256.0);
        x.insert(x.end(), {std::nextafter(end, -1e9), end, std::nextafter(end, 1e9)});
    }
    ExpectStdExp(x);
}

TEST(ExactExp, HasTheBitsOfStdExpAtPointsNearTies) {
    ExpectStdExp({std::begin(kHardForExp), std::end(kHardForExp)});
}

TEST(ExactExp, LeavesNoUncertainValueToTheLoops) {
    const auto usable = FindElementaryKernels();
    // exp of these lies less than 0.0007 units from a tie: within the margin.
    const double x[] = {-0x1.1f0cfd219bb34p+5, -0x1.2bf7693578e50p+5, -0x1.d135506b9e9cbp+3, -0x1.4987358ed4654p+4};
    for (std::size_t version = 0; version < usable.count; ++version) {
        OpenPlaces open;
        double y[std::size(x)];
        usable.versions[version]->exp(1.0, x, y, std::size(x), open);
        EXPECT_EQ(open.count, std::size(x)) << usable.versions[version]->name;
        EXPECT_TRUE(std::equal(std::begin(x), std::end(x), std::begin(y)));
    }
}

// On one side of a power of two the units are half as large.
TEST(ExactExp, HasTheBitsOfStdExpAroundPowersOfTwo) {
    std::vector<double> x;
    for (int power = -860; power <= 860; ++power) {
        double below = power * 0x1.62e42fefa39efp-1;
        double above = below;
        for (int i = 0; i < 40; ++i) {
            x.insert(x.end(), {below, above});
            below = std::nextafter(below, -1e9);
            above = std::nextafter(above, 1e9);
        }
    }
    ExpectStdExp(x);
}

TEST(ExactExp, IsOfTheProductWithTheFactor) {
    const auto x = Uniform(1003, 0.0, 900.0, 463);
    for (const double factor : {-0.734375, -1.0 / 3.0, -1e-300, 0.0, 0.01}) {
        const auto usable = FindElementaryKernels();
        for (std::size_t version = 0; version < usable.count; ++version) {
            std::vector<double> y(x.size());
            ExpBy(*usable.versions[version], factor, x.data(), y.data(), x.size());
            for (std::size_t i = 0; i < x.size(); ++i)
                ASSERT_TRUE(AreSame(y[i], std::exp(factor * x[i]))) << usable.versions[version]->name << ' ' << x[i];
        }
    }
}

TEST(ExactExp, SeldomAsksThePlatform) {
    const auto x = Uniform(OpenPlaces::kMost, -30.0, 0.0, 406);
    const auto usable = FindElementaryKernels();
    for (std::size_t version = 0; version < usable.count; ++version) {
        OpenPlaces open;
        std::vector<double> y(x.size());
        usable.versions[version]->exp(1.0, x.data(), y.data(), x.size(), open);
        EXPECT_LT(open.count, x.size() / 12) << usable.versions[version]->name;
    }
}

TEST(ExactExp, WritesNothingBesideItsResults) {
    const auto usable = FindElementaryKernels();
    for (std::size_t version = 0; version < usable.count; ++version) {
        for (std::size_t n = 0; n < 40; ++n) {
            const auto x = Uniform(n, -9.0, 2.0, 407 + n);
            std::vector<double> y(n + 2, 17.25);
            ExpBy(*usable.versions[version], 1.0, x.data(), y.data() + 1, n);
            EXPECT_EQ(y.front(), 17.25);
            EXPECT_EQ(y.back(), 17.25);
            for (std::size_t i = 0; i < n; ++i)
                EXPECT_TRUE(AreSame(y[i + 1], std::exp(x[i])));
        }
    }
}

TEST(ExactExp, WorksInPlace) {
    for (const std::size_t n : {1U, 5U, 255U, 256U, 257U, 1000U}) {
        const auto x = Uniform(n, -800.0, 30.0, 450 + n);
        auto y = x;
        Exp(1.0, y.data(), y.data(), n);
        for (std::size_t i = 0; i < n; ++i)
            ASSERT_TRUE(AreSame(y[i], std::exp(x[i]))) << x[i];
    }
}

TEST(ExactExp, AgreesWithThisPlatform) {
    const auto usable = FindElementaryKernels();
    for (std::size_t version = 0; version < usable.count; ++version)
        EXPECT_TRUE(AgreesOnExp(*usable.versions[version])) << usable.versions[version]->name;
}

int g_wrongCalls = 0;

void ExpOneUnitOff(double factor, const double* x, double* y, std::size_t n, OpenPlaces&) {
    ++g_wrongCalls;
    for (std::size_t i = 0; i < n; ++i) {
        const double value = factor * x[i];
        y[i] = value > -3.0 && value < -2.9 ? std::nextafter(std::exp(value), 1.0) : std::exp(value);
    }
}

TEST(ExactExp, ComparisonFindsLoopsThatAreWrong) {
    ElementaryKernels wrong = kBaselineElementaryKernels;
    wrong.exp = ExpOneUnitOff;
    EXPECT_FALSE(AgreesOnExp(wrong));
}

TEST(ExactExp, OfLoopsThatAreWrongIsStdExp) {
    ElementaryKernels wrong = kBaselineElementaryKernels;
    wrong.exp = ExpOneUnitOff;
    const ExactExp exp(wrong);
    const int callsOfTheComparison = g_wrongCalls;
    EXPECT_GT(callsOfTheComparison, 0);
    const auto x = Uniform(3000, -4.0, -2.0, 461);
    std::vector<double> y(x.size());
    exp(1.0, x.data(), y.data(), x.size());
    for (std::size_t i = 0; i < x.size(); ++i)
        ASSERT_TRUE(AreSame(y[i], std::exp(x[i]))) << x[i];
    EXPECT_EQ(g_wrongCalls, callsOfTheComparison);
}

int g_rightCalls = 0;

void CountedExp(double factor, const double* x, double* y, std::size_t n, OpenPlaces& open) {
    ++g_rightCalls;
    kBaselineElementaryKernels.exp(factor, x, y, n, open);
}

TEST(ExactExp, OfLoopsThatAreRightCallsThem) {
    ElementaryKernels right = kBaselineElementaryKernels;
    right.exp = CountedExp;
    const ExactExp exp(right);
    const int callsOfTheComparison = g_rightCalls;
    const auto x = Uniform(OpenPlaces::kMost, -4.0, -2.0, 462);
    std::vector<double> y(x.size());
    exp(1.0, x.data(), y.data(), x.size());
    EXPECT_EQ(g_rightCalls, callsOfTheComparison + 1);
}

TEST(ExactExp, ManyThreadsMayMakeTheFirstCall) {
    const auto x = Uniform(600, -20.0, 0.0, 460);
    std::vector<std::vector<double>> results(4, std::vector<double>(x.size()));
    std::vector<std::jthread> threads;
    for (auto& result : results)
        threads.emplace_back([&] { Exp(1.0, x.data(), result.data(), x.size()); });
    threads.clear();
    for (const auto& result : results) {
        for (std::size_t i = 0; i < x.size(); ++i)
            ASSERT_TRUE(AreSame(result[i], std::exp(x[i])));
    }
}

// The loops' error bounds hold for rounding to nearest alone.
TEST(ExactExp, FollowsTheRoundingOfItsThread) {
    const std::vector<double> x = Uniform(20'000, -20.0, 0.0, 409);
    for (const int mode : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO, FE_TONEAREST}) {
        std::vector<double> y(x.size(), -1.0);
        std::vector<double> expected(x.size());
        std::fesetround(mode);
        Exp(1.0, x.data(), y.data(), x.size());
        for (std::size_t i = 0; i < x.size(); ++i)
            expected[i] = std::exp(x[i]);
        std::fesetround(FE_TONEAREST);
        for (std::size_t i = 0; i < x.size(); ++i)
            ASSERT_TRUE(AreSame(y[i], expected[i])) << mode << std::hexfloat << ' ' << x[i];
    }
}

}  // namespace
}  // namespace KwSVM_700
