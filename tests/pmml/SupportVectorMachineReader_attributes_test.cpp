// The general attributes of a model, the check of its targets, and its kernel, read from whole documents.
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "pmml/SVMModelData.h"
#include "pmml/SupportVectorMachineReader.h"
#include "tests/support/svm_document.h"

namespace KwBrevix_930 {
namespace {

using test_support::Failure;
using test_support::kNoFailure;
using test_support::kRegressionMachine;
using test_support::kTarget;
using test_support::kThreeMachines;
using test_support::kTwoCategoryMachine;
using test_support::MachineText;
using test_support::Regression;
using test_support::SvmDocument;
using test_support::ThreeCategories;
using test_support::Translate;
using test_support::TranslationFailure;
using test_support::TwoCategories;

const std::string kFunction = R"(functionName="classification")";
const std::string kModelThreshold = R"( threshold="0.0625")";
const Failure kBadTargets{260221, {"Targets"}};

SvmDocument WithAttribute(SvmDocument document, const std::string& attribute) {
    return document.Replace("<SupportVectorMachineModel ", "<SupportVectorMachineModel " + attribute + ' ');
}

template <typename Value>
Value Read(const SvmDocument& document, Value (SVMModelData::*get)() const) {
    const auto model = Translate(document);
    return (model->GetSupportVectorMachineModel()->*get)();
}

TEST(IsScorable, FalseInAnyLetterCaseRefusesTheModelAndNamesThePmmlElement) {
    for (const std::string text : {"false", "FALSE", "False", "fAlSe"})
        EXPECT_EQ(TranslationFailure(WithAttribute(TwoCategories(), "isScorable=\"" + text + '"')),
                  (Failure{260281, {"isScorable", "PMML"}}));
}

TEST(IsScorable, AnyOtherTextScores) {
    for (const std::string text : {"true", "", "0", "no", " false", "falsee"})
        EXPECT_EQ(TranslationFailure(WithAttribute(TwoCategories(), "isScorable=\"" + text + '"')), kNoFailure) << text;
}

TEST(IsScorable, ComesBeforeAnyOtherAttribute) {
    EXPECT_EQ(TranslationFailure(WithAttribute(TwoCategories(), R"(isScorable="false")").Remove(kFunction)),
              (Failure{260281, {"isScorable", "PMML"}}));
}

TEST(FunctionName, TellsClassificationFromRegression) {
    EXPECT_TRUE(Read(TwoCategories(), &SVMModelData::GetIsClassification));
    EXPECT_FALSE(Read(Regression(), &SVMModelData::GetIsClassification));
}

TEST(FunctionName, AnyOtherTextIsAnErrorWithThatText) {
    for (const std::string text : {"Classification", "REGRESSION", "clustering", "", " regression", "classification "})
        EXPECT_EQ(TranslationFailure(TwoCategories().Replace(kFunction, "functionName=\"" + text + '"')),
                  (Failure{260153, {text, "functionName", "SupportVectorMachineModel"}}));
}

TEST(FunctionName, IsRequired) {
    EXPECT_EQ(TranslationFailure(TwoCategories().Remove(kFunction)),
              (Failure{260120, {"functionName", "SupportVectorMachineModel"}}));
}

double ThresholdOf(const SvmDocument& document) {
    return Read(document, &SVMModelData::GetThreshold);
}

TEST(ModelThreshold, IsReadAsWrittenMinusOneIncluded) {
    EXPECT_EQ(ThresholdOf(TwoCategories()), 0.0625);
    EXPECT_EQ(ThresholdOf(TwoCategories().Replace(kModelThreshold, R"( threshold="-1.0")")), -1.0);
    EXPECT_EQ(ThresholdOf(TwoCategories().Replace(kModelThreshold, R"( threshold="-INF")")),
              -std::numeric_limits<double>::infinity());
    EXPECT_TRUE(std::isnan(ThresholdOf(TwoCategories().Replace(kModelThreshold, R"( threshold="NaN")"))));
}

TEST(ModelThreshold, IsZeroWhenItIsAbsent) {
    EXPECT_EQ(ThresholdOf(TwoCategories().Remove(kModelThreshold)), 0.0);
}

TEST(ModelThreshold, ThatIsNoNumberIsAnError) {
    for (const std::string garbage : {"", "low", "0,5", "1 2", "0x1"})
        EXPECT_EQ(TranslationFailure(TwoCategories().Replace(kModelThreshold, " threshold=\"" + garbage + '"')),
                  (Failure{260153, {garbage, "threshold", "SupportVectorMachineModel"}}));
}

TEST(ClassificationMethod, OnlyTheOneAgainstOneValueSelectsIt) {
    const auto isOneAgainstAll = [](const std::string& attribute) {
        return Read(WithAttribute(TwoCategories(), attribute), &SVMModelData::GetIsOneAgainstAll);
    };
    EXPECT_FALSE(isOneAgainstAll(R"(classificationMethod="OneAgainstOne")"));
    EXPECT_TRUE(isOneAgainstAll(R"(classificationMethod="OneAgainstAll")"));
    EXPECT_TRUE(isOneAgainstAll(R"(classificationMethod="oneagainstone")"));
    EXPECT_TRUE(isOneAgainstAll(R"(classificationMethod="any text")"));
    EXPECT_TRUE(isOneAgainstAll(R"(classificationMethod="")"));
    EXPECT_TRUE(isOneAgainstAll(""));
}

TEST(MaxWins, IsSetByExactlyTheFourLettersTrue) {
    const auto isMaxWins = [](const std::string& attribute) {
        return Read(WithAttribute(TwoCategories(), attribute), &SVMModelData::GetIsMaxWins);
    };
    EXPECT_TRUE(isMaxWins(R"(maxWins="true")"));
    EXPECT_FALSE(isMaxWins(R"(maxWins="TRUE")"));
    EXPECT_FALSE(isMaxWins(R"(maxWins="True")"));
    EXPECT_FALSE(isMaxWins(R"(maxWins="1")"));
    EXPECT_FALSE(isMaxWins(R"(maxWins="true ")"));
    EXPECT_FALSE(isMaxWins(""));
}

SvmDocument WithTargets(const std::string& field) {
    return TwoCategories().InsertBefore("<LinearKernelType/>", "<Targets><Target field=\"" + field + "\"/></Targets>");
}

TEST(Targets, ThatTheHostCannotHandleAreAnError) {
    EXPECT_EQ(TranslationFailure(WithTargets("nobody")), kBadTargets);
    EXPECT_EQ(TranslationFailure(WithTargets("y")), kNoFailure);
}

// Each document fails at two places, and the earlier one is told.
TEST(GeneralAttributes, FunctionNameComesBeforeThresholdAndThatBeforeTargets) {
    const std::string badThreshold = R"( threshold="x")";
    EXPECT_EQ(TranslationFailure(
                  TwoCategories().Replace(kFunction, R"(functionName="other")").Replace(kModelThreshold, badThreshold)),
              (Failure{260153, {"other", "functionName", "SupportVectorMachineModel"}}));
    EXPECT_EQ(TranslationFailure(WithTargets("nobody").Replace(kModelThreshold, badThreshold)),
              (Failure{260153, {"x", "threshold", "SupportVectorMachineModel"}}));
}

TEST(Targets, WithoutATargetVariableThereIsAnError) {
    EXPECT_EQ(TranslationFailure(TwoCategories().Remove(R"(<MiningField name="y" usageType="target"/>)")), kBadTargets);
    EXPECT_EQ(TranslationFailure(TwoCategories().Remove(kTarget)), kBadTargets);
}

TEST(Targets, WithoutAMachineThereIsAnError) {
    EXPECT_EQ(TranslationFailure(TwoCategories().Remove(kTwoCategoryMachine)), kBadTargets);
    EXPECT_EQ(TranslationFailure(
                  ThreeCategories().Replace(R"("OneAgainstOne")", R"("OneAgainstAll")").Remove(kThreeMachines)),
              kBadTargets);
}

TEST(Targets, MachinesAreCountedAmongTheModelsChildrenOnly) {
    EXPECT_EQ(TranslationFailure(
                  TwoCategories().Replace(kTwoCategoryMachine, "<Extension>" + kTwoCategoryMachine + "</Extension>")),
              kBadTargets);
    EXPECT_EQ(TranslationFailure(TwoCategories().InsertBefore(kTwoCategoryMachine,
                                                              "<Extension>" + kTwoCategoryMachine + "</Extension>")),
              kNoFailure);
}

TEST(Targets, OfSeveralTheFirstInTheMiningSchemaCounts) {
    const std::string inOrder = R"(<MiningField name="y" usageType="target"/>)";
    const std::string color = R"(<MiningField name="color"/>)";
    const std::string colorAsTarget = R"(<MiningField name="color" usageType="predicted"/>)";
    EXPECT_EQ(Translate(TwoCategories().Replace(color, colorAsTarget))->GetTargetCategoryNames(),
              (std::vector<std::string>{"red", "blue"}));
    EXPECT_EQ(
        Translate(TwoCategories().Remove(color).Replace(inOrder, inOrder + colorAsTarget))->GetTargetCategoryNames(),
        (std::vector<std::string>{"no", "yes"}));
}

TEST(TargetCount, RegressionNeedsOneCategoryAndOneMachine) {
    EXPECT_EQ(TranslationFailure(Regression()), kNoFailure);
    EXPECT_EQ(TranslationFailure(Regression().InsertBefore(kRegressionMachine, MachineText(""))), kBadTargets);
}

TEST(TargetCount, RegressionWithOneDeclaredCategoryFitsAndWithTwoDoesNot) {
    const auto withValues = [](const std::string& values) {
        return Regression().Replace(
            R"(<DataField name="y" optype="continuous" dataType="double"/>)",
            R"(<DataField name="y" optype="continuous" dataType="double">)" + values + "</DataField>");
    };
    EXPECT_EQ(TranslationFailure(withValues(R"(<Value value="1.5"/>)")), kNoFailure);
    EXPECT_EQ(TranslationFailure(withValues(R"(<Value value="-9" property="missing"/>)")), kNoFailure);
    EXPECT_EQ(TranslationFailure(withValues(R"(<Value value="1.5"/><Value value="2.5"/>)")), kBadTargets);
}

TEST(TargetCount, ACategoricalTargetWithoutValuesIsRefused) {
    const std::string empty = R"(<DataField name="y" optype="categorical" dataType="string"/>)";
    EXPECT_EQ(TranslationFailure(TwoCategories().Replace(kTarget, empty)), kBadTargets);
    EXPECT_EQ(TranslationFailure(
                  Regression().Replace(R"(<DataField name="y" optype="continuous" dataType="double"/>)", empty)),
              kBadTargets);
}

TEST(TargetCount, AnOrdinalNumericTargetWithoutValuesIsRefused) {
    SvmDocument document = Regression().Replace(R"(name="y" optype="continuous")", R"(name="y" optype="ordinal")");
    EXPECT_EQ(TranslationFailure(document), kBadTargets);
    EXPECT_EQ(TranslationFailure(document.Replace(R"("regression")", R"("classification")")), kBadTargets);
}

TEST(TargetCount, ClassificationOfAContinuousTargetIsRefused) {
    EXPECT_EQ(TranslationFailure(Regression().Replace(R"("regression")", R"("classification")")), kBadTargets);
}

TEST(TargetCount, OneCategoryFitsNoNumberOfMachines) {
    EXPECT_EQ(TranslationFailure(TwoCategories().Remove(R"(<Value value="no"/>)")), kBadTargets);
}

TEST(TargetCount, TwoCategoriesNeedExactlyOneMachineWhateverTheMethod) {
    const auto doubled = [](const std::string& attribute) {
        return WithAttribute(TwoCategories(), attribute).InsertBefore(kTwoCategoryMachine, kTwoCategoryMachine + '\n');
    };
    for (const char* method : {"", R"(classificationMethod="OneAgainstOne")"}) {
        EXPECT_EQ(TranslationFailure(WithAttribute(TwoCategories(), method)), kNoFailure);
        EXPECT_EQ(TranslationFailure(doubled(method)), kBadTargets);
    }
}

TEST(TargetCount, ThreeCategoriesOneAgainstOneNeedExactlyThreeMachines) {
    const std::string one = MachineText(R"(targetCategory="no" alternateTargetCategory="yes")");
    EXPECT_EQ(TranslationFailure(ThreeCategories()), kNoFailure);
    EXPECT_EQ(TranslationFailure(ThreeCategories().Remove(one)), kBadTargets);
    EXPECT_EQ(TranslationFailure(ThreeCategories().InsertBefore(one, one)), kBadTargets);
}

TEST(TargetCount, ThreeCategoriesOneAgainstAllTakeAnyNumberOfMachines) {
    std::string machines;
    for (int count = 1; count <= 5; ++count) {
        machines += kTwoCategoryMachine;
        EXPECT_EQ(TranslationFailure(ThreeCategories()
                                         .Replace(R"("OneAgainstOne")", R"("OneAgainstAll")")
                                         .Replace(kThreeMachines, machines)),
                  kNoFailure)
            << count;
    }
}

TEST(TargetCount, IsStoredAndTheModelCollectsTheCategoriesInOrder) {
    const auto three = Translate(ThreeCategories());
    EXPECT_EQ(three->GetSupportVectorMachineModel()->GetTargetCategoryCount(), 3);
    EXPECT_EQ(three->GetTargetCategoryNames(), (std::vector<std::string>{"no", "yes", "maybe"}));
    const auto regression = Translate(Regression());
    EXPECT_EQ(regression->GetSupportVectorMachineModel()->GetTargetCategoryCount(), 1);
    EXPECT_TRUE(regression->GetTargetCategoryNames().empty());
}

TEST(TargetCount, ComesBeforeTheVectorDictionaryAndTheKernel) {
    EXPECT_EQ(TranslationFailure(TwoCategories()
                                     .Remove(kTwoCategoryMachine)
                                     .Replace("<VectorFields>", "<Nothing>")
                                     .Replace("</VectorFields>", "</Nothing>")
                                     .Remove("<LinearKernelType/>")),
              kBadTargets);
}

SvmDocument WithKernel(const std::string& kernel) {
    return TwoCategories().Replace("<LinearKernelType/>", kernel);
}

std::int32_t KernelOf(const std::string& kernels) {
    return Read(WithKernel(kernels), &SVMModelData::GetKernelType);
}

TEST(Kernel, EachElementHasItsType) {
    EXPECT_EQ(KernelOf("<LinearKernelType/>"), 0);
    EXPECT_EQ(KernelOf("<PolynomialKernelType/>"), 1);
    EXPECT_EQ(KernelOf("<RadialBasisKernelType/>"), 2);
    EXPECT_EQ(KernelOf("<SigmoidKernelType/>"), 3);
}

TEST(Kernel, OfSeveralTheFirstInTheOrderOfTypesIsRead) {
    const auto document = WithKernel(
        R"(<SigmoidKernelType gamma="7.5"/><RadialBasisKernelType gamma="3.5"/><PolynomialKernelType gamma="2.5"/>)");
    EXPECT_EQ(Read(document, &SVMModelData::GetKernelType), 1);
    EXPECT_EQ(Read(document, &SVMModelData::GetGamma), 2.5);
    EXPECT_EQ(KernelOf("<RadialBasisKernelType/><LinearKernelType/>"), 0);
    EXPECT_EQ(KernelOf("<SigmoidKernelType/><RadialBasisKernelType/>"), 2);
}

TEST(Kernel, NoneOrOnlyNestedOrUnknownIsAnErrorThatNamesTheLinearOne) {
    const Failure noKernel{260115, {"LinearKernelType", "SupportVectorMachineModel"}};
    EXPECT_EQ(TranslationFailure(WithKernel("")), noKernel);
    EXPECT_EQ(TranslationFailure(WithKernel("<Extension><SigmoidKernelType/></Extension>")), noKernel);
    EXPECT_EQ(TranslationFailure(WithKernel("<StringKernelType/>")), noKernel);
}

struct KernelAttribute {
    const char* name;
    double (SVMModelData::*get)() const;
};

constexpr KernelAttribute kKernelAttributes[] = {
    {"gamma", &SVMModelData::GetGamma}, {"coef0", &SVMModelData::GetCoef0}, {"degree", &SVMModelData::GetDegree}};

SvmDocument WithSigmoid(const char* attribute, const std::string& value) {
    return WithKernel("<SigmoidKernelType " + std::string(attribute) + "=\"" + value + "\"/>");
}

TEST(Kernel, EachParameterIsReadIntoItsOwnField) {
    for (const auto& [name, get] : kKernelAttributes) {
        const auto model = Translate(WithSigmoid(name, "-2.375"));
        for (const auto& [otherName, otherGet] : kKernelAttributes)
            EXPECT_EQ((model->GetSupportVectorMachineModel()->*otherGet)(), otherGet == get ? -2.375 : 1.0)
                << name << ' ' << otherName;
    }
}

TEST(Kernel, MinusOneCountsAsNotGivenAndLeavesAParameterAtOne) {
    for (const auto& [name, get] : kKernelAttributes) {
        EXPECT_EQ(Read(WithSigmoid(name, "-1"), get), 1.0) << name;
        EXPECT_EQ(Read(WithSigmoid(name, " -1.0 "), get), 1.0) << name;
        EXPECT_EQ(Read(WithSigmoid(name, "-1.0000000000000002"), get), -1.0000000000000002) << name;
    }
}

TEST(Kernel, AParameterMayBeZeroOrInfiniteOrNaN) {
    for (const auto& [name, get] : kKernelAttributes) {
        EXPECT_EQ(Read(WithSigmoid(name, "0"), get), 0.0) << name;
        EXPECT_EQ(Read(WithSigmoid(name, "1e999"), get), std::numeric_limits<double>::infinity()) << name;
        EXPECT_TRUE(std::isnan(Read(WithSigmoid(name, "NaN"), get))) << name;
    }
}

TEST(Kernel, AParameterThatIsNoNumberIsAnError) {
    for (const auto& [name, get] : kKernelAttributes) {
        for (const std::string garbage : {"", "auto", "1/3", "0,5"})
            EXPECT_EQ(TranslationFailure(WithSigmoid(name, garbage)),
                      (Failure{260153, {garbage, name, "SigmoidKernelType"}}));
    }
}

TEST(Kernel, IsReadAfterTheMachines) {
    EXPECT_EQ(TranslationFailure(WithKernel("").Replace(R"(targetCategory="yes" )", "")),
              (Failure{260120, {"targetCategory", "SupportVectorMachine"}}));
}

}  // namespace
}  // namespace KwBrevix_930
