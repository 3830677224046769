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

/// Built at load, read-only while scoring: any number of threads may ask for derived values at once. Raw and derived
/// fields that expressions read have slots, numbered as they come; a raw field is fetched once for each case.
class BREVIX_HOST_API TransformationDictionary {
public:
    TransformationDictionary();
    TransformationDictionary(const TransformationDictionary&) = delete;
    TransformationDictionary& operator=(const TransformationDictionary&) = delete;
    virtual ~TransformationDictionary();

    /// Adds a derived field behind the others and gives it a slot. It is computed behind those added before it, until
    /// Arrange finds a better order.
    /// Fails: false for a name that is there already; the field is deleted then.
    bool AddVar(std::unique_ptr<TransformVar> variable);

    /// Returns: the slot of the raw field of that name, a new one when it is asked for first.
    std::size_t AddRawField(const std::string& name);

    /// Puts the computation in an order in which every field comes behind those that it reads.
    /// Returns: nothing where there is such an order; otherwise the names of derived fields of which each reads the
    /// next one, the first and the last being the same.
    std::vector<std::string> Arrange();

    const std::vector<std::unique_ptr<TransformVar>>& GetVars() const { return fVars; }

    /// Returns: the derived field of that name, null where there is none.
    TransformVar* FindVar(const std::string& name) const;

    /// Returns: the names of all raw fields that derived fields read in the end, in any order, each once. names: of
    /// derived fields; others are passed over.
    std::vector<std::string> FindRawFields(const std::vector<std::string>& names) const;

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
    friend class DerivedRecord;

    struct RawField {
        std::string name;
        std::size_t slot;
    };
    // What stands in a slot: a place in fVars or in fRawFields.
    struct Slot {
        bool isRaw;
        std::size_t place;
    };

    std::vector<std::size_t> ReadSlots(std::size_t place) const;

    std::vector<std::unique_ptr<TransformVar>> fVars;
    std::unordered_map<std::string, std::size_t> fPlaceByName;
    std::vector<RawField> fRawFields;
    std::unordered_map<std::string, std::size_t> fRawPlaceByName;
    std::vector<Slot> fSlots;
    // Places in fVars.
    std::vector<std::size_t> fOrder;
    bool fUsesReplacements = true;
    // Tells this dictionary's records from those of any other in the threads' caches, also after this one has ended or
    // has gained a field.
    std::uint64_t fSerialNumber;
};

}  // namespace KwBrevix_930
