// The text inside an element.
#include "pmml/element_text.h"

#include <algorithm>

#include <xercesc/dom/DOMNode.hpp>

#include "host/BrevixTranscoder.h"

namespace KwBrevix_930 {

namespace {

using xercesc::DOMNode;

// The node behind another in document order, among the descendants of a root; null behind the last.
const DOMNode* NextDescendant(const DOMNode* node, const DOMNode* root) {
    if (const DOMNode* child = node->getFirstChild())
        return child;
    while (node != root && !node->getNextSibling())
        node = node->getParentNode();
    return node == root ? nullptr : node->getNextSibling();
}

// Lists of numbers are ASCII, which needs no transcoder.
void AppendNarrow(const BrevixTranscoder& transcoder, const XMLCh* value, std::string& text) {
    const XMLCh* end = value;
    while (*end != 0 && *end < 0x80)
        ++end;
    if (*end != 0) {
        text += transcoder.ToNarrow(value);
        return;
    }
    const std::size_t before = text.size();
    text.resize(before + static_cast<std::size_t>(end - value));
    std::transform(value, end, text.begin() + static_cast<std::ptrdiff_t>(before),
                   [](XMLCh c) { return static_cast<char>(c); });
}

}  // namespace

std::string ElementText(const BrevixTranscoder& transcoder, const DOMNode& node) {
    std::string text;
    for (const DOMNode* next = NextDescendant(&node, &node); next; next = NextDescendant(next, &node)) {
        const auto type = next->getNodeType();
        if (type == DOMNode::TEXT_NODE || type == DOMNode::CDATA_SECTION_NODE)
            AppendNarrow(transcoder, next->getNodeValue(), text);
    }
    return text;
}

}  // namespace KwBrevix_930
