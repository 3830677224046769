// The interface through which a host has a document translated into a model.
#pragma once

#include <iosfwd>
#include <string>

#include <xercesc/util/XercesDefs.hpp>

#include "host/Export.h"

XERCES_CPP_NAMESPACE_BEGIN
class DOMDocument;
class DOMElement;
XERCES_CPP_NAMESPACE_END

namespace KwBrevix_930 {

class ScoreDictionary;
class ScoreModel;

/// Abstract; virtual operations stand in slot order, slot 0 is the destructor. Every form leads to slot 6 and returns a
/// new model owned by the caller, or null for a null document or element.
/// Errors: BXException; nothing leaks. The last argument names the transcoder; narrow strings are UTF-8 whatever it
/// says.
/// Note:    slots count in the order of declaration; MSVC lays adjacent overloads out in reverse (docs/windows.md).
class BREVIX_HOST_API ScoreTranslator {
public:
    ScoreTranslator() {}
    ScoreTranslator(const ScoreTranslator&) = delete;
    ScoreTranslator& operator=(const ScoreTranslator&) = delete;
    virtual ~ScoreTranslator();

    /// Slot 1. From single elements: the data dictionary and the transformation dictionary (either may be null) and the
    /// model, each of any document; they are copied. Version and header are those of the model's document.
    virtual ScoreModel* ParseFromTree(xercesc::DOMElement* dataDictionary, xercesc::DOMElement* transformations,
                                      xercesc::DOMElement* model, const std::string& transcoder) = 0;
    /// Slot 2. From a model element, with the data dictionary of a model that exists already; null: without one.
    virtual ScoreModel* ParseFromTree(xercesc::DOMElement* model, ScoreModel* context,
                                      const std::string& transcoder) = 0;
    /// Slot 3. From a model element, with a data dictionary, of which the new model gets a copy, and a result
    /// dictionary, which stays the caller's; either may be null.
    virtual ScoreModel* ParseFromTree(xercesc::DOMElement* model, ScoreDictionary* dictionary, ScoreDictionary* results,
                                      const std::string& transcoder) = 0;
    /// Slot 4. From a document's text.
    virtual ScoreModel* ParseFromTree(const std::string& text, const std::string& transcoder) = 0;
    /// Slot 5. From a stream that holds a document.
    virtual ScoreModel* ParseFromTree(std::istream& stream, const std::string& transcoder) = 0;
    /// Slot 6. From a parsed document, which stays the caller's and is not needed afterwards.
    virtual ScoreModel* ParseFromTree(xercesc::DOMDocument* document, const std::string& transcoder) = 0;
    /// Slot 7. Whether texts and streams are parsed as before XML namespaces: a prefix needs no declaration then.
    virtual void SetSupportOldParser(bool support) = 0;
    /// Slot 8. From a parsed document, with a dictionary instead of the document's own: the new model gets a copy of
    /// it. Null: as slot 6.
    virtual ScoreModel* ParseFromTree(xercesc::DOMDocument* document, ScoreDictionary* dictionary,
                                      const std::string& transcoder) = 0;
    /// Slot 9. From a stream in the given encoding, whatever the document declares; empty: as slot 5.
    virtual ScoreModel* ParseFromTree(std::istream& stream, const std::string& encoding,
                                      const std::string& transcoder) = 0;
};

}  // namespace KwBrevix_930
