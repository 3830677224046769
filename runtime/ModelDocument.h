// A parsed PMML document, with the places in it that the embedded host looks at.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/BrevixTranscoder.h"
#include "host/DOMElemUtility.h"
#include "host/DocumentParser.h"
#include "runtime/Export.h"

namespace brevix {

/// Owns the document. Pointers to elements belong to it; null where the document has no such element.
class BREVIX_RUNTIME_API ModelDocument {
public:
    explicit ModelDocument(KwBrevix_930::DocumentHandle document);
    ModelDocument(const ModelDocument&) = delete;
    ModelDocument& operator=(const ModelDocument&) = delete;

    xercesc::DOMDocument& getDocument() const { return *fDocument; }
    xercesc::DOMElement& getRoot() const;
    /// Returns: the first SupportVectorMachineModel among the root's children, the one that is scored.
    xercesc::DOMElement* getModel() const;
    xercesc::DOMElement* getDataDictionary() const { return fDataDictionary; }
    /// Returns: the document's own TransformationDictionary, beside the model.
    xercesc::DOMElement* getTransformations() const { return fTransformations; }

    /// Returns: whether the version is one whose derived fields are read from the TransformationDictionary alone.
    bool isVersionTwo() const;

    /// Returns: the model's MiningField elements.
    std::vector<xercesc::DOMElement*> getMiningFields() const;
    /// Returns: the name of the first target in the MiningSchema; empty where there is none.
    std::string getTargetName() const;

    /// Returns: the model's SupportVectorMachine elements.
    std::vector<xercesc::DOMElement*> getMachines() const;
    /// Returns: the elements that give the vectors their columns: FieldRef and CategoricalPredictor.
    std::vector<xercesc::DOMElement*> getVectorFields() const;

    /// Returns: an element's name without its prefix.
    std::string nameOf(const xercesc::DOMElement& element) const { return fReader.GetElementName(&element); }
    /// Returns: where the text of the document had an element, as " (line 7)"; empty where that is not known.
    std::string placeOf(const xercesc::DOMElement& element) const;
    /// Returns: the first child element with that tag; null where there is none, or no parent.
    xercesc::DOMElement* findChild(const xercesc::DOMElement* parent, const char* tag) const;
    /// Returns: the child elements with that tag, or all of them for an empty tag, in document order.
    std::vector<xercesc::DOMElement*> findChildren(const xercesc::DOMElement* parent, const std::string& tag) const;
    /// Returns: the attribute's text; nothing where it is absent.
    std::optional<std::string> findAttribute(const xercesc::DOMElement& element, const char* attribute) const;
    /// Returns: the attribute's text; empty where it is absent.
    std::string getAttribute(const xercesc::DOMElement& element, const char* attribute) const;
    void setAttribute(xercesc::DOMElement& element, const char* attribute, std::string_view value) const;
    void removeAttribute(xercesc::DOMElement& element, const char* attribute) const;
    /// Returns: what reads the document's elements for the host.
    const KwBrevix_930::DOMElemUtility& getReader() const { return fReader; }
    /// Returns: a new element of the same namespace as another, not yet placed anywhere.
    xercesc::DOMElement* createElement(const xercesc::DOMElement& like, const char* tag) const;

private:
    KwBrevix_930::DocumentHandle fDocument;
    KwBrevix_930::BrevixTranscoder fTranscoder;
    KwBrevix_930::DOMElemUtility fReader;
    xercesc::DOMElement* fDataDictionary;
    xercesc::DOMElement* fTransformations;
};

}  // namespace brevix
