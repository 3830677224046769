// Models inside other models: taken out with all that is said about them, or refused with the reason.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "runtime/PreparedDocument.h"
#include "runtime/verification.h"
#include "tests/runtime/SmallDocument.h"
#include "tests/runtime/opened_model.h"

namespace {

using test_support::faultOfText;
using test_support::openText;
using test_support::scoreCase;
using test_support::SmallDocument;
using testing::ElementsAre;
using testing::HasSubstr;

const std::string kX = R"(<MiningField name="x"/>)";
const std::string kY = R"(<MiningField name="y"/>)";
const std::string kPrice = R"(<MiningField name="price" usageType="target"/>)";

std::string derived(const std::string& name, const std::string& field, double factor) {
    return "<DerivedField name=\"" + name + R"(" optype="continuous" dataType="double"><NormContinuous field=")" +
           field + R"("><LinearNorm orig="0" norm="0"/><LinearNorm orig="1" norm=")" + std::to_string(factor) +
           R"("/></NormContinuous></DerivedField>)";
}

// A regression inside a MiningModel; every part may be replaced.
struct Nested {
    Nested() { inner.miningFields = kX + kY; }

    SmallDocument inner = SmallDocument::regression();
    std::string outerTag = "MiningModel";
    std::string outerAttributes = R"(functionName="regression")";
    std::string outerFields = kPrice + kX + kY;
    std::string outerParts;
    std::string method = R"(multipleModelMethod="selectFirst")";
    std::string predicate = "<True/>";
    std::string besides;

    std::string makeText() const {
        SmallDocument whole = inner;
        const std::string model = inner.makeModel();
        const std::string segment = "<Segmentation " + method + "><Segment id=\"1\">" + predicate + model +
                                    "</Segment>" + besides + "</Segmentation>";
        const std::string outer = "<" + outerTag + " " + outerAttributes + "><MiningSchema>" + outerFields +
                                  "</MiningSchema>" + outerParts +
                                  (outerTag == "MiningModel" ? segment : model + besides) + "</" + outerTag + ">";
        std::string text = whole.makeText();
        return text.replace(text.find(model), model.size(), outer);
    }
    std::string fault() const { return faultOfText(makeText()); }
};

TEST(PreparationNesting, OnlyModelOfASegmentIsTakenOut) {
    for (const char* method :
         {"selectFirst", "selectAll", "modelChain", "average", "weightedAverage", "median", "max", "sum"}) {
        Nested nested;
        nested.method = std::string("multipleModelMethod=\"") + method + "\"";
        const auto model = openText(nested.makeText());
        EXPECT_EQ(model->getTargetName(), "price");
        EXPECT_EQ(scoreCase(*model, {{"x", "2"}, {"y", "1"}}).number, 2.375) << method;
        EXPECT_THAT(model->getNotes(),
                    ElementsAre("the SupportVectorMachineModel was taken out of the MiningModel that holds it alone"));
    }
}

TEST(PreparationNesting, OneClassModelIsTakenOutOfItsAnomalyModel) {
    Nested nested;
    nested.outerTag = "AnomalyDetectionModel";
    nested.outerAttributes = R"(functionName="regression" algorithmType="ocsvm")";
    nested.outerFields = R"(<MiningField name="x" missingValueReplacement="4"/>)" + kY;
    nested.outerParts = "<LocalTransformations>" + derived("p", "x", 0.5) + "</LocalTransformations>";
    nested.inner.targetField.clear();
    nested.inner.miningFields = R"(<MiningField name="p"/>)" + kY;
    nested.inner.vectorFields = R"(<FieldRef field="p"/><FieldRef field="y"/>)";
    const auto model = openText(nested.makeText());
    EXPECT_EQ(model->getTargetName(), "score");
    EXPECT_EQ(scoreCase(*model, {{"x", "2"}, {"y", "1"}}).number, 1.5 * 1 - 0.75 + 0.125);
    EXPECT_EQ(scoreCase(*model, {{"y", "1"}}).number, 1.5 * 2 - 0.75 + 0.125);
    nested.outerAttributes = R"(functionName="regression" algorithmType="iforest")";
    EXPECT_THAT(nested.fault(), HasSubstr("algorithmType='iforest' of AnomalyDetectionModel is not ocsvm"));
    nested.outerAttributes = R"(functionName="regression" algorithmType="ocsvm" sampleDataSize="64")";
    EXPECT_THAT(nested.fault(), HasSubstr("sampleDataSize"));
}

