// brevix inspect: its text and its JSON, character by character, and what it does with hostile names.
#include <nlohmann/json.hpp>

#include <gmock/gmock.h>

#include "tests/cli/Command.h"
#include "tests/runtime/SmallDocument.h"

namespace {

using test_support::CommandTest;
using test_support::runBrevix;
using test_support::SmallDocument;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class Inspect : public CommandTest {
protected:
    std::string textOf(const SmallDocument& document, const std::vector<std::string>& options = {}) {
        std::vector<std::string> arguments = {"inspect", write("model.pmml", document.makeText())};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const auto run = runBrevix(arguments);
        EXPECT_EQ(run.exitCode, 0) << run.err;
        EXPECT_EQ(run.err, "");
        return run.out;
    }

    nlohmann::json jsonOf(const SmallDocument& document) { return nlohmann::json::parse(textOf(document, {"--json"})); }

    static std::string golden(const std::string& name) { return read(BREVIX_SOURCE_DIR "/tests/cli/golden/" + name); }
};

TEST_F(Inspect, TellsOfTheExamplesWhatIsKeptCharacterByCharacter) {
    for (const std::string name : {"wine_binned", "diabetes", "iris_one_against_all"}) {
        const auto run = runBrevix({"inspect", example(name + "/model.pmml")});
        EXPECT_EQ(run.exitCode, 0) << run.err;
        EXPECT_EQ(run.out, golden(name + ".txt"));
    }
}

TEST_F(Inspect, TellsJsonCharacterByCharacter) {
    const auto run = runBrevix({"inspect", "--json", example("wine_binned/model.pmml")});
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(run.out, golden("wine_binned.json"));
}

TEST_F(Inspect, CountsInstancesUsesSharingAndDensity) {
    SmallDocument document;
    document.targetField =
        R"(<DataField name="hue" optype="categorical" dataType="string"><Value value="a"/><Value value="b"/><Value value="c"/></DataField>)";
    document.modelAttributes = R"(classificationMethod="OneAgainstOne")";
    const auto machine = [](const std::string& categories, const std::string& ids) {
        std::string vectors;
        std::string coefficients;
        for (const char id : ids) {
            vectors += std::string("<SupportVector vectorId=\"v") + id + "\"/>";
            coefficients += "<Coefficient value=\"0.5\"/>";
        }
        return "<SupportVectorMachine " + categories + "><SupportVectors>" + vectors +
               "</SupportVectors><Coefficients>" + coefficients + "</Coefficients></SupportVectorMachine>";
    };
    // v1 is used twice by one machine, v2 by two machines, v3 by none, v9 does not exist.
    document.instances = SmallDocument::sparseInstance("v1", "1 2", "0.5 -0.0e5") +
                         SmallDocument::sparseInstance("v2", "2", "1e-3") +
                         SmallDocument::sparseInstance("v3", "1", "0") + SmallDocument::sparseInstance("v3", "1", "7");
    document.machines = machine(R"(targetCategory="a" alternateTargetCategory="b")", "112") +
                        machine(R"(targetCategory="a" alternateTargetCategory="c")", "29") +
                        machine(R"(targetCategory="b" alternateTargetCategory="c")", "1");
    const auto json = jsonOf(document);
    EXPECT_EQ(json["vectors"].dump(), R"({"density":0.3333333333333333,"fields":2,"instances":3,"shared":2,"used":2})");
    EXPECT_EQ(json["machines"].dump(), R"([{"categories":["a","b"],"leftOut":0,"supportVectors":3},)"
                                       R"({"categories":["a","c"],"leftOut":1,"supportVectors":1},)"
                                       R"({"categories":["b","c"],"leftOut":0,"supportVectors":1}])");
}

TEST_F(Inspect, TellsTheRulesOfTheInputs) {
    SmallDocument document;
    document.inputFields =
        R"(<DataField name="x" optype="continuous" dataType="integer"><Interval closure="openClosed" leftMargin="-1.5"/><Interval closure="closedOpen" leftMargin="3" rightMargin="4"/></DataField>)"
        R"(<DataField name="y" optype="ordinal" dataType="double"><Value value="1"/><Value value="2"/></DataField>)";
    document.miningFields =
        R"(<MiningField name="hue" usageType="target"/><MiningField name="x" invalidValueTreatment="asMissing"/><MiningField name="y" missingValueReplacement="2"/>)";
    EXPECT_THAT(textOf(document),
                HasSubstr("input  type     kind        valid values         if missing     if invalid\n"
                          "x      integer  continuous  (-1.5, inf], [3, 4)  stays missing  asMissing\n"
                          "y      double   ordinal     1, 2                 2              returnInvalid\n"));
    const auto inputs = jsonOf(document)["inputs"];
    EXPECT_EQ(inputs[0]["ranges"].dump(), R"([{"includesLower":false,"includesUpper":true,"lower":-1.5,"upper":null},)"
                                          R"({"includesLower":true,"includesUpper":false,"lower":3.0,"upper":4.0}])");
    EXPECT_EQ(inputs[1]["values"].dump(), R"(["1","2"])");
    EXPECT_EQ(inputs[1]["missingReplacement"], "2");
}

TEST_F(Inspect, TellsKernelsWithTheParametersThatCount) {
    SmallDocument document;
    const auto kernelOf = [&](const std::string& kernel) {
        document.kernel = kernel;
        return jsonOf(document)["kernel"].dump();
    };
    EXPECT_EQ(kernelOf("<LinearKernelType/>"), R"({"parameters":{},"type":"linear"})");
    EXPECT_EQ(kernelOf(R"(<PolynomialKernelType gamma="0.25" degree="3"/>)"),
              R"({"parameters":{"coef0":1.0,"degree":3.0,"gamma":0.25},"type":"polynomial"})");
    EXPECT_EQ(kernelOf(R"(<SigmoidKernelType coef0="-2.5"/>)"),
              R"({"parameters":{"coef0":-2.5,"gamma":1.0},"type":"sigmoid"})");
    EXPECT_EQ(kernelOf(R"(<RadialBasisKernelType gamma="8"/>)"),
              R"({"parameters":{"gamma":8.0},"type":"radial basis"})");
}

TEST_F(Inspect, TellsOfDerivedFieldsWhichRawFieldsTheyReadInTheEnd) {
    SmallDocument document;
    document.afterSchema =
        R"(<LocalTransformations><DerivedField name="p" optype="continuous" dataType="double"><FieldRef field="q"/></DerivedField>)"
        R"(<DerivedField name="q" optype="continuous" dataType="float"><Extension/><NormContinuous field="x">)"
        R"(<LinearNorm orig="0" norm="1"/><LinearNorm orig="1" norm="3"/></NormContinuous></DerivedField></LocalTransformations>)";
    document.vectorFields = R"(<FieldRef field="p"/><FieldRef field="y"/>)";
    EXPECT_THAT(textOf(document), HasSubstr("derived field  type    kind        expression      reads\n"
                                            "p              double  continuous  FieldRef        x\n"
                                            "q              float   continuous  NormContinuous  x\n"));
    EXPECT_EQ(jsonOf(document)["derivedFields"][0]["sources"].dump(), R"(["x"])");
}

TEST_F(Inspect, SourcesOfMoreThanTwoThousandDerivedFieldsAreNotTraced) {
    SmallDocument document;
    document.afterSchema = "<LocalTransformations>";
    for (int i = 0; i < 2001; ++i)
        document.afterSchema += "<DerivedField name=\"d" + std::to_string(i) +
                                R"(" optype="continuous" dataType="double"><FieldRef field="y"/></DerivedField>)";
    document.afterSchema += "</LocalTransformations>";
    const auto fields = jsonOf(document)["derivedFields"];
    ASSERT_EQ(fields.size(), 2001u);
    EXPECT_EQ(fields[1999]["sources"], nlohmann::json::array({"y"}));
    EXPECT_TRUE(fields[2000]["sources"].is_null());
}

