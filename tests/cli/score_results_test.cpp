// brevix score: Targets and Output as a user sees them.
#include <gmock/gmock.h>

#include "tests/cli/Command.h"
#include "tests/runtime/SmallDocument.h"

namespace {

using test_support::CommandTest;
using test_support::runBrevix;
using test_support::SmallDocument;

class ScoreResults : public CommandTest {
protected:
    std::string score(const SmallDocument& document, const std::string& table,
                      const std::vector<std::string>& options = {}) {
        std::vector<std::string> arguments = {"score", write("model.pmml", document.makeText()), "-", "--quiet"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const auto run = runBrevix(arguments, table);
        EXPECT_EQ(run.exitCode, 0) << run.err;
        return run.out;
    }
};

TEST_F(ScoreResults, TargetsRescaleAndStandInForMissingCases) {
    SmallDocument document = SmallDocument::regression();
    document.afterSchema = R"(<Targets><Target field="price" rescaleFactor="2" rescaleConstant="-1">)"
                           R"(<TargetValue defaultValue="9.5"/></Target></Targets>)";
    EXPECT_EQ(score(document, "x,y\n2,0.5\n,1\na,1\n"),
              "predicted_price,stddev,ci_lower,ci_upper,status\n4.5,,,,0\n9.5,,,,0\n,,,,90027\n");
    EXPECT_EQ(score(document, "x,y\n,1\n", {"--missing-policy", "1"}),
              "predicted_price,stddev,ci_lower,ci_upper,status\n,,,,90029\n");
}

TEST_F(ScoreResults, OutputFieldsStandBeforeTheStatus) {
    SmallDocument document = SmallDocument::regression();
    document.afterSchema =
        R"(<Output><OutputField name="rounded" dataType="integer"/><OutputField name="note" feature="transformedValue">)"
        R"(<Constant dataType="string">a,b</Constant></OutputField><OutputField name="rest" feature="residual"/></Output>)";
    EXPECT_EQ(score(document, "x,y,price\n2,0.5,3\n1,1,\n,1,3\n"),
              "predicted_price,stddev,ci_lower,ci_upper,rounded,note,rest,status\n"
              "2.75,,,,3,\"a,b\",0.25,0\n0.875,,,,1,\"a,b\",,0\n,,,,,,,90029\n");
    EXPECT_EQ(score(document, "x,y\n2,0.5\n"),
              "predicted_price,stddev,ci_lower,ci_upper,rounded,note,rest,status\n2.75,,,,3,\"a,b\",,0\n")
        << "a table may lack the target";
    EXPECT_EQ(score(document, "{\"x\":2,\"y\":0.5}\n", {"--input-format", "jsonl", "--format", "jsonl"}),
              "{\"predicted_price\":2.75,\"stddev\":null,\"ci_lower\":null,\"ci_upper\":null,\"rounded\":3,"
              "\"note\":\"a,b\",\"rest\":null,\"status\":0}\n");
}

TEST_F(ScoreResults, TargetThatIsKeptMustBeThere) {
    SmallDocument document = SmallDocument::regression();
    document.afterSchema = R"(<Output><OutputField name="rest" feature="residual"/></Output>)";
    const std::string model = write("model.pmml", document.makeText());
    EXPECT_EQ(runBrevix({"score", model, "-", "--keep", "price"}, std::string("x,y\n1,2\n")).exitCode, 1);
    EXPECT_EQ(runBrevix({"score", model, "-", "--keep", "price"}, std::string("x,y,price\n1,2,3\n")).exitCode, 0);
}

}  // namespace
