// The kept texts of results against a list of all of them.
#include "runtime/ResultTexts.h"

#include <limits>
#include <map>
#include <random>

#include <gtest/gtest.h>

namespace {

using brevix::ResultTexts;

TEST(ResultTexts, AreThoseOfTheSameNumbers) {
    ResultTexts texts;
    std::mt19937_64 engine(91);
    std::size_t found = 0;
    for (int i = 0; i < 20'000; ++i) {
        // Of a few lengths and a few hundred kinds, more than there is room for.
        std::vector<double> result(1 + engine() % 4);
        for (double& number : result)
            number = static_cast<double>(engine() % 5) / 3.0;
        std::string text;
        for (const double number : result)
            text += std::to_string(number) + ',';
        if (const std::string* kept = texts.find(result)) {
            ASSERT_EQ(*kept, text);
            ++found;
        } else {
            texts.keep(result, text);
            ASSERT_NE(texts.find(result), nullptr);
            ASSERT_EQ(*texts.find(result), text);
        }
    }
    EXPECT_GT(found, 5'000u);
}

TEST(ResultTexts, TellZerosAndLengthsApart) {
    ResultTexts texts;
    EXPECT_EQ(texts.find(std::vector{0.0}), nullptr);
    texts.keep(std::vector{0.0}, "nought");
    ASSERT_NE(texts.find(std::vector{0.0}), nullptr);
    EXPECT_EQ(texts.find(std::vector{-0.0}), nullptr);
    EXPECT_EQ(texts.find(std::vector{0.0, 0.0}), nullptr);
    const std::vector<double> notANumber = {std::numeric_limits<double>::quiet_NaN()};
    texts.keep(notANumber, "nan");
    ASSERT_NE(texts.find(notANumber), nullptr);
    EXPECT_EQ(*texts.find(notANumber), "nan");
}

TEST(ResultTexts, OfNoNumbersOrVeryManyAreNotKept) {
    ResultTexts texts;
    for (const std::size_t count : {std::size_t{0}, ResultTexts::kMostNumbers + 1}) {
        const std::vector<double> result(count, 0.75);
        texts.keep(result, "text");
        EXPECT_EQ(texts.find(result), nullptr) << count;
    }
    const std::vector<double> most(ResultTexts::kMostNumbers, 0.75);
    texts.keep(most, "text");
    EXPECT_NE(texts.find(most), nullptr);
}

}  // namespace
