// The base of function calls: what an Apply element adds to a function.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/transform/Expression.h"
#include "host/transform/Literal.h"

namespace KwBrevix_930 {

/// A call as it is read, before the function has seen its arguments.
struct FunctionCall {
    std::string name;
    std::vector<std::unique_ptr<Expression>> arguments;
    /// Whether a result that is not finite stands as it is, where the arguments are outside of what the function is
    /// defined for.
    bool keepsNonFinite = false;
};

/// Computed from its arguments; a function says what missing and invalid arguments lead to.
class FunctionExpression : public Expression {
public:
    /// What the attributes of Apply ask for.
    struct Treatments {
        /// The result where an argument is missing.
        std::optional<Literal> mapMissingTo;
        /// The result where it would be missing.
        std::optional<Literal> defaultValue;
        bool takesInvalidForMissing = false;
    };

    FunctionExpression(FieldType type, FunctionCall&& call)
        : Expression(type), fArguments(std::move(call.arguments)), fKeepsNonFinite(call.keepsNonFinite) {}

    void SetTreatments(Treatments treatments) { fTreatments = std::move(treatments); }

    void Evaluate(std::span<const DerivedValue> slots, DerivedValue& result) const final;
    void AppendSlots(std::vector<std::size_t>& slots) const override;
    const std::string& GetFieldName() const override;

protected:
    /// Computes the result.
    /// Returns: whether a missing argument was met and counts.
    virtual bool Compute(std::span<const DerivedValue> slots, DerivedValue& result) const = 0;

    std::size_t GetArgumentCount() const { return fArguments.size(); }
    void EvaluateArgument(std::size_t i, std::span<const DerivedValue> slots, DerivedValue& value) const {
        fArguments[i]->Evaluate(slots, value);
    }
    const Expression& GetArgument(std::size_t i) const { return *fArguments[i]; }
    bool KeepsNonFinite() const { return fKeepsNonFinite; }

    /// Evaluates the arguments in order into values, for functions that need all of them. values: one for each.
    /// Returns: whether all are there; otherwise the result is set: invalid where one is, otherwise missing.
    bool EvaluateAll(std::span<const DerivedValue> slots, std::span<DerivedValue> values, DerivedValue& result) const;

private:
    std::vector<std::unique_ptr<Expression>> fArguments;
    bool fKeepsNonFinite;
    Treatments fTreatments;
};

/// A computed text that is longer, in bytes, is invalid: texts of texts would grow without end.
inline constexpr std::size_t kComputedTextLimit = 32767;

/// Makes a computed text the result.
void SetComputedText(DerivedValue& result, std::string text);

}  // namespace KwBrevix_930
