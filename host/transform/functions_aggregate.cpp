// Built-in functions over any number of numbers, in which missing ones do not count: min, max, sum, avg, median,
// product. They are missing where all are.
#include <algorithm>
#include <limits>
#include <vector>

#include "host/transform/built_in_functions.h"

namespace KwBrevix_930 {

namespace {

// A value taken in one after another; start: before the first.
struct Fold {
    double start;
    double (*step)(double sum, double x);
    bool isAverage;
};

class FoldExpression : public FunctionExpression {
public:
    FoldExpression(const Fold& fold, FunctionCall&& call)
        : FunctionExpression({FieldType::kDouble}, std::move(call)), fFold(fold) {}

protected:
    bool Compute(std::span<const DerivedValue> slots, DerivedValue& result) const override {
        double sum = fFold.start;
        std::size_t count = 0;
        for (std::size_t i = 0; i < GetArgumentCount(); ++i) {
            EvaluateArgument(i, slots, result);
            if (result.IsMissing())
                continue;
            if (!result.IsNumber()) {
                result.SetInvalid();
                return false;
            }
            sum = fFold.step(sum, result.GetNumber());
            ++count;
        }
        if (count == 0)
            result.SetMissing();
        else
            result.SetNumber(fFold.isAverage ? sum / static_cast<double>(count) : sum);
        return count < GetArgumentCount();
    }

private:
    Fold fFold;
};

class MedianExpression : public FunctionExpression {
public:
    explicit MedianExpression(FunctionCall&& call) : FunctionExpression({FieldType::kDouble}, std::move(call)) {}

protected:
    bool Compute(std::span<const DerivedValue> slots, DerivedValue& result) const override {
        std::vector<double> numbers;
        numbers.reserve(GetArgumentCount());
        for (std::size_t i = 0; i < GetArgumentCount(); ++i) {
            EvaluateArgument(i, slots, result);
            if (result.IsMissing())
                continue;
            if (!result.IsNumber()) {
                result.SetInvalid();
                return false;
            }
            numbers.push_back(result.GetNumber());
        }
        if (numbers.empty())
            result.SetMissing();
        else
            result.SetNumber(Median(numbers));
        return numbers.size() < GetArgumentCount();
    }

private:
    // Of an even number of numbers, the mean of the two in the middle.
    static double Median(std::vector<double>& numbers) {
        const auto middle = numbers.begin() + static_cast<std::ptrdiff_t>(numbers.size() / 2);
        std::nth_element(numbers.begin(), middle, numbers.end());
        if (numbers.size() % 2 == 1)
            return *middle;
        return (*std::max_element(numbers.begin(), middle) + *middle) / 2.0;
    }
};

constexpr double kInfinity = std::numeric_limits<double>::infinity();

double Sum(double sum, double x) {
    return sum + x;
}

constexpr Fold kMin = {kInfinity, [](double least, double x) { return std::min(least, x); }, false};
constexpr Fold kMax = {-kInfinity, [](double most, double x) { return std::max(most, x); }, false};
constexpr Fold kSum = {0.0, &Sum, false};
constexpr Fold kAverage = {0.0, &Sum, true};
constexpr Fold kProduct = {1.0, [](double product, double x) { return product * x; }, false};

template <const Fold& fold>
std::unique_ptr<FunctionExpression> MakeFold(FunctionCall&& call) {
    RequireNumbers(call);
    return std::make_unique<FoldExpression>(fold, std::move(call));
}

std::unique_ptr<FunctionExpression> MakeMedian(FunctionCall&& call) {
    RequireNumbers(call);
    return std::make_unique<MedianExpression>(std::move(call));
}

constexpr BuiltInFunction kAggregateFunctions[] = {
    {"min", 1, kAnyNumber, &MakeFold<kMin>}, {"max", 1, kAnyNumber, &MakeFold<kMax>},
    {"sum", 1, kAnyNumber, &MakeFold<kSum>}, {"avg", 1, kAnyNumber, &MakeFold<kAverage>},
    {"median", 1, kAnyNumber, &MakeMedian},  {"product", 1, kAnyNumber, &MakeFold<kProduct>},
};

}  // namespace

std::span<const BuiltInFunction> AggregateFunctions() {
    return kAggregateFunctions;
}

}  // namespace KwBrevix_930
