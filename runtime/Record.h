// One case on its way to being scored.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

#include "runtime/Export.h"

namespace KwBrevix_930 {
class CaseRecord;
class DerivedValue;
class ScoreResult;
}  // namespace KwBrevix_930

namespace brevix {

/// One cell for each input of a model, in the order of ScoringModel::getInputs. All are missing at the start; a cell
/// keeps its value until it is set anew. A record belongs to one thread at a time, and ends before its model.
class BREVIX_RUNTIME_API Record {
public:
    Record(Record&&) noexcept;
    ~Record();

    /// text: UTF-8, as it would stand in a table; one that is no value of the field's type makes the case invalid. An
    /// empty text is a value, not a missing one.
    /// Fails: std::out_of_range for an input that the model does not have, as in all setters.
    void setText(std::size_t input, std::string_view text);
    void setText(std::string_view input, std::string_view text);
    void setNumber(std::size_t input, double number);
    void setNumber(std::string_view input, double number);
    void setMissing(std::size_t input);
    void setMissing(std::string_view input);
    /// Makes every cell missing.
    void clear();

private:
    friend class ScoringModel;
    // places: where the inputs stand in the host's record; owned by the model. slots: what the model's Output is
    // computed in.
    Record(std::unique_ptr<KwBrevix_930::CaseRecord> cells, const std::vector<int>& places,
           std::vector<KwBrevix_930::DerivedValue> slots);
    std::size_t find(std::string_view input) const;

    std::unique_ptr<KwBrevix_930::CaseRecord> fCells;
    const std::vector<int>* fPlaces;
    // Scratch of whoever scores the record: what the plug-in fills, and what the Output is computed in.
    mutable std::unique_ptr<KwBrevix_930::ScoreResult> fResult;
    mutable std::vector<KwBrevix_930::DerivedValue> fSlots;
};

}  // namespace brevix
