// Dumps that run out of memory are dropped whole; no dump fails its caller.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "numerics/display/display.h"
#include "tests/numerics/display/DumpCapture.h"
#include "tests/support/failing_new.h"

namespace {

using failing_new::FailAfter;

// Lets each allocation of the dump fail in turn; what is written is the whole text, or no text behind its line break.
template <class Action>
void ExpectWholeOrDropped(Action action) {
    DumpCapture dump;
    action();
    const std::string whole = dump.Take();
    ASSERT_GT(whole.size(), 100u);
    for (std::size_t succeeding = 0;; ++succeeding) {
        bool failed = false;
        {
            const FailAfter failing(succeeding);
            EXPECT_NO_THROW(action());
            failed = failing.Failed();
        }
        const std::string text = dump.Take();
        dump.Stream().clear();
        if (!failed) {
            EXPECT_EQ(text, whole);
            EXPECT_GE(succeeding, 1u);
            return;
        }
        EXPECT_TRUE(text == whole || text == "\n" || text.empty()) << succeeding;
    }
}

TEST(DisplayAllocation, VectorsAreWholeOrDropped) {
    const std::vector<double> values(200, 2.385);
    ExpectWholeOrDropped([&] { KwDisplay_930::DisplayDV("v", values, true); });
    ExpectWholeOrDropped([&] { KwDisplay_930::DisplayDAS(values.data(), 200); });
    const std::vector<bool> flags(200, true);
    ExpectWholeOrDropped([&] { KwDisplay_930::DisplayBV("v", flags); });
    ExpectWholeOrDropped([&] { KwDisplay_930::DisplayDVTR("v", values, 15); });
    const std::vector<std::vector<double>> nested(20, values);
    ExpectWholeOrDropped([&] { KwDisplay_930::DisplayDVV("v", nested, false); });
}

TEST(DisplayAllocation, MapsAreWholeOrDropped) {
    std::map<int, int> entries;
    for (int k = 0; k < 100; ++k) {
        entries[k] = k * k;
    }
    ExpectWholeOrDropped([&] { KwDisplay_930::DisplayIIM("m", entries); });
    const std::map<std::string, double> named = {{std::string(90, 'a'), 2.385}, {std::string(90, 'b'), 0.1}};
    ExpectWholeOrDropped([&] { KwDisplay_930::DisplaySDM("m", named); });
}

}  // namespace
