// The decision value of every machine of the exporters' models: predictions show no more than its sign.
#include <memory>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "host/CaseRecord.h"
#include "host/number_text.h"
#include "plugin/SVMTranslator.h"
#include "runtime/ModelDocument.h"
#include "runtime/PreparedDocument.h"
#include "tests/scoring/exporter_models.h"
#include "tests/support/SVMModelTestAccess.h"
#include "tests/support/csv_table.h"

namespace KwBrevix_930 {
namespace {

// The same terms, in another order at most.
constexpr double kTolerance = 1e-12;

class ExporterDecisions : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        const auto prepared = brevix::PreparedDocument::openFile(fFolder + "/model.pmml", true);
        SVMTranslator translator;
        fModel.reset(
            dynamic_cast<SVMModel*>(translator.ParseFromTree(&prepared.document->getDocument(), std::string())));
        ASSERT_TRUE(fModel);
        fRecord = std::make_unique<CaseRecord>(*fModel->GetDictionary());
    }

    void Fill(std::size_t row) {
        fRecord->Clear();
        for (std::size_t i = 0; i < fCases.header.size(); ++i) {
            const int index = fRecord->GetIndex(fCases.header[i]);
            if (index >= 0 && !fCases.rows[row][i].empty())
                fRecord->SetText(index, fCases.rows[row][i]);
        }
    }

    const std::string& Cell(std::size_t row, const std::string& column) const {
        return fExpected.rows[row][fExpected.Column(column)];
    }

    double Expected(std::size_t row, const std::string& column) const { return ParseNumber(Cell(row, column)).value(); }

    std::string fFolder = exporter_models::FolderOf(GetParam());
    test_support::CsvTable fCases = test_support::ReadCsv(fFolder + "/cases.csv");
    test_support::CsvTable fExpected = test_support::ReadCsv(fFolder + "/expected.csv");
    std::unique_ptr<SVMModel> fModel;
    std::unique_ptr<CaseRecord> fRecord;
};

TEST_P(ExporterDecisions, AreThoseOfTheTable) {
    SVMModelTestAccess access(*fModel);
    const std::size_t machines = access.Data()->GetMachines().size();
    ASSERT_TRUE(fExpected.HasColumn("decision_" + std::to_string(machines)));
    ASSERT_FALSE(fExpected.HasColumn("decision_" + std::to_string(machines + 1)));
    for (std::size_t row = 0; row < fCases.rows.size(); ++row) {
        if (Expected(row, "status") != 0.0)
            continue;
        Fill(row);
        access.SetUpDictVarIndex(fRecord.get(), false);
        ScoreResult* result = nullptr;
        bool isComplete = false;
        SVMModelTestAccess::Indices indices;
        SVMModelTestAccess::Values values;
        // A row whose result is the target's default has no decision.
        const bool hasDecision = !Cell(row, "decision_1").empty();
        ASSERT_NE(access.FillCaseRecord(result, fRecord.get(), isComplete, indices, values).IsError(), hasDecision);
        if (!hasDecision)
            continue;
        for (std::size_t machine = 0; machine < machines; ++machine) {
            const std::string number = std::to_string(machine + 1);
            double decision = 0.0;
            access.ScoreByKernel(indices, values, static_cast<std::int32_t>(machine), decision);
            EXPECT_NEAR(decision, Expected(row, "decision_" + number), kTolerance * Expected(row, "scale_" + number))
                << GetParam() << " row " << row + 1 << ", machine " << number;
        }
    }
}

/// All but those whose two machines for two categories are read as one.
std::vector<const char*> ModelsReadAsWritten() {
    std::vector<const char*> models;
    for (const std::string_view model : exporter_models::kAll) {
        if (!model.starts_with("knime_"))
            models.push_back(model.data());
    }
    return models;
}

INSTANTIATE_TEST_SUITE_P(All, ExporterDecisions, testing::ValuesIn(ModelsReadAsWritten()),
                         [](const auto& model) { return std::string(model.param); });

}  // namespace
}  // namespace KwBrevix_930
