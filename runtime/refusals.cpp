// What a document asks for and is not built: refused when it is opened, never ignored.
#include "runtime/refusals.h"

#include <algorithm>
#include <unordered_set>

#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNodeList.hpp>

#include "host/BXErrorFormater.h"
#include "host/BXException.h"
#include "host/BaseTranslator.h"
#include "host/PMMLModelTags.h"
#include "host/ScoreDictVar.h"
#include "host/ScoreDictionary.h"
#include "host/transform/TransformationDictionary.h"
#include "runtime/Error.h"
#include "runtime/ModelDocument.h"
#include "runtime/field_checks.h"

namespace brevix {

namespace {

using KwBrevix_930::BaseTranslator;
using Tags = KwBrevix_930::PMMLModelTags;
using xercesc::DOMElement;

using Complaints = std::vector<std::string>;

// The raw fields that fields of either kind read in the end.
std::unordered_set<std::string> traceSources(const std::vector<std::string>& fields,
                                             const KwBrevix_930::ScoreDictionary& dictionary,
                                             const KwBrevix_930::TransformationDictionary* derived) {
    std::unordered_set<std::string> sources;
    std::vector<std::string> derivedFields;
    for (const std::string& field : fields) {
        if (dictionary.FindVar(field))
            sources.insert(field);
        else
            derivedFields.push_back(field);
    }
    const auto raw = derived ? derived->FindRawFields(derivedFields) : std::vector<std::string>();
    sources.insert(raw.begin(), raw.end());
    return sources;
}

// What a DataField says that would change how a model reads it, and is not built.
void checkDataField(const ModelDocument& document, const DOMElement& field, const KwBrevix_930::ScoreDictVar& variable,
                    Complaints& complaints) {
    const std::string place =
        "DataField " + quoted(document.getAttribute(field, Tags::XML_ATT_NAME)) + document.placeOf(field);
    for (const char* attribute : {"isCyclic", "cyclic"}) {
        const auto text = document.findAttribute(field, attribute);
        if (text && *text != "0")
            complaints.push_back(place + " asks for " + attribute + "=" + quoted(*text));
    }
    if (const auto taxonomy = document.findAttribute(field, "taxonomy"))
        complaints.push_back(place + " asks for taxonomy=" + quoted(*taxonomy));
    if (variable.IsString() && document.findChild(&field, Tags::XML_ELE_INTERVAL))
        complaints.push_back(place + " is a field of texts and has an Interval");
}

}  // namespace

void throwComplaints(const std::vector<std::string>& complaints, const std::string& opening, int code) {
    static constexpr std::size_t kMost = 10;
    if (complaints.empty())
        return;
    std::string text = opening;
    for (std::size_t i = 0; i < complaints.size() && i < kMost; ++i)
        text += (i == 0 ? "" : "; ") + complaints[i];
    if (complaints.size() > kMost)
        text += "; and " + std::to_string(complaints.size() - kMost) + " more";
    throw Error(text, code);
}

namespace {

[[noreturn]] void throwNoModel(const ModelDocument& document, const std::string& addition) {
    KwBrevix_930::BXException fault(&KwBrevix_930::gErrorFormater);
    fault.PutErrorMessage(260115, Tags::XML_ELE_SVMMODEL, document.nameOf(document.getRoot()).c_str());
    throw Error(fault.what() + addition, fault.GetErrorCode());
}

}  // namespace

void refuseNested(const ModelDocument& document, const std::string& why) {
    const auto* list = BaseTranslator::GetElementsByTagName(&document.getRoot(), Tags::XML_ELE_SVMMODEL);
    const auto* nested = static_cast<const DOMElement*>(list->item(0));
    throwNoModel(document, nested ? " There is one in " +
                                        document.nameOf(static_cast<const DOMElement&>(*nested->getParentNode())) +
                                        ", but " + why + "."
                                  : std::string());
}

void requireModel(const ModelDocument& document) {
    if (!document.getModel())
        refuseNested(document, "a model that is nested in another is not supported as it is");
    checkFields(document);
}

std::vector<std::string> findInputs(const ModelDocument& document, const KwBrevix_930::ScoreDictionary& dictionary,
                                    const KwBrevix_930::TransformationDictionary* transformations) {
    std::vector<std::string> columns;
    Complaints complaints;
    for (const DOMElement* element : document.getVectorFields()) {
        const bool isNumber = BaseTranslator::HasTag(element, Tags::XML_ELE_FIELDREF);
        const std::string name =
            document.getAttribute(*element, isNumber ? Tags::XML_ATT_SVM_FIELD : Tags::XML_ATT_NAME);
        const KwBrevix_930::ScoreDictVar* variable = dictionary.FindVar(name);
        if (!variable && transformations)
            variable = transformations->FindVar(name);
        if (!variable)
            complaints.push_back(document.nameOf(*element) + " " + quoted(name) + " of VectorFields names no field");
        else if (isNumber && variable->IsString())
            complaints.push_back("FieldRef " + quoted(name) + " of VectorFields names a field of texts");
        else
            columns.push_back(name);
    }
    throwComplaints(complaints);
    const auto reached = traceSources(columns, dictionary, transformations);
    std::vector<std::string> inputs;
    for (const auto* variable : dictionary.GetVars()) {
        if (reached.contains(variable->GetName()))
            inputs.push_back(variable->GetName());
    }
    return inputs;
}

void refuseUnbuilt(const ModelDocument& document, const KwBrevix_930::ScoreDictionary& dictionary,
                   const std::vector<std::string>& inputs) {
    const std::unordered_set<std::string> isInput(inputs.begin(), inputs.end());
    Complaints complaints;
    for (const DOMElement* field : document.findChildren(document.getDataDictionary(), Tags::XML_ELE_DATAFIELD)) {
        const std::string name = document.getAttribute(*field, Tags::XML_ATT_NAME);
        if (isInput.contains(name))
            checkDataField(document, *field, *dictionary.FindVar(name), complaints);
    }
    throwComplaints(complaints);
}

}  // namespace brevix
