// The call of a function that the document defines.
#pragma once

#include <memory>

#include "host/transform/FunctionExpression.h"
#include "host/transform/FunctionTable.h"

namespace KwBrevix_930 {

/// The arguments are evaluated first, each once, and are the slots of the function's body.
class UserFunctionExpression : public FunctionExpression {
public:
    UserFunctionExpression(std::shared_ptr<const FunctionBody> body, FunctionCall&& call);

protected:
    bool Compute(std::span<const DerivedValue> slots, DerivedValue& result) const override;

private:
    std::shared_ptr<const FunctionBody> fBody;
};

}  // namespace KwBrevix_930
