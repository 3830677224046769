// Ranges of a number made into values.
#include "host/transform/DiscretizeExpression.h"

#include <algorithm>
#include <utility>

namespace KwBrevix_930 {

DiscretizeExpression::DiscretizeExpression(const Field& field, std::string name, FieldType type, std::vector<Bin> bins,
                                           std::optional<Literal> defaultValue, std::optional<Literal> mapMissingTo)
    : FieldExpression(type, field.slot, std::move(name)),
      fBins(std::move(bins)),
      fDefaultValue(std::move(defaultValue)),
      fMapMissingTo(std::move(mapMissingTo)) {}

void DiscretizeExpression::Evaluate(std::span<const DerivedValue> slots, DerivedValue& result) const {
    const DerivedValue& value = Source(slots);
    if (value.IsMissing()) {
        GiveOrMissing(fMapMissingTo, result);
        return;
    }
    if (!value.IsNumber()) {
        result.SetInvalid();
        return;
    }
    const auto bin = std::find_if(fBins.begin(), fBins.end(),
                                  [&](const Bin& candidate) { return candidate.range.Contains(value.GetNumber()); });
    if (bin == fBins.end())
        GiveOrMissing(fDefaultValue, result);
    else
        bin->value.Give(result);
}

}  // namespace KwBrevix_930
