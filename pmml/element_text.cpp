// The text inside an element.
#include "pmml/element_text.h"

#include <xercesc/dom/DOMNode.hpp>

#include "host/BrevixTranscoder.h"

namespace KwBrevix_930 {

std::string ElementText(const BrevixTranscoder& transcoder, const xercesc::DOMNode& node) {
    using xercesc::DOMNode;
    std::string text;
    for (const DOMNode* child = node.getFirstChild(); child; child = child->getNextSibling()) {
        const auto type = child->getNodeType();
        if (type == DOMNode::TEXT_NODE || type == DOMNode::CDATA_SECTION_NODE)
            text += transcoder.ToNarrow(child->getNodeValue());
        else if (type == DOMNode::ELEMENT_NODE || type == DOMNode::ENTITY_REFERENCE_NODE)
            text += ElementText(transcoder, *child);
    }
    return text;
}

}  // namespace KwBrevix_930
