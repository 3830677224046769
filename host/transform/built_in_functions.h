// The built-in functions of PMML.
#pragma once

#include <algorithm>
#include <cstddef>
#include <limits>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/transform/FunctionExpression.h"

namespace KwBrevix_930 {

struct BuiltInFunction {
    std::string_view name;
    std::size_t fewest;
    std::size_t most;
    /// Checks the types of the arguments, which are as many as they may be.
    /// Errors: BXException 260106, and 260153 for a constant pattern that is none.
    std::unique_ptr<FunctionExpression> (*make)(FunctionCall&& call);
};

inline constexpr std::size_t kAnyNumber = std::numeric_limits<std::size_t>::max();

/// The families, a file for each.
std::span<const BuiltInFunction> ArithmeticFunctions();
std::span<const BuiltInFunction> AggregateFunctions();
std::span<const BuiltInFunction> LogicFunctions();
std::span<const BuiltInFunction> ComparisonFunctions();
std::span<const BuiltInFunction> TextFunctions();
std::span<const BuiltInFunction> PatternFunctions();
std::span<const BuiltInFunction> CalendarFunctions();
std::span<const BuiltInFunction> DistributionFunctions();

/// Returns: the function of that name; null where there is none.
const BuiltInFunction* FindBuiltInFunction(std::string_view name);

/// A function of up to three numbers, missing where one of them is.
struct NumericFunction {
    std::string_view name;
    std::size_t count;
    double (*compute)(const double* x);
    /// Whether the function is defined there; null: everywhere. Elsewhere the result is invalid.
    bool (*isDefined)(const double* x);
};

/// Returns: the call of a numeric function; its arguments must be numbers.
std::unique_ptr<FunctionExpression> MakeNumericCall(const NumericFunction& function, FunctionCall&& call);

/// Returns: the built-in functions of an array of numeric functions, made once.
template <const auto& kNumericFunctions>
std::span<const BuiltInFunction> FunctionsOf() {
    static constexpr auto kMake = [](FunctionCall&& call) -> std::unique_ptr<FunctionExpression> {
        const auto* function = std::ranges::find(kNumericFunctions, call.name, &NumericFunction::name);
        return MakeNumericCall(*function, std::move(call));
    };
    static const auto kFunctions = [] {
        std::vector<BuiltInFunction> functions;
        for (const NumericFunction& function : kNumericFunctions)
            functions.push_back({function.name, function.count, function.count, kMake});
        return functions;
    }();
    return kFunctions;
}

/// What comparisons and logic give.
constexpr FieldType kTruth{FieldType::kBoolean};

/// What functions ask of their arguments while they are read; where it can be done, arguments are cast to it.
/// Errors of all: BXException 260106.
void RequireNumber(FunctionCall& call, std::size_t i);
void RequireNumbers(FunctionCall& call);
void RequireBoolean(FunctionCall& call, std::size_t i);
/// Dates, times, counts of them, and texts that may be one.
void RequireMoment(FunctionCall& call, std::size_t i);
/// Anything can be a text.
void TakeAsText(FunctionCall& call, std::size_t i);
/// Makes all arguments from one on values of a common type: the same, or numbers, or texts. forComparison: dates and
/// times become counts then.
/// Returns: the type.
FieldType TakeAsCommonType(FunctionCall& call, std::size_t first, bool forComparison);

}  // namespace KwBrevix_930
