// The status value: severity, details, comparison, 32-bit codes.
#include "numerics/containers/KwStatus.h"
#include "tests/numerics/special_values.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

using KwSvm::KwStatus;

using numerics_samples::kNaN;

void ExpectSeverity(const KwStatus& status, bool ok, bool warning, bool error) {
    EXPECT_EQ(status.IsOK(), ok);
    EXPECT_EQ(status.IsWarning(), warning);
    EXPECT_EQ(status.IsError(), error);
}

void ExpectNoDetails(const KwStatus& status) {
    for (unsigned int i = 0; i < 3; ++i) {
        EXPECT_EQ(status.GetDiscreteDatum(i), 0);
        EXPECT_EQ(status.GetScaleDatum(i), 0.0);
    }
}

KwStatus Detailed() {
    KwStatus status(90027, true);
    for (unsigned int i = 0; i < 3; ++i) {
        status.SetDiscreteDatum(i, 10L + i);
        status.SetScaleDatum(i, 2.385 * (i + 1));
    }
    return status;
}

TEST(SvmStatus, DefaultIsOkWithoutDetails) {
    const KwStatus status;
    EXPECT_EQ(status.GetErrorCode(), 0);
    ExpectSeverity(status, true, false, false);
    ExpectNoDetails(status);
}

TEST(SvmStatus, CodeWithoutWarningIsAnError) {
    const KwStatus status(7, false);
    EXPECT_EQ(status.GetErrorCode(), 7);
    ExpectSeverity(status, false, false, true);
    ExpectNoDetails(status);
}

TEST(SvmStatus, CodeZeroIsAWarningOrAnErrorButNeverOk) {
    ExpectSeverity(KwStatus(0, true), false, true, false);
    ExpectSeverity(KwStatus(0, false), false, false, true);
    ExpectNoDetails(KwStatus(0, true));
}

TEST(SvmStatus, EachDetailHasItsOwnSlot) {
    const KwStatus status = Detailed();
    for (unsigned int i = 0; i < 3; ++i) {
        EXPECT_EQ(status.GetDiscreteDatum(i), 10L + i);
        EXPECT_EQ(status.GetScaleDatum(i), 2.385 * (i + 1));
    }
    EXPECT_EQ(status.GetErrorCode(), 90027);
    EXPECT_TRUE(status.IsWarning());
}

TEST(SvmStatus, CodesAndWholeDetailsAreSigned32Bit) {
    EXPECT_EQ(KwStatus(-2147483647L - 1, false).GetErrorCode(), -2147483647L - 1);
    KwStatus status;
    status.SetDiscreteDatum(2, 2147483647L);
    EXPECT_EQ(status.GetDiscreteDatum(2), 2147483647L);
    if constexpr (sizeof(long) > 4) {
        status.SetDiscreteDatum(2, static_cast<long>(5000000000LL));
        EXPECT_EQ(status.GetDiscreteDatum(2), 705032704L);
    }
    EXPECT_EQ(sizeof(KwStatus), 48u);
}

TEST(SvmStatus, DefaultsAreEqual) {
    EXPECT_TRUE(KwStatus() == KwStatus());
    EXPECT_TRUE(Detailed() == Detailed());
}

TEST(SvmStatus, EveryFieldCounts) {
    EXPECT_FALSE(KwStatus(7, true) == KwStatus(8, true));
    EXPECT_FALSE(KwStatus(7, true) == KwStatus(7, false));
    EXPECT_FALSE(KwStatus(0, true) == KwStatus());
    for (unsigned int i = 0; i < 3; ++i) {
        KwStatus status = Detailed();
        status.SetDiscreteDatum(i, -1);
        EXPECT_FALSE(status == Detailed()) << i;
        status = Detailed();
        status.SetScaleDatum(i, -1.0);
        EXPECT_FALSE(status == Detailed()) << i;
    }
}

TEST(SvmStatus, NaNDetailMakesStatusesUnequal) {
    KwStatus one;
    KwStatus other;
    one.SetScaleDatum(1, kNaN);
    other.SetScaleDatum(1, kNaN);
    EXPECT_FALSE(one == other);
    EXPECT_FALSE(one == one);
    one.SetScaleDatum(1, 0.0);
    other.SetScaleDatum(1, -0.0);
    EXPECT_TRUE(one == other);
}

TEST(SvmStatus, CopyAndMoveTakeEveryMember) {
    KwStatus copied;
    copied = Detailed();
    EXPECT_TRUE(copied == Detailed());
    KwStatus source = Detailed();
    KwStatus moved;
    moved = std::move(source);
    EXPECT_TRUE(moved == Detailed());
    const KwStatus constructed(copied);
    EXPECT_TRUE(constructed == Detailed());
    const KwStatus& same = copied;
    copied = same;
    EXPECT_TRUE(copied == Detailed());
}

}  // namespace
