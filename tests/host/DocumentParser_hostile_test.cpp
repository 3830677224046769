// Documents that want to read files, call the network, or cost more than their bytes. Each ends quickly, with an error
// or without harm; the address sanitizer watches that nothing of a refused document stays behind.
#include <gmock/gmock.h>

#include <fstream>
#include <xercesc/dom/DOM.hpp>

#include "host/BrevixTranscoder.h"
#include "host/DocumentParser.h"
#include "tests/host/error_of.h"
#include "tests/support/TemporaryFolder.h"

#if !defined(_WIN32)
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define BREVIX_TEST_LEAKS
#endif
#endif
#if defined(__SANITIZE_ADDRESS__)
#define BREVIX_TEST_LEAKS
#endif
#if defined(BREVIX_TEST_LEAKS)
#include <sanitizer/lsan_interface.h>
#endif

namespace {

using KwBrevix_930::BrevixTranscoder;
using KwBrevix_930::BXException;
using KwBrevix_930::DocumentHandle;
using KwBrevix_930::DocumentParser;
using testing::HasSubstr;

std::string Repeat(const std::string& text, int count) {
    std::string result;
    for (int i = 0; i < count; ++i)
        result += text;
    return result;
}

// first + 0 + last, first + 1 + last, ...
std::string Numbered(const std::string& first, const std::string& last, std::size_t count) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i)
        result += first + std::to_string(i) + last;
    return result;
}

void ExpectRefused(const std::string& text, const std::string& why) {
    const BXException error = ErrorOf([&] { DocumentParser().ParseText(text); });
    EXPECT_EQ(error.GetErrorCode(), 260101) << text.substr(0, 200);
    EXPECT_THAT(error.what(), HasSubstr(why)) << text.substr(0, 200);
}

void ExpectRead(const std::string& text) {
    EXPECT_NO_THROW(EXPECT_NE(DocumentParser().ParseText(text), nullptr)) << text.substr(0, 200);
}

// A pipe in the file system that blocks whoever reads it; where there are none, a file that must never be read.
class BlockingPipe {
public:
    explicit BlockingPipe(const std::string& path) {
#if defined(_WIN32)
        std::ofstream(path) << "<!ENTITY leaked 'FORBIDDEN'>";
#else
        EXPECT_EQ(mkfifo(path.c_str(), 0600), 0);
        // Open for both, so that a reader that does open the pipe fails the test by hanging rather than by passing.
        fDescriptor = open(path.c_str(), O_RDWR);
#endif
    }
    BlockingPipe(const BlockingPipe&) = delete;
    BlockingPipe& operator=(const BlockingPipe&) = delete;
#if !defined(_WIN32)
    ~BlockingPipe() {
        close(fDescriptor);
    }

private:
    int fDescriptor;
#endif
};

// A file that exists, with a content that must never show, and a pipe that would block whoever opens it.
class ForbiddenFile : public testing::Test {
protected:
    ForbiddenFile() { std::ofstream(file) << "<!ENTITY leaked 'FORBIDDEN'>"; }

    test_support::TemporaryFolder folder;
    std::string file = folder.pathOf("secret");
    std::string pipe = folder.pathOf("pipe");
    BlockingPipe blocking{pipe};
};

TEST_F(ForbiddenFile, IsNotReadByAGeneralEntity) {
    for (const std::string& place : {"file://" + file, file, "file://" + pipe, std::string("secret"),
                                     std::string("http://203.0.113.1/x"), std::string("https://203.0.113.1/x"),
                                     std::string("ftp://203.0.113.1/x"), std::string("\\\\203.0.113.1\\x")}) {
        const std::string text = "<!DOCTYPE a [<!ENTITY x SYSTEM '" + place + "'>]><a>&x;</a>";
        const BXException error = ErrorOf([&] { DocumentParser().ParseText(text); });
        ASSERT_EQ(error.GetErrorCode(), 260101) << place;
        EXPECT_EQ(error.GetArguments()[0], "the external entity '" + place + "' is refused");
        EXPECT_EQ(error.GetArguments()[1], "1");
        EXPECT_THAT(error.what(), Not(HasSubstr("FORBIDDEN")));
    }
}

