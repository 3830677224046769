// Reads the fields of a PMML document.
#include "host/dictionary_reader.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <string>
#include <string_view>

#include <xercesc/dom/DOMElement.hpp>

#include "host/BaseDictionary.h"
#include "host/BaseTranslator.h"
#include "host/DOMElemUtility.h"
#include "host/PMMLModelTags.h"
#include "host/refusal.h"
#include "host/transform/FieldType.h"

namespace KwBrevix_930 {

namespace {

using Tags = PMMLModelTags;
using xercesc::DOMElement;
using xercesc::DOMNode;

[[noreturn]] void RefuseField(const char* problem, const char* element, const std::string& field) {
    Refuse(260111, element, field, problem);
}

// The place of an attribute's value in a list of allowed ones.
template <std::size_t N>
std::size_t ReadChoice(const DOMElemUtility& reader, const DOMElement& element, const char* attribute,
                       const std::string_view (&choices)[N]) {
    const std::string value = reader.GetAttributeToString(&element, attribute, true);
    const auto found = std::find(std::begin(choices), std::end(choices), value);
    if (found == std::end(choices))
        RefuseValue(value, attribute, reader.GetElementName(&element));
    return static_cast<std::size_t>(found - choices);
}

void ReadValue(const DOMElemUtility& reader, const DOMElement& element, DictVar& variable) {
    static constexpr std::string_view kProperties[] = {"valid", "invalid", "missing"};
    const bool hasProperty = reader.HasAttribute(&element, Tags::XML_ATT_PROPERTY);
    const std::size_t property = hasProperty ? ReadChoice(reader, element, Tags::XML_ATT_PROPERTY, kProperties) : 0;
    const std::string text = reader.GetAttributeToString(&element, Tags::XML_ATT_VALUE, true);
    if (property == 1)
        variable.AddInvalidValue(text);
    else if (property == 2)
        variable.AddMissingValue(text);
    else if (!variable.AddCategory(text, reader.GetAttributeToString(&element, "displayValue", false)))
        RefuseValue(text, Tags::XML_ATT_VALUE, Tags::XML_ELE_VALUE);
}

std::optional<double> ReadMargin(const DOMElemUtility& reader, const DOMElement& element, const char* attribute) {
    if (!reader.HasAttribute(&element, attribute))
        return std::nullopt;
    return reader.GetAttributeToDouble(&element, attribute, true);
}

bool IsEmpty(const DictVar::Interval& interval) {
    const double left = interval.left.value_or(-std::numeric_limits<double>::infinity());
    const double right = interval.right.value_or(std::numeric_limits<double>::infinity());
    return !(left < right) && !(left == right && interval.Contains(left));
}

void ReadInterval(const DOMElemUtility& reader, const DOMElement& element, DictVar& variable) {
    static constexpr std::string_view kClosures[] = {"closedClosed", "closedOpen", "openClosed", "openOpen"};
    const std::size_t closure = ReadChoice(reader, element, Tags::XML_ATT_CLOSURE, kClosures);
    DictVar::Interval interval;
    interval.left = ReadMargin(reader, element, Tags::XML_ATT_LEFTMARGIN);
    interval.right = ReadMargin(reader, element, Tags::XML_ATT_RIGHTMARGIN);
    interval.isLeftClosed = closure <= 1;
    interval.isRightClosed = closure % 2 == 0;
    if (!interval.left && !interval.right)
        RefuseField("has neither leftMargin nor rightMargin", Tags::XML_ELE_INTERVAL, variable.GetName());
    if (IsEmpty(interval))
        RefuseField("holds no number", Tags::XML_ELE_INTERVAL, variable.GetName());
    variable.AddInterval(interval);
}

// Of several models in a document, the first support vector machine is the one that is read.
const DOMElement* FindMiningSchema(const DOMElemUtility& reader, const DOMNode& dataDictionary) {
    const DOMElement* beside = BaseTranslator::GetFirstChildElt(dataDictionary.getParentNode());
    const DOMElement* firstSchema = nullptr;
    for (; beside; beside = BaseTranslator::GetNextSiblingElt(beside)) {
        const DOMElement* schema = reader.GetChildElemByName(beside, Tags::XML_ELE_MININGSCHEMA, false);
        if (BaseTranslator::HasTag(beside, Tags::XML_ELE_SVMMODEL))
            return schema;
        if (!firstSchema)
            firstSchema = schema;
    }
    return firstSchema;
}

void ReadInvalidTreatment(const DOMElemUtility& reader, const DOMElement& miningField, DictVar& variable) {
    static constexpr std::string_view kTreatments[] = {"returnInvalid", "asIs", "asMissing", "asValue"};
    if (!reader.HasAttribute(&miningField, Tags::XML_ATT_INVALIDTREATMENT))
        return;
    const std::size_t treatment = ReadChoice(reader, miningField, Tags::XML_ATT_INVALIDTREATMENT, kTreatments);
    std::unique_ptr<ScoreValue> replacement;
    if (treatment == DictVar::kAsValue) {
        const std::string text = reader.GetAttributeToString(&miningField, Tags::XML_ATT_INVALIDREPLACEMENT, true);
        replacement = variable.MakeValue(text);
        if (!replacement)
            RefuseValue(text, Tags::XML_ATT_INVALIDREPLACEMENT, Tags::XML_ELE_MININGFIELD);
    }
    variable.SetInvalidTreatment(static_cast<DictVar::InvalidTreatment>(treatment), std::move(replacement));
}

// How the replacement of missing values was found is of no concern; only returnInvalid asks for something.
void ReadMissingTreatment(const DOMElemUtility& reader, const DOMElement& miningField, DictVar& variable) {
    static constexpr std::string_view kTreatments[] = {"asIs",     "asMean",  "asMode",
                                                       "asMedian", "asValue", "returnInvalid"};
    static constexpr const char* kAttribute = "missingValueTreatment";
    if (reader.HasAttribute(&miningField, kAttribute))
        variable.SetMissingIsInvalid(ReadChoice(reader, miningField, kAttribute, kTreatments) == 5);
}

void ReadOutlierTreatment(const DOMElemUtility& reader, const DOMElement& miningField, DictVar& variable) {
    static constexpr std::string_view kTreatments[] = {"asIs", "asMissingValues", "asExtremeValues"};
    if (!reader.HasAttribute(&miningField, Tags::XML_ATT_OUTLIERS))
        return;
    const std::size_t treatment = ReadChoice(reader, miningField, Tags::XML_ATT_OUTLIERS, kTreatments);
    const std::string usage = reader.GetAttributeToString(&miningField, Tags::XML_ATT_MININGFIELD_USAGETYPE, false);
    const bool isTarget = usage == Tags::XML_ATT_MF_FUT_TARGET || usage == Tags::XML_ATT_MF_FUT_PREDICTED;
    if (treatment == DictVar::kOutliersAsIs || variable.GetKind() != DictVar::kContinuous || isTarget)
        return;
    const auto low = ReadMargin(reader, miningField, "lowValue");
    const auto high = ReadMargin(reader, miningField, "highValue");
    if (!low && !high)
        RefuseField("treats outliers but has neither lowValue nor highValue", Tags::XML_ELE_MININGFIELD,
                    variable.GetName());
    if ((low && std::isnan(*low)) || (high && std::isnan(*high)) || (low && high && *low > *high))
        RefuseField("has a lowValue above its highValue", Tags::XML_ELE_MININGFIELD, variable.GetName());
    variable.SetOutlierTreatment(static_cast<DictVar::OutlierTreatment>(treatment), low, high);
}

// The model may read a field as of another kind than the dictionary does.
void OverrideKind(const DOMElemUtility& reader, const DOMElement& miningField, DictVar& variable) {
    if (!reader.HasAttribute(&miningField, Tags::XML_ATT_OPTYPE))
        return;
    const DictVar::Kind kind = ReadKind(reader, miningField, variable.GetDataType());
    if (kind == DictVar::kContinuous && variable.IsString() && variable.GetKind() != kind)
        RefuseField("makes a field of texts continuous", Tags::XML_ELE_MININGFIELD, variable.GetName());
    variable.SetKind(kind);
}

}  // namespace

void ReadTreatment(const DOMElemUtility& reader, const DOMElement& miningField, DictVar& variable) {
    OverrideKind(reader, miningField, variable);
    ReadInvalidTreatment(reader, miningField, variable);
    ReadMissingTreatment(reader, miningField, variable);
    ReadOutlierTreatment(reader, miningField, variable);
}

DictVar::DataType ReadDataType(const DOMElemUtility& reader, const DOMElement& field) {
    // Version 2 of PMML knows no data types of fields: the kind tells then.
    const bool isOldStyle = !reader.HasAttribute(&field, Tags::XML_ATT_DATATYPE);
    if (isOldStyle && reader.HasAttribute(&field, Tags::XML_ATT_OPTYPE))
        return ReadKind(reader, field, DictVar::kString) == DictVar::kContinuous ? DictVar::kNumber : DictVar::kString;
    const std::string type = reader.GetAttributeToString(&field, Tags::XML_ATT_DATATYPE, true);
    const auto fieldType = ParseFieldType(type);
    if (!fieldType)
        RefuseValue(type, Tags::XML_ATT_DATATYPE, reader.GetElementName(&field));
    return fieldType->GetStorage();
}

DictVar::Kind ReadKind(const DOMElemUtility& reader, const DOMElement& field, DictVar::DataType type) {
    static constexpr std::string_view kKinds[] = {"continuous", "ordinal", "categorical"};
    if (!reader.HasAttribute(&field, Tags::XML_ATT_OPTYPE))
        return type == DictVar::kNumber ? DictVar::kContinuous : DictVar::kCategorical;
    return static_cast<DictVar::Kind>(DictVar::kContinuous + ReadChoice(reader, field, Tags::XML_ATT_OPTYPE, kKinds));
}

std::unique_ptr<DictVar> ReadField(const DOMElemUtility& reader, const DOMElement& field) {
    const std::string name = reader.GetAttributeToString(&field, Tags::XML_ATT_NAME, true);
    if (name.empty())
        RefuseValue(name, Tags::XML_ATT_NAME, Tags::XML_ELE_DATAFIELD);
    const DictVar::DataType type = ReadDataType(reader, field);
    auto variable = std::make_unique<DictVar>(name, type, ReadKind(reader, field, type));
    if (const auto fieldType = ParseFieldType(reader.GetAttributeToString(&field, Tags::XML_ATT_DATATYPE, false)))
        variable->SetFieldType(*fieldType);
    for (const DOMElement* child = BaseTranslator::GetFirstChildElt(&field); child;
         child = BaseTranslator::GetNextSiblingElt(child)) {
        if (BaseTranslator::HasTag(child, Tags::XML_ELE_VALUE))
            ReadValue(reader, *child, *variable);
        else if (BaseTranslator::HasTag(child, Tags::XML_ELE_INTERVAL))
            ReadInterval(reader, *child, *variable);
    }
    return variable;
}

std::unique_ptr<BaseDictionary> ReadDataDictionary(const DOMElemUtility& reader, const DOMNode& node) {
    auto dictionary = std::make_unique<BaseDictionary>();
    for (const DOMElement* child = BaseTranslator::GetFirstChildElt(&node); child;
         child = BaseTranslator::GetNextSiblingElt(child)) {
        if (!BaseTranslator::HasTag(child, Tags::XML_ELE_DATAFIELD))
            continue;
        auto variable = ReadField(reader, *child);
        const std::string name = variable->GetName();
        if (!dictionary->AddVar(std::move(variable)))
            RefuseValue(name, Tags::XML_ATT_NAME, Tags::XML_ELE_DATAFIELD);
    }
    return dictionary;
}

void ReadTreatments(const DOMElemUtility& reader, const DOMNode& node, const BaseDictionary& dictionary) {
    const DOMElement* schema = FindMiningSchema(reader, node);
    if (!schema)
        return;
    for (const DOMElement* child = BaseTranslator::GetFirstChildElt(schema); child;
         child = BaseTranslator::GetNextSiblingElt(child)) {
        // A field without a name is a fault that whoever reads the schema itself reports.
        if (!BaseTranslator::HasTag(child, Tags::XML_ELE_MININGFIELD) ||
            !reader.HasAttribute(child, Tags::XML_ATT_MININGFIELD_NAME))
            continue;
        auto* variable = dynamic_cast<DictVar*>(
            dictionary.FindVar(reader.GetAttributeToString(child, Tags::XML_ATT_MININGFIELD_NAME, true)));
        if (variable)
            ReadTreatment(reader, *child, *variable);
    }
}

}  // namespace KwBrevix_930
