// What a document asks for and is not built: refused when it is opened, never ignored.
#include "runtime/refusals.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNodeList.hpp>

#include "host/BXErrorFormater.h"
#include "host/BXException.h"
#include "host/BaseTranslator.h"
#include "host/PMMLModelTags.h"
#include "host/ScoreDictVar.h"
#include "host/ScoreDictionary.h"
#include "host/number_text.h"
#include "host/transform/TransformationDictionary.h"
#include "runtime/Error.h"
#include "runtime/ModelDocument.h"

namespace brevix {

namespace {

using KwBrevix_930::BaseTranslator;
using KwBrevix_930::BrevixTranscoder;
using Tags = KwBrevix_930::PMMLModelTags;
using xercesc::DOMElement;

using Complaints = std::vector<std::string>;

std::string nameOf(const DOMElement& element) {
    return BrevixTranscoder().ToNarrow(BaseTranslator::GetLocalName(&element));
}

std::string quoted(const std::string& text) {
    return "'" + text + "'";
}

// Which raw field each derived field reads in the end; a field may read those before it.
std::unordered_map<std::string, std::string> traceSources(const KwBrevix_930::ScoreDictionary& dictionary,
                                                          const KwBrevix_930::TransformationDictionary* derived) {
    std::unordered_map<std::string, std::string> sources;
    if (!derived)
        return sources;
    for (const auto& variable : derived->GetVars()) {
        const std::string& field = variable->GetFieldName();
        const auto before = sources.find(field);
        if (dictionary.FindVar(field))
            sources.emplace(variable->GetName(), field);
        else if (before != sources.end())
            sources.emplace(variable->GetName(), std::string(before->second));
    }
    return sources;
}

std::vector<DOMElement*> findVectorFields(const ModelDocument& document) {
    const DOMElement* vectors = document.findChild(document.getModel(), Tags::XML_ELE_SVM_VECTORDICTION);
    std::vector<DOMElement*> fields =
        document.findChildren(document.findChild(vectors, Tags::XML_ELE_SVM_VECTORFIELDS), "");
    std::erase_if(fields, [](const DOMElement* field) {
        return !BaseTranslator::HasTag(field, Tags::XML_ELE_FIELDREF) &&
               !BaseTranslator::HasTag(field, Tags::XML_ELE_CATEGORICAL_PREDICTOR);
    });
    return fields;
}

bool isAnyOf(const std::string& text, std::initializer_list<const char*> texts) {
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

void checkMiningField(const ModelDocument& document, const DOMElement& field,
                      const KwBrevix_930::ScoreDictVar& variable, Complaints& complaints) {
    static constexpr const char* kKindNames[] = {"", "continuous", "ordinal", "categorical"};
    const std::string& name = variable.GetName();
    const std::string kind = document.getAttribute(field, Tags::XML_ATT_OPTYPE);
    if (!kind.empty() && kind != kKindNames[variable.GetKind()])
        complaints.push_back("MiningField " + quoted(name) + " asks for optype=" + quoted(kind) +
                             ", which is not that of its DataField");
    const std::string outliers = document.getAttribute(field, Tags::XML_ATT_OUTLIERS);
    if (!outliers.empty() && outliers != "asIs")
        complaints.push_back("MiningField " + quoted(name) + " asks for outliers=" + quoted(outliers));
    const std::string treatment = document.getAttribute(field, "missingValueTreatment");
    if (!treatment.empty() && !isAnyOf(treatment, {"asIs", "asMean", "asMode", "asMedian", "asValue"}))
        complaints.push_back("MiningField " + quoted(name) + " asks for missingValueTreatment=" + quoted(treatment));
}

// Whether an attribute is absent or is the number that changes nothing.
bool isNeutral(const ModelDocument& document, const DOMElement& element, const char* attribute, double neutral) {
    const auto text = document.findAttribute(element, attribute);
    return !text || KwBrevix_930::ParseNumber(*text) == neutral;
}

void checkTargetValue(const ModelDocument& document, const DOMElement& value, const std::string& target,
                      Complaints& complaints) {
    for (const char* attribute : {"defaultValue", "priorProbability"}) {
        if (document.findAttribute(value, attribute))
            complaints.push_back("TargetValue of Target " + target + " asks for " + attribute);
    }
}

void checkTarget(const ModelDocument& document, const DOMElement& element, Complaints& complaints) {
    const std::string target = quoted(document.getAttribute(element, Tags::XML_ATT_SVM_FIELD));
    if (!isNeutral(document, element, "rescaleConstant", 0.0))
        complaints.push_back("Target " + target + " asks for rescaleConstant");
    if (!isNeutral(document, element, "rescaleFactor", 1.0))
        complaints.push_back("Target " + target + " asks for rescaleFactor");
    for (const char* attribute : {"min", "max", "castInteger"}) {
        if (document.findAttribute(element, attribute))
            complaints.push_back("Target " + target + " asks for " + attribute);
    }
    for (const DOMElement* value : document.findChildren(&element, "TargetValue"))
        checkTargetValue(document, *value, target, complaints);
}

}  // namespace

void throwComplaints(const std::vector<std::string>& complaints) {
    static constexpr std::size_t kMost = 10;
    if (complaints.empty())
        return;
    std::string text = "not supported: ";
    for (std::size_t i = 0; i < complaints.size() && i < kMost; ++i)
        text += (i == 0 ? "" : "; ") + complaints[i];
    if (complaints.size() > kMost)
        text += "; and " + std::to_string(complaints.size() - kMost) + " more";
    throw Error(text);
}

void requireModel(const ModelDocument& document) {
    if (document.getModel())
        return;
    KwBrevix_930::BXException fault(&KwBrevix_930::gErrorFormater);
    fault.PutErrorMessage(260115, Tags::XML_ELE_SVMMODEL, nameOf(document.getRoot()).c_str());
    std::string text = fault.what();
    const auto* list = BaseTranslator::GetElementsByTagName(&document.getRoot(), Tags::XML_ELE_SVMMODEL);
    if (const auto* nested = static_cast<const DOMElement*>(list->item(0)))
        text += " There is one in " + nameOf(static_cast<const DOMElement&>(*nested->getParentNode())) +
                ", but a model that is nested in another is not supported.";
    throw Error(text, fault.GetErrorCode());
}

std::vector<std::string> findInputs(const ModelDocument& document, const KwBrevix_930::ScoreDictionary& dictionary,
                                    const KwBrevix_930::TransformationDictionary* transformations) {
    const auto sources = traceSources(dictionary, transformations);
    std::unordered_set<std::string> reached;
    Complaints complaints;
    for (const DOMElement* element : findVectorFields(document)) {
        const bool isNumber = BaseTranslator::HasTag(element, Tags::XML_ELE_FIELDREF);
        const std::string name =
            document.getAttribute(*element, isNumber ? Tags::XML_ATT_SVM_FIELD : Tags::XML_ATT_NAME);
        const KwBrevix_930::ScoreDictVar* variable = dictionary.FindVar(name);
        const bool isRaw = variable != nullptr;
        if (!variable && transformations)
            variable = transformations->FindVar(name);
        if (!variable)
            complaints.push_back(nameOf(*element) + " " + quoted(name) + " of VectorFields names no field");
        else if (isNumber && variable->IsString())
            complaints.push_back("FieldRef " + quoted(name) + " of VectorFields names a field of texts");
        else if (isRaw || sources.contains(name))
            reached.insert(isRaw ? name : sources.at(name));
    }
    throwComplaints(complaints);
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
    for (const DOMElement* field : document.getMiningFields()) {
        const std::string name = document.getAttribute(*field, Tags::XML_ATT_MININGFIELD_NAME);
        if (isInput.contains(name))
            checkMiningField(document, *field, *dictionary.FindVar(name), complaints);
    }
    for (const DOMElement* target :
         document.findChildren(document.findChild(document.getModel(), Tags::XML_ELE_TARGETS), Tags::XML_ELE_TARGET))
        checkTarget(document, *target, complaints);
    throwComplaints(complaints);
}

std::vector<std::string> noteIgnored(const ModelDocument& document) {
    const std::size_t count = document.findChildren(&document.getRoot(), Tags::XML_ELE_SVMMODEL).size();
    if (count <= 1)
        return {};
    return {"the document holds " + std::to_string(count) + " SupportVectorMachineModel elements; the first is scored"};
}

}  // namespace brevix
