// Runs a program with its standard streams on files, where the system follows POSIX.
#include "tests/support/process.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

namespace test_support {

namespace {

// In the child: one standard stream becomes a file, or is closed.
void redirect(int stream, const std::string& path, int flags) {
    if (path.empty()) {
        ::close(stream);
        return;
    }
    const int file = ::open(path.c_str(), flags, 0600);
    if (file < 0 || ::dup2(file, stream) < 0)
        ::_exit(126);
    ::close(file);
}

}  // namespace

const char* const kNullDevice = "/dev/null";

ProcessEnd runProcess(const std::vector<std::string>& words, const StreamFiles& files) {
    std::vector<std::string> kept = words;
    std::vector<char*> argv;
    for (std::string& word : kept)
        argv.push_back(word.data());
    argv.push_back(nullptr);
    const pid_t child = ::fork();
    if (child == 0) {
        redirect(STDIN_FILENO, files.in, O_RDONLY);
        redirect(STDOUT_FILENO, files.out, O_WRONLY | O_CREAT);
        redirect(STDERR_FILENO, files.err, O_WRONLY | O_CREAT);
        ::execv(argv[0], argv.data());
        ::_exit(127);
    }
    int status = 0;
    rusage usage{};
    ::wait4(child, &status, 0, &usage);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), usage.ru_maxrss};
}

void setVariable(const char* name, const char* value) {
    if (value)
        ::setenv(name, value, 1);
    else
        ::unsetenv(name);
}

}  // namespace test_support
