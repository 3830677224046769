// Attributes that the translator takes for something else than the document says: respelled, or refused.
#include <algorithm>
#include <unordered_map>

#include <xercesc/dom/DOMElement.hpp>

#include "host/BXException.h"
#include "host/BaseTranslator.h"
#include "host/DictVar.h"
#include "host/PMMLModelTags.h"
#include "host/dictionary_reader.h"
#include "host/number_text.h"
#include "runtime/ModelDocument.h"
#include "runtime/Preparation.h"

namespace brevix {

namespace {

using Tags = KwBrevix_930::PMMLModelTags;
using xercesc::DOMElement;

std::string lowerCased(std::string text) {
    for (char& c : text)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return text;
}

// Changes an attribute that is written otherwise.
// Returns: 1 where it was changed.
std::size_t respell(const Preparation& preparation, DOMElement& element, const char* attribute,
                    const std::string& text) {
    if (preparation.document.getAttribute(element, attribute) == text)
        return 0;
    preparation.document.setAttribute(element, attribute, text);
    return 1;
}

std::size_t spellTruth(Preparation& preparation, const char* attribute) {
    DOMElement& model = *preparation.document.getModel();
    const auto written = preparation.document.findAttribute(model, attribute);
    if (!written)
        return 0;
    const std::string text = lowerCased(*written);
    if (text == "true" || text == "1")
        return respell(preparation, model, attribute, "true");
    if (text == "false" || text == "0")
        return respell(preparation, model, attribute, "false");
    preparation.complaints.push_back(std::string(attribute) + "='" + *written +
                                     "' of SupportVectorMachineModel is neither true nor false");
    return 0;
}

std::size_t spellMethod(Preparation& preparation) {
    DOMElement& model = *preparation.document.getModel();
    const auto written = preparation.document.findAttribute(model, Tags::XML_ATT_SVM_CLASSMETHOLD);
    if (!written || written->empty())
        return 0;
    for (const char* method : {Tags::XML_ATT_SVM_ONEAGAINSTONE, "OneAgainstAll"}) {
        if (lowerCased(*written) == lowerCased(method))
            return respell(preparation, model, Tags::XML_ATT_SVM_CLASSMETHOLD, method);
    }
    preparation.complaints.push_back("classificationMethod='" + *written +
                                     "' of SupportVectorMachineModel is neither OneAgainstAll nor OneAgainstOne");
    return 0;
}

bool isMinusOne(const ModelDocument& document, const DOMElement& element, const char* attribute) {
    const auto text = document.findAttribute(element, attribute);
    return text && KwBrevix_930::ParseNumber(*text) == -1.0;
}

// The translator takes -1 for a parameter that is not there.
void refuseMinusOne(Preparation& preparation) {
    const ModelDocument& document = preparation.document;
    for (const char* tag : {Tags::XML_ELE_SVM_KFTPOLY, Tags::XML_ELE_SVM_KFTRBF, Tags::XML_ELE_SVM_KFTSIGMOID}) {
        const DOMElement* kernel = document.findChild(document.getModel(), tag);
        for (const char* attribute : {Tags::XML_ATT_SVM_GAMMA, Tags::XML_ATT_SVM_BIAS, Tags::XML_ATT_SVM_DEGREE}) {
            if (kernel && isMinusOne(document, *kernel, attribute))
                preparation.complaints.push_back(std::string(attribute) + "=-1 of " + tag +
                                                 " would be taken for the attribute's default");
        }
    }
}

// A machine's threshold of -1 would be taken for the model's; so the model's becomes -1, and machines that relied on
// what it was say that themselves.
std::size_t moveThresholds(const ModelDocument& document) {
    const auto machines = document.getMachines();
    const auto isOne = [&](const DOMElement* machine) {
        return isMinusOne(document, *machine, Tags::XML_VAL_THRESHOLD);
    };
    DOMElement& model = *document.getModel();
    const auto count = static_cast<std::size_t>(std::count_if(machines.begin(), machines.end(), isOne));
    if (count == 0 || isMinusOne(document, model, Tags::XML_ATT_THRESHOLD))
        return 0;
    const std::string before = document.findAttribute(model, Tags::XML_ATT_THRESHOLD).value_or("0");
    for (DOMElement* machine : machines) {
        if (!document.findAttribute(*machine, Tags::XML_VAL_THRESHOLD))
            document.setAttribute(*machine, Tags::XML_VAL_THRESHOLD, before);
    }
    document.setAttribute(model, Tags::XML_ATT_THRESHOLD, "-1");
    return count;
}

// A coefficient without a vector would be left out, which means that something is lacking.
void checkCounts(Preparation& preparation) {
    const ModelDocument& document = preparation.document;
    std::size_t number = 0;
    for (const DOMElement* machine : document.getMachines()) {
        ++number;
        const DOMElement* list = document.findChild(machine, Tags::XML_ELE_SVM_SUPPORTVECTORS);
        const std::size_t vectors = document.findChildren(list, Tags::XML_ELE_SVM_SUPPORTVECTOR).size();
        const std::size_t coefficients = document
                                             .findChildren(document.findChild(machine, Tags::XML_ELE_SVM_COEFFICIENTS),
                                                           Tags::XML_ELE_SVM_COEFFICIENT)
                                             .size();
        if (list && vectors < coefficients)
            preparation.complaints.push_back("SupportVectorMachine " + std::to_string(number) + " has " +
                                             counted(vectors, "SupportVector", "SupportVectors") + " but " +
                                             counted(coefficients, "Coefficient", "Coefficients"));
    }
}

// A text as a number of a field; nothing for a field that has none or cannot be read, which is refused elsewhere.
std::optional<double> readNumber(const ModelDocument& document, const DOMElement& field, const std::string& text) {
    try {
        return KwBrevix_930::ReadField(document.getReader(), field)->ParseText(text);
    } catch (const KwBrevix_930::BXException&) {
        return std::nullopt;
    }
}

// The translator reads the replacement in a number field as a plain number; documents may say true, or a date.
std::size_t spellReplacements(Preparation& preparation) {
    const ModelDocument& document = preparation.document;
    std::unordered_map<std::string, const DOMElement*> fields;
    for (const DOMElement* field : document.findChildren(document.getDataDictionary(), Tags::XML_ELE_DATAFIELD))
        fields.emplace(document.getAttribute(*field, Tags::XML_ATT_NAME), field);
    std::size_t count = 0;
    for (DOMElement* mining : document.getMiningFields()) {
        const auto text = document.findAttribute(*mining, Tags::XML_ATT_MININGFIELD_MISSREPLACE);
        const auto field = fields.find(document.getAttribute(*mining, Tags::XML_ATT_MININGFIELD_NAME));
        if (!text || field == fields.end())
            continue;
        const auto number = readNumber(document, *field->second, *text);
        if (number && KwBrevix_930::ParseNumber(*text) != number)
            count +=
                respell(preparation, *mining, Tags::XML_ATT_MININGFIELD_MISSREPLACE, KwBrevix_930::NumberText(*number));
    }
    return count;
}

}  // namespace

void spellAttributes(Preparation& preparation) {
    refuseMinusOne(preparation);
    checkCounts(preparation);
    std::size_t count = spellTruth(preparation, Tags::XML_ATT_SVM_MAXWINS);
    count += spellTruth(preparation, Tags::XML_ATT_RM_IS_SCORABLE);
    count += spellMethod(preparation);
    count += spellReplacements(preparation);
    count += moveThresholds(preparation.document);
    preparation.note(count,
                     counted(count, "attribute was", "attributes were") + " respelled as the translator reads them");
}

}  // namespace brevix
