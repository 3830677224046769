// The entry point, called as a host calls it: in the built library, loaded at run time, through base classes only.
#include "plugin/entry_point.h"

#include <memory>
#include <stdexcept>
#include <type_traits>

#include <gtest/gtest.h>

#include "host/CaseRecord.h"
#include "host/IBatchModel.h"
#include "host/ScoreVersionInfo.h"
#include "runtime/platform/libraries.h"
#include "tests/support/svm_document.h"

namespace KwBrevix_930 {
namespace {

using test_support::Regression;
using test_support::ScoreOf;
using test_support::TwoCategories;

static_assert(std::is_same_v<decltype(&GiveMyTranslator), ScoreTranslator* (*)()>);
static_assert(std::has_virtual_destructor_v<ScoreTranslator> && std::has_virtual_destructor_v<ScoreModel>);

class LoadedLibrary : public testing::Test {
protected:
    void SetUp() override {
        std::string fault;
        fHandle = brevix::platform::loadLibrary(BREVIX_SVM_FILE, fault);
        ASSERT_NE(fHandle, nullptr) << fault;
        fEntry =
            reinterpret_cast<decltype(&GiveMyTranslator)>(brevix::platform::findSymbol(fHandle, "GiveMyTranslator"));
        ASSERT_NE(fEntry, nullptr);
        ASSERT_NE(fEntry, &GiveMyTranslator) << "the test program's own";
    }
    void TearDown() override {
        if (fHandle)
            brevix::platform::freeLibrary(fHandle);
    }

    std::unique_ptr<ScoreTranslator> Translator() const { return std::unique_ptr<ScoreTranslator>(fEntry()); }

    void* fHandle = nullptr;
    decltype(&GiveMyTranslator) fEntry = nullptr;
};

TEST_F(LoadedLibrary, GivesANewTranslatorToEachCaller) {
    const auto first = Translator();
    const auto second = Translator();
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_NE(first, second);
}

TEST_F(LoadedLibrary, TranslatesAndScores) {
    const std::unique_ptr<ScoreModel> model(Translator()->ParseFromTree(Regression().Text(), std::string()));
    ASSERT_NE(model, nullptr);
    EXPECT_EQ(model->GetModelType(), ScoreModel::kSVMRegression);
    const auto score = ScoreOf(*model, {{"x1", "3"}, {"x2", "0.75"}, {"color", "red"}});
    ASSERT_EQ(score.code, 0);
    EXPECT_EQ(score.Number(), 0.75 * (0.5 * 3 - 1.25) - 0.5 * (2.5 * 0.75) + 0.125);
}

TEST_F(LoadedLibrary, TranslatorAndModelAreDeletedThroughTheirBases) {
    ScoreTranslator* translator = fEntry();
    ScoreModel* model = translator->ParseFromTree(TwoCategories().Text(), std::string());
    delete translator;
    EXPECT_EQ(ScoreOf(*model, {{"x1", "3"}, {"x2", "0.75"}, {"color", "red"}}).Text(), "yes");
    delete model;
}

// Tells of its end, which only its own destructor can know of.
class CountedVersion : public ScoreVersionInfo {
public:
    explicit CountedVersion(int& ends) : fEnds(ends) {}
    ~CountedVersion() override { ++fEnds; }
    const std::string& GetVersion() const override { return fVersion; }

private:
    int& fEnds;
    std::string fVersion = "4.2";
};

TEST_F(LoadedLibrary, ItsModelDeletesWhatItTookOver) {
    int ends = 0;
    {
        const std::unique_ptr<ScoreModel> model(Translator()->ParseFromTree(TwoCategories().Text(), std::string()));
        model->SetVersionInfo(new CountedVersion(ends));
        EXPECT_EQ(model->GetVersionInfo()->GetVersion(), "4.2");
        model->SetVersionInfo(new CountedVersion(ends));
        EXPECT_EQ(ends, 1);
    }
    EXPECT_EQ(ends, 2);
}

struct Gone : std::range_error {
    using std::range_error::range_error;
    int place = 817;
};

class RecordThatIsGone : public CaseRecord {
public:
    using CaseRecord::CaseRecord;
    const ScoreValue* GetValue(int) const override { throw Gone("the record is gone"); }
    const ScoreValue* GetValue(const std::string&) const override { throw Gone("the record is gone"); }
};

template <class Call>
std::string MessageOf(const Call& call) {
    try {
        call();
    } catch (const Gone& fault) {
        return fault.what() + (' ' + std::to_string(fault.place));
    }
    return "nothing was thrown";
}

TEST_F(LoadedLibrary, ARecordsOwnExceptionPassesThroughIt) {
    const std::unique_ptr<ScoreModel> model(Translator()->ParseFromTree(TwoCategories().Text(), std::string()));
    const RecordThatIsGone record(*model->GetDictionary());
    const std::vector<const ScoreCaseRecord*> records(70, &record);
    std::vector<ScoreResult*> results(records.size());
    std::vector<KwScore::KwStatus> statuses(records.size());
    for (int turn = 0; turn < 3; ++turn) {
        EXPECT_EQ(MessageOf([&] { model->GetScore(&record, results[0], false); }), "the record is gone 817");
        EXPECT_EQ(MessageOf([&] {
                      dynamic_cast<IBatchModel&>(*model).ScoreCases(records.size(), records.data(), results.data(),
                                                                    statuses.data(), false);
                  }),
                  "the record is gone 817");
    }
    for (ScoreResult* result : results)
        delete result;
}

TEST_F(LoadedLibrary, ItsExceptionsAreCaughtByType) {
    const auto translator = Translator();
    int code = 0;
    try {
        translator->ParseFromTree(TwoCategories().Remove("<LinearKernelType/>").Text(), std::string());
    } catch (const BXException& error) {
        code = error.GetErrorCode();
        EXPECT_EQ(error.GetArguments(), (std::vector<std::string>{"LinearKernelType", "SupportVectorMachineModel"}));
    }
    EXPECT_EQ(code, 260115);
    EXPECT_THROW(translator->ParseFromTree("<PMML/>", std::string()), std::exception);
}

TEST_F(LoadedLibrary, AnExceptionOutlivesTheTranslatorThatRaisedIt) {
    auto translator = Translator();
    std::unique_ptr<BXException> kept;
    try {
        translator->ParseFromTree("<PMML/>", std::string());
    } catch (const BXException& error) {
        kept = std::make_unique<BXException>(error);
    }
    translator.reset();
    ASSERT_NE(kept, nullptr);
    EXPECT_EQ(kept->GetErrorCode(), 260115);
    EXPECT_NE(std::string(kept->what()).find("SupportVectorMachineModel"), std::string::npos);
}

TEST(EntryPoint, GivesASupportVectorMachineTranslator) {
    const std::unique_ptr<ScoreTranslator> translator(GiveMyTranslator());
    EXPECT_NE(dynamic_cast<SVMTranslator*>(translator.get()), nullptr);
}

}  // namespace
}  // namespace KwBrevix_930
