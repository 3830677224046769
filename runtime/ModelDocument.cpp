// A parsed PMML document, with the places in it that the embedded host looks at.
#include "runtime/ModelDocument.h"

#include <xercesc/dom/DOMElement.hpp>

#include "host/BaseTranslator.h"
#include "host/PMMLModelTags.h"

namespace brevix {

using KwBrevix_930::BaseTranslator;
using Tags = KwBrevix_930::PMMLModelTags;
using xercesc::DOMElement;

ModelDocument::ModelDocument(KwBrevix_930::DocumentHandle document)
    : fDocument(std::move(document)),
      fReader(nullptr, &fTranscoder),
      fDataDictionary(findChild(&getRoot(), Tags::XML_ELE_DATADICTIONARY)),
      fTransformations(findChild(&getRoot(), Tags::XML_ELE_TRANSFORMATION)) {}

DOMElement& ModelDocument::getRoot() const {
    return *fDocument->getDocumentElement();
}

DOMElement* ModelDocument::getModel() const {
    return findChild(&getRoot(), Tags::XML_ELE_SVMMODEL);
}

bool ModelDocument::isVersionTwo() const {
    return getAttribute(getRoot(), Tags::XML_ATT_VERSION).starts_with('2');
}

std::vector<DOMElement*> ModelDocument::getMiningFields() const {
    return findChildren(findChild(getModel(), Tags::XML_ELE_MININGSCHEMA), Tags::XML_ELE_MININGFIELD);
}

std::string ModelDocument::getTargetName() const {
    for (const DOMElement* field : getMiningFields()) {
        const std::string usage = getAttribute(*field, Tags::XML_ATT_MININGFIELD_USAGETYPE);
        if (usage == Tags::XML_ATT_MF_FUT_TARGET || usage == Tags::XML_ATT_MF_FUT_PREDICTED)
            return getAttribute(*field, Tags::XML_ATT_MININGFIELD_NAME);
    }
    return {};
}

std::vector<DOMElement*> ModelDocument::getMachines() const {
    return findChildren(getModel(), Tags::XML_ELE_SVM_SVM);
}

std::vector<DOMElement*> ModelDocument::getVectorFields() const {
    const DOMElement* vectors = findChild(getModel(), Tags::XML_ELE_SVM_VECTORDICTION);
    std::vector<DOMElement*> fields = findChildren(findChild(vectors, Tags::XML_ELE_SVM_VECTORFIELDS), "");
    std::erase_if(fields, [](const DOMElement* field) {
        return !BaseTranslator::HasTag(field, Tags::XML_ELE_FIELDREF) &&
               !BaseTranslator::HasTag(field, Tags::XML_ELE_CATEGORICAL_PREDICTOR);
    });
    return fields;
}

std::string ModelDocument::placeOf(const DOMElement& element) const {
    const std::size_t line = KwBrevix_930::DocumentParser::LineOf(element);
    return line > 0 ? " (line " + std::to_string(line) + ")" : std::string();
}

DOMElement* ModelDocument::findChild(const DOMElement* parent, const char* tag) const {
    return parent ? fReader.GetChildElemByName(parent, tag, false) : nullptr;
}

std::vector<DOMElement*> ModelDocument::findChildren(const DOMElement* parent, const std::string& tag) const {
    std::vector<DOMElement*> found;
    for (DOMElement* child = parent ? BaseTranslator::GetFirstChildElt(parent) : nullptr; child;
         child = BaseTranslator::GetNextSiblingElt(child)) {
        if (tag.empty() || BaseTranslator::HasTag(child, tag))
            found.push_back(child);
    }
    return found;
}

std::optional<std::string> ModelDocument::findAttribute(const DOMElement& element, const char* attribute) const {
    if (!fReader.HasAttribute(&element, attribute))
        return std::nullopt;
    return getAttribute(element, attribute);
}

std::string ModelDocument::getAttribute(const DOMElement& element, const char* attribute) const {
    return fReader.GetAttributeToString(&element, attribute, false);
}

void ModelDocument::setAttribute(DOMElement& element, const char* attribute, std::string_view value) const {
    element.setAttribute(fTranscoder.ToWide(attribute).c_str(), fTranscoder.ToWide(value).c_str());
}

void ModelDocument::removeAttribute(DOMElement& element, const char* attribute) const {
    element.removeAttribute(fTranscoder.ToWide(attribute).c_str());
}

DOMElement* ModelDocument::createElement(const DOMElement& like, const char* tag) const {
    return fDocument->createElementNS(like.getNamespaceURI(), fTranscoder.ToWide(tag).c_str());
}

}  // namespace brevix
