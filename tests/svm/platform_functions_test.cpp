// How exact the platform's exp, pow and tanh are, on which the agreement of scores between platforms rests.
#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

#include <gtest/gtest.h>

#include "host/ExtendedPrecision.h"
#include "tests/support/reference_rows.h"

namespace {

enum Function { kExp, kPow, kTanh };

double Compute(Function function, double x, double y) {
    return function == kExp ? std::exp(x) : function == kPow ? std::pow(x, y) : std::tanh(x);
}

// In units of the last place of the value that is right.
double ErrorOf(double value, double high, double low) {
    const double magnitude = std::abs(high);
    const double unit = std::nextafter(magnitude, std::numeric_limits<double>::infinity()) - magnitude;
    return std::abs((value - high) - low) / unit;
}

// docs/windows.md derives from these how far the tables of two platforms may differ.
TEST(PlatformFunctions, KeepTheErrorsThatAgreementRestsOn) {
    const KwBrevix_930::ExtendedPrecision precision;
    double worst[3] = {};
    for (const auto& row : test_support::ReadReferenceRows("kernels/elementary.csv", 5)) {
        const auto function = static_cast<Function>(static_cast<int>(row[0]));
        double& its = worst[function];
        its = std::max(its, ErrorOf(Compute(function, row[1], row[2]), row[3], row[4]));
    }
    RecordProperty("exp", std::to_string(worst[kExp]));
    RecordProperty("pow", std::to_string(worst[kPow]));
    RecordProperty("tanh", std::to_string(worst[kTanh]));
    EXPECT_LE(worst[kExp], 1.0);
    EXPECT_LE(worst[kPow], 6.0);
    EXPECT_LE(worst[kTanh], 2.0);
    EXPECT_GE(*std::min_element(std::begin(worst), std::end(worst)), 0.25) << "random arguments have errors";
}

}  // namespace
