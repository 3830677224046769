// What a document's Targets element asks for.
#include "host/TargetDeclaration.h"

#include <cmath>

#include <xercesc/dom/DOMElement.hpp>

#include "host/BaseTranslator.h"
#include "host/DOMElemUtility.h"
#include "host/PMMLModelTags.h"
#include "host/number_text.h"
#include "host/refusal.h"
#include "host/transform/cast.h"

namespace KwBrevix_930 {

namespace {

using xercesc::DOMElement;

constexpr const char* kTargetValue = "TargetValue";

std::optional<double> ReadNumber(const DOMElemUtility& reader, const DOMElement& element, const char* attribute) {
    if (!reader.HasAttribute(&element, attribute))
        return std::nullopt;
    const std::string text = reader.GetAttributeToString(&element, attribute, true);
    const auto number = ParseNumber(text);
    if (!number || std::isnan(*number))
        RefuseValue(text, attribute, reader.GetElementName(&element));
    return number;
}

TargetDeclaration::Rounding ReadRounding(const DOMElemUtility& reader, const DOMElement& element) {
    const std::string text = reader.GetAttributeToString(&element, "castInteger", false);
    if (text == "round")
        return TargetDeclaration::kRound;
    if (text == "ceiling")
        return TargetDeclaration::kCeiling;
    if (text == "floor")
        return TargetDeclaration::kFloor;
    if (reader.HasAttribute(&element, "castInteger"))
        RefuseValue(text, "castInteger", PMMLModelTags::XML_ELE_TARGET);
    return TargetDeclaration::kNoRounding;
}

TargetDeclaration::Value ReadValue(const DOMElemUtility& reader, const DOMElement& element) {
    TargetDeclaration::Value value;
    if (reader.HasAttribute(&element, PMMLModelTags::XML_ATT_VALUE))
        value.value = reader.GetAttributeToString(&element, PMMLModelTags::XML_ATT_VALUE, true);
    value.displayValue = reader.GetAttributeToString(&element, "displayValue", false);
    value.priorProbability = ReadNumber(reader, element, "priorProbability");
    value.defaultValue = ReadNumber(reader, element, "defaultValue");
    if (value.priorProbability && !(*value.priorProbability >= 0.0 && *value.priorProbability <= 1.0))
        RefuseValue(NumberText(*value.priorProbability), "priorProbability", kTargetValue);
    return value;
}

}  // namespace

TargetDeclaration TargetDeclaration::Read(const DOMElemUtility& reader, const DOMElement& element) {
    TargetDeclaration target;
    target.fField = reader.GetAttributeToString(&element, PMMLModelTags::XML_ATT_SVM_FIELD, false);
    target.fMin = ReadNumber(reader, element, "min");
    target.fMax = ReadNumber(reader, element, "max");
    if (target.fMin && target.fMax && *target.fMin > *target.fMax)
        RefuseValue(NumberText(*target.fMin), "min", PMMLModelTags::XML_ELE_TARGET);
    target.fFactor = ReadNumber(reader, element, "rescaleFactor").value_or(1.0);
    target.fConstant = ReadNumber(reader, element, "rescaleConstant").value_or(0.0);
    target.fRounding = ReadRounding(reader, element);
    for (const DOMElement* child = BaseTranslator::GetFirstChildElt(&element); child;
         child = BaseTranslator::GetNextSiblingElt(child)) {
        if (BaseTranslator::HasTag(child, kTargetValue))
            target.fValues.push_back(ReadValue(reader, *child));
    }
    return target;
}

bool TargetDeclaration::ChangesNumbers() const {
    return fMin || fMax || fFactor != 1.0 || fConstant != 0.0 || fRounding != kNoRounding;
}

double TargetDeclaration::Transform(double raw) const {
    double number = raw;
    if (fMin && number < *fMin)
        number = *fMin;
    if (fMax && number > *fMax)
        number = *fMax;
    // What changes nothing is left out, so that it changes no sign of a zero and makes no NaN of an infinity.
    if (fFactor != 1.0)
        number *= fFactor;
    if (fConstant != 0.0)
        number += fConstant;
    switch (fRounding) {
        case kNoRounding:
            return number;
        case kRound:
            return RoundHalfUp(number);
        case kCeiling:
            return std::ceil(number);
        case kFloor:
            return std::floor(number);
    }
    return number;
}

double TargetDeclaration::TransformDeviation(double raw) const {
    return raw * std::abs(fFactor);
}

}  // namespace KwBrevix_930
