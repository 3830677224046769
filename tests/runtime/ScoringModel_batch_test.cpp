// Cases that are scored in one call against the same cases one by one, and what a plug-in may answer to them.
#include <atomic>
#include <random>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/number_text.h"
#include "runtime/PlainCases.h"
#include "runtime/ScoringModel.h"
#include "runtime/platform/libraries.h"
#include "tests/runtime/SmallDocument.h"
#include "tests/runtime/opened_model.h"
#include "tests/runtime/scored_text.h"
#include "tests/runtime/wrapping_plugin.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/random_document.h"

namespace {

using brevix::Outcome;
using brevix::Record;
using brevix::ScoringModel;
using KwBrevix_930::test_support::RandomDocument;
using random_models::Generator;
using test_support::scoreText;
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

// Records of a random document's fields. Every record is drawn from a seed of its own, so that it can be drawn again.
void fill(Record& record, std::uint64_t seed) {
    Generator random(seed);
    record.clear();
    for (const char* name : {"x1", "x2"}) {
        if (random.IsTrue(0.02))
            record.setText(name, "junk");
        else if (!random.IsTrue(0.05))
            record.setNumber(name, random.Real(-2.0, 2.0));
    }
    const char* colors[] = {"red", "blue", "green", "pink"};
    if (!random.IsTrue(0.03))
        record.setText("color", colors[random.UpTo(random.IsTrue(0.1) ? 3 : 2)]);
}

// Output and Targets of a random document.
std::string drawRules(const RandomDocument& document, Generator& random) {
    std::string text;
    if (random.IsTrue(0.6)) {
        text +=
            R"(<Output><OutputField name="said" feature="predictedValue" dataType="string" optype="categorical"/>)"
            R"(<OutputField name="doubled" feature="transformedValue" dataType="double" optype="continuous">)"
            R"(<Apply function="*"><FieldRef field="x1"/><Constant dataType="double">2</Constant></Apply></OutputField>)"
            "</Output>";
    }
    if (document.IsRegression() && random.IsTrue(0.6))
        text +=
            R"(<Targets><Target field="y" rescaleFactor="2.5" rescaleConstant="-0.75"><TargetValue defaultValue="7.5"/>)"
            "</Target></Targets>";
    return text;
}

brevix::ModelOptions drawOptions(Generator& random) {
    brevix::ModelOptions options;
    options.plugin = BREVIX_PLUGIN;
    options.predictsOnly = random.IsTrue(0.2);
    options.missingPolicy = static_cast<brevix::MissingPolicy>(random.UpTo(2));
    return options;
}

TEST(ScoringModelBatch, OfRandomDocumentsGivesWhatEachRecordGivesAlone) {
    Generator random(902);
    std::size_t succeeded = 0;
    std::size_t cases = 0;
    for (int round = 0; round < 100 && !testing::Test::HasFailure(); ++round) {
        RandomDocument document(random);
        const std::string text = document.MakeText(drawRules(document, random));
        SCOPED_TRACE(text);
        const auto model = ScoringModel::openText(text, drawOptions(random));
        constexpr std::size_t kCounts[] = {0, 1, 7, 8, 9, 63, 64, 65, 200};
        const std::size_t count = kCounts[random.UpTo(std::size(kCounts) - 1)];
        std::vector<Record> records;
        for (std::size_t i = 0; i < count; ++i)
            records.push_back(model->makeRecord());
        std::vector<Outcome> outcomes(count);
        for (std::uint64_t turn = 0; turn < 2; ++turn) {
            for (std::size_t i = 0; i < count; ++i)
                fill(records[i], 300 * turn + i);
            model->score(records, outcomes);
            for (std::size_t i = 0; i < count; ++i) {
                Record record = model->makeRecord();
                fill(record, 300 * turn + i);
                Outcome alone;
                model->score(record, alone);
                ASSERT_EQ(describe(*model, outcomes[i]), describe(*model, alone)) << i << " of " << count;
                succeeded += alone.status == 0 ? 1 : 0;
            }
            cases += count;
        }
    }
    EXPECT_GE(cases, 5'000u);
    EXPECT_GE(succeeded, cases / 2);
}

// The test's plug-in, held as long as the test runs.
class WrappingPluginTest : public testing::Test {
protected:
    void SetUp() override {
        std::string fault;
        fHandle = brevix::platform::loadLibrary(BREVIX_WRAPPING_PLUGIN, fault);
        ASSERT_NE(fHandle, nullptr) << fault;
        const auto get =
            reinterpret_cast<decltype(&GetWrappingPlugin)>(brevix::platform::findSymbol(fHandle, "GetWrappingPlugin"));
        ASSERT_NE(get, nullptr);
        plugin = get();
        *plugin = {};
    }
    void TearDown() override {
        if (fHandle)
            brevix::platform::freeLibrary(fHandle);
    }

    static std::unique_ptr<ScoringModel> open() {
        brevix::ModelOptions options;
        options.plugin = BREVIX_WRAPPING_PLUGIN;
        return ScoringModel::openText(SmallDocument().makeText(), options);
    }

    test_support::WrappingPlugin* plugin = nullptr;
    test_support::TemporaryFolder fFolder;

private:
    void* fHandle = nullptr;
};

TEST_F(WrappingPluginTest, RecordsAreScoredTogetherWhereThePluginOffersIt) {
    const auto model = open();
    plugin->singleCalls = 0;
    expectTheSame(*model);
    EXPECT_GT(plugin->casesInBatches, 0u);
    // Those that stand beside, one by one.
    EXPECT_EQ(plugin->singleCalls, plugin->casesInBatches);
    EXPECT_LE(plugin->batchCalls, plugin->casesInBatches / 32);
}

TEST_F(WrappingPluginTest, RecordsAreScoredOneByOneWhereItDoesNot) {
    plugin->offersBatches = false;
    const auto model = open();
    plugin->singleCalls = 0;
    expectTheSame(*model);
    EXPECT_EQ(plugin->batchCalls, 0u);
    EXPECT_EQ(plugin->singleCalls, 2u * 2u * (0 + 1 + 5 + 64 + 65 + 150));
}

TEST_F(WrappingPluginTest, PlainNumbersRefusedAfterAllAreAnError) {
    const auto model = open();
    const auto cases = model->makePlainCases();
    ASSERT_TRUE(cases);
    for (std::size_t input = 0; input < 2; ++input)
        *cases->getNumbers(input) = 0.5;
    model->score(*cases, 1);
    EXPECT_FALSE(cases->hasFailed(0));
    plugin->refusesNumbers = true;
    try {
        model->score(*cases, 1);
        FAIL();
    } catch (const brevix::Error& fault) {
        EXPECT_STREQ(fault.what(), "the plug-in refuses plain numbers that it said it takes");
    }
}

TEST_F(WrappingPluginTest, RowsOfATableAreScoredTogether) {
    const auto model = open();
    plugin->singleCalls = 0;
    std::string table = "x,y\n";
    for (int i = 0; i < 1000; ++i)
        table += i % 50 == 7 ? ",1\n" : "0.5," + std::to_string(i) + ".25\n";
    const auto scored = scoreText(*model, table, fFolder.pathOf("result.csv"), {.threadCount = 1});
    EXPECT_EQ(scored.tally.rowCount, 1000u);
    EXPECT_EQ(plugin->singleCalls, 0u);
    EXPECT_EQ(plugin->casesInBatches, 1000u);
}

TEST_F(WrappingPluginTest, RowsThatFailAsPlainNumbersHaveTheirStatusAndNothingElse) {
    const auto model = open();
    ASSERT_TRUE(model->makePlainCases());
    plugin->failsEach = 7;
    plugin->casesInBatches = 0;
    std::string table = "x,y\n";
    std::string expected = "predicted_hue,confidence,probability_red,probability_blue,status\n";
    for (int i = 1; i <= 300; ++i) {
        table += i % 2 == 0 ? "0.5,0.25\n" : "-0.5,0.25\n";
        expected += i % 7 == 0 ? ",,,,4711\n" : i % 2 == 0 ? "blue,,,,0\n" : "red,,,,0\n";
    }
    const auto scored = scoreText(*model, table, fFolder.pathOf("result.csv"), {.threadCount = 1});
    EXPECT_EQ(scored.text, expected);
    EXPECT_EQ(scored.tally.rowCount, 300u);
    EXPECT_THAT(scored.tally.rowCountByStatus,
                testing::UnorderedElementsAre(testing::Pair(0, 258u), testing::Pair(4711, 42u)));
    EXPECT_EQ(plugin->casesInBatches, 300u);
}

TEST(ScoringModelBatch, ManyThreadsScoreWithOneModel) {
    constexpr std::size_t kRecords = 130;
    constexpr std::size_t kThreads = 8;
    Generator random(903);
    for (int round = 0; round < 4; ++round) {
        RandomDocument document(random);
        const auto model = ScoringModel::openText(document.MakeText(drawRules(document, random)), drawOptions(random));
        std::vector<std::string> expected;
        for (std::size_t i = 0; i < kRecords + kThreads; ++i) {
            Record record = model->makeRecord();
            fill(record, i);
            Outcome alone;
            model->score(record, alone);
            expected.push_back(describe(*model, alone));
        }
        std::atomic<int> differences{0};
        std::vector<std::jthread> threads;
        for (std::size_t thread = 0; thread < kThreads; ++thread) {
            threads.emplace_back([&, thread] {
                std::vector<Record> records;
                for (std::size_t i = 0; i < kRecords; ++i)
                    fill(records.emplace_back(model->makeRecord()), thread + i);
                std::vector<Outcome> outcomes(kRecords);
                for (int turn = 0; turn < 5; ++turn) {
                    model->score(records, outcomes);
                    for (std::size_t i = 0; i < kRecords; ++i)
                        differences += describe(*model, outcomes[i]) == expected[thread + i] ? 0 : 1;
                }
            });
        }
        threads.clear();
        EXPECT_EQ(differences, 0);
    }
}

}  // namespace
