// The machines of a model: support vectors, coefficients, the maker's extension and categories, read from whole
// documents.
#include <cmath>
#include <limits>

#include <gtest/gtest.h>
#include <xercesc/dom/DOM.hpp>

#include "host/BrevixTranscoder.h"
#include "host/DOMElemUtility.h"
#include "host/DocumentParser.h"
#include "host/NumericValue.h"
#include "pmml/SVMModelData.h"
#include "pmml/SupportVectorMachineReader.h"
#include "tests/support/svm_document.h"

namespace KwBrevix_930 {
namespace {

using test_support::Failure;
using test_support::FailureOf;
using test_support::kNoFailure;
using test_support::kRegressionMachine;
using test_support::kThreeMachines;
using test_support::kTwoCategoryMachine;
using test_support::MachineText;
using test_support::Regression;
using test_support::SvmDocument;
using test_support::ThreeCategories;
using test_support::Translate;
using test_support::TranslationFailure;
using test_support::TwoCategories;

using Values = std::vector<double>;

const double kMissing = NumericValue::GetSysmisValue();
const Failure kBadMachine{260221, {"SupportVectorMachine"}};
const std::string kCategories = R"(targetCategory="yes" alternateTargetCategory="no")";
const std::string kVectors =
    R"(<SupportVectors><SupportVector vectorId="v1"/><SupportVector vectorId="v2"/></SupportVectors>)";
const std::string kCoefficients =
    R"(<Coefficients absoluteValue="0.125"><Coefficient value="0.75"/><Coefficient value="-0.5"/></Coefficients>)";

// A model and its machines.
struct Machines {
    explicit Machines(const SvmDocument& document) : model(Translate(document)) {}

    const SVMModelData& Data() const { return *model->GetSupportVectorMachineModel(); }
    const ST_SUPPORTVECTORMACHINE& operator[](std::size_t index) const { return *Data().GetMachines().at(index); }