TEST(PreparationNesting, EverythingThatTheOuterModelSaysIsKept) {
    Nested nested;
    nested.outerFields = kPrice + R"(<MiningField name="x" outliers="asExtremeValues" highValue="3"/>)" +
                         R"(<MiningField name="y" invalidValueTreatment="asIs"/>)";
    nested.inner.miningFields =
        R"(<MiningField name="x" missingValueReplacement="2"/>)" + kY + R"(<MiningField name="p"/>)";
    nested.outerParts = "<LocalTransformations>" + derived("p", "x", 2.0) + "</LocalTransformations>";
    nested.inner.afterSchema = "<LocalTransformations>" + derived("q", "p", 3.0) + "</LocalTransformations>";
    nested.inner.vectorFields = R"(<FieldRef field="q"/><FieldRef field="y"/>)";
    const auto model = openText(nested.makeText());
    EXPECT_EQ(scoreCase(*model, {{"x", "5"}, {"y", "1"}}).number, 1.5 * 18 - 0.75 + 0.125);
    EXPECT_EQ(scoreCase(*model, {{"y", "1"}}).number, 1.5 * 12 - 0.75 + 0.125);
}

TEST(PreparationNesting, OutputsOfBothAreColumns) {
    Nested nested;
    nested.inner.afterSchema = R"(<Output><OutputField name="a" feature="predictedValue"/></Output>)";
    nested.outerParts = R"(<Output><OutputField name="b" feature="predictedValue" segmentId="1"/>)"
                        R"(<OutputField name="a" feature="predictedValue"/></Output>)";
    std::vector<std::string> names;
    const auto model = openText(nested.makeText());
    for (const auto& column : model->getOutputColumns())
        names.push_back(column.name);
    EXPECT_THAT(names, testing::IsSupersetOf({"a", "b"}));
    nested.outerParts = R"(<Output><OutputField name="a" feature="residual"/></Output>)";
    EXPECT_THAT(nested.fault(), HasSubstr("both Outputs hold an OutputField 'a'"));
    nested.outerParts = R"(<Output><OutputField name="b" feature="predictedValue" segmentId="2"/></Output>)";
    EXPECT_THAT(nested.fault(), HasSubstr("asks for a Segment that is not there"));
}

TEST(PreparationNesting, OnlySegmentWithoutAnIdIsTheFirst) {
    Nested nested;
    nested.outerParts = R"(<Output><OutputField name="b" feature="predictedValue" segmentId="1"/></Output>)";
    std::string text = nested.makeText();
    const std::string id = R"(<Segment id="1">)";
    text.replace(text.find(id), id.size(), "<Segment>");
    EXPECT_TRUE(openText(text)->findOutputColumn("b").has_value());
}

TEST(PreparationNesting, TargetsOfTheOuterModelAreApplied) {
    Nested nested;
    nested.outerParts = R"(<Targets><Target field="price" rescaleFactor="-2" rescaleConstant="0.5"/></Targets>)"
                        R"(<Output><OutputField name="final" feature="predictedValue"/></Output>)";
    const auto model = openText(nested.makeText());
    const auto outcome = scoreCase(*model, {{"x", "2"}, {"y", "1"}});
    EXPECT_EQ(outcome.number, -4.25);
    EXPECT_EQ(model->getValue(outcome, model->getOutputColumns().at(model->findOutputColumn("final").value())).number,
              -4.25);
}

std::string verification(const std::string& expected) {
    return R"(<ModelVerification><VerificationFields><VerificationField field="x"/><VerificationField field="y"/>)"
           R"(<VerificationField field="price"/></VerificationFields><InlineTable><row><x>2</x><y>1</y><price>)" +
           expected + "</price></row></InlineTable></ModelVerification>";
}

TEST(PreparationNesting, ExpectationsOfTheOuterModelAreTheOnesThatCount) {
    Nested nested;
    nested.inner.afterMachines = verification("2.375");
    nested.outerParts = R"(<Targets><Target field="price" rescaleFactor="2"/></Targets>)" + verification("4.75");
    const auto prepared = brevix::PreparedDocument::openText(nested.makeText(), true);
    brevix::ModelOptions options;
    options.plugin = BREVIX_PLUGIN;
    const auto model = brevix::ScoringModel::openPrepared(prepared, options);
    const auto tally = brevix::verifyModel(*model, prepared, [](const brevix::Difference&) {});
    EXPECT_EQ(tally.valueCount, 1u);
    EXPECT_EQ(tally.differenceCount, 0u);
}

