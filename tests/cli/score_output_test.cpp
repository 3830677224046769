// brevix score: what comes out, where it goes, and what is said beside it.
#include <fstream>

#include <gmock/gmock.h>

#include "tests/cli/Command.h"
#include "tests/runtime/SmallDocument.h"

namespace {

using test_support::CommandTest;
using test_support::MatchesPattern;
using test_support::runBrevix;
using test_support::SmallDocument;
using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class ScoreOutput : public CommandTest {
protected:
    std::string fModel = write("model.pmml", SmallDocument().makeText());
    std::string fTable = write("table.csv", "id,x,y\na,0.5,0.25\nb,,0.25\nc,-0.5,0.25\nd,abc,0.25\n");
};

const char* const kResult =
    "predicted_hue,confidence,probability_red,probability_blue,status\n"
    "blue,,,,0\n,,,,90029\nred,,,,0\n,,,,90027\n";

TEST_F(ScoreOutput, GoesToStandardOutputAndTheClosingLineToStandardError) {
    const auto run = runBrevix({"score", fModel, fTable});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, kResult);
    EXPECT_THAT(run.errLines(), ElementsAre(MatchesPattern("4 rows, [0-9]+ rows/s, status 0: 2, 90027: 1, 90029: 1")));
}

TEST_F(ScoreOutput, GoesToAFileByOption) {
    const auto run = runBrevix({"score", fModel, fTable, "-o", path("out.csv")});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(read(path("out.csv")), kResult);
    EXPECT_THAT(listFiles(), ElementsAre("model.pmml", "out.csv", "table.csv"));
}

TEST_F(ScoreOutput, ReadsStandardInputForADashOrNothing) {
    EXPECT_EQ(runBrevix({"score", fModel, "-"}, read(fTable)).out, kResult);
    EXPECT_EQ(runBrevix({"score", fModel}, read(fTable)).out, kResult);
    EXPECT_EQ(runBrevix({"score", fModel, "-", "--output", "-"}, read(fTable)).out, kResult);
}

TEST_F(ScoreOutput, ShortWorkShowsNoProgress) {
    for (const char* option : {"--progress", "--no-progress"})
        EXPECT_THAT(runBrevix({"score", fModel, fTable, option}).errLines(), ElementsAre(HasSubstr("4 rows, ")));
}