TEST_F(ForbiddenFile, IsNotReadByAPublicEntity) {
    ExpectRefused("<!DOCTYPE a [<!ENTITY x PUBLIC '-//X//Y' 'file://" + file + "'>]><a>&x;</a>", "is refused");
}

TEST_F(ForbiddenFile, IsNotReadByAnEntityInAnAttribute) {
    ExpectRefused("<!DOCTYPE a [<!ENTITY x SYSTEM 'file://" + pipe + "'>]><a b='&x;'/>", "");
    ExpectRefused("<!DOCTYPE a [<!ENTITY y SYSTEM 'file://" + pipe + "'><!ENTITY x '&y;'>]><a>&x;</a>", "is refused");
}

TEST_F(ForbiddenFile, IsNotReadByAParameterEntity) {
    for (const std::string& place : {file, pipe}) {
        ExpectRefused("<!DOCTYPE a [<!ENTITY % x SYSTEM 'file://" + place + "'> %x;]><a>&leaked;</a>",
                      "a parameter entity is declared");
    }
}

TEST_F(ForbiddenFile, IsNotReadByADocumentType) {
    for (const std::string& place : {"file://" + file, "file://" + pipe, std::string("http://203.0.113.1/pmml.dtd")}) {
        ExpectRead("<!DOCTYPE a SYSTEM '" + place + "'><a/>");
        ExpectRead("<!DOCTYPE a PUBLIC 'PMML 2.0' '" + place + "'><a/>");
        ExpectRefused("<!DOCTYPE a SYSTEM '" + place + "'><a>&leaked;</a>", "leaked");
    }
}

TEST_F(ForbiddenFile, IsNotReadByASchemaLocation) {
    for (const std::string& place : {"file://" + pipe, std::string("http://203.0.113.1/pmml.xsd")}) {
        ExpectRead("<a xmlns='u' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:schemaLocation='u " + place +
                   "' xsi:noNamespaceSchemaLocation='" + place + "' xsi:type='b'/>");
    }
}

TEST_F(ForbiddenFile, IsNotReadByAnInclusionOrAStyleSheet) {
    const DocumentHandle document = DocumentParser().ParseText(
        "<?xml-stylesheet href='file://" + pipe +
        "'?><a xmlns:xi='http://www.w3.org/2001/XInclude'><xi:include href='" + pipe + "' parse='text'/></a>");
    EXPECT_EQ(BrevixTranscoder().ToNarrow(document->getDocumentElement()->getTextContent()), "");
}

TEST_F(ForbiddenFile, IsNotReadByANotationOrAnUnparsedEntity) {
    ExpectRead("<!DOCTYPE a [<!NOTATION n SYSTEM 'file://" + pipe + "'><!ENTITY x SYSTEM 'file://" + pipe +
               "' NDATA n>]><a b='x'/>");
    ExpectRefused("<!DOCTYPE a [<!NOTATION n SYSTEM 'n'><!ENTITY x SYSTEM 'file://" + pipe + "' NDATA n>]><a>&x;</a>",
                  "");
}

// For its lifetime, what is allocated may be lost: the XML library loses the nodes of a content model that it gives up.
class LeaksOfTheLibrary {
public:
#if defined(BREVIX_TEST_LEAKS)
    LeaksOfTheLibrary() {
        __lsan_disable();
    }
    ~LeaksOfTheLibrary() {
        __lsan_enable();
    }
#else
    LeaksOfTheLibrary() {}
    ~LeaksOfTheLibrary() {}
#endif
    LeaksOfTheLibrary(const LeaksOfTheLibrary&) = delete;
    LeaksOfTheLibrary& operator=(const LeaksOfTheLibrary&) = delete;
};

