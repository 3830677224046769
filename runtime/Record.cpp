// One case on its way to being scored.
#include "runtime/Record.h"

#include <algorithm>
#include <stdexcept>
#include <string>

#include "host/CaseRecord.h"
#include "host/ScoreResult.h"
#include "host/transform/DerivedValue.h"

namespace brevix {

Record::Record(std::unique_ptr<KwBrevix_930::CaseRecord> cells, const std::vector<int>& places,
               std::vector<KwBrevix_930::DerivedValue> slots)
    : fCells(std::move(cells)), fPlaces(&places), fSlots(std::move(slots)) {}

Record::Record(Record&&) noexcept = default;
Record::~Record() = default;

std::size_t Record::find(std::string_view input) const {
    const int place = fCells->GetIndex(std::string(input));
    const auto found = std::find(fPlaces->begin(), fPlaces->end(), place);
    if (place < 0 || found == fPlaces->end())
        throw std::out_of_range("the model has no input '" + std::string(input) + "'");
    return static_cast<std::size_t>(found - fPlaces->begin());
}

void Record::setText(std::size_t input, std::string_view text) {
    fCells->SetText(fPlaces->at(input), text);
}

void Record::setText(std::string_view input, std::string_view text) {
    setText(find(input), text);
}

void Record::setNumber(std::size_t input, double number) {
    fCells->SetNumber(fPlaces->at(input), number);
}

void Record::setNumber(std::string_view input, double number) {
    setNumber(find(input), number);
}

void Record::setMissing(std::size_t input) {
    fCells->SetMissing(fPlaces->at(input));
}

void Record::setMissing(std::string_view input) {
    setMissing(find(input));
}

void Record::clear() {
    fCells->Clear();
}

}  // namespace brevix
