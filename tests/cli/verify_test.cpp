// brevix verify: equal, different, at the border, without expectation, and what cannot be verified.
#include <gmock/gmock.h>

#include "tests/cli/Command.h"
#include "tests/runtime/SmallDocument.h"

namespace {

using test_support::CommandTest;
using test_support::runBrevix;
using test_support::SmallDocument;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class Verify : public CommandTest {
protected:
    // Of the regression f = 1.5 x - 0.75 y + 0.125.
    test_support::CommandResult verifyTable(const std::string& table, std::vector<std::string> options = {}) {
        const std::string model = write("model.pmml", SmallDocument::regression().makeText());
        options.insert(options.begin(), {"verify", model, "-"});
        return runBrevix(options, table);
    }

    test_support::CommandResult verifyClasses(const std::string& table, std::vector<std::string> options = {}) {
        const std::string model = write("model.pmml", SmallDocument().makeText());
        options.insert(options.begin(), {"verify", model, "-"});
        return runBrevix(options, table);
    }

    // verification: what stands inside ModelVerification.
    test_support::CommandResult verifyModel(SmallDocument document, const std::string& verification) {
        document.afterMachines = "<ModelVerification>" + verification + "</ModelVerification>";
        return runBrevix({"verify", write("model.pmml", document.makeText())});
    }

    static std::string fields(const std::string& attributes = "") {
        return R"(<VerificationFields><VerificationField field="x"/><VerificationField field="y" column="why"/>)"
               R"(<VerificationField field="price" )" +
               attributes + "/></VerificationFields>";
    }
};

TEST_F(Verify, TableOfEqualResultsEndsWithZero) {
    const auto run = verifyTable("x,y,predicted_price\n2,0.5,2.75\n-1,4,-4.375\n");
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(run.out, "2 rows, 2 values compared: no difference\n");
    EXPECT_EQ(run.err, "");
}

TEST_F(Verify, WhatScoreWritesVerifies) {
    const std::string model = example("wine_probability/model.pmml");
    const auto scored = runBrevix({"score", model, example("wine_probability/cases.csv"), "--quiet", "--keep",
                                   "alcohol,malic_acid,ash,alcalinity_of_ash,magnesium,total_phenols,flavanoids,"
                                   "nonflavanoid_phenols,proanthocyanins,color_intensity,hue,"
                                   "od280/od315_of_diluted_wines,proline"});
    ASSERT_EQ(scored.exitCode, 0) << scored.err;
    const auto run = runBrevix({"verify", model, "-", "--precision", "0", "--zero-threshold", "0"}, scored.out);
    EXPECT_EQ(run.exitCode, 0) << run.out;
    EXPECT_EQ(run.out, "178 rows, 1068 values compared: no difference\n");
}

TEST_F(Verify, DifferencesAreListedWithRowColumnBothValuesAndRelativeError) {
    const auto run = verifyTable("x,y,predicted_price\n2,0.5,2.75\n-1,4,-3.5\n0,0,0.125\n1,1,x\n");
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.out,
              "row  column           expected  actual  relative error\n"
              "2    predicted_price  -3.5      -4.375  0.25\n"
              "4    predicted_price  x         0.875\n"
              "4 rows, 4 values compared: 2 differences in 2 rows\n");
}

TEST_F(Verify, NoMoreDifferencesAreListedThanAskedForAndTheRestIsCounted) {
    std::string table = "x,y,predicted_price\n";
    for (int i = 0; i < 37; ++i)
        table += "0,0,1\n";
    EXPECT_THAT(verifyTable(table).out,
                HasSubstr("\n20   predicted_price  1         0.125   0.875\n... and 17 more\n"));
    EXPECT_THAT(verifyTable(table, {"--most", "2"}).out, HasSubstr("\n... and 35 more\n37 rows, "));
    EXPECT_EQ(verifyTable(table, {"--most", "0"}).out,
              "... and 37 more\n37 rows, 37 values compared: 37 differences in 37 rows\n");
}

TEST_F(Verify, PrecisionAndZeroThresholdAreThoseOfTheOptions) {
    const std::string table = "x,y,predicted_price\n2,0.5,2.7500055\n";
    EXPECT_EQ(verifyTable(table).exitCode, 3);
    EXPECT_EQ(verifyTable(table, {"--precision", "1e-5"}).exitCode, 0);
    const std::string zero = "x,y,predicted_price\n0,0.16666666666666,0\n";
    EXPECT_EQ(verifyTable(zero).exitCode, 3);
    EXPECT_EQ(verifyTable(zero, {"--zero-threshold", "1e-14"}).exitCode, 0);
}

TEST_F(Verify, MissingExpectationsAreNotComparedAndCounted) {
    const auto run = verifyTable("x,y,predicted_price,stddev\n2,0.5,2.75,\n,4,,\n,4,NA,\n", {"--na", "NA"});
    EXPECT_EQ(run.exitCode, 0) << run.out;
    EXPECT_EQ(run.out, "3 rows, 1 value compared, 5 without expectation: no difference\n");
}

