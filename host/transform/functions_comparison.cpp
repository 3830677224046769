// Built-in functions: comparisons of numbers, texts, dates and times. A comparison with a missing value is missing.
// Texts are ordered by their bytes, which is the order of their characters.
#include <functional>

#include "host/transform/built_in_functions.h"

namespace KwBrevix_930 {

namespace {

// Both are numbers or both are texts. Returns less than, equal to or more than 0.
int Compare(const DerivedValue& one, const DerivedValue& other) {
    if (one.IsText())
        return one.GetText().compare(other.GetText());
    return one.GetNumber() < other.GetNumber() ? -1 : static_cast<int>(one.GetNumber() > other.GetNumber());
}

using Relation = bool (*)(int order);

class RelationExpression : public FunctionExpression {
public:
    RelationExpression(Relation relation, FunctionCall&& call)
        : FunctionExpression(kTruth, std::move(call)), fRelation(relation) {}

protected:
    bool Compute(std::span<const DerivedValue> slots, DerivedValue& result) const override {
        DerivedValue values[2];
        if (!EvaluateAll(slots, values, result))
            return result.IsMissing();
        result.SetBoolean(fRelation(Compare(values[0], values[1])));
        return false;
    }

private:
    Relation fRelation;
};

// isIn, isNotIn: whether the first argument equals one of the others.
class MembershipExpression : public FunctionExpression {
public:
    MembershipExpression(bool ifIn, FunctionCall&& call) : FunctionExpression(kTruth, std::move(call)), fIfIn(ifIn) {}

protected:
    bool Compute(std::span<const DerivedValue> slots, DerivedValue& result) const override {
        DerivedValue value;
        EvaluateArgument(0, slots, value);
        bool isAnyMissing = value.IsMissing();
        bool isAnyInvalid = value.IsInvalid();
        bool isIn = false;
        for (std::size_t i = 1; i < GetArgumentCount(); ++i) {
            EvaluateArgument(i, slots, result);
            isAnyMissing = isAnyMissing || result.IsMissing();
            isAnyInvalid = isAnyInvalid || result.IsInvalid();
            isIn = isIn || (!isAnyMissing && !isAnyInvalid && Compare(value, result) == 0);
        }
        if (isAnyInvalid)
            result.SetInvalid();
        else if (isAnyMissing)
            result.SetMissing();
        else
            result.SetBoolean(isIn == fIfIn);
        return isAnyMissing && !isAnyInvalid;
    }

private:
    bool fIfIn;
};

template <typename Order>
std::unique_ptr<FunctionExpression> MakeRelation(FunctionCall&& call) {
    TakeAsCommonType(call, 0, true);
    return std::make_unique<RelationExpression>([](int order) { return Order()(order, 0); }, std::move(call));
}

template <bool ifIn>
std::unique_ptr<FunctionExpression> MakeMembership(FunctionCall&& call) {
    TakeAsCommonType(call, 0, true);
    return std::make_unique<MembershipExpression>(ifIn, std::move(call));
}

constexpr BuiltInFunction kComparisonFunctions[] = {
    {"equal", 2, 2, &MakeRelation<std::equal_to<int>>},
    {"notEqual", 2, 2, &MakeRelation<std::not_equal_to<int>>},
    {"lessThan", 2, 2, &MakeRelation<std::less<int>>},
    {"lessOrEqual", 2, 2, &MakeRelation<std::less_equal<int>>},
    {"greaterThan", 2, 2, &MakeRelation<std::greater<int>>},
    {"greaterOrEqual", 2, 2, &MakeRelation<std::greater_equal<int>>},
    {"isIn", 2, kAnyNumber, &MakeMembership<true>},
    {"isNotIn", 2, kAnyNumber, &MakeMembership<false>},
};

}  // namespace

std::span<const BuiltInFunction> ComparisonFunctions() {
    return kComparisonFunctions;
}

}  // namespace KwBrevix_930
