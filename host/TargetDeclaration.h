// What a document's Targets element asks for: how raw predictions become those of the target.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <xercesc/util/XercesDefs.hpp>

#include "host/Export.h"

XERCES_CPP_NAMESPACE_BEGIN
class DOMElement;
XERCES_CPP_NAMESPACE_END

namespace KwBrevix_930 {

class DOMElemUtility;

/// One Target element. Declared only: the host applies it when a case has been scored.
class BREVIX_HOST_API TargetDeclaration {
public:
    enum Rounding { kNoRounding, kRound, kCeiling, kFloor };

    /// One TargetValue element: of a category, or of a continuous target as a whole.
    struct Value {
        std::optional<std::string> value;
        std::string displayValue;
        std::optional<double> priorProbability;
        std::optional<double> defaultValue;
    };

    /// Reads a Target element.
    /// Errors: BXException 260153 (value, attribute, element) for a text that its attribute does not allow, for a min
    /// that is greater than the max, and for a probability outside 0 to 1.
    static TargetDeclaration Read(const DOMElemUtility& reader, const xercesc::DOMElement& element);

    /// Returns: the name of the field; empty where it is not given, which means the only target.
    const std::string& GetField() const { return fField; }
    const std::vector<Value>& GetValues() const { return fValues; }
    /// Returns: whether Transform changes any number.
    bool ChangesNumbers() const;

    /// A raw prediction as one of the target: kept between min and max, then multiplied by the rescaleFactor, then
    /// moved by the rescaleConstant, then made a whole number; halves are rounded towards plus infinity.
    /// Source: PMML 4.4, Targets.
    double Transform(double raw) const;
    /// A standard deviation of raw predictions as one of the target: only the factor changes it.
    double TransformDeviation(double raw) const;

private:
    std::string fField;
    std::optional<double> fMin;
    std::optional<double> fMax;
    double fFactor = 1.0;
    double fConstant = 0.0;
    Rounding fRounding = kNoRounding;
    std::vector<Value> fValues;
};

}  // namespace KwBrevix_930
