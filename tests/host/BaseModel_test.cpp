// What every model has in common: dictionaries and who owns them, roles, policy, version.
#include "host/BaseModel.h"

#include <gtest/gtest.h>

#include <memory>

#include "host/BaseDictionary.h"
#include "host/CaseRecord.h"
#include "host/DictVar.h"
#include "host/VersionInfo.h"
#include "host/transform/TransformationDictionary.h"
#include "tests/host/SameValue.h"
#include "tests/host/TestModel.h"
#include "tests/host/new_number.h"

namespace {

using KwBrevix_930::BaseDictionary;
using KwBrevix_930::CaseRecord;
using KwBrevix_930::DictVar;
using KwBrevix_930::NumericValue;
using KwBrevix_930::ScoreModel;
using KwBrevix_930::TransformationDictionary;
using KwBrevix_930::TransformVar;
using KwBrevix_930::VersionInfo;
using test_support::NewNumber;

// Dictionaries that say when they end.
struct WatchedDictionary : BaseDictionary {
    explicit WatchedDictionary(int& ends) : fEnds(ends) {}
    ~WatchedDictionary() override { ++fEnds; }
    int& fEnds;
};

struct WatchedTransformations : TransformationDictionary {
    explicit WatchedTransformations(int& ends) : fEnds(ends) {}
    ~WatchedTransformations() override { ++fEnds; }
    int& fEnds;
};

struct WatchedVersion : VersionInfo {
    WatchedVersion(int& ends, const std::string& version) : VersionInfo(version), fEnds(ends) {}
    ~WatchedVersion() override { ++fEnds; }
    int& fEnds;
};

TEST(BaseModel, IsEmptyAtFirst) {
    const TestModel model;
    EXPECT_EQ(model.GetDictionary(), nullptr);
    EXPECT_EQ(model.GetTransformationDictionary(), nullptr);
    EXPECT_EQ(model.GetResultDictionary(), nullptr);
    EXPECT_EQ(model.GetVersionInfo(), nullptr);
    EXPECT_EQ(model.GetTargetVar(), nullptr);
    EXPECT_EQ(model.GetMissingValuePolicy(), ScoreModel::kUseReplacement);
    EXPECT_EQ(model.GetVarRole("x"), ScoreModel::kNoRole);
}

TEST(BaseModel, EnumerationsHaveTheNumbersThatHostsKnow) {
    EXPECT_EQ(static_cast<int>(ScoreModel::kSVMClassification), 29);
    EXPECT_EQ(static_cast<int>(ScoreModel::kSVMRegression), 30);
    EXPECT_EQ(static_cast<int>(ScoreModel::kActive), 1);
    EXPECT_EQ(static_cast<int>(ScoreModel::kUseReplacement), 0);
    EXPECT_EQ(static_cast<int>(ScoreModel::kMarkAsMissing), 1);
    EXPECT_EQ(static_cast<int>(ScoreModel::kLeavePrediction), 2);
}

TEST(BaseModel, LeavesDictionariesToTheCallerByDefault) {
    int ends = 0;
    WatchedDictionary dictionary(ends);
    WatchedDictionary results(ends);
    WatchedTransformations transformations(ends);
    {
        TestModel model;
        model.SetScoreDictionary(&dictionary);
        model.SetResultScoreDictionary(&results);
        model.SetTransformationScoreDictionary(&transformations);
        EXPECT_EQ(model.GetDictionary(), &dictionary);
        EXPECT_EQ(model.GetResultDictionary(), &results);
        EXPECT_EQ(model.GetTransformationDictionary(), &transformations);
    }
    EXPECT_EQ(ends, 0);
}

TEST(BaseModel, OwnsDictionariesWhenAskedTo) {
    int ends = 0;
    {
        TestModel model;
        model.SetScoreDictionary(new WatchedDictionary(ends), true);
        model.SetTransformationScoreDictionary(new WatchedTransformations(ends), true);
        EXPECT_EQ(ends, 0);
        model.SetScoreDictionary(new WatchedDictionary(ends), true);
        model.SetTransformationScoreDictionary(new WatchedTransformations(ends), true);
        EXPECT_EQ(ends, 2);
    }
    EXPECT_EQ(ends, 4);
}

TEST(BaseModel, FalseMeansNotOwned) {
    int ends = 0;
    WatchedDictionary dictionary(ends);
    WatchedTransformations transformations(ends);
    {
        TestModel model;
        model.SetScoreDictionary(&dictionary, false);
        model.SetTransformationScoreDictionary(&transformations, false);
        EXPECT_EQ(model.GetDictionary(), &dictionary);
    }
    EXPECT_EQ(ends, 0);
}

TEST(BaseModel, ReplacingAnOwnedDictionaryByACallersOneDeletesIt) {
    int ends = 0;
    int callersEnds = 0;
    WatchedDictionary callers(callersEnds);
    TestModel model;
    model.SetScoreDictionary(new WatchedDictionary(ends), true);
    model.SetScoreDictionary(&callers);
    EXPECT_EQ(ends, 1);
    model.SetScoreDictionary(nullptr);
    EXPECT_EQ(model.GetDictionary(), nullptr);
    EXPECT_EQ(callersEnds, 0);
}

TEST(BaseModel, HandingOverTheSameDictionaryOnlyChangesItsOwner) {
    int ends = 0;
    {
        TestModel model;
        auto* dictionary = new WatchedDictionary(ends);
        model.SetScoreDictionary(dictionary, true);
        model.SetScoreDictionary(dictionary, true);
        EXPECT_EQ(ends, 0);
        model.SetScoreDictionary(dictionary, false);
        EXPECT_EQ(ends, 0);
        model.SetScoreDictionary(dictionary, true);
        auto* transformations = new WatchedTransformations(ends);
        model.SetTransformationScoreDictionary(transformations);
        model.SetTransformationScoreDictionary(transformations, true);
        EXPECT_EQ(ends, 0);
    }
    EXPECT_EQ(ends, 2);
}

TEST(BaseModel, OwnsItsVersion) {
    int ends = 0;
    {
        TestModel model;
        model.SetVersionInfo(new WatchedVersion(ends, "1.2.3"));
        EXPECT_EQ(model.GetVersionInfo()->GetVersion(), "1.2.3");
        auto* second = new WatchedVersion(ends, "");
        model.SetVersionInfo(second);
        EXPECT_EQ(ends, 1);
        model.SetVersionInfo(second);
        EXPECT_EQ(ends, 1);
        EXPECT_EQ(model.GetVersionInfo(), second);
    }
    EXPECT_EQ(ends, 2);
}

TEST(BaseModel, KeepsRolesByNameAndByVariable) {
    TestModel model;
    const auto x = NewNumber("x");
    model.SetVarRole("x", ScoreModel::kActive);
    EXPECT_EQ(model.GetVarRole(x.get()), ScoreModel::kActive);
    model.SetVarRole(x.get(), ScoreModel::kSupplementary);
    EXPECT_EQ(model.GetVarRole("x"), ScoreModel::kSupplementary);
    EXPECT_EQ(model.GetVarRole("X"), ScoreModel::kNoRole);
    model.SetVarRole(static_cast<const DictVar*>(nullptr), ScoreModel::kTarget);
    EXPECT_EQ(model.GetVarRole(static_cast<const DictVar*>(nullptr)), ScoreModel::kNoRole);
}

TEST(BaseModel, TheFirstTargetCounts) {
    BaseDictionary dictionary;
    for (const char* name : {"a", "b", "c"})
        dictionary.AddVar(NewNumber(name));
    TestModel model;
    model.SetVarRole("c", ScoreModel::kTarget);
    EXPECT_EQ(model.GetTargetVar(), nullptr);
    model.SetScoreDictionary(&dictionary);
    model.SetVarRole("a", ScoreModel::kTarget);
    model.SetVarRole("c", ScoreModel::kTarget);
    EXPECT_EQ(model.GetTargetVar(), dictionary.FindVar("c"));
    model.SetVarRole("c", ScoreModel::kActive);
    EXPECT_EQ(model.GetTargetVar(), dictionary.FindVar("a"));
}

TEST(BaseModel, ATargetOutsideTheDictionaryIsNone) {
    BaseDictionary dictionary;
    TestModel model;
    model.SetScoreDictionary(&dictionary);
    model.SetVarRole("gone", ScoreModel::kTarget);
    EXPECT_EQ(model.GetTargetVar(), nullptr);
}

TEST(BaseModel, TellsItsDerivedFieldsWhetherReplacementsCount) {
    BaseDictionary dictionary;
    dictionary.AddVar(NewNumber("x"));
    dictionary.FindVar("x")->SetIndex(0);
    dictionary.FindVar("x")->GetVarStats()->SetMissingReplacement(std::make_unique<NumericValue>(6.5));
    TransformationDictionary transformations;
    transformations.AddVar(
        std::make_unique<TransformVar>("d", KwBrevix_930::FieldType{}, DictVar::kContinuous,
                                       std::make_unique<SameValue>(transformations.AddRawField("x"), "x")));
    transformations.SetUpDerivedCaseRecord();
    const CaseRecord record(dictionary);
    const auto derived = [&] { return transformations.GetValuesForDerivedVars(&record, &dictionary)->GetValue("d"); };

    TestModel model;
    model.SetMissingValuePolicy(ScoreModel::kMarkAsMissing);
    model.SetTransformationScoreDictionary(&transformations);
    EXPECT_EQ(derived(), nullptr);
    model.SetMissingValuePolicy(ScoreModel::kUseReplacement);
    EXPECT_EQ(model.GetMissingValuePolicy(), ScoreModel::kUseReplacement);
    ASSERT_NE(derived(), nullptr);
    EXPECT_EQ(derived()->GetDouble(), 6.5);
    model.SetMissingValuePolicy(ScoreModel::kLeavePrediction);
    EXPECT_EQ(model.GetMissingValuePolicy(), ScoreModel::kLeavePrediction);
    EXPECT_EQ(derived(), nullptr);
}

}  // namespace