TEST_F(Inspect, TellsWhatWasPreparedAndWhatHasNoEffect) {
    SmallDocument document;
    document.targetField = R"(<DataField name="hue" optype="categorical" dataType="string"/>)";
    document.afterModel = document.makeModel();
    const std::string text = textOf(document);
    EXPECT_THAT(text,
                HasSubstr("\nprepared before translation\n- the target 'hue' declares no values; 2 categories were "
                          "taken from the machines\n"));
    EXPECT_THAT(text, HasSubstr("\nwithout effect\n- "));
    EXPECT_THAT(text, HasSubstr("2 SupportVectorMachineModel elements; the first is scored\n"));
}

TEST_F(Inspect, NoLineIsWiderThanAHundredColumnsAndLongListsAreCut) {
    SmallDocument document;
    const std::string longName(300, 'n');
    document.inputFields = "<DataField name=\"" + longName +
                           "\" optype=\"continuous\" dataType=\"double\"/>"
                           "<DataField name=\"grade\" optype=\"categorical\" dataType=\"string\">";
    std::string predictors;
    for (int i = 0; i < 90; ++i) {
        document.inputFields += "<Value value=\"value" + std::to_string(i) + "\"/>";
        predictors +=
            "<CategoricalPredictor name=\"grade\" value=\"value" + std::to_string(i) + "\" coefficient=\"1\"/>";
    }
    document.inputFields += "</DataField>";
    document.miningFields =
        "<MiningField name=\"hue\" usageType=\"target\"/><MiningField name=\"grade\"/><MiningField name=\"" + longName +
        "\"/>";
    document.vectorFields = "<FieldRef field=\"" + longName + "\"/>" + predictors;
    document.modelAttributes = "modelName=\"" + std::string(500, 'm') + "\"";
    const std::string text = textOf(document);
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        EXPECT_LE(line.size(), 100u) << line;
    EXPECT_THAT(text, HasSubstr("nnn...  double"));
    EXPECT_THAT(text, HasSubstr("value0 and 89 more"));
    EXPECT_EQ(jsonOf(document)["inputs"][1]["values"].size(), 90u);
}

