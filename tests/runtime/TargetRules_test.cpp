// Targets: what they make of a result, in the order of the standard.
#include "runtime/TargetRules.h"

#include <cmath>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "runtime/ScoringModel.h"
#include "tests/runtime/SmallDocument.h"
#include "tests/runtime/opened_model.h"

namespace {

using brevix::MissingPolicy;
using brevix::ModelOptions;
using brevix::Outcome;
using brevix::ScoringModel;
using test_support::faultOf;
using test_support::open;
using test_support::regressionWith;
using test_support::SmallDocument;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::string target(const std::string& attributes, const std::string& content = "") {
    return "<Targets><Target " + attributes + ">" + content + "</Target></Targets>";
}

SmallDocument classificationWith(const std::string& values, const std::string& attributes = "field=\"hue\"") {
    SmallDocument document;
    document.afterSchema = target(attributes, values);
    return document;
}

Outcome score(const SmallDocument& document, const std::string& x, const std::string& y,
              const ModelOptions& options = {}) {
    const auto model = open(document, options);
    auto record = model->makeRecord();
    if (!x.empty())
        record.setText("x", x);
    if (!y.empty())
        record.setText("y", y);
    Outcome outcome;
    model->score(record, outcome);
    return outcome;
}

// The number that a raw prediction of 1.5 x + 0.125 becomes.
double rescaled(const std::string& attributes, const std::string& x) {
    return score(regressionWith(target("field=\"price\" " + attributes)), x, "0").number.value();
}

TEST(Targets, FactorComesBeforeConstant) {
    EXPECT_EQ(rescaled(R"(rescaleFactor="2.5")", "2"), 3.125 * 2.5);
    EXPECT_EQ(rescaled(R"(rescaleConstant="-7.25")", "2"), 3.125 - 7.25);
    EXPECT_EQ(rescaled(R"(rescaleConstant="-7.25" rescaleFactor="2.5")", "2"), 3.125 * 2.5 - 7.25);
}

TEST(Targets, MinAndMaxClampTheRawNumberBeforeItIsRescaled) {
    EXPECT_EQ(rescaled(R"(min="4.5" rescaleFactor="10")", "2"), 45.0);
    EXPECT_EQ(rescaled(R"(max="2.5" rescaleFactor="10" rescaleConstant="1")", "2"), 26.0);
    EXPECT_EQ(rescaled(R"(min="3.125" max="3.125")", "2"), 3.125);
    EXPECT_EQ(rescaled(R"(min="-1" max="5")", "2"), 3.125);
}

TEST(Targets, CastIntegerComesLastAndRoundsHalvesUp) {
    EXPECT_EQ(rescaled(R"(castInteger="round")", "2"), 3.0);
    EXPECT_EQ(rescaled(R"(castInteger="ceiling")", "2"), 4.0);
    EXPECT_EQ(rescaled(R"(castInteger="floor")", "-2"), -3.0);
    EXPECT_EQ(rescaled(R"(castInteger="round" rescaleFactor="4" )", "2"), 13.0);
    EXPECT_EQ(rescaled(R"(castInteger="round" rescaleFactor="-4")", "2"), -12.0);
}

TEST(Targets, ResultThatIsNotFiniteStaysNotFinite) {
    EXPECT_EQ(rescaled(R"(castInteger="round" rescaleFactor="2")", "INF"), INFINITY);
    EXPECT_EQ(rescaled(R"(max="12.5" rescaleFactor="2")", "INF"), 25.0);
}

TEST(Targets, DeviationFollowsTheFactorAndTheIntervalStaysInOrder) {
    const Outcome plain = score(regressionWith(""), "2", "0.5");
    const Outcome turned = score(regressionWith(target(R"(rescaleFactor="-2" rescaleConstant="10")")), "2", "0.5");
    EXPECT_EQ(turned.number, 10.0 - 2.0 * 2.75);
    EXPECT_EQ(turned.stdDev, 1.0);
    EXPECT_EQ(turned.lower, 10.0 - 2.0 * plain.upper.value());
    EXPECT_EQ(turned.upper, 10.0 - 2.0 * plain.lower.value());
    EXPECT_LT(turned.lower, turned.upper);
}

TEST(Targets, IntervalIsClampedAndRoundedAsThePredictionAndTheDeviationIsNot) {
    const Outcome outcome = score(regressionWith(target(R"(max="3" castInteger="floor")")), "2", "0.5");
    EXPECT_EQ(outcome.number, 2.0);
    EXPECT_EQ(outcome.stdDev, 0.5);
    EXPECT_EQ(outcome.lower, 1.0);
    EXPECT_EQ(outcome.upper, 3.0);
}

TEST(Targets, MissingCaseTakesTheDefaultValueAsItIs) {
    const auto document =
        regressionWith(target(R"(rescaleFactor="2" castInteger="round")", R"(<TargetValue defaultValue="7.25"/>)"));
    const Outcome outcome = score(document, "2", "");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.number, 7.25);
    EXPECT_FALSE(outcome.stdDev);
    EXPECT_FALSE(outcome.lower);
    EXPECT_EQ(score(document, "2", "0,5").status, 90027);
    EXPECT_EQ(score(document, "2", "", {.missingPolicy = MissingPolicy::kMarkAsMissing}).status, 90029);
    EXPECT_EQ(score(document, "2", "", {.missingPolicy = MissingPolicy::kLeavePrediction}).status, 90029);
}

