// The plug-in, loaded at run time.
#include "runtime/PluginLibrary.h"

#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "runtime/Error.h"

namespace {

using brevix::PluginLibrary;
using testing::AllOf;
using testing::HasSubstr;

std::string faultOf(const std::string& path) {
    try {
        const PluginLibrary library(path);
    } catch (const brevix::Error& fault) {
        return fault.what();
    }
    return "no fault";
}

TEST(PluginLibrary, GivesANewTranslatorEachTime) {
    const PluginLibrary library(BREVIX_PLUGIN);
    const auto first = library.makeTranslator();
    const auto second = library.makeTranslator();
    EXPECT_NE(first, nullptr);
    EXPECT_NE(first, second);
}

TEST(PluginLibrary, FileThatIsNoLibraryIsRefusedByName) {
    EXPECT_THAT(faultOf("/nowhere/libbrevix_svm.so"),
                AllOf(HasSubstr("/nowhere/libbrevix_svm.so"), HasSubstr("cannot be loaded")));
    EXPECT_THAT(faultOf(BREVIX_SOURCE_DIR "/README.md"), HasSubstr("cannot be loaded"));
}

TEST(PluginLibrary, BareNameIsAFileOfTheWorkingFolder) {
    // The loader itself would find this one.
#ifdef _WIN32
    constexpr const char* kOfTheSystem = "ws2_32.dll";
#else
    constexpr const char* kOfTheSystem = "libm.so.6";
#endif
    EXPECT_THAT(faultOf(kOfTheSystem), HasSubstr("cannot be loaded"));
}

TEST(PluginLibrary, LibraryWithoutTheEntryPointIsRefused) {
    EXPECT_THAT(faultOf(BREVIX_HOST_LIBRARY), HasSubstr("has no entry point GiveMyTranslator"));
}

TEST(PluginLibrary, IsFoundInTheLibraryFolderOfThisProgram) {
    EXPECT_TRUE(std::filesystem::equivalent(PluginLibrary::findDefault(), BREVIX_PLUGIN))
        << PluginLibrary::findDefault();
}

}  // namespace
