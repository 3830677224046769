// Runs the brevix command as a user does.
#include "tests/cli/Command.h"

#include <algorithm>
#include <fstream>
#include <sstream>

#include "tests/support/process.h"

namespace test_support {

std::vector<std::string> linesOfText(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

std::vector<std::string> CommandResult::errLines() const {
    return linesOfText(err);
}

CommandResult runBrevix(const std::vector<std::string>& arguments, const Streams& streams) {
    const TemporaryFolder folder;
    std::ofstream(folder.pathOf("in"), std::ios::binary) << streams.in;
    const std::string outPath = streams.outPath.empty() ? folder.pathOf("out") : streams.outPath;
    std::vector<std::string> words = {BREVIX_PROGRAM};
    words.insert(words.end(), arguments.begin(), arguments.end());
    const ProcessEnd end =
        runProcess(words, {streams.closesIn ? "" : folder.pathOf("in"), streams.closesOut ? "" : outPath,
                           streams.closesErr ? "" : folder.pathOf("err")});
    CommandResult result;
    result.exitCode = end.exitCode;
    result.out = streams.outPath.empty() ? contentOf(outPath) : "";
    result.err = contentOf(folder.pathOf("err"));
    result.peakKilobytes = end.peakKilobytes;
    return result;
}

CommandResult runBrevix(const std::vector<std::string>& arguments, const std::string& in) {
    Streams streams;
    streams.in = in;
    return runBrevix(arguments, streams);
}

void expectPeakBelow(const CommandResult& result, long kilobytes) {
    if (result.peakKilobytes != 0) {
        EXPECT_LT(result.peakKilobytes, kilobytes);
    }
}

std::string CommandTest::write(const std::string& name, const std::string& content) const {
    std::ofstream(path(name), std::ios::binary) << content;
    return path(name);
}

std::string CommandTest::writeLarge(const std::string& name, const std::string& start, const std::string& piece,
                                    int count) const {
    std::ofstream file(path(name), std::ios::binary);
    file << start;
    for (int i = 0; i < count; ++i)
        file << piece;
    return path(name);
}

std::string CommandTest::read(const std::string& path) {
    return contentOf(path);
}

std::vector<std::string> CommandTest::listFiles() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(fFolder.getPath()))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace test_support
