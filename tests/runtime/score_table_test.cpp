// Tables scored: order, statuses, formats, columns.
#include "runtime/score_table.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/number_text.h"
#include "runtime/Error.h"
#include "runtime/OutputFile.h"
#include "runtime/ScoringModel.h"
#include "tests/runtime/SmallDocument.h"
#include "tests/runtime/TextSource.h"
#include "tests/runtime/scored_text.h"
#include "tests/support/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;

using brevix::ScoringModel;
using brevix::TableKind;
using brevix::TableOptions;
using brevix::TableTally;
using test_support::SmallDocument;
using test_support::TextSource;
using testing::HasSubstr;
using testing::Pair;
using testing::UnorderedElementsAre;

class ScoreTable : public testing::Test {
protected:
    static std::unique_ptr<ScoringModel> open(const SmallDocument& document) {
        return ScoringModel::openText(document.makeText(), {.plugin = BREVIX_PLUGIN});
    }

    std::string score(const SmallDocument& document, const std::string& table, const TableOptions& options = {}) {
        auto scored = test_support::scoreText(*open(document), table, fPath, options);
        fTally = scored.tally;
        return scored.text;
    }

    test_support::TemporaryFolder fFolder;
    std::string fPath = fFolder.pathOf("result.csv");
    TableTally fTally;
};

TEST_F(ScoreTable, OneRowInIsOneRowOutWithItsStatus) {
    EXPECT_EQ(score(SmallDocument(), "y,other,x\n0.25,q,0.5\n0.25,q,\nabc,q,1\n0.25,q,-0.5\n"),
              "predicted_hue,confidence,probability_red,probability_blue,status\n"
              "blue,,,,0\n,,,,90029\n,,,,90027\nred,,,,0\n");
    EXPECT_EQ(fTally.rowCount, 4u);
    EXPECT_THAT(fTally.rowCountByStatus, UnorderedElementsAre(Pair(0, 2u), Pair(90027, 1u), Pair(90029, 1u)));
}

TEST_F(ScoreTable, HeaderAloneGivesTheHeaderAlone) {
    EXPECT_EQ(score(SmallDocument::regression(), "x,y\n"), "predicted_price,stddev,ci_lower,ci_upper,status\n");
    EXPECT_EQ(fTally.rowCount, 0u);
}

TEST_F(ScoreTable, KeptColumnsStandInFrontAsTheyAreWritten) {
    EXPECT_EQ(score(SmallDocument::regression(), "id,x,y\n 007,1.50,0\n\"a,\"\"b\",1,0\n,NA,0\n",
                    {.keptColumns = {"x", "id"}, .missingTexts = {"NA", "none"}}),
              "x,id,predicted_price,stddev,ci_lower,ci_upper,status\n"
              "1.50, 007,2.375,,,,0\n1,\"a,\"\"b\",1.625,,,,0\nNA,,,,,,90029\n");
}

TEST_F(ScoreTable, RegressionRowsHaveDeviationAndBothBounds) {
    SmallDocument document = SmallDocument::regression();
    const std::string start = "<SupportVectorMachine";
    document.machines.insert(document.machines.find('>', document.machines.find(start)) + 1,
                             R"(<Extension extender="ZARN"><StandardDeviation>0.5</StandardDeviation></Extension>)");
    // The half width is -ln(1 - 0.95) times the deviation.
    const double halfWidth = -(std::log(0.050000000000000044) * 0.5);
    const std::string lower = KwBrevix_930::NumberText(2.375 - halfWidth);
    const std::string upper = KwBrevix_930::NumberText(2.375 + halfWidth);
    EXPECT_EQ(score(document, "x,y\n1.5,0\n"),
              "predicted_price,stddev,ci_lower,ci_upper,status\n2.375,0.5," + lower + "," + upper + ",0\n");
    EXPECT_EQ(score(document, "x,y\n1.5,0\n", {.outputKind = TableKind::kJsonLines}),
              "{\"predicted_price\":2.375,\"stddev\":0.5,\"ci_lower\":" + lower + ",\"ci_upper\":" + upper +
                  ",\"status\":0}\n");
}

TEST_F(ScoreTable, JsonLinesHaveNullForWhatIsAbsent) {
    EXPECT_EQ(score(SmallDocument(), "x,y,\"a \"\"b\"\n0.5,0.25,t\xC3\xA9\n,0.25,\n",
                    {.outputKind = TableKind::kJsonLines, .keptColumns = {"a \"b", "x"}}),
              "{\"a \\\"b\":\"t\xC3\xA9\",\"x\":\"0.5\",\"predicted_hue\":\"blue\",\"confidence\":null,"
              "\"probability_red\":null,\"probability_blue\":null,\"status\":0}\n"
              "{\"a \\\"b\":null,\"x\":null,\"predicted_hue\":null,\"confidence\":null,\"probability_red\":null,"
              "\"probability_blue\":null,\"status\":90029}\n");
}

