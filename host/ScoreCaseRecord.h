// The input values of one case.
#pragma once

#include <string>

#include "host/Export.h"

namespace KwBrevix_930 {

class ScoreDictVar;
class ScoreValue;

/// Abstract. Values are owned by the record or the host and stay as they are while the case is scored. In place of a
/// missing value that a replacement stands in for, a record holds the variable's replacement object itself.
/// Note:    slots count in the order of declaration; MSVC lays adjacent overloads out in reverse (docs/windows.md).
class BREVIX_HOST_API ScoreCaseRecord {
public:
    ScoreCaseRecord() {}
    ScoreCaseRecord(const ScoreCaseRecord&) = default;
    ScoreCaseRecord& operator=(const ScoreCaseRecord&) = default;
    virtual ~ScoreCaseRecord();

    /// Returns: whether values are to be asked by index rather than by name.
    virtual bool IsAccessedByIndex() const = 0;

    /// Returns: the value at an index; null where the record holds no such index or the value is missing.
    virtual const ScoreValue* GetValue(int index) const = 0;

    /// Returns: the value of the variable of that name; null where the record holds none.
    virtual const ScoreValue* GetValue(const std::string& name) const = 0;

    /// Returns: the index of the variable of that name, -1 where the record holds none.
    virtual int GetIndex(const std::string& name) const = 0;

    /// Returns: the value of a variable, asked for by index or by name as this record wants it.
    const ScoreValue* GetValueOf(const ScoreDictVar& variable) const;
};

}  // namespace KwBrevix_930
