// brevix inspect: what a model is, and what has no effect in it.
#pragma once

#include <string>

namespace CLI {
class App;
}

namespace brevix {

class InspectCommand {
public:
    /// Declares the options; app must outlive this object and parses into it.
    explicit InspectCommand(CLI::App& app);
    InspectCommand(const InspectCommand&) = delete;
    InspectCommand& operator=(const InspectCommand&) = delete;

    /// Returns: the exit code, 0. Fails: Error for a document or a standard output that cannot be used.
    int run();

private:
    std::string fModel;
    std::string fPlugin;
    bool fIsAsIs = false;
    bool fWantsJson = false;
};

}  // namespace brevix
