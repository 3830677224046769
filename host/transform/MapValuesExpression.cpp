// A table that is looked up by one or more fields.
#include "host/transform/MapValuesExpression.h"

#include <utility>

#include "host/transform/cast.h"

namespace KwBrevix_930 {

namespace {

// The numbers that a step is found by. Column and step are told apart: a step belongs to one column only.
std::uint64_t StepKey(std::uint32_t step, std::uint32_t value) {
    return (static_cast<std::uint64_t>(step) << 32) | value;
}

}  // namespace

std::optional<std::uint32_t> MapValuesExpression::Column::Find(const DerivedValue& value) const {
    if (value.IsText()) {
        const auto found = texts.find(value.GetText());
        return found == texts.end() ? std::nullopt : std::optional(found->second);
    }
    const auto found = numbers.find(value.GetNumber());
    return found == numbers.end() ? std::nullopt : std::optional(found->second);
}

std::optional<std::uint32_t> MapValuesExpression::Column::Add(const std::string& cell) {
    if (field.type.IsText())
        return texts.emplace(cell, count).second ? count++ : texts.find(cell)->second;
    // A cell is not rounded to a value of the field.
    const FieldType type = field.type.code == FieldType::kInteger ? FieldType{} : field.type;
    const auto number = ParseNumberOfType(type, cell);
    if (!number)
        return std::nullopt;
    return numbers.emplace(*number, count).second ? count++ : numbers.find(*number)->second;
}

MapValuesExpression::MapValuesExpression(FieldType type, std::optional<Literal> defaultValue,
                                         std::optional<Literal> mapMissingTo)
    : Expression(type), fDefaultValue(std::move(defaultValue)), fMapMissingTo(std::move(mapMissingTo)) {}

void MapValuesExpression::AddColumn(const Field& field, std::string name) {
    fColumns.push_back({field, std::move(name), {}, {}, 0});
}

void MapValuesExpression::AddRow(const std::vector<std::string>& cells, Literal output) {
    std::uint32_t step = 0;
    for (std::size_t i = 0; i < fColumns.size(); ++i) {
        const auto value = fColumns[i].Add(cells[i]);
        if (!value)
            return;
        const bool isLast = i + 1 == fColumns.size();
        const auto next = isLast ? static_cast<std::uint32_t>(fOutputs.size()) : fStepCount;
        const auto [found, isNew] = fSteps.emplace(StepKey(step, *value), next);
        if (isNew && isLast)
            fOutputs.push_back(std::move(output));
        else if (isNew)
            ++fStepCount;
        step = found->second;
    }
}

void MapValuesExpression::Evaluate(std::span<const DerivedValue> slots, DerivedValue& result) const {
    bool isAnyMissing = false;
    bool isAnyInvalid = false;
    std::optional<std::uint32_t> step = 0;
    for (const Column& column : fColumns) {
        const DerivedValue& value = slots[column.field.slot];
        isAnyMissing = isAnyMissing || value.IsMissing();
        isAnyInvalid = isAnyInvalid || value.IsInvalid();
        const auto number = step && !isAnyMissing && !isAnyInvalid ? column.Find(value) : std::nullopt;
        const auto found = number ? fSteps.find(StepKey(*step, *number)) : fSteps.end();
        step = found == fSteps.end() ? std::nullopt : std::optional(found->second);
    }
    if (isAnyInvalid)
        result.SetInvalid();
    else if (isAnyMissing)
        GiveOrMissing(fMapMissingTo, result);
    else if (step)
        fOutputs[*step].Give(result);
    else
        GiveOrMissing(fDefaultValue, result);
}

void MapValuesExpression::AppendSlots(std::vector<std::size_t>& slots) const {
    for (const Column& column : fColumns)
        slots.push_back(column.field.slot);
}

const std::string& MapValuesExpression::GetFieldName() const {
    return fColumns.empty() ? Expression::GetFieldName() : fColumns.front().name;
}

}  // namespace KwBrevix_930
