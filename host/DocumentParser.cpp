// Reads XML documents that come from strangers: a Xerces-C DOM parser with its doors closed.
#include "host/DocumentParser.h"

#include <functional>
#include <istream>
#include <iterator>
#include <mutex>
#include <new>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include <xercesc/dom/DOMImplementation.hpp>
#include <xercesc/dom/DOMImplementationRegistry.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/Locator.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/SecurityManager.hpp>
#include <xercesc/util/XMLEntityResolver.hpp>
#include <xercesc/util/XMLResourceIdentifier.hpp>
#include <xercesc/validators/DTD/DTDEntityDecl.hpp>

#include "host/BXErrorFormater.h"
#include "host/BXException.h"
#include "host/BrevixTranscoder.h"

namespace KwBrevix_930 {

namespace {

[[noreturn]] void ThrowUnreadable(const std::string& what, XMLFileLoc line, XMLFileLoc column) {
    BXException error(&gErrorFormater);
    error.PutErrorMessage(260101, what.c_str(), std::to_string(line).c_str(), std::to_string(column).c_str());
    throw error;
}

// The lines of a document's elements, kept beside the document.
using Lines = std::unordered_map<const xercesc::DOMElement*, std::size_t>;

// The lines of all documents that were parsed and are still there.
class LineRegister {
public:
    static LineRegister& Get() {
        // Never ends: a document may live as long as the program.
        static auto* const theOne = new LineRegister;
        return *theOne;
    }

    void Add(const xercesc::DOMDocument* document, Lines lines) {
        const std::lock_guard lock(fMutex);
        fLines[document] = std::move(lines);
    }

    void Remove(const xercesc::DOMDocument* document) {
        const std::lock_guard lock(fMutex);
        fLines.erase(document);
    }

    std::size_t Find(const xercesc::DOMElement& element) {
        const std::lock_guard lock(fMutex);
        const auto document = fLines.find(element.getOwnerDocument());
        if (document == fLines.end())
            return 0;
        const auto line = document->second.find(&element);
        return line == document->second.end() ? 0 : line->second;
    }

private:
    std::mutex fMutex;
    std::unordered_map<const xercesc::DOMDocument*, Lines> fLines;
};

class Complaints : public xercesc::ErrorHandler {
public:
    void warning(const xercesc::SAXParseException&) override {}
    void error(const xercesc::SAXParseException& fault) override { fatalError(fault); }
    void fatalError(const xercesc::SAXParseException& fault) override {
        ThrowUnreadable(BrevixTranscoder().ToNarrow(fault.getMessage()), fault.getLineNumber(),
                        fault.getColumnNumber());
    }
    void resetErrors() override {}
};

class NoExternalEntities : public xercesc::XMLEntityResolver {
public:
    xercesc::InputSource* resolveEntity(xercesc::XMLResourceIdentifier* identifier) override {
        const xercesc::Locator* place = identifier->getLocator();
        ThrowUnreadable(
            "the external entity '" + BrevixTranscoder().ToNarrow(identifier->getSystemId()) + "' is refused",
            place ? place->getLineNumber() : 0, place ? place->getColumnNumber() : 0);
    }
};

class GuardedParser : public xercesc::XercesDOMParser {
public:
    void startElement(const xercesc::XMLElementDecl& declaration, const unsigned int urlId, const XMLCh* const prefix,
                      const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes, const XMLSize_t attributeCount,
                      const bool isEmpty, const bool isRoot) override {
        if (fNamespacesBefore.size() >= DocumentParser::kNestingLimit)
            RefuseMoreThan(DocumentParser::kNestingLimit, "levels of nested elements");
        if (attributeCount > DocumentParser::kAttributeLimit)
            RefuseMoreThan(DocumentParser::kAttributeLimit, "attributes in one element");
        fNamespacesBefore.push_back(fNamespaces);
        CountName(declaration.getFullName());
        for (XMLSize_t i = 0; i < attributeCount; ++i)
            CountAttribute(*attributes.elementAt(i));
        if (fNames.size() + getScanner()->getURIStringPool()->getStringCount() > DocumentParser::kNameLimit)
            RefuseMoreThan(DocumentParser::kNameLimit, "different names of elements, attributes and namespaces");
        if (fNamespaces > DocumentParser::kDeclarationLimit)
            RefuseMoreThan(DocumentParser::kDeclarationLimit, "namespaces in scope");
        if (fQuietDepth == 0 && IsBulk(declaration))
            fQuietDepth = fNamespacesBefore.size();
        XercesDOMParser::startElement(declaration, urlId, prefix, attributes, attributeCount, isEmpty, isRoot);
    }

