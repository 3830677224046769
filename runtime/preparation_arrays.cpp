// Arrays of the vectors: dense ones become sparse, zeros are kept, and texts that are no numbers are refused.
#include <charconv>
#include <cmath>
#include <functional>
#include <optional>

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNodeList.hpp>
#include <xercesc/dom/DOMText.hpp>

#include "host/BaseTranslator.h"
#include "host/PMMLModelTags.h"
#include "host/number_text.h"
#include "runtime/ModelDocument.h"
#include "runtime/Preparation.h"

namespace brevix {

namespace {

using KwBrevix_930::BaseTranslator;
using Tags = KwBrevix_930::PMMLModelTags;
using xercesc::DOMElement;
using xercesc::DOMNode;

bool isSeparator(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

// An element's text, which may be cut into several nodes anywhere; what is not ASCII cannot belong to a number.
void readText(const DOMElement& element, std::string& text) {
    text.clear();
    for (const DOMNode* node = element.getFirstChild(); node; node = node->getNextSibling()) {
        if (node->getNodeType() != DOMNode::TEXT_NODE && node->getNodeType() != DOMNode::CDATA_SECTION_NODE)
            continue;
        for (const XMLCh* c = node->getNodeValue(); *c; ++c)
            text += *c < 0x80 ? static_cast<char>(*c) : '?';
    }
}

// Hands on each token of a text until one is not taken.
// Returns: the token that was not taken, empty where all were.
template <class Take>
std::string_view takeTokens(const std::string& text, Take take) {
    const char* const end = text.data() + text.size();
    for (const char* first = text.data(); first != end; ++first) {
        if (isSeparator(*first))
            continue;
        const char* last = first;
        while (last != end && !isSeparator(*last))
            ++last;
        const std::string_view token(first, static_cast<std::size_t>(last - first));
        if (!take(token))
            return token;
        if (last == end)
            break;
        first = last;
    }
    return {};
}

bool isNumber(std::string_view token) {
    double number = 0.0;
    const auto parsed = std::from_chars(token.data(), token.data() + token.size(), number);
    const bool isPlain = parsed.ec == std::errc() && parsed.ptr == token.data() + token.size();
    return isPlain || KwBrevix_930::ParseNumber(token).has_value();
}

// The texts "1 2 ... n", kept for the next array, which mostly has the same length.
class IndexTexts {
public:
    const XMLCh* getText(std::size_t count) {
        if (count != fCount) {
            fText.clear();
            for (std::size_t i = 1; i <= count; ++i)
                append(i);
            fCount = count;
        }
        return fText.c_str();
    }

private:
    void append(std::size_t index) {
        char digits[20];
        const auto written = std::to_chars(digits, digits + sizeof digits, index);
        if (index > 1)
            fText += XMLCh(' ');
        fText.append(digits, written.ptr);
    }

    std::size_t fCount = 0;
    std::basic_string<XMLCh> fText;
};

// Reads and rewrites the instances of one document.
class ArrayPreparation {
public:
    ArrayPreparation(Preparation& preparation, std::size_t columnCount)
        : fPreparation(preparation), fDocument(preparation.document), fColumnCount(columnCount) {}

    void prepare(DOMElement& instance) {
        fId = fDocument.getAttribute(instance, Tags::XML_ATT_SVM_ID);
        DOMElement* sparse = fDocument.findChild(&instance, Tags::XML_ELE_SVM_REALSPARSEARRAY);
        DOMElement* dense = fDocument.findChild(&instance, Tags::XML_ELE_SVM_REALARRAY);
        if (sparse)
            checkSparse(*sparse);
        else if (dense)
            makeSparse(instance, *dense);
        else
            refuseOthers(instance);
    }

    std::size_t getDenseCount() const { return fDenseCount; }
    std::size_t getZeroCount() const { return fZeroCount; }

private:
    void refuse(const char* what, const std::string& problem) {
        fPreparation.complaints.push_back("the " + std::string(what) + " of the VectorInstance '" + fId + "' " +
                                          problem);
    }

    void refuseOthers(const DOMElement& instance) {
        for (const DOMElement* child : fDocument.findChildren(&instance, "")) {
            if (!BaseTranslator::HasTag(child, Tags::XML_ELE_EXTENSION))
                refuse("content", "cannot be read: it is neither a REAL-SparseArray nor an Array");
        }
    }

    bool checkLength(const DOMElement& array, std::size_t count) {
        const auto length = fDocument.findAttribute(array, Tags::XML_ATT_SVM_N);
        const std::string entries = counted(count, "entry", "entries");
        if (length && KwBrevix_930::ParseNumber(*length) != static_cast<double>(count))
            refuse("Array", "has n=" + *length + " but " + entries);
        else if (count != fColumnCount)
            refuse("Array", "has " + entries + " but VectorFields has " + std::to_string(fColumnCount));
        else
            return true;
        return false;
    }

    bool checkDense(const DOMElement& array) {
        readText(array, fText);
        if (fText.find('"') != std::string::npos) {
            refuse("Array", "holds a quoted text where numbers must stand");
            return false;
        }
        std::size_t count = 0;
        const auto wrong = takeTokens(fText, [&count](std::string_view token) {
            ++count;
            return isNumber(token);
        });
        if (!wrong.empty())
            refuse("Array", "holds '" + std::string(wrong) + "' where a number must stand");
        return wrong.empty() && checkLength(array, count);
    }

    void makeSparse(DOMElement& instance, DOMElement& array) {
        if (!checkDense(array))
            return;
        DOMElement* sparse = fDocument.createElement(array, Tags::XML_ELE_SVM_REALSPARSEARRAY);
        DOMElement* indices = fDocument.createElement(array, Tags::XML_ELE_SVM_INDICES);
        DOMElement* entries = fDocument.createElement(array, Tags::XML_ELE_SVM_REAL_ENTRIES);
        fDocument.setAttribute(*sparse, Tags::XML_ATT_SVM_N, std::to_string(fColumnCount));
        indices->appendChild(fDocument.getDocument().createTextNode(fIndexTexts.getText(fColumnCount)));
        while (DOMNode* child = array.getFirstChild())
            entries->appendChild(child);
        sparse->appendChild(indices);
        sparse->appendChild(entries);
        instance.replaceChild(sparse, &array)->release();
        ++fDenseCount;
    }

    // The translator refuses what is no 32-bit number; what it would take for another index is refused here.
    bool takeIndex(std::string_view token, double& previous) const {
        std::int32_t whole = 0;
        const char* const end = token.data() + token.size();
        const auto parsed = std::from_chars(token.data(), end, whole);
        double index = whole;
        if (parsed.ec != std::errc() || parsed.ptr != end) {
            const auto number = KwBrevix_930::ParseNumber(token);
            if (!number)
                return false;
            index = *number;
        }
        if (std::isnan(index) || std::fabs(index) >= 2147483648.0)
            return true;
        const bool isNext =
            index > previous && index <= static_cast<double>(fColumnCount) && std::trunc(index) == index;
        previous = index;
        return isNext;
    }

    void checkSparse(DOMElement& array) {
        const auto rest = fDocument.findAttribute(array, "defaultValue");
        if (rest && KwBrevix_930::ParseNumber(*rest) != 0.0)
            refuse("REAL-SparseArray", "asks for defaultValue=" + *rest);
        DOMElement* indices = fDocument.findChild(&array, Tags::XML_ELE_SVM_INDICES);
        DOMElement* entries = fDocument.findChild(&array, Tags::XML_ELE_SVM_REAL_ENTRIES);
        if (!entries)
            entries = fDocument.findChild(&array, Tags::XML_ELE_SVM_ENTRIES);
        const bool hasIndex = indices && checkIndices(*indices);
        const bool hasEntry = entries && checkEntries(*entries);
        const auto length = KwBrevix_930::ParseNumber(fDocument.getAttribute(array, Tags::XML_ATT_SVM_N));
        const bool impliesZeros = !indices && !entries && length.value_or(0.0) >= 1.0;
        if (!hasIndex && !hasEntry && !impliesZeros && fColumnCount > 0)
            keepZeros(array, indices, entries);
    }

    // Returns: whether there is any index.
    bool checkIndices(const DOMElement& indices) {
        readText(indices, fText);
        double previous = 0.0;
        std::size_t count = 0;
        const auto wrong = takeTokens(fText, [&](std::string_view token) {
            ++count;
            return takeIndex(token, previous);
        });
        if (!wrong.empty())
            refuse("REAL-SparseArray",
                   "has the index '" + std::string(wrong) +
                       "'; its Indices must ascend from 1 to the number of VectorFields, which is " +
                       std::to_string(fColumnCount));
        return count > 0;
    }

    // Returns: whether there is any entry.
    bool checkEntries(const DOMElement& entries) {
        readText(entries, fText);
        std::size_t count = 0;
        const auto wrong = takeTokens(fText, [&count](std::string_view token) {
            ++count;
            return isNumber(token);
        });
        if (!wrong.empty())
            refuse("REAL-SparseArray", "holds '" + std::string(wrong) + "' where a number must stand");
        return count > 0;
    }

    // The translator would leave a vector of zeros out, which has a kernel value like any other.
    void keepZeros(DOMElement& array, DOMElement* indices, DOMElement* entries) {
        const auto write = [&](DOMElement* element, const char* tag, const char* text) {
            if (!element)
                element = static_cast<DOMElement*>(array.appendChild(fDocument.createElement(array, tag)));
            element->setTextContent(KwBrevix_930::BrevixTranscoder().ToWide(text).c_str());
        };
        write(indices, Tags::XML_ELE_SVM_INDICES, "1");
        write(entries, Tags::XML_ELE_SVM_REAL_ENTRIES, "0");
        ++fZeroCount;
    }

    Preparation& fPreparation;
    const ModelDocument& fDocument;
    const std::size_t fColumnCount;
    IndexTexts fIndexTexts;
    std::string fText;
    std::string fId;
    std::size_t fDenseCount = 0;
    std::size_t fZeroCount = 0;
};

}  // namespace

void makeArraysSparse(Preparation& preparation) {
    const ModelDocument& document = preparation.document;
    const DOMElement* vectors = document.findChild(document.getModel(), Tags::XML_ELE_SVM_VECTORDICTION);
    if (!vectors)
        return;
    // The list is live: it is read to its end before anything changes.
    std::vector<DOMElement*> instances;
    const auto* list = BaseTranslator::GetElementsByTagName(vectors, Tags::XML_ELE_SVM_VECTORINSTANCE);
    for (XMLSize_t i = 0; DOMNode* node = list->item(i); ++i)
        instances.push_back(static_cast<DOMElement*>(node));
    ArrayPreparation arrays(preparation, document.getVectorFields().size());
    for (DOMElement* instance : instances)
        arrays.prepare(*instance);
    preparation.note(arrays.getDenseCount(), counted(arrays.getDenseCount(), "dense Array was", "dense Arrays were") +
                                                 " read as REAL-SparseArray");
    preparation.note(arrays.getZeroCount(),
                     counted(arrays.getZeroCount(), "vector without entries was", "vectors without entries were") +
                         " read as zeros");
}

}  // namespace brevix
