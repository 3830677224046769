// An ordered set of variables, searchable by name.
#pragma once

#include <string>
#include <vector>

#include "host/Export.h"

namespace KwBrevix_930 {

class ScoreDictVar;

/// Abstract. Variables are owned by the dictionary.
class BREVIX_HOST_API ScoreDictionary {
public:
    ScoreDictionary() {}
    ScoreDictionary(const ScoreDictionary&) = default;
    ScoreDictionary& operator=(const ScoreDictionary&) = default;
    virtual ~ScoreDictionary();

    virtual int GetVarCount() const = 0;

    /// Returns: the variables in order.
    virtual const std::vector<ScoreDictVar*>& GetVars() const = 0;

    /// Returns: the variable of that name, null where there is none.
    virtual ScoreDictVar* FindVar(const std::string& name) const = 0;
};

}  // namespace KwBrevix_930