    std::unique_ptr<SVMModel> model;
};

SvmDocument WithMachine(const std::string& attributes, const std::string& extension = "") {
    return TwoCategories().Replace(kTwoCategoryMachine, MachineText(attributes, extension));
}

SvmDocument WithVectors(const std::string& vectors) {
    return TwoCategories().Replace(kVectors, vectors);
}

SvmDocument WithCoefficients(const std::string& coefficients) {
    return TwoCategories().Replace(kCoefficients, coefficients);
}

TEST(Machine, IsReadInFull) {
    const Machines machines(TwoCategories());
    ASSERT_EQ(machines.Data().GetMachines().size(), 1u);
    EXPECT_EQ(machines[0].targetCategoryIndex, 1);
    EXPECT_EQ(machines[0].alternateTargetCategoryIndex, 0);
    EXPECT_EQ(machines[0].threshold, 0.0625);
    EXPECT_EQ(machines[0].bias, 0.125);
    EXPECT_EQ(machines[0].coefficients, (Values{0.75, -0.5}));
    EXPECT_EQ(machines[0].extension, nullptr);
    const auto& instances = machines.Data().GetVectorInstances();
    EXPECT_EQ(machines[0].supportVectors,
              (std::vector<SVMVectorInstance*>{instances.at("v1").get(), instances.at("v2").get()}));
}

TEST(Machine, MachinesStandInDocumentOrder) {
    const Machines machines(ThreeCategories());
    ASSERT_EQ(machines.Data().GetMachines().size(), 3u);
    const std::int32_t expected[][2] = {{0, 1}, {0, 2}, {1, 2}};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(machines[i].targetCategoryIndex, expected[i][0]);
        EXPECT_EQ(machines[i].alternateTargetCategoryIndex, expected[i][1]);
    }
}

// In a whole document the check of the targets comes first.
TEST(Machine, AModelElementWithoutOneIsAnErrorAndLeavesTheDataWithoutMachines) {
    const DocumentHandle document = DocumentParser().ParseText("<SupportVectorMachineModel/>");
    SVMTranslator translator;
    const BrevixTranscoder transcoder;
    const DOMElemUtility utility(&translator, &transcoder);
    SVMModel model;
    SVMModelData data;
    SupportVectorMachineReader reader(utility, model, data);
    EXPECT_EQ(FailureOf([&] { reader.ReadMachines(*document->getDocumentElement()); }),
              (Failure{260115, {"SupportVectorMachine", "SupportVectorMachineModel"}}));
    EXPECT_TRUE(data.GetMachines().empty());
}

TEST(Machine, MissingOrEmptyListsAreErrors) {
    EXPECT_EQ(TranslationFailure(WithVectors("")), (Failure{260115, {"SupportVectors", "SupportVectorMachine"}}));
    EXPECT_EQ(TranslationFailure(WithCoefficients("")), (Failure{260115, {"Coefficients", "SupportVectorMachine"}}));
    EXPECT_EQ(TranslationFailure(WithVectors("<SupportVectors/>")), (Failure{260114, {"SupportVectors"}}));
    EXPECT_EQ(TranslationFailure(WithCoefficients("<Coefficients/>")), (Failure{260114, {"Coefficients"}}));
}

TEST(Machine, ErrorsOfItsListsComeInThisOrder) {
    SvmDocument document = WithVectors("<SupportVectors/>").Remove(kCoefficients);
    EXPECT_EQ(TranslationFailure(document), (Failure{260115, {"Coefficients", "SupportVectorMachine"}}));
    EXPECT_EQ(TranslationFailure(WithVectors("<SupportVectors/>").Replace(kCoefficients, "<Coefficients/>")),
              (Failure{260114, {"SupportVectors"}}));
}

TEST(SupportVectors, AMissingVectorIdIsAnErrorOfTheMachine) {
    EXPECT_EQ(TranslationFailure(TwoCategories().Remove(R"( vectorId="v2")")), kBadMachine);
}

TEST(SupportVectors, FewerCoefficientsAreAnErrorOfTheMachine) {
    EXPECT_EQ(TranslationFailure(TwoCategories().Remove(R"(<Coefficient value="-0.5"/>)")), kBadMachine);
}

TEST(SupportVectors, FewerCoefficientsAreAnErrorEvenForVectorsThatWouldBeDropped) {
    EXPECT_EQ(TranslationFailure(TwoCategories()
                                     .Replace(R"(vectorId="v2")", R"(vectorId="nobody")")
                                     .Remove(R"(<Coefficient value="-0.5"/>)")),
              kBadMachine);
}

TEST(SupportVectors, MoreCoefficientsAreIgnoredUnread) {
    const Machines machines(TwoCategories().Replace(R"(<Coefficient value="-0.5"/>)",
                                                    R"(<Coefficient value="-0.5"/><Coefficient value="garbage"/>)"));
    EXPECT_EQ(machines[0].coefficients, (Values{0.75, -0.5}));
}

TEST(SupportVectors, ACoefficientWithoutNumberIsAnErrorOfTheMachine) {
    for (const char* value : {"", R"( value="")", R"( value="0,5")", R"( value="x")", R"( value="0x1")"})
        EXPECT_EQ(TranslationFailure(TwoCategories().Replace(R"( value="-0.5")", value)), kBadMachine) << value;
}

TEST(SupportVectors, ACoefficientOfMinusOneStands) {
    const Machines machines(TwoCategories().Replace(R"( value="-0.5")", R"( value="-1")"));
    EXPECT_EQ(machines[0].coefficients, (Values{0.75, -1.0}));
}

TEST(SupportVectors, ACoefficientMayBeInfiniteOrNaN) {
    const Machines machines(
        TwoCategories().Replace(R"( value="0.75")", R"( value="-INF")").Replace(R"( value="-0.5")", R"( value="NaN")"));
    EXPECT_EQ(machines[0].coefficients[0], -std::numeric_limits<double>::infinity());
    EXPECT_TRUE(std::isnan(machines[0].coefficients[1]));
}

TEST(SupportVectors, AnIdOfNoInstanceIsDroppedWithItsCoefficient) {
    const Machines machines(TwoCategories().Replace(R"(vectorId="v1")", R"(vectorId="nobody")"));
    EXPECT_EQ(machines[0].supportVectors,
              (std::vector<SVMVectorInstance*>{machines.Data().GetVectorInstances().at("v2").get()}));
    EXPECT_EQ(machines[0].coefficients, Values{-0.5});
}

TEST(SupportVectors, AnInstanceThatWasNotStoredIsDroppedWithItsCoefficient) {
    const Machines machines(TwoCategories().Replace(
        "<REAL-SparseArray n=\"3\"><Indices>1 3</Indices><REAL-Entries>0.5 -1.25</REAL-Entries></REAL-SparseArray>",
        R"(<Array type="real">0.5 0 -1.25</Array>)"));
    EXPECT_EQ(machines[0].coefficients, Values{-0.5});
    EXPECT_EQ(machines[0].supportVectors.size(), 1u);
}

TEST(SupportVectors, AllMayBeDropped) {
    const Machines machines(WithVectors(R"(<SupportVectors><SupportVector vectorId=""/></SupportVectors>)"));
    EXPECT_TRUE(machines[0].supportVectors.empty());
    EXPECT_TRUE(machines[0].coefficients.empty());
}

TEST(SupportVectors, OneInstanceMayStandInAMachineSeveralTimes) {
    const Machines machines(TwoCategories().Replace(R"(vectorId="v2")", R"(vectorId="v1")"));
    EXPECT_EQ(machines[0].supportVectors[0], machines[0].supportVectors[1]);
    EXPECT_EQ(machines[0].coefficients, (Values{0.75, -0.5}));
}

TEST(SupportVectors, OtherElementsBetweenThemDoNotShiftTheCoefficients) {
    const Machines machines(
        WithVectors(R"(<SupportVectors><Extension/><SupportVector vectorId="v1"/>text<Extension/>)"
                    R"(<SupportVector vectorId="v2"/></SupportVectors>)")
            .Replace(kCoefficients, R"(<Coefficients><Extension><Coefficient value="9"/></Extension>)"
                                    R"(<Coefficient value="0.25"/><!-- --><Coefficient value="4.5"/></Coefficients>)"));
    EXPECT_EQ(machines[0].coefficients, (Values{0.25, 4.5}));
}

TEST(MachineThreshold, IsTheModelsWhenAbsentAndItsOwnWhenGiven) {
    EXPECT_EQ(Machines(WithMachine(kCategories))[0].threshold, 0.0625);
    EXPECT_EQ(Machines(WithMachine(kCategories + R"( threshold="0")"))[0].threshold, 0.0);
    EXPECT_EQ(Machines(WithMachine(kCategories + R"( threshold="-2.5")"))[0].threshold, -2.5);
}

TEST(MachineThreshold, OfMinusOneCountsAsAbsent) {
    EXPECT_EQ(Machines(WithMachine(kCategories + R"( threshold="-1.0")"))[0].threshold, 0.0625);
}

TEST(MachineThreshold, AModelThresholdOfMinusOneIsHandedOn) {
    EXPECT_EQ(Machines(TwoCategories().Replace(R"( threshold="0.0625")", R"( threshold="-1")"))[0].threshold, -1.0);
}

TEST(MachineThreshold, ThatIsNoNumberIsAnError) {
    EXPECT_EQ(TranslationFailure(WithMachine(kCategories + R"( threshold="half")")),
              (Failure{260153, {"half", "threshold", "SupportVectorMachine"}}));
    EXPECT_EQ(TranslationFailure(WithMachine(kCategories + R"( threshold="")")),
              (Failure{260153, {"", "threshold", "SupportVectorMachine"}}));
}

TEST(AbsoluteValue, OfMinusOneStandsAndAbsentIsZero) {
    const auto bias = [](const std::string& attribute) {
        return Machines(TwoCategories().Replace(R"( absoluteValue="0.125")", attribute))[0].bias;
    };
    EXPECT_EQ(bias(R"( absoluteValue="-1")"), -1.0);
    EXPECT_EQ(bias(""), 0.0);
    EXPECT_EQ(bias(R"( absoluteValue="-INF")"), -std::numeric_limits<double>::infinity());
    EXPECT_TRUE(std::isnan(bias(R"( absoluteValue="NaN")")));
}

TEST(AbsoluteValue, ThatIsNoNumberIsAnError) {
    for (const std::string garbage : {"", "1,5", "b"})
        EXPECT_EQ(TranslationFailure(TwoCategories().Replace(R"("0.125")", '"' + garbage + '"')),
                  (Failure{260153, {garbage, "absoluteValue", "Coefficients"}}));
}

TEST(CategoryIndex, OfAnUnknownCategoryIsTheNumberOfCategories) {
    const Machines two(WithMachine(R"(targetCategory="YES" alternateTargetCategory="no ")"));
    EXPECT_EQ(two[0].targetCategoryIndex, 2);
    EXPECT_EQ(two[0].alternateTargetCategoryIndex, 2);
    const Machines three(ThreeCategories().Replace(R"(targetCategory="yes" alternateTargetCategory="maybe")",
                                                   R"(targetCategory="never" alternateTargetCategory="maybe")"));
    EXPECT_EQ(three[2].targetCategoryIndex, 3);
    EXPECT_EQ(three[2].alternateTargetCategoryIndex, 2);
}

TEST(CategoryIndex, IsComparedByteForByteWithTheCategoryAsWritten) {
    const Machines machines(
        TwoCategories()
            .Replace(R"(<Value value="no"/><Value value="yes"/>)", R"(<Value value="01"/><Value value="1"/>)")
            .Replace(kCategories, R"(targetCategory="1" alternateTargetCategory="1.0")"));
    EXPECT_EQ(machines[0].targetCategoryIndex, 1);
    EXPECT_EQ(machines[0].alternateTargetCategoryIndex, 2);
}

TEST(CategoryIndex, OfCategoriesBeyondAsciiIsFound) {
    const Machines machines(TwoCategories()
                                .Replace(R"(<Value value="yes"/>)", "<Value value=\"s\xC3\xAC\"/>")
                                .Replace(R"(targetCategory="yes")", "targetCategory=\"s&#xEC;\""));
    EXPECT_EQ(machines[0].targetCategoryIndex, 1);
}

TEST(CategoryIndex, WithoutCategoriesIsZero) {
    const Machines machines(Regression().Replace(kRegressionMachine, MachineText(R"(targetCategory="anything")")));
    EXPECT_EQ(machines[0].targetCategoryIndex, 0);
    EXPECT_EQ(machines[0].alternateTargetCategoryIndex, -1);
}

const Failure kNoTarget{260120, {"targetCategory", "SupportVectorMachine"}};
const Failure kNoAlternate{260120, {"alternateTargetCategory", "SupportVectorMachine"}};

TEST(MachineCategories, BothAreRequiredForTwoCategoriesWhateverTheMethod) {
    const std::string method = R"(threshold="0.0625" classificationMethod="OneAgainstAll")";
    for (const bool hasMethod : {false, true}) {
        const auto failure = [&](const std::string& attributes) {
            SvmDocument document = WithMachine(attributes);
            return TranslationFailure(hasMethod ? document.Replace(R"(threshold="0.0625")", method) : document);
        };
        EXPECT_EQ(failure(R"(alternateTargetCategory="no")"), kNoTarget);
        EXPECT_EQ(failure(R"(targetCategory="yes")"), kNoAlternate);
        EXPECT_EQ(failure(""), kNoTarget);
    }
}

// Each document fails at two places of a machine, and the earlier one is told.
TEST(Machine, VectorsComeBeforeCategoriesAndThoseBeforeThresholdAndBias) {
    const std::string noTarget = R"(alternateTargetCategory="no")";
    const std::string badThreshold = R"( threshold="x")";
    const auto withBias = [](SvmDocument document, const std::string& bias) {
        return document.Replace(R"("0.125")", '"' + bias + '"');
    };
    EXPECT_EQ(TranslationFailure(WithMachine(noTarget).Remove(R"( vectorId="v1")")), kBadMachine);
    EXPECT_EQ(TranslationFailure(WithMachine(noTarget + badThreshold)), kNoTarget);
    EXPECT_EQ(TranslationFailure(withBias(WithMachine(noTarget), "x")), kNoTarget);
    EXPECT_EQ(TranslationFailure(withBias(WithMachine(kCategories + badThreshold), "y")),
              (Failure{260153, {"x", "threshold", "SupportVectorMachine"}}));
}

SvmDocument OneAgainstAll(const std::string& machine) {
    return ThreeCategories().Replace(R"("OneAgainstOne")", R"("OneAgainstAll")").Replace(kThreeMachines, machine);
}

TEST(MachineCategories, TheAlternateIsRequiredForThreeCategoriesOneAgainstOneOnly) {
    EXPECT_EQ(TranslationFailure(ThreeCategories().Replace(R"(targetCategory="no" alternateTargetCategory="yes")",
                                                           R"(targetCategory="no")")),
              kNoAlternate);
    const Machines machines(OneAgainstAll(MachineText(R"(targetCategory="maybe")")));
    EXPECT_EQ(machines[0].targetCategoryIndex, 2);
    EXPECT_EQ(machines[0].alternateTargetCategoryIndex, -1);
    EXPECT_EQ(TranslationFailure(OneAgainstAll(MachineText(R"(alternateTargetCategory="no")"))), kNoTarget);
}

TEST(MachineCategories, AnEmptyTextIsPresentButSetsNothing) {
    const Machines machines(WithMachine(R"(targetCategory="" alternateTargetCategory="")"));
    EXPECT_EQ(machines[0].targetCategoryIndex, -1);
    EXPECT_EQ(machines[0].alternateTargetCategoryIndex, -1);
}

TEST(MachineCategories, AreNotRequiredForRegression) {
    const Machines machines{Regression()};
    EXPECT_EQ(machines[0].targetCategoryIndex, -1);
    EXPECT_EQ(machines[0].alternateTargetCategoryIndex, -1);
}

const std::string kResponse = R"(<ResponseCategory response="yes" nonresponse="no"/>)";
const std::string kProbability = R"(<ProbabilityParam A="-1.5" B="0.375"/>)";

std::string Zarn(const std::string& content) {
    return R"(<Extension extender="ZARN">)" + content + "</Extension>";
}

TEST(ClassificationExtension, IsReadInFull) {
    const Machines machines(WithMachine("", Zarn(kResponse + kProbability)));
    ASSERT_NE(machines[0].extension, nullptr);
    EXPECT_EQ(machines[0].extension->responseCategoryIndex, 1);
    EXPECT_EQ(machines[0].extension->nonresponseCategoryIndex, 0);
    EXPECT_EQ(machines[0].extension->probabilityA, -1.5);
    EXPECT_EQ(machines[0].extension->probabilityB, 0.375);
    EXPECT_EQ(machines[0].extension->standardDeviation, kMissing);
    EXPECT_TRUE(machines.Data().GetIsZarnModel());
    EXPECT_TRUE(machines.Data().GetHasStandardDeviation());
}

TEST(ClassificationExtension, MakesTheCategoryAttributesOptionalButThoseGivenAreRead) {
    const Machines absent(WithMachine("", Zarn(kResponse)));
    EXPECT_EQ(absent[0].targetCategoryIndex, -1);
    EXPECT_EQ(absent[0].alternateTargetCategoryIndex, -1);
    const Machines given(WithMachine(kCategories, Zarn(kResponse)));
    EXPECT_EQ(given[0].targetCategoryIndex, 1);
    EXPECT_EQ(given[0].alternateTargetCategoryIndex, 0);
}

TEST(ClassificationExtension, AnAbsentAOrBIsSystemMissingAndAWrittenMinusOneStands) {
    const auto parameters = [](const std::string& element) {
        const Machines machines(WithMachine("", Zarn(kResponse + element)));
        return std::pair(machines[0].extension->probabilityA, machines[0].extension->probabilityB);
    };
    EXPECT_EQ(parameters(""), std::pair(kMissing, kMissing));
    EXPECT_EQ(parameters("<ProbabilityParam/>"), std::pair(kMissing, kMissing));
    EXPECT_EQ(parameters(R"(<ProbabilityParam A="-1"/>)"), std::pair(-1.0, kMissing));
    EXPECT_EQ(parameters(R"(<ProbabilityParam B="-1.0"/>)"), std::pair(kMissing, -1.0));
}

TEST(ClassificationExtension, CategoriesAreIndicesAndUnknownOnesTheNumberOfCategories) {
    const Machines machines(WithMachine("", Zarn(R"(<ResponseCategory response="no" nonresponse="other"/>)")));
    EXPECT_EQ(machines[0].extension->responseCategoryIndex, 0);
    EXPECT_EQ(machines[0].extension->nonresponseCategoryIndex, 2);
}

TEST(ClassificationExtension, WithAnEmptyCategoryNamesNeither) {
    for (const char* element : {R"(<ResponseCategory response="" nonresponse="no"/>)",
                                R"(<ResponseCategory response="yes" nonresponse=""/>)"}) {
        const Machines machines(WithMachine("", Zarn(element)));
        ASSERT_NE(machines[0].extension, nullptr);
        EXPECT_EQ(machines[0].extension->responseCategoryIndex, -1);
        EXPECT_EQ(machines[0].extension->nonresponseCategoryIndex, -1);
    }
}

// What makes an extension unreadable, one by one.
const std::string kUnreadable[] = {"",
                                   kProbability,
                                   R"(<ResponseCategory nonresponse="no"/>)" + kProbability,
                                   R"(<ResponseCategory response="yes"/>)" + kProbability,
                                   kResponse + R"(<ProbabilityParam A="x" B="0.375"/>)",
                                   kResponse + R"(<ProbabilityParam A="" B="0.375"/>)",
                                   kResponse + R"(<ProbabilityParam A="-1.5" B="0,375"/>)",
                                   "<Extension>" + kResponse + "</Extension>"};

TEST(ClassificationExtension, ThatCannotBeReadIsNoneWithoutAMessage) {
    for (const std::string& content : kUnreadable) {
        const Machines machines(WithMachine(kCategories, Zarn(content)));
        EXPECT_EQ(machines[0].extension, nullptr) << content;
        EXPECT_FALSE(machines.Data().GetIsZarnModel());
        EXPECT_FALSE(machines.Data().GetHasStandardDeviation());
    }
}

TEST(ClassificationExtension, ThatCannotBeReadLeavesTheCategoryAttributesRequired) {
    for (const std::string& content : kUnreadable)
        EXPECT_EQ(TranslationFailure(WithMachine("", Zarn(content))), kNoTarget) << content;
}

TEST(Extension, OfAnotherExtenderIsIgnored) {
    for (const char* start : {"<Extension>", R"(<Extension extender="zarn">)", R"(<Extension extender="ZARN ">)",
                              R"(<Extension extender="">)", R"(<Extension name="ZARN">)"}) {
        const Machines machines(WithMachine(kCategories, start + kResponse + "</Extension>"));
        EXPECT_EQ(machines[0].extension, nullptr) << start;
    }
}

TEST(Extension, OnlyTheFirstIsExamined) {
    const Machines other(WithMachine(kCategories, R"(<Extension extender="other"/>)" + Zarn(kResponse)));
    EXPECT_EQ(other[0].extension, nullptr);
    const Machines first(
        WithMachine(kCategories, Zarn(kResponse) + Zarn(R"(<ResponseCategory response="no" nonresponse="yes"/>)")));
    EXPECT_EQ(first[0].extension->responseCategoryIndex, 1);
}

TEST(Extension, OnlyAChildOfTheMachineIsExamined) {
    const Machines machines(WithMachine(kCategories, "<Other>" + Zarn(kResponse) + "</Other>"));
    EXPECT_EQ(machines[0].extension, nullptr);
}

TEST(Extension, TheLastMachinesFlagCountsForTheModel) {
    const auto flags = [](bool first, bool last) {
        const std::string machines[] = {MachineText(R"(targetCategory="no")", first ? Zarn(kResponse) : ""),
                                        MachineText(R"(targetCategory="yes")", Zarn(kResponse)),
                                        MachineText(R"(targetCategory="maybe")", last ? Zarn(kResponse) : "")};
        const Machines read(OneAgainstAll(machines[0] + machines[1] + machines[2]));
        EXPECT_EQ(read[0].extension != nullptr, first);
        EXPECT_EQ(read[2].extension != nullptr, last);
        EXPECT_EQ(read.Data().GetIsZarnModel(), read.Data().GetHasStandardDeviation());
        return read.Data().GetIsZarnModel();
    };
    EXPECT_FALSE(flags(true, false));
    EXPECT_TRUE(flags(false, true));
    EXPECT_TRUE(flags(true, true));
    EXPECT_FALSE(flags(false, false));
}

SvmDocument RegressionWith(const std::string& extension) {
    return Regression().Replace(kRegressionMachine, MachineText("", extension));
}

TEST(RegressionExtension, HoldsTheStandardDeviationOnly) {
    const Machines machines(
        RegressionWith(Zarn("<StandardDeviation> 0.6<!-- -->25 </StandardDeviation>" + kResponse + kProbability)));
    ASSERT_NE(machines[0].extension, nullptr);
    EXPECT_EQ(machines[0].extension->standardDeviation, 0.625);
    EXPECT_EQ(machines[0].extension->probabilityA, kMissing);
    EXPECT_EQ(machines[0].extension->probabilityB, kMissing);
    EXPECT_EQ(machines[0].extension->responseCategoryIndex, -1);
    EXPECT_EQ(machines[0].extension->nonresponseCategoryIndex, -1);
    EXPECT_TRUE(machines.Data().GetIsZarnModel());
    EXPECT_TRUE(machines.Data().GetHasStandardDeviation());
}

TEST(RegressionExtension, OfMinusOneStands) {
    EXPECT_EQ(
        Machines(RegressionWith(Zarn("<StandardDeviation>-1</StandardDeviation>")))[0].extension->standardDeviation,
        -1.0);
}

TEST(RegressionExtension, WithoutStandardDeviationIsNone) {
    const Machines machines(RegressionWith(Zarn(kResponse + kProbability)));
    EXPECT_EQ(machines[0].extension, nullptr);
    EXPECT_FALSE(machines.Data().GetHasStandardDeviation());
}

TEST(RegressionExtension, AStandardDeviationThatIsNoNumberIsAnError) {
    for (const std::string garbage : {"", "wide", "0,5", "0.5 0.6"})
        EXPECT_EQ(TranslationFailure(RegressionWith(Zarn("<StandardDeviation>" + garbage + "</StandardDeviation>"))),
                  (Failure{260153, {garbage, "StandardDeviation", "Extension"}}));
}

TEST(ClassificationExtension, IgnoresAStandardDeviation) {
    const Machines machines(
        WithMachine("", Zarn("<StandardDeviation>garbage</StandardDeviation>" + kResponse + kProbability)));
    ASSERT_NE(machines[0].extension, nullptr);
    EXPECT_EQ(machines[0].extension->standardDeviation, kMissing);
}

}  // namespace
}  // namespace KwBrevix_930
