// The text inside an element.
#include "pmml/element_text.h"

#include <gtest/gtest.h>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include "host/BrevixTranscoder.h"
#include "host/DocumentParser.h"

namespace KwBrevix_930 {
namespace {

std::string TextOf(const std::string& document) {
    const DocumentHandle handle = DocumentParser().ParseText(document);
    return ElementText(BrevixTranscoder(), *handle->getDocumentElement());
}

TEST(ElementText, IsEmptyForAnElementWithoutText) {
    EXPECT_EQ(TextOf("<a/>"), "");
    EXPECT_EQ(TextOf("<a><b><c/></b></a>"), "");
}

TEST(ElementText, JoinsTextAndCharacterDataOfAllDescendantsInOrder) {
    EXPECT_EQ(TextOf("<a>1 <b>2<c> 3</c></b><![CDATA[ 4]]> 5</a>"), "1 2 3 4 5");
}

TEST(ElementText, LeavesOutCommentsAndInstructionsAndAttributes) {
    EXPECT_EQ(TextOf("<a x='7'>1<!-- 2 -->3<?go 4?>5</a>"), "135");
}

TEST(ElementText, EndsWithTheElement) {
    const DocumentHandle handle = DocumentParser().ParseText("<a><b>1<c>2</c></b>3<d>4</d></a>");
    EXPECT_EQ(ElementText(BrevixTranscoder(), *handle->getDocumentElement()->getFirstChild()), "12");
}

TEST(ElementText, IsUtf8) {
    EXPECT_EQ(TextOf("<a>x<b>\xC3\xA4\xE2\x82\xAC</b>\xF0\x9D\x84\x9E 1</a>"),
              "x\xC3\xA4\xE2\x82\xAC\xF0\x9D\x84\x9E 1");
}

TEST(ElementText, ReadsThroughEntityReferencesOfADocumentThatKeepsThem) {
    DocumentParser::Initialize();
    // This program may hold a copy of the library of its own.
    xercesc::XMLPlatformUtils::Initialize();
    xercesc::XercesDOMParser parser;
    parser.setCreateEntityReferenceNodes(true);
    const std::string text = "<!DOCTYPE a [<!ENTITY e '2 <b>3</b>'>]><a>1 &e; 4</a>";
    xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(text.data()), text.size(), "text");
    parser.parse(source);
    EXPECT_EQ(ElementText(BrevixTranscoder(), *parser.getDocument()->getDocumentElement()), "1 2 3 4");
}

TEST(ElementText, CopesWithAnyDepth) {
    DocumentHandle document = DocumentParser::CreateDocument("a");
    const auto name = BrevixTranscoder().ToWide("b");
    xercesc::DOMNode* node = document->getDocumentElement();
    for (int i = 0; i < 300'000; ++i)
        node = node->appendChild(document->createElement(name.c_str()));
    node->appendChild(document->createTextNode(BrevixTranscoder().ToWide("0.5").c_str()));
    EXPECT_EQ(ElementText(BrevixTranscoder(), *document->getDocumentElement()), "0.5");
}

}  // namespace
}  // namespace KwBrevix_930
