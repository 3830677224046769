// Output: what each feature gives, in which type, and what is refused.
#include "runtime/OutputProgram.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "runtime/ScoringModel.h"
#include "tests/runtime/SmallDocument.h"
#include "tests/runtime/opened_model.h"
#include "tests/support/control_word.h"

namespace {

using brevix::Outcome;
using brevix::OutputValue;
using brevix::ScoringModel;
using test_support::faultOf;
using test_support::open;
using test_support::SmallDocument;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* kSigmoid =
    "<Extension extender=\"ZARN\"><ResponseCategory response=\"red\" nonresponse=\"blue\"/>"
    "<ProbabilityParam A=\"1.5\" B=\"0.25\"/></Extension>";

std::string field(const std::string& name, const std::string& attributes, const std::string& content = "") {
    return "<OutputField name=\"" + name + "\" " + attributes + ">" + content + "</OutputField>";
}

std::string output(const std::string& fields) {
    return "<Output>" + fields + "</Output>";
}

SmallDocument classification(const std::string& fields) {
    SmallDocument document;
    document.afterSchema = output(fields);
    document.machines = SmallDocument::machine(R"(targetCategory="red" alternateTargetCategory="blue")", kSigmoid);
    return document;
}

SmallDocument regression(const std::string& fields) {
    return test_support::regressionWith(output(fields));
}

using Values = std::vector<std::pair<std::string, std::string>>;

Outcome score(const ScoringModel& model, const Values& values) {
    auto record = model.makeRecord();
    for (const auto& [name, text] : values)
        record.setText(name, text);
    Outcome outcome;
    model.score(record, outcome);
    return outcome;
}

// The value of one column: a text in quotes, a number, or "absent".
std::string valueOf(const ScoringModel& model, const Outcome& outcome, const std::string& column) {
    const auto value = model.getValue(outcome, model.getOutputColumns().at(model.findOutputColumn(column).value()));
    if (value.kind == OutputValue::kAbsent)
        return "absent";
    return value.kind == OutputValue::kText ? "'" + value.text + "'" : testing::PrintToString(value.number);
}

std::string valueOf(const SmallDocument& document, const std::string& column, const Values& values) {
    const auto model = open(document);
    return valueOf(*model, score(*model, values), column);
}

const Values kRed = {{"x", "-0.5"}, {"y", "0.25"}};
const Values kSome = {{"x", "2"}, {"y", "0.5"}};  // 2.75

TEST(Output, PlainFeaturesStandInColumnsOfTheirOwnNames) {
    const auto model = open(classification(field("winner", "") + field("sure", R"(feature="confidence")") +
                                           field("p", R"(feature="probability" value="blue")") +
                                           field("best", R"(feature="probability")")));
    const Outcome outcome = score(*model, kRed);
    EXPECT_EQ(valueOf(*model, outcome, "winner"), "'red'");
    EXPECT_EQ(valueOf(*model, outcome, "sure"), valueOf(*model, outcome, "confidence"));
    EXPECT_EQ(valueOf(*model, outcome, "p"), valueOf(*model, outcome, "probability_blue"));
    EXPECT_EQ(valueOf(*model, outcome, "best"), valueOf(*model, outcome, "probability_red"));
    EXPECT_GT(outcome.probabilities.at(0), 0.0);
}

TEST(Output, StandardErrorIsTheRescaledDeviation) {
    SmallDocument document = regression(field("se", R"(feature="standardError")"));
    EXPECT_EQ(valueOf(document, "se", kSome), "0.5");
    document.afterSchema = "<Targets><Target rescaleFactor=\"-4\"/></Targets>" + document.afterSchema;
    EXPECT_EQ(valueOf(document, "se", kSome), "2");
}

TEST(Output, DisplayValueIsThatOfTheTargetThenThatOfTheFieldThenTheValue) {
    SmallDocument document = classification(field("shown", R"(feature="predictedDisplayValue")"));
    EXPECT_EQ(valueOf(document, "shown", kRed), "'red'");
    document.targetField =
        R"(<DataField name="hue" optype="categorical" dataType="string"><Value value="red" displayValue="Rot"/><Value value="blue" displayValue="Blau"/></DataField>)";
    EXPECT_EQ(valueOf(document, "shown", kRed), "'Rot'");
    document.afterSchema +=
        R"(<Targets><Target field="hue"><TargetValue value="red" displayValue="rouge"/></Target></Targets>)";
    EXPECT_EQ(valueOf(document, "shown", kRed), "'rouge'");
    EXPECT_EQ(valueOf(document, "shown", kSome), "'Blau'");
    EXPECT_EQ(valueOf(regression(field("shown", R"(feature="predictedDisplayValue")")), "shown", kSome), "2.75");
}

TEST(Output, DataTypeOfAFieldIsHonoured) {
    EXPECT_EQ(valueOf(regression(field("n", R"(dataType="integer")")), "n", kSome), "3");
    EXPECT_EQ(valueOf(regression(field("t", R"(dataType="string")")), "t", kSome), "'2.75'");
    EXPECT_EQ(valueOf(regression(field("d", R"(dataType="double" optype="continuous")")), "d", kSome), "2.75");
    EXPECT_EQ(valueOf(classification(field("b", R"(dataType="boolean")")), "b", kRed), "absent");
    const auto model = open(regression(field("n", R"(dataType="integer")")));
    EXPECT_EQ(model->getOutputColumns().at(model->findOutputColumn("n").value()).type, "integer");
}

TEST(Output, TransformedValueReadsEarlierOutputFieldsRawFieldsAndDerivedFields) {
    SmallDocument document = regression(
        field("raw", "") +
        field(
            "twice", R"(feature="transformedValue" dataType="double")",
            R"(<NormContinuous field="raw"><LinearNorm orig="0" norm="0"/><LinearNorm orig="1" norm="2"/></NormContinuous>)") +
        field("z_out", R"(feature="transformedValue")", R"(<FieldRef field="z"/>)") +
        field("x_plus", R"(feature="transformedValue")", R"(<FieldRef field="plus"/>)"));
    document.inputFields += R"(<DataField name="z" optype="categorical" dataType="string"/>)"
                            R"(<DataField name="w" optype="continuous" dataType="double"/>)";
    document.miningFields += R"(<MiningField name="z"/><MiningField name="w"/>)";
    document.afterSchema +=
        R"(<LocalTransformations><DerivedField name="plus" optype="continuous" dataType="double"><NormContinuous field="w">)"
        R"(<LinearNorm orig="0" norm="10"/><LinearNorm orig="1" norm="11"/></NormContinuous></DerivedField></LocalTransformations>)";
    const auto model = open(document);
    std::vector<std::string> inputs;
    for (const auto& input : model->getInputs())
        inputs.push_back(input.name + (input.isOptional ? "?" : ""));
    EXPECT_THAT(inputs, ElementsAre("x", "y", "z", "w"));
    const Outcome outcome = score(*model, {{"x", "2"}, {"y", "0.5"}, {"z", "\xC3\xA9t\xC3\xA9"}, {"w", "-2.5"}});
    EXPECT_EQ(valueOf(*model, outcome, "twice"), "5.5");
    EXPECT_EQ(valueOf(*model, outcome, "z_out"), "'\xC3\xA9t\xC3\xA9'");
    EXPECT_EQ(valueOf(*model, outcome, "x_plus"), "7.5");
    const Outcome partial = score(*model, kSome);
    EXPECT_EQ(partial.status, 0) << "what only the Output reads may be missing";
    EXPECT_EQ(valueOf(*model, partial, "z_out"), "absent");
    EXPECT_EQ(valueOf(*model, partial, "twice"), "5.5");
}

TEST(Output, ReplacementOfAMissingRawFieldIsReadUnderPolicyZeroOnly) {
    SmallDocument document = regression(field("z_out", R"(feature="transformedValue")", R"(<FieldRef field="z"/>)"));
    document.inputFields += R"(<DataField name="z" optype="continuous" dataType="double"/>)";
    document.miningFields += R"(<MiningField name="z" missingValueReplacement="8.5"/>)";
    const auto replacing = open(document);
    EXPECT_EQ(valueOf(*replacing, score(*replacing, kSome), "z_out"), "8.5");
    const auto marking = open(document, {.missingPolicy = brevix::MissingPolicy::kMarkAsMissing});
    EXPECT_EQ(valueOf(*marking, score(*marking, kSome), "z_out"), "absent");
}

TEST(Output, EarlierFieldHidesARawFieldOfItsName) {
    EXPECT_EQ(valueOf(regression(field("x", R"(feature="standardError")") +
                                 field("seen", R"(feature="transformedValue")", R"(<FieldRef field="x"/>)")),
                      "seen", kSome),
              "0.5");
}

TEST(Output, DecisionMapsThePredictionAndDecisionsAreOnlyDescribed) {
    const std::string decide =
        R"(<Decisions><Decision value="stop"/><Decision value="go"/></Decisions>)"
        R"(<MapValues outputColumn="out" dataType="string"><FieldColumnPair field="winner" column="in"/><InlineTable>)"
        R"(<row><in>red</in><out>stop</out></row><row><in>blue</in><out>go</out></row></InlineTable></MapValues>)";
    const auto document = classification(field("winner", "") + field("act", R"(feature="decision")", decide));
    EXPECT_EQ(valueOf(document, "act", kRed), "'stop'");
    EXPECT_EQ(valueOf(document, "act", kSome), "'go'");
}

TEST(Output, FieldThatIsNoFinalResultHasNoColumnAndMayBeReadAllTheSame) {
    const auto model = open(regression(
        field("hidden", R"(feature="standardError" isFinalResult="false")") +
        field("seen", R"(feature="transformedValue" isFinalResult="true")", R"(<FieldRef field="hidden"/>)")));
    EXPECT_FALSE(model->findOutputColumn("hidden"));
    EXPECT_EQ(valueOf(*model, score(*model, kSome), "seen"), "0.5");
}

TEST(Output, ResidualIsWhatWasObservedLessWhatWasPredicted) {
    const auto document = regression(field("rest", R"(feature="residual")"));
    const auto model = open(document);
    EXPECT_EQ(model->getInputs().back().name, "price");
    EXPECT_TRUE(model->getInputs().back().isOptional);
    EXPECT_EQ(valueOf(document, "rest", {{"x", "2"}, {"y", "0.5"}, {"price", "2.5"}}), "-0.25");
    EXPECT_EQ(valueOf(document, "rest", kSome), "absent");
    EXPECT_EQ(valueOf(document, "rest", {{"x", "2"}, {"y", "0.5"}, {"price", "dear"}}), "absent");
}

TEST(Output, ResidualOfACategoryIsOneOrZeroLessItsProbability) {
    const auto model = open(classification(field("rest", R"(feature="residual" value="red")")));
    const Outcome red = score(*model, {{"x", "-0.5"}, {"y", "0.25"}, {"hue", "red"}});
    const Outcome blue = score(*model, {{"x", "-0.5"}, {"y", "0.25"}, {"hue", "blue"}});
    EXPECT_EQ(red.fields.at(0).number, 1.0 - red.probabilities.at(0));
    EXPECT_EQ(blue.fields.at(0).number, 0.0 - blue.probabilities.at(0));
}

TEST(Output, FailedRowHasNoOutputAtAll) {
    const auto model = open(regression(field("rest", R"(feature="transformedValue")", R"(<Constant>7.5</Constant>)")));
    auto record = model->makeRecord();
    Outcome outcome;
    record.setNumber("x", 2.0);
    record.setNumber("y", 0.5);
    model->score(record, outcome);
    EXPECT_EQ(valueOf(*model, outcome, "rest"), "7.5");
    record.setMissing("y");
    model->score(record, outcome);
    EXPECT_EQ(outcome.status, 90029);
    EXPECT_EQ(valueOf(*model, outcome, "rest"), "absent");
}

TEST(Output, ColumnsTellTheirFeatureAndTheCategoryItIsOf) {
    const auto model = open(classification(field("p", R"(feature="probability" value="blue" dataType="string")") +
                                           field("r", R"(feature="residual" value="red")") +
                                           field("t", R"(feature="transformedValue")", R"(<FieldRef field="x"/>)")));
    std::string told;
    for (const auto& column : model->getOutputColumns())
        told += column.name + "=" + column.feature + ":" + column.value + " ";
    EXPECT_EQ(
        told,
        "predicted_hue=predictedValue: confidence=confidence: probability_red=probability:red "
        "probability_blue=probability:blue p=probability:blue r=residual:red t=transformedValue: status=status: ");
}

TEST(Output, OutcomeThatWasNeverScoredHoldsNothing) {
    const auto model = open(regression(field("twin", R"(feature="transformedValue")", R"(<FieldRef field="x"/>)")));
    EXPECT_EQ(valueOf(*model, Outcome(), "twin"), "absent");
}

TEST(Output, RecordThatIsMovedStillScores) {
    const auto model = open(regression(field("twin", R"(feature="transformedValue")", R"(<FieldRef field="x"/>)")));
    auto first = model->makeRecord();
    first.setNumber("x", 2.0);
    first.setNumber("y", 0.5);
    const auto second = std::move(first);
    Outcome outcome;
    model->score(second, outcome);
    EXPECT_EQ(valueOf(*model, outcome, "twin"), "2");
}

// Windows starts a thread in a precision that its exp, ln and pow do not count on.
TEST(Output, IsTheSameWhateverPrecisionItsThreadStartsWith) {
    std::string fields;
    for (const std::string function : {"exp", "ln"})
        fields += field(function, R"(feature="transformedValue")",
                        "<Apply function=\"" + function + "\"><FieldRef field=\"x\"/></Apply>");
    fields += field("pow", R"(feature="transformedValue")",
                    R"(<Apply function="pow"><FieldRef field="x"/><Constant>2.375</Constant></Apply>)");
    const auto model = open(regression(fields));
    for (int i = 1; i < 300; ++i) {
        const Values values = {{"x", std::to_string(0.0731 * i)}, {"y", "0.5"}};
        std::vector<double> computed[2];
        for (const auto word : {test_support::kDoublePrecision, test_support::kExtendedPrecision}) {
            const test_support::UnderControlWord control(word);
            for (const OutputValue& value : score(*model, values).fields)
                computed[word == test_support::kExtendedPrecision].push_back(value.number);
            EXPECT_EQ(test_support::controlWord(), word);
        }
        EXPECT_EQ(computed[0].size(), 3u);
        EXPECT_EQ(computed[0], computed[1]) << i;
    }
}

TEST(Output, WhatAModelDoesNotHaveIsRefusedByName) {
    for (const std::string feature : {"affinity", "entityId", "clusterId", "warning", "ruleValue", "reasonCode", "x"})
        EXPECT_EQ(faultOf(regression(field("f", "feature=\"" + feature + "\""))),
                  "not supported: OutputField 'f' asks for feature='" + feature + "', which this model does not have");
    EXPECT_THAT(faultOf(classification(field("f", R"(feature="standardError")"))),
                HasSubstr("feature='standardError'"));
    EXPECT_THAT(faultOf(classification(field("f", R"(feature="confidence" value="red")"))),
                HasSubstr("'f' asks for the confidence of one value"));
    EXPECT_THAT(faultOf(regression(field("f", R"(segmentId="1")"))), HasSubstr("asks for segmentId='1'"));
    EXPECT_THAT(faultOf(regression(field("f", R"(dataType="number")"))), HasSubstr("dataType='number'"));
    EXPECT_THAT(faultOf(regression(field("f", R"(optype="continous")"))), HasSubstr("optype='continous'"));
    EXPECT_THAT(faultOf(classification(field("f", R"(feature="residual" value="green")"))),
                HasSubstr("the residual of 'green'"));
}

TEST(Output, ExpressionsThatCannotBeReadNameTheirField) {
    EXPECT_THAT(faultOf(regression(field("f", R"(feature="transformedValue")"))), HasSubstr("'f' holds no expression"));
    EXPECT_THAT(faultOf(regression(field("f", R"(feature="decision")", "<Decisions/>"))),
                HasSubstr("'f' holds no expression"));
    EXPECT_THAT(faultOf(regression(field("f", "", R"(<FieldRef field="x"/>)"))),
                HasSubstr("'f' holds an expression that its feature does not use"));
    EXPECT_THAT(faultOf(regression(field("f", R"(feature="transformedValue")", R"(<FieldRef field="later"/>)") +
                                   field("later", ""))),
                AllOf(HasSubstr("OutputField 'f'"), HasSubstr("260103"), HasSubstr("later")));
    EXPECT_THAT(faultOf(regression(field("f", R"(feature="transformedValue")", R"(<Lag field="x"/>)"))),
                AllOf(HasSubstr("OutputField 'f'"), HasSubstr("260102"), HasSubstr("Lag")));
}

}  // namespace