TEST_F(ScoreOutput, QuietSaysNothing) {
    const auto run = runBrevix({"score", fModel, fTable, "--quiet"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, kResult);
}

TEST_F(ScoreOutput, FormatFollowsTheOptionThenTheName) {
    EXPECT_THAT(runBrevix({"score", fModel, fTable, "--format", "tsv"}).out, HasSubstr("\nblue\t\t\t\t0\n"));
    EXPECT_THAT(runBrevix({"score", fModel, fTable, "--format", "jsonl"}).out,
                HasSubstr("{\"predicted_hue\":\"blue\",\"confidence\":null,"));
    EXPECT_EQ(runBrevix({"score", fModel, fTable, "--format", "csv", "-o", path("out.jsonl")}).exitCode, 0);
    EXPECT_EQ(read(path("out.jsonl")), kResult);
    EXPECT_EQ(runBrevix({"score", fModel, fTable, "-o", path("out.tsv")}).exitCode, 0);
    EXPECT_THAT(read(path("out.tsv")), HasSubstr("\nblue\t\t\t\t0\n"));
}

TEST_F(ScoreOutput, InputKindIsToldFromItsNameOrByOption) {
    const std::string tabs = "x\ty\n0.5\t0.25\n";
    const std::string lines = "{\"x\":0.5,\"y\":0.25}\n";
    EXPECT_THAT(runBrevix({"score", fModel, write("t.tsv", tabs)}).out, HasSubstr("\nblue,"));
    EXPECT_THAT(runBrevix({"score", fModel, write("t.JSONL", lines)}).out, HasSubstr("\nblue,"));
    EXPECT_THAT(runBrevix({"score", fModel, "-", "--input-format", "tsv"}, tabs).out, HasSubstr("\nblue,"));
    EXPECT_THAT(runBrevix({"score", fModel, "--input-format", "jsonl"}, lines).out, HasSubstr("\nblue,"));
}

TEST_F(ScoreOutput, FailOnErrorExitsWithThreeAndKeepsTheWholeResult) {
    const auto run = runBrevix({"score", fModel, fTable, "--fail-on-error", "-o", path("out.csv")});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(read(path("out.csv")), kResult);
    EXPECT_EQ(runBrevix({"score", fModel, "--fail-on-error"}, "x,y\n1,1\n").exitCode, 0);
    EXPECT_EQ(runBrevix({"score", fModel, "--fail-on-error"}, "x,y\n").exitCode, 0);
}

TEST_F(ScoreOutput, KeptColumnsStandInFrontInTheOrderAskedFor) {
    EXPECT_THAT(runBrevix({"score", fModel, fTable, "--keep", "y,id"}).out,
                AllOf(HasSubstr("y,id,predicted_hue,"), HasSubstr("\n0.25,a,blue,"), HasSubstr("\n0.25,d,,")));
    EXPECT_THAT(runBrevix({"score", fModel, "--keep", "\"a,b\"", "--keep", "y"}, "x,\"a,b\",y\n1,7,3\n").out,
                HasSubstr("\"a,b\",y,predicted_hue,confidence,probability_red,probability_blue,status\n7,3,red,"));
}

TEST_F(ScoreOutput, MissingTextsAreRepeatable) {
    EXPECT_THAT(runBrevix({"score", fModel, "--na", "NA", "--na", "-999"}, "x,y\nNA,1\n1,-999\n1,0\n").out,
                HasSubstr("\n,,,,90029\n,,,,90029\nblue,,,,0\n"));
    EXPECT_THAT(runBrevix({"score", fModel}, "x,y\nNA,1\n").out, HasSubstr("\n,,,,90027\n"));
}

TEST_F(ScoreOutput, MissingPolicyIsHandedToTheModel) {
    SmallDocument document;
    document.miningFields = R"(<MiningField name="hue" usageType="target"/><MiningField name="x"/>)"
                            R"(<MiningField name="y" missingValueReplacement="1"/>)";
    const std::string model = write("replacing.pmml", document.makeText());
    EXPECT_THAT(runBrevix({"score", model}, "x,y\n1,\n").out, HasSubstr("\nblue,,,,0\n"));
    EXPECT_THAT(runBrevix({"score", model, "--missing-policy", "0"}, "x,y\n1,\n").out, HasSubstr("\nblue,,,,0\n"));
    for (const char* policy : {"1", "2"}) {
        EXPECT_THAT(runBrevix({"score", model, "--missing-policy", policy}, "x,y\n1,\n").out,
                    HasSubstr("\n,,,,90029\n"));
    }
}

TEST_F(ScoreOutput, PredictionOnlyLeavesTheOtherCellsEmpty) {
    const auto run =
        runBrevix({"score", example("diabetes/model.pmml"), example("diabetes/cases.csv"), "--prediction-only"});
    auto lines = test_support::linesOfText(run.out);
    ASSERT_GT(lines.size(), 1u);
    EXPECT_EQ(lines.front(), "predicted_progression,stddev,ci_lower,ci_upper,status");
    lines.erase(lines.begin());
    EXPECT_THAT(lines, Each(MatchesPattern("[-0-9.e]+,,,,0")));
}

TEST_F(ScoreOutput, NotesOnTheDocumentGoToStandardErrorOneLineEach) {
    SmallDocument document;
    document.instances = SmallDocument::denseInstance("v1", "<Array n=\"2\" type=\"real\">1 0</Array>") +
                         SmallDocument::denseInstance("v2", "<Array n=\"2\" type=\"real\">0 1</Array>");
    document.targetField = R"(<DataField name="hue" optype="categorical" dataType="string"/>)";
    const std::string model = write("dense.pmml", document.makeText());
    const auto run = runBrevix({"score", model, fTable});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, kResult);
    EXPECT_THAT(run.errLines(), ElementsAre("brevix: " + model + ": 2 dense Arrays were read as REAL-SparseArray",
                                            "brevix: " + model +
                                                ": the target 'hue' declares no values; 2 categories were taken from "
                                                "the machines",
                                            HasSubstr("4 rows, ")));
    EXPECT_EQ(runBrevix({"score", model, fTable, "--quiet"}).err, "");
    const auto unprepared = runBrevix({"score", model, fTable, "--as-is"});
    EXPECT_EQ(unprepared.exitCode, 1);
    EXPECT_THAT(unprepared.errLines(), ElementsAre(AllOf(HasSubstr(model), HasSubstr("260221"), HasSubstr("Targets"))));
}

TEST_F(ScoreOutput, NotesAreHeldBackUntilTheFirstRowsAreRead) {
    SmallDocument document;
    document.targetField = R"(<DataField name="hue" optype="categorical" dataType="string"/>)";
    const std::string model = write("bare.pmml", document.makeText());
    for (const char* table : {"x\n1\n", "x,y\n1\n", ""}) {
        const auto run = runBrevix({"score", model}, table);
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_THAT(run.errLines(), ElementsAre(HasSubstr("standard input: "))) << run.err;
        EXPECT_EQ(run.out, "");
    }
}

TEST_F(ScoreOutput, RowsAreTheSameWhateverTheNumberOfThreads) {
    std::string table = "id,x,y\n";
    for (int i = 0; i < 200000; ++i)
        table += std::to_string(i) + "," + std::to_string(i % 13 - 6) + (i % 3 == 0 ? ".5," : ",") +
                 (i % 17 == 0 ? "" : std::to_string(i % 11)) + "\n";
    const std::string input = write("large.csv", table);
    const auto one = runBrevix({"score", fModel, input, "--keep", "id", "--threads", "1"});
    ASSERT_EQ(one.exitCode, 0);
    EXPECT_THAT(one.err, HasSubstr("200000 rows, "));
    for (const char* threads : {"2", "8"}) {
        EXPECT_EQ(runBrevix({"score", fModel, input, "--keep", "id", "--threads", threads}).out, one.out);
    }
    EXPECT_EQ(runBrevix({"score", fModel, input, "--keep", "id"}).out, one.out);
}

