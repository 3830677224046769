// The status value of scoring operations.
#include "host/KwStatus.h"

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>
#include <utility>

namespace {

using KwScore::KwStatus;

TEST(KwStatus, MeansSuccessWhenDefaultConstructed) {
    const KwStatus status;
    EXPECT_FALSE(status.IsError());
    EXPECT_EQ(status.GetErrorCode(), 0);
}

TEST(KwStatus, KeepsCodeAndFlagApart) {
    EXPECT_TRUE(KwStatus(90029, true).IsError());
    EXPECT_EQ(KwStatus(90029, true).GetErrorCode(), 90029);
    EXPECT_FALSE(KwStatus(90027, false).IsError());
    EXPECT_EQ(KwStatus(90027, false).GetErrorCode(), 90027);
    EXPECT_TRUE(KwStatus(0, true).IsError());
}

TEST(KwStatus, HoldsEverySigned32BitCode) {
    constexpr auto kLowest = std::numeric_limits<std::int32_t>::min();
    EXPECT_EQ(KwStatus(kLowest, true).GetErrorCode(), kLowest);
    static_assert(std::is_same_v<decltype(KwStatus().GetErrorCode()), std::int32_t>);
}

TEST(KwStatus, IsAssignedByCopyAndByMove) {
    const KwStatus failed(90027, true);
    KwStatus copy;
    copy = failed;
    EXPECT_EQ(copy.GetErrorCode(), 90027);
    KwStatus moved;
    moved = std::move(copy);
    EXPECT_TRUE(moved.IsError());
    EXPECT_EQ(moved.GetErrorCode(), 90027);
}

}  // namespace
