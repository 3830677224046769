// Every member on the cross product of hostile arguments: it returns, and what it returns is finite (or missing, which
// is finite too), and in [0, 1] where it is a probability. Loops are bounded by counters or by limits on their
// arguments; a member that hung would run into the test's time limit.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "numerics/distributions/KwDistFun.h"
#include "numerics/distributions/detail/invert.h"
#include "numerics/distributions/detail/search.h"
#include "numerics/power/KwMV.h"
#include "tests/numerics/distributions/reference_table.h"
#include "tests/numerics/special_values.h"

namespace {

using KwMath_930::KwDistFun;

using numerics_samples::kInfinity;
constexpr std::array kHostile = {std::numeric_limits<double>::quiet_NaN(),
                                 -kInfinity,
                                 kInfinity,
                                 -1.0,
                                 -0.0,
                                 0.0,
                                 1e-320,
                                 0.5,
                                 1.0,
                                 2.0,
                                 1e16,
                                 1.7e308};

struct Subject {
    const char* name;
    std::size_t arguments;
    bool isProbability;
};

class BadInput : public testing::TestWithParam<Subject> {};

double Call(const std::string& name, const std::vector<double>& v) {
    if (name == "IdfT") {
        return KwDistFun::IdfT(v[0], v[1], v[2], v[3]);
    }
    if (name == "NonCentralCdfT") {
        return KwDistFun::NonCentralCdfT(v[0], v[1], v[2], v[3]);
    }
    if (name == "FindNCParamT") {
        return KwDistFun::FindNCParamT(v[0], v[1], v[2], 0.0, v[3]);
    }
    if (name == "PdfHyper") {
        const auto whole = [](double x) { return x >= -2.0 && x <= 1e16 ? static_cast<long>(x) : 0L; };
        return KwDistFun::PdfHyper(whole(v[0]), whole(v[1]), whole(v[2]), whole(v[3]));
    }
    return distribution_tables::Members().at(name)(v);
}

TEST_P(BadInput, GivesAFiniteResult) {
    const Subject& subject = GetParam();
    std::vector<std::size_t> index(subject.arguments, 0);
    for (bool done = false; !done;) {
        std::vector<double> arguments;
        for (const std::size_t i : index) {
            arguments.push_back(kHostile[i]);
        }
        const double value = Call(subject.name, arguments);
        std::string shown;
        for (const double argument : arguments) {
            shown += ' ' + std::to_string(argument);
        }
        EXPECT_TRUE(std::isfinite(value)) << subject.name << shown;
        if (subject.isProbability && !KwCommon_930::KwMV::IsMissing(value)) {
            EXPECT_GE(value, 0.0) << subject.name << shown;
            EXPECT_LE(value, 1.0) << subject.name << shown;
        }
        done = true;
        for (std::size_t& i : index) {
            if (++i < kHostile.size()) {
                done = false;
                break;
            }
            i = 0;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    KwDistFun, BadInput,
    testing::Values(Subject{"CdfStdNorm", 1, true}, Subject{"CdfNorm", 3, true}, Subject{"PdfNormalStandard", 1, false},
                    Subject{"PdfNormal", 3, false}, Subject{"IdfStdNorm", 1, false}, Subject{"IdfNorm", 3, false},
                    Subject{"zarndnlgam", 1, false}, Subject{"CdfChi", 2, true}, Subject{"SigChi", 2, true},
                    Subject{"IdfChi", 2, false}, Subject{"CdfGam", 3, true}, Subject{"PdfGamma", 3, false},
                    Subject{"IdfGam", 3, false}, Subject{"CdfBeta", 3, true}, Subject{"IdfBeta", 3, true},
                    Subject{"CdfT", 2, true}, Subject{"SigT", 2, true}, Subject{"PdfT", 2, false},
                    Subject{"IdfT", 4, false}, Subject{"CdfF", 3, true}, Subject{"SigF", 3, true},
                    Subject{"IdfF", 3, false}, Subject{"CdfBin", 3, true}, Subject{"PdfBin", 3, true},
                    Subject{"IdfBin", 3, false}, Subject{"PdfNegBin", 3, true}, Subject{"CDFHyper", 4, true},
                    Subject{"PdfHyper", 4, true}, Subject{"NonCentralCdfChi", 3, true},
                    Subject{"NonCentralCdfF", 4, true}, Subject{"NonCentralCdfT", 4, true},
                    Subject{"NonCentralPdfT", 3, false}, Subject{"FindNCParamChi", 3, false},
                    Subject{"FindNCParamF", 4, false}, Subject{"FindNCParamT", 4, false}),
    [](const testing::TestParamInfo<Subject>& named) { return std::string(named.param.name); });

// All values, weights and scalars of the two members over vectors take each hostile number.
TEST(BadInputOfVectors, GivesFiniteResults) {
    for (const double x : kHostile) {
        for (const double w : kHostile) {
            for (const double p : kHostile) {
                for (const double q : kHostile) {
                    const std::vector<double> values{x, 2.5};
                    const std::vector<double> weights{w, p};
                    double median = 0.0, lower = 0.0, upper = 0.0, result = 0.0;
                    long ier = 0;
                    for (const bool interpolates : {false, true}) {
                        KwDistFun::Mednci(2, values, weights, q, p, interpolates, median, lower, upper);
                        EXPECT_TRUE(std::isfinite(median) && std::isfinite(lower) && std::isfinite(upper))
                            << x << ' ' << w << ' ' << p << ' ' << q;
                    }
                    for (long method = -1; method <= 5; ++method) {
                        KwDistFun::GPTile(2, p, values, {1.0, w}, {q, x}, method, result, ier);
                        EXPECT_TRUE(std::isfinite(result)) << x << ' ' << w << ' ' << p << ' ' << q << ' ' << method;
                        EXPECT_EQ(ier != 0, KwCommon_930::KwMV::IsMissing(result));
                    }
                }
            }
        }
    }
}

TEST(Refine, CountsItsSteps) {
    using KwMath_930::detail::Tails;
    int calls = 0;
    // A step function has no root of its equation: the bisection must end by itself.
    KwMath_930::detail::Refine(
        1.0, Tails{0.3, 0.7}, 1e300,
        [&](double x) {
            ++calls;
            return x < 7.7 ? Tails{0.1, 0.9} : Tails{0.9, 0.1};
        },
        [](double) { return 0.0; });
    EXPECT_LE(calls, KwMath_930::detail::kMostRefinements);
}

TEST(SearchIncreasing, CountsItsSteps) {
    int calls = 0;
    const auto jump = [&](double x) {
        ++calls;
        return x < 7.7 ? 0.1 : 0.9;
    };
    KwMath_930::detail::SearchIncreasing(jump, 0.3, 0.0, 1.0, -1e300, 1e300, 0.0);
    EXPECT_LE(calls, KwMath_930::detail::kMostSearchSteps + 2);
    calls = 0;
    const auto never = [&](double) {
        ++calls;
        return 0.1;
    };
    EXPECT_TRUE(
        KwCommon_930::KwMV::IsMissing(KwMath_930::detail::SearchIncreasing(never, 0.3, 0.0, 1.0, -1e300, 1e300, 0.0)));
    EXPECT_LE(calls, KwMath_930::detail::kMostSearchSteps + 2);
}

}  // namespace
