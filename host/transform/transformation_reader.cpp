// Reads the derived fields of a PMML document.
#include "host/transform/transformation_reader.h"

#include <optional>
#include <string>
#include <vector>

#include <xercesc/dom/DOMElement.hpp>

#include "host/BXException.h"
#include "host/BaseTranslator.h"
#include "host/DOMElemUtility.h"
#include "host/PMMLModelTags.h"
#include "host/ScoreDictionary.h"
#include "host/dictionary_reader.h"
#include "host/refusal.h"
#include "host/transform/FieldScope.h"
#include "host/transform/FunctionTable.h"
#include "host/transform/TransformationDictionary.h"
#include "host/transform/expression_reader.h"

namespace KwBrevix_930 {

namespace {

using Tags = PMMLModelTags;
using xercesc::DOMElement;

// The raw fields, and the derived ones beside them.
class DictionaryScope : public FieldScope {
public:
    DictionaryScope(const ScoreDictionary& raw, TransformationDictionary& derived) : fRaw(raw), fDerived(derived) {}

    std::optional<Field> Find(const std::string& name) override {
        if (const ScoreDictVar* variable = fRaw.FindVar(name))
            return Field{fDerived.AddRawField(name), TypeOf(*variable), variable->GetKind(), variable};
        if (const TransformVar* variable = fDerived.FindVar(name))
            return Field{variable->GetSlot(), *variable->GetFieldType(), variable->GetKind(), variable};
        return std::nullopt;
    }

private:
    const ScoreDictionary& fRaw;
    TransformationDictionary& fDerived;
};

FieldType ReadFieldType(const DOMElemUtility& reader, const DOMElement& element) {
    const DictVar::DataType storage = ReadDataType(reader, element);
    const auto type = ParseFieldType(reader.GetAttributeToString(&element, Tags::XML_ATT_DATATYPE, false));
    if (type)
        return *type;
    return {storage == DictVar::kString ? FieldType::kString : FieldType::kDouble};
}

void DeclareUnplaced(const DOMElemUtility& reader, const DOMElement& element, const ScoreDictionary& dictionary,
                     TransformationDictionary& transformations) {
    const std::string name = reader.GetAttributeToString(&element, Tags::XML_ATT_NAME, true);
    const FieldType type = ReadFieldType(reader, element);
    const auto kind = ReadKind(reader, element, type.GetStorage());
    if (name.empty() || dictionary.FindVar(name) ||
        !transformations.AddVar(std::make_unique<TransformVar>(name, type, kind)))
        RefuseAttribute(reader, element, Tags::XML_ATT_NAME);
}

void Declare(const DOMElemUtility& reader, const DOMElement& element, const ScoreDictionary& dictionary,
             TransformationDictionary& transformations) {
    try {
        if (!BaseTranslator::HasTag(&element, Tags::XML_ELE_DERIVEDFIELD))
            Refuse(260102, reader.GetElementName(&element),
                   reader.GetElementName(static_cast<const DOMElement*>(element.getParentNode())));
        DeclareUnplaced(reader, element, dictionary, transformations);
    } catch (BXException& error) {
        PutPlace(error, reader, element, element);
        throw;
    }
}

void ReadContent(const DOMElemUtility& reader, const DOMElement& element, FieldScope& scope, FunctionTable& functions,
                 TransformVar& variable) {
    variable.SetExpression(
        ReadExpression(reader, FindExpression(reader, element), *variable.GetFieldType(), scope, functions));
}

std::string ChainText(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names)
        text += (text.empty() ? "'" : " -> '") + name + "'";
    return text;
}

// names: as Arrange gives them; field: the first one's.
[[noreturn]] void RefuseCircle(const DOMElemUtility& reader, const std::vector<std::string>& names,
                               const DOMElement& field) {
    try {
        Refuse(260105, "derived fields", ChainText(names));
    } catch (BXException& error) {
        PutPlace(error, reader, field, field);
        throw;
    }
}

}  // namespace

// Declared first, because fields may stand in any order.
std::unique_ptr<TransformationDictionary> ReadTransformations(const DOMElemUtility& reader, const DOMElement& element,
                                                              const ScoreDictionary& dictionary) {
    auto transformations = std::make_unique<TransformationDictionary>();
    FunctionTable functions;
    functions.AddFunctionsFor(reader, element);
    std::vector<const DOMElement*> fields;
    for (const DOMElement* child = BaseTranslator::GetFirstChildElt(&element); child;
         child = BaseTranslator::GetNextSiblingElt(child)) {
        if (BaseTranslator::HasTag(child, Tags::XML_ELE_EXTENSION) || BaseTranslator::HasTag(child, "DefineFunction"))
            continue;
        Declare(reader, *child, dictionary, *transformations);
        fields.push_back(child);
    }
    DictionaryScope scope(dictionary, *transformations);
    for (std::size_t i = 0; i < fields.size(); ++i)
        ReadContent(reader, *fields[i], scope, functions, *transformations->GetVars()[i]);
    const auto circle = transformations->Arrange();
    for (std::size_t i = 0; i < fields.size() && !circle.empty(); ++i) {
        if (transformations->GetVars()[i]->GetName() == circle.front())
            RefuseCircle(reader, circle, *fields[i]);
    }
    return transformations;
}

}  // namespace KwBrevix_930