// Each entity holds the one before it ten times.
std::string Laughs(int levels) {
    std::string text = "<!ENTITY l0 'lol'>";
    for (int i = 1; i <= levels; ++i)
        text += "<!ENTITY l" + std::to_string(i) + " '" + Repeat("&l" + std::to_string(i - 1) + ";", 10) + "'>";
    return text;
}

TEST(EntityBomb, IsRefusedInATextAndInAnAttribute) {
    ExpectRefused("<!DOCTYPE a [" + Laughs(9) + "]><a>&l9;</a>", "entity expansions");
    ExpectRefused("<!DOCTYPE a [" + Laughs(9) + "]><a b='&l9;'/>", "entity expansions");
}

TEST(EntityBomb, IsRefusedInADefaultOfAnAttribute) {
    ExpectRefused("<!DOCTYPE a [" + Laughs(9) + "<!ATTLIST a b CDATA '&l9;'>]><a/>", "an attribute list is declared");
    ExpectRefused("<!DOCTYPE a [<!ATTLIST a b CDATA 'x'>]><a/>", "an attribute list is declared");
}

TEST(EntityBomb, IsRefusedInParameterEntities) {
    std::string text = "<!DOCTYPE a [<!ENTITY % l0 ' '>";
    for (int i = 1; i <= 9; ++i)
        text += "<!ENTITY % l" + std::to_string(i) + " '" + Repeat("&#37;l" + std::to_string(i - 1) + ";", 10) + "'>";
    ExpectRefused(text + "%l9;]><a/>", "a parameter entity is declared");
}

