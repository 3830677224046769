// Records that are scored in one call against the same records one by one.
#include <cstring>
#include <random>

#include <gtest/gtest.h>

#include "host/number_text.h"
#include "runtime/ScoringModel.h"
#include "tests/runtime/SmallDocument.h"
#include "tests/runtime/opened_model.h"

namespace {

using brevix::Outcome;
using brevix::Record;
using brevix::ScoringModel;
using test_support::SmallDocument;

// Every output column; a number as its shortest text, which tells its bits.
std::string describe(const ScoringModel& model, const Outcome& outcome) {
    std::string text;
    for (const auto& column : model.getOutputColumns()) {
        const auto value = model.getValue(outcome, column);
        if (value.kind == brevix::OutputValue::kNumber)
            text += KwBrevix_930::NumberText(value.number);
        text += value.text + '|';
    }
    return text;
}

// Records with numbers, of which some are missing and some are no numbers.
std::vector<Record> drawRecords(const ScoringModel& model, std::size_t count, std::uint64_t seed) {
    std::mt19937_64 engine(seed);
    std::normal_distribution<double> number(2.0, 3.0);
    std::vector<Record> records;
    for (std::size_t i = 0; i < count; ++i) {
        Record& record = records.emplace_back(model.makeRecord());
        for (std::size_t input = 0; input < model.getInputs().size(); ++input)
            record.setNumber(input, number(engine));
        if (i % 7 == 3)
            record.setMissing(i % model.getInputs().size());
        if (i % 9 == 5)
            record.setText(i % model.getInputs().size(), "nonsense");
    }
    return records;
}

void expectTheSame(const ScoringModel& model) {
    // Twice: the second time the records bring the results of the first.
    for (const std::size_t count : {0U, 1U, 5U, 64U, 65U, 150U}) {
        const auto records = drawRecords(model, count, 901);
        for (int round = 0; round < 2; ++round) {
            std::vector<Outcome> outcomes(count + 1);
            outcomes.back().status = 4711;
            model.score(records, outcomes);
            EXPECT_EQ(outcomes.back().status, 4711);
            for (std::size_t i = 0; i < count; ++i) {
                Outcome alone;
                const auto twins = drawRecords(model, i + 1, 901);
                model.score(twins[i], alone);
                ASSERT_EQ(describe(model, outcomes[i]), describe(model, alone)) << i << " of " << count;
            }
        }
    }
}

TEST(ScoringModelBatch, OfCategoriesGivesWhatEachRecordGivesAlone) {
    expectTheSame(*test_support::openText(SmallDocument().makeText()));
}

TEST(ScoringModelBatch, OfNumbersGivesWhatEachRecordGivesAlone) {
    expectTheSame(*test_support::openText(SmallDocument::regression().makeText()));
}

TEST(ScoringModelBatch, OfExamplesGivesWhatEachRecordGivesAlone) {
    for (const std::string name : {"iris", "iris_one_against_all", "wine_probability", "diabetes"}) {
        SCOPED_TRACE(name);
        brevix::ModelOptions options;
        options.plugin = BREVIX_PLUGIN;
        expectTheSame(*ScoringModel::openFile(BREVIX_SOURCE_DIR "/examples/" + name + "/model.pmml", options));
    }
}

TEST(ScoringModelBatch, ARecordThatFailedGivesTheNextValueAnew) {
    const auto model = test_support::openText(SmallDocument().makeText());
    std::vector<Record> records;
    records.push_back(model->makeRecord());
    std::vector<Outcome> outcomes(1);
    for (const double x : {0.5, -3.25, 0.5}) {
        records[0].clear();
        model->score(records, outcomes);
        EXPECT_EQ(outcomes[0].status, brevix::kMissingInput);
        EXPECT_EQ(outcomes[0].category, -1);
        records[0].setNumber("x", x);
        records[0].setNumber("y", 0.25);
        model->score(records, outcomes);
        EXPECT_EQ(outcomes[0].status, 0);
        EXPECT_EQ(outcomes[0].category, 1.5 * x - 0.75 * 0.25 + 0.125 < 0.0 ? 0 : 1);
    }
}

}  // namespace
