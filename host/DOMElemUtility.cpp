// Reads children and attributes of a document's elements.
#include "host/DOMElemUtility.h"

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include "host/BXErrorFormater.h"
#include "host/BXException.h"
#include "host/BaseTranslator.h"
#include "host/BrevixTranscoder.h"
#include "host/NumericValue.h"
#include "host/number_text.h"

namespace KwBrevix_930 {

namespace {

using xercesc::DOMElement;

DOMElement* FirstWithTag(DOMElement* element, const std::string& tag) {
    while (element && !BaseTranslator::HasTag(element, tag))
        element = BaseTranslator::GetNextSiblingElt(element);
    return element;
}

}  // namespace

DOMElemUtility::DOMElemUtility(BaseTranslator* translator, const BrevixTranscoder* transcoder)
    : fTranslator(translator), fTranscoder(transcoder) {}

DOMElemUtility::~DOMElemUtility() = default;

DOMElement* DOMElemUtility::GetChildElemByName(const DOMElement* parent, const std::string& tag, bool required) const {
    return GetElemFromNodeList(parent, tag, 0, required);
}

std::string DOMElemUtility::GetAttributeToString(const DOMElement* element, const std::string& attribute,
                                                 bool required) const {
    const xercesc::DOMAttr* node = element->getAttributeNode(WideName(attribute));
    if (node)
        return fTranscoder->ToNarrow(node->getValue());
    if (required) {
        BXException error(&gErrorFormater);
        error.PutErrorMessage(260120, attribute.c_str(), GetElementName(element).c_str());
        throw error;
    }
    return {};
}

double DOMElemUtility::GetAttributeToDouble(const DOMElement* element, const std::string& attribute,
                                            bool required) const {
    if (!required && !HasAttribute(element, attribute))
        return -1.0;
    const std::string text = GetAttributeToString(element, attribute, required);
    const auto number = ParseNumber(text);
    if (!number) {
        BXException error(&gErrorFormater);
        error.PutErrorMessage(260153, text.c_str(), attribute.c_str(), GetElementName(element).c_str());
        throw error;
    }
    return *number;
}

std::int32_t DOMElemUtility::GetAttributeToInt(const DOMElement* element, const std::string& attribute,
                                               bool required) const {
    if (!required && !HasAttribute(element, attribute))
        return 0;
    return NumericValue(GetAttributeToDouble(element, attribute, required)).GetInt();
}

bool DOMElemUtility::HasAttribute(const DOMElement* element, const std::string& attribute) const {
    return element->getAttributeNode(WideName(attribute)) != nullptr;
}

std::uint64_t DOMElemUtility::GetNodeListLength(const DOMElement* parent, const std::string& tag, bool required) const {
    std::uint64_t count = 0;
    const DOMElement* child = GetChildElemByName(parent, tag, required);
    for (; child; child = FirstWithTag(BaseTranslator::GetNextSiblingElt(child), tag))
        ++count;
    return count;
}

DOMElement* DOMElemUtility::GetElemFromNodeList(const DOMElement* parent, const std::string& tag, std::uint64_t index,
                                                bool required) const {
    DOMElement* child = FirstWithTag(BaseTranslator::GetFirstChildElt(parent), tag);
    for (; child && index > 0; --index)
        child = FirstWithTag(BaseTranslator::GetNextSiblingElt(child), tag);
    if (!child && required) {
        BXException error(&gErrorFormater);
        error.PutErrorMessage(260115, tag.c_str(), GetElementName(parent).c_str());
        throw error;
    }
    return child;
}

std::string DOMElemUtility::GetElementName(const DOMElement* element) const {
    return fTranscoder->ToNarrow(BaseTranslator::GetLocalName(element));
}

const XMLCh* DOMElemUtility::WideName(const std::string& name) const {
    const auto found = fWideNames.find(name);
    if (found != fWideNames.end())
        return found->second.c_str();
    return fWideNames.emplace(name, fTranscoder->ToWide(name)).first->second.c_str();
}

}  // namespace KwBrevix_930
