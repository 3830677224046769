// Machines as exporters write them, rewritten and scored: the result is what the document means.
#include <cmath>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/number_text.h"
#include "tests/runtime/SmallDocument.h"
#include "tests/runtime/opened_model.h"

namespace {

using KwBrevix_930::NumberText;
using test_support::faultOf;
using test_support::openText;
using test_support::predictCase;
using test_support::scoreCase;
using test_support::SmallDocument;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// Two machines over x and y: red's value is 1.5 x - 0.75 y + 0.125, blue's 0.5 x + 2 y - 0.25.
SmallDocument twoMachines(const std::string& attributes) {
    SmallDocument parts;
    parts.modelAttributes = attributes;
    parts.machines = SmallDocument::machine(R"(targetCategory="red")") +
                     R"(<SupportVectorMachine targetCategory="blue"><SupportVectors><SupportVector vectorId="v2"/>)"
                     R"(<SupportVector vectorId="v1"/></SupportVectors><Coefficients absoluteValue="-0.25">)"
                     R"(<Coefficient value="2"/><Coefficient value="0.5"/></Coefficients></SupportVectorMachine>)";
    return parts;
}

struct MethodRow {
    const char* attributes;
    bool isLargest;
};

class TwoMachines : public testing::TestWithParam<MethodRow> {};

TEST_P(TwoMachines, ChooseAsOneAgainstAllDoes) {
    const auto model = openText(twoMachines(GetParam().attributes).makeText());
    EXPECT_THAT(model->getCategories(), ElementsAre("red", "blue"));
    int reds = 0;
    int ties = 0;
    for (double x = -2.0; x <= 2.0; x += 0.125) {
        for (double y = -2.0; y <= 2.0; y += 0.125) {
            const double red = 1.5 * x - 0.75 * y + 0.125;
            const double blue = 0.5 * x + 2.0 * y - 0.25;
            const bool isRed = GetParam().isLargest ? red >= blue : red <= blue;
            reds += isRed ? 1 : 0;
            ties += red == blue ? 1 : 0;
            EXPECT_EQ(predictCase(*model, {{"x", NumberText(x)}, {"y", NumberText(y)}}), isRed ? "red" : "blue")
                << x << " " << y;
        }
    }
    EXPECT_GT(ties, 0);
    EXPECT_GT(reds, 300);
    EXPECT_LT(reds, 800);
    EXPECT_THAT(model->getNotes(),
                ElementsAre(HasSubstr(GetParam().isLargest ? "the larger of their" : "the smaller of their")));
}

INSTANTIATE_TEST_SUITE_P(Preparation, TwoMachines,
                         testing::Values(MethodRow{"", false}, MethodRow{R"(threshold="7.5")", false},
                                         MethodRow{R"(maxWins="false")", false},
                                         MethodRow{R"(classificationMethod="OneAgainstAll" maxWins="true")", true},
                                         MethodRow{R"(classificationMethod="OneAgainstAll" threshold="-3")", false}));

TEST(PreparationMachines, TwoMachinesThatMeanSomethingElseAreRefused) {
    EXPECT_THAT(faultOf(twoMachines(R"(classificationMethod="OneAgainstOne")")), HasSubstr("one-against-one"));
    SmallDocument twice = twoMachines("");
    twice.machines =
        SmallDocument::machine(R"(targetCategory="red")") + SmallDocument::machine(R"(targetCategory="red")");
    EXPECT_THAT(faultOf(twice), HasSubstr("260221"));
    SmallDocument pairs = twoMachines("");
    pairs.machines = SmallDocument::machine(R"(targetCategory="red" alternateTargetCategory="blue")") +
                     SmallDocument::machine(R"(targetCategory="blue" alternateTargetCategory="red")");
    EXPECT_THAT(faultOf(pairs), HasSubstr("260221"));
}

TEST(PreparationMachines, TwoMachinesOfWhichOneHasMoreVectorsThanCoefficientsAreRefused) {
    for (const std::string place : {"<SupportVectors>", "</SupportVectors>"}) {
        SmallDocument parts = twoMachines("");
        const std::size_t found = place[1] == '/' ? parts.machines.rfind(place) : parts.machines.find(place);
        parts.machines.insert(found + (place[1] == '/' ? 0 : place.size()), R"(<SupportVector vectorId="v1"/>)");
        EXPECT_EQ(faultOf(parts), "two machines for one category each, and one has more vectors than coefficients");
    }
}

TEST(PreparationMachines, TwoMachinesGiveATargetWithoutValuesItsCategories) {
    SmallDocument parts = twoMachines("");
    parts.targetField = R"(<DataField name="hue" optype="categorical" dataType="string"/>)";
    const auto model = openText(parts.makeText());
    EXPECT_THAT(model->getCategories(), ElementsAre("red", "blue"));
    EXPECT_EQ(predictCase(*model, {{"x", "-1"}, {"y", "0"}}), "red");
    EXPECT_EQ(predictCase(*model, {{"x", "1"}, {"y", "0"}}), "blue");
}

TEST(PreparationMachines, AlternateCategoryOfTheModelIsItsMachines) {
    SmallDocument parts;
    parts.version = "3.2";
    parts.modelAttributes = R"(alternateBinaryTargetCategory="blue")";
    parts.machines = SmallDocument::machine(R"(targetCategory="red")");
    const auto model = openText(parts.makeText());
    EXPECT_EQ(predictCase(*model, {{"x", "-1"}, {"y", "0"}}), "red");
    EXPECT_EQ(predictCase(*model, {{"x", "1"}, {"y", "0"}}), "blue");
    EXPECT_THAT(model->getNotes(),
                ElementsAre("the model's alternateBinaryTargetCategory='blue' was read as its machine's "
                            "alternateTargetCategory"));
    parts.targetField = R"(<DataField name="hue" optype="categorical" dataType="string"/>)";
    EXPECT_THAT(openText(parts.makeText())->getCategories(), ElementsAre("red", "blue"));
    parts.machines = SmallDocument::machine(R"(targetCategory="red" alternateTargetCategory="green")");
    EXPECT_EQ(faultOf(parts),
              "the machine's alternateTargetCategory='green' is not the model's "
              "alternateBinaryTargetCategory='blue'");
}

TEST(PreparationMachines, OnlyMachineOfTwoCategoriesNamesBothByNamingOne) {
    SmallDocument parts;
    parts.machines = SmallDocument::machine(R"(targetCategory="blue")");
    const auto model = openText(parts.makeText());
    EXPECT_EQ(predictCase(*model, {{"x", "-1"}, {"y", "0"}}), "blue");
    EXPECT_EQ(predictCase(*model, {{"x", "1"}, {"y", "0"}}), "red");
    EXPECT_EQ(model->getNotes().size(), 1u);
    parts.machines = SmallDocument::machine(R"(targetCategory="green")");
    EXPECT_THAT(faultOf(parts), HasSubstr("260120"));
}

TEST(PreparationMachines, CoefficientForEachFieldIsAUnitVector) {
    SmallDocument parts = SmallDocument::regression();
    parts.modelAttributes = R"(svmRepresentation="Coefficients")";
    parts.instances.clear();
    parts.machines = R"(<SupportVectorMachine><Coefficients numberOfCoefficients="2" absoluteValue="0.375">)"
                     R"(<Coefficient value="-2.25"/><Coefficient value="4.5"/></Coefficients></SupportVectorMachine>)";
    const auto model = openText(parts.makeText());
    EXPECT_EQ(scoreCase(*model, {{"x", "1.5"}, {"y", "-0.5"}}).number, -2.25 * 1.5 + 4.5 * -0.5 + 0.375);
    EXPECT_THAT(model->getNotes(), ElementsAre("1 machine with a coefficient for each field were given vectors"));
    parts.kernel = R"(<RadialBasisKernelType gamma="0.5"/>)";
    EXPECT_EQ(faultOf(parts), "svmRepresentation=Coefficients needs the LinearKernelType");
    parts.kernel = "<LinearKernelType/>";
    parts.vectorFields = R"(<FieldRef field="x"/>)";
    EXPECT_EQ(faultOf(parts), "svmRepresentation=Coefficients needs a Coefficient for each of the 1 VectorFields");
}

TEST(PreparationMachines, UnitVectorCountsBeforeAnUnusedInstanceOfItsName) {
    SmallDocument parts = SmallDocument::regression();
    parts.modelAttributes = R"(svmRepresentation="Coefficients")";
    parts.instances = SmallDocument::sparseInstance("unit-1", "2", "7");
    parts.machines = R"(<SupportVectorMachine><Coefficients absoluteValue="0.375"><Coefficient value="-2.25"/>)"
                     R"(<Coefficient value="4.5"/></Coefficients></SupportVectorMachine>)";
    EXPECT_EQ(scoreCase(*openText(parts.makeText()), {{"x", "1.5"}, {"y", "-0.5"}}).number,
              -2.25 * 1.5 + 4.5 * -0.5 + 0.375);
}

TEST(PreparationMachines, VectorOfZerosHasAKernelValue) {
    SmallDocument parts = SmallDocument::regression();
    parts.kernel = R"(<RadialBasisKernelType gamma="0.5"/>)";
    parts.instances = SmallDocument::sparseInstance("v1", "", "") + SmallDocument::sparseInstance("v2", "2", "1");
    const double x = 0.75;
    const double y = -0.25;
    const double expected =
        1.5 * std::exp(-0.5 * (x * x + y * y)) - 0.75 * std::exp(-0.5 * (x * x + (y - 1.0) * (y - 1.0))) + 0.125;
    EXPECT_DOUBLE_EQ(scoreCase(*openText(parts.makeText()), {{"x", "0.75"}, {"y", "-0.25"}}).number.value(), expected);
}

TEST(PreparationMachines, ThresholdOfMinusOneIsAThreshold) {
    SmallDocument parts;
    parts.modelAttributes = R"(threshold="3")";
    parts.machines = SmallDocument::machine(R"(threshold="-1" targetCategory="red" alternateTargetCategory="blue")");
    const auto model = openText(parts.makeText());
    EXPECT_EQ(predictCase(*model, {{"x", "-1"}, {"y", "0"}}), "red");
    EXPECT_EQ(predictCase(*model, {{"x", "-0.5"}, {"y", "0"}}), "blue");
    EXPECT_EQ(predictCase(*model, {{"x", "-0.75"}, {"y", "0"}}), "blue") << "exactly -1";
    // A machine that relied on the model's threshold keeps it.
    parts.targetField = R"(<DataField name="hue" optype="categorical" dataType="string"/>)";
    parts.modelAttributes = R"(threshold="3" classificationMethod="OneAgainstOne")";
    parts.machines = SmallDocument::machine(R"(threshold="-1" targetCategory="a" alternateTargetCategory="b")") +
                     SmallDocument::machine(R"(targetCategory="a" alternateTargetCategory="c")") +
                     SmallDocument::machine(R"(targetCategory="b" alternateTargetCategory="c")");
    // The decision value is 1.625 for all: b beats a, a beats c, b beats c.
    EXPECT_EQ(predictCase(*openText(parts.makeText()), {{"x", "1"}, {"y", "0"}}), "b");
}

TEST(PreparationMachines, SpellingsOfMethodsAndTruthValuesAreRead) {
    for (const char* spelling : {"true", "TRUE", "True", "1"}) {
        SmallDocument parts;
        parts.modelAttributes = std::string("maxWins=\"") + spelling + "\"";
        EXPECT_EQ(predictCase(*openText(parts.makeText()), {{"x", "-1"}, {"y", "0"}}), "blue") << spelling;
    }
    for (const char* spelling : {"false", "False", "0"}) {
        SmallDocument parts;
        parts.modelAttributes = std::string("maxWins=\"") + spelling + "\"";
        EXPECT_EQ(predictCase(*openText(parts.makeText()), {{"x", "-1"}, {"y", "0"}}), "red") << spelling;
    }
    SmallDocument pairs;
    pairs.targetField = R"(<DataField name="hue" optype="categorical" dataType="string"/>)";
    pairs.machines = SmallDocument::pairMachines();
    pairs.modelAttributes = R"(classificationMethod="oneAgainstone")";
    const auto model = openText(pairs.makeText());
    EXPECT_EQ(predictCase(*model, {{"x", "0"}, {"y", "0"}}), "b");
    EXPECT_EQ(model->getNotes().front(), "1 attribute was respelled as the translator reads them");
    SmallDocument parts;
    parts.modelAttributes = R"(maxWins="yes" classificationMethod="pairwise")";
    EXPECT_EQ(faultOf(parts),
              "maxWins='yes' of SupportVectorMachineModel is neither true nor false; "
              "classificationMethod='pairwise' of SupportVectorMachineModel is neither OneAgainstAll nor "
              "OneAgainstOne");
    parts.modelAttributes = R"(isScorable="0")";
    EXPECT_THAT(faultOf(parts), HasSubstr("260281"));
}

TEST(PreparationMachines, WhatTheTranslatorWouldTakeForADefaultIsRefused) {
    SmallDocument parts;
    parts.kernel = R"(<SigmoidKernelType gamma="0.5" coef0="-1"/>)";
    EXPECT_EQ(faultOf(parts), "coef0=-1 of SigmoidKernelType would be taken for the attribute's default");
    parts.kernel = R"(<PolynomialKernelType gamma="-1.0" coef0="0" degree="-1e0"/>)";
    EXPECT_EQ(faultOf(parts),
              "gamma=-1 of PolynomialKernelType would be taken for the attribute's default; degree=-1 of "
              "PolynomialKernelType would be taken for the attribute's default");
}

TEST(PreparationMachines, CoefficientWithoutAVectorIsRefused) {
    SmallDocument parts;
    const std::string extra = R"(<Coefficient value="9"/></Coefficients>)";
    parts.machines.replace(parts.machines.find("</Coefficients>"), 15, extra);
    EXPECT_EQ(faultOf(parts), "SupportVectorMachine 1 has 2 SupportVectors but 3 Coefficients");
}

TEST(PreparationMachines, ReplacementsOfEveryNumberTypeAreRead) {
    SmallDocument parts = SmallDocument::regression();
    parts.inputFields = R"(<DataField name="x" optype="categorical" dataType="boolean"/>)"
                        R"(<DataField name="y" optype="continuous" dataType="double"/>)";
    parts.miningFields = R"(<MiningField name="price" usageType="target"/>)"
                         R"(<MiningField name="x" missingValueReplacement="true"/><MiningField name="y"/>)";
    const auto model = openText(parts.makeText());
    EXPECT_EQ(scoreCase(*model, {{"y", "0"}}).number, 1.625);
    EXPECT_EQ(scoreCase(*model, {{"x", "false"}, {"y", "0"}}).number, 0.125);
    parts.miningFields = R"(<MiningField name="price" usageType="target"/>)"
                         R"(<MiningField name="x" missingValueReplacement="maybe"/><MiningField name="y"/>)";
    EXPECT_EQ(faultOf(parts),
              "missingValueReplacement='maybe' is no value of the field's data type. It is in MiningField "
              "'x' (line 3).");
}

TEST(PreparationMachines, RegressionWithoutATargetGetsOne) {
    SmallDocument parts = SmallDocument::regression();
    parts.targetField = R"(<DataField name="score" optype="continuous" dataType="double"/>)";
    parts.miningFields = R"(<MiningField name="x"/><MiningField name="y"/>)";
    const auto model = openText(parts.makeText());
    EXPECT_EQ(model->getTargetName(), "score_");
    EXPECT_EQ(scoreCase(*model, {{"x", "2"}, {"y", "1"}}).number, 2.375);
    EXPECT_EQ(model->getNotes().front(), "the model names no target; its result is called 'score_'");
    parts.functionName = "classification";
    EXPECT_THAT(faultOf(parts), HasSubstr("260221"));
}

}  // namespace
