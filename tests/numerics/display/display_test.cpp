// Every dump text, character by character; the pieces in which it is written; locales, failing streams, short data.
#include "numerics/display/display.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <ctime>
#include <iostream>
#include <limits>
#include <locale>
#include <streambuf>
#include <string>
#include <vector>

#include "tests/numerics/BrokenBuffer.h"
#include "tests/numerics/display/DumpCapture.h"
#include "tests/numerics/special_values.h"
#include "tests/support/CommaLocale.h"

namespace {

using std::string_literals::operator""s;
using ::testing::ElementsAre;

using numerics_samples::kMissing;

// Initialised before main, possibly before the objects of the dump functions themselves.
std::ostream* const gStreamBeforeMain = KwDisplay_930::GetOutStream();

// Eleven values, so that one stands on a second line.
std::vector<double> ElevenDoubles() {
    return {0.1, -2.385, 0, 1e6, 1e-5, kMissing, 1234567, 3, 1e100, -0.25, 11};
}
const char kElevenShort[] = " 0.1 -2.385 0 1e+06 1e-05 miss 1.23457e+06 3 1e+100 -0.25\n 11";
const char kElevenFull[] =
    " 0.10000000000000001 -2.3849999999999998 0 1000000 1.0000000000000001e-05 miss 1234567 3 1e+100 -0.25\n 11";

class Display : public ::testing::Test {
protected:
    DumpCapture dump;
};

TEST(DisplayStream, IsStandardOutputBeforeAnythingElseRuns) {
    EXPECT_EQ(gStreamBeforeMain, &std::cout);
}

TEST(DisplayStream, IsTheOneLastSet) {
    std::ostringstream first;
    std::ostringstream second;
    KwDisplay_930::SetOutStream(first);
    EXPECT_EQ(KwDisplay_930::GetOutStream(), &first);
    KwDisplay_930::DisplayI("a", 1);
    KwDisplay_930::SetOutStream(second);
    EXPECT_EQ(KwDisplay_930::GetOutStream(), &second);
    KwDisplay_930::DisplayI("b", 2);
    KwDisplay_930::SetOutStream(std::cout);
    EXPECT_EQ(first.str(), "\na = 1");
    EXPECT_EQ(second.str(), "\nb = 2");
}

TEST_F(Display, DoubleHasSixDigits) {
    KwDisplay_930::DisplayD("x", 0.1);
    EXPECT_EQ(dump.Take(), "\nx = 0.1");
    KwDisplay_930::DisplayD("x", 1234567.0);
    EXPECT_EQ(dump.Take(), "\nx = 1.23457e+06");
    KwDisplay_930::DisplayD("x", -0.0);
    EXPECT_EQ(dump.Take(), "\nx = -0");
}

TEST_F(Display, DoubleFormatsAgreeWithPrintf) {
    const double values[] = {0.1,
                             1.0 / 3,
                             123456,
                             1234567,
                             0.0001,
                             0.00001234567,
                             5e-324,
                             -1.7e308,
                             100000.5,
                             std::numeric_limits<double>::infinity(),
                             std::numeric_limits<double>::quiet_NaN()};
    for (const double value : values) {
        char expected[64];
        std::snprintf(expected, sizeof expected, "\nx = %g", value);
        KwDisplay_930::DisplayD("x", value);
        EXPECT_EQ(dump.Take(), expected);
        std::snprintf(expected, sizeof expected, "\nx = %.17g", value);
        KwDisplay_930::DisplayDF("x", value);
        EXPECT_EQ(dump.Take(), expected);
    }
}

TEST_F(Display, DoubleInFullPrecisionHasSeventeenDigits) {
    KwDisplay_930::DisplayDF("x", 0.1);
    EXPECT_EQ(dump.Take(), "\nx = 0.10000000000000001");
}

TEST_F(Display, MissingDoubleIsMiss) {
    KwDisplay_930::DisplayD("x", kMissing);
    EXPECT_EQ(dump.Take(), "\nx = miss");
    KwDisplay_930::DisplayDF("x", kMissing);
    EXPECT_EQ(dump.Take(), "\nx = miss");
}

TEST_F(Display, WholeNumbersReachBothEndsOfTheirType) {
    KwDisplay_930::DisplayI("n", std::numeric_limits<int>::min());
    EXPECT_EQ(dump.Take(), "\nn = -2147483648");
    KwDisplay_930::DisplayL("n", 2147483647L);
    EXPECT_EQ(dump.Take(), "\nn = 2147483647");
    KwDisplay_930::DisplayL("n", std::numeric_limits<long>::min());
    EXPECT_EQ(dump.Take(), "\nn = " + std::to_string(std::numeric_limits<long>::min()));
}

TEST_F(Display, BoolIsAWord) {
    KwDisplay_930::DisplayB("flag", true);
    KwDisplay_930::DisplayB("flag", false);
    EXPECT_EQ(dump.Take(), "\nflag = true\nflag = false");
}

TEST_F(Display, StringKeepsEveryCharacter) {
    KwDisplay_930::DisplayS("name", "a b\0c"s);
    EXPECT_EQ(dump.Take(), "\nname = a b\0c"s);
    KwDisplay_930::DisplayS("", "");
    EXPECT_EQ(dump.Take(), "\n = ");
}

std::string LocalTimeText(std::time_t now) {
    char text[64];
    const std::tm local = *std::localtime(&now);
    std::snprintf(text, sizeof text, "\nnow: %d-%02d-%02d-%02d-%02d-%02d", local.tm_year + 1900, local.tm_mon + 1,
                  local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec);
    return text;
}

TEST_F(Display, TimeStampIsTheLocalTimeNow) {
    const std::time_t before = std::time(nullptr);
    KwDisplay_930::DisplayTimeStamp("now");
    const std::time_t after = std::time(nullptr);
    const std::string text = dump.Take();
    bool found = false;
    for (std::time_t now = before; now <= after; ++now) {
        found = found || text == LocalTimeText(now);
    }
    EXPECT_TRUE(found) << text << " for" << LocalTimeText(before);
}

TEST_F(Display, NullTextWritesNothing) {
    KwDisplay_930::DisplayText(2, nullptr);
    EXPECT_EQ(dump.Take(), "");
}

TEST_F(Display, TextFollowsItsLineBreaks) {
    KwDisplay_930::DisplayText(0, "plain");
    EXPECT_EQ(dump.Take(), "plain");
    KwDisplay_930::DisplayText(3, "far");
    EXPECT_EQ(dump.Take(), "\n\n\nfar");
    KwDisplay_930::DisplayText(2, "a string"s);
    EXPECT_EQ(dump.Take(), "\n\na string");
    KwDisplay_930::DisplayText(-1, "close");
    EXPECT_EQ(dump.Take(), "close");
}

TEST_F(Display, DoubleVectorHasSizeAndTenElementsToALine) {
    KwDisplay_930::DisplayDV("v", ElevenDoubles(), false);
    EXPECT_EQ(dump.Take(), "\nv (size = 11)"s + kElevenShort);
    KwDisplay_930::DisplayDV("v", ElevenDoubles(), true);
    EXPECT_EQ(dump.Take(), "\nv (size = 11)"s + kElevenFull);
}

TEST_F(Display, VectorOfTenStaysOnOneLine) {
    KwDisplay_930::DisplayDV("v", std::vector<double>(10, 1.5), false);
    EXPECT_EQ(dump.Take(), "\nv (size = 10) 1.5 1.5 1.5 1.5 1.5 1.5 1.5 1.5 1.5 1.5");
    KwDisplay_930::DisplayDV("v", {}, false);
    EXPECT_EQ(dump.Take(), "\nv (size = 0)");
}

TEST_F(Display, VectorOfTwentyOneHasThreeLines) {
    KwDisplay_930::DisplayIV("v", std::vector<int>(21, 7));
    EXPECT_EQ(dump.Take(), "\nv (size = 21) 7 7 7 7 7 7 7 7 7 7\n 7 7 7 7 7 7 7 7 7 7\n 7");
}

TEST_F(Display, DoubleArrayReadsAsItsVector) {
    const std::vector<double> values = ElevenDoubles();
    KwDisplay_930::DisplayDA("a", values.data(), 11, false);
    EXPECT_EQ(dump.Take(), "\na (size = 11)"s + kElevenShort);
    KwDisplay_930::DisplayDA("a", values.data(), 11, true);
    EXPECT_EQ(dump.Take(), "\na (size = 11)"s + kElevenFull);
    KwDisplay_930::DisplayDA("a", nullptr, -3, true);
    EXPECT_EQ(dump.Take(), "\na (size = 0)");
}

TEST_F(Display, ShortArrayFormHasOnlyTheElements) {
    const std::vector<double> values = ElevenDoubles();
    KwDisplay_930::DisplayDAS(values.data(), 11);
    EXPECT_EQ(dump.Take(), "\n"s + kElevenShort);
    KwDisplay_930::DisplayDAS(nullptr, 0);
    EXPECT_EQ(dump.Take(), "\n");
}

TEST_F(Display, VectorsOfOtherTypes) {
    KwDisplay_930::DisplayIV("i", {3, -14});
    EXPECT_EQ(dump.Take(), "\ni (size = 2) 3 -14");
    KwDisplay_930::DisplayUV("u", {3u, 4294967295u});
    EXPECT_EQ(dump.Take(), "\nu (size = 2) 3 4294967295");
    KwDisplay_930::DisplayBV("b", {true, false, true});
    EXPECT_EQ(dump.Take(), "\nb (size = 3) true false true");
    KwDisplay_930::DisplaySV("s", {"one", "", "two words"});
    EXPECT_EQ(dump.Take(), "\ns (size = 3) one  two words");
}

TEST_F(Display, VectorOfVectorsIntroducesEachByItsIndex) {
    KwDisplay_930::DisplayDVV("vv", {{0.1, kMissing}, {}, ElevenDoubles()}, false);
    EXPECT_EQ(dump.Take(), "\nvv\nvec[0] 0.1 miss\nvec[1]\nvec[2]"s + kElevenShort);
    KwDisplay_930::DisplayDVV("vv", {{0.1}}, true);
    EXPECT_EQ(dump.Take(), "\nvv\nvec[0] 0.10000000000000001");
    KwDisplay_930::DisplayDVV("vv", {}, false);
    EXPECT_EQ(dump.Take(), "\nvv <none>");
}

TEST_F(Display, FlagRowsAreAllShownByDefault) {
    const std::vector<std::vector<bool>> rows = {{true, false}, {true}, {false, false, true}};
    KwDisplay_930::DisplayBVV("bb", rows);
    EXPECT_EQ(dump.Take(), "\nbb ( number of rows = 3, number of columns = 3)\n true false\n true\n false false true");
    KwDisplay_930::DisplayBVV("bb", {});
    EXPECT_EQ(dump.Take(), "\nbb ( number of rows = 0, number of columns = 0)");
}

TEST_F(Display, FlagRowsAreShownUpToTheCountsGiven) {
    const std::vector<std::vector<bool>> rows = {{true, false}, {true}, {false, false, true}};
    KwDisplay_930::DisplayBVV("bb", rows, 2, 1);
    EXPECT_EQ(dump.Take(), "\nbb ( number of rows = 2, number of columns = 1)\n true\n true");
    KwDisplay_930::DisplayBVV("bb", rows, 2147483647, 2147483647);
    EXPECT_EQ(dump.Take(), "\nbb ( number of rows = 3, number of columns = 3)\n true false\n true\n false false true");
}

TEST_F(Display, TriangleIsPrintedRowByRow) {
    KwDisplay_930::DisplayDVTR("t", {0.1, 2, 3, kMissing, 5, 6}, 3);
    EXPECT_EQ(dump.Take(), "\nt (number of elements = 6, number of rows = 3)\nrow 0: 0.1\nrow 1: 2 3\nrow 2: miss 5 6");
    KwDisplay_930::DisplayDVTRS({0.1, 2, 3}, 2);
    EXPECT_EQ(dump.Take(), "\n (number of elements = 3, number of rows = 2)\nrow 0: 0.1\nrow 1: 2 3");
}

TEST_F(Display, LongTriangleRowIsBrokenAfterTenElements) {
    KwDisplay_930::DisplayDVTRS(std::vector<double>(66, 1), 11);
    const std::string text = dump.Take();
    EXPECT_THAT(text, ::testing::EndsWith("\nrow 9: 1 1 1 1 1 1 1 1 1 1\nrow 10: 1 1 1 1 1 1 1 1 1 1\n 1"));
}

TEST_F(Display, TriangleEndsWhereItsDataEnd) {
    KwDisplay_930::DisplayDVTR("t", {1, 2}, 2147483647);
    EXPECT_EQ(dump.Take(), "\nt (number of elements = 2, number of rows = 2147483647)\nrow 0: 1\nrow 1: 2");
    KwDisplay_930::DisplayDVTR("t", {1, 2, 3}, 1);
    EXPECT_EQ(dump.Take(), "\nt (number of elements = 3, number of rows = 1)\nrow 0: 1");
    KwDisplay_930::DisplayDVTR("t", {}, -1);
    EXPECT_EQ(dump.Take(), "\nt (number of elements = 0, number of rows = 0)");
}

TEST_F(Display, PairsStandInParentheses) {
    std::vector<std::pair<int, int>> whole = {{1, -2}, {3, 4}};
    KwDisplay_930::DisplayVPII("p", whole);
    EXPECT_EQ(dump.Take(), "\np (size = 2) (1,-2) (3,4)");
    std::vector<std::pair<double, int>> mixed = {{0.1, 2}, {kMissing, 4}};
    KwDisplay_930::DisplayVPDI("p", mixed);
    EXPECT_EQ(dump.Take(), "\np (size = 2) (0.1,2) ( miss,4)");
    std::vector<std::pair<double, double>> doubles = {{0.1, kMissing}, {kMissing, -2.385}};
    KwDisplay_930::DisplayVPD("p", doubles);
    EXPECT_EQ(dump.Take(), "\np (size = 2) (0.1, miss) ( miss,-2.385)");
    whole.clear();
    KwDisplay_930::DisplayVPII("p", whole);
    EXPECT_EQ(dump.Take(), "\np (size = 0)");
}

TEST_F(Display, ElevenPairsTakeTwoLines) {
    std::vector<std::pair<int, int>> pairs(11, {1, 2});
    KwDisplay_930::DisplayVPII("p", pairs);
    EXPECT_EQ(dump.Take(), "\np (size = 11) (1,2) (1,2) (1,2) (1,2) (1,2) (1,2) (1,2) (1,2) (1,2) (1,2)\n (1,2)");
}

TEST_F(Display, ElevenElementsOfAnyKindTakeTwoLines) {
    KwDisplay_930::DisplayUV("u", std::vector<unsigned int>(11, 7u));
    EXPECT_EQ(dump.Take(), "\nu (size = 11) 7 7 7 7 7 7 7 7 7 7\n 7");
    KwDisplay_930::DisplaySV("s", std::vector<std::string>(11, "x"));
    EXPECT_EQ(dump.Take(), "\ns (size = 11) x x x x x x x x x x\n x");
    const std::vector<bool> flags(11, true);
    const std::string flagText = " true true true true true true true true true true\n true";
    KwDisplay_930::DisplayBV("b", flags);
    EXPECT_EQ(dump.Take(), "\nb (size = 11)" + flagText);
    KwDisplay_930::DisplayBVV("bb", {flags});
    EXPECT_EQ(dump.Take(), "\nbb ( number of rows = 1, number of columns = 11)\n" + flagText);
    KwDisplay_930::DisplaySSLM("m", {{"k", std::vector<std::string>(11, "x")}});
    EXPECT_EQ(dump.Take(), "\nm Map's StringList:\nMap key = k\nMap value = x x x x x x x x x x\n x");
    std::map<int, int> squares;
    for (int k = 0; k < 11; ++k) {
        squares[k] = k * k;
    }
    KwDisplay_930::DisplayVIM("q", squares);
    EXPECT_EQ(dump.Take(), "\nq (0,0) (1,1) (2,4) (3,9) (4,16) (5,25) (6,36) (7,49) (8,64) (9,81)\n (10,100)");
}

TEST_F(Display, MapsOfNumbersHaveACountExceptTheShortForm) {
    std::map<double, double> doubles = {{0.5, kMissing}, {-1, 2.385}};
    KwDisplay_930::DisplayDDM("m", doubles);
    EXPECT_EQ(dump.Take(), "\nm map size = 2 (-1,2.385) (0.5, miss)");
    std::map<int, int> whole = {{4, 5}, {2, 3}};
    KwDisplay_930::DisplayIIM("m", whole);
    EXPECT_EQ(dump.Take(), "\nm map size = 2 (2,3) (4,5)");
    KwDisplay_930::DisplayVIM("m", whole);
    EXPECT_EQ(dump.Take(), "\nm (2,3) (4,5)");
}

TEST_F(Display, EmptyMapsSaySo) {
    std::map<double, double> doubles;
    std::map<int, int> whole;
    KwDisplay_930::DisplayDDM("m", doubles);
    KwDisplay_930::DisplayIIM("m", whole);
    KwDisplay_930::DisplayVIM("m", whole);
    KwDisplay_930::DisplaySSLM("m", {});
    KwDisplay_930::DisplaySDM("m", {});
    EXPECT_EQ(dump.Take(), "\nm <empty>\nm <empty>\nm <empty>\nm <empty>\nm <empty>");
}

TEST_F(Display, MapOfStringLists) {
    KwDisplay_930::DisplaySSLM("m", {{"b", {"x", "y z"}}, {"a", {}}});
    EXPECT_EQ(dump.Take(), "\nm Map's StringList:\nMap key = a\nMap value =\nMap key = b\nMap value = x y z");
}

TEST_F(Display, MapOfStringsToDoubles) {
    KwDisplay_930::DisplaySDM("m", {{"b", kMissing}, {"a", 0.1}});
    EXPECT_EQ(dump.Take(), "\nm Map's double\nMap key = a\nMap value = 0.1\nMap key = b\nMap value = miss");
}

TEST_F(Display, MillionValuesAreDumpedWhole) {
    const std::vector<double> values(1000000, 0.5);
    KwDisplay_930::DisplayDV("v", values, false);
    EXPECT_EQ(dump.Take().size(), "\nv (size = 1000000)"s.size() + 4 * values.size() + values.size() / 10 - 1);
}

// Records how text reaches the stream: each piece as it comes, and each flush.
class PieceRecorder : public std::streambuf {
public:
    std::vector<std::string> pieces;

protected:
    int_type overflow(int_type c) override {
        pieces.push_back(std::string(1, traits_type::to_char_type(c)));
        return traits_type::not_eof(c);
    }
    std::streamsize xsputn(const char* text, std::streamsize length) override {
        pieces.push_back(std::string(text, static_cast<std::size_t>(length)));
        return length;
    }
    int sync() override {
        pieces.push_back("<flush>");
        return 0;
    }
};

TEST_F(Display, DumpIsABreakWithFlushThenOnePieceThenAFlush) {
    PieceRecorder recorder;
    std::ostream stream(&recorder);
    KwDisplay_930::SetOutStream(stream);
    KwDisplay_930::DisplayDVTR("t", {1, 2, 3}, 2);
    EXPECT_THAT(recorder.pieces,
                ElementsAre("\n", "<flush>", "t (number of elements = 3, number of rows = 2)\nrow 0: 1\nrow 1: 2 3",
                            "<flush>"));
    recorder.pieces.clear();
    KwDisplay_930::DisplayText(2, "text");
    EXPECT_THAT(recorder.pieces, ElementsAre("\n", "<flush>", "\n", "<flush>", "text", "<flush>"));
    recorder.pieces.clear();
    KwDisplay_930::DisplayText(2, nullptr);
    EXPECT_THAT(recorder.pieces, ElementsAre());
}

TEST_F(Display, StreamThatThrowsNeverFailsTheCaller) {
    numerics_samples::BrokenBuffer broken;
    std::ostream stream(&broken);
    stream.exceptions(std::ios::badbit | std::ios::failbit);
    EXPECT_THROW(stream.put('x'), std::ios::failure);
    KwDisplay_930::SetOutStream(stream);
    EXPECT_NO_THROW(KwDisplay_930::DisplayD("x", 2.385));
    EXPECT_NO_THROW(KwDisplay_930::DisplayText(1, "text"));
    EXPECT_NO_THROW(KwDisplay_930::DisplayText(1, "text"s));
}

// Decimal comma, and groups of three, as much of the world writes.
class CommaNumbers : public std::numpunct<char> {
protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
    std::string do_truename() const override { return "wahr"; }
};

class DisplayLocale : public ::testing::Test {
protected:
    DisplayLocale() {
        const std::locale comma(std::locale::classic(), new CommaNumbers);
        fBefore = std::locale::global(comma);
        dump.Stream().imbue(comma);
    }
    ~DisplayLocale() override {
        std::locale::global(fBefore);
        std::setlocale(LC_ALL, "C");
    }

