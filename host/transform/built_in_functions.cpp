// The built-in functions by name, and what they ask of their arguments.
#include "host/transform/built_in_functions.h"

#include <unordered_map>

#include "host/calendar.h"
#include "host/refusal.h"
#include "host/transform/CastExpression.h"

namespace KwBrevix_930 {

namespace {

std::string Place(const FunctionCall& call, std::size_t i) {
    return "argument " + std::to_string(i + 1) + " of '" + call.name + "'";
}

void CastArgument(FunctionCall& call, std::size_t i, FieldType type) {
    const std::string given = call.arguments[i]->GetType().GetName();
    call.arguments[i] = CastTo(type, std::move(call.arguments[i]));
    if (!call.arguments[i])
        Refuse(260106, Place(call, i), given, type.GetName());
}

// How little an argument's type is bound: that of a field or a call is fixed, a constant can be read as of another
// type, and a constant without a type leaves it to the others.
enum Bond { kFixed, kConstant, kUntyped };

Bond BondOf(const Expression& argument) {
    if (!argument.GetLiteral())
        return kFixed;
    return argument.GetLiteral()->isTyped ? kConstant : kUntyped;
}

// Whether values of the type are moments, a day and a time of day.
bool TellsTimeOfADay(FieldType type) {
    return type.code == FieldType::kDateTime || type.code == FieldType::kSecondsSince;
}

bool IsTime(FieldType type) {
    return type.IsCalendarText() || type.IsCount();
}

// Whether one is a time of day and the other tells the day.
bool AreDayAndTimeOfDay(FieldType one, FieldType other) {
    const auto isOfDay = [](FieldType type) {
        return type.code == FieldType::kTime || type.code == FieldType::kTimeSeconds;
    };
    return IsTime(one) && IsTime(other) && isOfDay(one) != isOfDay(other);
}

// The type that values of two types have in common, of dates and times the finer one; nothing for a text and a number,
// and for a day and a time of day.
std::optional<FieldType> CommonType(FieldType one, FieldType other) {
    if (one == other)
        return one;
    if (one.IsText() != other.IsText() || AreDayAndTimeOfDay(one, other))
        return std::nullopt;
    if (IsTime(one) && IsTime(other))
        return TellsTimeOfADay(other) ? other : one;
    if (IsTime(one) || IsTime(other))
        return IsTime(one) ? one : other;
    return FieldType{one.IsText() ? FieldType::kString : FieldType::kDouble};
}

FieldType ComparableType(FieldType type) {
    switch (type.code) {
        case FieldType::kDate:
            return {FieldType::kDaysSince, 1970};
        case FieldType::kTime:
            return {FieldType::kTimeSeconds};
        case FieldType::kDateTime:
            return {FieldType::kSecondsSince, 1970};
        case FieldType::kInteger:
        case FieldType::kFloat:
            return {FieldType::kDouble};
        default:
            return type;
    }
}

}  // namespace

const BuiltInFunction* FindBuiltInFunction(std::string_view name) {
    static const auto kByName = [] {
        std::unordered_map<std::string_view, const BuiltInFunction*> functions;
        for (const auto family : {ArithmeticFunctions(), AggregateFunctions(), LogicFunctions(), ComparisonFunctions(),
                                  TextFunctions(), PatternFunctions(), CalendarFunctions(), DistributionFunctions()}) {
            for (const BuiltInFunction& function : family)
                functions.emplace(function.name, &function);
        }
        return functions;
    }();
    const auto found = kByName.find(name);
    return found == kByName.end() ? nullptr : found->second;
}

void RequireNumber(FunctionCall& call, std::size_t i) {
    const Expression& argument = *call.arguments[i];
    if (argument.GetLiteral() && argument.GetLiteral()->isMissing)
        return;
    if (argument.GetType().IsText())
        Refuse(260106, Place(call, i), argument.GetType().GetName(), "a number");
}

void RequireNumbers(FunctionCall& call) {
    for (std::size_t i = 0; i < call.arguments.size(); ++i)
        RequireNumber(call, i);
}

void RequireBoolean(FunctionCall& call, std::size_t i) {
    const Expression& argument = *call.arguments[i];
    if (argument.GetType().IsText() && !argument.GetLiteral())
        Refuse(260106, Place(call, i), argument.GetType().GetName(), "boolean");
    CastArgument(call, i, {FieldType::kBoolean});
}

void RequireMoment(FunctionCall& call, std::size_t i) {
    const FieldType type = call.arguments[i]->GetType();
    const Literal* literal = call.arguments[i]->GetLiteral();
    const bool isMissing = literal && literal->isMissing;
    const bool isNone = literal && !isMissing && type.code == FieldType::kString && !ParseAnyTime(literal->text);
    if (isNone || (!isMissing && !type.IsText() && !type.IsCount()))
        Refuse(260106, Place(call, i), type.GetName(), "a date or time");
}

void TakeAsText(FunctionCall& call, std::size_t i) {
    if (!call.arguments[i]->GetType().IsText())
        CastArgument(call, i, {FieldType::kString});
}

FieldType TakeAsCommonType(FunctionCall& call, std::size_t first, bool forComparison) {
    // Whatever their order, arguments are asked in the order of their bonds; constants without a type only where the
    // others leave it open.
    std::optional<FieldType> common;
    for (const Bond bond : {kFixed, kConstant, kUntyped}) {
        const bool isOpen = !common;
        for (std::size_t i = first; i < call.arguments.size(); ++i) {
            const Expression& argument = *call.arguments[i];
            if (BondOf(argument) != bond || (bond == kUntyped && (!isOpen || argument.GetLiteral()->isMissing)))
                continue;
            const FieldType type = argument.GetType();
            const auto both = common ? CommonType(*common, type) : type;
            if (!both && (bond == kFixed || AreDayAndTimeOfDay(*common, type)))
                Refuse(260106, Place(call, i), type.GetName(), common->GetName());
            if (both)
                common = both;
            else if (bond == kUntyped)
                common = FieldType{FieldType::kString};
        }
    }
    FieldType type = common.value_or(FieldType{});
    if (forComparison)
        type = ComparableType(type);
    else if (type.code == FieldType::kInteger)
        type = {FieldType::kDouble};
    for (std::size_t i = first; i < call.arguments.size(); ++i)
        CastArgument(call, i, type);
    return type;
}

}  // namespace KwBrevix_930