TEST_F(ScoreOutput, MemoryDoesNotGrowWithTheRows) {
#ifndef _WIN32
    // A sanitizer keeps what is freed for a while; little of it is enough here.
    ::setenv("ASAN_OPTIONS", "quarantine_size_mb=1:thread_local_quarantine_size_kb=64", 1);
#endif
    const auto scoreRows = [this](int count) {
        const std::string table = writeLarge("rows.csv", "x,y\n", "-0.123456789,0.987654321\n", count);
        return runBrevix({"score", fModel, table, "-o", path("out.csv")});
    };
    const auto small = scoreRows(100000);
    const auto large = scoreRows(1500000);
    ASSERT_EQ(large.exitCode, 0);
    // The larger table alone is 38 MB, its result another 15 MB.
    expectPeakBelow(large, small.peakKilobytes + 8000);
}

TEST_F(ScoreOutput, NothingIsLeftBehindWhenTheTableFailsLate) {
    std::string table = "x,y\n";
    for (int i = 0; i < 50000; ++i)
        table += "1,2\n";
    const std::string input = write("late.csv", table + "1\n");
    const auto run = runBrevix({"score", fModel, input, "-o", path("out.csv")});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.errLines(), ElementsAre("brevix: " + input + ": row 50001 has 1 cells where the header has 2"));
    EXPECT_THAT(listFiles(), ElementsAre("late.csv", "model.pmml", "table.csv"));
}

TEST_F(ScoreOutput, OldFileStaysUntilTheNewOneIsComplete) {
    const std::string old = write("out.csv", "old");
    EXPECT_EQ(runBrevix({"score", fModel, "-o", old}, "x\n1\n").exitCode, 1);
    EXPECT_EQ(read(old), "old");
    EXPECT_EQ(runBrevix({"score", fModel, fTable, "-o", old}).exitCode, 0);
    EXPECT_EQ(read(old), kResult);
}

TEST_F(ScoreOutput, MayReplaceItsOwnInput) {
    EXPECT_EQ(runBrevix({"score", fModel, fTable, "-o", fTable}).exitCode, 0);
    EXPECT_EQ(read(fTable), kResult);
}

TEST_F(ScoreOutput, MayNotReplaceTheModel) {
    const std::string before = read(fModel);
    EXPECT_EQ(runBrevix({"score", fModel, fTable, "-o", fModel}).exitCode, 2);
    EXPECT_EQ(read(fModel), before);
}

TEST_F(ScoreOutput, PlaceThatCannotBeWrittenEndsWithOne) {
    for (const std::string& place : {path("nowhere/out.csv"), fFolder.getPath().string()}) {
        const auto run = runBrevix({"score", fModel, fTable, "-o", place});
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_THAT(run.errLines(), ElementsAre(HasSubstr(place + ": it cannot be written: ")));
    }
    EXPECT_THAT(listFiles(), ElementsAre("model.pmml", "table.csv"));
}

TEST_F(ScoreOutput, FullDeviceEndsWithOne) {
#ifdef _WIN32
    GTEST_SKIP() << "Windows has no device that is always full";
#endif
    const auto run = runBrevix({"score", fModel, fTable, "-o", "/dev/full"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.errLines(), ElementsAre("brevix: /dev/full: it cannot be written: No space left on device"));
    test_support::Streams streams;
    streams.outPath = "/dev/full";
    EXPECT_EQ(runBrevix({"score", fModel, fTable}, streams).exitCode, 1);
    EXPECT_EQ(runBrevix({"version"}, streams).exitCode, 1);
}

TEST_F(ScoreOutput, ClosedStandardStreamsAreNotTakenForFiles) {
    test_support::Streams streams;
    streams.closesOut = true;
    const auto run = runBrevix({"score", fModel, fTable}, streams);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.errLines(), ElementsAre(HasSubstr("standard output: it cannot be written")));
    EXPECT_EQ(runBrevix({"score", fModel, fTable, "-o", path("out.csv")}, streams).exitCode, 0);
    EXPECT_EQ(read(path("out.csv")), kResult);
    streams = {};
    streams.closesErr = true;
    EXPECT_EQ(runBrevix({"score", fModel, fTable}, streams).out, kResult);
    streams = {};
    streams.closesIn = true;
    EXPECT_EQ(runBrevix({"score", fModel}, streams).exitCode, 1);
}

TEST_F(ScoreOutput, PluginIsFoundOrGiven) {
    EXPECT_EQ(runBrevix({"score", fModel, fTable, "--plugin", BREVIX_PLUGIN}).out, kResult);
    const auto run = runBrevix({"score", fModel, fTable, "--plugin", fTable});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.errLines(), ElementsAre(AllOf(HasSubstr("the plug-in " + fTable), HasSubstr("cannot be loaded"))));
}

}  // namespace
