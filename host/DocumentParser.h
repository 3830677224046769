// Reads XML documents that come from strangers.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include "host/Export.h"

namespace KwBrevix_930 {

struct BREVIX_HOST_API DocumentRelease {
    void operator()(xercesc::DOMDocument* document) const noexcept;
};

using DocumentHandle = std::unique_ptr<xercesc::DOMDocument, DocumentRelease>;

/// Parsers of documents. They resolve no external entity, load no document type or schema, and take time and memory in
/// proportion to the bytes they read: what could cost more has a limit, and attribute lists and parameter entities are
/// refused in a document type.
/// Errors: BXException 260101 with what is wrong, the line and the column (0 where the fault is not in the text).
class BREVIX_HOST_API DocumentParser {
public:
    static constexpr std::size_t kNestingLimit = 1000;
    static constexpr std::size_t kEntityExpansionLimit = 1000;
    /// Characters of one entity.
    static constexpr std::size_t kEntityLengthLimit = 10000;
    /// Attributes of one element.
    static constexpr std::size_t kAttributeLimit = 1000;
    /// Entities and notations of a document type; namespace declarations in scope.
    static constexpr std::size_t kDeclarationLimit = 1000;
    /// Different names of elements and attributes, together with the different namespaces.
    static constexpr std::size_t kNameLimit = 10000;

    /// Starts the XML library once per process. Everything that touches a document calls it; calling it again costs
    /// nothing.
    static void Initialize();

    /// useNamespaces: whether prefixes must be declared, as XML namespaces demand.
    explicit DocumentParser(bool useNamespaces = true) : fUseNamespaces(useNamespaces) {}

    /// encoding: overrides what the document declares; empty: the document's own.
    DocumentHandle ParseText(std::string_view text, const std::string& encoding = std::string()) const;
    DocumentHandle ParseStream(std::istream& stream, const std::string& encoding = std::string()) const;

    /// Returns: a new document with a root element of the given name and nothing else.
    static DocumentHandle CreateDocument(const std::string& rootName);

    /// Returns: the line of the text in which an element's start tag ends, from 1; 0 where it is not known: for elements
    /// made or copied later, and for those inside VectorDictionary and SupportVectorMachine, which may be many.
    static std::size_t LineOf(const xercesc::DOMElement& element);

private:
    bool fUseNamespaces;
};

}  // namespace KwBrevix_930
