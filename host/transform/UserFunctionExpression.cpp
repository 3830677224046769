// The call of a function that the document defines.
#include "host/transform/UserFunctionExpression.h"

#include <utility>
#include <vector>

namespace KwBrevix_930 {

UserFunctionExpression::UserFunctionExpression(std::shared_ptr<const FunctionBody> body, FunctionCall&& call)
    : FunctionExpression(body->expression->GetType(), std::move(call)), fBody(std::move(body)) {}

bool UserFunctionExpression::Compute(std::span<const DerivedValue> slots, DerivedValue& result) const {
    constexpr std::size_t kFew = 4;
    DerivedValue few[kFew];
    std::vector<DerivedValue> many(GetArgumentCount() > kFew ? GetArgumentCount() : 0);
    const std::span<DerivedValue> arguments = many.empty() ? std::span(few).first(GetArgumentCount()) : std::span(many);
    bool isAnyMissing = false;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        EvaluateArgument(i, slots, arguments[i]);
        isAnyMissing = isAnyMissing || arguments[i].IsMissing();
    }
    fBody->expression->Evaluate(arguments, result);
    // The text may be an argument's.
    result.KeepText();
    return isAnyMissing;
}

}  // namespace KwBrevix_930
