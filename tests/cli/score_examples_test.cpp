// brevix score on the example models: the trainer's own predictions, row by row, and the same tables on every platform.
#include <cmath>
#include <limits>

#include <gmock/gmock.h>

#include "tests/cli/Command.h"
#include "tests/support/csv_table.h"

namespace {

using test_support::CommandTest;
using test_support::CsvTable;
using test_support::runBrevix;

class ExampleTest : public CommandTest {
protected:
    // Scores an example's cases with its model.
    CsvTable scoreExample(const std::string& name) {
        const std::string folder = example(name);
        const auto run = runBrevix({"score", folder + "/model.pmml", folder + "/cases.csv", "-o", path("out.csv")});
        EXPECT_EQ(run.exitCode, 0) << run.err;
        EXPECT_EQ(run.out, "");
        return test_support::ReadCsv(path("out.csv"));
    }

    static CsvTable expectedTable(const std::string& name) {
        return test_support::ReadCsv(example(name) + "/expected.csv");
    }
};

class ScoreExample : public ExampleTest, public testing::WithParamInterface<const char*> {
protected:
    static std::string predictedColumn(const CsvTable& table) {
        for (const std::string& name : table.header) {
            if (name.starts_with("predicted_"))
                return name;
        }
        return "";
    }

    void compare(const CsvTable& result, std::size_t row, const std::string& column, const CsvTable& expected,
                 const std::string& expectedColumn, double tolerance) {
        const std::string& cell = result.rows[row][result.Column(column)];
        const std::string& wanted = expected.rows[row][expected.Column(expectedColumn)];
        EXPECT_NEAR(std::stod(cell), std::stod(wanted), tolerance) << "row " << row << ", " << column;
    }
};

TEST_P(ScoreExample, GivesThePredictionsOfItsTrainer) {
    const CsvTable result = scoreExample(GetParam());
    const CsvTable expected = expectedTable(GetParam());
    ASSERT_EQ(result.rows.size(), expected.rows.size());
    const bool isRegression = result.HasColumn("stddev");
    for (std::size_t row = 0; row < expected.rows.size(); ++row) {
        EXPECT_EQ(result.rows[row][result.Column("status")], "0");
        if (isRegression) {
            const double scale = std::stod(expected.rows[row][expected.Column("scale_1")]);
            compare(result, row, predictedColumn(result), expected, "predicted", 1e-12 * scale);
            compare(result, row, "stddev", expected, "stddev", 0.0);
        } else {
            EXPECT_EQ(result.rows[row][result.Column(predictedColumn(result))],
                      expected.rows[row][expected.Column("predicted")])
                << "row " << row;
        }
        for (const std::string& column : expected.header) {
            if (column.starts_with("probability_"))
                compare(result, row, column, expected, column, 1e-12);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, ScoreExample,
                         testing::Values("iris", "iris_one_against_all", "breast_cancer", "breast_cancer_probability",
                                         "digits", "wine_probability", "wine_binned", "diabetes"),
                         [](const auto& one) { return std::string(one.param); });

// The tables of tests/cli/golden were written on Linux, each by brevix score MODEL cases.csv -o EXAMPLE.csv. What exp,
// pow and tanh of another platform may change in them is derived in docs/windows.md.
struct Table {
    const char* example;
    /// |A| of probabilities 1 / (1 + exp(A f + B)).
    double slope;
    /// Of probabilities that coupling makes of more than two categories, which nothing bounds but experience.
    double coupling;

    friend void PrintTo(const Table& table, std::ostream* stream) { *stream << table.example; }
};

constexpr double kDecisionError = 5.9e-14;  // of the scale, for the largest machine
constexpr double kSigmoidError = 5.0 * std::numeric_limits<double>::epsilon();

class ScoredTable : public ExampleTest, public testing::WithParamInterface<Table> {
protected:
    // The difference that a cell may have. Votes are counted: their shares are the same.
    static double tolerance(const std::string& column, double scale) {
        const Table& table = GetParam();
        if (column.starts_with("predicted_") || column.starts_with("ci_"))
            return kDecisionError * scale;
        if (column == "stddev" || table.slope == 0.0)
            return table.coupling;
        return table.slope / 4.0 * kDecisionError * scale + kSigmoidError;
    }
};

TEST_P(ScoredTable, IsTheSameOnEveryPlatform) {
    const std::string name = GetParam().example;
    const CsvTable result = scoreExample(name);
    const CsvTable expected = expectedTable(name);
    const CsvTable golden = test_support::ReadCsv(BREVIX_SOURCE_DIR "/tests/cli/golden/" + name + ".csv");
    ASSERT_EQ(result.header, golden.header);
    ASSERT_EQ(result.rows.size(), golden.rows.size());
    const bool isRegression = result.HasColumn("stddev");
    for (std::size_t row = 0; row < golden.rows.size(); ++row) {
        const double scale = std::stod(expected.rows[row][expected.Column("scale_1")]);
        for (std::size_t i = 0; i < golden.header.size(); ++i) {
            const std::string& column = golden.header[i];
            const std::string& cell = result.rows[row][i];
            const std::string& wanted = golden.rows[row][i];
            if (cell.empty() || column == "status" || (!isRegression && column.starts_with("predicted_")))
                EXPECT_EQ(cell, wanted) << "row " << row << ", " << column;
            else
                EXPECT_NEAR(std::stod(cell), std::stod(wanted), tolerance(column, scale))
                    << "row " << row << ", " << column;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, ScoredTable,
                         testing::Values(Table{"iris", 0.0, 0.0}, Table{"iris_one_against_all", 0.0, 0.0},
                                         Table{"breast_cancer", 0.0, 0.0},
                                         Table{"breast_cancer_probability", 2.217, 0.0}, Table{"digits", 0.0, 0.0},
                                         Table{"wine_probability", 0.0, 1e-12}, Table{"wine_binned", 0.0, 0.0},
                                         Table{"diabetes", 0.0, 0.0}),
                         [](const auto& one) { return std::string(one.param.example); });

}  // namespace
