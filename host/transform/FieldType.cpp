// The data types of PMML.
#include "host/transform/FieldType.h"

#include <charconv>

namespace KwBrevix_930 {

namespace {

// In the order of the codes; the counts since a year are continued by the year in brackets.
constexpr std::string_view kNames[] = {"string",     "integer", "float",    "double",        "boolean",
                                       "date",       "time",    "dateTime", "dateDaysSince", "dateTimeSecondsSince",
                                       "timeSeconds"};

bool CountsFromYear(FieldType::Code code) {
    return code == FieldType::kDaysSince || code == FieldType::kSecondsSince;
}

// The year in a text as [1970], at most four digits.
std::optional<int> ParseYear(std::string_view text) {
    if (text.size() < 3 || text.size() > 6 || text.front() != '[' || text.back() != ']')
        return std::nullopt;
    text = text.substr(1, text.size() - 2);
    int year = 0;
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), year);
    const bool isYear = parsed.ec == std::errc() && parsed.ptr == text.data() + text.size() && year >= 0;
    return isYear ? std::optional(year) : std::nullopt;
}

}  // namespace

DictVar::DataType FieldType::GetStorage() const {
    if (code == kBoolean)
        return DictVar::kBoolean;
    return IsText() ? DictVar::kString : DictVar::kNumber;
}

std::string FieldType::GetName() const {
    std::string name(kNames[code]);
    if (CountsFromYear(code))
        name.append("[").append(std::to_string(year)).append("]");
    return name;
}

std::optional<FieldType> ParseFieldType(std::string_view name) {
    for (int code = FieldType::kString; code <= FieldType::kTimeSeconds; ++code) {
        FieldType type{static_cast<FieldType::Code>(code)};
        if (CountsFromYear(type.code)) {
            const auto year =
                name.starts_with(kNames[code]) ? ParseYear(name.substr(kNames[code].size())) : std::nullopt;
            type.year = year.value_or(0);
            if (year)
                return type;
        } else if (name == kNames[code]) {
            return type;
        }
    }
    return std::nullopt;
}

FieldType TypeOf(const ScoreDictVar& variable) {
    const auto* known = dynamic_cast<const DictVar*>(&variable);
    if (known && known->GetFieldType())
        return *known->GetFieldType();
    if (known && known->GetDataType() == DictVar::kBoolean)
        return {FieldType::kBoolean};
    return {variable.IsString() ? FieldType::kString : FieldType::kDouble};
}

}  // namespace KwBrevix_930
