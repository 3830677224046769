// A folder for the files of one test, gone when the test is.
#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>

namespace test_support {

class TemporaryFolder {
public:
    TemporaryFolder() {
        std::random_device source;
        for (int k = 0; k < 100; ++k) {
            fPath = std::filesystem::temp_directory_path() / ("brevix-test-" + std::to_string(source()));
            if (std::filesystem::create_directory(fPath))
                return;
        }
        throw std::runtime_error("no temporary folder");
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(fPath, ignored);
    }

    const std::filesystem::path& getPath() const { return fPath; }
    /// Returns: the path of a file in the folder.
    std::string pathOf(const std::string& name) const { return (fPath / name).string(); }

private:
    std::filesystem::path fPath;
};

/// Returns: the bytes of a file; empty where there is none.
inline std::string contentOf(const std::filesystem::path& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

/// Returns: the lines of a file that a program wrote as text, ended as C++ ends them whatever the system's files hold.
inline std::string linesOf(const std::filesystem::path& path) {
    std::ostringstream content;
    content << std::ifstream(path).rdbuf();
    return content.str();
}

}  // namespace test_support
