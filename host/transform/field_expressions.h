// The expressions that read one field: FieldRef, NormContinuous, NormDiscrete and Discretize.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/transform/Expression.h"
#include "host/transform/FieldScope.h"
#include "host/transform/Literal.h"

namespace KwBrevix_930 {

class FieldExpression : public Expression {
public:
    void AppendSlots(std::vector<std::size_t>& slots) const override { slots.push_back(fSlot); }
    const std::string& GetFieldName() const override { return fName; }

protected:
    FieldExpression(FieldType type, std::size_t slot, std::string name)
        : Expression(type), fSlot(slot), fName(std::move(name)) {}

    const DerivedValue& Source(std::span<const DerivedValue> slots) const { return slots[fSlot]; }

private:
    std::size_t fSlot;
    std::string fName;
};

/// The value of a field as it is, cast to a type; a missing one becomes mapMissingTo where that is given.
class FieldRefExpression : public FieldExpression {
public:
    FieldRefExpression(const Field& field, std::string name, FieldType type, std::optional<Literal> mapMissingTo);
    void Evaluate(std::span<const DerivedValue> slots, DerivedValue& result) const override;

private:
    FieldType fSourceType;
    bool fNeedsCast;
    std::optional<Literal> fMapMissingTo;
};

/// A piecewise linear map through points (original, normalised), ascending in the original.
class NormContinuousExpression : public FieldExpression {
public:
    enum Outliers { kAsIs, kAsMissingValues, kAsExtremeValues };

    struct Point {
        double original;
        double normalised;
    };

    /// points: two or more, strictly ascending. outliers: what becomes of a value outside the points; as it is, the
    /// nearest line goes on.
    NormContinuousExpression(const Field& field, std::string name, std::vector<Point> points, Outliers outliers,
                             std::optional<double> mapMissingTo);
    void Evaluate(std::span<const DerivedValue> slots, DerivedValue& result) const override;

private:
    std::vector<Point> fPoints;
    Outliers fOutliers;
    std::optional<double> fMapMissingTo;
};

/// 1.0 where the field has one certain value, otherwise 0.0. A missing field becomes mapMissingTo where that is given,
/// or what the source variable has registered for the value.
class NormDiscreteExpression : public FieldExpression {
public:
    /// number: the value as a number of the field's data type; none where it is no such number.
    NormDiscreteExpression(const Field& field, std::string name, std::string value, std::optional<double> number,
                           std::optional<double> mapMissingTo);
    void Evaluate(std::span<const DerivedValue> slots, DerivedValue& result) const override;
    const std::vector<std::string>& GetAllEncodedValues() const override { return fEncodedValues; }

private:
    void GiveForMissing(const DerivedValue& source, DerivedValue& result) const;

    std::vector<std::string> fEncodedValues;
    std::optional<double> fNumber;
    std::optional<double> fMapMissingTo;
};

}  // namespace KwBrevix_930
