// Opening, preparing, refusing and scoring, through the plug-in.
#include "runtime/ScoringModel.h"

#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "runtime/Error.h"
#include "tests/runtime/SmallDocument.h"
#include "tests/runtime/opened_model.h"

namespace {

using brevix::ModelOptions;
using brevix::Outcome;
using brevix::ScoringModel;
using test_support::faultOf;
using test_support::open;
using test_support::SmallDocument;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

ModelOptions withPlugin(ModelOptions options = {}) {
    options.plugin = BREVIX_PLUGIN;
    return options;
}

std::vector<std::string> inputNames(const ScoringModel& model) {
    std::vector<std::string> names;
    for (const auto& input : model.getInputs())
        names.push_back(input.name);
    return names;
}

using Values = std::vector<std::pair<std::string, std::string>>;

Outcome scoreOne(const ScoringModel& model, const Values& values) {
    auto record = model.makeRecord();
    for (const auto& [name, text] : values)
        record.setText(name, text);
    Outcome outcome;
    model.score(record, outcome);
    return outcome;
}

std::string predict(const ScoringModel& model, const Values& values) {
    const Outcome outcome = scoreOne(model, values);
    if (outcome.status != 0)
        return std::to_string(outcome.status);
    return outcome.category < 0 ? "none" : model.getCategories()[static_cast<std::size_t>(outcome.category)];
}

std::string derived(const std::string& name, const std::string& field, const std::string& type = "double") {
    return "<DerivedField name=\"" + name + "\" optype=\"" + (type == "string" ? "categorical" : "continuous") +
           "\" dataType=\"" + type + "\"><FieldRef field=\"" + field + "\"/></DerivedField>";
}

TEST(ScoringModel, TellsTargetCategoriesInputsAndColumns) {
    const auto model = open(SmallDocument());
    EXPECT_TRUE(model->isClassification());
    EXPECT_EQ(model->getTargetName(), "hue");
    EXPECT_THAT(model->getCategories(), ElementsAre("red", "blue"));
    EXPECT_THAT(inputNames(*model), ElementsAre("x", "y"));
    std::vector<std::string> names;
    for (const auto& column : model->getOutputColumns())
        names.push_back(column.name);
    EXPECT_THAT(names, ElementsAre("predicted_hue", "confidence", "probability_red", "probability_blue", "status"));
    EXPECT_THAT(model->getNotes(), IsEmpty());
}

TEST(ScoringModel, PredictsTheCategoryOnItsSideOfTheThreshold) {
    const auto model = open(SmallDocument());
    EXPECT_EQ(predict(*model, {{"x", "0.5"}, {"y", "0.25"}}), "blue");
    EXPECT_EQ(predict(*model, {{"x", "-0.5"}, {"y", "0.25"}}), "red");
    EXPECT_EQ(predict(*model, {{"x", "0.5"}, {"y", "1.1666666666666666"}}), "blue");
    const Outcome outcome = scoreOne(*model, {{"x", "0.5"}, {"y", "0.25"}});
    EXPECT_FALSE(outcome.confidence);
    EXPECT_FALSE(outcome.number);
    EXPECT_THAT(outcome.probabilities, IsEmpty());
}

TEST(ScoringModel, FailedRowHasAStatusAndNothingElse) {
    const auto model = open(SmallDocument());
    EXPECT_EQ(predict(*model, {{"x", "0.5"}}), "90029");
    EXPECT_EQ(predict(*model, {{"x", "0.5"}, {"y", "0,25"}}), "90027");
    const Outcome outcome = scoreOne(*model, {{"x", "0.5"}});
    EXPECT_EQ(outcome.category, -1);
    EXPECT_FALSE(outcome.confidence);
}

TEST(ScoringModel, RegressionGivesNumberAndDeviationWhereThereIsOne) {
    const auto model = open(SmallDocument::regression());
    const Outcome plain = scoreOne(*model, {{"x", "2"}, {"y", "0.5"}});
    EXPECT_EQ(plain.number, 1.5 * 2 - 0.75 * 0.5 + 0.125);
    EXPECT_FALSE(plain.stdDev);
    EXPECT_FALSE(plain.lower);
    EXPECT_FALSE(plain.upper);

    SmallDocument document = SmallDocument::regression();
    document.machines = SmallDocument::machine(
        "", "<Extension extender=\"ZARN\"><StandardDeviation>0.5</StandardDeviation></Extension>");
    const Outcome deviating = scoreOne(*open(document), {{"x", "2"}, {"y", "0.5"}});
    const double halfWidth = 1.4978661367769954;  // ln(20) / 2
    EXPECT_EQ(deviating.stdDev, 0.5);
    EXPECT_NEAR(deviating.lower.value(), 2.75 - halfWidth, 1e-14);
    EXPECT_NEAR(deviating.upper.value(), 2.75 + halfWidth, 1e-14);

    const Outcome alone = scoreOne(*open(document, {.predictsOnly = true}), {{"x", "2"}, {"y", "0.5"}});
    EXPECT_EQ(alone.number, 2.75);
    EXPECT_FALSE(alone.stdDev);
    EXPECT_FALSE(alone.lower);
}

TEST(ScoringModel, ResultThatIsNotFiniteIsAResult) {
    const auto model = open(SmallDocument::regression());
    EXPECT_EQ(scoreOne(*model, {{"x", "INF"}, {"y", "1"}}).number, std::numeric_limits<double>::infinity());
    EXPECT_EQ(scoreOne(*model, {{"x", "-INF"}, {"y", "1"}}).number, -std::numeric_limits<double>::infinity());
}

TEST(ScoringModel, MissingPolicyDecidesWhetherReplacementsAreUsed) {
    SmallDocument document;
    document.miningFields =
        R"(<MiningField name="hue" usageType="target"/><MiningField name="x"/><MiningField name="y" missingValueReplacement="0.25"/>)";
    using brevix::MissingPolicy;
    EXPECT_EQ(predict(*open(document), {{"x", "0.5"}}), "blue");
    EXPECT_EQ(predict(*open(document, {.missingPolicy = MissingPolicy::kMarkAsMissing}), {{"x", "0.5"}}), "90029");
    EXPECT_EQ(predict(*open(document, {.missingPolicy = MissingPolicy::kLeavePrediction}), {{"x", "0.5"}}), "90029");
}

TEST(ScoringModel, TreatmentsOfInvalidValuesAreHonoured) {
    const auto scoreUnder = [](const std::string& treatment) {
        SmallDocument document;
        document.inputFields =
            R"(<DataField name="x" optype="continuous" dataType="double"><Interval closure="closedClosed" leftMargin="-1" rightMargin="1"/></DataField>)"
            R"(<DataField name="y" optype="continuous" dataType="double"/>)";
        document.miningFields =
            R"(<MiningField name="hue" usageType="target"/><MiningField name="y"/><MiningField name="x" )" + treatment +
            "/>";
        return predict(*open(document), {{"x", "3"}, {"y", "0"}});
    };
    EXPECT_EQ(scoreUnder(""), "90027");
    EXPECT_EQ(scoreUnder(R"(invalidValueTreatment="asIs")"), "blue");
    EXPECT_EQ(scoreUnder(R"(invalidValueTreatment="asMissing")"), "90029");
    EXPECT_EQ(scoreUnder(R"(invalidValueTreatment="asMissing" missingValueReplacement="-0.5")"), "red");
    EXPECT_EQ(scoreUnder(R"(invalidValueTreatment="asValue" invalidValueReplacement="-0.5")"), "red");
}

TEST(ScoringModel, DenseArraysScoreAsTheirSparseForm) {
    SmallDocument dense;
    dense.instances = SmallDocument::denseInstance("v1", "<Array n=\"2\" type=\"real\">1 0</Array>") +
                      SmallDocument::denseInstance("v2", "<Array n=\"2\" type=\"real\">0 1</Array>");
    const auto model = open(dense);
    EXPECT_EQ(predict(*model, {{"x", "0.5"}, {"y", "0.25"}}), "blue");
    EXPECT_EQ(predict(*model, {{"x", "-0.5"}, {"y", "0.25"}}), "red");
    EXPECT_EQ(model->getNotes().size(), 1u);
    // Unprepared, the translator passes over such instances, and what is left is the bias.
    EXPECT_EQ(predict(*open(dense, {.prepares = false}), {{"x", "-0.5"}, {"y", "0.25"}}), "blue");
}

TEST(ScoringModel, PreparationMakesReadableWhatTheTranslatorRefuses) {
    SmallDocument document;
    document.targetField = R"(<DataField name="hue" optype="categorical" dataType="string"/>)";
    EXPECT_EQ(predict(*open(document), {{"x", "-0.5"}, {"y", "0.25"}}), "red");
    EXPECT_THAT(faultOf(document, {.prepares = false}), HasSubstr("260221"));
}

TEST(ScoringModel, PairsWithoutAMethodVoteOneAgainstOne) {
    SmallDocument document;
    document.targetField =
        R"(<DataField name="hue" optype="categorical" dataType="string"><Value value="a"/><Value value="b"/><Value value="c"/></DataField>)";
    document.machines = SmallDocument::pairMachines();
    const auto model = open(document);
    const Outcome outcome = scoreOne(*model, {{"x", "0"}, {"y", "0"}});
    EXPECT_EQ(outcome.category, 1);
    EXPECT_THAT(outcome.probabilities, ElementsAre(1.0 / 3, 2.0 / 3, 0.0));
    // Read one-against-all, the machine with the smallest value wins, and it names a.
    const Outcome unprepared = scoreOne(*open(document, {.prepares = false}), {{"x", "0"}, {"y", "0"}});
    EXPECT_EQ(unprepared.category, 0);
    EXPECT_THAT(unprepared.probabilities, IsEmpty());
}

TEST(ScoringModel, InputsAreTheFieldsThatVectorsReachThroughDerivedOnes) {
    SmallDocument document;
    document.inputFields += R"(<DataField name="z" optype="continuous" dataType="double"/>)"
                            R"(<DataField name="unused" optype="continuous" dataType="double"/>)";
    document.beforeModel =
        "<TransformationDictionary>" + derived("p", "z") + derived("idle", "unused") + "</TransformationDictionary>";
    document.afterSchema = "<LocalTransformations>" + derived("q", "p") + "</LocalTransformations>";
    document.vectorFields = R"(<FieldRef field="q"/><FieldRef field="x"/>)";
    const auto model = open(document);
    EXPECT_THAT(inputNames(*model), ElementsAre("x", "z"));
    EXPECT_EQ(predict(*model, {{"z", "0.5"}, {"x", "0.25"}}), "blue");
    EXPECT_EQ(predict(*model, {{"z", "-0.5"}, {"x", "0.25"}}), "red");
    EXPECT_THAT(faultOf(document, {.prepares = false}), HasSubstr("260103"));
}

TEST(ScoringModel, VersionTwoHonoursBothTransformationElements) {
    SmallDocument document;
    document.version = "2.1";
    document.beforeModel = "<TransformationDictionary>" + derived("p", "x") + "</TransformationDictionary>";
    document.afterSchema = "<LocalTransformations>" + derived("q", "y") + "</LocalTransformations>";
    document.vectorFields = R"(<FieldRef field="p"/><FieldRef field="q"/>)";
    const auto model = open(document);
    EXPECT_THAT(inputNames(*model), ElementsAre("x", "y"));
    EXPECT_EQ(predict(*model, {{"x", "-0.5"}, {"y", "0.25"}}), "red");
}

TEST(ScoringModel, FunctionOfTheDocumentMayBeCalledOrNot) {
    SmallDocument document;
    const std::string function =
        R"(<DefineFunction name="f" optype="continuous"><ParameterField name="a"/><FieldRef field="a"/></DefineFunction>)";
    for (const char* version : {"2.1", "4.4"}) {
        document.version = version;
        document.beforeModel = "<TransformationDictionary>" + function + "</TransformationDictionary>";
        EXPECT_EQ(faultOf(document), "no fault");
        document.beforeModel = "<TransformationDictionary>" + function +
                               R"(<DerivedField name="p" optype="continuous" dataType="double"><Apply function="f">)"
                               R"(<FieldRef field="x"/></Apply></DerivedField></TransformationDictionary>)";
        document.vectorFields = R"(<FieldRef field="p"/><FieldRef field="y"/>)";
        EXPECT_EQ(predict(*open(document), {{"x", "-0.5"}, {"y", "0.25"}}), "red");
        document.vectorFields = SmallDocument().vectorFields;
    }
}

TEST(ScoringModel, VectorFieldsThatCannotBeReadAreAllRefusedByName) {
    SmallDocument document;
    document.inputFields += R"(<DataField name="text" optype="categorical" dataType="string"/>)";
    document.vectorFields = R"(<FieldRef field="x"/><FieldRef field="nobody"/><FieldRef field="text"/>)"
                            R"(<CategoricalPredictor name="noone" value="v" coefficient="1"/>)";
    EXPECT_EQ(
        faultOf(document),
        "not supported: FieldRef 'nobody' of VectorFields names no field; FieldRef 'text' of VectorFields names a "
        "field of texts; CategoricalPredictor 'noone' of VectorFields names no field");
}

TEST(ScoringModel, DerivedTextFieldAsANumberIsRefused) {
    SmallDocument document;
    document.inputFields += R"(<DataField name="text" optype="categorical" dataType="string"/>)";
    document.afterSchema = "<LocalTransformations>" + derived("p", "text", "string") + "</LocalTransformations>";
    document.vectorFields = R"(<FieldRef field="x"/><FieldRef field="p"/>)";
    EXPECT_THAT(faultOf(document), HasSubstr("FieldRef 'p' of VectorFields names a field of texts"));
}

TEST(ScoringModel, FieldsThatCannotBeReadAreRefusedTogetherWithTheirLines) {
    SmallDocument document;
    document.inputFields = R"(<DataField name="x" optype="continuous" dataType="double"><Interval closure="openOpen"/>)"
                           "</DataField>\n<DataField name=\"y\" optype=\"continuous\" dataType=\"double\"/>";
    document.miningFields = R"(<MiningField name="hue" usageType="target"/><MiningField name="x"/>)"
                            "\n<MiningField name=\"y\" outliers=\"asExtremeValues\"/>"
                            R"(<MiningField name="z" missingValueReplacement="1"/>)";
    EXPECT_EQ(
        faultOf(document),
        "Error 260111: Interval of the field 'x' has neither leftMargin nor rightMargin. It is in DataField 'x' "
        "(line 3).; Error 260111: MiningField of the field 'y' treats outliers but has neither lowValue nor "
        "highValue. It is in MiningField 'y' (line 5).; missingValueReplacement is asked for where no DataField is "
        "named. It is in MiningField 'z' (line 5).");
    EXPECT_EQ(faultOf(document), faultOf(document, {.prepares = false}));
}

TEST(ScoringModel, InputFieldsMayNotBeCyclicNorHaveATaxonomy) {
    SmallDocument document;
    document.inputFields = R"(<DataField name="x" optype="continuous" dataType="double" isCyclic="1"/>)"
                           R"(<DataField name="y" optype="continuous" dataType="double" taxonomy="t" isCyclic="0"/>)"
                           R"(<DataField name="free" optype="continuous" dataType="double" isCyclic="1"/>)";
    EXPECT_EQ(faultOf(document),
              "not supported: DataField 'x' (line 3) asks for isCyclic='1'; DataField 'y' (line 3) "
              "asks for taxonomy='t'");
}

TEST(ScoringModel, OutliersAndMissingValuesAreTreatedBeforeDerivation) {
    SmallDocument document = SmallDocument::regression();
    document.miningFields = R"(<MiningField name="price" usageType="target"/>)"
                            R"(<MiningField name="x" outliers="asExtremeValues" lowValue="-2" highValue="3"/>)"
                            R"(<MiningField name="y" missingValueTreatment="returnInvalid"/>)";
    document.afterSchema = "<LocalTransformations>" + derived("p", "x") + derived("q", "y") + "</LocalTransformations>";
    document.vectorFields = R"(<FieldRef field="p"/><FieldRef field="q"/>)";
    const auto model = open(document);
    EXPECT_EQ(scoreOne(*model, {{"x", "7.5"}, {"y", "1"}}).number, 1.5 * 3 - 0.75 + 0.125);
    EXPECT_EQ(scoreOne(*model, {{"x", "-7.5"}, {"y", "1"}}).number, 1.5 * -2 - 0.75 + 0.125);
    EXPECT_EQ(scoreOne(*model, {{"x", "1"}}).status, 90027);
    EXPECT_EQ(scoreOne(*model, {{"y", "1"}}).status, 90029);
}

TEST(ScoringModel, MiningFieldMayChangeTheKindOfItsDataField) {
    SmallDocument document = SmallDocument::regression();
    document.inputFields = R"(<DataField name="x" optype="continuous" dataType="double"><Value value="2"/></DataField>)"
                           R"(<DataField name="y" optype="continuous" dataType="double"/>)";
    EXPECT_EQ(scoreOne(*open(document), {{"x", "3"}, {"y", "1"}}).status, 0);
    document.miningFields = R"(<MiningField name="price" usageType="target"/>)"
                            R"(<MiningField name="x" optype="categorical"/><MiningField name="y"/>)";
    EXPECT_EQ(scoreOne(*open(document), {{"x", "3"}, {"y", "1"}}).status, 90027);
    EXPECT_EQ(scoreOne(*open(document), {{"x", "2"}, {"y", "1"}}).status, 0);
}

TEST(ScoringModel, LocalTransformationsAreEvaluatedUnpreparedToo) {
    SmallDocument document;
    document.afterSchema = "<LocalTransformations>" + derived("p", "x") + "</LocalTransformations>";
    document.vectorFields = R"(<FieldRef field="p"/><FieldRef field="y"/>)";
    const auto model = open(document, {.prepares = false});
    EXPECT_THAT(inputNames(*model), ElementsAre("x", "y"));
    EXPECT_EQ(predict(*model, {{"x", "-0.5"}, {"y", "0.25"}}), "red");
    EXPECT_THAT(model->getNotes(), IsEmpty());
}

TEST(ScoringModel, MoreThanTenComplaintsAreCounted) {
    SmallDocument document;
    for (int i = 0; i < 14; ++i)
        document.vectorFields += "<FieldRef field=\"u" + std::to_string(i) + "\"/>";
    EXPECT_THAT(faultOf(document), testing::EndsWith("'u9' of VectorFields names no field; and 4 more"));
}

TEST(ScoringModel, OutputFieldsBecomeColumns) {
    SmallDocument document;
    document.afterSchema = R"(<Output><OutputField name="winner"/>)"
                           R"(<OutputField name="p_blue" feature="probability" value="blue"/>)"
                           R"(<OutputField name="p_winner" feature="probability" targetField="hue"/>)"
                           R"(<OutputField name="probability_red" feature="probability" value="red"/></Output>)";
    using Column = brevix::OutputColumn;
    const auto model = open(document);
    const auto& columns = model->getOutputColumns();
    ASSERT_EQ(columns.size(), 8u) << "a field that gives a column a second time adds none";
    EXPECT_EQ(columns[4].name, "winner");
    EXPECT_EQ(columns[4].content, Column::kPrediction);
    EXPECT_EQ(columns[5].name, "p_blue");
    EXPECT_EQ(columns[5].content, Column::kProbability);
    EXPECT_EQ(columns[5].category, 1);
    EXPECT_EQ(columns[6].name, "p_winner");
    EXPECT_EQ(columns[6].content, Column::kPredictedProbability);
    EXPECT_EQ(columns[7].name, "status");
}

TEST(ScoringModel, OutputFieldsThatAskForMoreAreRefusedTogether) {
    SmallDocument document;
    document.afterSchema = R"(<Output><OutputField name="r" feature="residual"/>)"
                           R"(<OutputField name="p" feature="probability" value="green"/>)"
                           R"(<OutputField name="t" targetField="x"/>)"
                           R"(<OutputField name="status"/>)"
                           R"(<OutputField name="probability_red" feature="probability" value="blue"/>)"
                           R"(<OutputField feature="predictedValue"/></Output>)";
    EXPECT_EQ(
        faultOf(document),
        "not supported: OutputField 'r' asks for a residual and names no category as its value; OutputField 'p' asks "
        "for the probability of 'green', which is no category; OutputField 't' asks for targetField='x'; "
        "OutputField 'status' has the name of another column; OutputField 'probability_red' has the name of "
        "another column; OutputField '' has no name");
    document = SmallDocument::regression();
    document.afterSchema = R"(<Output><OutputField name="p" feature="probability"/></Output>)";
    EXPECT_EQ(faultOf(document),
              "not supported: OutputField 'p' asks for feature='probability', which this model does not have");
}

TEST(ScoringModel, ModelThatIsNotBeneathTheRootIsRefusedWithItsPlace) {
    EXPECT_THAT(faultOf([] {
                    SmallDocument document;
                    document.root = "html";
                    return document;
                }()),
                "no fault");
    try {
        ScoringModel::openText(
            "<PMML version=\"4.4\"><MiningModel>" + SmallDocument().makeModel() + "</MiningModel></PMML>",
            withPlugin());
        FAIL();
    } catch (const brevix::Error& fault) {
        EXPECT_EQ(fault.getCode(), 260115);
        EXPECT_THAT(fault.what(), AllOf(HasSubstr("SupportVectorMachineModel"), HasSubstr("in PMML"),
                                        HasSubstr("There is one in MiningModel")));
    }
    try {
        ScoringModel::openText("<html><body/></html>", withPlugin());
        FAIL();
    } catch (const brevix::Error& fault) {
        EXPECT_EQ(fault.getCode(), 260115);
        EXPECT_THAT(fault.what(), HasSubstr("html"));
    }
}

TEST(ScoringModel, OfSeveralModelsTheFirstIsScoredAndSaid) {
    SmallDocument document;
    SmallDocument second;
    second.machines = SmallDocument::machine(R"(targetCategory="blue" alternateTargetCategory="red")");
    document.afterModel = second.makeModel();
    const auto model = open(document);
    EXPECT_EQ(predict(*model, {{"x", "-0.5"}, {"y", "0.25"}}), "red");
    EXPECT_THAT(model->getNotes(),
                ElementsAre("the document holds 2 SupportVectorMachineModel elements; the first is scored"));
}

TEST(ScoringModel, TreatmentsAreThoseOfTheModelThatIsScored) {
    SmallDocument document;
    document.beforeModel =
        R"(<TreeModel functionName="classification"><MiningSchema><MiningField name="hue" usageType="target"/>)"
        R"(<MiningField name="x" invalidValueTreatment="asMissing"/></MiningSchema></TreeModel>)";
    EXPECT_EQ(predict(*open(document), {{"x", "none"}, {"y", "0.25"}}), "90027");
}

TEST(ScoringModel, TranslatorsErrorsKeepTheirCode) {
    const std::pair<SmallDocument, int> faults[] = {
        {[] {
             SmallDocument d;
             d.kernel = "";
             return d;
         }(),
         260115},
        {[] {
             SmallDocument d;
             d.functionName = "clustering";
             return d;
         }(),
         260153},
        {[] {
             SmallDocument d;
             d.modelAttributes = "isScorable=\"False\"";
             return d;
         }(),
         260281},
        {[] {
             SmallDocument d;
             d.instances = "";
             return d;
         }(),
         260114},
        {[] {
             SmallDocument d;
             d.machines = "";
             return d;
         }(),
         260221},
        {[] {
             SmallDocument d;
             d.instances = SmallDocument::sparseInstance("v1", "1 2", "1");
             return d;
         }(),
         260251},
        {[] {
             SmallDocument d;
             d.inputFields = "<DataField dataType=\"double\"/>";
             return d;
         }(),
         260120},
    };
    for (const auto& [document, code] : faults) {
        try {
            open(document);
            FAIL() << code;
        } catch (const brevix::Error& fault) {
            EXPECT_EQ(fault.getCode(), code) << fault.what();
            EXPECT_THAT(fault.what(), HasSubstr(std::to_string(code)));
        }
    }
}

TEST(ScoringModel, FileThatCannotBeReadIsRefusedByName) {
    const auto fault = [](const std::string& path) -> std::string {
        try {
            ScoringModel::openFile(path, withPlugin());
        } catch (const brevix::Error& error) {
            return error.what();
        }
        return "no fault";
    };
    EXPECT_EQ(fault("/nowhere/model.pmml"), "/nowhere/model.pmml: it cannot be opened: No such file or directory");
    EXPECT_EQ(fault("/tmp"), "/tmp: it is a directory");
    EXPECT_THAT(fault("/dev/null"), AllOf(HasSubstr("/dev/null: "), HasSubstr("260101")));
}

TEST(ScoringModel, AnyNumberOfThreadsMayScoreFromTheFirstCaseOn) {
    SmallDocument document;
    document.afterSchema = "<LocalTransformations>" + derived("p", "x") + "</LocalTransformations>";
    document.vectorFields = R"(<FieldRef field="p"/><FieldRef field="y"/>)";
    const auto model = open(document);
    std::vector<std::thread> threads;
    std::vector<int> wrong(4);
    for (std::size_t t = 0; t < wrong.size(); ++t) {
        threads.emplace_back([&model, &wrong, t] {
            auto record = model->makeRecord();
            Outcome outcome;
            for (int i = 0; i < 4000; ++i) {
                const double x = (i % 17 - 8) * 0.25 + static_cast<double>(t);
                record.setNumber("x", x);
                record.setNumber("y", 0.5);
                model->score(record, outcome);
                wrong[t] += outcome.status != 0 || outcome.category != (1.5 * x - 0.25 < 0 ? 0 : 1);
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_THAT(wrong, testing::Each(0));
}

}  // namespace
