// brevix score on the example models: the trainer's own predictions, row by row, and the same tables on every platform.
#include <cmath>

#include <gmock/gmock.h>

#include "tests/cli/Command.h"
#include "tests/support/csv_table.h"

namespace {

using test_support::CommandTest;
using test_support::CsvTable;
using test_support::runBrevix;

class ScoreExample : public CommandTest, public testing::WithParamInterface<const char*> {
protected:
    static std::string predictedColumn(const CsvTable& table) {
        for (const std::string& name : table.header) {
            if (name.starts_with("predicted_"))
                return name;
        }
        return "";
    }

    // Scores the example's cases with the example's model.
    CsvTable score() {
        const std::string folder = example(GetParam());
        const auto run = runBrevix({"score", folder + "/model.pmml", folder + "/cases.csv", "-o", path("out.csv")});
        EXPECT_EQ(run.exitCode, 0) << run.err;
        EXPECT_EQ(run.out, "");
        return test_support::ReadCsv(path("out.csv"));
    }

    CsvTable expectedTable() { return test_support::ReadCsv(example(GetParam()) + "/expected.csv"); }

    void compare(const CsvTable& result, std::size_t row, const std::string& column, const CsvTable& expected,
                 const std::string& expectedColumn, double tolerance) {
        const std::string& cell = result.rows[row][result.Column(column)];
        const std::string& wanted = expected.rows[row][expected.Column(expectedColumn)];
        EXPECT_NEAR(std::stod(cell), std::stod(wanted), tolerance) << "row " << row << ", " << column;
    }
};

TEST_P(ScoreExample, GivesThePredictionsOfItsTrainer) {
    const CsvTable result = score();
    const CsvTable expected = expectedTable();
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

// The tables of tests/cli/golden were written on Linux. What exp, pow and tanh of another platform may change in them
// is derived in docs/windows.md.
class ScoredTable : public ScoreExample {};

TEST_P(ScoredTable, IsTheSameOnEveryPlatform) {
    const CsvTable result = score();
    const CsvTable expected = expectedTable();
    const CsvTable golden =
        test_support::ReadCsv(BREVIX_SOURCE_DIR "/tests/cli/golden/" + std::string(GetParam()) + ".csv");
    ASSERT_EQ(result.header, golden.header);
    ASSERT_EQ(result.rows.size(), golden.rows.size());
    const bool isRegression = result.HasColumn("stddev");
    for (std::size_t row = 0; row < golden.rows.size(); ++row) {
        const double scale = isRegression ? std::stod(expected.rows[row][expected.Column("scale_1")]) : 1.0;
        for (std::size_t column = 0; column < golden.header.size(); ++column) {
            const std::string& name = golden.header[column];
            const std::string& cell = result.rows[row][column];
            const std::string& wanted = golden.rows[row][column];
            if (cell.empty() || name == "status" || (!isRegression && name.starts_with("predicted_")))
                EXPECT_EQ(cell, wanted) << "row " << row << ", " << name;
            else
                EXPECT_NEAR(std::stod(cell), std::stod(wanted), 1e-12 * scale) << "row " << row << ", " << name;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, ScoredTable,
                         testing::Values("iris", "iris_one_against_all", "breast_cancer", "breast_cancer_probability",
                                         "wine_probability", "wine_binned", "diabetes"),
                         [](const auto& one) { return std::string(one.param); });

}  // namespace
