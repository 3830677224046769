// The example models against their trainers' own predictions, decision values and probabilities, row by row.
#include <cmath>
#include <fstream>
#include <memory>
#include <optional>

#include <gtest/gtest.h>

#include "host/CaseRecord.h"
#include "host/ScoreClsResult.h"
#include "host/ScoreDictVar.h"
#include "host/ScoreRegResult.h"
#include "host/number_text.h"
#include "plugin/SVMTranslator.h"
#include "tests/support/SVMModelTestAccess.h"
#include "tests/support/csv_table.h"

namespace KwBrevix_930 {
namespace {

// The trainers sum the same terms, in another order at most.
constexpr double kDecisionTolerance = 1e-12;

// The trainer's coupling visits the same points; only rounding differs.
constexpr double kProbabilityTolerance = 1e-12;

struct Example {
    explicit Example(const std::string& name)
        : folder(std::string(BREVIX_SOURCE_DIR) + "/examples/" + name),
          cases(test_support::ReadCsv(folder + "/cases.csv")),
          expected(test_support::ReadCsv(folder + "/expected.csv")) {
        std::ifstream document(folder + "/model.pmml");
        SVMTranslator translator;
        model.reset(dynamic_cast<SVMModel*>(translator.ParseFromTree(document, std::string())));
        record = std::make_unique<CaseRecord>(*model->GetDictionary());
    }

    void Fill(std::size_t row) {
        record->Clear();
        for (std::size_t i = 0; i < cases.header.size(); ++i) {
            const int index = record->GetIndex(cases.header[i]);
            if (index >= 0)
                record->SetText(index, cases.rows[row][i]);
        }
    }

    double Expected(std::size_t row, const std::string& column) const {
        return ParseNumber(expected.rows[row][expected.Column(column)]).value();
    }

    std::string folder;
    test_support::CsvTable cases;
    test_support::CsvTable expected;
    std::unique_ptr<SVMModel> model;
    std::unique_ptr<CaseRecord> record;
};

class ExampleModels : public testing::TestWithParam<const char*> {};

TEST_P(ExampleModels, EveryDecisionValueIsTheTrainersOwn) {
    Example example(GetParam());
    ASSERT_EQ(example.cases.rows.size(), example.expected.rows.size());
    ASSERT_GE(example.cases.rows.size(), 100u);
    SVMModelTestAccess access(*example.model);
    for (std::size_t row = 0; row < example.cases.rows.size(); ++row) {
        example.Fill(row);
        access.SetUpDictVarIndex(example.record.get(), false);
        ScoreResult* result = nullptr;
        bool isComplete = false;
        SVMModelTestAccess::Indices indices;
        SVMModelTestAccess::Values values;
        ASSERT_FALSE(access.FillCaseRecord(result, example.record.get(), isComplete, indices, values).IsError());
        ASSERT_TRUE(isComplete);
        for (std::size_t machine = 0; machine < access.Data()->GetMachines().size(); ++machine) {
            const std::string suffix = "_" + std::to_string(machine + 1);
            double decision = 0.0;
            access.ScoreByKernel(indices, values, static_cast<std::int32_t>(machine), decision);
            ASSERT_NEAR(decision, example.Expected(row, "decision" + suffix),
                        kDecisionTolerance * example.Expected(row, "scale" + suffix))
                << example.folder << ", row " << row + 1 << ", machine " << machine + 1;
        }
    }
}

TEST_P(ExampleModels, EveryPredictionIsTheTrainersOwn) {
    Example example(GetParam());
    const std::size_t predicted = example.expected.Column("predicted");
    ScoreResult* result = nullptr;
    for (std::size_t row = 0; row < example.cases.rows.size(); ++row) {
        example.Fill(row);
        ASSERT_FALSE(example.model->GetScore(example.record.get(), result, false).IsError());
        if (const auto* regression = dynamic_cast<const ScoreRegResult*>(result)) {
            ASSERT_NEAR(regression->GetPrediction()->GetDouble(), example.Expected(row, "predicted"),
                        kDecisionTolerance * example.Expected(row, "scale_1"))
                << example.folder << ", row " << row + 1;
            ASSERT_EQ(regression->GetStdDev(), example.Expected(row, "stddev"));
        } else {
            ASSERT_EQ(result->GetPrediction()->GetString(), example.expected.rows[row][predicted])
                << example.folder << ", row " << row + 1;
        }
    }
    delete result;
}

INSTANTIATE_TEST_SUITE_P(All, ExampleModels,
                         testing::Values("iris", "iris_one_against_all", "breast_cancer", "breast_cancer_probability",
                                         "digits", "diabetes", "wine_probability", "wine_binned"),
                         [](const auto& example) { return std::string(example.param); });

class ProbabilityModels : public testing::TestWithParam<const char*> {};

TEST_P(ProbabilityModels, EveryProbabilityIsTheTrainersOwn) {
    Example example(GetParam());
    ScoreResult* result = nullptr;
    for (std::size_t row = 0; row < example.cases.rows.size(); ++row) {
        example.Fill(row);
        ASSERT_FALSE(example.model->GetScore(example.record.get(), result, false).IsError());
        const auto& categories = dynamic_cast<const ScoreClsResult&>(*result).GetAllValuePercent();
        ASSERT_EQ(categories.size(), example.model->GetTargetCategories().size());
        double largest = 0.0;
        for (const auto& [category, probability] : categories) {
            ASSERT_NEAR(probability, example.Expected(row, "probability_" + category->GetString()),
                        kProbabilityTolerance)
                << example.folder << ", row " << row + 1 << ", category " << category->GetString();
            largest = std::fmax(largest, probability);
        }
        ASSERT_EQ(result->GetConfidence(), largest);
    }
    delete result;
}

INSTANTIATE_TEST_SUITE_P(All, ProbabilityModels, testing::Values("wine_probability", "breast_cancer_probability"),
                         [](const auto& example) { return std::string(example.param); });

}  // namespace
}  // namespace KwBrevix_930
