// brevix score on the example models: the trainer's own predictions, row by row.
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

    void compare(const CsvTable& result, std::size_t row, const std::string& column, const CsvTable& expected,
                 const std::string& expectedColumn, double tolerance) {
        const std::string& cell = result.rows[row][result.Column(column)];
        const std::string& wanted = expected.rows[row][expected.Column(expectedColumn)];
        EXPECT_NEAR(std::stod(cell), std::stod(wanted), tolerance) << "row " << row << ", " << column;
    }
};

TEST_P(ScoreExample, GivesThePredictionsOfItsTrainer) {
    const std::string folder = example(GetParam());
    const auto run = runBrevix({"score", folder + "/model.pmml", folder + "/cases.csv", "-o", path("out.csv")});
    ASSERT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(run.out, "");
    const CsvTable result = test_support::ReadCsv(path("out.csv"));
    const CsvTable expected = test_support::ReadCsv(folder + "/expected.csv");
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

}  // namespace
