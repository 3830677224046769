// Reads the derived fields of a PMML document.
#include "host/transform/transformation_reader.h"

#include <cmath>
#include <optional>
#include <string>

#include <xercesc/dom/DOMElement.hpp>

#include "host/BXErrorFormater.h"
#include "host/BXException.h"
#include "host/BaseTranslator.h"
#include "host/DOMElemUtility.h"
#include "host/PMMLModelTags.h"
#include "host/ScoreDictionary.h"
#include "host/dictionary_reader.h"
#include "host/number_text.h"
#include "host/transform/TransformationDictionary.h"
#include "host/transform/expressions.h"

namespace KwBrevix_930 {

namespace {

using Tags = PMMLModelTags;
using xercesc::DOMElement;

[[noreturn]] void Refuse(int code, const std::string& first, const std::string& second, const std::string& third = {}) {
    BXException error(&gErrorFormater);
    error.PutErrorMessage(code, first.c_str(), second.c_str(), third.c_str());
    throw error;
}

std::optional<double> ReadOptionalNumber(const DOMElemUtility& reader, const DOMElement& element,
                                         const char* attribute) {
    if (!reader.HasAttribute(&element, attribute))
        return std::nullopt;
    return reader.GetAttributeToDouble(&element, attribute, true);
}

// What a derived field may read.
struct KnownFields {
    const ScoreDictionary& raw;
    const TransformationDictionary& derived;

