// Runs the brevix command as a user does.
#include "tests/cli/Command.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace test_support {

namespace {

namespace fs = std::filesystem;

fs::path makeFolder() {
    std::string name = (fs::temp_directory_path() / "brevix-cli-XXXXXX").string();
    if (!::mkdtemp(name.data()))
        throw std::runtime_error("no temporary folder");
    return name;
}

std::string contentOf(const fs::path& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

// In the child: one standard stream becomes a file, or is closed.
void redirect(int stream, bool isClosed, const std::string& path, int flags) {
    if (isClosed) {
        ::close(stream);
        return;
    }
    const int file = ::open(path.c_str(), flags, 0600);
    if (file < 0 || ::dup2(file, stream) < 0)
        ::_exit(126);
    ::close(file);
}

}  // namespace

std::vector<std::string> CommandResult::errLines() const {
    std::vector<std::string> lines;
    std::istringstream stream(err);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

CommandResult runBrevix(const std::vector<std::string>& arguments, const Streams& streams) {
    const fs::path folder = makeFolder();
    std::ofstream(folder / "in", std::ios::binary) << streams.in;
    const std::string outPath = streams.outPath.empty() ? (folder / "out").string() : streams.outPath;
    std::vector<std::string> words = {BREVIX_PROGRAM};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (std::string& word : words)
        argv.push_back(word.data());
    argv.push_back(nullptr);

    const pid_t child = ::fork();
    if (child == 0) {
        redirect(STDIN_FILENO, streams.closesIn, (folder / "in").string(), O_RDONLY);
        redirect(STDOUT_FILENO, streams.closesOut, outPath, O_WRONLY | O_CREAT);
        redirect(STDERR_FILENO, streams.closesErr, (folder / "err").string(), O_WRONLY | O_CREAT);
        ::execv(argv[0], argv.data());
        ::_exit(127);
    }
    int status = 0;
    rusage usage{};
    ::wait4(child, &status, 0, &usage);
    CommandResult result;
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    result.out = streams.outPath.empty() ? contentOf(outPath) : "";
    result.err = contentOf(folder / "err");
    result.peakKilobytes = usage.ru_maxrss;
    fs::remove_all(folder);
    return result;
}

CommandResult runBrevix(const std::vector<std::string>& arguments, const std::string& in) {
    Streams streams;
    streams.in = in;
    return runBrevix(arguments, streams);
}

CommandTest::CommandTest() : fFolder(makeFolder()) {}

CommandTest::~CommandTest() {
    fs::remove_all(fFolder);
}

std::string CommandTest::write(const std::string& name, const std::string& content) const {
    std::ofstream(fFolder / name, std::ios::binary) << content;
    return path(name);
}

std::string CommandTest::writeLarge(const std::string& name, const std::string& start, const std::string& piece,
                                    int count) const {
    std::ofstream file(fFolder / name, std::ios::binary);
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
    for (const auto& entry : fs::directory_iterator(fFolder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace test_support
