// Files that appear only when they are complete: modes, links and devices, as POSIX systems have them.
#include <sys/stat.h>

#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "runtime/Error.h"
#include "runtime/OutputFile.h"
#include "tests/support/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;

using test_support::contentOf;

class OutputFilePosix : public testing::Test {
protected:
    std::string path(const std::string& name) const { return fFolder.pathOf(name); }

    test_support::TemporaryFolder fFolder;
};

TEST_F(OutputFilePosix, ReplacesAnOldFileAndKeepsItsMode) {
    std::ofstream(path("out.csv")) << "old and longer";
    fs::permissions(path("out.csv"), fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    brevix::OutputFile file(path("out.csv"));
    file.write("new");
    file.commit();
    EXPECT_EQ(contentOf(path("out.csv")), "new");
    EXPECT_EQ(fs::status(path("out.csv")).permissions(),
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
}

TEST_F(OutputFilePosix, NewFileFollowsTheUmask) {
    const mode_t before = ::umask(027);
    brevix::OutputFile file(path("out.csv"));
    ::umask(before);
    file.commit();
    EXPECT_EQ(fs::status(path("out.csv")).permissions(),
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
}

TEST_F(OutputFilePosix, LinkStaysAndItsFileIsReplaced) {
    std::ofstream(path("real.csv")) << "old";
    fs::create_symlink("real.csv", path("link.csv"));
    brevix::OutputFile file(path("link.csv"));
    file.write("new");
    file.commit();
    EXPECT_TRUE(fs::is_symlink(path("link.csv")));
    EXPECT_EQ(contentOf(path("real.csv")), "new");
}

TEST_F(OutputFilePosix, DeviceIsWrittenDirectlyAndItsFullnessIsSeen) {
    brevix::OutputFile file("/dev/full");
    EXPECT_EQ(file.getTemporaryPath(), "");
    EXPECT_THROW(file.write("x"), brevix::Error);
}

}  // namespace
