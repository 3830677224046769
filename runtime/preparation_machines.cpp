// Machines: what exporters leave out of them or put elsewhere.
#include <set>
#include <unordered_set>
#include <utility>

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include "host/BaseTranslator.h"
#include "host/PMMLModelTags.h"
#include "host/number_text.h"
#include "runtime/ModelDocument.h"
#include "runtime/Preparation.h"

namespace brevix {

namespace {

using Tags = KwBrevix_930::PMMLModelTags;
using xercesc::DOMElement;

constexpr const char* kAlternateOfModel = "alternateBinaryTargetCategory";

// The names of a machine's two categories, either may be empty.
std::pair<std::string, std::string> findCategories(const ModelDocument& document, const DOMElement& machine) {
    return {document.getAttribute(machine, Tags::XML_ATT_PPC_TARGET_CAT),
            document.getAttribute(machine, Tags::XML_ATT_SVM_ALTERNATETAGCATE)};
}

bool isOfMaker(const ModelDocument& document, const DOMElement* extension) {
    return extension &&
           document.getAttribute(*extension, Tags::XML_ATT_EXTENSION_EXTENDER) == Tags::XML_VAL_EXTENSION_EXTENDER;
}

std::pair<std::string, std::string> findResponses(const ModelDocument& document, const DOMElement& machine) {
    const DOMElement* extension = document.findChild(&machine, Tags::XML_ELE_EXTENSION);
    if (!isOfMaker(document, extension))
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
    for (const DOMElement* machine : document.getMachines()) {
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

// The kind that counts is the MiningField's where that gives one.
bool isCategorical(const ModelDocument& document, const DOMElement& field) {
    for (const DOMElement* mining : document.getMiningFields()) {
        const bool isItsOwn = document.getAttribute(*mining, Tags::XML_ATT_MININGFIELD_NAME) ==
                              document.getAttribute(field, Tags::XML_ATT_NAME);
        const auto kind = document.findAttribute(*mining, Tags::XML_ATT_OPTYPE);
        if (isItsOwn && kind)
            return *kind == "categorical";
    }
    if (const auto kind = document.findAttribute(field, Tags::XML_ATT_OPTYPE))
        return *kind == "categorical";
    const std::string type = document.getAttribute(field, Tags::XML_ATT_DATATYPE);
    return type == "string" || type == "boolean";
}

std::vector<std::string> findDeclaredCategories(const ModelDocument& document, const DOMElement& field) {
    std::vector<std::string> categories;
    for (const DOMElement* value : document.findChildren(&field, Tags::XML_ELE_VALUE)) {
        const std::string property = document.getAttribute(*value, Tags::XML_ATT_PROPERTY);
        if (property.empty() || property == "valid")
            categories.push_back(document.getAttribute(*value, Tags::XML_ATT_VALUE));
    }
    return categories;
}

DOMElement* findTargetField(const ModelDocument& document) {
    const std::string target = document.getTargetName();
    for (DOMElement* field : document.findChildren(document.getDataDictionary(), Tags::XML_ELE_DATAFIELD)) {
        if (document.getAttribute(*field, Tags::XML_ATT_NAME) == target)
            return field;
    }
    return nullptr;
}

std::vector<std::string> findTargetCategories(const ModelDocument& document) {
    const DOMElement* field = findTargetField(document);
    return field ? findDeclaredCategories(document, *field) : std::vector<std::string>();
}

bool isClassification(const ModelDocument& document) {
    return document.getModel() && document.getAttribute(*document.getModel(), Tags::XML_ATT_MINING_FUNCTIONNAME) ==
                                      Tags::XML_VAL_SVM_CLASSIFICATION;
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

// The vectors and coefficients of a machine.
struct Terms {
    DOMElement* vectorList = nullptr;
    DOMElement* coefficientList = nullptr;
    std::vector<DOMElement*> vectors;
    std::vector<DOMElement*> coefficients;

    Terms(const ModelDocument& document, const DOMElement& machine)
        : vectorList(document.findChild(&machine, Tags::XML_ELE_SVM_SUPPORTVECTORS)),
          coefficientList(document.findChild(&machine, Tags::XML_ELE_SVM_COEFFICIENTS)),
          vectors(document.findChildren(vectorList, Tags::XML_ELE_SVM_SUPPORTVECTOR)),
          coefficients(document.findChildren(coefficientList, Tags::XML_ELE_SVM_COEFFICIENT)) {}
};

// Whether two machines stand for one category each, and the two are those of the target.
bool standsForOneEach(const ModelDocument& document, const std::vector<DOMElement*>& machines) {
    const auto categories = findTargetCategories(document);
    if (machines.size() != 2 || categories.size() != 2 || !isClassification(document))
        return false;
    std::set<std::string> named;
    for (const DOMElement* machine : machines) {
        const auto [target, alternate] = findCategories(document, *machine);
        if (target.empty() || !alternate.empty() ||
            isOfMaker(document, document.findChild(machine, Tags::XML_ELE_EXTENSION)))
            return false;
        named.insert(target);
    }
    return named == std::set<std::string>(categories.begin(), categories.end());
}

void negate(const ModelDocument& document, DOMElement& element, const char* attribute) {
    const auto number = KwBrevix_930::ParseNumber(document.getAttribute(element, attribute));
    if (number)
        document.setAttribute(element, attribute, KwBrevix_930::NumberText(-*number));
}

double numberOf(const ModelDocument& document, const DOMElement* element, const char* attribute) {
    const auto text = element ? document.findAttribute(*element, attribute) : std::nullopt;
    return text ? KwBrevix_930::ParseNumber(*text).value_or(0.0) : 0.0;
}

}  // namespace

void declareCategories(Preparation& preparation) {
    const ModelDocument& document = preparation.document;
    DOMElement* field = findTargetField(document);
    if (!field || !isCategorical(document, *field) || !findDeclaredCategories(document, *field).empty())
        return;
    const auto categories = collectCategories(document);
    for (const std::string& category : categories) {
        DOMElement* value = document.createElement(*field, Tags::XML_ELE_VALUE);
        document.setAttribute(*value, Tags::XML_ATT_VALUE, category);
        field->appendChild(value);
    }
    preparation.note(categories.size(), "the target '" + document.getTargetName() + "' declares no values; " +
                                            counted(categories.size(), "category was", "categories were") +
                                            " taken from the machines");
}

void nameOneAgainstOne(Preparation& preparation) {
    const ModelDocument& document = preparation.document;
    if (document.findAttribute(*document.getModel(), Tags::XML_ATT_SVM_CLASSMETHOLD))
        return;
    const auto machines = document.getMachines();
    if (!coversAllPairs(document, machines))
        return;
    document.setAttribute(*document.getModel(), Tags::XML_ATT_SVM_CLASSMETHOLD, Tags::XML_ATT_SVM_ONEAGAINSTONE);
    preparation.note(machines.size(), "there is no classificationMethod; the " + std::to_string(machines.size()) +
                                          " machines stand for all pairs and were read as one-against-one");
}

namespace {

// The only machine of a classification; null where there are others, or it names no category to complete.
DOMElement* findBinaryMachine(const ModelDocument& document) {
    const auto machines = document.getMachines();
    const bool isOnly = machines.size() == 1 && isClassification(document);
    return isOnly && !findCategories(document, *machines.front()).first.empty() ? machines.front() : nullptr;
}

}  // namespace

void takeAlternateOfModel(Preparation& preparation) {
    const ModelDocument& document = preparation.document;
    DOMElement* machine = findBinaryMachine(document);
    const std::string ofModel = document.getAttribute(*document.getModel(), kAlternateOfModel);
    if (!machine || ofModel.empty())
        return;
    const std::string alternate = findCategories(document, *machine).second;
    if (!alternate.empty() && alternate != ofModel)
        preparation.complaints.push_back("the machine's alternateTargetCategory='" + alternate +
                                         "' is not the model's " + kAlternateOfModel + "='" + ofModel + "'");
    if (!alternate.empty())
        return;
    document.setAttribute(*machine, Tags::XML_ATT_SVM_ALTERNATETAGCATE, ofModel);
    preparation.note(1, "the model's " + std::string(kAlternateOfModel) + "='" + ofModel +
                            "' was read as its machine's alternateTargetCategory");
}

void completeBinaryMachine(Preparation& preparation) {
    const ModelDocument& document = preparation.document;
    DOMElement* machine = findBinaryMachine(document);
    const auto categories = findTargetCategories(document);
    if (!machine || categories.size() != 2)
        return;
    const auto [target, alternate] = findCategories(document, *machine);
    if (!alternate.empty() || (categories[0] == target) == (categories[1] == target))
        return;
    const std::string& other = categories[categories[0] == target ? 1 : 0];
    document.setAttribute(*machine, Tags::XML_ATT_SVM_ALTERNATETAGCATE, other);
    preparation.note(1, "the only machine names one of two categories; the other, '" + other + "', is its alternate");
}

// Of two machines for one category each, one-against-all chooses the one with the smaller decision value, with maxWins
// the larger, and the first where both are equal. One machine says the same: the second's value less the first's, with
// the second's category as target, the first's as alternate, and the threshold 0.
void joinTwoMachines(Preparation& preparation) {
    const ModelDocument& document = preparation.document;
    const auto machines = document.getMachines();
    if (!standsForOneEach(document, machines))
        return;
    if (document.getAttribute(*document.getModel(), Tags::XML_ATT_SVM_CLASSMETHOLD) ==
        Tags::XML_ATT_SVM_ONEAGAINSTONE) {
        preparation.complaints.push_back("two machines stand for one category each, but the method is one-against-one");
        return;
    }
    DOMElement& kept = *machines[1];
    const Terms from(document, *machines[0]);
    const Terms to(document, kept);
    if (!from.vectorList || !from.coefficientList || !to.vectorList || !to.coefficientList)
        return;
    // Behind a vector without a coefficient the other machine's would meet the wrong ones.
    if (from.vectors.size() != from.coefficients.size() || to.vectors.size() != to.coefficients.size()) {
        preparation.complaints.push_back(
            "two machines for one category each, and one has more vectors than coefficients");
        return;
    }
    for (DOMElement* vector : from.vectors)
        to.vectorList->appendChild(vector);
    for (DOMElement* coefficient : from.coefficients) {
        negate(document, *coefficient, Tags::XML_ATT_VALUE);
        to.coefficientList->appendChild(coefficient);
    }
    const double bias = numberOf(document, to.coefficientList, Tags::XML_ATT_SVM_ABSOLUTEVALUE) -
                        numberOf(document, from.coefficientList, Tags::XML_ATT_SVM_ABSOLUTEVALUE);
    document.setAttribute(*to.coefficientList, Tags::XML_ATT_SVM_ABSOLUTEVALUE, KwBrevix_930::NumberText(bias));
    document.setAttribute(kept, Tags::XML_ATT_SVM_ALTERNATETAGCATE, findCategories(document, *machines[0]).first);
    document.setAttribute(kept, Tags::XML_VAL_THRESHOLD, "0");
    // Not released: a new element could take the place of one whose line is known.
    document.getModel()->removeChild(machines[0]);
    const bool isLargest = document.getAttribute(*document.getModel(), Tags::XML_ATT_SVM_MAXWINS) == "true";
    preparation.note(2, std::string("2 machines for one category each were read as one; the ") +
                            (isLargest ? "larger" : "smaller") +
                            " of their decision values wins, as maxWins=" + (isLargest ? "true" : "false") + " says");
}

void makeUnitVectors(Preparation& preparation) {
    const ModelDocument& document = preparation.document;
    DOMElement* dictionary = document.findChild(document.getModel(), Tags::XML_ELE_SVM_VECTORDICTION);
    if (!dictionary || document.getAttribute(*document.getModel(), "svmRepresentation") != "Coefficients")
        return;
    const auto machines = document.getMachines();
    const std::size_t columns = document.getVectorFields().size();
    const auto refuse = [&](const std::string& why) {
        preparation.complaints.push_back("svmRepresentation=Coefficients " + why);
    };
    if (!document.findChild(document.getModel(), Tags::XML_ELE_SVM_KFTLINEAR))
        return refuse("needs the LinearKernelType");
    for (DOMElement* machine : machines) {
        const Terms terms(document, *machine);
        if (!terms.vectors.empty())
            return refuse("stands beside SupportVectors");
        if (terms.coefficients.size() != columns)
            return refuse("needs a Coefficient for each of the " + std::to_string(columns) + " VectorFields");
    }
    const auto idOf = [](std::size_t column) { return "unit-" + std::to_string(column); };
    // In front of instances that nobody uses: of two with one id the first counts.
    DOMElement* place = document.findChild(dictionary, Tags::XML_ELE_SVM_VECTORINSTANCE);
    for (std::size_t column = 1; column <= columns; ++column) {
        DOMElement* instance = document.createElement(*dictionary, Tags::XML_ELE_SVM_VECTORINSTANCE);
        DOMElement* array = document.createElement(*dictionary, Tags::XML_ELE_SVM_REALSPARSEARRAY);
        const auto add = [&](const char* tag, const std::string& text) {
            DOMElement* element = document.createElement(*dictionary, tag);
            element->setTextContent(KwBrevix_930::BrevixTranscoder().ToWide(text).c_str());
            array->appendChild(element);
        };
        add(Tags::XML_ELE_SVM_INDICES, std::to_string(column));
        add(Tags::XML_ELE_SVM_REAL_ENTRIES, "1");
        document.setAttribute(*instance, Tags::XML_ATT_SVM_ID, idOf(column));
        instance->appendChild(array);
        dictionary->insertBefore(instance, place);
    }
    for (DOMElement* machine : machines) {
        DOMElement* list = document.findChild(machine, Tags::XML_ELE_SVM_SUPPORTVECTORS);
        if (!list) {
            list = document.createElement(*machine, Tags::XML_ELE_SVM_SUPPORTVECTORS);
            machine->appendChild(list);
        }
        for (std::size_t column = 1; column <= columns; ++column) {
            DOMElement* vector = document.createElement(*list, Tags::XML_ELE_SVM_SUPPORTVECTOR);
            document.setAttribute(*vector, Tags::XML_ATT_SVM_VECTORID, idOf(column));
            list->appendChild(vector);
        }
    }
    preparation.note(machines.size(), counted(machines.size(), "machine", "machines") +
                                          " with a coefficient for each field were given vectors");
}

}  // namespace brevix
