// Files that appear only when they are complete.
#include "runtime/OutputFile.h"

#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "runtime/Error.h"
#include "tests/support/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;

using test_support::contentOf;

class OutputFileTest : public testing::Test {
protected:
    std::string path(const std::string& name) const { return fFolder.pathOf(name); }
    std::size_t countFiles() const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(fFolder.getPath()), fs::directory_iterator()));
    }

    test_support::TemporaryFolder fFolder;
};

TEST_F(OutputFileTest, AppearsOnlyWhenCommitted) {
    {
        brevix::OutputFile file(path("out.csv"));
        file.write("a,b\n");
        EXPECT_FALSE(fs::exists(path("out.csv")));
        EXPECT_EQ(fs::path(file.getTemporaryPath()).parent_path(), fFolder.getPath());
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

TEST_F(OutputFileTest, PlacesThatCannotBeWrittenAreRefusedByName) {
    for (const std::string& place : {path("nowhere/out.csv"), fFolder.getPath().string(), path("new/")}) {
        try {
            const brevix::OutputFile file(place);
            FAIL() << place;
        } catch (const brevix::Error& fault) {
            EXPECT_EQ(std::string(fault.what()).find(place + ": it cannot be written: "), 0u) << fault.what();
        }
    }
    EXPECT_EQ(countFiles(), 0u);
}

TEST_F(OutputFileTest, NameOfTheLongestKindIsWritten) {
    const std::string name(255, 'n');
    brevix::OutputFile file(path(name));
    file.write("x");
    file.commit();
    EXPECT_EQ(contentOf(path(name)), "x");
}

}  // namespace
