// The expressions that derived fields are built from.
#include "host/transform/expressions.h"

#include <algorithm>
#include <utility>

#include "host/ScoreDictVar.h"
#include "host/number_text.h"

namespace KwBrevix_930 {

namespace {

void SetNumber(DerivedValue& result, double number) {
    result.state = DerivedValue::kNumber;
    result.number = number;
}

void SetNumberOrMissing(DerivedValue& result, const std::optional<double>& number) {
    result.state = DerivedValue::kMissing;
    if (number)
        SetNumber(result, *number);
}

}  // namespace

FieldRefExpression::FieldRefExpression(std::string field, std::optional<DerivedValue> mapMissingTo)
    : Expression(std::move(field)), fMapMissingTo(std::move(mapMissingTo)) {}

void FieldRefExpression::Evaluate(const ScoreDictVar&, const DerivedValue& value, DerivedValue& result) const {
    result = value.state == DerivedValue::kMissing && fMapMissingTo ? *fMapMissingTo : value;
}

NormContinuousExpression::NormContinuousExpression(std::string field, std::vector<Point> points, Outliers outliers,
                                                   std::optional<double> mapMissingTo)
    : Expression(std::move(field)), fPoints(std::move(points)), fOutliers(outliers), fMapMissingTo(mapMissingTo) {}

void NormContinuousExpression::Evaluate(const ScoreDictVar&, const DerivedValue& value, DerivedValue& result) const {
    if (value.state == DerivedValue::kMissing) {
        SetNumberOrMissing(result, fMapMissingTo);
        return;
    }
    if (value.state != DerivedValue::kNumber) {
        result.state = DerivedValue::kInvalid;
        return;
    }
    const double x = value.number;
    const bool isOutlier = x < fPoints.front().original || x > fPoints.back().original;
    if (isOutlier && fOutliers == kAsMissingValues) {
        SetNumberOrMissing(result, fMapMissingTo);
        return;
    }
    if (isOutlier && fOutliers == kAsExtremeValues) {
        SetNumber(result, x < fPoints.front().original ? fPoints.front().normalised : fPoints.back().normalised);
        return;
    }
    const auto above =
        std::find_if(fPoints.begin() + 1, fPoints.end() - 1, [x](const Point& p) { return x <= p.original; });
    const Point& right = *above;
    const Point& left = *(above - 1);
    const double share = (x - left.original) / (right.original - left.original);
    SetNumber(result, left.normalised + share * (right.normalised - left.normalised));
}

NormDiscreteExpression::NormDiscreteExpression(std::string field, std::string value, std::optional<double> number,
                                               std::optional<double> mapMissingTo)
    : Expression(std::move(field)), fEncodedValues{std::move(value)}, fNumber(number), fMapMissingTo(mapMissingTo) {}

void NormDiscreteExpression::Evaluate(const ScoreDictVar& source, const DerivedValue& value,
                                      DerivedValue& result) const {
    switch (value.state) {
        case DerivedValue::kInvalid:
            result.state = DerivedValue::kInvalid;
            break;
        case DerivedValue::kNumber:
            SetNumber(result, fNumber && *fNumber == value.number ? 1.0 : 0.0);
            break;
        case DerivedValue::kText:
            SetNumber(result, fEncodedValues.front() == value.text ? 1.0 : 0.0);
            break;
        case DerivedValue::kMissing:
            const std::string* registered = source.GetVarStats()->GetEncodedMissingReplacement(fEncodedValues.front());
            SetNumberOrMissing(result, registered && !fMapMissingTo ? ParseNumber(*registered) : fMapMissingTo);
            break;
    }
}

}  // namespace KwBrevix_930
