// What another expression computes, as a value of another type.
#pragma once

#include <memory>

#include "host/transform/Expression.h"

namespace KwBrevix_930 {

class CastExpression : public Expression {
public:
    CastExpression(FieldType type, std::unique_ptr<Expression> inner);
    void Evaluate(std::span<const DerivedValue> slots, DerivedValue& result) const override;
    void AppendSlots(std::vector<std::size_t>& slots) const override;
    const std::string& GetFieldName() const override;
    const std::vector<std::string>& GetAllEncodedValues() const override;

private:
    std::unique_ptr<Expression> fInner;
};

/// Returns: the expression itself where its values need no cast, a constant of the other type where it is one, else an
/// expression around it; null for a constant that is none of that type.
std::unique_ptr<Expression> CastTo(FieldType type, std::unique_ptr<Expression> expression);

}  // namespace KwBrevix_930
