// One variable of a dictionary: name, kind, categories, missing and validity rules, index in the case records.
#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "host/ScoreValue.h"
#include "host/ScoreVarStats.h"

namespace KwBrevix_930 {

/// One category: its name is the text of its declaration as written, its value what case values are compared with.
struct ScoreCategory {
    std::string name;
    std::unique_ptr<ScoreValue> value;
};

/// Abstract. Owned by its dictionary. Reading is safe from any number of threads; the operations that change a variable
/// belong to set-up, before scoring starts.
/// Note:    slots count in the order of declaration; MSVC lays adjacent overloads out in reverse (docs/windows.md).
class BREVIX_HOST_API ScoreDictVar {
public:
    /// The variable's own classification of its values.
    enum Kind { kUnknownKind = 0, kContinuous = 1, kOrdinal = 2, kCategorical = 3 };

    ScoreDictVar() {}
    ScoreDictVar(const ScoreDictVar&) = default;
    ScoreDictVar& operator=(const ScoreDictVar&) = default;
    virtual ~ScoreDictVar();

    virtual const std::string& GetName() const = 0;

    /// Returns: whether a value counts as missing here: none at all (null), the system-missing value, a declared
    /// missing value, or this variable's replacement object itself, which a record holds in place of a missing value.
    virtual bool IsMissing(const ScoreValue* value) const = 0;

    /// Returns: whether a value is one that this variable allows, its treatment of invalid values included.
    virtual bool IsValid(const ScoreValue* value) const = 0;

    /// Returns: whether the variable's values are texts.
    virtual bool IsString() const = 0;

    /// Returns: the missing-value settings, owned here; never null.
    virtual ScoreVarStats* GetVarStats() = 0;
    virtual const ScoreVarStats* GetVarStats() const = 0;

    /// Returns: the declared categories in order, owned here; null where none is declared.
    virtual const std::vector<ScoreCategory>* GetCategories() const = 0;

    /// Returns: the index of the category that a value equals, -1 where there is none.
    virtual int GetCategoryIndex(const ScoreValue* value) const = 0;

    /// Returns: the index of the category that a text names, -1 where there is none.
    virtual int GetCategoryIndex(const std::string& category) const = 0;

    /// Returns: where case records hold this variable; -1 until set.
    virtual int GetIndex() const = 0;
    virtual void SetIndex(int index) = 0;

    /// Writes the variable for a reader, without a line end.
    virtual void Display(std::ostream& stream) const = 0;

    virtual Kind GetKind() const = 0;

    /// As GetCategoryIndex, but a text that names no category yet is added to the look-up behind all others. The
    /// declared categories and the rules of validity stay as they are.
    /// Returns: the index; -1 for a text that cannot be a value of this variable.
    virtual int RegisterCategory(const std::string& category) = 0;
};

}  // namespace KwBrevix_930