TEST_F(ScoreTable, JsonLinesKeepNumbersAndBooleansAsTheyAre) {
    EXPECT_EQ(
        score(SmallDocument::regression(), "{\"x\":1.50,\"y\":0,\"b\":true,\"c\":\"7\"}\n{\"y\":\"2\"}\n",
              {.inputKind = TableKind::kJsonLines,
               .outputKind = TableKind::kJsonLines,
               .keptColumns = {"x", "b", "c", "d"}}),
        "{\"x\":1.50,\"b\":true,\"c\":\"7\",\"d\":null,\"predicted_price\":2.375,\"stddev\":null,\"ci_lower\":null,"
        "\"ci_upper\":null,\"status\":0}\n"
        "{\"x\":null,\"b\":null,\"c\":null,\"d\":null,\"predicted_price\":null,\"stddev\":null,\"ci_lower\":null,"
        "\"ci_upper\":null,\"status\":90029}\n");
}

TEST_F(ScoreTable, KeptBytesThatAreNotUtf8BecomeReplacementCharactersInJson) {
    EXPECT_THAT(score(SmallDocument::regression(), "x,y,t\n1,1,tr\xE8s\n",
                      {.outputKind = TableKind::kJsonLines, .keptColumns = {"t"}}),
                HasSubstr("\"t\":\"tr\xEF\xBF\xBDs\""));
    EXPECT_THAT(score(SmallDocument::regression(), "x,y,t\n1,1,tr\xE8s\n", {.keptColumns = {"t"}}),
                HasSubstr("\ntr\xE8s,"));
}

TEST_F(ScoreTable, NumbersThatAreNotFiniteAreTextsInJson) {
    const std::string table = "x,y\nINF,1\n-inf,1\n1e308,-1e308\n";
    EXPECT_EQ(score(SmallDocument::regression(), table),
              "predicted_price,stddev,ci_lower,ci_upper,status\ninf,,,,0\n-inf,,,,0\ninf,,,,0\n");
    EXPECT_THAT(score(SmallDocument::regression(), table, {.outputKind = TableKind::kJsonLines}),
                HasSubstr("{\"predicted_price\":\"-inf\",\"stddev\":null"));
    EXPECT_THAT(score(SmallDocument::regression(), "x,y\ninf,inf\n"), HasSubstr("\nnan,,,,0\n"));
    EXPECT_THAT(score(SmallDocument::regression(), "x,y\ninf,inf\n", {.outputKind = TableKind::kJsonLines}),
                HasSubstr("{\"predicted_price\":\"nan\""));
}

