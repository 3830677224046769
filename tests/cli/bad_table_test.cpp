// brevix score: tables that cannot be read, and odd ones that can.
#include <gmock/gmock.h>

#include "tests/cli/Command.h"
#include "tests/runtime/SmallDocument.h"

namespace {

using test_support::CommandTest;
using test_support::runBrevix;
using test_support::SmallDocument;
using testing::AnyOf;
using testing::ElementsAre;
using testing::HasSubstr;

class BadTable : public CommandTest {
protected:
    // The fault of a table that cannot be used: one line, exit code 1, and no output file.
    std::string faultOf(const std::string& table, const std::vector<std::string>& options = {}) {
        std::vector<std::string> arguments = {"score", fModel, write("table.csv", table), "-o", path("out.csv")};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const auto run = runBrevix(arguments);
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_THAT(listFiles(), ElementsAre("model.pmml", "table.csv"));
        const auto lines = run.errLines();
        EXPECT_EQ(lines.size(), 1u) << run.err;
        const std::string start = "brevix: " + path("table.csv") + ": ";
        return !lines.empty() && lines[0].starts_with(start) ? lines[0].substr(start.size()) : run.err;
    }

    std::string score(const std::string& table, const std::vector<std::string>& options = {}) {
        std::vector<std::string> arguments = {"score", fModel, "--quiet"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const auto run = runBrevix(arguments, table);
        EXPECT_EQ(run.exitCode, 0) << run.err;
        return run.out.substr(run.out.find('\n') + 1);
    }

    std::string fModel = write("model.pmml", SmallDocument().makeText());
};

TEST_F(BadTable, RaggedRowIsNamed) {
    EXPECT_EQ(faultOf("x,y\n1,2\n1,2,3\n"), "row 2 has 3 cells where the header has 2");
    EXPECT_EQ(faultOf("x,y\n1,2\n\n1,2\n"), "row 2 has 0 cells where the header has 2");
}

TEST_F(BadTable, QuoteThatNeverClosesIsNamedInBoundedMemory) {
    EXPECT_EQ(faultOf("x,y\n1,\"2\n3,4\n"), "row 1, column 2 'y': a quote is not closed");
    const std::string input = writeLarge("huge.csv", "x,y\n1,\"", std::string(1 << 10, 'q'), 100 << 10);
    const auto run = runBrevix({"score", fModel, input});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.err, HasSubstr("row 1, column 2 'y': the cell is longer than 1048576 bytes"));
    expectPeakBelow(run, runBrevix({"score", fModel}, "x,y\n1,2\n").peakKilobytes + 12000);
}

TEST_F(BadTable, AllLackingAndRepeatedColumnsAreListedAtOnce) {
    EXPECT_EQ(faultOf("a,b\n1,2\n"), "the table lacks the columns 'x', 'y'");
    EXPECT_EQ(faultOf("x,x\n1,2\n", {"--keep", "id"}), "the table lacks the columns 'y', 'id'; the header repeats 'x'");
}

TEST_F(BadTable, EmptyTableHasNoHeader) {
    EXPECT_EQ(faultOf(""), "the table is empty: it has no header row");
}

TEST_F(BadTable, TableThatIsNotThereOrADirectory) {
    const auto lost = runBrevix({"score", fModel, path("lost.csv")});
    EXPECT_EQ(lost.exitCode, 1);
    EXPECT_THAT(lost.errLines(),
                ElementsAre("brevix: " + path("lost.csv") + ": it cannot be opened: No such file or directory"));
    const auto folder = runBrevix({"score", fModel, fFolder.getPath().string()});
    EXPECT_EQ(folder.exitCode, 1);
    // Systems differ in whether a directory can be opened.
    const std::string start = "brevix: " + fFolder.getPath().string() + ": it cannot be ";
    EXPECT_THAT(folder.errLines(),
                ElementsAre(AnyOf(start + "read: Is a directory", start + "opened: Is a directory")));
}

TEST_F(BadTable, Utf16IsNamed) {
    EXPECT_THAT(faultOf(std::string("\xFF\xFEx\0,\0y\0\n\0", 10)), HasSubstr("UTF-16"));
}

TEST_F(BadTable, ControlCharactersInNamesAreEscaped) {
    EXPECT_EQ(faultOf("x,\"y\n\x1b[31m\"\n1,2\n", {"--keep", "a\x1b[2J"}),
              "the table lacks the columns 'y', 'a\\x1b[2J'");
}

TEST_F(BadTable, HeaderAloneGivesNoRows) {
    EXPECT_EQ(score("x,y\n"), "");
    EXPECT_EQ(score("x,y"), "");
}

TEST_F(BadTable, WindowsLinesByteOrderMarkAndUnknownColumnsAreRead) {
    EXPECT_EQ(score("\xEF\xBB\xBFx,note,y\r\n0.5,\"a\r\nb\",0.25\r\n-0.5,,0.25\r\n"), "blue,,,,0\nred,,,,0\n");
}

TEST_F(BadTable, CellThatIsNoNumberIsInvalidInItsRowOnly) {
    EXPECT_EQ(score("x,y\n\"0,5\",1\nabc,1\n0x10,1\n1 2,1\nNaN,1\ntr\xE8s,1\n0.5,0.25\n"),
              ",,,,90027\n,,,,90027\n,,,,90027\n,,,,90027\n,,,,90027\n,,,,90027\nblue,,,,0\n");
}

TEST_F(BadTable, DecimalCommaUnderATreatmentFollowsIt) {
    SmallDocument document;
    document.miningFields = R"(<MiningField name="hue" usageType="target"/><MiningField name="y"/>)"
                            R"(<MiningField name="x" invalidValueTreatment="asMissing"/>)";
    fModel = write("model.pmml", document.makeText());
    EXPECT_EQ(score("x,y\n\"0,5\",1\n"), ",,,,90029\n");
    document.miningFields = R"(<MiningField name="hue" usageType="target"/><MiningField name="y"/>)"
                            R"(<MiningField name="x" invalidValueTreatment="asValue" invalidValueReplacement="-9"/>)";
    fModel = write("model.pmml", document.makeText());
    EXPECT_EQ(score("x,y\n\"0,5\",1\n"), "red,,,,0\n");
}

TEST_F(BadTable, OnlyColumnMayHaveEmptyLines) {
    SmallDocument document = SmallDocument::regression();
    document.vectorFields = R"(<FieldRef field="x"/>)";
    document.instances = SmallDocument::sparseInstance("v1", "1", "1") + SmallDocument::sparseInstance("v2", "1", "2");
    fModel = write("model.pmml", document.makeText());
    EXPECT_EQ(score("x\n1\n\n2\n"), "0.125,,,,0\n,,,,90029\n0.125,,,,0\n");
}

TEST_F(BadTable, FieldThatNoVectorReachesIsNeitherNeededNorTested) {
    SmallDocument document;
    document.inputFields += R"(<DataField name="z" optype="continuous" dataType="double"/>)";
    document.miningFields += R"(<MiningField name="z"/>)";
    fModel = write("model.pmml", document.makeText());
    EXPECT_EQ(score("x,y\n0.5,0.25\n"), "blue,,,,0\n");
    EXPECT_EQ(score("x,y,z\n0.5,0.25,junk\n"), "blue,,,,0\n");
}

TEST_F(BadTable, JsonLinesFaultsAreNamedByRow) {
    EXPECT_EQ(faultOf("{\"x\":1,\"y\":2}\n{\"x\":1,\n", {"--input-format", "jsonl"}),
              "row 2: it is not JSON at byte 8");
    EXPECT_EQ(score("{\"x\":0.5,\"y\":0.25}\n{\"x\":null,\"y\":1}\n{\"y\":1}\n{\"x\":true,\"y\":\"1\"}\n",
                    {"--input-format", "jsonl"}),
              "blue,,,,0\n,,,,90029\n,,,,90029\n,,,,90027\n");
}

TEST_F(BadTable, EmptyJsonLinesTableHasNoRows) {
    EXPECT_EQ(score("", {"--input-format", "jsonl"}), "");
}

}  // namespace
