// Tells a program what the inputs of a model are.
#include "runtime/input_fields.h"

#include <unordered_map>

#include <xercesc/dom/DOMElement.hpp>

#include "host/DictVar.h"
#include "host/PMMLModelTags.h"
#include "host/ScoreDictionary.h"
#include "runtime/ModelDocument.h"

namespace brevix {

namespace {

using KwBrevix_930::DictVar;
using Tags = KwBrevix_930::PMMLModelTags;

std::unordered_map<std::string, std::string> listDataTypes(const ModelDocument& document) {
    std::unordered_map<std::string, std::string> types;
    for (const auto* field : document.findChildren(document.getDataDictionary(), Tags::XML_ELE_DATAFIELD))
        types.emplace(document.getAttribute(*field, Tags::XML_ATT_NAME),
                      document.getAttribute(*field, Tags::XML_ATT_DATATYPE));
    return types;
}

// Where the document names no data type, the kind has told.
std::string typeOf(const KwBrevix_930::ScoreDictVar& variable, const std::string& declared) {
    if (!declared.empty())
        return declared;
    return variable.IsString() ? "string" : "double";
}

void describeRules(const DictVar& variable, InputField& field) {
    static constexpr const char* kTreatments[] = {"returnInvalid", "asIs", "asMissing", "asValue"};
    if (const auto* categories = variable.GetCategories()) {
        for (const auto& category : *categories)
            field.values.push_back(category.name);
    }
    for (const auto& range : variable.GetIntervals())
        field.ranges.push_back({range.left, range.right, range.isLeftClosed, range.isRightClosed});
    if (const auto* replacement = variable.GetVarStats()->GetMissingReplacement())
        field.missingReplacement = replacement->GetString();
    field.invalidTreatment = kTreatments[variable.GetInvalidTreatment()];
}

}  // namespace

std::vector<InputField> describeInputs(const ModelDocument& document, const KwBrevix_930::ScoreDictionary& dictionary,
                                       const std::vector<std::string>& names) {
    static constexpr const char* kKinds[] = {"", "continuous", "ordinal", "categorical"};
    const auto types = listDataTypes(document);
    std::vector<InputField> fields;
    for (const std::string& name : names) {
        const auto& variable = dynamic_cast<const DictVar&>(*dictionary.FindVar(name));
        InputField field;
        field.name = name;
        const auto type = types.find(name);
        field.type = typeOf(variable, type == types.end() ? "" : type->second);
        field.kind = kKinds[variable.GetKind()];
        describeRules(variable, field);
        fields.push_back(std::move(field));
    }
    return fields;
}

std::string describeType(const ModelDocument& document, const KwBrevix_930::ScoreDictVar& variable) {
    const auto types = listDataTypes(document);
    const auto type = types.find(variable.GetName());
    return typeOf(variable, type == types.end() ? "" : type->second);
}

}  // namespace brevix
