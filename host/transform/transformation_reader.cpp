// Reads the derived fields of a PMML document.
#include "host/transform/transformation_reader.h"

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

std::unique_ptr<Expression> ReadFieldRef(const DOMElemUtility& reader, const DOMElement& element,
                                         DictVar::DataType type, const std::string& field) {
    std::optional<DerivedValue> replacement;
    if (reader.HasAttribute(&element, Tags::XML_ATT_MISSREPVALUE)) {
        replacement.emplace();
        if (type == DictVar::kString) {
            replacement->state = DerivedValue::kText;
            replacement->text = reader.GetAttributeToString(&element, Tags::XML_ATT_MISSREPVALUE, true);
        } else {
            replacement->state = DerivedValue::kNumber;
            replacement->number = reader.GetAttributeToDouble(&element, Tags::XML_ATT_MISSREPVALUE, true);
        }
    }
    return std::make_unique<FieldRefExpression>(field, std::move(replacement));
}

NormContinuousExpression::Outliers ReadOutliers(const DOMElemUtility& reader, const DOMElement& element) {
    const std::string text = reader.GetAttributeToString(&element, Tags::XML_ATT_OUTLIERS, false);
    if (text.empty() || text == "asIs")
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
        const double original = reader.GetAttributeToDouble(child, Tags::XML_ATT_ORIG, true);
        if (!points.empty() && !(original > points.back().original))
            Refuse(260153, NumberText(original), Tags::XML_ATT_ORIG, Tags::XML_ELE_LINEARNORM);
        points.push_back({original, reader.GetAttributeToDouble(child, Tags::XML_ATT_NORM, true)});
    }
    if (points.size() < 2)
        Refuse(260115, Tags::XML_ELE_LINEARNORM, Tags::XML_ELE_NORMCONTINUOUS);
    return std::make_unique<NormContinuousExpression>(field, std::move(points), ReadOutliers(reader, element),
                                                      ReadOptionalNumber(reader, element, Tags::XML_ATT_MISSREPVALUE));
}

std::unique_ptr<Expression> ReadExpression(const DOMElemUtility& reader, const DOMElement& element,
                                           DictVar::DataType type) {
    const bool isFieldRef = BaseTranslator::HasTag(&element, Tags::XML_ELE_FIELDREF);
    const bool isNormContinuous = BaseTranslator::HasTag(&element, Tags::XML_ELE_NORMCONTINUOUS);
    if (!isFieldRef && !isNormContinuous && !BaseTranslator::HasTag(&element, Tags::XML_ELE_NORMDISCRETE))
        Refuse(260102, reader.GetElementName(&element), Tags::XML_ELE_DERIVEDFIELD);
    const std::string field = reader.GetAttributeToString(&element, Tags::XML_ATT_SVM_FIELD, true);
    if (isFieldRef)
        return ReadFieldRef(reader, element, type, field);
    if (isNormContinuous)
        return ReadNormContinuous(reader, element, field);
    return std::make_unique<NormDiscreteExpression>(field,
                                                    reader.GetAttributeToString(&element, Tags::XML_ATT_VALUE, true),
                                                    ReadOptionalNumber(reader, element, Tags::XML_ATT_MISSREPVALUE));
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

std::unique_ptr<TransformVar> ReadDerivedField(const DOMElemUtility& reader, const DOMElement& element) {
    const std::string name = reader.GetAttributeToString(&element, Tags::XML_ATT_NAME, true);
    const DictVar::DataType type = ReadDataType(reader, element);
    auto expression = ReadExpression(reader, *FindExpression(element), type);
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
        auto variable = ReadDerivedField(reader, *child);
        const std::string name = variable->GetName();
        const std::string field = variable->GetFieldName();
        if (!dictionary.FindVar(field) && !transformations->FindVar(field))
            Refuse(260103, "field", field, Tags::XML_ELE_DERIVEDFIELD);
        if (dictionary.FindVar(name) || !transformations->AddVar(std::move(variable)))
            Refuse(260153, name, Tags::XML_ATT_NAME, Tags::XML_ELE_DERIVEDFIELD);
    }
    return transformations;
}

}  // namespace KwBrevix_930
