// The text inside an element.
#pragma once

#include <string>

#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMNode;
XERCES_CPP_NAMESPACE_END

namespace KwBrevix_930 {

class BrevixTranscoder;

/// Returns: the texts of a node's descendants one after the other, UTF-8. Unlike the DOM's own operation it leaves
/// nothing in the document's memory.
std::string ElementText(const BrevixTranscoder& transcoder, const xercesc::DOMNode& node);

}  // namespace KwBrevix_930