TEST(EntityBomb, IsRefusedWhenItIsWideRatherThanDeep) {
    const std::string entity(DocumentParser::kEntityLengthLimit, 'w');
    const std::string head = "<!DOCTYPE a [<!ENTITY w '" + entity + "'>]>";
    ExpectRefused(head + "<a>" + Repeat("&w;", 100'000) + "</a>", "entity expansions");
    ExpectRefused(head + "<a b='" + Repeat("&w;", 100'000) + "'/>", "entity expansions");
    ExpectRefused(head + "<a>" + Repeat("<b>&w;</b>", 2000) + "</a>", "entity expansions");
    ExpectRefused("<!DOCTYPE a [<!ENTITY w '" + entity + "w'>]><a>&w;</a>", "more than 10000 characters in one entity");
}

TEST(EntityBomb, IsRefusedWhenItRefersToItself) {
    ExpectRefused("<!DOCTYPE a [<!ENTITY x '&x;'>]><a>&x;</a>", "");
    ExpectRefused("<!DOCTYPE a [<!ENTITY x '&y;'><!ENTITY y '&x;'>]><a b='&y;'/>", "");
}

TEST(Entity, IsExpandedWithinTheLimits) {
    const std::string entity(DocumentParser::kEntityLengthLimit, 'w');
    const DocumentHandle document = DocumentParser().ParseText(
        "<!DOCTYPE a [<!ENTITY w '" + entity + "'><!ENTITY z '[&w;]'>]><a>" + Repeat("&z;", 500) + "</a>");
    EXPECT_EQ(BrevixTranscoder().ToNarrow(document->getDocumentElement()->getTextContent()).size(),
              500 * (entity.size() + 2));
    ExpectRead("<!DOCTYPE a [<!ELEMENT a (b|c)*><!ELEMENT b EMPTY><!-- c --><?p i?>]><a/>");
}

TEST(Nesting, IsReadUpToTheLimitAndRefusedBehindIt) {
    constexpr int kLimit = DocumentParser::kNestingLimit;
    ExpectRead(Repeat("<a>", kLimit) + Repeat("</a>", kLimit));
    ExpectRefused(Repeat("<a>", kLimit + 1) + Repeat("</a>", kLimit + 1), "more than 1000 levels of nested elements");
    ExpectRefused(Repeat("<a>", 1'000'000) + Repeat("</a>", 1'000'000), "more than 1000 levels of nested elements");
    ExpectRefused(Repeat("<a x='1'>", 1'000'000), "more than 1000 levels of nested elements");
}

TEST(Nesting, IsNotCountedForElementsBesideEachOther) {
    ExpectRead("<a>" + Repeat("<b/><c></c>", 5000) + "</a>");
}

TEST(DocumentType, MayDeclareWideContentModels) {
    ExpectRead("<!DOCTYPE a [<!ELEMENT a (b" + Numbered(",b", "", 20'000) + ")>]><a/>");
}

TEST(DocumentType, IsRefusedWhenItsContentModelsAreNestedTooDeep) {
    const LeaksOfTheLibrary allowed;
    const std::string model = Repeat("(b,", 100'000) + "b" + Repeat(")", 100'000);
    ExpectRefused("<!DOCTYPE a [<!ELEMENT a " + model + ">]><a/>", "");
}

TEST(DocumentType, DeclaresOnlySoManyEntitiesAndNotations) {
    constexpr std::size_t kLimit = DocumentParser::kDeclarationLimit;
    ExpectRead("<!DOCTYPE a [" + Numbered("<!ENTITY e", " 'x'>", kLimit) + "]><a/>");
    ExpectRefused("<!DOCTYPE a [" + Numbered("<!ENTITY e", " 'x'>", 1'000'000) + "]><a/>",
                  "more than 1000 entities and notations");
    ExpectRefused("<!DOCTYPE a [" + Numbered("<!NOTATION n", " SYSTEM 'x'>", kLimit + 1) + "]><a/>",
                  "more than 1000 entities and notations");
}

TEST(Names, AreLimitedInNumber) {
    const std::string why = "more than 10000 different names";
    ExpectRefused("<a>" + Numbered("<n", "/>", 1'000'000) + "</a>", why);
    ExpectRefused("<a>" + Numbered("<n a", "='1'/>", 1'000'000) + "</a>", why);
    ExpectRefused("<a>" + Numbered("<n xmlns='u", "'/>", 200'000) + "</a>", why);
    ExpectRefused("<a>" + Numbered("<n xmlns:p='u", "'/>", 200'000) + "</a>", why);
    ExpectRefused("<a>" + Numbered("<n xmlns:p", "='u'/>", 200'000) + "</a>", why);
    ExpectRead("<a>" + Numbered("<n", "/>", 9'900) + "</a>");
    ExpectRead("<a>" + Repeat("<same name='v'/>", 50'000) + "</a>");
}

TEST(Attributes, AreLimitedInNumber) {
    constexpr std::size_t kLimit = DocumentParser::kAttributeLimit;
    ExpectRead("<a" + Numbered(" b", "='1'", kLimit) + "/>");
    ExpectRefused("<a" + Numbered(" b", "='1'", kLimit + 1) + "/>", "more than 1000 attributes in one element");
    ExpectRefused("<a" + Numbered(" b", "='1'", 200'000) + "/>", "more than 1000 attributes in one element");
    ExpectRefused("<a" + Numbered(" xmlns:b", "='u'", 200'000) + "/>", "more than 1000 attributes in one element");
}

TEST(Namespaces, AreLimitedInScope) {
    std::string deep;
    for (int i = 0; i < 900; ++i)
        deep += "<a" + Numbered(" xmlns:p", "='u'", 20) + ">";
    ExpectRefused(deep + Repeat("<p0:b/>", 100'000) + Repeat("</a>", 900), "more than 1000 namespaces in scope");
    ExpectRead("<a>" + Repeat("<b" + Numbered(" xmlns:p", "='u'", 20) + "/>", 1000) + "</a>");
}

TEST(ManyPieces, AreAllRead) {
    ExpectRead("<a>" + Repeat("x<!---->", 200'000) + "</a>");
    ExpectRead("<a>" + Repeat("<![CDATA[x]]>", 50'000) + "</a>");
    ExpectRead("<a>" + Numbered("<?p", " x?>", 50'000) + "</a>");
    ExpectRead("<a b='" + Repeat("&amp;&#65;", 200'000) + "'>" + Repeat("&lt;&#x42;", 200'000) + "</a>");
    ExpectRead("<" + std::string(1'000'000, 'n') + "/>");
}

}  // namespace
