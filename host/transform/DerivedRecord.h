// The record of derived values that a thread fills for one case after another.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "host/NumericValue.h"
#include "host/ScoreCaseRecord.h"
#include "host/StringValue.h"
#include "host/transform/DerivedValue.h"

namespace KwBrevix_930 {

class ScoreDictVar;
class ScoreDictionary;
class TransformationDictionary;

/// Behind every index that a raw record can hold.
inline constexpr int kFirstDerivedIndex = 1 << 30;

/// Reads a raw value under its variable's own rules. value: may be null; usesReplacements: whether the replacement of a
/// missing value counts as a value. raw: a text is borrowed where it can be.
BREVIX_HOST_API void ReadRaw(const ScoreDictVar& variable, const ScoreValue* value, bool usesReplacements,
                             DerivedValue& raw);

/// Belongs to one thread. The raw variables are found by their places in the dictionary; that these still hold the
/// right names is checked for each case, so that any dictionary may be handed over.
class DerivedRecord : public ScoreCaseRecord {
public:
    explicit DerivedRecord(const TransformationDictionary& dictionary);

    /// Fetches the raw values and computes the derived ones. Either pointer may be null.
    void Fill(const ScoreCaseRecord* record, const ScoreDictionary* dictionary);

    bool IsAccessedByIndex() const override { return true; }
    const ScoreValue* GetValue(int index) const override;
    const ScoreValue* GetValue(const std::string& name) const override { return GetValue(GetIndex(name)); }
    int GetIndex(const std::string& name) const override;

private:
    struct Cell {
        NumericValue number{0.0};
        StringValue text{""};
        const ScoreValue* current = nullptr;
    };

    // A value that no variable allows, whatever its data type and treatment: it is neither numeric nor a text.
    class InvalidValue : public StringValue {
    public:
        InvalidValue() : StringValue("") {}
        ValueType GetType() const override { return kDateTime; }
    };

    const ScoreDictVar* FindRaw(std::size_t place, const ScoreDictionary& dictionary);
    void FindPlaces(const ScoreDictionary& dictionary);
    void Publish(const DerivedValue& derived, Cell& cell) const;

    const TransformationDictionary& fDictionary;
    std::vector<DerivedValue> fSlots;
    std::vector<Cell> fCells;
    // For each raw field its place among the variables of the dictionary that was seen last.
    std::vector<std::size_t> fPlaces;
    const ScoreDictionary* fSeen = nullptr;
    std::size_t fSeenCount = 0;
    InvalidValue fInvalid;
};

}  // namespace KwBrevix_930