TEST_F(Verify, FailedRowIsADifferenceUnlessItsStatusIsExpected) {
    const auto run = verifyTable("x,y,predicted_price,status\n,4,2.5,90029\nx,4,2.5,90029\n1,1,0.875,0\n");
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.out,
              "row  column           expected  actual        relative error\n"
              "1    predicted_price  2.5       status 90029\n"
              "2    predicted_price  2.5       status 90027\n"
              "2    status           90029     90027         2.221506403492208e-05\n"
              "3 rows, 6 values compared: 3 differences in 2 rows\n");
}

TEST_F(Verify, CategoriesAreComparedAsTheyAreWritten) {
    EXPECT_EQ(verifyClasses("x,y,predicted_hue\n-0.5,0.25,red\n0.5,0.25,blue\n").exitCode, 0);
    const auto run = verifyClasses("x,y,predicted_hue,confidence\n-0.5,0.25,Red,\n0.5,0.25,blue,0.5\n");
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.out,
              "row  column         expected  actual  relative error\n"
              "1    predicted_hue  Red       red\n"
              "2    confidence     0.5\n"
              "2 rows, 3 values compared, 1 without expectation: 2 differences in 2 rows\n");
}

TEST_F(Verify, TruthValuesMayBeWrittenAsCellsMaySayThem) {
    SmallDocument document;
    document.targetField =
        R"(<DataField name="hue" optype="categorical" dataType="boolean"><Value value="true"/><Value value="false"/></DataField>)";
    document.machines = SmallDocument::machine(R"(targetCategory="true" alternateTargetCategory="false")");
    const std::string model = write("model.pmml", document.makeText());
    const std::string equal = "x,y,predicted_hue\n-1,0,True\n-1,0,1\n-1,0,true\n1,0,FALSE\n1,0,0\n";
    EXPECT_EQ(runBrevix({"verify", model, "-"}, equal).exitCode, 0);
    const std::string others = "x,y,predicted_hue\n-1,0,False\n-1,0,yes\n1,0,true\n";
    EXPECT_THAT(runBrevix({"verify", model, "-"}, others).out,
                HasSubstr("3 rows, 3 values compared: 3 differences in 3 rows\n"));
}

TEST_F(Verify, NumbersThatAreNotFiniteEqualThemselvesOnly) {
    EXPECT_EQ(verifyTable("x,y,predicted_price\nINF,1,inf\n-INF,1,-INF\n").exitCode, 0);
    EXPECT_EQ(verifyTable("x,y,predicted_price\nINF,1,-inf\n").exitCode, 3);
    EXPECT_EQ(verifyTable("x,y,predicted_price\nINF,1,1e308\n").exitCode, 3);
    EXPECT_EQ(verifyTable("x,y,predicted_price\nINF,INF,nan\n").exitCode, 0);
    EXPECT_EQ(verifyTable("x,y,predicted_price\n2,0.5,nan\n").exitCode, 3);
    EXPECT_EQ(verifyTable("x,y,predicted_price\n2,0.5,inf\n").exitCode, 3);
}

TEST_F(Verify, JsonLinesMayExpectOnSomeLinesOnly) {
    const auto run =
        verifyTable("{\"x\":2,\"y\":0.5,\"predicted_price\":2.75}\n{\"x\":2,\"y\":1}\n", {"--input-format", "jsonl"});
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_THAT(run.out, StartsWith("2 rows, 1 value compared"));
}

TEST_F(Verify, TableWithNothingToCompareIsAnError) {
    for (const std::string table :
         {"x,y\n1,2\n", "x,y,predicted\n1,2,3\n", "x,y,predicted_price\n", "x,y,predicted_price\n1,2,\n"}) {
        const auto run = verifyTable(table);
        EXPECT_EQ(run.exitCode, 1) << table;
        EXPECT_EQ(run.out, "") << table;
        EXPECT_THAT(run.errLines(), ElementsAre(HasSubstr("there is nothing to compare"))) << table;
    }
}

TEST_F(Verify, TableThatCannotBeReadIsAnError) {
    const auto run = verifyTable("x,predicted_price\n1,2\n");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.errLines(), ElementsAre(HasSubstr("the table lacks the column 'y'")));
    EXPECT_THAT(verifyTable("x,y,predicted_price,predicted_price\n1,2,3,3\n").err,
                HasSubstr("the header repeats 'predicted_price'"));
    EXPECT_EQ(verifyTable("x,y,predicted_price\n1,2\n").exitCode, 1);
    const std::string model = write("model.pmml", SmallDocument::regression().makeText());
    EXPECT_EQ(runBrevix({"verify", model, path("lost.csv")}).exitCode, 1);
    EXPECT_EQ(runBrevix({"verify", path("lost.pmml")}).err,
              "brevix: " + path("lost.pmml") + ": it cannot be opened: No such file or directory\n");
}

