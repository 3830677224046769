// What a test and the plug-in around the real one, which it loads at run time, tell each other.
#pragma once

#include <cstddef>

#include "host/ScoreTranslator.h"

namespace test_support {

struct WrappingPlugin {
    /// Set by the test: whether models that are made from now on offer to score many cases in one call.
    bool offersBatches = true;
    /// Set by the test: whether they refuse plain numbers of cases, having taken them when asked about none.
    bool refusesNumbers = false;
    /// Set by the test: where not 0, each so-many-th of such cases fails with the status 4711, its numbers those of a
    /// case that does not.
    std::size_t failsEach = 0;
    /// How often models were asked for one case, and for many, and for how many in all of these calls.
    std::size_t singleCalls = 0;
    std::size_t batchCalls = 0;
    std::size_t casesInBatches = 0;
};

}  // namespace test_support

#if defined(_WIN32)
#define BREVIX_TEST_EXPORT __declspec(dllexport)
#else
#define BREVIX_TEST_EXPORT __attribute__((visibility("default")))
#endif

extern "C" BREVIX_TEST_EXPORT KwBrevix_930::ScoreTranslator* GiveMyTranslator();
/// Returns: the library's one object; not to be deleted.
extern "C" BREVIX_TEST_EXPORT test_support::WrappingPlugin* GetWrappingPlugin();
