// What is known of a variable beyond its declaration: its missing-value replacements.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "host/ScoreValue.h"

namespace KwBrevix_930 {

class BREVIX_HOST_API ScoreVarStats {
public:
    ScoreVarStats();
    ScoreVarStats(const ScoreVarStats& other);
    ScoreVarStats& operator=(const ScoreVarStats& other);
    virtual ~ScoreVarStats();

    /// Takes the value over; null removes the replacement.
    void SetMissingReplacement(std::unique_ptr<ScoreValue> value);

    /// Returns: the value that stands in for a missing one, owned here; null where there is none.
    const ScoreValue* GetMissingReplacement() const { return fMissingReplacement.get(); }

    /// Registers what a derived field that encodes the given value of this variable becomes when the variable is
    /// missing.
    void SetEncodedMissingReplacement(const std::string& encodedValue, const std::string& replacement);

    /// Returns: the text registered for an encoded value; null where there is none.
    const std::string* GetEncodedMissingReplacement(const std::string& encodedValue) const;

private:
    std::unique_ptr<ScoreValue> fMissingReplacement;
    std::map<std::string, std::string> fEncodedReplacements;
};

}  // namespace KwBrevix_930