    void endElement(const xercesc::XMLElementDecl& declaration, const unsigned int urlId, const bool isRoot,
                    const XMLCh* const prefix) override {
        if (fQuietDepth == fNamespacesBefore.size())
            fQuietDepth = 0;
        fNamespaces = fNamespacesBefore.back();
        fNamespacesBefore.pop_back();
        XercesDOMParser::endElement(declaration, urlId, isRoot, prefix);
    }

    // Beside a document type that is not read whole, the scanner would leave out the entities that it does not know.
    void doctypeDecl(const xercesc::DTDElementDecl& declaration, const XMLCh* const publicId,
                     const XMLCh* const systemId, const bool hasInternalSubset, const bool hasExternalSubset) override {
        getScanner()->setHasNoDTD(true);
        XercesDOMParser::doctypeDecl(declaration, publicId, systemId, hasInternalSubset, hasExternalSubset);
    }

    // Again, because a reference to an unknown parameter entity has the same effect.
    void endIntSubset() override {
        getScanner()->setHasNoDTD(true);
        XercesDOMParser::endIntSubset();
    }

    // Before the list is read: its default values would expand entities without limit, and multiply in the document.
    void startAttList(const xercesc::DTDElementDecl&) override { Refuse("an attribute list is declared in it"); }

    void entityDecl(const xercesc::DTDEntityDecl& declaration, const bool isParameter, const bool isIgnored) override {
        if (isParameter)
            Refuse("a parameter entity is declared in it");
        if (declaration.getValueLen() > DocumentParser::kEntityLengthLimit)
            RefuseMoreThan(DocumentParser::kEntityLengthLimit, "characters in one entity");
        CountDeclaration();
        XercesDOMParser::entityDecl(declaration, isParameter, isIgnored);
    }

    void notationDecl(const xercesc::XMLNotationDecl& declaration, const bool isIgnored) override {
        CountDeclaration();
        XercesDOMParser::notationDecl(declaration, isIgnored);
    }

    Lines TakeLines() { return std::move(fLines); }

protected:
    xercesc::DOMElement* createElement(const XMLCh* name) override {
        return Noted(XercesDOMParser::createElement(name));
    }

    xercesc::DOMElement* createElementNS(const XMLCh* space, const XMLCh* prefix, const XMLCh* localName,
                                         const XMLCh* name) override {
        return Noted(XercesDOMParser::createElementNS(space, prefix, localName, name));
    }

private:
    using Name = std::basic_string<XMLCh>;
    using NameView = std::basic_string_view<XMLCh>;
    struct NameHash : std::hash<NameView> {
        using is_transparent = void;
    };

    // The elements that a model has many of stand in these.
    static bool IsBulk(const xercesc::XMLElementDecl& declaration) {
        static constexpr char16_t kVectors[] = u"VectorDictionary";
        static constexpr char16_t kMachine[] = u"SupportVectorMachine";
        const NameView name(declaration.getBaseName());
        return name == kVectors || name == kMachine;
    }

    xercesc::DOMElement* Noted(xercesc::DOMElement* element) {
        if (fQuietDepth == 0 || fQuietDepth == fNamespacesBefore.size())
            fLines.emplace(element, static_cast<std::size_t>(getScanner()->getLocator()->getLineNumber()));
        return element;
    }

    void CountDeclaration() {
        if (++fDeclarations > DocumentParser::kDeclarationLimit)
            RefuseMoreThan(DocumentParser::kDeclarationLimit, "entities and notations");
    }

    void CountAttribute(const xercesc::XMLAttr& attribute) {
        static constexpr XMLCh kNamespacePrefix[] = {'x', 'm', 'l', 'n', 's'};
        const NameView name(attribute.getQName());
        CountName(name);
        if (name.starts_with(NameView(kNamespacePrefix, std::size(kNamespacePrefix))))
            ++fNamespaces;
    }

    // The DOM finds a name that it has met before in a table of fixed size.
    void CountName(NameView name) {
        if (fNames.find(name) == fNames.end())
            fNames.emplace(name);
    }

    [[noreturn]] void RefuseMoreThan(std::size_t limit, const std::string& what) const {
        Refuse("there are more than " + std::to_string(limit) + " " + what);
    }

    [[noreturn]] void Refuse(const std::string& what) const {
        const xercesc::Locator* place = getScanner()->getLocator();
        ThrowUnreadable(what, place->getLineNumber(), place->getColumnNumber());
    }

