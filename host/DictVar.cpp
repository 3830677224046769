// The host's variable: declarations, look-ups and the rules of missing and invalid values.
#include "host/DictVar.h"

#include <algorithm>
#include <cmath>
#include <ostream>

#include "host/DateTimeValue.h"
#include "host/StringValue.h"
#include "host/calendar.h"
#include "host/number_text.h"
#include "host/transform/FieldType.h"

namespace KwBrevix_930 {

namespace {

// What a record holds where a missing value makes the case invalid. No variable has values of this type, so that it is
// neither missing nor valid anywhere.
const DateTimeValue kNeverValid(0.0, std::string());

}  // namespace

ScoreDictVar::~ScoreDictVar() = default;

bool DictVar::Interval::Contains(double number) const {
    const bool isAboveLeft = !left || (isLeftClosed ? number >= *left : number > *left);
    const bool isBelowRight = !right || (isRightClosed ? number <= *right : number < *right);
    return isAboveLeft && isBelowRight;
}

DictVar::DictVar(std::string name, DataType type, Kind kind)
    : fName(std::move(name)), fType(type), fKind(kind), fHasNumberRules(type != kNumber) {}

DictVar::DictVar(const DictVar& other)
    : ScoreDictVar(other),
      fName(other.fName),
      fType(other.fType),
      fFieldType(other.fFieldType ? std::make_unique<FieldType>(*other.fFieldType) : nullptr),
      fKind(other.fKind),
      fDisplayValues(other.fDisplayValues),
      fIndexByText(other.fIndexByText),
      fIndexByNumber(other.fIndexByNumber),
      fLookUpCount(other.fLookUpCount),
      fMissingValues(other.fMissingValues),
      fInvalidValues(other.fInvalidValues),
      fIntervals(other.fIntervals),
      fTreatment(other.fTreatment),
      fInvalidReplacement(other.fInvalidReplacement ? other.fInvalidReplacement->Clone() : nullptr),
      fOutliers(other.fOutliers),
      fLow(other.fLow),
      fHigh(other.fHigh),
      fMissingIsInvalid(other.fMissingIsInvalid),
      fHasNumberRules(other.fHasNumberRules),
      fStats(other.fStats),
      fIndex(other.fIndex) {
    for (const ScoreCategory& category : other.fCategories)
        fCategories.push_back({category.name, std::unique_ptr<ScoreValue>(category.value->Clone())});
}

DictVar::~DictVar() = default;

void DictVar::SetFieldType(const FieldType& type) {
    fFieldType = std::make_unique<FieldType>(type);
}

std::unique_ptr<DictVar> DictVar::CopyOf(const ScoreDictVar& other) {
    if (const auto* known = dynamic_cast<const DictVar*>(&other))
        return std::make_unique<DictVar>(*known);
    auto copy = std::make_unique<DictVar>(other.GetName(), other.IsString() ? kString : kNumber, other.GetKind());
    if (const auto* categories = other.GetCategories()) {
        for (const ScoreCategory& category : *categories)
            copy->Declare(category.name, std::unique_ptr<ScoreValue>(category.value->Clone()));
    }
    copy->fStats = *other.GetVarStats();
    copy->fIndex = other.GetIndex();
    return copy;
}

bool DictVar::AddCategory(const std::string& text, const std::string& displayValue) {
    auto value = MakeValue(text);
    if (!value)
        return false;
    const int declaredCount = static_cast<int>(fCategories.size());
    const int known = GetCategoryIndex(text);
    if (known < 0 && fLookUpCount == declaredCount) {
        Declare(text, std::move(value));
        if (!displayValue.empty()) {
            fDisplayValues.resize(fCategories.size());
            fDisplayValues.back() = displayValue;
        }
        return true;
    }
    return known >= 0 && known < declaredCount;
}

const std::string& DictVar::GetDisplayValue(int category) const {
    const auto place = static_cast<std::size_t>(category);
    const bool isDeclared = place < fDisplayValues.size() && !fDisplayValues[place].empty();
    return isDeclared ? fDisplayValues[place] : fCategories.at(place).name;
}

// The name and the value may differ in a variable of another class: both lead to the category.
void DictVar::Declare(const std::string& name, std::unique_ptr<ScoreValue> value) {
    if (fType == kString) {
        fIndexByText.emplace(value->GetString(), fLookUpCount);
        AddToLookUp(name, std::nullopt);
    } else {
        AddToLookUp(name, value->GetDouble());
    }
    fCategories.push_back({name, std::move(value)});
    FindNumberRules();
}

void DictVar::AddMissingValue(const std::string& text) {
    fMissingValues.Add(MakeAnyValue(text));
    FindNumberRules();
}

void DictVar::AddInvalidValue(const std::string& text) {
    fInvalidValues.Add(MakeAnyValue(text));
    FindNumberRules();
}

std::unique_ptr<ScoreValue> DictVar::MakeAnyValue(const std::string& text) const {
    auto value = MakeValue(text);
    return value ? std::move(value) : std::make_unique<StringValue>(text);
}

void DictVar::AddInterval(const Interval& interval) {
    fIntervals.push_back(interval);
    FindNumberRules();
}

void DictVar::SetInvalidTreatment(InvalidTreatment treatment, std::unique_ptr<ScoreValue> replacement) {
    fTreatment = treatment;
    fInvalidReplacement = std::move(replacement);
}

void DictVar::SetOutlierTreatment(OutlierTreatment treatment, std::optional<double> low, std::optional<double> high) {
    fOutliers = treatment;
    FindNumberRules();
    fLow.reset();
    fHigh.reset();
    if (low)
        fLow.emplace(*low);
    if (high)
        fHigh.emplace(*high);
}

// A raw value is treated in this order: is it missing? is it invalid, and what becomes of it then? is it an outlier,
// and what becomes of it then? is it missing by now, and does anything replace it? An invalid value that is returned as
// such, and a text where a number must stand, are left for the model to refuse.
const ScoreValue* DictVar::Treat(const ScoreValue& raw) const {
    if (IsMissing(&raw))
        return TreatMissing();
    const bool changesInvalid = fTreatment == kAsMissing || fTreatment == kAsValue;
    if (!changesInvalid && fOutliers == kOutliersAsIs)
        return &raw;
    if (IsDeclaredValid(raw) || fTreatment == kAsIs)
        return TreatOutlier(raw);
    if (!changesInvalid)
        return &raw;
    return fTreatment == kAsMissing ? TreatMissing() : TreatOutlier(*fInvalidReplacement);
}

const ScoreValue* DictVar::TreatMissing() const {
    return fMissingIsInvalid ? &kNeverValid : fStats.GetMissingReplacement();
}

const ScoreValue* DictVar::TreatOutlier(const ScoreValue& value) const {
    if (fOutliers == kOutliersAsIs || value.GetType() != ScoreValue::kNumeric)
        return &value;
    const double number = value.GetDouble();
    const bool isLow = fLow && number < fLow->GetDouble();
    if (!isLow && !(fHigh && number > fHigh->GetDouble()))
        return &value;
    if (fOutliers == kOutliersAsMissing)
        return TreatMissing();
    return isLow ? &*fLow : &*fHigh;
}

std::optional<double> DictVar::ParseText(std::string_view text) const {
    if (fType == kString)
        return std::nullopt;
    if (const auto truth = fType == kBoolean ? ParseTruth(text) : std::nullopt)
        return *truth ? 1.0 : 0.0;
    const auto number = ParseNumber(text);
    const bool isNoBoolean = fType == kBoolean && number != 0.0 && number != 1.0;
    return isNoBoolean ? std::nullopt : number ? number : ParseCount(text);
}

void DictVar::FindNumberRules() {
    fHasNumberRules = fType != kNumber || !fMissingValues.IsEmpty() || !fInvalidValues.IsEmpty() ||
                      !fCategories.empty() || !fIntervals.empty() || fOutliers != kOutliersAsIs;
}

bool DictVar::IsPlain(const ScoreValue& value) const {
    return Treat(value) == &value && !IsMissing(&value) && IsValid(&value);
}

bool DictVar::ReadByRules(std::string_view text, double& number) const {
    if (fType == kString) {
        const StringValue value{std::string(text)};
        number = GetCategoryIndex(&value);
        return IsPlain(value);
    }
    const auto parsed = ParseText(text);
    number = parsed.value_or(0.0);
    return parsed && IsPlain(NumericValue(number));
}

// A day is the moment at which it begins.
std::optional<double> DictVar::ParseCount(std::string_view text) const {
    if (!fFieldType || !fFieldType->IsCount())
        return std::nullopt;
    if (fFieldType->code == FieldType::kTimeSeconds) {
        const auto time = ParseTimeOfDay(text);
        return time ? std::optional(SecondsOfDay(*time)) : std::nullopt;
    }
    const auto day = ParseDate(text);
    if (fFieldType->code == FieldType::kDaysSince)
        return day ? std::optional(static_cast<double>(DaysSinceYear(*day, fFieldType->year))) : std::nullopt;
    const auto moment = day ? day : ParseDateTime(text);
    return moment ? std::optional(SecondsSinceYear(*moment, fFieldType->year)) : std::nullopt;
}

bool DictVar::IsRightText(std::string_view text) const {
    if (!fFieldType || !fFieldType->IsCalendarText())
        return true;
    if (fFieldType->code == FieldType::kDate)
        return ParseDate(text).has_value();
    return fFieldType->code == FieldType::kTime ? ParseTimeOfDay(text).has_value() : ParseDateTime(text).has_value();
}

std::unique_ptr<ScoreValue> DictVar::MakeValue(std::string_view text) const {
    if (fType == kString)
        return IsRightText(text) ? std::make_unique<StringValue>(std::string(text)) : nullptr;
    const auto number = ParseText(text);
    return number ? std::make_unique<NumericValue>(*number) : nullptr;
}

bool DictVar::IsOfDataType(const ScoreValue& value) const {
    if (fType == kString)
        return value.GetType() == ScoreValue::kString &&
               (!fFieldType || !fFieldType->IsCalendarText() || IsRightText(value.GetString()));
    const double number = value.GetDouble();
    return value.GetType() == ScoreValue::kNumeric && !std::isnan(number) &&
           (fType != kBoolean || number == 0.0 || number == 1.0);
}

bool DictVar::IsDeclaredValid(const ScoreValue& value) const {
    if (!IsOfDataType(value) || fInvalidValues.Contains(value))
        return false;
    const int category = fCategories.empty() ? -1 : GetCategoryIndex(&value);
    const bool isDeclared = category >= 0 && category < static_cast<int>(fCategories.size());
    if (fKind != kContinuous)
        return isDeclared || fCategories.empty();
    const bool isInRange =
        fIntervals.empty() || std::any_of(fIntervals.begin(), fIntervals.end(),
                                          [&](const Interval& range) { return range.Contains(value.GetDouble()); });
    return isDeclared || isInRange;
}

bool DictVar::IsMissing(const ScoreValue* value) const {
    return !value || value == fStats.GetMissingReplacement() || value->IsSystemMissingValue() ||
           fMissingValues.Contains(*value);
}

bool DictVar::IsValid(const ScoreValue* value) const {
    if (!value)
        return false;
    // Without rules no treatment makes another number of a number.
    if (!fHasNumberRules && value->GetType() == ScoreValue::kNumeric && !std::isnan(value->GetDouble()))
        return true;
    // What this variable puts in place of a value is beyond its own rules.
    if (value == fInvalidReplacement.get() || (fLow && value == &*fLow) || (fHigh && value == &*fHigh))
        return true;
    if (fTreatment == kAsIs)
        return IsString() ? IsOfDataType(*value) : value->GetType() == ScoreValue::kNumeric;
    return IsDeclaredValid(*value);
}

std::optional<int> DictVar::FindText(std::string_view text) const {
    const auto found = fIndexByText.find(text);
    return found == fIndexByText.end() ? std::nullopt : std::optional(found->second);
}

std::optional<int> DictVar::FindNumber(double number) const {
    const auto found = fIndexByNumber.find(number);
    return found == fIndexByNumber.end() ? std::nullopt : std::optional(found->second);
}

int DictVar::AddToLookUp(const std::string& text, std::optional<double> number) {
    fIndexByText.emplace(text, fLookUpCount);
    if (number && !std::isnan(*number))
        fIndexByNumber.emplace(*number, fLookUpCount);
    return fLookUpCount++;
}

int DictVar::GetCategoryIndex(const ScoreValue* value) const {
    if (!value || !IsOfDataType(*value))
        return -1;
    if (fType != kString)
        return FindNumber(value->GetDouble()).value_or(-1);
    if (const auto* text = dynamic_cast<const StringValue*>(value))
        return FindText(text->GetText()).value_or(-1);
    return FindText(value->GetString()).value_or(-1);
}

int DictVar::GetCategoryIndex(const std::string& category) const {
    if (const auto index = FindText(category))
        return *index;
    const auto number = ParseText(category);
    return number ? FindNumber(*number).value_or(-1) : -1;
}

int DictVar::RegisterCategory(const std::string& category) {
    const int known = GetCategoryIndex(category);
    if (known >= 0)
        return known;
    const auto number = ParseText(category);
    if (fType != kString && !number)
        return -1;
    return AddToLookUp(category, number);
}

void DictVar::Display(std::ostream& stream) const {
    static constexpr const char* kKindNames[] = {"unknown", "continuous", "ordinal", "categorical"};
    stream << fName << " (" << (IsString() ? "string" : "numeric") << ", " << kKindNames[fKind] << ")";
}

}  // namespace KwBrevix_930
