// The host's trace log.
#include "host/ScoringLog.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/TemporaryFolder.h"
#include "tests/support/process.h"

namespace {

using KwBrevix_930::ScoringLog;

// Collects the lines of one test and leaves the log as it was.
class ScoringLogTest : public testing::Test {
protected:
    void SetUp() override { log.SetStream(&lines); }
    void TearDown() override {
        log.SetTracing(false);
        log.SetStream(nullptr);
    }

    ScoringLog& log = ScoringLog::GetInstance();
    std::ostringstream lines;
};

TEST_F(ScoringLogTest, IsOneObject) {
    EXPECT_EQ(&ScoringLog::GetInstance(), &log);
}

TEST_F(ScoringLogTest, WritesLevelOneOnlyWhileSwitchedOn) {
    log.TraceText(1, "Enter:%s", "before");
    EXPECT_EQ(lines.str(), "");
    log.SetTracing(true);
    EXPECT_TRUE(log.IsTracing());
    log.TraceText(1, "Enter:%s", "KwBrevix_930::SVMTranslator::ParseFromTree");
    log.TraceText(1, "KwStatus error code is :%ld", 90029L);
    log.SetTracing(false);
    log.TraceText(1, "Exit:%s", "after");
    EXPECT_EQ(lines.str(), "Enter:KwBrevix_930::SVMTranslator::ParseFromTree\nKwStatus error code is :90029\n");
}

TEST_F(ScoringLogTest, WritesLowerLevelsAlways) {
    log.TraceText(0, "level %d", 0);
    log.TraceText(-3, "level %d", -3);
    log.TraceText(2, "level %d", 2);
    EXPECT_EQ(lines.str(), "level 0\nlevel -3\n");
}

TEST_F(ScoringLogTest, WritesALongLineWhole) {
    const std::string longText(100'003, 'q');
    log.SetTracing(true);
    log.TraceText(1, "<%s>", longText.c_str());
    EXPECT_EQ(lines.str(), "<" + longText + ">\n");
}

TEST_F(ScoringLogTest, DoesNotShowTheFormatOfTheStream) {
    lines << std::setw(40) << std::setfill('*');
    log.TraceText(0, "plain");
    EXPECT_EQ(lines.str(), "plain\n");
}

TEST_F(ScoringLogTest, KeepsTheLinesOfSeveralThreadsApart) {
    constexpr int kThreads = 4;
    constexpr int kLines = 500;
    log.SetTracing(true);
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([this, t] {
            for (int i = 0; i < kLines; ++i)
                log.TraceText(1, "thread %d line %d", t, i);
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    std::istringstream written(lines.str());
    std::multiset<std::string> seen;
    for (std::string line; std::getline(written, line);)
        seen.insert(line);
    EXPECT_EQ(seen.size(), static_cast<std::size_t>(kThreads * kLines));
    for (int t = 0; t < kThreads; ++t) {
        for (int i = 0; i < kLines; ++i)
            EXPECT_EQ(seen.count("thread " + std::to_string(t) + " line " + std::to_string(i)), 1u);
    }
}

struct ProbeRun {
    int exitCode;
    std::string standardOutput;
    std::string standardError;
};

// Runs a fresh program with BREVIX_TRACE set to a value; null: not set.
ProbeRun RunProbe(const char* trace) {
    const test_support::TemporaryFolder folder;
    test_support::setVariable("BREVIX_TRACE", trace);
    const auto end = test_support::runProcess({TRACE_PROBE},
                                              {test_support::kNullDevice, folder.pathOf("out"), folder.pathOf("err")});
    test_support::setVariable("BREVIX_TRACE", nullptr);
    return {end.exitCode, test_support::linesOf(folder.pathOf("out")), test_support::linesOf(folder.pathOf("err"))};
}

TEST(ScoringLog, IsOffInAFreshProgram) {
    const ProbeRun run = RunProbe(nullptr);
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.standardError, "always\n");
    EXPECT_EQ(run.standardOutput, "");
}

TEST(ScoringLog, IsSwitchedOnByTheEnvironment) {
    for (const char* value : {"1", "yes", "00"}) {
        const ProbeRun run = RunProbe(value);
        EXPECT_EQ(run.exitCode, 1) << value;
        EXPECT_EQ(run.standardError, "detail 17\nalways\n") << value;
        EXPECT_EQ(run.standardOutput, "") << value;
    }
}

TEST(ScoringLog, StaysOffWhenTheVariableIsEmptyOrZero) {
    EXPECT_EQ(RunProbe("").standardError, "always\n");
    EXPECT_EQ(RunProbe("0").standardError, "always\n");
}

}  // namespace
