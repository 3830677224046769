// Reads XML documents that come from strangers.
#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>

#include <xercesc/dom/DOMDocument.hpp>

#include "host/Export.h"

namespace KwBrevix_930 {

struct BREVIX_HOST_API DocumentRelease {
    void operator()(xercesc::DOMDocument* document) const noexcept;
};

using DocumentHandle = std::unique_ptr<xercesc::DOMDocument, DocumentRelease>;

/// Parsers of documents. They resolve no external entity, load no document type or schema, and bound the expansion of
/// internal entities and the depth of nesting. Errors: BXException 260101 with what is wrong, the line and the column.
class BREVIX_HOST_API DocumentParser {
public:
    static constexpr int kNestingLimit = 1000;
    static constexpr int kEntityExpansionLimit = 1000;
    static constexpr int kEntityLengthLimit = 10000;

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

private:
    bool fUseNamespaces;
};

}  // namespace KwBrevix_930