TEST_F(Verify, HugeTableTakesNoMoreMemoryThanASmallOne) {
    const std::string model = write("model.pmml", SmallDocument::regression().makeText());
    const std::string small = writeLarge("small.csv", "x,y,predicted_price\n", "2,0.5,2.5\n", 1000);
    const std::string large = writeLarge("large.csv", "x,y,predicted_price\n", "2,0.5,2.5\n", 1000000);
    const auto few = runBrevix({"verify", model, small});
    const auto many = runBrevix({"verify", model, large});
    EXPECT_EQ(many.exitCode, 3);
    EXPECT_THAT(many.out, HasSubstr("1000000 rows, 1000000 values compared: 1000000 differences in 1000000 rows"));
    expectPeakBelow(many, few.peakKilobytes + 8000);
}

TEST_F(Verify, ModelVerificationOfTheModelIsHeldAgainstItsResults) {
    const std::string rows =
        "<InlineTable><row><x>2</x><why>0.5</why><price>2.75</price></row>"
        "<row><x>0</x><why>0</why><price>0.1250002</price></row></InlineTable>";
    const auto run = verifyModel(SmallDocument::regression(), fields() + rows);
    EXPECT_EQ(run.exitCode, 3) << run.err;
    EXPECT_EQ(run.out,
              "row  column  expected   actual  relative error\n"
              "2    price   0.1250002  0.125   1.599997440050105e-06\n"
              "2 rows, 2 values compared: 1 difference in 1 row\n");
    EXPECT_EQ(verifyModel(SmallDocument::regression(), fields(R"(precision="1e-5")") + rows).exitCode, 0);
}

TEST_F(Verify, ZeroThresholdOfAVerificationFieldIncludesItsBorder) {
    const std::string rows = "<InlineTable><row><x>0</x><why>0</why><price>0.125</price></row></InlineTable>";
    const auto exitCode = [&](const std::string& attributes) {
        return verifyModel(SmallDocument::regression(), fields(attributes) + rows).exitCode;
    };
    EXPECT_EQ(exitCode(R"(zeroThreshold="0.125" precision="0")"), 0);
    const std::string other = "<InlineTable><row><x>0</x><why>0</why><price>-0.12</price></row></InlineTable>";
    EXPECT_EQ(verifyModel(SmallDocument::regression(), fields(R"(zeroThreshold="0.125")") + other).exitCode, 0);
    EXPECT_EQ(verifyModel(SmallDocument::regression(), fields(R"(zeroThreshold="0.1249")") + other).exitCode, 3);
}

TEST_F(Verify, CellsOfModelVerificationAreNamedWithoutTheirPrefix) {
    const auto run = verifyModel(
        SmallDocument(),
        R"(<VerificationFields xmlns:d="urn:d"><VerificationField field="x" column="d:a"/><VerificationField field="y"/>)"
        R"(<VerificationField field="hue" column="d:colour"/><VerificationField field="unused"/></VerificationFields>)"
        R"(<InlineTable xmlns:d="urn:d"><row><d:a>-0.5</d:a><y>0.25</y><d:colour>red</d:colour><z>9</z></row>)"
        R"(<row><d:a>0.5</d:a><y>0.25</y></row><row><y>0.25</y><d:colour>red</d:colour></row></InlineTable>)");
    EXPECT_EQ(run.exitCode, 3) << run.err;
    EXPECT_EQ(run.out,
              "row  column  expected  actual        relative error\n"
              "3    hue     red       status 90029\n"
              "3 rows, 2 values compared, 1 without expectation: 1 difference in 1 row\n");
}

TEST_F(Verify, ModelVerificationThatCannotBeReadIsAnError) {
    const auto faultOf = [&](const std::string& verification) {
        const auto run = verifyModel(SmallDocument::regression(), verification);
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(run.errLines().size(), 1u);
        return run.err;
    };
    EXPECT_THAT(faultOf(fields()), HasSubstr("no InlineTable"));
    EXPECT_THAT(faultOf(fields() + "<InlineTable/>"), HasSubstr("no row with an expected result"));
    EXPECT_THAT(faultOf("<InlineTable/>"), HasSubstr("no VerificationField names an output"));
    EXPECT_THAT(faultOf(fields(R"(precision="small")") + "<InlineTable/>"), HasSubstr("'price' has precision='small'"));
    EXPECT_THAT(faultOf(fields(R"(zeroThreshold="-1")") + "<InlineTable/>"),
                HasSubstr("'price' has zeroThreshold='-1'"));
    EXPECT_THAT(faultOf(fields(R"(column="x")") + "<InlineTable/>"), HasSubstr("the column 'x'"));
    const std::string model = write("model.pmml", SmallDocument().makeText());
    EXPECT_THAT(runBrevix({"verify", model}).err, HasSubstr(model + ": the model brings no ModelVerification along"));
}

TEST_F(Verify, OptionsOfTablesNeedATable) {
    const std::string model = write("model.pmml", SmallDocument().makeText());
    EXPECT_EQ(runBrevix({"verify", model, "--precision", "0.1"}).exitCode, 2);
    EXPECT_EQ(runBrevix({"verify", model, "--na", "NA"}).exitCode, 2);
    EXPECT_EQ(runBrevix({"verify", model, "-", "--precision", "-1"}).exitCode, 2);
    EXPECT_EQ(runBrevix({"verify", model, "-", "--precision", "nan"}).exitCode, 2);
    EXPECT_EQ(runBrevix({"verify"}).exitCode, 2);
}

}  // namespace
