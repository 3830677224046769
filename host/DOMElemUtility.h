// Reads children and attributes of a document's elements.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

#include <xercesc/util/XercesDefs.hpp>

#include "host/Export.h"

XERCES_CPP_NAMESPACE_BEGIN
class DOMElement;
XERCES_CPP_NAMESPACE_END

namespace KwBrevix_930 {

class BaseTranslator;
class BrevixTranscoder;

/// One for each parse; not for use by several threads. Elements are compared by local name, whatever their prefix.
/// Errors, as BXException: a missing required child 260115 (child, parent); a missing required attribute 260120
/// (attribute, element); a text that is no number 260153 (value, attribute, element).
class BREVIX_HOST_API DOMElemUtility {
public:
    /// Neither is owned; both must outlive this object.
    DOMElemUtility(BaseTranslator* translator, const BrevixTranscoder* transcoder);
    DOMElemUtility(const DOMElemUtility&) = delete;
    DOMElemUtility& operator=(const DOMElemUtility&) = delete;
    virtual ~DOMElemUtility();

    BaseTranslator* GetTranslator() const { return fTranslator; }
    const BrevixTranscoder& GetTranscoder() const { return *fTranscoder; }

    /// Returns: the first child element with that tag; null for a missing optional one.
    xercesc::DOMElement* GetChildElemByName(const xercesc::DOMElement* parent, const std::string& tag,
                                            bool required) const;

    /// Returns: the attribute's value; the empty string for a missing optional one.
    std::string GetAttributeToString(const xercesc::DOMElement* element, const std::string& attribute,
                                     bool required) const;

    /// Returns: the attribute's value; -1.0 for a missing optional one.
    double GetAttributeToDouble(const xercesc::DOMElement* element, const std::string& attribute, bool required) const;

    /// Returns: the attribute's value, truncated and kept within the 32-bit range; 0 for a missing optional one.
    std::int32_t GetAttributeToInt(const xercesc::DOMElement* element, const std::string& attribute,
                                   bool required) const;

    /// Returns: whether the attribute is there, whatever its value.
    bool HasAttribute(const xercesc::DOMElement* element, const std::string& attribute) const;

    /// Returns: the number of child elements with that tag.
    std::uint64_t GetNodeListLength(const xercesc::DOMElement* parent, const std::string& tag, bool required) const;

    /// Returns: the index-th child element with that tag; null for a missing optional one. Walks the children from the
    /// start.
    xercesc::DOMElement* GetElemFromNodeList(const xercesc::DOMElement* parent, const std::string& tag,
                                             std::uint64_t index, bool required) const;

    /// Returns: the element's local name.
    std::string GetElementName(const xercesc::DOMElement* element) const;

private:
    const XMLCh* WideName(const std::string& name) const;

    BaseTranslator* fTranslator;
    const BrevixTranscoder* fTranscoder;
    mutable std::unordered_map<std::string, std::basic_string<XMLCh>> fWideNames;
};

}  // namespace KwBrevix_930
