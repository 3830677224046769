// Reads the expressions of a PMML document: constants, and what reads a single field.
#include "host/transform/expression_reader.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <xercesc/dom/DOMElement.hpp>

#include "host/BXErrorFormater.h"
#include "host/BXException.h"
#include "host/BaseTranslator.h"
#include "host/DocumentParser.h"
#include "host/PMMLModelTags.h"
#include "host/refusal.h"
#include "host/transform/CastExpression.h"
#include "host/transform/ExpressionReader.h"
#include "host/transform/Literal.h"
#include "host/transform/cast.h"
#include "host/transform/field_expressions.h"

namespace KwBrevix_930 {

namespace {

using Tags = PMMLModelTags;
using xercesc::DOMElement;

double ReadFinite(const DOMElemUtility& reader, const DOMElement& element, const char* attribute) {
    const double number = reader.GetAttributeToDouble(&element, attribute, true);
    if (!std::isfinite(number))
        RefuseAttribute(reader, element, attribute);
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
        RefuseAttribute(reader, element, Tags::XML_ATT_OUTLIERS);
    return NormContinuousExpression::kAsExtremeValues;
}

std::vector<NormContinuousExpression::Point> ReadPoints(const DOMElemUtility& reader, const DOMElement& element) {
    std::vector<NormContinuousExpression::Point> points;
    for (const DOMElement* child = BaseTranslator::GetFirstChildElt(&element); child;
         child = BaseTranslator::GetNextSiblingElt(child)) {
        if (!BaseTranslator::HasTag(child, Tags::XML_ELE_LINEARNORM))
            continue;
        const double original = ReadFinite(reader, *child, Tags::XML_ATT_ORIG);
        if (!points.empty() && original <= points.back().original)
            RefuseAttribute(reader, *child, Tags::XML_ATT_ORIG);
        points.push_back({original, ReadFinite(reader, *child, Tags::XML_ATT_NORM)});
    }
    if (points.size() < 2)
        Refuse(260115, Tags::XML_ELE_LINEARNORM, Tags::XML_ELE_NORMCONTINUOUS);
    return points;
}

std::string ParentName(const DOMElemUtility& reader, const DOMElement& element) {
    return reader.GetElementName(static_cast<const DOMElement*>(element.getParentNode()));
}

}  // namespace

FieldScope::~FieldScope() = default;

std::unique_ptr<Expression> ReadExpression(const DOMElemUtility& reader, const DOMElement& element,
                                           std::optional<FieldType> type, FieldScope& scope, FunctionTable& functions) {
    functions.fCurrent = &element;
    try {
        return ExpressionReader(reader, scope, functions, 0).Read(element, type);
    } catch (BXException& error) {
        PutPlace(error, reader, static_cast<const DOMElement&>(*element.getParentNode()), *functions.fCurrent);
        throw;
    }
}

const DOMElement& FindExpression(const DOMElemUtility& reader, const DOMElement& parent) {
    static constexpr const char* kDescriptions[] = {"Extension", "Value", "ParameterField"};
    const DOMElement* child = BaseTranslator::GetFirstChildElt(&parent);
    const auto isDescription = [&](const char* tag) { return BaseTranslator::HasTag(child, tag); };
    while (child && std::any_of(std::begin(kDescriptions), std::end(kDescriptions), isDescription))
        child = BaseTranslator::GetNextSiblingElt(child);
    if (child)
        return *child;
    BXException error(&gErrorFormater);
    error.PutErrorMessage(260115, "an expression", reader.GetElementName(&parent).c_str());
    PutPlace(error, reader, parent, parent);
    throw error;
}

std::unique_ptr<Expression> ExpressionReader::Read(const DOMElement& element, std::optional<FieldType> type) {
    const DOMElement* const outer = std::exchange(fFunctions.fCurrent, &element);
    if (++fDepth > kExpressionDepthLimit)
        RefuseDepth();
    fDeepest = std::max(fDeepest, fDepth);
    ++fSteps;
    auto expression = ReadUncast(element, type);
    --fDepth;
    if (type && *type != expression->GetType()) {
        const std::string given = expression->GetType().GetName();
        expression = CastTo(*type, std::move(expression));
        if (!expression)
            Refuse(260106, fReader.GetElementName(&element), given, type->GetName());
    }
    fFunctions.fCurrent = outer;
    return expression;
}

std::unique_ptr<Expression> ExpressionReader::ReadUncast(const DOMElement& element, std::optional<FieldType> type) {
    if (BaseTranslator::HasTag(&element, Tags::XML_ELE_FIELDREF))
        return ReadFieldRef(element, type);
    if (BaseTranslator::HasTag(&element, "Constant"))
        return ReadConstant(element);
    if (BaseTranslator::HasTag(&element, Tags::XML_ELE_NORMCONTINUOUS))
        return ReadNormContinuous(element);
    if (BaseTranslator::HasTag(&element, Tags::XML_ELE_NORMDISCRETE))
        return ReadNormDiscrete(element);
    if (BaseTranslator::HasTag(&element, "Discretize"))
        return ReadDiscretize(element, type);
    if (BaseTranslator::HasTag(&element, "MapValues"))
        return ReadMapValues(element, type);
    if (BaseTranslator::HasTag(&element, "Apply"))
        return ReadApply(element);
    Refuse(260102, fReader.GetElementName(&element), ParentName(fReader, element));
}

// A replacement is one of the type that is asked for, not of the field's.
std::unique_ptr<Expression> ExpressionReader::ReadFieldRef(const DOMElement& element, std::optional<FieldType> type) {
    const std::string name = ReadFieldName(element);
    const Field field = FindField(element, name);
    const FieldType result = type.value_or(field.type);
    return std::make_unique<FieldRefExpression>(field, name, result,
                                                ReadOptionalLiteral(element, Tags::XML_ATT_MISSREPVALUE, result));
}

std::unique_ptr<Expression> ExpressionReader::ReadConstant(const DOMElement& element) {
    const std::string text = fReader.GetTranscoder().ToNarrow(element.getTextContent());
    const auto type = ReadOptionalType(element);
    const std::string missing = fReader.GetAttributeToString(&element, "missing", false);
    const bool isMissing = missing == "true" || missing == "1";
    std::optional<Literal> literal = MakeUntypedLiteral(text);
    if (isMissing)
        literal = Literal{type.value_or(FieldType{}), type.has_value(), true, 0.0, {}};
    else if (type)
        literal = MakeLiteral(*type, text);
    if (!literal)
        Refuse(260106, "the text '" + text + "' of Constant", FieldType{FieldType::kString}.GetName(), type->GetName());
    return std::make_unique<ConstantExpression>(std::move(*literal));
}

std::unique_ptr<Expression> ExpressionReader::ReadNormContinuous(const DOMElement& element) {
    const std::string name = ReadFieldName(element);
    const Field field = FindField(element, name);
    return std::make_unique<NormContinuousExpression>(field, name, ReadPoints(fReader, element),
                                                      ReadOutliers(fReader, element),
                                                      ReadOptionalNumber(element, Tags::XML_ATT_MISSREPVALUE));
}

std::unique_ptr<Expression> ExpressionReader::ReadNormDiscrete(const DOMElement& element) {
    const std::string name = ReadFieldName(element);
    const Field field = FindField(element, name);
    const std::string value = fReader.GetAttributeToString(&element, Tags::XML_ATT_VALUE, true);
    if (fReader.HasAttribute(&element, "method") &&
        fReader.GetAttributeToString(&element, "method", true) != "indicator")
        RefuseAttribute(fReader, element, "method");
    // Not rounded: a value that is no whole number is no value of an integer field.
    const FieldType type = field.type.code == FieldType::kInteger ? FieldType{FieldType::kDouble} : field.type;
    const auto number = field.type.IsText() ? std::nullopt : ParseNumberOfType(type, value);
    return std::make_unique<NormDiscreteExpression>(field, name, value, number,
                                                    ReadOptionalNumber(element, Tags::XML_ATT_MISSREPVALUE));
}

std::string ExpressionReader::ReadFieldName(const DOMElement& element) const {
    return fReader.GetAttributeToString(&element, Tags::XML_ATT_SVM_FIELD, true);
}

Field ExpressionReader::FindField(const DOMElement& element, const std::string& name) {
    const auto field = fScope.Find(name);
    if (!field) {
        fFunctions.fCurrent = &element;
        Refuse(260103, "field", name, fReader.GetElementName(&element));
    }
    return *field;
}

std::optional<double> ExpressionReader::ReadOptionalNumber(const DOMElement& element, const char* attribute) const {
    if (!fReader.HasAttribute(&element, attribute))
        return std::nullopt;
    return fReader.GetAttributeToDouble(&element, attribute, true);
}

std::optional<Literal> ExpressionReader::ReadOptionalLiteral(const DOMElement& element, const char* attribute,
                                                             FieldType type) const {
    if (!fReader.HasAttribute(&element, attribute))
        return std::nullopt;
    auto literal = MakeLiteral(type, fReader.GetAttributeToString(&element, attribute, true));
    if (!literal)
        RefuseAttribute(fReader, element, attribute);
    return literal;
}

std::optional<FieldType> ExpressionReader::ReadOptionalType(const DOMElement& element) const {
    if (!fReader.HasAttribute(&element, Tags::XML_ATT_DATATYPE))
        return std::nullopt;
    const auto type = ParseFieldType(fReader.GetAttributeToString(&element, Tags::XML_ATT_DATATYPE, true));
    if (!type)
        RefuseAttribute(fReader, element, Tags::XML_ATT_DATATYPE);
    return type;
}

}  // namespace KwBrevix_930