TEST(Targets, MissingCaseTakesTheCategoryOfTheHighestPriorProbability) {
    const auto document = classificationWith(R"(<TargetValue value="blue" priorProbability="0.625"/>)"
                                             R"(<TargetValue value="red" priorProbability="0.375"/>)");
    const Outcome outcome = score(document, "", "1");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.category, 1);
    EXPECT_THAT(outcome.probabilities, ElementsAre(0.375, 0.625));
    EXPECT_EQ(outcome.confidence, 0.625);
    const Outcome alone = score(document, "", "1", {.predictsOnly = true});
    EXPECT_EQ(alone.category, 1);
    EXPECT_THAT(alone.probabilities, IsEmpty());
    EXPECT_FALSE(alone.confidence);
    EXPECT_EQ(score(document, "x", "1").status, 90027);
    EXPECT_EQ(score(document, "-0.5", "0.25").category, 0);
}

TEST(Targets, FirstOfTwoEqualPriorsWinsAndPartialPriorsAreNoProbabilities) {
    EXPECT_EQ(score(classificationWith(R"(<TargetValue value="blue" priorProbability="0.5"/>)"
                                       R"(<TargetValue value="red" priorProbability="0.5"/>)"),
                    "", "")
                  .category,
              0);
    const Outcome partial = score(classificationWith(R"(<TargetValue value="blue" priorProbability="0"/>)"), "", "");
    EXPECT_EQ(partial.category, 1);
    EXPECT_THAT(partial.probabilities, IsEmpty());
    EXPECT_FALSE(partial.confidence);
    EXPECT_EQ(score(classificationWith(R"(<TargetValue value="blue"/>)"), "", "").status, 90029);
}

TEST(Targets, WhatHasNoEffectIsNoted) {
    EXPECT_THAT(open(regressionWith(target("field=\"x\" rescaleFactor=\"2\"")))->getIgnored(),
                ElementsAre(HasSubstr("Target 'x'")));
    EXPECT_EQ(score(regressionWith(target("field=\"x\" rescaleFactor=\"2\"")), "2", "0").number, 3.125);
    EXPECT_THAT(open(classificationWith(R"(<TargetValue value="green" priorProbability="1"/>)"))->getIgnored(),
                ElementsAre("the TargetValue 'green' is no category of the target; it has no effect"));
    EXPECT_EQ(score(classificationWith(R"(<TargetValue value="green" priorProbability="1"/>)"), "", "").status, 90029);
}

TEST(Targets, WhatMakesNoSenseIsRefused) {
    const auto fault = [](const std::string& attributes) { return faultOf(regressionWith(target(attributes))); };
    EXPECT_THAT(fault(R"(rescaleFactor="two")"),
                AllOf(HasSubstr("260153"), HasSubstr("two"), HasSubstr("rescaleFactor")));
    EXPECT_THAT(fault(R"(rescaleConstant="NaN")"), HasSubstr("260153"));
    EXPECT_THAT(fault(R"(min="")"), HasSubstr("260153"));
    EXPECT_THAT(fault(R"(min="2" max="1.5")"), AllOf(HasSubstr("260153"), HasSubstr("min")));
    EXPECT_THAT(fault(R"(castInteger="truncate")"), AllOf(HasSubstr("260153"), HasSubstr("castInteger")));
    EXPECT_THAT(fault(R"(optype="categorical")"), HasSubstr("optype='categorical'"));
    EXPECT_THAT(faultOf(regressionWith("<Targets><Target/><Target field=\"price\"/></Targets>")),
                HasSubstr("stands twice"));
    EXPECT_THAT(faultOf(classificationWith(R"(<TargetValue value="red" priorProbability="1.5"/>)")),
                AllOf(HasSubstr("260153"), HasSubstr("priorProbability")));
    EXPECT_THAT(faultOf(classificationWith("", R"(rescaleFactor="2")")), HasSubstr("categories are predicted"));
}

}  // namespace
