// Reading documents: what is read, and where the fault of an unreadable one is said to be.
#include "host/DocumentParser.h"

#include <gmock/gmock.h>

#include <sstream>
#include <streambuf>
#include <thread>
#include <vector>
#include <xercesc/dom/DOM.hpp>

#include "host/BaseTranslator.h"
#include "host/BrevixTranscoder.h"
#include "tests/host/error_of.h"

namespace {

using KwBrevix_930::BaseTranslator;
using KwBrevix_930::BrevixTranscoder;
using KwBrevix_930::BXException;
using KwBrevix_930::DocumentHandle;
using KwBrevix_930::DocumentParser;
using testing::HasSubstr;

std::string RootName(const DocumentHandle& document) {
    return BrevixTranscoder().ToNarrow(document->getDocumentElement()->getTagName());
}

std::string RootText(const DocumentHandle& document) {
    return BrevixTranscoder().ToNarrow(document->getDocumentElement()->getTextContent());
}

// Expects code 260101 with a place in the text.
void ExpectFault(const std::string& text, const std::string& line, const std::string& column) {
    const BXException error = ErrorOf([&] { DocumentParser().ParseText(text); });
    ASSERT_EQ(error.GetErrorCode(), 260101) << text;
    EXPECT_NE(error.GetArguments()[0], "") << text;
    EXPECT_EQ(error.GetArguments()[1], line) << text << ": " << error.what();
    EXPECT_EQ(error.GetArguments()[2], column) << text << ": " << error.what();
}

TEST(DocumentParser, ReadsTextAndStreamAlike) {
    const std::string text = "<?xml version='1.0'?>\n<PMML version='4.4'>a &lt; b</PMML>\n";
    const DocumentParser parser;
    const DocumentHandle fromText = parser.ParseText(text);
    std::istringstream stream(text);
    const DocumentHandle fromStream = parser.ParseStream(stream);
    for (const DocumentHandle* document : {&fromText, &fromStream}) {
        EXPECT_EQ(RootName(*document), "PMML");
        EXPECT_EQ(RootText(*document), "a < b");
    }
}

TEST(DocumentParser, IsNotTiedToTheTextItRead) {
    std::string text = "<a>kept</a>";
    const DocumentHandle document = DocumentParser().ParseText(text);
    text.assign(text.size(), '#');
    EXPECT_EQ(RootText(document), "kept");
}

TEST(DocumentParser, NamesTheLineAndColumnOfAFault) {
    ExpectFault("<a>\n  <b>\n  </c>\n</a>", "3", "5");
    ExpectFault("<a>\n<b x=1/></a>", "2", "6");
    ExpectFault("<a><b></b>", "1", "11");
    ExpectFault("<a>\n\n\n   &undefined;</a>", "4", "15");
    ExpectFault("<a x='1' x='2'/>", "1", "17");
    ExpectFault("<a/><b/>", "1", "5");
    ExpectFault("<a>\n]]></a>", "2", "4");
}

const xercesc::DOMElement& ChildOf(const xercesc::DOMElement& parent) {
    return *parent.getFirstElementChild();
}

TEST(DocumentParser, TellsTheLineInWhichAStartTagEnds) {
    const DocumentHandle document = DocumentParser().ParseText("<a>\n<b\n x='1'><c/>\n</b></a>");
    const auto& root = *document->getDocumentElement();
    EXPECT_EQ(DocumentParser::LineOf(root), 1u);
    EXPECT_EQ(DocumentParser::LineOf(ChildOf(root)), 3u);
    EXPECT_EQ(DocumentParser::LineOf(ChildOf(ChildOf(root))), 3u);
    EXPECT_EQ(DocumentParser::LineOf(*document->createElement(root.getTagName())), 0u);
}

TEST(DocumentParser, TellsNoLinesInsideTheElementsThatAModelHasManyOf) {
    const DocumentHandle document = DocumentParser().ParseText(
        "<a>\n<p:VectorDictionary xmlns:p='u'>\n<b><VectorDictionary/></b></p:VectorDictionary>\n"
        "<SupportVectorMachine>\n<b/></SupportVectorMachine>\n<c/></a>");
    const auto& vectors = ChildOf(*document->getDocumentElement());
    const auto& machine = *vectors.getNextElementSibling();
    EXPECT_EQ(DocumentParser::LineOf(vectors), 2u);
    EXPECT_EQ(DocumentParser::LineOf(ChildOf(vectors)), 0u);
    EXPECT_EQ(DocumentParser::LineOf(ChildOf(ChildOf(vectors))), 0u);
    EXPECT_EQ(DocumentParser::LineOf(machine), 4u);
    EXPECT_EQ(DocumentParser::LineOf(ChildOf(machine)), 0u);
    EXPECT_EQ(DocumentParser::LineOf(*machine.getNextElementSibling()), 6u);
}

TEST(DocumentParser, TellsLinesWhileOtherThreadsReadDocuments) {
    const DocumentHandle kept = DocumentParser().ParseText("<a>\n\n<b/></a>");
    const auto read = [&] {
        for (int i = 0; i < 50; ++i) {
            const DocumentHandle other = DocumentParser().ParseText("<a>\n<b/></a>");
            EXPECT_EQ(DocumentParser::LineOf(ChildOf(*other->getDocumentElement())), 2u);
            EXPECT_EQ(DocumentParser::LineOf(ChildOf(*kept->getDocumentElement())), 3u);
        }
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < 3; ++i)
        threads.emplace_back(read);
    for (std::thread& thread : threads)
        thread.join();
}

TEST(DocumentParser, RefusesWhatIsNoDocument) {
    for (const char* text : {"", " ", "\n\n", "text", "<", "<a", "<a ", "<!-- only -->", "<?xml version='1.0'?>", "{}",
                             "PK\x03\x04", "<1/>", "</a>", "<a></a"}) {
        const BXException error = ErrorOf([&] { DocumentParser().ParseText(text); });
        EXPECT_EQ(error.GetErrorCode(), 260101) << text;
    }
    EXPECT_EQ(ErrorOf([] { DocumentParser().ParseText(std::string_view()); }).GetErrorCode(), 260101);
    std::istringstream empty;
    EXPECT_EQ(ErrorOf([&] { DocumentParser().ParseStream(empty); }).GetErrorCode(), 260101);
}

TEST(DocumentParser, RefusesZeroBytes) {
    using namespace std::string_literals;
    for (const std::string& text : {"<a>x\0y</a>"s, "<a b='\0'/>"s, "<a\0/>"s, "\0<a/>"s, std::string(64, '\0')}) {
        const BXException error = ErrorOf([&] { DocumentParser().ParseText(text); });
        EXPECT_EQ(error.GetErrorCode(), 260101) << testing::PrintToString(text);
    }
    EXPECT_EQ(ErrorOf([] { DocumentParser().ParseText("<a>&#0;</a>"); }).GetErrorCode(), 260101);
}

TEST(DocumentParser, EndsAtAZeroByteBehindTheRoot) {
    EXPECT_EQ(RootText(DocumentParser().ParseText(std::string_view("<a>x</a>\0<b/>", 13))), "x");
}

TEST(DocumentParser, RefusesAnEntityThatItDoesNotKnowWhateverTheDocumentType) {
    for (const std::string type :
         {"", "<!DOCTYPE a>", "<!DOCTYPE a SYSTEM 'x'>", "<!DOCTYPE a SYSTEM 'x' []>", "<!DOCTYPE a [<!ENTITY m 'y'>]>",
          "<!DOCTYPE a SYSTEM 'x' [<!ENTITY m 'y'>]>", "<!DOCTYPE a [%p;]>", "<!DOCTYPE a SYSTEM 'x' [%p;]>"}) {
        for (const char* root : {"<a>1 &two; 3</a>", "<a b='&two;'/>"}) {
            const BXException error = ErrorOf([&] { DocumentParser().ParseText(type + root); });
            EXPECT_EQ(error.GetErrorCode(), 260101) << type << root;
            EXPECT_THAT(error.what(), HasSubstr("'two'")) << type << root;
        }
    }
}

TEST(DocumentParser, WantsPrefixesDeclaredUnlessNamespacesAreOff) {
    const char* text = "<p:a><q:b/></p:a>";
    EXPECT_EQ(ErrorOf([&] { DocumentParser().ParseText(text); }).GetErrorCode(), 260101);
    EXPECT_EQ(ErrorOf([&] { DocumentParser(true).ParseText(text); }).GetErrorCode(), 260101);
    EXPECT_EQ(RootName(DocumentParser(false).ParseText(text)), "p:a");
    EXPECT_EQ(RootName(DocumentParser().ParseText("<p:a xmlns:p='u'/>")), "p:a");
}

std::string AsUtf16(const std::string& ascii, bool bigEndian, bool mark) {
    std::string bytes = !mark ? "" : bigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (const char c : ascii) {
        bytes += bigEndian ? std::string{'\0', c} : std::string{c, '\0'};
    }
    return bytes;
}

TEST(DocumentParser, ReadsTheEncodingThatADocumentDeclares) {
    const DocumentParser parser;
    EXPECT_EQ(RootText(parser.ParseText("<?xml version='1.0' encoding='ISO-8859-1'?><a>Gr\xF6\xDF"
                                        "e</a>")),
              "Größe");
    EXPECT_EQ(RootText(parser.ParseText("<?xml version='1.0' encoding='UTF-8'?><a>Größe \xF0\x9F\x98\x80</a>")),
              "Größe \xF0\x9F\x98\x80");
    EXPECT_EQ(RootText(parser.ParseText("\xEF\xBB\xBF<a>Größe</a>")), "Größe");
    EXPECT_EQ(RootText(parser.ParseText("<?xml version='1.0' encoding='windows-1252'?><a>\x80</a>")), "€");
    EXPECT_EQ(RootText(parser.ParseText("<?xml version='1.0' encoding='US-ASCII'?><a>plain</a>")), "plain");
    for (const bool bigEndian : {false, true}) {
        const std::string text = "<?xml version='1.0' encoding='UTF-16'?><a>sixteen</a>";
        EXPECT_EQ(RootText(parser.ParseText(AsUtf16(text, bigEndian, true))), "sixteen");
        EXPECT_EQ(RootText(parser.ParseText(AsUtf16("<a>no declaration</a>", bigEndian, true))), "no declaration");
    }
}

TEST(DocumentParser, RefusesBytesThatAreNotOfTheEncoding) {
    for (const char* text : {"<a>Gr\xF6\xDF"
                             "e</a>",
                             "<a>\xC0\x80</a>", "<a>\xED\xA0\x80</a>", "<a>\xF4\x90\x80\x80</a>", "<a>\xE2\x82</a>",
                             "<a>\xFF</a>", "<?xml version='1.0' encoding='US-ASCII'?><a>\xE9</a>"}) {
        const BXException error = ErrorOf([&] { DocumentParser().ParseText(text); });
        EXPECT_EQ(error.GetErrorCode(), 260101) << testing::PrintToString(text);
    }
}

TEST(DocumentParser, RefusesAnEncodingThatNobodyKnows) {
    const BXException error =
        ErrorOf([] { DocumentParser().ParseText("<?xml version='1.0' encoding='klingon-8'?>\n<a/>"); });
    EXPECT_EQ(error.GetErrorCode(), 260101);
    EXPECT_THAT(error.what(), HasSubstr("KLINGON-8"));
    EXPECT_EQ(ErrorOf([] { DocumentParser().ParseText("<a/>", "klingon-8"); }).GetErrorCode(), 260101);
    EXPECT_EQ(ErrorOf([] { DocumentParser().ParseText("<a/>", std::string(100'000, 'e')); }).GetErrorCode(), 260101);
}

TEST(DocumentParser, AGivenEncodingOverridesTheDeclaredOne) {
    const std::string latin =
        "<?xml version='1.0' encoding='UTF-8'?><a>Gr\xF6\xDF"
        "e</a>";
    EXPECT_EQ(RootText(DocumentParser().ParseText(latin, "ISO-8859-1")), "Größe");
    std::istringstream stream(latin);
    EXPECT_EQ(RootText(DocumentParser().ParseStream(stream, "ISO-8859-1")), "Größe");
}

// Gives some bytes and then fails, by a bad read or by an exception.
class FailingBuffer : public std::streambuf {
public:
    explicit FailingBuffer(std::string bytes) : fBytes(std::move(bytes)) {
        setg(fBytes.data(), fBytes.data(), fBytes.data() + fBytes.size());
    }

protected:
    int_type underflow() override { throw std::runtime_error("the disk is on fire"); }

private:
    std::string fBytes;
};

TEST(DocumentParser, TellsAFailedStreamFromAnEndedOne) {
    for (const std::string& bytes :
         {std::string(), std::string("<a><b>"), "<a>" + std::string(200'000, 'x'), std::string("<a>complete</a>")}) {
        FailingBuffer buffer(bytes);
        std::istream stream(&buffer);
        const BXException error = ErrorOf([&] { DocumentParser().ParseStream(stream); });
        ExpectError(error, 260101, {"the stream failed", "0", "0"});
    }
    std::istringstream ended("<a><b>");
    EXPECT_THAT(ErrorOf([&] { DocumentParser().ParseStream(ended); }).what(), Not(HasSubstr("the stream failed")));
}

TEST(DocumentParser, PassesTheExceptionOfAStreamThatThrows) {
    FailingBuffer buffer("<a>" + std::string(200'000, 'x'));
    std::istream stream(&buffer);
    stream.exceptions(std::ios::badbit);
    EXPECT_THROW(DocumentParser().ParseStream(stream), std::runtime_error);
}

TEST(DocumentParser, ReadsAStreamThatComesInSmallPieces) {
    class Drops : public std::streambuf {
    public:
        explicit Drops(std::string bytes) : fBytes(std::move(bytes)) {}

    protected:
        int_type underflow() override {
            if (fNext == fBytes.size())
                return traits_type::eof();
            char* place = fBytes.data() + fNext++;
            setg(place, place, place + 1);
            return traits_type::to_int_type(*place);
        }

    private:
        std::string fBytes;
        std::size_t fNext = 0;
    };
    Drops buffer("<a>" + std::string(100'000, 'd') + "</a>");
    std::istream stream(&buffer);
    EXPECT_EQ(RootText(DocumentParser().ParseStream(stream)).size(), 100'000u);
}

TEST(DocumentParser, KeepsHugeTextsAndAttributesWhole) {
    const std::string huge(3'000'000, 'v');
    const DocumentHandle document = DocumentParser().ParseText("<a>" + huge + "</a>");
    EXPECT_EQ(RootText(document), huge);
    const DocumentHandle attribute = DocumentParser().ParseText("<a b='" + huge + "'/>");
    const auto name = BrevixTranscoder().ToWide("b");
    EXPECT_EQ(BrevixTranscoder().ToNarrow(attribute->getDocumentElement()->getAttribute(name.c_str())), huge);
}

TEST(DocumentParser, LeavesCommentsOutOfTexts) {
    const DocumentHandle document = DocumentParser().ParseText("<a>1 2<!-- 3 --> 4<![CDATA[ <5> ]]></a>");
    EXPECT_EQ(RootText(document), "1 2 4 <5> ");
}

TEST(DocumentParser, CreatesADocumentWithARootAlone) {
    const DocumentHandle document = DocumentParser::CreateDocument("PMML");
    EXPECT_EQ(RootName(document), "PMML");
    EXPECT_EQ(BaseTranslator::GetFirstChildElt(document->getDocumentElement()), nullptr);
}

TEST(DocumentParser, MayBeInitializedAgain) {
    DocumentParser::Initialize();
    DocumentParser::Initialize();
    EXPECT_EQ(RootName(DocumentParser().ParseText("<a/>")), "a");
}

}  // namespace
