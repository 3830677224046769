// brevix: its verbs, its help, and command lines that are wrong.
#include <gmock/gmock.h>

#include "tests/cli/Command.h"
#include "tests/runtime/SmallDocument.h"
#include "tests/support/process.h"

namespace {

using test_support::CommandTest;
using test_support::runBrevix;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class Usage : public CommandTest {};

TEST_F(Usage, VersionIsThatOfTheProject) {
    const auto run = runBrevix({"version"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, "brevix " BREVIX_VERSION "\n");
    EXPECT_EQ(run.err, "");
}

TEST_F(Usage, HelpGoesToStandardOutput) {
    const auto run = runBrevix({"--help"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.out, HasSubstr("score"));
    EXPECT_THAT(runBrevix({"score", "--help"}).out, HasSubstr("--missing-policy"));
}

TEST_F(Usage, WrongCommandLinesEndWithTwoAndOneLine) {
    const std::string model = write("model.pmml", test_support::SmallDocument().makeText());
    const std::vector<std::vector<std::string>> wrong = {
        {},
        {"scored"},
        {"score"},
        {"version", "more"},
        {"score", model, "a.csv", "b.csv"},
        {"score", model, "--unknown"},
        {"score", model, "--threads", "0"},
        {"score", model, "--threads", "two"},
        {"score", model, "--threads"},
        {"score", model, "--missing-policy", "3"},
        {"score", model, "--missing-policy", "-1"},
        {"score", model, "--format", "xml"},
        {"score", model, "--input-format", "xls"},
        {"score", model, "--progress", "--no-progress"},
        {"score", model, "--keep", "a,b", "--keep", "a"},
        {"score", model, "--keep", "\"a"},
        {"score", model, "--keep", "status"},
        {"score", model, "--keep", "x,confidence"},
        {"score", model, "--output", ""},
    };
    for (const auto& arguments : wrong) {
        const auto run = runBrevix(arguments, std::string("x,y\n1,2\n"));
        EXPECT_EQ(run.exitCode, 2) << testing::PrintToString(arguments);
        EXPECT_EQ(run.out, "") << testing::PrintToString(arguments);
        EXPECT_THAT(run.errLines(), ElementsAre(StartsWith("brevix: "))) << testing::PrintToString(arguments);
    }
}

TEST_F(Usage, QuietStillSaysWhatIsWrong) {
    const auto run = runBrevix({"score", path("lost.pmml"), "--quiet"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.errLines(), ElementsAre(HasSubstr("lost.pmml")));
}

TEST_F(Usage, ClosingLineOfATableWithoutRowsCountsNone) {
    const std::string model = write("model.pmml", test_support::SmallDocument().makeText());
    const auto run = runBrevix({"score", model}, std::string("x,y\n"));
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.errLines(), ElementsAre(test_support::MatchesPattern("0 rows, [0-9]+ rows/s.*")));
}

TEST_F(Usage, TraceShowsNoCaseThatIsNotInTheTable) {
    const std::string model = write("model.pmml", test_support::SmallDocument().makeText());
    test_support::setVariable("BREVIX_TRACE", "1");
    const auto run = runBrevix({"score", model}, std::string("x,y\n1,2\n"));
    const auto failing = runBrevix({"score", model}, std::string("x,y\n,2\n"));
    test_support::setVariable("BREVIX_TRACE", nullptr);
    EXPECT_THAT(run.err, HasSubstr("Enter:KwBrevix_930::SVMTranslator::ParseFromTree"));
    EXPECT_THAT(run.err, testing::Not(HasSubstr("KwStatus error code")));
    EXPECT_THAT(failing.err, HasSubstr("KwStatus error code is :90029"));
}

}  // namespace
