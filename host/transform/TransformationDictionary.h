// The derived fields of a model, and their values for one case.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/Export.h"
#include "host/transform/TransformVar.h"

namespace KwBrevix_930 {

class ScoreCaseRecord;
class ScoreDictionary;

/// Built at load, read-only while scoring: any number of threads may ask for derived values at once.
class BREVIX_HOST_API TransformationDictionary {
public:
    TransformationDictionary();
    TransformationDictionary(const TransformationDictionary&) = delete;
    TransformationDictionary& operator=(const TransformationDictionary&) = delete;
    virtual ~TransformationDictionary();

    /// Adds a derived field behind the others; it may read raw fields and the derived fields before it.
    /// Fails: false for a name that is there already; the field is deleted then.
    bool AddVar(std::unique_ptr<TransformVar> variable);

    const std::vector<std::unique_ptr<TransformVar>>& GetVars() const { return fVars; }

    /// Returns: the derived field of that name, null where there is none.
    TransformVar* FindVar(const std::string& name) const;

    /// Fixes the layout of derived records: each field's index, behind all indices of raw variables.
    void SetUpDerivedCaseRecord();

    /// Computes the derived fields of one case. record, dictionary: the raw values and their variables, by index where
    /// the record says so. A field that reads an invalid value becomes invalid, one that reads a missing value missing,
    /// unless its expression says what stands in.
    /// Returns: a record that belongs to the calling thread and holds its values until the thread's next call, of this
    /// dictionary or another.
    /// Note: without a dictionary, or without a record, every raw value is missing.
    const ScoreCaseRecord* GetValuesForDerivedVars(const ScoreCaseRecord* record,
                                                   const ScoreDictionary* dictionary) const;

    /// Whether the replacement of a missing raw value is used in derivation; true at the start.
    void SetUsesReplacements(bool usesReplacements) { fUsesReplacements = usesReplacements; }

private:
    std::vector<std::unique_ptr<TransformVar>> fVars;
    std::unordered_map<std::string, std::size_t> fPlaceByName;
    bool fUsesReplacements = true;
    // Tells this dictionary's records from those of any other in the threads' caches, also after this one has ended or
    // has gained a field.
    std::uint64_t fSerialNumber;
};

}  // namespace KwBrevix_930
