// The base of function calls.
#include "host/transform/FunctionExpression.h"

#include <utility>

namespace KwBrevix_930 {

void FunctionExpression::Evaluate(std::span<const DerivedValue> slots, DerivedValue& result) const {
    if (Compute(slots, result) && fTreatments.mapMissingTo) {
        fTreatments.mapMissingTo->Give(result);
        return;
    }
    if (result.IsInvalid() && fTreatments.takesInvalidForMissing)
        result.SetMissing();
    if (result.IsMissing() && fTreatments.defaultValue)
        fTreatments.defaultValue->Give(result);
}

void FunctionExpression::AppendSlots(std::vector<std::size_t>& slots) const {
    for (const auto& argument : fArguments)
        argument->AppendSlots(slots);
}

const std::string& FunctionExpression::GetFieldName() const {
    for (const auto& argument : fArguments) {
        if (!argument->GetFieldName().empty())
            return argument->GetFieldName();
    }
    return Expression::GetFieldName();
}

bool FunctionExpression::EvaluateAll(std::span<const DerivedValue> slots, std::span<DerivedValue> values,
                                     DerivedValue& result) const {
    bool isAnyMissing = false;
    bool isAnyInvalid = false;
    for (std::size_t i = 0; i < fArguments.size(); ++i) {
        fArguments[i]->Evaluate(slots, values[i]);
        isAnyMissing = isAnyMissing || values[i].IsMissing();
        isAnyInvalid = isAnyInvalid || values[i].IsInvalid();
    }
    if (isAnyInvalid)
        result.SetInvalid();
    else if (isAnyMissing)
        result.SetMissing();
    return !isAnyInvalid && !isAnyMissing;
}

void SetComputedText(DerivedValue& result, std::string text) {
    if (text.size() > kComputedTextLimit)
        result.SetInvalid();
    else
        result.OwnText(std::move(text));
}

}  // namespace KwBrevix_930
