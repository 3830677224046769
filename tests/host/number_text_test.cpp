// Numbers from text and back. The oracle of LeadingNumber is the C library's strtod, under the C locale of the program.
#include "host/number_text.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <random>
#include <vector>

#include "host/short_decimal.h"
#include "tests/support/CommaLocale.h"

namespace {

using KwBrevix_930::LeadingNumber;
using KwBrevix_930::NumberText;
using KwBrevix_930::ParseNumber;
using KwBrevix_930::ParseTruth;

double OracleNumber(const std::string& text) {
#ifdef __MINGW32__
    // Its C library forgets the digits behind the last place where it rounds half of the smallest number.
    if (text.find("0x1.0000000000000000001p-1075") != std::string::npos)
        return text.find('-') < text.find('0') ? -0x1p-1074 : 0x1p-1074;
#endif
    char* end = nullptr;
    const double number = std::strtod(text.c_str(), &end);
    return end == text.c_str() ? 0.0 : number;
}

bool IsSameDouble(double a, double b) {
    return std::isnan(a) ? std::isnan(b) : std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

void ExpectAsOracle(const std::string& text) {
    EXPECT_TRUE(IsSameDouble(LeadingNumber(text), OracleNumber(text)))
        << '"' << text.substr(0, 80) << "\" reads as " << LeadingNumber(text) << ", not " << OracleNumber(text);
}

const std::string kZeros400(400, '0');
const std::string kNines400(400, '9');

const std::string kTexts[] = {"",
                              " ",
                              "-",
                              "+",
                              ".",
                              "-.",
                              "e5",
                              ".e5",
                              "abc",
                              "1",
                              "+1",
                              "-1",
                              "+-1",
                              "-+1",
                              "--1",
                              "++1",
                              "- 1",
                              "+ 1",
                              "5.",
                              ".5",
                              "-.5",
                              "+.5",
                              "5.e3",
                              ".5e3",
                              "1e",
                              "1e+",
                              "1e-",
                              "1e+x",
                              "1E5",
                              "1e5.5",
                              "1.2.3",
                              "1,5",
                              "1 2",
                              "1_000",
                              " 42",
                              "\t42",
                              "\n42",
                              "\v42",
                              "\f42",
                              "\r42",
                              " \t\n\v\f\r-42x",
                              "\xC2\xA0"
                              "42",
                              "42abc",
                              "0",
                              "-0",
                              "+0",
                              "-0.0",
                              "00012.5",
                              "0x",
                              "0X",
                              "0xg",
                              "0x.",
                              "0x.g",
                              "0x.8p1",
                              "0x1p",
                              "0x1p+",
                              "0x1p+3",
                              "0x1.8p-1",
                              "0XAB.CDP2",
                              "-0x1F",
                              "0x-1",
                              "0x+1",
                              "0x 1",
                              "0xinf",
                              "0xnan",
                              "0xp3",
                              "0x1p99999",
                              "0x1p-99999",
                              "-0x1p99999",
                              "0x1p99999999999999999999",
                              "0x1p-99999999999999999999",
                              "0x0p99999999999999999999",
                              "0x1.fffffffffffff8p1023",
                              "0x1.fffffffffffff7p1023",
                              "0x1p-1074",
                              "0x1p-1075",
                              "0x1.8p-1075",
                              "0x1.0000000000000000001p-1075",
                              "0x00.001p4",
                              "inf",
                              "INF",
                              "-inf",
                              "+Inf",
                              "infinity",
                              "-INFINITY",
                              "infinit",
                              "infx",
                              "in",
                              "i",
                              "nan",
                              "NaN",
                              "-nan",
                              "+nan",
                              "nan()",
                              "nan(123)",
                              "nan(abc_1)",
                              "nan(",
                              "nan(-)",
                              "nanx",
                              "na",
                              "1e308",
                              "1.7976931348623157e308",
                              "1.7976931348623158e308",
                              "1.7976931348623159e308",
                              "1e309",
                              "-1e309",
                              "1e400",
                              "1e-400",
                              "-1e-400",
                              "2e-324",
                              "3e-324",
                              "4.9e-324",
                              "5e-324",
                              "2.4703282292062327e-324",
                              "2.4703282292062328e-324",
                              "2.2250738585072011e-308",
                              "2.2250738585072014e-308",
                              "1e999999999999999999999",
                              "1e-999999999999999999999",
                              "-1e999999999999999999999",
                              "0e999999999999999999999",
                              "0.0e-999999999999999999999",
                              "1e2147483648",
                              "1e-2147483649",
                              "1e4294967296",
                              "1e9223372036854775808",
                              "1e-9223372036854775809",
                              "0." + kZeros400 + "1e500",
                              "0." + kZeros400 + "1e401",
                              "0." + kZeros400 + "1e100",
                              "0." + kZeros400 + "1e5000",
                              "1" + kZeros400 + "e-400",
                              "1" + kZeros400,
                              "1" + kZeros400 + "e-1000",
                              kZeros400 + "1.5",
                              kNines400,
                              kNines400 + "e-400",
                              "0." + kNines400,
                              "-" + kNines400,
                              "0x" + kZeros400 + "1p4",
                              "0x1" + kZeros400 + "p-1600",
                              "0x1" + kZeros400,
                              "0x0." + kZeros400 + "1p1610",
                              "0x0." + kZeros400 + "1p10",
                              "0x0." + kZeros400 + "1p-5000",
                              "9007199254740993",
                              "9007199254740992.9999999999999999",
                              "0.1000000000000000055511151231257827021181583404541015625",
                              "123456789012345678901234567890",
                              "179769313486231580793728971405301e276",
                              "8.41e+21",
                              "9.5367431640625e-07abc"};

TEST(LeadingNumber, AgreesWithTheCLibraryOnEveryKindOfText) {
    for (const std::string& text : kTexts) {
        ExpectAsOracle(text);
        ExpectAsOracle("-" + text);
        ExpectAsOracle("  +" + text);
    }
}

TEST(LeadingNumber, AgreesWithTheCLibraryOnRandomTexts) {
    static constexpr char kLetters[] = "0123456789012345678900..eE+--xXpP aAfinNFItyY()\t,_";
    std::mt19937_64 random(20240731);
    std::uniform_int_distribution<std::size_t> letter(0, sizeof kLetters - 2);
    std::uniform_int_distribution<int> length(0, 14);
    for (int i = 0; i < 100'000; ++i) {
        std::string text;
        for (int k = length(random); k > 0; --k)
            text += kLetters[letter(random)];
        ExpectAsOracle(text);
        ExpectAsOracle("0x" + text);
    }
}

TEST(LeadingNumber, AgreesWithTheCLibraryOnRandomNumbers) {
    std::mt19937_64 random(77);
    std::uniform_int_distribution<int> digits(1, 40);
    std::uniform_int_distribution<int> exponent(-345, 320);
    for (int i = 0; i < 100'000; ++i) {
        std::string text;
        const int count = digits(random);
        const int point = digits(random);
        for (int k = 0; k < count; ++k) {
            if (k == point)
                text += '.';
            text += static_cast<char>('0' + random() % 10);
        }
        ExpectAsOracle(text + "e" + std::to_string(exponent(random)));
    }
}

TEST(LeadingNumber, EndsAtAZeroByte) {
    EXPECT_EQ(LeadingNumber(std::string_view("12\0"
                                             "34",
                                             5)),
              12.0);
}

TEST(LeadingNumber, ReadsNothingBehindTheView) {
    const std::string text = "12.5e3";
    EXPECT_EQ(LeadingNumber(std::string_view(text).substr(0, 2)), 12.0);
    EXPECT_EQ(LeadingNumber(std::string_view(text).substr(0, 5)), 12.5);
    EXPECT_EQ(LeadingNumber(std::string_view("0x1F").substr(0, 2)), 0.0);
    EXPECT_EQ(LeadingNumber(std::string_view()), 0.0);
}

TEST(LeadingNumber, ReadsAMillionDigits) {
    const std::string digits(1'000'000, '7');
    EXPECT_EQ(LeadingNumber(digits), std::numeric_limits<double>::infinity());
    EXPECT_EQ(LeadingNumber("0." + digits), 7.0 / 9.0);
    EXPECT_EQ(LeadingNumber("1e" + digits), std::numeric_limits<double>::infinity());
    EXPECT_EQ(LeadingNumber("0x." + std::string(1'000'000, '8')), 8.0 / 15.0);
}

TEST(ParseNumber, TakesAWholeNumberAndTheBlanksAroundIt) {
    EXPECT_EQ(ParseNumber("2.385"), 2.385);
    EXPECT_EQ(ParseNumber(" \t\n\v\f\r-1e-3 \t\n\v\f\r"), -1e-3);
    EXPECT_EQ(ParseNumber("+.5"), 0.5);
    EXPECT_EQ(ParseNumber("5."), 5.0);
    EXPECT_EQ(ParseNumber("1e400"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(ParseNumber("-1e400"), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(ParseNumber("1e-400"), 0.0);
    EXPECT_TRUE(IsSameDouble(ParseNumber("-0").value(), -0.0));
}

// Digits with a point somewhere, short enough that the quotient of two exact doubles is the number, or just not.
TEST(ParseNumber, AgreesWithTheCLibraryOnShortDecimals) {
    std::mt19937_64 engine(611);
    for (int i = 0; i < 200'000; ++i) {
        const std::size_t length = 1 + engine() % 17;
        std::string text;
        for (std::size_t k = 0; k < length; ++k)
            text += static_cast<char>('0' + engine() % 10);
        const std::size_t point = engine() % (length + 3);
        if (point <= length)
            text.insert(point, 1, '.');
        if (engine() % 3 == 0)
            text.insert(0, 1, '-');
        const auto number = ParseNumber(text);
        ASSERT_TRUE(number && IsSameDouble(*number, OracleNumber(text))) << text;
    }
    EXPECT_TRUE(IsSameDouble(ParseNumber("-0").value(), -0.0));
    EXPECT_TRUE(IsSameDouble(ParseNumber("-.0").value(), -0.0));
    for (const char* text : {".", "-.", "-", "--1", "1.2.3", "1-", "1,5", "5.1x"})
        EXPECT_FALSE(ParseNumber(text)) << text;
}

// Texts of digits, points and a minus, most of them numbers, and some of any characters.
TEST(ShortDecimal, IsTheSameWhateverStandsInFront) {
    using KwBrevix_930::ShortDecimal;
    std::mt19937_64 engine(613);
    int taken = 0;
    for (int i = 0; i < 200'000; ++i) {
        std::string buffer;
        for (std::size_t k = 0; k < ShortDecimal::kFront; ++k)
            buffer += "0123456789.-,\n\xff"[engine() % 15];
        const std::size_t length = engine() % 13;
        for (std::size_t k = 0; k < length; ++k)
            buffer += engine() % 400 == 0 ? static_cast<char>(engine()) : "0123456789."[engine() % (k == 2 ? 11 : 10)];
        if (length > 0 && engine() % 3 == 0)
            buffer[ShortDecimal::kFront] = '-';
        const std::string_view text = std::string_view(buffer).substr(ShortDecimal::kFront);
        double expected = -77.0;
        double number = -77.0;
        const bool isTaken = ShortDecimal::Parse(text, expected);
        ASSERT_EQ(ShortDecimal::ParseWithFront(text, number), isTaken) << text;
        ASSERT_TRUE(IsSameDouble(number, expected)) << text;
        taken += isTaken ? 1 : 0;
    }
    EXPECT_GT(taken, 100'000);
}

TEST(ParseNumber, KnowsInfinitiesAndNaN) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    for (const char* text : {"INF", "inf", "+inf", "Infinity"})
        EXPECT_EQ(ParseNumber(text), kInfinity) << text;
    EXPECT_EQ(ParseNumber("-INF"), -kInfinity);
    for (const char* text : {"NaN", "nan", "NAN", "-nan"})
        EXPECT_TRUE(std::isnan(ParseNumber(text).value_or(0.0))) << text;
}

TEST(ParseNumber, RefusesEverythingElse) {
    for (const char* text : {"",
                             " ",
                             "abc",
                             "1x",
                             "x1",
                             "1,5",
                             "1.5.2",
                             "1 2",
                             "--1",
                             "+-1",
                             "-+1",
                             "- 1",
                             "1e",
                             "1e+",
                             "0x10",
                             "0x1p3",
                             ".",
                             "-",
                             "e5",
                             "1_000",
                             "1'000",
                             "infx",
                             "1f",
                             "1d",
                             "\xC2\xA0"
                             "1",
                             "٣"})
        EXPECT_EQ(ParseNumber(text), std::nullopt) << text;
    EXPECT_EQ(ParseNumber(std::string_view("1\0", 2)), std::nullopt);
    EXPECT_EQ(ParseNumber(std::string_view("1\0"
                                           "2",
                                           3)),
              std::nullopt);
}

TEST(NumberText, IsShortAndReadsBackToTheSameDouble) {
    EXPECT_EQ(NumberText(0.1), "0.1");
    EXPECT_EQ(NumberText(-2.5), "-2.5");
    EXPECT_EQ(NumberText(3.0), "3");
    EXPECT_EQ(NumberText(-0.0), "-0");
    std::mt19937_64 random(4711);
    for (int i = 0; i < 100'000; ++i) {
        const auto number = std::bit_cast<double>(static_cast<std::uint64_t>(random()));
        const std::string text = NumberText(number);
        EXPECT_TRUE(IsSameDouble(ParseNumber(text).value(), number)) << text;
        EXPECT_LE(text.size(), 24u);
    }
}

TEST(NumberText, NamesWhatIsNotFinite) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(NumberText(kInfinity), "inf");
    EXPECT_EQ(NumberText(-kInfinity), "-inf");
    EXPECT_EQ(NumberText(kNaN), "nan");
    EXPECT_EQ(NumberText(-kNaN), "nan");
}

TEST(number_text, DoesNotKnowTheLocale) {
    std::vector<double> expected;
    for (const std::string& text : kTexts)
        expected.push_back(OracleNumber(text));
    const CommaLocale locale;
    if (!CommaLocale::IsActive())
        GTEST_SKIP() << "no locale with a decimal comma is installed, and localedef cannot make one";
    EXPECT_EQ(LeadingNumber("1.5"), 1.5);
    EXPECT_EQ(LeadingNumber("1,5"), 1.0);
    EXPECT_EQ(ParseNumber("1234.5"), 1234.5);
    EXPECT_EQ(ParseNumber("1,5"), std::nullopt);
    EXPECT_EQ(NumberText(12345.5), "12345.5");
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_TRUE(IsSameDouble(LeadingNumber(kTexts[i]), expected[i])) << kTexts[i];
}

TEST(ParseTruth, KnowsTwoWordsInLettersOfEitherCase) {
    for (const char* text : {"true", "True", "TRUE", "tRuE"})
        EXPECT_EQ(ParseTruth(text), true) << text;
    for (const char* text : {"false", "False", "FALSE", "fALSe"})
        EXPECT_EQ(ParseTruth(text), false) << text;
    for (const char* text : {"", "t", "tru", "truee", " true", "false ", "1", "0", "4RUE", "f\x81LSE"})
        EXPECT_EQ(ParseTruth(text), std::nullopt) << text;
}

}  // namespace