TEST_F(ScoreTable, CategoriesAndColumnsAreQuotedWhereTheFormatNeedsIt) {
    SmallDocument document;
    document.targetField =
        "<DataField name=\"h,t\" optype=\"categorical\" dataType=\"string\"><Value value=\"a,b\"/>"
        "<Value value=\"c&#9;&quot;d\"/></DataField>";
    document.miningFields =
        R"(<MiningField name="h,t" usageType="target"/><MiningField name="x"/><MiningField name="y"/>)";
    document.machines = SmallDocument::machine(R"(targetCategory="a,b" alternateTargetCategory="c&#9;&quot;d")");
    const std::string table = "x,y\n1,0\n-1,0\n";
    EXPECT_EQ(score(document, table),
              "\"predicted_h,t\",confidence,\"probability_a,b\",\"probability_c\t\"\"d\",status\n"
              "\"c\t\"\"d\",,,,0\n\"a,b\",,,,0\n");
    EXPECT_EQ(score(document, table, {.outputKind = TableKind::kTsv}),
              "predicted_h,t\tconfidence\tprobability_a,b\t\"probability_c\t\"\"d\"\tstatus\n"
              "\"c\t\"\"d\"\t\t\t\t0\na,b\t\t\t\t0\n");
}

TEST_F(ScoreTable, CategoryIsWrittenAsItsDeclarationHasIt) {
    SmallDocument document;
    document.targetField =
        R"(<DataField name="hue" optype="categorical" dataType="integer"><Value value="01"/><Value value="2.0"/></DataField>)";
    document.machines = SmallDocument::machine(R"(targetCategory="01" alternateTargetCategory="2.0")");
    const std::string result = score(document, "x,y\n1,0\n-1,0\n");
    EXPECT_THAT(result, HasSubstr("predicted_hue,confidence,probability_01,probability_2.0,status\n"));
}

TEST_F(ScoreTable, BooleanResultsAreTruthValuesInJson) {
    SmallDocument document;
    document.targetField =
        R"(<DataField name="hue" optype="categorical" dataType="boolean"><Value value="true"/><Value value="false"/></DataField>)";
    document.machines = SmallDocument::machine(R"(targetCategory="true" alternateTargetCategory="false")");
    document.afterSchema =
        R"(<Output><OutputField name="high" feature="transformedValue" dataType="boolean"><Apply function="greaterThan">)"
        R"(<FieldRef field="x"/><Constant>0</Constant></Apply></OutputField>)"
        R"(<OutputField name="text" feature="transformedValue" dataType="string"><Constant>true</Constant></OutputField></Output>)";
    EXPECT_EQ(score(document, "x,y\n1,0\n-1,0\n", {.outputKind = TableKind::kJsonLines}),
              R"({"predicted_hue":false,"confidence":null,"probability_true":null,"probability_false":null,)"
              R"("high":true,"text":"true","status":0})"
              "\n"
              R"({"predicted_hue":true,"confidence":null,"probability_true":null,"probability_false":null,)"
              R"("high":false,"text":"true","status":0})"
              "\n");
    EXPECT_EQ(score(document, "x,y\n1,0\n"),
              "predicted_hue,confidence,probability_true,probability_false,high,text,status\n"
              "false,,,,true,true,0\n");
}

TEST_F(ScoreTable, OutputFieldsAreWrittenUnderTheirOwnNames) {
    SmallDocument document;
    document.targetField =
        R"(<DataField name="hue" optype="categorical" dataType="string"><Value value="a"/><Value value="b"/><Value value="c"/></DataField>)";
    document.machines = SmallDocument::pairMachines();
    document.afterSchema = R"(<Output><OutputField name="winner"/><OutputField name="share" feature="probability"/>)"
                           R"(<OutputField name="share of a" feature="probability" value="a"/></Output>)";
    EXPECT_EQ(score(document, "x,y\n0,0\n,1\n"),
              "predicted_hue,confidence,probability_a,probability_b,probability_c,winner,share,share of a,status\n"
              "b,0.6666666666666666,0.3333333333333333,0.6666666666666666,0,b,0.6666666666666666,0.3333333333333333,0\n"
              ",,,,,,,,90029\n");
}

TEST_F(ScoreTable, KeptColumnWithTheNameOfAResultIsRefused) {
    EXPECT_THROW(score(SmallDocument(), "x,y,status\n1,1,1\n", {.keptColumns = {"status"}}), brevix::Error);
    EXPECT_FALSE(fs::exists(fPath));
}

TEST_F(ScoreTable, RowsComeOutInOrderWhateverTheNumberOfThreads) {
    std::string table = "id,x,y\n";
    for (int i = 0; i < 30000; ++i) {
        const std::string number = std::to_string(i);
        table += number + "," + (i % 11 == 0 ? "" : std::to_string(i % 101 - 50)) + "," + std::to_string(i % 7) +
                 std::string(static_cast<std::size_t>(i % 5), '0') + "\n";
    }
    const std::string one = score(SmallDocument::regression(), table, {.keptColumns = {"id"}, .threadCount = 1});
    EXPECT_EQ(fTally.rowCount, 30000u);
    EXPECT_EQ(fTally.rowCountByStatus[90029], 2728u);
    for (const int threads : {2, 8}) {
        EXPECT_EQ(score(SmallDocument::regression(), table, {.keptColumns = {"id"}, .threadCount = threads}), one);
    }
}

TEST_F(ScoreTable, EventsComeAtTheStartAndBehindRows) {
    const auto model = open(SmallDocument());
    TextSource source("x,y\n1,1\n2,2\n");
    std::optional<brevix::OutputFile> output;
    std::vector<std::string> heard;
    brevix::scoreTable(*model, source,
                       [&]() -> brevix::OutputFile& {
                           heard.emplace_back("open");
                           return output.emplace(fPath);
                       },
                       {},
                       {[&] { heard.emplace_back("start"); },
                        [&](const TableTally& tally) { heard.push_back(std::to_string(tally.rowCount) + " rows"); }});
    EXPECT_THAT(heard, testing::ElementsAre("open", "start", "2 rows"));
}

TEST_F(ScoreTable, TableThatIsWrongFromItsStartOpensNoOutput) {
    const auto model = open(SmallDocument());
    TextSource source("x,y\n1,1\n2\n");
    EXPECT_THROW(brevix::scoreTable(*model, source,
                                    []() -> brevix::OutputFile& {
                                        ADD_FAILURE() << "opened";
                                        throw brevix::Error("opened");
                                    },
                                    {}, {}),
                 brevix::Error);
}

TEST_F(ScoreTable, FaultFarBehindTheStartStopsTheWholeTable) {
    std::string table = "x,y\n";
    for (int i = 0; i < 100000; ++i)
        table += "1,2\n";
    try {
        score(SmallDocument(), table + "1\n");
        FAIL();
    } catch (const brevix::Error& fault) {
        EXPECT_STREQ(fault.what(), "cases.csv: row 100001 has 1 cells where the header has 2");
    }
    EXPECT_FALSE(fs::exists(fPath));
}

}  // namespace
