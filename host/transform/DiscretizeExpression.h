// Ranges of a number made into values.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/DictVar.h"
#include "host/transform/field_expressions.h"

namespace KwBrevix_930 {

/// The value of the first bin whose range holds the field's number; outside all bins defaultValue, for a missing field
/// mapMissingTo, each missing where it is not given.
class DiscretizeExpression : public FieldExpression {
public:
    struct Bin {
        DictVar::Interval range;
        Literal value;
    };

    /// The literals are of the given type.
    DiscretizeExpression(const Field& field, std::string name, FieldType type, std::vector<Bin> bins,
                         std::optional<Literal> defaultValue, std::optional<Literal> mapMissingTo);
    void Evaluate(std::span<const DerivedValue> slots, DerivedValue& result) const override;

private:
    std::vector<Bin> fBins;
    std::optional<Literal> fDefaultValue;
    std::optional<Literal> fMapMissingTo;
};

}  // namespace KwBrevix_930
