// Files that appear only when they are complete.
#include "runtime/OutputFile.h"

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "runtime/Error.h"

namespace {

namespace fs = std::filesystem;

class OutputFileTest : public testing::Test {
protected:
    OutputFileTest() {
        std::string name = (fs::temp_directory_path() / "brevix-output-XXXXXX").string();
        fFolder = ::mkdtemp(name.data());
    }
    ~OutputFileTest() override { fs::remove_all(fFolder); }

    std::string path(const std::string& name) const { return (fFolder / name).string(); }
    static std::string contentOf(const std::string& file) {
        std::ostringstream content;
        content << std::ifstream(file).rdbuf();
        return content.str();
    }
    std::size_t countFiles() const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(fFolder), fs::directory_iterator()));
    }

    fs::path fFolder;
};

TEST_F(OutputFileTest, AppearsOnlyWhenCommitted) {
    {
        brevix::OutputFile file(path("out.csv"));
        file.write("a,b\n");
        EXPECT_FALSE(fs::exists(path("out.csv")));
        EXPECT_EQ(fs::path(file.getTemporaryPath()).parent_path(), fFolder);
        file.commit();
    }
    EXPECT_EQ(contentOf(path("out.csv")), "a,b\n");
    EXPECT_EQ(countFiles(), 1u);
}

TEST_F(OutputFileTest, WithoutCommitNothingStaysAndAnOldFileIsKept) {
    std::ofstream(path("out.csv")) << "old";
    {
        brevix::OutputFile file(path("out.csv"));
        file.write("new");
    }
    EXPECT_EQ(contentOf(path("out.csv")), "old");
    EXPECT_EQ(countFiles(), 1u);
}

TEST_F(OutputFileTest, ReplacesAnOldFileAndKeepsItsMode) {
    std::ofstream(path("out.csv")) << "old and longer";
    fs::permissions(path("out.csv"), fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    brevix::OutputFile file(path("out.csv"));
    file.write("new");
    file.commit();
    EXPECT_EQ(contentOf(path("out.csv")), "new");
    EXPECT_EQ(fs::status(path("out.csv")).permissions(),
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
}

TEST_F(OutputFileTest, NewFileFollowsTheUmask) {
    const mode_t before = ::umask(027);
    brevix::OutputFile file(path("out.csv"));
    ::umask(before);
    file.commit();
    EXPECT_EQ(fs::status(path("out.csv")).permissions(),
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
}

TEST_F(OutputFileTest, LinkStaysAndItsFileIsReplaced) {
    std::ofstream(path("real.csv")) << "old";
    fs::create_symlink("real.csv", path("link.csv"));
    brevix::OutputFile file(path("link.csv"));
    file.write("new");
    file.commit();
    EXPECT_TRUE(fs::is_symlink(path("link.csv")));
    EXPECT_EQ(contentOf(path("real.csv")), "new");
}

TEST_F(OutputFileTest, PlacesThatCannotBeWrittenAreRefusedByName) {
    for (const std::string& place : {path("nowhere/out.csv"), fFolder.string(), path("new/")}) {
        try {
            const brevix::OutputFile file(place);
            FAIL() << place;
        } catch (const brevix::Error& fault) {
            EXPECT_EQ(std::string(fault.what()).find(place + ": it cannot be written: "), 0u) << fault.what();
        }
    }
    EXPECT_EQ(countFiles(), 0u);
}

TEST_F(OutputFileTest, DeviceIsWrittenDirectlyAndItsFullnessIsSeen) {
    brevix::OutputFile file("/dev/full");
    EXPECT_EQ(file.getTemporaryPath(), "");
    EXPECT_THROW(file.write("x"), brevix::Error);
}

TEST_F(OutputFileTest, NameOfTheLongestKindIsWritten) {
    const std::string name(255, 'n');
    brevix::OutputFile file(path(name));
    file.write("x");
    file.commit();
    EXPECT_EQ(contentOf(path(name)), "x");
}

}  // namespace