    std::unordered_set<Name, NameHash, std::equal_to<>> fNames;
    std::size_t fDeclarations = 0;
    std::size_t fNamespaces = 0;
    // For each open element, the namespace declarations in scope outside it.
    std::vector<std::size_t> fNamespacesBefore;
    Lines fLines;
    // The depth of the open element whose content has no lines noted; 0 where there is none.
    std::size_t fQuietDepth = 0;
};

class StreamOfBytes : public xercesc::BinInputStream {
public:
    explicit StreamOfBytes(std::istream& stream) : fStream(stream) {}

    XMLFilePos curPos() const override { return fPosition; }
    XMLSize_t readBytes(XMLByte* const target, const XMLSize_t most) override {
        fStream.read(reinterpret_cast<char*>(target), static_cast<std::streamsize>(most));
        if (fStream.bad())
            ThrowUnreadable("the stream failed", 0, 0);
        const auto count = static_cast<XMLSize_t>(fStream.gcount());
        fPosition += count;
        return count;
    }
    const XMLCh* getContentType() const override { return nullptr; }

private:
    std::istream& fStream;
    XMLFilePos fPosition = 0;
};

class StreamSource : public xercesc::InputSource {
public:
    explicit StreamSource(std::istream& stream) : fStream(stream) {}
    xercesc::BinInputStream* makeStream() const override { return new StreamOfBytes(fStream); }

private:
    std::istream& fStream;
};

void CloseDoors(GuardedParser& parser, bool useNamespaces) {
    parser.setValidationScheme(xercesc::XercesDOMParser::Val_Never);
    parser.setDoNamespaces(useNamespaces);
    parser.setDoSchema(false);
    parser.setLoadSchema(false);
    parser.setLoadExternalDTD(false);
    parser.setSkipDTDValidation(true);
    parser.setDisableDefaultEntityResolution(true);
    parser.setCreateEntityReferenceNodes(false);
    parser.setCreateCommentNodes(false);
}

DocumentHandle Parse(xercesc::InputSource& source, const std::string& encoding, bool useNamespaces) {
    const BrevixTranscoder transcoder;
    if (!encoding.empty())
        source.setEncoding(transcoder.ToWide(encoding).c_str());
    Complaints complaints;
    NoExternalEntities noExternalEntities;
    xercesc::SecurityManager limits;
    limits.setEntityExpansionLimit(DocumentParser::kEntityExpansionLimit);
    GuardedParser parser;
    CloseDoors(parser, useNamespaces);
    parser.setErrorHandler(&complaints);
    parser.setXMLEntityResolver(&noExternalEntities);
    parser.setSecurityManager(&limits);
    try {
        parser.parse(source);
    } catch (const xercesc::XMLException& fault) {
        ThrowUnreadable(transcoder.ToNarrow(fault.getMessage()), 0, 0);
    } catch (const xercesc::DOMException& fault) {
        ThrowUnreadable(transcoder.ToNarrow(fault.getMessage()), 0, 0);
    } catch (const xercesc::OutOfMemoryException&) {
        throw std::bad_alloc();
    }
    DocumentHandle document(parser.adoptDocument());
    if (!document || !document->getDocumentElement())
        ThrowUnreadable("there is no element in it", 0, 0);
    LineRegister::Get().Add(document.get(), parser.TakeLines());
    return document;
}

}  // namespace

void DocumentRelease::operator()(xercesc::DOMDocument* document) const noexcept {
    LineRegister::Get().Remove(document);
    document->release();
}

void DocumentParser::Initialize() {
    static std::once_flag once;
    std::call_once(once, [] { xercesc::XMLPlatformUtils::Initialize(); });
}

DocumentHandle DocumentParser::ParseText(std::string_view text, const std::string& encoding) const {
    Initialize();
    static const XMLCh kNoName[] = {0};
    xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(text.data()), text.size(), kNoName);
    source.setCopyBufToStream(false);
    return Parse(source, encoding, fUseNamespaces);
}

DocumentHandle DocumentParser::ParseStream(std::istream& stream, const std::string& encoding) const {
    Initialize();
    StreamSource source(stream);
    return Parse(source, encoding, fUseNamespaces);
}

DocumentHandle DocumentParser::CreateDocument(const std::string& rootName) {
    Initialize();
    const BrevixTranscoder transcoder;
    auto* implementation = xercesc::DOMImplementationRegistry::getDOMImplementation(transcoder.ToWide("Core").c_str());
    return DocumentHandle(implementation->createDocument(nullptr, transcoder.ToWide(rootName).c_str(), nullptr));
}

std::size_t DocumentParser::LineOf(const xercesc::DOMElement& element) {
    return LineRegister::Get().Find(element);
}

}  // namespace KwBrevix_930
