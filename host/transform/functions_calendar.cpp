// Built-in functions on dates and times: counts of days and seconds. A text counts as the date, time or both that it
// is.
#include <cmath>

#include "host/calendar.h"
#include "host/transform/built_in_functions.h"
#include "host/transform/cast.h"

namespace KwBrevix_930 {

namespace {

class CountExpression : public FunctionExpression {
public:
    using Count = double (*)(const CalendarTime& time, int year);

    CountExpression(Count count, FunctionCall&& call)
        : FunctionExpression({FieldType::kInteger}, std::move(call)), fCount(count) {}

protected:
    bool Compute(std::span<const DerivedValue> slots, DerivedValue& result) const override {
        DerivedValue values[2];
        if (!EvaluateAll(slots, values, result))
            return result.IsMissing();
        const auto moment = MomentOf(GetArgument(0).GetType(), values[0]);
        const double year = GetArgumentCount() > 1 ? values[1].GetNumber() : 0.0;
        const bool isYear = year >= 0.0 && year <= 9999.0 && year == std::floor(year);
        if (moment && isYear)
            result.SetNumber(fCount(*moment, static_cast<int>(year)));
        else
            result.SetInvalid();
        return false;
    }

private:
    Count fCount;
};

double Days(const CalendarTime& time, int year) {
    return static_cast<double>(DaysSinceYear(time, year));
}

double Seconds(const CalendarTime& time, int year) {
    return std::floor(SecondsSinceYear(time, year));
}

double OfDay(const CalendarTime& time, int) {
    return std::floor(SecondsOfDay(time));
}

template <CountExpression::Count count>
std::unique_ptr<FunctionExpression> MakeCount(FunctionCall&& call) {
    RequireMoment(call, 0);
    if (call.arguments.size() > 1)
        RequireNumber(call, 1);
    return std::make_unique<CountExpression>(count, std::move(call));
}

constexpr BuiltInFunction kCalendarFunctions[] = {
    {"dateDaysSinceYear", 2, 2, &MakeCount<&Days>},
    {"dateSecondsSinceYear", 2, 2, &MakeCount<&Seconds>},
    {"dateSecondsSinceMidnight", 1, 1, &MakeCount<&OfDay>},
};

}  // namespace

std::span<const BuiltInFunction> CalendarFunctions() {
    return kCalendarFunctions;
}

}  // namespace KwBrevix_930
