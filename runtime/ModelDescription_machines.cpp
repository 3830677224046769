// What a model is: its vectors, and the machines that use them.
#include <unordered_map>

#include <xercesc/dom/DOMElement.hpp>

#include "host/PMMLModelTags.h"
#include "runtime/ModelDescription.h"
#include "runtime/ModelDocument.h"

namespace brevix {

namespace {

using Tags = KwBrevix_930::PMMLModelTags;
using xercesc::DOMElement;
using xercesc::DOMNode;

// Which machine used an instance last, and whether another did before.
struct Usage {
    static constexpr std::size_t kNobody = static_cast<std::size_t>(-1);

    std::size_t lastMachine = kNobody;
    bool isShared = false;
};

bool isSeparator(XMLCh c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

// Counts the numbers of an array that are not zero: those with another digit in front of their exponent. The text may
// be cut into several nodes anywhere.
std::size_t countEntries(const DOMElement& array) {
    std::size_t count = 0;
    bool isDecided = false;
    for (const DOMNode* node = array.getFirstChild(); node; node = node->getNextSibling()) {
        if (node->getNodeType() != DOMNode::TEXT_NODE && node->getNodeType() != DOMNode::CDATA_SECTION_NODE)
            continue;
        for (const XMLCh* c = node->getNodeValue(); *c; ++c) {
            if (isSeparator(*c))
                isDecided = false;
            else if (!isDecided && *c != '0' && *c != '.' && *c != '-' && *c != '+') {
                isDecided = true;
                count += *c != 'e' && *c != 'E' ? 1 : 0;
            }
        }
    }
    return count;
}

std::vector<std::string> namePair(const ModelDocument& document, const DOMElement& element, const char* first,
                                  const char* second) {
    std::vector<std::string> names;
    for (const char* attribute : {first, second}) {
        std::string name = document.getAttribute(element, attribute);
        if (!name.empty())
            names.push_back(std::move(name));
    }
    return names;
}

// A machine that names no categories has them in its extension.
std::vector<std::string> nameCategories(const ModelDocument& document, const DOMElement& machine) {
    auto names = namePair(document, machine, Tags::XML_ATT_PPC_TARGET_CAT, Tags::XML_ATT_SVM_ALTERNATETAGCATE);
    const DOMElement* extension = document.findChild(&machine, Tags::XML_ELE_EXTENSION);
    const DOMElement* response = document.findChild(extension, Tags::XML_ELE_SVM_RESPONSECATEGORY);
    if (names.empty() && response)
        names = namePair(document, *response, Tags::XML_ATT_SVM_RESPONSE, Tags::XML_ATT_SVM_NONRESPONSE);
    return names;
}

using Usages = std::unordered_map<std::string, Usage>;

// Takes the support vectors of one machine, whose place is given.
ModelDescription::Machine describeMachine(const ModelDocument& document, const DOMElement& element, std::size_t place,
                                          Usages& usages) {
    ModelDescription::Machine machine;
    machine.categories = nameCategories(document, element);
    const DOMElement* list = document.findChild(&element, Tags::XML_ELE_SVM_SUPPORTVECTORS);
    for (const DOMElement* vector : document.findChildren(list, Tags::XML_ELE_SVM_SUPPORTVECTOR)) {
        const auto found = usages.find(document.getAttribute(*vector, Tags::XML_ATT_SVM_VECTORID));
        if (found == usages.end()) {
            ++machine.lostVectorCount;
            continue;
        }
        Usage& usage = found->second;
        usage.isShared |= usage.lastMachine != Usage::kNobody && usage.lastMachine != place;
        usage.lastMachine = place;
        ++machine.vectorCount;
    }
    return machine;
}

}  // namespace

void ModelDescription::describeMachines(const ModelDocument& document) {
    const DOMElement* dictionary = document.findChild(document.getModel(), Tags::XML_ELE_SVM_VECTORDICTION);
    const DOMElement* fields = document.findChild(dictionary, Tags::XML_ELE_SVM_VECTORFIELDS);
    vectorFieldCount = document.findChildren(fields, Tags::XML_ELE_FIELDREF).size() +
                       document.findChildren(fields, Tags::XML_ELE_CATEGORICAL_PREDICTOR).size();
    Usages usages;
    std::size_t entryCount = 0;
    for (const DOMElement* instance : document.findChildren(dictionary, Tags::XML_ELE_SVM_VECTORINSTANCE)) {
        const DOMElement* array = document.findChild(instance, Tags::XML_ELE_SVM_REALSPARSEARRAY);
        // Of two instances with one id the first counts.
        if (!array || !usages.try_emplace(document.getAttribute(*instance, Tags::XML_ATT_SVM_ID)).second)
            continue;
        if (const DOMElement* entries = document.findChild(array, Tags::XML_ELE_SVM_REAL_ENTRIES))
            entryCount += countEntries(*entries);
    }
    instanceCount = usages.size();
    if (instanceCount > 0 && vectorFieldCount > 0)
        density = static_cast<double>(entryCount) /
                  (static_cast<double>(instanceCount) * static_cast<double>(vectorFieldCount));
    for (const DOMElement* element : document.findChildren(document.getModel(), Tags::XML_ELE_SVM_SVM))
        machines.push_back(describeMachine(document, *element, machines.size(), usages));
    for (const auto& [id, usage] : usages) {
        usedInstanceCount += usage.lastMachine != Usage::kNobody ? 1 : 0;
        sharedInstanceCount += usage.isShared ? 1 : 0;
    }
}

}  // namespace brevix
