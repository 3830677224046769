// brevix score over named pipes, and under signals: what POSIX systems have.
#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>

#include <gmock/gmock.h>

#include "tests/cli/Command.h"
#include "tests/runtime/SmallDocument.h"

namespace {

using test_support::CommandTest;
using test_support::MatchesPattern;
using test_support::runBrevix;
using test_support::SmallDocument;
using testing::ElementsAre;
using testing::HasSubstr;

class ScorePipes : public CommandTest {
protected:
    std::string fModel = write("model.pmml", SmallDocument().makeText());
    std::string fTable = write("table.csv", "id,x,y\na,0.5,0.25\nb,,0.25\nc,-0.5,0.25\nd,abc,0.25\n");
};

TEST_F(ScorePipes, ReaderThatHasGoneEndsWithOne) {
    const std::string fifo = path("pipe");
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    // Both ends are open until the program has opened its own; then nobody reads.
    const int both = ::open(fifo.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    std::string table = "x,y\n";
    for (int i = 0; i < 100000; ++i)
        table += "1,2\n";
    const std::string input = write("long.csv", table);
    const pid_t child = ::fork();
    if (child == 0) {
        // Drains a little, then goes.
        char buffer[16];
        while (::read(both, buffer, sizeof buffer) <= 0)
            ::usleep(1000);
        ::_exit(0);
    }
    ::close(both);
    const auto run = runBrevix({"score", fModel, input, "-o", fifo});
    ::waitpid(child, nullptr, 0);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.err, HasSubstr(fifo + ": it cannot be written: Broken pipe"));
}

TEST_F(ScorePipes, SignalToEndLeavesNothingBehind) {
    const std::string fifo = path("endless");
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    const int both = ::open(fifo.c_str(), O_RDWR | O_CLOEXEC);
    const pid_t program = ::fork();
    if (program == 0) {
        ::execl(BREVIX_PROGRAM, BREVIX_PROGRAM, "score", fModel.c_str(), fifo.c_str(), "-o", path("out.csv").c_str(),
                "--quiet", nullptr);
        ::_exit(127);
    }
    const std::string rows = "x,y\n1,2\n3,4\n";
    ASSERT_EQ(::write(both, rows.data(), rows.size()), static_cast<ssize_t>(rows.size()));
    // The unfinished file stands beside its place as soon as the first rows are read.
    for (int i = 0; i < 5000 && listFiles().size() < 4; ++i)
        ::usleep(1000);
    EXPECT_EQ(listFiles().size(), 4u);
    ::usleep(20000);
    ::kill(program, SIGTERM);
    int status = 0;
    ::waitpid(program, &status, 0);
    ::close(both);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGTERM);
    EXPECT_THAT(listFiles(), ElementsAre("endless", "model.pmml", "table.csv"));
}

// Rows that come through a pipe, some of them late.
pid_t feedSlowly(const std::string& fifo) {
    const pid_t child = ::fork();
    if (child == 0) {
        std::ofstream pipe(fifo);
        pipe << "x,y\n1,2\n" << std::flush;
        ::usleep(2300000);
        pipe << "3,4\n5,6\n" << std::flush;
        pipe.close();
        ::_exit(0);
    }
    return child;
}

TEST_F(ScorePipes, ProgressIsShownWhenAskedForOnLongWorkOnly) {
    const std::string fifo = path("slow");
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    for (const bool isAskedFor : {true, false}) {
        const pid_t feeder = feedSlowly(fifo);
        std::vector<std::string> arguments = {"score", fModel, fifo};
        if (isAskedFor)
            arguments.emplace_back("--progress");
        const auto lines = runBrevix(arguments).errLines();
        ::waitpid(feeder, nullptr, 0);
        EXPECT_EQ(lines.size(), isAskedFor ? 2u : 1u) << "standard error is no terminal";
        EXPECT_THAT(lines.front(), MatchesPattern(isAskedFor ? "3 rows, [0-9]+ rows/s" : "3 rows, .* status 0: 3"));
    }
}

}  // namespace
