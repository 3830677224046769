// brevix score: a model and a table in, a table of results out.
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace brevix {

class ScoreCommand {
public:
    /// Declares the options; app must outlive this object and parses into it.
    explicit ScoreCommand(CLI::App& app);
    ScoreCommand(const ScoreCommand&) = delete;
    ScoreCommand& operator=(const ScoreCommand&) = delete;

    /// Returns: the exit code, 0 or 3. Fails: UsageError, or Error for a file that cannot be used.
    int run();

private:
    std::vector<std::string> listKeptColumns() const;
    void checkOutput() const;
    bool showsProgress() const;

    std::string fModel;
    std::string fInput = "-";
    std::string fOutput = "-";
    std::string fInputFormat;
    std::string fOutputFormat;
    std::string fPlugin;
    std::vector<std::string> fKeepLists;
    std::vector<std::string> fMissingTexts;
    int fMissingPolicy = 0;
    int fThreadCount = 0;
    bool fPredictsOnly = false;
    bool fIsAsIs = false;
    bool fFailsOnError = false;
    bool fWantsProgress = false;
    bool fWantsNoProgress = false;
    bool fIsQuiet = false;
};

}  // namespace brevix
