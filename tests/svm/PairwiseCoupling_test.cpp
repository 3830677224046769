// Coupling against the reference table, and the ends of the iterations.
#include "svm/PairwiseCoupling.h"

#include <charconv>
#include <cmath>
#include <fstream>
#include <limits>
#include <numeric>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/csv_table.h"

namespace KwBrevix_930 {
namespace {

using Values = std::vector<double>;
using Matrix = std::vector<Values>;

struct Row {
    Matrix pairs;
    Values reached;
    int iterations;
    Values exact;
    double reach;
};

double ParseHex(const std::string& text) {
    const bool isNegative = text.starts_with("-");
    const std::size_t begin = (isNegative ? 1 : 0) + 2;
    double magnitude = 0.0;
    const auto [end, error] =
        std::from_chars(text.data() + begin, text.data() + text.size(), magnitude, std::chars_format::hex);
    if (error != std::errc() || end != text.data() + text.size())
        throw std::runtime_error("no hex float: " + text);
    return isNegative ? -magnitude : magnitude;
}

std::vector<std::string> SplitList(const std::string& text) {
    std::vector<std::string> items;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find(';', begin), text.size());
        items.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return items;
}

Values ParseList(const std::string& text) {
    Values values;
    for (const std::string& item : SplitList(text))
        values.push_back(ParseHex(item));
    return values;
}

Matrix ParsePairs(std::size_t k, const std::string& text) {
    const std::vector<std::string> items = SplitList(text);
    Matrix r(k, Values(k, 0.0));
    std::size_t place = 0;
    for (std::size_t i = 0; i < k; ++i) {
        for (std::size_t j = i + 1; j < k; ++j, ++place) {
            if (items.at(place) != "-") {
                r[i][j] = ParseHex(items[place]);
                r[j][i] = 1.0 - r[i][j];
            }
        }
    }
    return r;
}

std::vector<Row> ReadRows() {
    std::ifstream file(std::string(BREVIX_SOURCE_DIR) + "/tests/reference/coupling/PairwiseCoupling.csv");
    std::vector<Row> rows;
    std::string line;
    while (std::getline(file, line)) {
        if (line.starts_with("#") || line.starts_with("k,"))
            continue;
        const auto cells = test_support::SplitCsvLine(line);
        const double reach = cells.at(5).empty() ? 0.0 : std::stod(cells[5]);
        rows.push_back({ParsePairs(std::stoul(cells.at(0)), cells.at(1)), ParseList(cells.at(2)),
                        std::stoi(cells.at(3)), ParseList(cells.at(4)), reach});
    }
    return rows;
}

// Counts how often the hook is asked: once before each iteration.
Values SolveCounting(const Matrix& r, int& asked) {
    PairwiseCoupling coupling;
    asked = 0;
    coupling.SetInterruption([&asked] {
        ++asked;
        return false;
    });
    Values p;
    EXPECT_FALSE(coupling.Solve(r, p).IsError());
    return p;
}

TEST(PairwiseCoupling, ReachesWhatTheIterationsReachInHighPrecision) {
    const std::vector<Row> rows = ReadRows();
    ASSERT_EQ(rows.size(), 125u);
    constexpr double kTolerance = 256 * std::numeric_limits<double>::epsilon();
    for (std::size_t row = 0; row < rows.size(); ++row) {
        int asked = 0;
        const Values p = SolveCounting(rows[row].pairs, asked);
        EXPECT_EQ(asked, rows[row].iterations) << "row " << row;
        ASSERT_EQ(p.size(), rows[row].reached.size());
        const double scale = *std::max_element(p.begin(), p.end());
        for (std::size_t t = 0; t < p.size(); ++t)
            EXPECT_NEAR(p[t], rows[row].reached[t], kTolerance * scale) << "row " << row << ", category " << t;
    }
}

TEST(PairwiseCoupling, ComesAsNearToTheExactSolutionAsTheConvergenceTestDemands) {
    int compared = 0;
    for (const Row& row : ReadRows()) {
        if (row.exact.empty())
            continue;
        Values p;
        EXPECT_FALSE(PairwiseCoupling().Solve(row.pairs, p).IsError());
        for (std::size_t t = 0; t < p.size(); ++t)
            EXPECT_NEAR(p[t], row.exact[t], row.reach) << "row " << compared << ", category " << t;
        ++compared;
    }
    EXPECT_EQ(compared, 122);
}

TEST(PairwiseCoupling, EndsAfterAHundredIterationsWithoutConvergence) {
    int atLimit = 0;
    for (const Row& row : ReadRows()) {
        int asked = 0;
        const Values p = SolveCounting(row.pairs, asked);
        EXPECT_LE(asked, 100);
        if (row.iterations == 100) {
            ++atLimit;
            EXPECT_EQ(asked, 100);
            EXPECT_NEAR(std::accumulate(p.begin(), p.end(), 0.0), 1.0, 1e-14);
        }
    }
    EXPECT_EQ(atLimit, 3);
}

Matrix EvenPairs(std::size_t k) {
    Matrix r(k, Values(k, 0.5));
    for (std::size_t t = 0; t < k; ++t)
        r[t][t] = 0.0;
    return r;
}

TEST(PairwiseCoupling, OfEvenPairsIsEven) {
    for (std::size_t k = 3; k <= 10; ++k) {
        int asked = 0;
        const Values p = SolveCounting(EvenPairs(k), asked);
        EXPECT_EQ(asked, 1);
        for (const double probability : p)
            EXPECT_NEAR(probability, 1.0 / static_cast<double>(k), 4 * std::numeric_limits<double>::epsilon());
    }
}

TEST(PairwiseCoupling, OfPairsFromStrengthsGivesTheStrengthsBack) {
    const Values strengths = {0.4375, 0.25, 0.1875, 0.125};
    Matrix r(4, Values(4, 0.0));
    for (std::size_t i = 0; i < 4; ++i) {
        for (std::size_t j = 0; j < 4; ++j) {
            if (i != j)
                r[i][j] = strengths[i] / (strengths[i] + strengths[j]);
        }
    }
    Values p;
    PairwiseCoupling().Solve(r, p);
    // Each step is within the convergence tolerance of the fixed point, which the strengths are.
    for (std::size_t t = 0; t < 4; ++t)
        EXPECT_NEAR(p[t], strengths[t], 0.01);
}

TEST(PairwiseCoupling, OverwritesWhatThereWas) {
    const Matrix r = ReadRows().front().pairs;
    Values fresh;
    Values used = {0.5, 17.0, -1.0, 3.5, 2.5};
    PairwiseCoupling().Solve(r, fresh);
    PairwiseCoupling().Solve(r, used);
    EXPECT_EQ(used, fresh);
}

TEST(PairwiseCoupling, AnInterruptionBeforeTheFirstIterationIsErrorOneAndLeavesEvenProbabilities) {
    PairwiseCoupling coupling;
    coupling.SetInterruption([] { return true; });
    Values p;
    const auto status = coupling.Solve(ReadRows().front().pairs, p);
    EXPECT_TRUE(status.IsError());
    EXPECT_EQ(status.GetErrorCode(), 1);
    EXPECT_EQ(p, Values(3, 1.0 / 3.0));
}

TEST(PairwiseCoupling, AnInterruptionLaterKeepsTheIterationsDoneSoFar) {
    for (const Row& row : ReadRows()) {
        if (row.iterations < 3)
            continue;
        int asked = 0;
        PairwiseCoupling coupling;
        coupling.SetInterruption([&asked] { return ++asked > 1; });
        Values p;
        EXPECT_EQ(coupling.Solve(row.pairs, p).GetErrorCode(), 1);
        EXPECT_EQ(asked, 2);
        EXPECT_NE(p, Values(p.size(), 1.0 / static_cast<double>(p.size())));
        EXPECT_NEAR(std::accumulate(p.begin(), p.end(), 0.0), 1.0, 1e-14);
    }
}

TEST(PairwiseCoupling, AnErrorEqualToTheToleranceGoesOn) {
    EXPECT_FALSE(PairwiseCoupling::HasConverged(0.005 / 3, 3));
    EXPECT_TRUE(PairwiseCoupling::HasConverged(std::nextafter(0.005 / 3, 0.0), 3));
    EXPECT_FALSE(PairwiseCoupling::HasConverged(std::numeric_limits<double>::quiet_NaN(), 3));
}

TEST(PairwiseCoupling, BeginsNoFurtherIterationBehindANaN) {
    Matrix r = EvenPairs(3);
    r[0][1] = std::numeric_limits<double>::quiet_NaN();
    int asked = 0;
    PairwiseCoupling coupling;
    coupling.SetInterruption([&asked] { return ++asked > 1; });
    Values p;
    EXPECT_FALSE(coupling.Solve(r, p).IsError());
    EXPECT_EQ(asked, 1);
}

TEST(PairwiseCoupling, ACategoryThatNoPairCoversLeavesNoNumberAtAnyPlace) {
    for (std::size_t uncovered = 0; uncovered < 4; ++uncovered) {
        Matrix r = EvenPairs(4);
        for (std::size_t t = 0; t < 4; ++t)
            r[uncovered][t] = r[t][uncovered] = 0.0;
        Values p;
        EXPECT_FALSE(PairwiseCoupling().Solve(r, p).IsError());
        ASSERT_EQ(p.size(), 4u);
        for (const double probability : p)
            EXPECT_TRUE(std::isnan(probability)) << uncovered;
    }
}

TEST(PairwiseCoupling, APairThatIsNaNLeavesNoNumberAtAnyPlace) {
    Matrix r = EvenPairs(3);
    r[0][1] = r[1][0] = std::numeric_limits<double>::quiet_NaN();
    Values p;
    EXPECT_FALSE(PairwiseCoupling().Solve(r, p).IsError());
    for (const double probability : p)
        EXPECT_TRUE(std::isnan(probability));
}

TEST(PairwiseCoupling, OfNothingIsNothing) {
    Values p = {0.5};
    EXPECT_FALSE(PairwiseCoupling().Solve({}, p).IsError());
    EXPECT_TRUE(p.empty());
}

}  // namespace
}  // namespace KwBrevix_930
