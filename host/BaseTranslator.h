// What every translator has in common: the ways into slot 6, and the walking of documents.
#pragma once

#include <memory>
#include <string>

#include "host/BrevixTranscoder.h"
#include "host/ScoreTranslator.h"

XERCES_CPP_NAMESPACE_BEGIN
class DOMNode;
class DOMNodeList;
XERCES_CPP_NAMESPACE_END

namespace KwBrevix_930 {

class BREVIX_HOST_API BaseTranslator : public ScoreTranslator {
public:
    /// transcoder: the name of one to create at once; empty: none before CreateTranscoder is called.
    explicit BaseTranslator(const std::string& transcoder);
    ~BaseTranslator() override;

    using ScoreTranslator::ParseFromTree;
    ScoreModel* ParseFromTree(xercesc::DOMElement* model, ScoreModel* context, const std::string& transcoder) override;
    ScoreModel* ParseFromTree(xercesc::DOMElement* model, ScoreDictionary* dictionary, ScoreDictionary* results,
                              const std::string& transcoder) override;
    ScoreModel* ParseFromTree(const std::string& text, const std::string& transcoder) override;
    ScoreModel* ParseFromTree(std::istream& stream, const std::string& transcoder) override;
    void SetSupportOldParser(bool support) override { fSupportsOldParser = support; }
    ScoreModel* ParseFromTree(xercesc::DOMDocument* document, ScoreDictionary* dictionary,
                              const std::string& transcoder) override;
    ScoreModel* ParseFromTree(std::istream& stream, const std::string& encoding,
                              const std::string& transcoder) override;

    /// Returns: the list of an element's descendants with a tag, compared by local name, in document order; it belongs
    /// to the document. Asking it for its items in ascending order takes time linear in the document.
    /// Note: a change of the document after the call shows in the list only where all elements of the tag know their
    /// namespace.
    static xercesc::DOMNodeList* GetElementsByTagName(const xercesc::DOMElement* element, const std::string& tag);

    /// Returns: the first child element of a node, null where there is none; null for a null node.
    static xercesc::DOMElement* GetFirstChildElt(const xercesc::DOMNode* node);
    /// Returns: the next element beside a node, null where there is none; null for a null node.
    static xercesc::DOMElement* GetNextSiblingElt(const xercesc::DOMNode* node);

    /// Returns: whether a UTF-16 string and a narrow string are the same text.
    static bool IsEqual(const XMLCh* wide, const std::string& narrow);

    /// Returns: an element's name without its prefix.
    static const XMLCh* GetLocalName(const xercesc::DOMElement* element);
    /// Returns: whether an element has a tag, compared by local name.
    static bool HasTag(const xercesc::DOMElement* element, const std::string& tag);

    /// Returns: a UTF-16 text as a number.
    /// Errors: BXException 260153 for a text that is no number.
    static double VerifyDouble(const XMLCh* text);

    /// Creates the transcoder; one that exists already is kept.
    void CreateTranscoder(const std::string& name);

protected:
    /// Returns: the transcoder, null until CreateTranscoder is called.
    const BrevixTranscoder* GetTranscoder() const { return fTranscoder.get(); }

    /// Returns: the dictionary to be used in place of the document's own; null where there is none.
    const ScoreDictionary* GetSuppliedDictionary() const { return fSuppliedDictionary; }

private:
    std::unique_ptr<BrevixTranscoder> fTranscoder;
    const ScoreDictionary* fSuppliedDictionary = nullptr;
    bool fSupportsOldParser = false;
};

}  // namespace KwBrevix_930
