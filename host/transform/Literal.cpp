// A constant.
#include "host/transform/Literal.h"

#include "host/number_text.h"
#include "host/transform/cast.h"

namespace KwBrevix_930 {

void Literal::Give(DerivedValue& result) const {
    if (isMissing)
        result.SetMissing();
    else if (type.IsText())
        result.BorrowText(text);
    else
        result.SetNumber(number);
}

std::optional<Literal> Literal::As(FieldType other) const {
    if (!isMissing && (!isTyped || type.IsText() || other.IsText()))
        return MakeLiteral(other, text);
    Literal same = *this;
    same.type = other;
    DerivedValue value;
    Give(value);
    CastToType(other, type, value);
    if (value.IsInvalid())
        return std::nullopt;
    same.number = value.IsNumber() ? value.GetNumber() : number;
    return same;
}

std::optional<Literal> MakeLiteral(FieldType type, const std::string& text) {
    DerivedValue value;
    value.BorrowText(text);
    CastToType(type, {FieldType::kString}, value);
    if (value.IsInvalid())
        return std::nullopt;
    Literal literal;
    literal.type = type;
    literal.number = value.GetNumber();
    literal.text = value.IsText() ? std::string(value.GetText()) : text;
    return literal;
}

Literal MakeUntypedLiteral(const std::string& text) {
    const auto number = MakeLiteral({FieldType::kDouble}, text);
    Literal literal = number ? *number : Literal{{FieldType::kString}, false, false, 0.0, text};
    literal.isTyped = false;
    return literal;
}

}  // namespace KwBrevix_930
