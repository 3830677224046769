// brevix verify: a model's results against expected ones.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace brevix {

class VerifyCommand {
public:
    /// Declares the options; app must outlive this object and parses into it.
    explicit VerifyCommand(CLI::App& app);
    VerifyCommand(const VerifyCommand&) = delete;
    VerifyCommand& operator=(const VerifyCommand&) = delete;

    /// Returns: the exit code, 0 or 3. Fails: UsageError, or Error for a file that cannot be used.
    int run();

private:
    std::string fModel;
    std::string fTable;
    std::string fInputFormat;
    std::string fPlugin;
    std::vector<std::string> fMissingTexts;
    // Those that make no sense without a table.
    std::vector<CLI::Option*> fTableOptions;
    double fPrecision = 1e-6;
    double fZeroThreshold = 1e-16;
    std::uint64_t fMostDifferences = 20;
    int fMissingPolicy = 0;
    bool fIsAsIs = false;
    bool fIsQuiet = false;
};

}  // namespace brevix
