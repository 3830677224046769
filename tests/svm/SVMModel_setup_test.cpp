// What a model sets up when it takes its data over, and how it shows itself.
#include <cmath>
#include <sstream>

#include <gtest/gtest.h>

#include "host/transform/TransformationDictionary.h"
#include "svm/SVMKFLinear.h"
#include "svm/SVMKFPolynomial.h"
#include "svm/SVMKFRBF.h"
#include "svm/SVMKFSigmoid.h"
#include "tests/svm/svm_samples.h"

namespace KwBrevix_930 {
namespace {

using svm_samples::AddCategoryColumn;
using svm_samples::AddMachine;
using svm_samples::AddNumericColumn;
using svm_samples::AddScaledVar;
using svm_samples::Bench;
using svm_samples::FakeRecord;
using svm_samples::Indices;
using svm_samples::NewClassification;
using svm_samples::NewRegression;
using svm_samples::Values;

// Tells its end.
class WatchedData : public SVMModelData {
public:
    explicit WatchedData(int& ends) : fEnds(ends) {}
    ~WatchedData() override { ++fEnds; }

private:
    int& fEnds;
};

TEST(SVMModelSetUp, AFreshModelIsEmpty) {
    SVMModel model;
    SVMModelTestAccess access(model);
    EXPECT_FALSE(model.GetPredictionOnly());
    EXPECT_EQ(model.GetModelType(), 0);
    EXPECT_EQ(model.GetMissingValuePolicy(), 0);
    EXPECT_EQ(model.GetSupportVectorMachineModel(), nullptr);
    EXPECT_EQ(model.GetKernel(), nullptr);
    EXPECT_EQ(model.GetTargetVar(), nullptr);
    EXPECT_TRUE(model.GetInputVars().empty());
    EXPECT_TRUE(model.GetTargetCategories().empty());
    EXPECT_TRUE(model.GetTargetCategoryNames().empty());
    EXPECT_FALSE(access.AreIndicesReady());
}

TEST(SVMModelSetUp, NullDataIsIgnored) {
    Bench bench;
    bench.model.SetSupportVectorMachineModel(nullptr);
    EXPECT_EQ(bench.model.GetModelType(), 0);
    const SVMModelData& data = bench.TakeData(NewRegression());
    const auto* kernel = bench.model.GetKernel();
    bench.model.SetSupportVectorMachineModel(nullptr);
    EXPECT_EQ(bench.model.GetSupportVectorMachineModel(), &data);
    EXPECT_EQ(bench.model.GetKernel(), kernel);
    EXPECT_EQ(bench.model.GetModelType(), 30);
}

TEST(SVMModelSetUp, TheModelTypeFollowsTheClassificationFlag) {
    Bench bench;
    bench.TakeData(NewClassification(2));
    EXPECT_EQ(bench.model.GetModelType(), 29);
    bench.TakeData(NewRegression());
    EXPECT_EQ(bench.model.GetModelType(), 30);
}

TEST(SVMModelSetUp, SecondDataDeletesTheFirstAndRebuildsEverything) {
    int ends = 0;
    Bench bench;
    bench.AddVar("a");
    bench.AddVar("b");
    {
        auto first = std::make_unique<WatchedData>(ends);
        first->SetKernelType(SVMModelData::kLinear);
        AddNumericColumn(*first, "a");
        AddNumericColumn(*first, "b");
        bench.TakeData(std::move(first));
    }
    EXPECT_EQ(bench.model.GetInputVars().size(), 2u);
    EXPECT_NE(dynamic_cast<const KwSVM_700::SVMKFLinear*>(bench.model.GetKernel()), nullptr);
    auto second = NewClassification(3);
    second->SetKernelType(SVMModelData::kRadialBasis);
    AddNumericColumn(*second, "b");
    const SVMModelData& taken = bench.TakeData(std::move(second));
    EXPECT_EQ(ends, 1);
    EXPECT_EQ(bench.model.GetSupportVectorMachineModel(), &taken);
    EXPECT_EQ(bench.model.GetModelType(), 29);
    ASSERT_EQ(bench.model.GetInputVars().size(), 1u);
    EXPECT_EQ(bench.model.GetInputVars()[0], bench.dictionary.FindVar("b"));
    EXPECT_NE(dynamic_cast<const KwSVM_700::SVMKFRBF*>(bench.model.GetKernel()), nullptr);
}

TEST(SVMModelSetUp, TheSameDataAgainIsNotDeleted) {
    int ends = 0;
    Bench bench;
    auto data = std::make_unique<WatchedData>(ends);
    data->SetKernelType(SVMModelData::kLinear);
    SVMModelData& taken = bench.TakeData(std::move(data));
    taken.SetKernelType(SVMModelData::kSigmoid);
    bench.model.SetSupportVectorMachineModel(&taken);
    EXPECT_EQ(ends, 0);
    EXPECT_NE(dynamic_cast<const KwSVM_700::SVMKFSigmoid*>(bench.model.GetKernel()), nullptr);
}

TEST(SVMModelSetUp, TheModelDeletesItsData) {
    int ends = 0;
    {
        Bench bench;
        bench.TakeData(std::make_unique<WatchedData>(ends));
        EXPECT_EQ(ends, 0);
    }
    EXPECT_EQ(ends, 1);
}

// Kernels.

double Sample(const SVMModel& model) {
    return model.GetKernel()->Evaluate({1.5, 2.5}, {0.75, -0.125});
}

TEST(SVMModelSetUp, EachKernelTypeGetsItsParametersFromTheData) {
    Bench bench;
    auto data = NewRegression();
    data->SetGamma(0.375);
    data->SetCoef0(1.25);
    data->SetDegree(2.5);
    constexpr double kDot = 1.125 - 0.3125;
    for (const std::int32_t type : {0, 1, 2, 3}) {
        data->SetKernelType(type);
        EXPECT_FALSE(bench.access.SetUpKernel(data.get()).IsError());
        const double expected = type == 0   ? kDot
                                : type == 1 ? std::pow(0.375 * kDot + 1.25, 2.5)
                                : type == 2 ? std::exp(-(0.375 * (0.5625 + 2.625 * 2.625)))
                                            : std::tanh(0.375 * kDot + 1.25);
        EXPECT_EQ(Sample(bench.model), expected) << type;
    }
}

TEST(SVMModelSetUp, AnUnknownKernelTypeLeavesNoKernelAndSucceeds) {
    Bench bench;
    for (const std::int32_t type : {4, -1, 17}) {
        bench.TakeData(NewRegression());
        ASSERT_NE(bench.model.GetKernel(), nullptr);
        auto data = NewRegression();
        data->SetKernelType(type);
        EXPECT_FALSE(bench.access.SetUpKernel(data.get()).IsError());
        EXPECT_EQ(bench.model.GetKernel(), nullptr) << type;
        bench.TakeData(std::move(data));
        EXPECT_EQ(bench.model.GetKernel(), nullptr) << type;
    }
}

TEST(SVMModelSetUp, NullDataKeepsTheKernel) {
    Bench bench;
    bench.TakeData(NewRegression());
    const auto* kernel = bench.model.GetKernel();
    const auto status = bench.access.SetUpKernel(nullptr);
    EXPECT_FALSE(status.IsError());
    EXPECT_EQ(status.GetErrorCode(), 0);
    EXPECT_EQ(bench.model.GetKernel(), kernel);
}

TEST(SVMModelSetUp, AKernelKeepsItsParametersWhenTheDataChanges) {
    Bench bench;
    auto fresh = NewRegression();
    fresh->SetKernelType(SVMModelData::kRadialBasis);
    fresh->SetGamma(0.25);
    SVMModelData& data = bench.TakeData(std::move(fresh));
    const double before = Sample(bench.model);
    data.SetGamma(7.5);
    EXPECT_EQ(Sample(bench.model), before);
}

// Columns.

TEST(SVMModelSetUp, InputVariablesFollowTheColumnsAndMayRepeatOrBeNull) {
    Bench bench;
    DictVar& a = bench.AddVar("a");
    DictVar& b = bench.AddVar("b", DictVar::kString, ScoreDictVar::kCategorical);
    auto data = NewRegression();
    AddNumericColumn(*data, "a");
    AddCategoryColumn(*data, "b", "red");
    AddNumericColumn(*data, "nowhere");
    AddCategoryColumn(*data, "nowhere", "red");
    AddCategoryColumn(*data, "b", "blue");
    AddNumericColumn(*data, "a");
    bench.TakeData(std::move(data));
    EXPECT_EQ(bench.model.GetInputVars(), (std::vector<ScoreDictVar*>{&a, &b, nullptr, nullptr, &b, &a}));
}

TEST(SVMModelSetUp, AFieldIsLookedUpAmongTheDerivedOnesWhenTheDictionaryHasNone) {
    Bench bench;
    DictVar& a = bench.AddVar("a");
    TransformationDictionary derived;
    AddScaledVar(derived, "a", "y", 2.5);
    AddScaledVar(derived, "d", "a", 2.5);
    bench.model.SetTransformationScoreDictionary(&derived);
    auto data = NewRegression();
    AddNumericColumn(*data, "d");
    AddNumericColumn(*data, "a");
    AddNumericColumn(*data, "e");
    AddCategoryColumn(*data, "d", "2.5");
    bench.TakeData(std::move(data));
    EXPECT_EQ(bench.model.GetInputVars(),
              (std::vector<ScoreDictVar*>{derived.FindVar("d"), &a, nullptr, derived.FindVar("d")}));
    EXPECT_GE(bench.access.Data()->GetVectorFields()[3]->categoryIndex, 0);
}

TEST(SVMModelSetUp, ACategoryColumnStoresTheIndexOfItsCategory) {
    Bench bench;
    DictVar& color = bench.AddVar("color", DictVar::kString, ScoreDictVar::kCategorical);
    for (const char* category : {"red", "green", "blue"})
        color.AddCategory(category);
    auto data = NewRegression();
    AddCategoryColumn(*data, "color", "blue");
    AddCategoryColumn(*data, "color", "red");
    AddNumericColumn(*data, "color");
    const SVMModelData& taken = bench.TakeData(std::move(data));
    EXPECT_EQ(taken.GetVectorFields()[0]->categoryIndex, 2);
    EXPECT_EQ(taken.GetVectorFields()[1]->categoryIndex, 0);
}

TEST(SVMModelSetUp, AnUndeclaredCategoryGetsAnIndexBehindTheDeclaredOnesAndStaysInvalid) {
    Bench bench;
    DictVar& color = bench.AddVar("color", DictVar::kString, ScoreDictVar::kCategorical);
    color.AddCategory("red");
    auto data = NewRegression();
    AddCategoryColumn(*data, "color", "pink");
    AddCategoryColumn(*data, "color", "grey");
    AddCategoryColumn(*data, "color", "pink");
    const SVMModelData& taken = bench.TakeData(std::move(data));
    EXPECT_EQ(taken.GetVectorFields()[0]->categoryIndex, 1);
    EXPECT_EQ(taken.GetVectorFields()[1]->categoryIndex, 2);
    EXPECT_EQ(taken.GetVectorFields()[2]->categoryIndex, 1);
    const StringValue pink("pink");
    EXPECT_EQ(color.GetCategoryIndex(&pink), 1);
    EXPECT_FALSE(color.IsValid(&pink));
}

TEST(SVMModelSetUp, ACategoryThatCannotBeAValueIsMinusTwo) {
    Bench bench;
    bench.AddVar("number");
    auto data = NewRegression();
    AddCategoryColumn(*data, "number", "not a number");
    AddCategoryColumn(*data, "nowhere", "red");
    const SVMModelData& taken = bench.TakeData(std::move(data));
    EXPECT_EQ(taken.GetVectorFields()[0]->categoryIndex, -2);
    EXPECT_EQ(taken.GetVectorFields()[1]->categoryIndex, -2);
}

TEST(SVMModelSetUp, AColumnOfAnotherTypeIsSkipped) {
    Bench bench;
    DictVar& a = bench.AddVar("a");
    DictVar& c = bench.AddVar("c");
    bench.AddVar("b");
    auto data = NewRegression();
    AddNumericColumn(*data, "a");
    AddNumericColumn(*data, "b");
    AddNumericColumn(*data, "c");
    data->GetVectorFieldKinds()[1] = 2;
    const SVMModelData& taken = bench.TakeData(std::move(data));
    EXPECT_EQ(taken.GetVectorFields().size(), 3u);
    EXPECT_EQ(bench.model.GetInputVars(), (std::vector<ScoreDictVar*>{&a, &c}));
}

TEST(SVMModelSetUp, WithoutColumnsOrDictionaryTheInputVariablesStay) {
    Bench bench;
    DictVar& a = bench.AddVar("a");
    auto data = NewRegression();
    AddNumericColumn(*data, "a");
    bench.TakeData(std::move(data));
    bench.TakeData(NewRegression());
    EXPECT_EQ(bench.model.GetInputVars(), (std::vector<ScoreDictVar*>{&a}));
    bench.model.SetScoreDictionary(nullptr);
    data = NewRegression();
    AddNumericColumn(*data, "a");
    AddNumericColumn(*data, "a");
    bench.TakeData(std::move(data));
    EXPECT_EQ(bench.model.GetInputVars(), (std::vector<ScoreDictVar*>{&a}));
    EXPECT_NE(bench.model.GetKernel(), nullptr);
}

TEST(SVMModelSetUp, ColumnsReplaceThoseSetUpBefore) {
    Bench bench;
    bench.AddVar("a");
    DictVar& b = bench.AddVar("b");
    auto data = NewRegression();
    AddNumericColumn(*data, "a");
    bench.TakeData(std::move(data));
    SVMModelData other;
    AddNumericColumn(other, "b");
    bench.access.SetUpVectorField(other.GetVectorFields(), other.GetVectorFieldKinds());
    EXPECT_EQ(bench.model.GetInputVars(), (std::vector<ScoreDictVar*>{&b}));
}

// Target.

TEST(SVMModelSetUp, TargetCategoriesFollowTheDeclaration) {
    const Bench bench({"setosa", "versicolor", "virginica"});
    EXPECT_EQ(bench.model.GetTargetCategoryNames(), (std::vector<std::string>{"setosa", "versicolor", "virginica"}));
    const auto& categories = *bench.target->GetCategories();
    ASSERT_EQ(bench.model.GetTargetCategories().size(), 3u);
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(bench.model.GetTargetCategories()[i], categories[i].value.get());
}

TEST(SVMModelSetUp, TargetCategoriesAreCollectedAnew) {
    Bench bench({"no", "yes"});
    bench.target->AddCategory("maybe");
    EXPECT_EQ(bench.model.GetTargetCategories().size(), 2u);
    bench.model.SetTargetCategories();
    EXPECT_EQ(bench.model.GetTargetCategoryNames(), (std::vector<std::string>{"no", "yes", "maybe"}));
    DictVar& other = bench.AddVar("number");
    bench.model.SetVarRole("y", ScoreModel::kActive);
    bench.model.SetVarRole(&other, ScoreModel::kTarget);
    bench.model.SetTargetCategories();
    EXPECT_TRUE(bench.model.GetTargetCategories().empty()) << "emptied, although the new target has none";
    EXPECT_TRUE(bench.model.GetTargetCategoryNames().empty());
}

TEST(SVMModelSetUp, WithoutTargetTheCategoriesStayAndTheTargetGoes) {
    Bench bench({"no", "yes"});
    bench.TakeData(NewClassification(2));
    bench.model.SetVarRole("y", ScoreModel::kActive);
    bench.model.SetTargetCategories();
    EXPECT_EQ(bench.model.GetTargetCategories().size(), 2u);
    EXPECT_EQ(bench.model.GetTargetCategoryNames().size(), 2u);
    const FakeRecord record(true);
    ScoreResult* result = nullptr;
    EXPECT_EQ(bench.model.GetScore(&record, result, false).GetErrorCode(), 90029);
    EXPECT_EQ(result, nullptr);
}

TEST(SVMModelSetUp, SetTargetVarReplacesTheTargetOnly) {
    Bench bench({"no", "yes"});
    const DictVar other("other", DictVar::kString, ScoreDictVar::kCategorical);
    bench.model.SetTargetVar(&other);
    EXPECT_EQ(bench.model.GetTargetCategories().size(), 2u);
    bench.TakeData(NewClassification(2));
    const FakeRecord record(true);
    ScoreResult* result = nullptr;
    bench.model.GetScore(&record, result, false);
    ASSERT_NE(result, nullptr);
    EXPECT_EQ(result->GetTarget(), &other);
    delete result;
}

TEST(SVMModelSetUp, PredictionOnlyIsKept) {
    SVMModel model;
    model.SetPredictionOnly(true);
    EXPECT_TRUE(model.GetPredictionOnly());
    model.SetPredictionOnly(false);
    EXPECT_FALSE(model.GetPredictionOnly());
}

// Dictionary indices.

TEST(SVMModelSetUp, DictionaryIndicesComeFromTheFirstRecordOnly) {
    Bench bench;
    DictVar& a = bench.AddVar("a");
    DictVar& b = bench.AddVar("b");
    FakeRecord first(true);
    first.Add("other", nullptr);
    first.Add("b", nullptr);
    first.Add("y", nullptr);
    bench.access.SetUpDictVarIndex(&first, false);
    EXPECT_TRUE(bench.access.AreIndicesReady());
    EXPECT_EQ(bench.target->GetIndex(), 2);
    EXPECT_EQ(a.GetIndex(), -1);
    EXPECT_EQ(b.GetIndex(), 1);
    EXPECT_EQ(first.namesAskedFor, (std::vector<std::string>{"y", "a", "b"}));
    FakeRecord second(true);
    second.Add("a", nullptr);
    bench.access.SetUpDictVarIndex(&second, true);
    EXPECT_EQ(second.askedForIndex, 0);
    EXPECT_EQ(b.GetIndex(), 1);
}

TEST(SVMModelSetUp, DictionaryIndicesWaitForADictionary) {
    Bench bench;
    const FakeRecord record(true);
    bench.model.SetScoreDictionary(nullptr);
    bench.access.SetUpDictVarIndex(&record, true);
    EXPECT_FALSE(bench.access.AreIndicesReady());
    bench.model.SetScoreDictionary(&bench.dictionary);
    bench.access.SetUpDictVarIndex(&record, true);
    EXPECT_TRUE(bench.access.AreIndicesReady());
}

// Variables of a role.

TEST(SVMModelSetUp, VarsOfRoleAreCopiesInDictionaryOrder) {
    Bench bench;
    for (const char* name : {"a", "b", "c", "d"})
        bench.AddVar(name);
    bench.model.SetVarRole("d", ScoreModel::kSupplementary);
    bench.model.SetVarRole("b", ScoreModel::kSupplementary);
    bench.model.SetVarRole("a", ScoreModel::kActive);
    const std::unique_ptr<ScoreDictionary> found(bench.model.GetVarsOfRole(ScoreModel::kSupplementary));
    ASSERT_NE(found, nullptr);
    ASSERT_EQ(found->GetVarCount(), 2);
    EXPECT_EQ(found->GetVars()[0]->GetName(), "b");
    EXPECT_EQ(found->GetVars()[1]->GetName(), "d");
    EXPECT_NE(found->GetVars()[0], bench.dictionary.FindVar("b"));
    const std::unique_ptr<ScoreDictionary> targets(bench.model.GetVarsOfRole(ScoreModel::kTarget));
    ASSERT_NE(targets, nullptr);
    EXPECT_EQ(targets->GetVars()[0]->GetName(), "y");
}

TEST(SVMModelSetUp, VarsOfTheActiveRoleAreFoundAsThoseOfOthers) {
    Bench bench;
    bench.AddVar("a");
    bench.AddVar("b");
    bench.model.SetVarRole("b", ScoreModel::kActive);
    const std::unique_ptr<ScoreDictionary> found(bench.model.GetVarsOfRole(ScoreModel::kActive));
    ASSERT_NE(found, nullptr);
    ASSERT_EQ(found->GetVarCount(), 1);
    EXPECT_EQ(found->GetVars()[0]->GetName(), "b");
}

TEST(SVMModelSetUp, VarsOfARoleThatNoVariableHasAreNull) {
    const Bench bench;
    EXPECT_EQ(bench.model.GetVarsOfRole(ScoreModel::kSupplementary), nullptr);
}

TEST(SVMModelSetUp, VarsOfRoleNeedTheModelsTargetAndADictionary) {
    Bench bench;
    bench.AddVar("a");
    bench.model.SetVarRole("a", ScoreModel::kActive);
    const DictVar elsewhere("elsewhere", DictVar::kNumber, ScoreDictVar::kContinuous);
    bench.model.SetTargetVar(nullptr);
    EXPECT_EQ(bench.model.GetVarsOfRole(ScoreModel::kActive), nullptr);
    bench.model.SetVarRole("y", ScoreModel::kNoRole);
    bench.model.SetTargetVar(&elsewhere);
    EXPECT_NE(std::unique_ptr<ScoreDictionary>(bench.model.GetVarsOfRole(ScoreModel::kActive)), nullptr);
    bench.model.SetScoreDictionary(nullptr);
    EXPECT_EQ(bench.model.GetVarsOfRole(ScoreModel::kActive), nullptr);
}

// Display.

std::string DisplayOf(const SVMModel& model) {
    std::ostringstream stream;
    model.Display(stream);
    return stream.str();
}

// No list of fields between the first two texts, no separators between the categories: this stays so.
TEST(SVMModelDisplay, IsThisTextCharacterByCharacter) {
    Bench bench({"no", "yes", "may be"});
    std::ostringstream target;
    bench.target->Display(target);
    ASSERT_FALSE(target.str().empty());
    const std::string begin =
        "\nBegin Display of SupportVectorMachineModel.\nInput Vector fields is:  Only prediction? ";
    const std::string end = "\nTarget variable: " + target.str() +
                            "Target categories: noyesmay beEnd of SupportVectorMachineModel display.\n";
    EXPECT_EQ(DisplayOf(bench.model), begin + "False." + end);
    bench.model.SetPredictionOnly(true);
    EXPECT_EQ(DisplayOf(bench.model), begin + "True." + end);
}

TEST(SVMModelDisplay, WithoutCategoriesEndsRightAfterTheirLabel) {
    const Bench bench;
    EXPECT_TRUE(DisplayOf(bench.model).ends_with("Target categories: "));
}

TEST(SVMModelDisplay, OfAFreshModelNamesNoTarget) {
    const SVMModel model;
    EXPECT_EQ(DisplayOf(model),
              "\nBegin Display of SupportVectorMachineModel.\nInput Vector fields is:  Only prediction? False.\n"
              "Target variable: Target categories: ");
}

}  // namespace
}  // namespace KwBrevix_930
