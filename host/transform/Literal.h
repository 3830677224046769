// A constant: of a Constant element, or of an attribute that names a value.
#pragma once

#include <optional>
#include <string>

#include "host/transform/Expression.h"

namespace KwBrevix_930 {

struct BREVIX_HOST_API Literal {
    FieldType type;
    /// Whether the document names the type. Where it does not, the text tells it, and the surroundings may tell better.
    bool isTyped = true;
    bool isMissing = false;
    double number = 0.0;
    /// As written.
    std::string text;

    /// Makes a value this one; a text is borrowed from here.
    void Give(DerivedValue& result) const;

    /// Returns: this constant as one of another type; nothing where it is none.
    std::optional<Literal> As(FieldType other) const;
};

/// Makes a value the constant, or missing where there is none.
inline void GiveOrMissing(const std::optional<Literal>& literal, DerivedValue& result) {
    if (literal)
        literal->Give(result);
    else
        result.SetMissing();
}

/// Returns: a text as a constant of a type; nothing where it is none.
BREVIX_HOST_API std::optional<Literal> MakeLiteral(FieldType type, const std::string& text);

/// Returns: a text as a constant without a type of its own: a number where it is one, otherwise a string.
BREVIX_HOST_API Literal MakeUntypedLiteral(const std::string& text);

class ConstantExpression : public Expression {
public:
    explicit ConstantExpression(Literal literal) : Expression(literal.type), fLiteral(std::move(literal)) {}
    void Evaluate(std::span<const DerivedValue>, DerivedValue& result) const override { fLiteral.Give(result); }
    const Literal* GetLiteral() const override { return &fLiteral; }

private:
    Literal fLiteral;
};

}  // namespace KwBrevix_930
