// What another expression computes, as a value of another type.
#include "host/transform/CastExpression.h"

#include <utility>

#include "host/transform/Literal.h"
#include "host/transform/cast.h"

namespace KwBrevix_930 {

CastExpression::CastExpression(FieldType type, std::unique_ptr<Expression> inner)
    : Expression(type), fInner(std::move(inner)) {}

void CastExpression::Evaluate(std::span<const DerivedValue> slots, DerivedValue& result) const {
    fInner->Evaluate(slots, result);
    CastToType(GetType(), fInner->GetType(), result);
}

void CastExpression::AppendSlots(std::vector<std::size_t>& slots) const {
    fInner->AppendSlots(slots);
}

const std::string& CastExpression::GetFieldName() const {
    return fInner->GetFieldName();
}

const std::vector<std::string>& CastExpression::GetAllEncodedValues() const {
    return fInner->GetAllEncodedValues();
}

std::unique_ptr<Expression> CastTo(FieldType type, std::unique_ptr<Expression> expression) {
    if (const Literal* literal = expression->GetLiteral()) {
        auto other = literal->As(type);
        return other ? std::make_unique<ConstantExpression>(std::move(*other)) : nullptr;
    }
    if (!NeedsCast(type, expression->GetType()))
        return expression;
    return std::make_unique<CastExpression>(type, std::move(expression));
}

}  // namespace KwBrevix_930