    const ScoreDictVar* Find(const std::string& name) const {
        const ScoreDictVar* variable = raw.FindVar(name);
        return variable ? variable : derived.FindVar(name);
    }
};

// The replacement is one of the derived field's data type.
std::unique_ptr<Expression> ReadFieldRef(const DOMElemUtility& reader, const DOMElement& element,
                                         DictVar::DataType type, const std::string& field) {
    if (!reader.HasAttribute(&element, Tags::XML_ATT_MISSREPVALUE))
        return std::make_unique<FieldRefExpression>(field, std::nullopt);
    const std::string text = reader.GetAttributeToString(&element, Tags::XML_ATT_MISSREPVALUE, true);
    if (type == DictVar::kString)
        return std::make_unique<FieldRefExpression>(field, DerivedValue{DerivedValue::kText, 0.0, text});
    const auto number = DictVar(std::string(), type, DictVar::kContinuous).ParseText(text);
    if (!number)
        Refuse(260153, text, Tags::XML_ATT_MISSREPVALUE, Tags::XML_ELE_FIELDREF);
    return std::make_unique<FieldRefExpression>(field, DerivedValue{DerivedValue::kNumber, *number, {}});
}

[[noreturn]] void RefuseText(const DOMElemUtility& reader, const DOMElement& element, const char* attribute) {
    Refuse(260153, reader.GetAttributeToString(&element, attribute, true), attribute, reader.GetElementName(&element));
}

double ReadFinite(const DOMElemUtility& reader, const DOMElement& element, const char* attribute) {
    const double number = reader.GetAttributeToDouble(&element, attribute, true);
    if (!std::isfinite(number))
        RefuseText(reader, element, attribute);
    return number;
}

NormContinuousExpression::Outliers ReadOutliers(const DOMElemUtility& reader, const DOMElement& element) {
    if (!reader.HasAttribute(&element, Tags::XML_ATT_OUTLIERS))
        return NormContinuousExpression::kAsIs;
    const std::string text = reader.GetAttributeToString(&element, Tags::XML_ATT_OUTLIERS, true);
    if (text == "asIs")
        return NormContinuousExpression::kAsIs;
    if (text == "asMissingValues")
        return NormContinuousExpression::kAsMissingValues;
    if (text != "asExtremeValues")
        Refuse(260153, text, Tags::XML_ATT_OUTLIERS, Tags::XML_ELE_NORMCONTINUOUS);
    return NormContinuousExpression::kAsExtremeValues;
}

std::unique_ptr<Expression> ReadNormContinuous(const DOMElemUtility& reader, const DOMElement& element,
                                               const std::string& field) {
    std::vector<NormContinuousExpression::Point> points;
    for (const DOMElement* child = BaseTranslator::GetFirstChildElt(&element); child;
         child = BaseTranslator::GetNextSiblingElt(child)) {
        if (!BaseTranslator::HasTag(child, Tags::XML_ELE_LINEARNORM))
            continue;
        const double original = ReadFinite(reader, *child, Tags::XML_ATT_ORIG);
        if (!points.empty() && original <= points.back().original)
            RefuseText(reader, *child, Tags::XML_ATT_ORIG);
        points.push_back({original, ReadFinite(reader, *child, Tags::XML_ATT_NORM)});
    }
    if (points.size() < 2)
        Refuse(260115, Tags::XML_ELE_LINEARNORM, Tags::XML_ELE_NORMCONTINUOUS);
    return std::make_unique<NormContinuousExpression>(field, std::move(points), ReadOutliers(reader, element),
                                                      ReadOptionalNumber(reader, element, Tags::XML_ATT_MISSREPVALUE));
}

std::unique_ptr<Expression> ReadNormDiscrete(const DOMElemUtility& reader, const DOMElement& element,
                                             const ScoreDictVar& source) {
    const std::string value = reader.GetAttributeToString(&element, Tags::XML_ATT_VALUE, true);
    const auto* variable = dynamic_cast<const DictVar*>(&source);
    const auto number = variable ? variable->ParseText(value) : ParseNumber(value);
    return std::make_unique<NormDiscreteExpression>(source.GetName(), value, number,
                                                    ReadOptionalNumber(reader, element, Tags::XML_ATT_MISSREPVALUE));
}

std::unique_ptr<Expression> ReadExpression(const DOMElemUtility& reader, const DOMElement& element,
                                           DictVar::DataType type, const KnownFields& fields) {
    const bool isFieldRef = BaseTranslator::HasTag(&element, Tags::XML_ELE_FIELDREF);
    const bool isNormContinuous = BaseTranslator::HasTag(&element, Tags::XML_ELE_NORMCONTINUOUS);
    if (!isFieldRef && !isNormContinuous && !BaseTranslator::HasTag(&element, Tags::XML_ELE_NORMDISCRETE))
        Refuse(260102, reader.GetElementName(&element), Tags::XML_ELE_DERIVEDFIELD);
    const std::string field = reader.GetAttributeToString(&element, Tags::XML_ATT_SVM_FIELD, true);
    const ScoreDictVar* source = fields.Find(field);
    if (!source)
        Refuse(260103, "field", field, Tags::XML_ELE_DERIVEDFIELD);
    if (isFieldRef)
        return ReadFieldRef(reader, element, type, field);
    if (isNormContinuous)
        return ReadNormContinuous(reader, element, field);
    return ReadNormDiscrete(reader, element, *source);
}

// The first child that is an expression: what only describes the field is passed over.
const DOMElement* FindExpression(const DOMElement& derivedField) {
    const DOMElement* child = BaseTranslator::GetFirstChildElt(&derivedField);
    while (child && (BaseTranslator::HasTag(child, Tags::XML_ELE_EXTENSION) ||
                     BaseTranslator::HasTag(child, Tags::XML_ELE_VALUE)))
        child = BaseTranslator::GetNextSiblingElt(child);
    if (!child)
        Refuse(260115, "an expression", Tags::XML_ELE_DERIVEDFIELD);
    return child;
}

std::unique_ptr<TransformVar> ReadDerivedField(const DOMElemUtility& reader, const DOMElement& element,
                                               const KnownFields& fields) {
    const std::string name = reader.GetAttributeToString(&element, Tags::XML_ATT_NAME, true);
    if (name.empty() || fields.Find(name))
        RefuseText(reader, element, Tags::XML_ATT_NAME);
    const DictVar::DataType type = ReadDataType(reader, element);
    auto expression = ReadExpression(reader, *FindExpression(element), type, fields);
    return std::make_unique<TransformVar>(name, type, ReadKind(reader, element, type), std::move(expression));
}

}  // namespace

std::unique_ptr<TransformationDictionary> ReadTransformations(const DOMElemUtility& reader, const DOMElement& element,
                                                              const ScoreDictionary& dictionary) {
    auto transformations = std::make_unique<TransformationDictionary>();
    for (const DOMElement* child = BaseTranslator::GetFirstChildElt(&element); child;
         child = BaseTranslator::GetNextSiblingElt(child)) {
        if (BaseTranslator::HasTag(child, Tags::XML_ELE_EXTENSION))
            continue;
        if (!BaseTranslator::HasTag(child, Tags::XML_ELE_DERIVEDFIELD))
            Refuse(260102, reader.GetElementName(child), reader.GetElementName(&element));
        transformations->AddVar(ReadDerivedField(reader, *child, {dictionary, *transformations}));
    }
    return transformations;
}

}  // namespace KwBrevix_930
