// The precision of the x87 unit while a case is scored.
#include "svm/ExtendedPrecision.h"

#include <gtest/gtest.h>

#include "tests/svm/control_word.h"

namespace KwSVM_700 {
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

}  // namespace
}  // namespace KwSVM_700
