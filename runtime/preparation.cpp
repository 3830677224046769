// Rewrites what exporters write and the translator does not read. Each kind of change is one function.
#include "runtime/preparation.h"

#include <charconv>
#include <set>
#include <unordered_set>
#include <utility>

#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNodeList.hpp>
#include <xercesc/dom/DOMText.hpp>

#include "host/BaseTranslator.h"
#include "host/PMMLModelTags.h"
#include "host/number_text.h"
#include "runtime/Error.h"
#include "runtime/ModelDocument.h"

namespace brevix {

namespace {

using KwBrevix_930::BaseTranslator;
using Tags = KwBrevix_930::PMMLModelTags;
using xercesc::DOMElement;
using xercesc::DOMNode;

std::string counted(std::size_t count, const std::string& one, const std::string& many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

bool isSeparator(XMLCh c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

// Counts the entries of an array, whose text may be cut into several nodes anywhere.
std::size_t countEntries(const DOMElement& array, const std::string& id) {
    std::size_t count = 0;
    bool isInEntry = false;
    for (const DOMNode* node = array.getFirstChild(); node; node = node->getNextSibling()) {
        if (node->getNodeType() != DOMNode::TEXT_NODE && node->getNodeType() != DOMNode::CDATA_SECTION_NODE)
            continue;
        for (const XMLCh* c = node->getNodeValue(); *c; ++c) {
            if (*c == '"')
                throw Error("the Array of the VectorInstance '" + id +
                            "' holds a quoted text where numbers must stand");
            if (!isInEntry && !isSeparator(*c))
                ++count;
            isInEntry = !isSeparator(*c);
        }
    }
    return count;
}

// The texts "1 2 ... n", kept for the next array, which mostly has the same length.
class IndexTexts {
public:
    const XMLCh* getText(std::size_t count) {
        if (count != fCount) {
            fText.clear();
            for (std::size_t i = 1; i <= count; ++i)
                append(i);
            fCount = count;
        }
        return fText.c_str();
    }

private:
    void append(std::size_t index) {
        char digits[20];
        const auto written = std::to_chars(digits, digits + sizeof digits, index);
        if (index > 1)
            fText += XMLCh(' ');
        fText.append(digits, written.ptr);
    }

    std::size_t fCount = 0;
    std::basic_string<XMLCh> fText;
};

void checkLength(const ModelDocument& document, const DOMElement& array, std::size_t count, const std::string& id) {
    const auto length = document.findAttribute(array, Tags::XML_ATT_SVM_N);
    if (length && KwBrevix_930::ParseNumber(*length) != static_cast<double>(count))
        throw Error("the Array of the VectorInstance '" + id + "' has n=" + *length + " but " +
                    counted(count, "entry", "entries"));
}

void makeSparse(const ModelDocument& document, DOMElement& instance, DOMElement& array, IndexTexts& texts) {
    const std::string id = document.getAttribute(instance, Tags::XML_ATT_SVM_ID);
    const std::size_t count = countEntries(array, id);
    checkLength(document, array, count, id);
    DOMElement* sparse = document.createElement(array, Tags::XML_ELE_SVM_REALSPARSEARRAY);
    DOMElement* indices = document.createElement(array, Tags::XML_ELE_SVM_INDICES);
    DOMElement* entries = document.createElement(array, Tags::XML_ELE_SVM_REAL_ENTRIES);
    document.setAttribute(*sparse, Tags::XML_ATT_SVM_N, std::to_string(count));
    indices->appendChild(document.getDocument().createTextNode(texts.getText(count)));
    while (DOMNode* child = array.getFirstChild())
        entries->appendChild(child);
    sparse->appendChild(indices);
    sparse->appendChild(entries);
    instance.replaceChild(sparse, &array)->release();
}

std::size_t makeArraysSparse(const ModelDocument& document) {
    const DOMElement* vectors = document.findChild(document.getModel(), Tags::XML_ELE_SVM_VECTORDICTION);
    if (!vectors)
        return 0;
    // The list is live: it is read to its end before anything changes.
    std::vector<DOMElement*> instances;
    const auto* list = BaseTranslator::GetElementsByTagName(vectors, Tags::XML_ELE_SVM_VECTORINSTANCE);
    for (XMLSize_t i = 0; DOMNode* node = list->item(i); ++i)
        instances.push_back(static_cast<DOMElement*>(node));
    IndexTexts texts;
    std::size_t count = 0;
    for (DOMElement* instance : instances) {
        DOMElement* array = document.findChild(instance, Tags::XML_ELE_SVM_REALARRAY);
        if (!array || document.findChild(instance, Tags::XML_ELE_SVM_REALSPARSEARRAY))
            continue;
        makeSparse(document, *instance, *array, texts);
        ++count;
    }
    return count;
}

std::vector<DOMElement*> findMachines(const ModelDocument& document) {
    return document.findChildren(document.getModel(), Tags::XML_ELE_SVM_SVM);
}

// The names of a machine's two categories, either may be empty.
std::pair<std::string, std::string> findCategories(const ModelDocument& document, const DOMElement& machine) {
    return {document.getAttribute(machine, Tags::XML_ATT_PPC_TARGET_CAT),
            document.getAttribute(machine, Tags::XML_ATT_SVM_ALTERNATETAGCATE)};
}

std::pair<std::string, std::string> findResponses(const ModelDocument& document, const DOMElement& machine) {
    const DOMElement* extension = document.findChild(&machine, Tags::XML_ELE_EXTENSION);
    if (!extension ||
        document.getAttribute(*extension, Tags::XML_ATT_EXTENSION_EXTENDER) != Tags::XML_VAL_EXTENSION_EXTENDER)
        return {};
    const DOMElement* response = document.findChild(extension, Tags::XML_ELE_SVM_RESPONSECATEGORY);
    if (!response)
        return {};
    return {document.getAttribute(*response, Tags::XML_ATT_SVM_RESPONSE),
            document.getAttribute(*response, Tags::XML_ATT_SVM_NONRESPONSE)};
}

// The categories that the machines name, in order of first appearance.
std::vector<std::string> collectCategories(const ModelDocument& document) {
    std::vector<std::string> categories;
    std::unordered_set<std::string> known;
    for (const DOMElement* machine : findMachines(document)) {
        auto names = findCategories(document, *machine);
        if (names.first.empty() && names.second.empty())
            names = findResponses(document, *machine);
        for (const std::string& name : {names.first, names.second}) {
            if (!name.empty() && known.insert(name).second)
                categories.push_back(name);
        }
    }
    return categories;
}

bool isCategorical(const ModelDocument& document, const DOMElement& field) {
    if (const auto kind = document.findAttribute(field, Tags::XML_ATT_OPTYPE))
        return *kind == "categorical";
    const std::string type = document.getAttribute(field, Tags::XML_ATT_DATATYPE);
    return type == "string" || type == "boolean";
}

bool declaresCategory(const ModelDocument& document, const DOMElement& field) {
    for (const DOMElement* value : document.findChildren(&field, Tags::XML_ELE_VALUE)) {
        const std::string property = document.getAttribute(*value, Tags::XML_ATT_PROPERTY);
        if (property.empty() || property == "valid")
            return true;
    }
    return false;
}

DOMElement* findTargetField(const ModelDocument& document) {
    const std::string target = document.getTargetName();
    for (DOMElement* field : document.findChildren(document.getDataDictionary(), Tags::XML_ELE_DATAFIELD)) {
        if (document.getAttribute(*field, Tags::XML_ATT_NAME) == target)
            return field;
    }
    return nullptr;
}

std::size_t declareCategories(const ModelDocument& document) {
    DOMElement* field = findTargetField(document);
    if (!field || !isCategorical(document, *field) || declaresCategory(document, *field))
        return 0;
    const auto categories = collectCategories(document);
    for (const std::string& category : categories) {
        DOMElement* value = document.createElement(*field, Tags::XML_ELE_VALUE);
        document.setAttribute(*value, Tags::XML_ATT_VALUE, category);
        field->appendChild(value);
    }
    return categories.size();
}

// Whether the machines stand for all different pairs of more than two categories.
bool coversAllPairs(const ModelDocument& document, const std::vector<DOMElement*>& machines) {
    std::set<std::pair<std::string, std::string>> pairs;
    std::set<std::string> categories;
    for (const DOMElement* machine : machines) {
        auto [first, second] = findCategories(document, *machine);
        if (first.empty() || second.empty() || first == second)
            return false;
        categories.insert({first, second});
        if (second < first)
            std::swap(first, second);
        if (!pairs.emplace(std::move(first), std::move(second)).second)
            return false;
    }
    return categories.size() > 2 && pairs.size() == categories.size() * (categories.size() - 1) / 2;
}

std::size_t nameOneAgainstOne(const ModelDocument& document) {
    DOMElement* model = document.getModel();
    if (!model || document.findAttribute(*model, Tags::XML_ATT_SVM_CLASSMETHOLD))
        return 0;
    const auto machines = findMachines(document);
    if (!coversAllPairs(document, machines))
        return 0;
    document.setAttribute(*model, Tags::XML_ATT_SVM_CLASSMETHOLD, Tags::XML_ATT_SVM_ONEAGAINSTONE);
    return machines.size();
}

// Moves derived fields to where the translator reads them, which is one element only: the TransformationDictionary for
// version 2, otherwise the model's LocalTransformations.
std::size_t mergeTransformations(const ModelDocument& document) {
    DOMElement* outer = document.getTransformations();
    DOMElement* inner = document.findChild(document.getModel(), Tags::XML_ELE_LOCALTRANSFORMATIONS);
    const bool goesOut = document.isVersionTwo();
    const auto moved = document.findChildren(goesOut ? inner : outer, Tags::XML_ELE_DERIVEDFIELD);
    if (moved.empty() || !document.getModel())
        return 0;
    DOMElement*& reader = goesOut ? outer : inner;
    if (!reader) {
        DOMElement& parent = goesOut ? document.getRoot() : *document.getModel();
        reader =
            document.createElement(parent, goesOut ? Tags::XML_ELE_TRANSFORMATION : Tags::XML_ELE_LOCALTRANSFORMATIONS);
        parent.appendChild(reader);
    }
    DOMNode* place = goesOut ? nullptr : reader->getFirstChild();
    for (DOMElement* field : moved)
        reader->insertBefore(field, place);
    return moved.size();
}

// A function takes effect only where an Apply calls it, and that is refused by name. Left where it is, it would be
// refused itself.
std::size_t dropFunctions(const ModelDocument& document) {
    DOMElement* outer = document.getTransformations();
    const auto functions = document.findChildren(outer, "DefineFunction");
    for (DOMElement* function : functions)
        outer->removeChild(function)->release();
    return functions.size();
}

}  // namespace

std::vector<std::string> prepareDocument(const ModelDocument& document) {
    std::vector<std::string> notes;
    const auto note = [&notes](std::size_t count, const std::string& text) {
        if (count > 0)
            notes.push_back(text);
    };
    const std::size_t arrays = makeArraysSparse(document);
    note(arrays, counted(arrays, "dense Array was", "dense Arrays were") + " read as REAL-SparseArray");
    const std::size_t categories = declareCategories(document);
    note(categories, "the target '" + document.getTargetName() + "' declares no values; " +
                         counted(categories, "category was", "categories were") + " taken from the machines");
    const std::size_t machines = nameOneAgainstOne(document);
    note(machines, "there is no classificationMethod; the " + std::to_string(machines) +
                       " machines stand for all pairs and were read as one-against-one");
    const std::size_t derived = mergeTransformations(document);
    note(derived,
         counted(derived, "derived field", "derived fields") +
             (document.isVersionTwo() ? " of LocalTransformations put behind those of the TransformationDictionary"
                                      : " of the TransformationDictionary put in front of LocalTransformations"));
    const std::size_t functions = dropFunctions(document);
    note(functions, counted(functions, "DefineFunction was", "DefineFunctions were") + " left out; nothing calls it");
    return notes;
}

}  // namespace brevix
