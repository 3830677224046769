// The expressions that derived fields are built from. Each reads one field.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/transform/Expression.h"

namespace KwBrevix_930 {

/// The value of a field as it is; a missing one becomes mapMissingTo where that is given.
class FieldRefExpression : public Expression {
public:
    FieldRefExpression(std::string field, std::optional<DerivedValue> mapMissingTo);
    void Evaluate(const ScoreDictVar& source, const DerivedValue& value, DerivedValue& result) const override;

private:
    std::optional<DerivedValue> fMapMissingTo;
};

/// A piecewise linear map through points (original, normalised), ascending in the original.
class NormContinuousExpression : public Expression {
public:
    enum Outliers { kAsIs, kAsMissingValues, kAsExtremeValues };

    struct Point {
        double original;
        double normalised;
    };

    /// points: two or more, strictly ascending. outliers: what becomes of a value outside the points; as it is, the
    /// nearest line goes on.
    NormContinuousExpression(std::string field, std::vector<Point> points, Outliers outliers,
                             std::optional<double> mapMissingTo);
    void Evaluate(const ScoreDictVar& source, const DerivedValue& value, DerivedValue& result) const override;

private:
    std::vector<Point> fPoints;
    Outliers fOutliers;
    std::optional<double> fMapMissingTo;
};

/// 1.0 where the field has one certain value, otherwise 0.0. A missing field becomes mapMissingTo where that is given,
/// or what the source variable has registered for the value.
class NormDiscreteExpression : public Expression {
public:
    /// number: the value as a number of the field's data type; none where it is no such number.
    NormDiscreteExpression(std::string field, std::string value, std::optional<double> number,
                           std::optional<double> mapMissingTo);
    void Evaluate(const ScoreDictVar& source, const DerivedValue& value, DerivedValue& result) const override;
    const std::vector<std::string>& GetAllEncodedValues() const override { return fEncodedValues; }

private:
    std::vector<std::string> fEncodedValues;
    std::optional<double> fNumber;
    std::optional<double> fMapMissingTo;
};

}  // namespace KwBrevix_930