TEST_F(Inspect, ControlCharactersAreEscapedAndOtherScriptsStayInLine) {
    SmallDocument document;
    document.targetField =
        "<DataField name=\"hue\" optype=\"categorical\" dataType=\"string\"><Value value=\"&#x202e;red\"/><Value "
        "value=\"\xE8\xB5\xA4\"/></DataField>";
    document.machines =
        SmallDocument::machine("targetCategory=\"&#x202e;red\" alternateTargetCategory=\"\xE8\xB5\xA4\"");
    document.modelAttributes = "modelName=\"a&#9;b&#x9b;c\"";
    const std::string text = textOf(document);
    EXPECT_THAT(text, HasSubstr("model       a\\tb\\x9bc, classification"));
    EXPECT_THAT(text, HasSubstr("machine  categories      support vectors  left out\n"
                                "1        \\u202ered / \xE8\xB5\xA4  2                0\n"));
    EXPECT_EQ(jsonOf(document)["target"]["categories"][0], "\xE2\x80\xAEred");
}

TEST_F(Inspect, TellsOfOutputColumnsWhatTheyShow) {
    SmallDocument document;
    document.afterSchema =
        R"(<Output><OutputField name="left" feature="residual" value="red"/>)"
        R"(<OutputField name="twin" feature="transformedValue"><FieldRef field="x"/></OutputField></Output>)";
    EXPECT_THAT(textOf(document), HasSubstr("output column     type     feature\n"
                                            "predicted_hue     string   predictedValue\n"
                                            "confidence        double   confidence\n"
                                            "probability_red   double   probability of red\n"
                                            "probability_blue  double   probability of blue\n"
                                            "left              double   residual of red\n"
                                            "twin              double   transformedValue\n"
                                            "status            integer  status\n"));
    const auto json = jsonOf(document)["outputs"];
    EXPECT_EQ(json[4],
              nlohmann::json({{"name", "left"}, {"type", "double"}, {"feature", "residual"}, {"value", "red"}}));
    EXPECT_EQ(json[6]["feature"], "status");
    EXPECT_TRUE(json[6]["value"].is_null());
}

TEST_F(Inspect, PicturesTakeTwoColumns) {
    SmallDocument document;
    const std::string rocket = "\xF0\x9F\x9A\x80";
    std::string name;
    for (int i = 0; i < 80; ++i)
        name += rocket;
    document.modelAttributes = "modelName=\"" + name + "\"";
    const std::string text = textOf(document);
    // The heading takes 12 columns of 100, each picture 2.
    EXPECT_EQ(text.substr(0, text.find('\n')), "model       " + name.substr(0, 44 * rocket.size()));
}

TEST_F(Inspect, ManyMachinesAreCountedInTheTextAndAllInTheJson) {
    SmallDocument document;
    document.targetField = R"(<DataField name="hue" optype="categorical" dataType="string">)";
    document.machines.clear();
    for (int i = 0; i < 50; ++i) {
        document.targetField += "<Value value=\"c" + std::to_string(i) + "\"/>";
        document.machines += SmallDocument::machine("targetCategory=\"c" + std::to_string(i) + "\"");
    }
    document.targetField += "</DataField>";
    EXPECT_THAT(textOf(document),
                HasSubstr("\n40       c39         2                0\n... and 10 more (--json lists all)\n"));
    EXPECT_EQ(jsonOf(document)["machines"].size(), 50u);
}

TEST_F(Inspect, DocumentThatCannotBeUsedEndsWithOneLine) {
    const auto run = runBrevix({"inspect", write("model.pmml", "<PMML version=\"4.4\"/>")});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(run.errLines(), ElementsAre(HasSubstr(path("model.pmml") + ": ")));
    EXPECT_EQ(runBrevix({"inspect"}).exitCode, 2);
    EXPECT_EQ(runBrevix({"inspect", path("model.pmml"), "more"}).exitCode, 2);
}

TEST_F(Inspect, OutputThatCannotBeWrittenIsAnError) {
    test_support::Streams streams;
    streams.outPath = "/dev/full";
    const auto run = runBrevix({"inspect", write("model.pmml", SmallDocument().makeText())}, streams);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.errLines(), ElementsAre(HasSubstr("standard output")));
}

}  // namespace