TEST(PreparationNesting, WhatNobodyReadsOfTheOuterModelIsTold) {
    for (const char* tag : {"MiningModel", "AnomalyDetectionModel"}) {
        Nested nested;
        nested.outerTag = tag;
        nested.outerAttributes = R"(functionName="regression" algorithmType="ocsvm")";
        nested.outerParts = "<ModelStats/><ModelExplanation/>";
        const auto model = openText(nested.makeText());
        EXPECT_EQ(scoreCase(*model, {{"x", "2"}, {"y", "1"}}).number, 2.375) << tag;
        EXPECT_THAT(model->getIgnored(), ElementsAre("elements that are not read: ModelExplanation, ModelStats"))
            << tag;
    }
}

TEST(PreparationNesting, ModelsInsideModelsInsideModelsAreTakenOut) {
    Nested nested;
    const std::string model = nested.inner.makeModel();
    std::string text = nested.makeText();
    const std::string inner = R"(<MiningModel functionName="regression"><MiningSchema>)" + kX + kY +
                              R"(</MiningSchema><Segmentation multipleModelMethod="modelChain"><Segment><True/>)" +
                              model + "</Segment></Segmentation></MiningModel>";
    text.replace(text.find(model), model.size(), inner);
    EXPECT_EQ(scoreCase(*openText(text), {{"x", "2"}, {"y", "1"}}).number, 2.375);
}

struct RefusedRow {
    const char* reason;
    void (*change)(Nested&);
};

class RefusedNesting : public testing::TestWithParam<RefusedRow> {};

TEST_P(RefusedNesting, SaysWhy) {
    Nested nested;
    GetParam().change(nested);
    const std::string fault = nested.fault();
    EXPECT_THAT(fault, HasSubstr("260115"));
    EXPECT_THAT(fault, HasSubstr(std::string(", but ") + GetParam().reason));
}

INSTANTIATE_TEST_SUITE_P(
    Preparation, RefusedNesting,
    testing::Values(
        RefusedRow{"the MiningModel has 2 Segments",
                   [](Nested& n) { n.besides = "<Segment><True/><TreeModel/></Segment>"; }},
        RefusedRow{"the predicate of the only Segment is not True", [](Nested& n) { n.predicate = "<False/>"; }},
        RefusedRow{"multipleModelMethod='majorityVote' changes the result of the only Segment",
                   [](Nested& n) { n.method = R"(multipleModelMethod="majorityVote")"; }},
        RefusedRow{"multipleModelMethod='weightedSum' changes",
                   [](Nested& n) { n.method = R"(multipleModelMethod="weightedSum")"; }},
        RefusedRow{"the functionName 'regression' is not that of the model around it",
                   [](Nested& n) { n.outerAttributes = R"(functionName="classification")"; }},
        RefusedRow{"the Targets of the MiningModel would change the OutputField 'a' of the model in it",
                   [](Nested& n) {
                       n.outerParts = R"(<Targets><Target field="price" rescaleFactor="2"/></Targets>)";
                       n.inner.afterSchema = R"(<Output><OutputField name="a"/></Output>)";
                   }},
        RefusedRow{"both models have Targets",
                   [](Nested& n) {
                       n.outerParts = R"(<Targets><Target field="price" min="1"/></Targets>)";
                       n.inner.afterSchema = R"(<Targets><Target field="price" min="2"/></Targets>)";
                   }},
        RefusedRow{"the two MiningSchemas say different things about missingValueReplacement of the field 'x'",
                   [](Nested& n) {
                       n.outerFields = kPrice + R"(<MiningField name="x" missingValueReplacement="1"/>)";
                       n.inner.miningFields = R"(<MiningField name="x" missingValueReplacement="2"/>)";
                   }},
        RefusedRow{"the two MiningSchemas say different things about invalidValueTreatment of the field 'x'",
                   [](Nested& n) { n.inner.miningFields = R"(<MiningField name="x" invalidValueTreatment="asIs"/>)"; }},
        RefusedRow{"the field 'x' is a target in one of the two MiningSchemas only",
                   [](Nested& n) {
                       n.outerFields = kX + kY;
                       n.inner.miningFields = R"(<MiningField name="x" usageType="target"/>)";
                   }},
        RefusedRow{"the two MiningSchemas have different targets",
                   [](Nested& n) { n.inner.miningFields = R"(<MiningField name="other" usageType="target"/>)"; }}));

TEST(PreparationNesting, UnpreparedDocumentIsRefusedWithThePlace) {
    brevix::ModelOptions options;
    options.plugin = BREVIX_PLUGIN;
    options.prepares = false;
    try {
        brevix::ScoringModel::openText(Nested().makeText(), options);
        FAIL() << "it was opened";
    } catch (const brevix::Error& fault) {
        EXPECT_EQ(fault.getCode(), 260115);
        EXPECT_THAT(fault.what(), HasSubstr("There is one in Segment, but a model that is nested in another is not "
                                            "supported as it is."));
    }
}

}  // namespace
