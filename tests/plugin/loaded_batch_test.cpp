// Many cases in one call of a model of the built library, loaded at run time: reached as a host reaches it, and with
// the answers of scoring one by one.
#include <gtest/gtest.h>

#include "host/CaseRecord.h"
#include "host/IBatchModel.h"
#include "host/ScoreDictionary.h"
#include "runtime/PluginLibrary.h"
#include "tests/support/random_document.h"
#include "tests/support/score_answers.h"
#include "tests/support/svm_document.h"

namespace KwBrevix_930 {
namespace {

using random_models::Generator;
using test_support::Answers;
using test_support::RandomDocument;
using test_support::Records;
using test_support::Results;

class LoadedBatch : public testing::Test {
protected:
    std::unique_ptr<ScoreModel> Load(const std::string& text) const {
        return std::unique_ptr<ScoreModel>(library.makeTranslator()->ParseFromTree(text, std::string()));
    }

    const brevix::PluginLibrary library{BREVIX_SVM_FILE};
};

TEST_F(LoadedBatch, IsReachedFromTheModelByItsInterface) {
    for (const auto& document : {test_support::TwoCategories(), test_support::Regression()}) {
        const auto model = Load(document.Text());
        ASSERT_NE(model, nullptr);
        auto* batch = dynamic_cast<IBatchModel*>(model.get());
        ASSERT_NE(batch, nullptr);
        // And the way back.
        EXPECT_EQ(dynamic_cast<ScoreModel*>(batch), model.get());
    }
}

// The cases of one model; models of the same document get equal ones.
struct Cases {
    Cases(const ScoreModel& model, std::size_t count, std::uint64_t seed) {
        Generator random(seed);
        for (std::size_t i = 0; i < count; ++i) {
            const auto access = random.IsTrue(0.2) ? CaseRecord::kByName : CaseRecord::kByIndex;
            auto& record = *owned.emplace_back(std::make_unique<CaseRecord>(*model.GetDictionary(), access));
            for (const char* name : {"x1", "x2"}) {
                if (random.IsTrue(0.02))
                    record.SetText(record.GetIndex(name), "junk");
                else if (!random.IsTrue(0.05))
                    record.SetNumber(record.GetIndex(name), random.Real(-2.0, 2.0));
            }
            const char* colors[] = {"red", "blue", "green", "pink"};
            if (!random.IsTrue(0.03))
                record.SetText(record.GetIndex("color"), colors[random.UpTo(random.IsTrue(0.1) ? 3 : 2)]);
            all.push_back(random.IsTrue(0.02) ? nullptr : &record);
        }
    }

    std::vector<std::unique_ptr<CaseRecord>> owned;
    Records all;
};

// By the other model too, so that some are of the wrong kind.
void HandInResults(ScoreModel& model, ScoreModel& other, Generator& random, Results& results) {
    for (auto& result : results) {
        if (!random.IsTrue(0.1))
            continue;
        ScoreModel& maker = random.IsTrue(0.5) ? model : other;
        const CaseRecord record(*maker.GetDictionary());
        ScoreResult* made = nullptr;
        maker.GetScore(&record, made, false);
        result.reset(made);
    }
}

TEST_F(LoadedBatch, ScoresAsOneByOne) {
    Generator random(8841);
    std::size_t succeeded = 0;
    std::size_t cases = 0;
    bool hasTraced = false;
    const auto other = Load(test_support::Regression().Text());
    const auto another = Load(test_support::TwoCategories().Text());
    for (int round = 0; round < 300 && !HasFailure(); ++round) {
        RandomDocument document(random);
        const std::string text = document.MakeText();
        SCOPED_TRACE(text);
        const std::unique_ptr<ScoreModel> models[] = {Load(text), Load(text)};
        const auto policy = static_cast<ScoreModel::MVPolicy>(random.UpTo(3));
        const bool predictsOnly = random.IsTrue(0.2);
        for (const auto& model : models) {
            ASSERT_NE(model, nullptr);
            model->SetMissingValuePolicy(policy);
            model->SetPredictionOnly(predictsOnly);
        }
        constexpr std::size_t kCounts[] = {0, 1, 7, 8, 9, 63, 64, 65, 200};
        const std::size_t count = kCounts[random.UpTo(std::size(kCounts) - 1)];
        const std::uint64_t seed = random.UpTo(1 << 30);
        // The batch meets its model's first case, so it has to set up the indices.
        Results results[2];
        for (std::size_t m = 0; m < 2; ++m)
            results[m].resize(count);
        for (std::uint64_t turn = 0; turn < 2; ++turn) {
            const Cases together(*models[0], count, seed + turn);
            const Cases apart(*models[1], count, seed + turn);
            auto* batch = dynamic_cast<IBatchModel*>(models[0].get());
            ASSERT_NE(batch, nullptr);
            const Answers answers = test_support::ScoreTogether(*batch, together.all, results[0]);
            EXPECT_EQ(answers, test_support::ScoreOneByOne(*models[1], apart.all, results[1]));
            hasTraced = hasTraced || answers.trace.find("KwStatus error code is :90027\n") != std::string::npos;
            for (const std::int32_t status : answers.statuses)
                succeeded += status == 0 ? 1 : 0;
            cases += count;
            for (std::size_t m = 0; m < 2; ++m) {
                Generator draw(seed);
                HandInResults(*models[m], document.IsRegression() ? *another : *other, draw, results[m]);
            }
        }
        for (Results& some : results)
            some.clear();
    }
    EXPECT_GE(cases, 15'000u);
    EXPECT_GE(succeeded, cases / 2);
    EXPECT_TRUE(hasTraced);
}

}  // namespace
}  // namespace KwBrevix_930
