// The precision of the x87 unit while a case is scored.
#include "host/ExtendedPrecision.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "tests/support/control_word.h"

namespace KwBrevix_930 {
namespace {

using test_support::controlWord;
using test_support::UnderControlWord;

TEST(ExtendedPrecision, LeavesTheControlWordAsItWas) {
    constexpr std::uint16_t kDoublePrecisionUpward = 0xA7F;
    for (const auto word : {test_support::kDoublePrecision, kDoublePrecisionUpward, test_support::kExtendedPrecision}) {
        const UnderControlWord control(word);
        {
            const ExtendedPrecision precision;
#ifdef __MINGW32__
            EXPECT_EQ(controlWord(), word | 0x300);
#else
            EXPECT_EQ(controlWord(), word);
#endif
        }
        EXPECT_EQ(controlWord(), word);
    }
}

#ifdef __MINGW32__
// Otherwise nothing that is tested under both precisions would tell anything.
TEST(ExtendedPrecision, MattersToThePlatformsFunctions) {
    int exps = 0;
    int pows = 0;
    for (double x = 0.37; x < 40.0; x += 0.173) {
        const auto compute = [x](std::uint16_t word) {
            const UnderControlWord control(word);
            return std::array{std::exp(x), std::pow(x, 2.375)};
        };
        const auto rounded = compute(test_support::kDoublePrecision);
        const auto extended = compute(test_support::kExtendedPrecision);
        exps += rounded[0] != extended[0];
        pows += rounded[1] != extended[1];
    }
    EXPECT_GT(exps, 0);
    EXPECT_GT(pows, 0);
}
#endif

}  // namespace
}  // namespace KwBrevix_930
