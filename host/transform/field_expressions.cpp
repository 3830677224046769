// The expressions that read one field.
#include "host/transform/field_expressions.h"

#include <algorithm>
#include <utility>

#include "host/number_text.h"
#include "host/transform/cast.h"

namespace KwBrevix_930 {

namespace {

void SetNumberOrMissing(DerivedValue& result, const std::optional<double>& number) {
    if (number)
        result.SetNumber(*number);
    else
        result.SetMissing();
}

}  // namespace

FieldRefExpression::FieldRefExpression(const Field& field, std::string name, FieldType type,
                                       std::optional<Literal> mapMissingTo)
    : FieldExpression(type, field.slot, std::move(name)),
      fSourceType(field.type),
      fNeedsCast(NeedsCast(type, field.type)),
      fMapMissingTo(std::move(mapMissingTo)) {}

void FieldRefExpression::Evaluate(std::span<const DerivedValue> slots, DerivedValue& result) const {
    const DerivedValue& value = Source(slots);
    if (value.IsMissing() && fMapMissingTo) {
        fMapMissingTo->Give(result);
        return;
    }
    result.Borrow(value);
    if (fNeedsCast)
        CastToType(GetType(), fSourceType, result);
}

NormContinuousExpression::NormContinuousExpression(const Field& field, std::string name, std::vector<Point> points,
                                                   Outliers outliers, std::optional<double> mapMissingTo)
    : FieldExpression({FieldType::kDouble}, field.slot, std::move(name)),
      fPoints(std::move(points)),
      fOutliers(outliers),
      fMapMissingTo(mapMissingTo) {}

void NormContinuousExpression::Evaluate(std::span<const DerivedValue> slots, DerivedValue& result) const {
    const DerivedValue& value = Source(slots);
    if (value.IsMissing()) {
        SetNumberOrMissing(result, fMapMissingTo);
        return;
    }
    if (!value.IsNumber()) {
        result.SetInvalid();
        return;
    }
    const double x = value.GetNumber();
    const bool isOutlier = x < fPoints.front().original || x > fPoints.back().original;
    if (isOutlier && fOutliers == kAsMissingValues) {
        SetNumberOrMissing(result, fMapMissingTo);
        return;
    }
    if (isOutlier && fOutliers == kAsExtremeValues) {
        result.SetNumber(x < fPoints.front().original ? fPoints.front().normalised : fPoints.back().normalised);
        return;
    }
    const auto above = std::partition_point(fPoints.begin() + 1, fPoints.end() - 1,
                                            [x](const Point& point) { return point.original < x; });
    const Point& right = *above;
    const Point& left = *(above - 1);
    const double share = (x - left.original) / (right.original - left.original);
    result.SetNumber(left.normalised + share * (right.normalised - left.normalised));
}

NormDiscreteExpression::NormDiscreteExpression(const Field& field, std::string name, std::string value,
                                               std::optional<double> number, std::optional<double> mapMissingTo)
    : FieldExpression({FieldType::kDouble}, field.slot, std::move(name)),
      fEncodedValues{std::move(value)},
      fNumber(number),
      fMapMissingTo(mapMissingTo) {}

void NormDiscreteExpression::Evaluate(std::span<const DerivedValue> slots, DerivedValue& result) const {
    const DerivedValue& value = Source(slots);
    switch (value.GetState()) {
        case DerivedValue::kInvalid:
            result.SetInvalid();
            break;
        case DerivedValue::kNumber:
            result.SetBoolean(fNumber && *fNumber == value.GetNumber());
            break;
        case DerivedValue::kText:
            result.SetBoolean(fEncodedValues.front() == value.GetText());
            break;
        case DerivedValue::kMissing:
            GiveForMissing(value, result);
            break;
    }
}

void NormDiscreteExpression::GiveForMissing(const DerivedValue& source, DerivedValue& result) const {
    const ScoreDictVar* variable = fMapMissingTo ? nullptr : source.GetVariable();
    const std::string* registered =
        variable ? variable->GetVarStats()->GetEncodedMissingReplacement(fEncodedValues.front()) : nullptr;
    SetNumberOrMissing(result, registered ? ParseNumber(*registered) : fMapMissingTo);
}

}  // namespace KwBrevix_930
