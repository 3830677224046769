// Errors in a document.
#pragma once

#include <string>

#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMElement;
XERCES_CPP_NAMESPACE_END

namespace KwBrevix_930 {

class BXException;
class DOMElemUtility;

/// Throws a BXException with that code; arguments that the code does not take are passed over.
[[noreturn]] void Refuse(int code, const std::string& first, const std::string& second = {},
                         const std::string& third = {});

/// Throws a BXException 260153 for a value that an attribute does not allow.
[[noreturn]] void RefuseValue(const std::string& value, const std::string& attribute, const std::string& element);

/// Throws a BXException 260153 for the text of an attribute.
[[noreturn]] void RefuseAttribute(const DOMElemUtility& reader, const xercesc::DOMElement& element,
                                  const std::string& attribute);

/// Adds to an error's message where it lies: the field, by its name, and the line, where it is known. at: the element
/// at fault.
void PutPlace(BXException& error, const DOMElemUtility& reader, const xercesc::DOMElement& field,
              const xercesc::DOMElement& at);

}  // namespace KwBrevix_930
