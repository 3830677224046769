// Built-in functions: logic of three values, conditions, and what kind of value there is. Missing stands for unknown:
// and is false where one argument is, or is true where one is, whatever the others are.
#include "host/transform/built_in_functions.h"

namespace KwBrevix_930 {

namespace {

// and, or: decided by the first argument that has the deciding value.
class JunctionExpression : public FunctionExpression {
public:
    JunctionExpression(bool deciding, FunctionCall&& call)
        : FunctionExpression(kTruth, std::move(call)), fDeciding(deciding ? 1.0 : 0.0) {}

protected:
    bool Compute(std::span<const DerivedValue> slots, DerivedValue& result) const override {
        bool isAnyMissing = false;
        bool isAnyInvalid = false;
        for (std::size_t i = 0; i < GetArgumentCount(); ++i) {
            EvaluateArgument(i, slots, result);
            if (result.IsNumber() && result.GetNumber() == fDeciding)
                return isAnyMissing;
            isAnyMissing = isAnyMissing || result.IsMissing();
            isAnyInvalid = isAnyInvalid || result.IsInvalid();
        }
        if (isAnyInvalid)
            result.SetInvalid();
        else if (isAnyMissing)
            result.SetMissing();
        else
            result.SetNumber(1.0 - fDeciding);
        return isAnyMissing && !isAnyInvalid;
    }

private:
    double fDeciding;
};

class NotExpression : public FunctionExpression {
public:
    explicit NotExpression(FunctionCall&& call) : FunctionExpression(kTruth, std::move(call)) {}

protected:
    bool Compute(std::span<const DerivedValue> slots, DerivedValue& result) const override {
        EvaluateArgument(0, slots, result);
        if (result.IsNumber())
            result.SetBoolean(result.GetNumber() == 0.0);
        return result.IsMissing();
    }
};

// The branch that is not taken is not evaluated; an absent one is missing.
class IfExpression : public FunctionExpression {
public:
    IfExpression(FieldType type, FunctionCall&& call) : FunctionExpression(type, std::move(call)) {}

protected:
    bool Compute(std::span<const DerivedValue> slots, DerivedValue& result) const override {
        EvaluateArgument(0, slots, result);
        if (!result.IsNumber())
            return result.IsMissing();
        const std::size_t branch = result.GetNumber() != 0.0 ? 1 : 2;
        if (branch >= GetArgumentCount()) {
            result.SetMissing();
            return false;
        }
        EvaluateArgument(branch, slots, result);
        return result.IsMissing();
    }
};

// isMissing and the like: about the kind of the value alone.
class StateExpression : public FunctionExpression {
public:
    using Question = bool (*)(const DerivedValue& value);

    StateExpression(Question question, FunctionCall&& call)
        : FunctionExpression(kTruth, std::move(call)), fQuestion(question) {}

protected:
    bool Compute(std::span<const DerivedValue> slots, DerivedValue& result) const override {
        EvaluateArgument(0, slots, result);
        result.SetBoolean(fQuestion(result));
        return false;
    }

private:
    Question fQuestion;
};

bool IsMissing(const DerivedValue& value) {
    return value.IsMissing();
}

bool IsNotMissing(const DerivedValue& value) {
    return !value.IsMissing();
}

bool IsValid(const DerivedValue& value) {
    return !value.IsMissing() && !value.IsInvalid();
}

bool IsNotValid(const DerivedValue& value) {
    return !IsValid(value);
}

template <bool deciding>
std::unique_ptr<FunctionExpression> MakeJunction(FunctionCall&& call) {
    for (std::size_t i = 0; i < call.arguments.size(); ++i)
        RequireBoolean(call, i);
    return std::make_unique<JunctionExpression>(deciding, std::move(call));
}

std::unique_ptr<FunctionExpression> MakeNot(FunctionCall&& call) {
    RequireBoolean(call, 0);
    return std::make_unique<NotExpression>(std::move(call));
}

std::unique_ptr<FunctionExpression> MakeIf(FunctionCall&& call) {
    RequireBoolean(call, 0);
    const FieldType type = TakeAsCommonType(call, 1, false);
    return std::make_unique<IfExpression>(type, std::move(call));
}

template <StateExpression::Question question>
std::unique_ptr<FunctionExpression> MakeState(FunctionCall&& call) {
    return std::make_unique<StateExpression>(question, std::move(call));
}

constexpr BuiltInFunction kLogicFunctions[] = {
    {"and", 2, kAnyNumber, &MakeJunction<false>},
    {"or", 2, kAnyNumber, &MakeJunction<true>},
    {"not", 1, 1, &MakeNot},
    {"if", 2, 3, &MakeIf},
    {"isMissing", 1, 1, &MakeState<&IsMissing>},
    {"isNotMissing", 1, 1, &MakeState<&IsNotMissing>},
    {"isValid", 1, 1, &MakeState<&IsValid>},
    {"isNotValid", 1, 1, &MakeState<&IsNotValid>},
};

}  // namespace

std::span<const BuiltInFunction> LogicFunctions() {
    return kLogicFunctions;
}

}  // namespace KwBrevix_930
