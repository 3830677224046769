// What every translator has in common.
#include "host/BaseTranslator.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNodeList.hpp>
#include <xercesc/dom/DOMUserDataHandler.hpp>
#include <xercesc/util/XMLUniDefs.hpp>

#include "host/BXErrorFormater.h"
#include "host/BXException.h"
#include "host/DocumentParser.h"
#include "host/PMMLModelTags.h"
#include "host/ScoreModel.h"
#include "host/number_text.h"

namespace KwBrevix_930 {

namespace {

using xercesc::DOMDocument;
using xercesc::DOMElement;
using xercesc::DOMNode;

// Sets a pointer for the time of a call.
class ScopedDictionary {
public:
    ScopedDictionary(const ScoreDictionary*& place, const ScoreDictionary* dictionary)
        : fPlace(place), fBefore(std::exchange(place, dictionary)) {}
    ~ScopedDictionary() { fPlace = fBefore; }
    ScopedDictionary(const ScopedDictionary&) = delete;
    ScopedDictionary& operator=(const ScopedDictionary&) = delete;

private:
    const ScoreDictionary*& fPlace;
    const ScoreDictionary* fBefore;
};

// Gives a document an empty DataDictionary element for the time of a call, where it has none.
class ScopedDataDictionary {
public:
    explicit ScopedDataDictionary(DOMDocument* document) : fRoot(document ? document->getDocumentElement() : nullptr) {
        DOMElement* child = BaseTranslator::GetFirstChildElt(fRoot);
        while (child && !BaseTranslator::HasTag(child, PMMLModelTags::XML_ELE_DATADICTIONARY))
            child = BaseTranslator::GetNextSiblingElt(child);
        if (!fRoot || child)
            return;
        const auto tag = BrevixTranscoder().ToWide(PMMLModelTags::XML_ELE_DATADICTIONARY);
        fAdded = document->createElementNS(fRoot->getNamespaceURI(), tag.c_str());
        fRoot->insertBefore(fAdded, fRoot->getFirstChild());
    }
    ~ScopedDataDictionary() {
        if (fAdded)
            fRoot->removeChild(fAdded)->release();
    }
    ScopedDataDictionary(const ScopedDataDictionary&) = delete;
    ScopedDataDictionary& operator=(const ScopedDataDictionary&) = delete;

private:
    DOMElement* fRoot;
    DOMElement* fAdded = nullptr;
};

DOMElement* AsElement(DOMNode* node) {
    return static_cast<DOMElement*>(node);
}

DOMNode* SkipToElement(DOMNode* node) {
    while (node && node->getNodeType() != DOMNode::ELEMENT_NODE)
        node = node->getNextSibling();
    return node;
}

// The element behind another in document order, among the descendants of a root; null behind the last.
DOMElement* NextDescendant(const DOMElement* element, const DOMElement* root) {
    DOMElement* next = BaseTranslator::GetFirstChildElt(element);
    const DOMNode* place = element;
    while (!next && place != root) {
        next = BaseTranslator::GetNextSiblingElt(place);
        place = place->getParentNode();
    }
    return next;
}

// A list of elements of DOM level 1, whose local names the DOM does not know.
class ElementList : public xercesc::DOMNodeList {
public:
    DOMNode* item(XMLSize_t index) const override { return index < fElements.size() ? fElements[index] : nullptr; }
    XMLSize_t getLength() const override { return fElements.size(); }
    void SetElements(std::vector<DOMElement*> elements) { fElements = std::move(elements); }

private:
    std::vector<DOMElement*> fElements;
};

class ListDeleter : public xercesc::DOMUserDataHandler {
public:
    void handle(DOMOperationType operation, const XMLCh*, void* data, const DOMNode*, DOMNode*) override {
        if (operation == NODE_DELETED)
            delete static_cast<ElementList*>(data);
    }
};

// The element keeps one list for each tag; it is deleted with the element or the document.
xercesc::DOMNodeList* KeepList(DOMElement* element, const std::basic_string<XMLCh>& tag,
                               std::vector<DOMElement*> found) {
    static ListDeleter deleter;
    const auto key = BrevixTranscoder().ToWide("brevix.elements.") + tag;
    auto* list = static_cast<ElementList*>(element->getUserData(key.c_str()));
    if (!list) {
        list = new ElementList;
        element->setUserData(key.c_str(), list, &deleter);
    }
    list->SetElements(std::move(found));
    return list;
}

}  // namespace

ScoreTranslator::~ScoreTranslator() = default;

BaseTranslator::BaseTranslator(const std::string& transcoder) {
    if (!transcoder.empty())
        CreateTranscoder(transcoder);
}

BaseTranslator::~BaseTranslator() = default;

ScoreModel* BaseTranslator::ParseFromTree(DOMElement* model, ScoreModel* context, const std::string& transcoder) {
    return ParseFromTree(model, context ? context->GetDictionary() : nullptr, nullptr, transcoder);
}

ScoreModel* BaseTranslator::ParseFromTree(DOMElement* model, ScoreDictionary* dictionary, ScoreDictionary* results,
                                          const std::string& transcoder) {
    const ScopedDictionary scope(fSuppliedDictionary, dictionary);
    ScoreModel* translated = ParseFromTree(nullptr, nullptr, model, transcoder);
    if (translated && results)
        translated->SetResultScoreDictionary(results);
    return translated;
}

ScoreModel* BaseTranslator::ParseFromTree(const std::string& text, const std::string& transcoder) {
    const DocumentHandle document = DocumentParser(!fSupportsOldParser).ParseText(text);
    return ParseFromTree(document.get(), transcoder);
}

ScoreModel* BaseTranslator::ParseFromTree(std::istream& stream, const std::string& transcoder) {
    return ParseFromTree(stream, std::string(), transcoder);
}

ScoreModel* BaseTranslator::ParseFromTree(DOMDocument* document, ScoreDictionary* dictionary,
                                          const std::string& transcoder) {
    const ScopedDictionary scope(fSuppliedDictionary, dictionary);
    const ScopedDataDictionary element(dictionary ? document : nullptr);
    return ParseFromTree(document, transcoder);
}

ScoreModel* BaseTranslator::ParseFromTree(std::istream& stream, const std::string& encoding,
                                          const std::string& transcoder) {
    const DocumentHandle document = DocumentParser(!fSupportsOldParser).ParseStream(stream, encoding);
    return ParseFromTree(document.get(), transcoder);
}

xercesc::DOMNodeList* BaseTranslator::GetElementsByTagName(const DOMElement* element, const std::string& tag) {
    std::vector<DOMElement*> found;
    for (DOMElement* next = NextDescendant(element, element); next; next = NextDescendant(next, element)) {
        if (HasTag(next, tag))
            found.push_back(next);
    }
    const auto wideTag = BrevixTranscoder().ToWide(tag);
    const auto knowsNamespace = [](const DOMElement* each) { return each->getLocalName() != nullptr; };
    if (!std::all_of(found.begin(), found.end(), knowsNamespace))
        return KeepList(const_cast<DOMElement*>(element), wideTag, std::move(found));
    static const XMLCh kAnyNamespace[] = {xercesc::chAsterisk, xercesc::chNull};
    return element->getElementsByTagNameNS(kAnyNamespace, wideTag.c_str());
}

DOMElement* BaseTranslator::GetFirstChildElt(const DOMNode* node) {
    return AsElement(SkipToElement(node ? node->getFirstChild() : nullptr));
}

DOMElement* BaseTranslator::GetNextSiblingElt(const DOMNode* node) {
    return AsElement(SkipToElement(node ? node->getNextSibling() : nullptr));
}

bool BaseTranslator::IsEqual(const XMLCh* wide, const std::string& narrow) {
    if (!wide)
        return false;
    const XMLCh* next = wide;
    for (const char c : narrow) {
        if (static_cast<unsigned char>(c) >= 0x80)
            return BrevixTranscoder().ToNarrow(wide) == narrow;
        if (*next++ != static_cast<unsigned char>(c))
            return false;
    }
    return *next == 0;
}

const XMLCh* BaseTranslator::GetLocalName(const DOMElement* element) {
    if (const XMLCh* localName = element->getLocalName())
        return localName;
    const XMLCh* name = element->getTagName();
    for (const XMLCh* c = name; *c; ++c) {
        if (*c == xercesc::chColon)
            name = c + 1;
    }
    return name;
}

bool BaseTranslator::HasTag(const DOMElement* element, const std::string& tag) {
    return IsEqual(GetLocalName(element), tag);
}

double BaseTranslator::VerifyDouble(const XMLCh* text) {
    const std::string narrow = BrevixTranscoder().ToNarrow(text);
    const auto number = ParseNumber(narrow);
    if (!number) {
        BXException error(&gErrorFormater);
        error.PutErrorMessage(260153, narrow.c_str(), "a number", "the document");
        throw error;
    }
    return *number;
}

void BaseTranslator::CreateTranscoder(const std::string&) {
    if (!fTranscoder)
        fTranscoder = std::make_unique<BrevixTranscoder>();
}

}  // namespace KwBrevix_930