    void ExpectPlainNumbers() {
        KwDisplay_930::DisplayD("x", 2.5);
        KwDisplay_930::DisplayDF("x", 0.1);
        KwDisplay_930::DisplayI("n", 1234567);
        KwDisplay_930::DisplayB("b", true);
        KwDisplay_930::DisplayDV("v", {1234567.25, 0.5}, true);
        EXPECT_EQ(dump.Take(),
                  "\nx = 2.5\nx = 0.10000000000000001\nn = 1234567\nb = true\nv (size = 2) 1234567.25 0.5");
    }

    DumpCapture dump;

private:
    std::locale fBefore;
};

TEST_F(DisplayLocale, FacetWithDecimalCommaDoesNotShow) {
    std::ostringstream probe;
    probe << 2.5;
    ASSERT_EQ(probe.str(), "2,5");
    ExpectPlainNumbers();
}

TEST_F(DisplayLocale, CLocaleWithDecimalCommaDoesNotShow) {
    const CommaLocale locale;
    ExpectPlainNumbers();
    if (!CommaLocale::IsActive())
        GTEST_SKIP() << "no locale with a decimal comma is installed";
}

TEST_F(DisplayLocale, FieldWidthAndFlagsOfTheStreamDoNotShow) {
    dump.Stream().width(40);
    dump.Stream() << std::hex << std::showpos << std::scientific;
    KwDisplay_930::DisplayI("n", 255);
    KwDisplay_930::DisplayD("x", 2.5);
    EXPECT_EQ(dump.Take(), "\nn = 255\nx = 2.5");
}

}  // namespace
