// Models in the dialects of exporters, scored by the command, against their trainers or an evaluator of another make.
#include <cmath>
#include <filesystem>
#include <optional>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "host/number_text.h"
#include "tests/cli/Command.h"
#include "tests/scoring/exporter_models.h"
#include "tests/support/csv_table.h"

namespace {

using test_support::CommandTest;
using test_support::CsvTable;
using test_support::ReadCsv;
using test_support::runBrevix;

// In units of the column's scale: the same terms are summed in another order at most.
constexpr double kTolerance = 1e-12;

/// Scales are units, decisions are not among the command's columns.
bool isCompared(const std::string& column) {
    return !column.starts_with("scale_") && !column.starts_with("decision_");
}

std::optional<double> numberOf(const CsvTable& table, std::size_t row, const std::string& column) {
    if (!table.HasColumn(column))
        return std::nullopt;
    return KwBrevix_930::ParseNumber(table.rows[row][table.Column(column)]);
}

std::string describe(const CsvTable& cases, std::size_t row) {
    std::string text;
    for (std::size_t i = 0; i < cases.header.size(); ++i)
        text += " " + cases.header[i] + "=" + cases.rows[row][i];
    return text;
}

/// Texts must be equal; numbers lie within the tolerance of the column's scale, or of the number itself.
bool agrees(const CsvTable& result, const CsvTable& expected, std::size_t row, const std::string& column) {
    if (result.rows[row][result.Column(column)] == expected.rows[row][expected.Column(column)])
        return true;
    const auto got = numberOf(result, row, column);
    const auto wanted = numberOf(expected, row, column);
    if (!got || !wanted)
        return false;
    const double scale = numberOf(expected, row, "scale_" + column).value_or(std::fabs(*wanted));
    return std::fabs(*got - *wanted) <= kTolerance * scale;
}

class ExporterModel : public CommandTest, public testing::WithParamInterface<const char*> {};

TEST_P(ExporterModel, ScoresEveryRowAsItsTableExpects) {
    const std::string folder = exporter_models::FolderOf(GetParam());
    const auto run = runBrevix({"score", folder + "/model.pmml", folder + "/cases.csv", "-o", path("out.csv")});
    ASSERT_EQ(run.exitCode, 0) << run.err;
    const CsvTable result = ReadCsv(path("out.csv"));
    const CsvTable expected = ReadCsv(folder + "/expected.csv");
    const CsvTable cases = ReadCsv(folder + "/cases.csv");
    ASSERT_GE(expected.rows.size(), 20u);
    ASSERT_EQ(result.rows.size(), expected.rows.size());
    for (const std::string& column : expected.header) {
        if (!isCompared(column))
            continue;
        ASSERT_TRUE(result.HasColumn(column)) << GetParam() << " has no column " << column;
        for (std::size_t row = 0; row < expected.rows.size(); ++row) {
            EXPECT_TRUE(agrees(result, expected, row, column))
                << GetParam() << " row " << row + 1 << ", " << column << ": " << result.rows[row][result.Column(column)]
                << " instead of " << expected.rows[row][expected.Column(column)] << "; input" << describe(cases, row);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, ExporterModel, testing::ValuesIn(exporter_models::kAll),
                         [](const auto& model) { return std::string(model.param); });

TEST(ExporterModels, AreAllNamedInTheList) {
    const std::set<std::string> listed(std::begin(exporter_models::kAll), std::end(exporter_models::kAll));
    for (const auto& entry : std::filesystem::directory_iterator(exporter_models::FolderOf(""))) {
        const std::string name = entry.path().filename().string();
        if (std::filesystem::exists(entry.path() / "model.pmml")) {
            EXPECT_TRUE(listed.contains(name)) << name;
        }
    }
}

class VerifiedModel : public CommandTest, public testing::WithParamInterface<const char*> {};

TEST_P(VerifiedModel, GivesWhatItsOwnRecordsSay) {
    const auto run = runBrevix({"verify", exporter_models::FolderOf(GetParam()) + "/model.pmml"});
    EXPECT_EQ(run.exitCode, 0) << run.out << run.err;
}

INSTANTIATE_TEST_SUITE_P(All, VerifiedModel, testing::Values("verified_classes", "verified_numbers"),
                         [](const auto& model) { return std::string(model.param); });

}  // namespace
