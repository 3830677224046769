// brevix score: documents that cannot be used end in one line, in bounded time and memory.
#include <fstream>
#include <utility>

#include <gmock/gmock.h>

#include "tests/cli/Command.h"
#include "tests/runtime/SmallDocument.h"

namespace {

using test_support::CommandTest;
using test_support::runBrevix;
using test_support::SmallDocument;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class BadModel : public CommandTest {
protected:
    // The fault of a document: one line that names the file, exit code 1, nothing else.
    std::string faultOf(const std::string& text, const std::vector<std::string>& options = {}) {
        const std::string model = write("model.pmml", text);
        std::vector<std::string> arguments = {"score", model, "-", "-o", path("out.csv")};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const auto run = runBrevix(arguments, "x,y\n1,2\n");
        EXPECT_EQ(run.exitCode, 1) << run.err.substr(0, 400);
        EXPECT_EQ(run.out, "");
        EXPECT_THAT(listFiles(), ElementsAre("model.pmml"));
        expectPeakBelow(run, 600000);
        const auto lines = run.errLines();
        EXPECT_EQ(lines.size(), 1u) << run.err.substr(0, 400);
        const std::string start = "brevix: " + model + ": ";
        return !lines.empty() && lines[0].starts_with(start) ? lines[0].substr(start.size()) : run.err;
    }
};

std::string replaced(std::string text, const std::string& what, const std::string& with) {
    return text.replace(text.find(what), what.size(), with);
}

TEST_F(BadModel, MalformedXmlIsNamedWithLineAndColumn) {
    const std::string fault = faultOf(replaced(SmallDocument().makeText(), "<DataDictionary>", "<DataDictionary"));
    EXPECT_THAT(fault, AllOf(HasSubstr("260101"), HasSubstr("line 3"), HasSubstr("column ")));
    const std::string text = SmallDocument().makeText();
    EXPECT_THAT(faultOf(text.substr(0, text.size() / 2)), HasSubstr("260101"));
}

TEST_F(BadModel, EmptyFileIsNoDocument) {
    EXPECT_THAT(faultOf(""), HasSubstr("260101"));
    EXPECT_THAT(faultOf("just text"), HasSubstr("260101"));
    EXPECT_THAT(faultOf(std::string(100000, '\0')), HasSubstr("260101"));
}

TEST_F(BadModel, FileThatIsNotThereOrADirectory) {
    const auto lost = runBrevix({"score", path("lost.pmml")}, "x,y\n1,2\n");
    EXPECT_EQ(lost.exitCode, 1);
    EXPECT_THAT(lost.errLines(),
                ElementsAre("brevix: " + path("lost.pmml") + ": it cannot be opened: No such file or directory"));
    const auto folder = runBrevix({"score", fFolder.getPath().string()}, "x,y\n1,2\n");
    EXPECT_EQ(folder.exitCode, 1);
    EXPECT_THAT(folder.errLines(), ElementsAre("brevix: " + fFolder.getPath().string() + ": it is a directory"));
}

TEST_F(BadModel, DocumentWithoutTheModelElement) {
    EXPECT_THAT(faultOf("<html><body/></html>"),
                AllOf(HasSubstr("260115"), HasSubstr("SupportVectorMachineModel"), HasSubstr("html")));
    EXPECT_THAT(faultOf("<PMML version=\"4.4\"><TreeModel/></PMML>"), AllOf(HasSubstr("260115"), HasSubstr("PMML")));
    EXPECT_THAT(faultOf("<PMML version=\"4.4\"><MiningModel>" + SmallDocument().makeModel() + "</MiningModel></PMML>"),
                AllOf(HasSubstr("260115"), HasSubstr("There is one in MiningModel")));
}

TEST_F(BadModel, WrongEncodingsAreRefused) {
    const std::string text = SmallDocument().makeText();
    EXPECT_THAT(faultOf(replaced(text, "UTF-8", "UTF-77")), HasSubstr("260101"));
    EXPECT_THAT(faultOf(replaced(text, "\"red\"",
                                 "\"r\xE8"
                                 "d\"")),
                HasSubstr("260101"));
}

TEST_F(BadModel, OtherEncodingsAreRead) {
    std::string text = replaced(SmallDocument().makeText(), "UTF-8", "ISO-8859-1");
    for (int i = 0; i < 2; ++i)
        text = replaced(text, "\"blue\"", "\"bl\xE9\"");
    const auto run = runBrevix({"score", write("latin.pmml", text), "--quiet"}, "x,y\n1,0\n");
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_THAT(run.out, HasSubstr("\nbl\xC3\xA9,"));
    std::string wide = "\xFF\xFE";
    for (const char c : replaced(SmallDocument().makeText(), "UTF-8", "UTF-16")) {
        wide += c;
        wide += '\0';
    }
    EXPECT_THAT(runBrevix({"score", write("wide.pmml", wide), "--quiet"}, "x,y\n1,0\n").out, HasSubstr("\nblue,"));
}

TEST_F(BadModel, EntityBombIsRefused) {
    std::string entities = "<!DOCTYPE PMML [<!ENTITY e0 \"lollollol\">";
    for (int i = 1; i < 30; ++i) {
        entities += "<!ENTITY e" + std::to_string(i) + " \"";
        for (int k = 0; k < 10; ++k)
            entities += "&e" + std::to_string(i - 1) + ";";
        entities += "\">";
    }
    EXPECT_THAT(faultOf(entities + "]><PMML version=\"4.4\">&e29;</PMML>"), HasSubstr("260101"));
    const std::string fat = "<!DOCTYPE PMML [<!ENTITY e \"" + std::string(1 << 20, 'a') + "\">]><PMML>";
    std::string uses;
    for (int i = 0; i < 900; ++i)
        uses += "&e;";
    EXPECT_THAT(faultOf(fat + uses + "</PMML>"), HasSubstr("260101"));
}

TEST_F(BadModel, ExternalEntityIsNotRead) {
    const std::string secret =
        (fFolder.getPath().parent_path() / ("brevix-secret-" + fFolder.getPath().filename().string())).string();
    std::ofstream(secret) << "hidden words";
    for (const std::string& place : {"file://" + secret, secret, std::string("http://127.0.0.1:1/a")}) {
        const std::string fault = faultOf("<!DOCTYPE PMML [<!ENTITY e SYSTEM \"" + place + "\">]><PMML>&e;</PMML>");
        EXPECT_THAT(fault, AllOf(HasSubstr("260101"), Not(HasSubstr("hidden words"))));
    }
    EXPECT_THAT(faultOf("<!DOCTYPE PMML SYSTEM \"" + secret + "\"><PMML/>"), Not(HasSubstr("hidden words")));
    std::filesystem::remove(secret);
}

TEST_F(BadModel, AMillionNestedElementsAreRefused) {
    std::string text = "<PMML>";
    for (int i = 0; i < 1000000; ++i)
        text += "<a>";
    EXPECT_THAT(faultOf(text), AllOf(HasSubstr("260101"), HasSubstr("nested")));
}

TEST_F(BadModel, HugeLengthsOfSparseArraysCostNothing) {
    const auto withN = [](const std::string& n) {
        SmallDocument document;
        document.instances = "<VectorInstance id=\"v1\"><REAL-SparseArray n=\"" + n + "\"/></VectorInstance>" +
                             SmallDocument::sparseInstance("v2", "2", "1");
        return document.makeText();
    };
    EXPECT_THAT(faultOf(withN("4294967296")), AllOf(HasSubstr("260115"), HasSubstr("Indices")));
    EXPECT_THAT(faultOf(withN("10000001")), AllOf(HasSubstr("260115"), HasSubstr("Indices")));
}

TEST_F(BadModel, IndicesOutsideTheirRangeAreRefused) {
    for (const char* index : {"2147483648", "-2147483648", "nan", "1e300"}) {
        SmallDocument document;
        document.instances =
            SmallDocument::sparseInstance("v1", index, "1") + SmallDocument::sparseInstance("v2", "2", "1");
        EXPECT_THAT(faultOf(document.makeText()), AllOf(HasSubstr("260115"), HasSubstr("Indices"))) << index;
    }
}

TEST_F(BadModel, ArgumentsOfErrorsAreOnOneEscapedLine) {
    SmallDocument document;
    document.functionName = "clus&#10;&#x9B;te\xE2\x80\xAEring";
    EXPECT_THAT(faultOf(document.makeText()), AllOf(HasSubstr("260153"), HasSubstr("clus\\n\\x9bte\\u202ering"),
                                                    HasSubstr("functionName"), HasSubstr("SupportVectorMachineModel")));
}

TEST_F(BadModel, ModelThatIsNotScorableIsRefused) {
    SmallDocument document;
    document.modelAttributes = "isScorable=\"FALSE\"";
    EXPECT_THAT(faultOf(document.makeText()), AllOf(HasSubstr("260281"), HasSubstr("isScorable")));
}

TEST_F(BadModel, WhatIsNotBuiltIsRefusedAsItIsToo) {
    SmallDocument document;
    document.vectorFields = R"(<FieldRef field="x"/><FieldRef field="nobody"/>)";
    EXPECT_THAT(faultOf(document.makeText()), HasSubstr("'nobody'"));
    EXPECT_THAT(faultOf(document.makeText(), {"--as-is"}), HasSubstr("'nobody'"));
    document = SmallDocument();
    document.afterSchema = "<Output><OutputField name=\"r\" feature=\"affinity\"/></Output>";
    EXPECT_THAT(faultOf(document.makeText(), {"--as-is"}), HasSubstr("OutputField 'r' asks for feature='affinity'"));
}

TEST_F(BadModel, NumbersThatAreNotFiniteDoNoHarm) {
    // Both kernels are NaN; 0; infinite, and their coefficients differ in sign; 0; 1, so that 1.5 - 0.75 remains.
    const std::pair<const char*, const char*> rows[] = {
        {"NaN", "nan"}, {"INF", "inf"}, {"-INF", "nan"}, {"1e999", "inf"}, {"-1e-999", "0.75"}};
    for (const auto& [number, predicted] : rows) {
        SmallDocument document = SmallDocument::regression();
        document.instances =
            SmallDocument::sparseInstance("v1", "1", number) + SmallDocument::sparseInstance("v2", "2", "1");
        document.kernel = std::string("<RadialBasisKernelType gamma=\"") + number + "\"/>";
        document.machines = SmallDocument::machine("", "", number);
        const auto run = runBrevix({"score", write("odd.pmml", document.makeText()), "--quiet"}, "x,y\n1,2\n");
        EXPECT_EQ(run.exitCode, 0) << number << run.err;
        EXPECT_THAT(run.out, testing::EndsWith(std::string("\n") + predicted + ",,,,0\n")) << number;
    }
}

TEST_F(BadModel, FieldNamedTwiceIsRefused) {
    SmallDocument document;
    document.inputFields += R"(<DataField name="x" optype="continuous" dataType="double"/>)";
    EXPECT_THAT(faultOf(document.makeText()), AllOf(HasSubstr("260153"), HasSubstr("'x'")));
}

TEST_F(BadModel, OldFileOfTheOutputIsKept) {
    const std::string model = write("model.pmml", "<PMML/>");
    const std::string old = write("out.csv", "old");
    EXPECT_EQ(runBrevix({"score", model, "-o", old}, "x,y\n1,2\n").exitCode, 1);
    EXPECT_EQ(read(old), "old");
}

}  // namespace
