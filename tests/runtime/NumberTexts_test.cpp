// The kept texts of numbers against texts made anew.
#include "runtime/NumberTexts.h"

#include <limits>
#include <random>

#include <gtest/gtest.h>

#include "host/number_text.h"

namespace {

TEST(NumberTexts, AreThoseOfNumberTextHoweverNumbersComeBack) {
    std::mt19937_64 engine(71);
    std::normal_distribution<double> number(0.0, 1e3);
    std::vector<double> values = {0.0,
                                  -0.0,
                                  1.0,
                                  1.0 / 3.0,
                                  std::numeric_limits<double>::infinity(),
                                  std::numeric_limits<double>::quiet_NaN(),
                                  std::numeric_limits<double>::lowest()};
    for (int i = 0; i < 300; ++i)
        values.push_back(number(engine));
    brevix::NumberTexts texts;
    for (int i = 0; i < 20'000; ++i) {
        const double value = values[engine() % (i % 3 == 0 ? values.size() : 9)];
        ASSERT_EQ(texts.get(value), KwBrevix_930::NumberText(value));
    }
}

}  // namespace
