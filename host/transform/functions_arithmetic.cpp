// Built-in functions: arithmetic, powers, logarithms, rounding and trigonometry, on numbers alone. The quotient of two
// integers is not cut off: it is rounded only where an integer is asked for.
#include <cmath>

#include "host/transform/built_in_functions.h"
#include "host/transform/cast.h"

namespace KwBrevix_930 {

namespace {

class NumericExpression : public FunctionExpression {
public:
    NumericExpression(const NumericFunction& function, FunctionCall&& call)
        : FunctionExpression({FieldType::kDouble}, std::move(call)), fFunction(function) {}

protected:
    bool Compute(std::span<const DerivedValue> slots, DerivedValue& result) const override {
        double numbers[3] = {};
        bool isAnyMissing = false;
        bool isAnyInvalid = false;
        for (std::size_t i = 0; i < fFunction.count; ++i) {
            EvaluateArgument(i, slots, result);
            isAnyMissing = isAnyMissing || result.IsMissing();
            isAnyInvalid = isAnyInvalid || !(result.IsNumber() || result.IsMissing());
            numbers[i] = result.GetNumber();
        }
        const bool isOutside = !isAnyMissing && fFunction.isDefined && !fFunction.isDefined(numbers);
        if (isAnyInvalid || (isOutside && !KeepsNonFinite()))
            result.SetInvalid();
        else if (isAnyMissing)
            result.SetMissing();
        else
            result.SetNumber(fFunction.compute(numbers));
        return isAnyMissing && !isAnyInvalid;
    }

private:
    NumericFunction fFunction;
};

// The remainder with the sign of the divisor, exact where the quotient is large.
double Modulo(double x, double y) {
    const double remainder = std::fmod(x, y);
    return remainder != 0.0 && std::signbit(remainder) != std::signbit(y) ? remainder + y : remainder;
}

// Halves to the even neighbour, whatever the rounding mode is.
double RoundHalfEven(double x) {
    const double below = std::floor(x);
    const double share = x - below;
    if (share != 0.5)
        return share < 0.5 ? below : below + 1.0;
    return std::fmod(below, 2.0) == 0.0 ? below : below + 1.0;
}

constexpr NumericFunction kArithmeticFunctions[] = {
    {"+", 2, [](const double* x) { return x[0] + x[1]; }, nullptr},
    {"-", 2, [](const double* x) { return x[0] - x[1]; }, nullptr},
    {"*", 2, [](const double* x) { return x[0] * x[1]; }, nullptr},
    {"/", 2, [](const double* x) { return x[0] / x[1]; }, [](const double* x) { return x[1] != 0.0; }},
    {"modulo", 2, [](const double* x) { return Modulo(x[0], x[1]); }, [](const double* x) { return x[1] != 0.0; }},
    {"pow", 2, [](const double* x) { return std::pow(x[0], x[1]); },
     [](const double* x) { return x[0] != 0.0 || x[1] >= 0.0; }},
    {"threshold", 2, [](const double* x) { return x[0] > x[1] ? 1.0 : 0.0; }, nullptr},
    {"hypot", 2, [](const double* x) { return std::hypot(x[0], x[1]); }, nullptr},
    {"log10", 1, [](const double* x) { return std::log10(x[0]); }, [](const double* x) { return x[0] > 0.0; }},
    {"ln", 1, [](const double* x) { return std::log(x[0]); }, [](const double* x) { return x[0] > 0.0; }},
    {"ln1p", 1, [](const double* x) { return std::log1p(x[0]); }, [](const double* x) { return x[0] > -1.0; }},
    {"sqrt", 1, [](const double* x) { return std::sqrt(x[0]); }, [](const double* x) { return x[0] >= 0.0; }},
    {"abs", 1, [](const double* x) { return std::fabs(x[0]); }, nullptr},
    {"exp", 1, [](const double* x) { return std::exp(x[0]); }, nullptr},
    {"expm1", 1, [](const double* x) { return std::expm1(x[0]); }, nullptr},
    {"floor", 1, [](const double* x) { return std::floor(x[0]); }, nullptr},
    {"ceil", 1, [](const double* x) { return std::ceil(x[0]); }, nullptr},
    {"round", 1, [](const double* x) { return RoundHalfUp(x[0]); }, nullptr},
    {"rint", 1, [](const double* x) { return RoundHalfEven(x[0]); }, nullptr},
    {"sin", 1, [](const double* x) { return std::sin(x[0]); }, nullptr},
    {"cos", 1, [](const double* x) { return std::cos(x[0]); }, nullptr},
    {"tan", 1, [](const double* x) { return std::tan(x[0]); }, nullptr},
    {"asin", 1, [](const double* x) { return std::asin(x[0]); }, nullptr},
    {"acos", 1, [](const double* x) { return std::acos(x[0]); }, nullptr},
    {"atan", 1, [](const double* x) { return std::atan(x[0]); }, nullptr},
    {"sinh", 1, [](const double* x) { return std::sinh(x[0]); }, nullptr},
    {"cosh", 1, [](const double* x) { return std::cosh(x[0]); }, nullptr},
    {"tanh", 1, [](const double* x) { return std::tanh(x[0]); }, nullptr},
};

}  // namespace

std::unique_ptr<FunctionExpression> MakeNumericCall(const NumericFunction& function, FunctionCall&& call) {
    RequireNumbers(call);
    return std::make_unique<NumericExpression>(function, std::move(call));
}

std::span<const BuiltInFunction> ArithmeticFunctions() {
    return FunctionsOf<kArithmeticFunctions>();
}

}  // namespace KwBrevix_930
