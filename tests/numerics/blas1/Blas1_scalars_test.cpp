// Givens rotations against the reference, the machine constants, letters, the error handler's text and exit status.
#include "numerics/blas1/Blas1.h"

#include <gtest/gtest.h>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <iomanip>
#include <iostream>
#include <limits>
#include <random>
#include <sstream>
#include <streambuf>
#include <string>

#include "numerics/display/display.h"
#include "tests/numerics/BrokenBuffer.h"
#include "tests/numerics/blas1/GuardedVector.h"
#include "tests/numerics/blas1/reference_blas.h"
#include "tests/numerics/special_values.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/process.h"

namespace {

using blas_test::Bits;
using blas_test::UlpsBetween;
using KwMath_930::Blas1;

using numerics_samples::kNaN;

struct Givens {
    double a;
    double b;
    double c = 99.0;
    double s = 99.0;
};

Givens Construct(double a, double b) {
    Givens g{a, b};
    Blas1::DRotG(&g.a, &g.b, &g.c, &g.s);
    return g;
}

void ExpectGivens(double a, double b, double r, double z, double c, double s) {
    const Givens g = Construct(a, b);
    EXPECT_EQ(Bits(g.a), Bits(r)) << a << " " << b;
    EXPECT_EQ(Bits(g.b), Bits(z)) << a << " " << b;
    EXPECT_EQ(Bits(g.c), Bits(c)) << a << " " << b;
    EXPECT_EQ(Bits(g.s), Bits(s)) << a << " " << b;
}

TEST(Blas1RotG, ZeroAndZeroGiveTheIdentity) {
    ExpectGivens(0.0, 0.0, 0.0, 0.0, 1.0, 0.0);
    ExpectGivens(-0.0, -0.0, 0.0, 0.0, 1.0, 0.0);
}

TEST(Blas1RotG, ZeroAndTwoGiveTheExchange) {
    ExpectGivens(0.0, 2.0, 2.0, 1.0, 0.0, 1.0);
    ExpectGivens(0.0, -2.0, -2.0, 1.0, -0.0, 1.0);
}

TEST(Blas1RotG, SecondZeroGivesTheIdentityWithZZero) {
    ExpectGivens(2.5, 0.0, 2.5, 0.0, 1.0, 0.0);
    ExpectGivens(-2.5, 0.0, -2.5, -0.0, 1.0, -0.0);
}

TEST(Blas1RotG, SignOfRIsThatOfTheLargerOperandOrOfTheSecondIfEqual) {
    EXPECT_DOUBLE_EQ(Construct(-4.0, 3.0).a, -5.0);
    EXPECT_DOUBLE_EQ(Construct(-3.0, 4.0).a, 5.0);
    EXPECT_GT(Construct(-2.0, 2.0).a, 0.0);
    EXPECT_LT(Construct(2.0, -2.0).a, 0.0);
}

TEST(Blas1RotG, ZIsOneOverCWhenTheSecondOperandIsNotSmaller) {
    EXPECT_EQ(Construct(3.0, 4.0).b, 1.0 / Construct(3.0, 4.0).c);
    EXPECT_EQ(Construct(4.0, 3.0).b, Construct(4.0, 3.0).s);
    const Givens equal = Construct(2.0, 2.0);
    EXPECT_EQ(equal.b, 1.0 / equal.c);
}

TEST(Blas1RotG, IsTheReferenceWithinUlps) {
    std::mt19937_64 engine(41);
    std::uniform_real_distribution<double> mantissa(-1.0, 1.0);
    std::uniform_int_distribution<int> exponent(-40, 40);
    for (int k = 0; k < 20000; ++k) {
        const double a = std::ldexp(mantissa(engine), exponent(engine));
        const double b = std::ldexp(mantissa(engine), exponent(engine));
        const Givens g = Construct(a, b);
        Givens expected{a, b};
        drotg_(&expected.a, &expected.b, &expected.c, &expected.s);
        // The two scale differently, each with about five roundings.
        ASSERT_LE(UlpsBetween(g.a, expected.a), 4u) << a << " " << b;
        ASSERT_LE(UlpsBetween(g.b, expected.b), 8u) << a << " " << b;
        ASSERT_LE(UlpsBetween(g.c, expected.c), 4u) << a << " " << b;
        ASSERT_LE(UlpsBetween(g.s, expected.s), 4u) << a << " " << b;
    }
}

TEST(Blas1RotG, ScaleKeepsSquaresInsideTheRange) {
    EXPECT_DOUBLE_EQ(Construct(3e200, 4e200).a, 5e200);
    EXPECT_DOUBLE_EQ(Construct(3e-200, 4e-200).a, 5e-200);
    EXPECT_DOUBLE_EQ(Construct(3e-200, 4e-200).s, 0.8);
}

TEST(Blas1Mach, ConstantsAreThoseOfDoublePrecision) {
    EXPECT_EQ(Blas1::DMach(1), std::ldexp(1.0, -52));
    EXPECT_EQ(Blas1::DMach(2), 100.0 * std::ldexp(1.0, -1020));
    EXPECT_EQ(Blas1::DMach(3), 1.0 / (100.0 * std::ldexp(1.0, -1020)));
}

// Runs action in a process of its own whose standard output goes to a file; the file's text.
template <class Action>
std::string OutputOfExit(Action action) {
    const test_support::TemporaryFolder folder;
    // The process of its own may be this program run anew, which is told the file by its environment.
    const char* const variable = "BREVIX_TEST_OUTPUT";
    const char* const given = std::getenv(variable);
    const std::string path = given ? given : folder.pathOf("out");
    test_support::setVariable(variable, path.c_str());
    EXPECT_EXIT(
        {
            if (std::freopen(path.c_str(), "w", stdout) != nullptr) {
                action();
            }
        },
        testing::ExitedWithCode(1), "^$");
    if (!given)
        test_support::setVariable(variable, nullptr);
    return test_support::linesOf(path);
}

TEST(Blas1MachDeathTest, WrongJobReportsParameterOneAndEndsTheProcess) {
    const char expected[] =
        "\nXERBLA - Fatal error!\n  On entry to routine DMACH\n  input parameter number 1 had an illegal value.\n";
    for (const int job : {4, 0, -1, 2147483647}) {
        EXPECT_EQ(OutputOfExit([job] { Blas1::DMach(job); }), expected) << job;
    }
}

TEST(Blas1XErBlaDeathTest, WritesFourLinesToStandardOutputWhateverItsFormat) {
    char name[] = "DGEFA, or so";
    EXPECT_EQ(OutputOfExit([&name] { Blas1::XErBla(name, -14); }),
              "\nXERBLA - Fatal error!\n  On entry to routine DGEFA, or so\n"
              "  input parameter number -14 had an illegal value.\n");
    EXPECT_EQ(OutputOfExit([&name] {
                  std::cout << std::hex << std::showbase << std::setw(40);
                  Blas1::XErBla(name, 255);
              }),
              "\nXERBLA - Fatal error!\n  On entry to routine DGEFA, or so\n"
              "  input parameter number 255 had an illegal value.\n");
}

TEST(Blas1XErBlaDeathTest, EndsTheProcessWhenStandardOutputThrows) {
    char name[] = "DGEFA";
    EXPECT_EXIT(
        {
            static std::streambuf* const broken = new numerics_samples::BrokenBuffer;
            std::cout.rdbuf(broken);
            std::cout.exceptions(std::ios::badbit);
            Blas1::XErBla(name, 1);
        },
        testing::ExitedWithCode(1), "^$");
}

TEST(Blas1XErBlaDeathTest, DoesNotWriteToTheDumpStream) {
    char name[] = "X";
    const std::string text = OutputOfExit([&name] {
        // Dies in the child together with it.
        static std::ostringstream dumps;
        KwDisplay_930::SetOutStream(dumps);
        std::atexit([] {
            if (!dumps.str().empty()) {
                std::fputs("dumped", stdout);
            }
        });
        Blas1::XErBla(name, 2);
    });
    EXPECT_EQ(text,
              "\nXERBLA - Fatal error!\n  On entry to routine X\n  input parameter number 2 had an illegal value.\n");
}

TEST(Blas1Same, LettersMatchInEitherCaseAndNothingElseDoes) {
    for (int a = 0; a < 256; ++a) {
        for (int b = 0; b < 256; ++b) {
            const auto isLetter = [](int c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
            const bool expected = a == b || (isLetter(a) && isLetter(b) && (a ^ b) == 0x20);
            ASSERT_EQ(Blas1::LSame(static_cast<char>(a), static_cast<char>(b)), expected) << a << " " << b;
        }
    }
}

TEST(Blas1Small, IntegersHaveASmallerAndALargerOne) {
    EXPECT_EQ(Blas1::I_Min(-3, 7), -3);
    EXPECT_EQ(Blas1::I_Min(7, -3), -3);
    EXPECT_EQ(Blas1::I_Max(-3, 7), 7);
    EXPECT_EQ(Blas1::I_Max(7, -3), 7);
    EXPECT_EQ(Blas1::I_Min(std::numeric_limits<int>::min(), std::numeric_limits<int>::max()),
              std::numeric_limits<int>::min());
}

TEST(Blas1Small, LargerDoubleIsTheFirstOnlyIfStrictlyLarger) {
    EXPECT_EQ(Blas1::D_Max(2.385, -1.0), 2.385);
    EXPECT_EQ(Blas1::D_Max(-1.0, 2.385), 2.385);
    EXPECT_EQ(Bits(Blas1::D_Max(0.0, -0.0)), Bits(-0.0));
    EXPECT_EQ(Blas1::D_Max(kNaN, 2.385), 2.385);
    EXPECT_TRUE(std::isnan(Blas1::D_Max(2.385, kNaN)));
}

TEST(Blas1Small, MagnitudeLosesTheSign) {
    EXPECT_EQ(Blas1::D_Abs(-2.385), 2.385);
    EXPECT_EQ(Blas1::D_Abs(2.385), 2.385);
    EXPECT_EQ(Bits(Blas1::D_Abs(-0.0)), Bits(0.0));
}

TEST(Blas1Small, SignHasOneArgumentAndIsPositiveForBothZeros) {
    EXPECT_EQ(Blas1::D_Sign(0.0), 1.0);
    EXPECT_EQ(Blas1::D_Sign(-0.0), 1.0);
    EXPECT_EQ(Blas1::D_Sign(2.385), 1.0);
    EXPECT_EQ(Blas1::D_Sign(-5e-324), -1.0);
    EXPECT_EQ(Blas1::D_Sign(kNaN), 1.0);
}

}  // namespace
