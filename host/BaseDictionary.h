// The host's dictionary: owns its variables.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/ScoreDictVar.h"
#include "host/ScoreDictionary.h"

namespace KwBrevix_930 {

class BREVIX_HOST_API BaseDictionary : public ScoreDictionary {
public:
    BaseDictionary();
    BaseDictionary(const BaseDictionary&) = delete;
    BaseDictionary& operator=(const BaseDictionary&) = delete;
    ~BaseDictionary() override;

    /// Returns: a new dictionary with a copy of each variable of another.
    static std::unique_ptr<BaseDictionary> CopyOf(const ScoreDictionary& other);

    /// Adds a variable at the end.
    /// Fails: false for a name that is there already; the variable is deleted then.
    bool AddVar(std::unique_ptr<ScoreDictVar> variable);

    /// Adds a copy of a variable under a name of its own.
    /// Fails: false for a name that is there already.
    bool AddVar(const std::string& name, const ScoreDictVar& variable);

    int GetVarCount() const override;
    const std::vector<ScoreDictVar*>& GetVars() const override { return fVars; }
    ScoreDictVar* FindVar(const std::string& name) const override;

private:
    std::vector<ScoreDictVar*> fVars;
    std::vector<std::unique_ptr<ScoreDictVar>> fOwned;
    std::unordered_map<std::string, ScoreDictVar*> fVarByName;
};

}  // namespace KwBrevix_930
