// The plug-in, loaded at run time.
#pragma once

#include <memory>
#include <string>

#include "host/ScoreTranslator.h"
#include "runtime/Export.h"

namespace brevix {

/// Holds the shared library open; everything that came from it must end before it does.
class BREVIX_RUNTIME_API PluginLibrary {
public:
    /// Opens the library at a path.
    /// Fails: Error where it cannot be loaded or has no entry point.
    explicit PluginLibrary(const std::string& path);
    PluginLibrary(const PluginLibrary&) = delete;
    PluginLibrary& operator=(const PluginLibrary&) = delete;
    ~PluginLibrary();

    /// Returns: a new translator, made by the plug-in.
    std::unique_ptr<KwBrevix_930::ScoreTranslator> makeTranslator() const;

    /// Returns: where the plug-in is: beside the running program, in the lib folder beside the program's, beside
    /// this library, or in the install directory.
    /// Fails: Error that lists where it was looked for.
    static std::string findDefault();

private:
    /// The plug-in's one plain entry point, GiveMyTranslator; the caller owns what it returns.
    using EntryPoint = KwBrevix_930::ScoreTranslator* (*)();

    std::string fPath;
    void* fHandle;
    EntryPoint fEntryPoint;
};

}  // namespace brevix
