// Reading children and attributes, and the statics of BaseTranslator that walk a document.
#include "host/DOMElemUtility.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <type_traits>
#include <xercesc/dom/DOM.hpp>

#include "host/BaseTranslator.h"
#include "host/BrevixTranscoder.h"
#include "host/DocumentParser.h"
#include "tests/host/error_of.h"

namespace {

using KwBrevix_930::BaseTranslator;
using KwBrevix_930::BrevixTranscoder;
using KwBrevix_930::DocumentHandle;
using KwBrevix_930::DocumentParser;
using KwBrevix_930::DOMElemUtility;
using xercesc::DOMElement;

const BrevixTranscoder kTranscoder;

// Reads one document, with or without namespaces.
class Reading {
public:
    explicit Reading(const std::string& text, bool useNamespaces = true)
        : document(DocumentParser(useNamespaces).ParseText(text)),
          root(document->getDocumentElement()),
          reader(nullptr, &kTranscoder) {}

    DocumentHandle document;
    DOMElement* root;
    DOMElemUtility reader;
};

std::string Id(const DOMElement* element) {
    return element ? kTranscoder.ToNarrow(element->getAttribute(kTranscoder.ToWide("id").c_str())) : "none";
}

// The same children, plain and with prefixes, with namespaces and without.
struct Form {
    const char* name;
    const char* text;
    bool useNamespaces;
};

const Form kForms[] = {
    {"Plain", "<r><a id='1'/>text<b id='2'><a id='inner'/></b><!-- c --><a id='3'/><a id='4'/></r>", true},
    {"DefaultNamespace", "<r xmlns='u'><a id='1'/>text<b id='2'><a id='inner'/></b><a id='3'/><a id='4'/></r>", true},
    {"Prefixes",
     "<p:r xmlns:p='u' xmlns:q='v'><p:a id='1'/><q:b id='2'><a id='inner'/></q:b><q:a id='3'/><a id='4'/></p:r>", true},
    {"WithoutNamespaces", "<r><a id='1'/>text<b id='2'><a id='inner'/></b><a id='3'/><a id='4'/></r>", false},
    {"PrefixesWithoutNamespaces", "<p:r><p:a id='1'/><q:b id='2'><a id='inner'/></q:b><q:a id='3'/><a id='4'/></p:r>",
     false},
};

class ElementsOfEachForm : public testing::TestWithParam<Form> {
protected:
    Reading reading{GetParam().text, GetParam().useNamespaces};
    DOMElement* root = reading.root;
    const DOMElemUtility& reader = reading.reader;
};

TEST_P(ElementsOfEachForm, ChildrenAreFoundByLocalName) {
    EXPECT_EQ(Id(reader.GetChildElemByName(root, "a", true)), "1");
    EXPECT_EQ(Id(reader.GetChildElemByName(root, "b", false)), "2");
    EXPECT_EQ(reader.GetChildElemByName(root, "inner", false), nullptr);
    EXPECT_EQ(reader.GetChildElemByName(root, "r", false), nullptr);
    EXPECT_EQ(reader.GetChildElemByName(root, "p:a", false), nullptr);
    EXPECT_EQ(reader.GetChildElemByName(root, "", false), nullptr);
}

TEST_P(ElementsOfEachForm, ChildrenAreCountedWithoutDescendants) {
    EXPECT_EQ(reader.GetNodeListLength(root, "a", true), 3u);
    EXPECT_EQ(reader.GetNodeListLength(root, "b", false), 1u);
    EXPECT_EQ(reader.GetNodeListLength(root, "c", false), 0u);
}

TEST_P(ElementsOfEachForm, ChildrenAreTakenByIndex) {
    EXPECT_EQ(Id(reader.GetElemFromNodeList(root, "a", 0, true)), "1");
    EXPECT_EQ(Id(reader.GetElemFromNodeList(root, "a", 1, true)), "3");
    EXPECT_EQ(Id(reader.GetElemFromNodeList(root, "a", 2, false)), "4");
    EXPECT_EQ(reader.GetElemFromNodeList(root, "a", 3, false), nullptr);
    EXPECT_EQ(reader.GetElemFromNodeList(root, "a", std::numeric_limits<std::uint64_t>::max(), false), nullptr);
}

TEST_P(ElementsOfEachForm, DescendantsAreListedInDocumentOrder) {
    const auto* list = BaseTranslator::GetElementsByTagName(root, "a");
    ASSERT_EQ(list->getLength(), 4u);
    std::string ids;
    for (XMLSize_t i = 0; i < 4; ++i)
        ids += Id(static_cast<DOMElement*>(list->item(i))) + " ";
    EXPECT_EQ(ids, "1 inner 3 4 ");
    EXPECT_EQ(list->item(4), nullptr);
    EXPECT_EQ(Id(static_cast<DOMElement*>(list->item(1))), "inner");
    EXPECT_EQ(BaseTranslator::GetElementsByTagName(root, "r")->getLength(), 0u);
    EXPECT_EQ(BaseTranslator::GetElementsByTagName(root, "none")->item(0), nullptr);
    DOMElement* b = reader.GetChildElemByName(root, "b", true);
    EXPECT_EQ(BaseTranslator::GetElementsByTagName(b, "a")->getLength(), 1u);
    EXPECT_EQ(BaseTranslator::GetElementsByTagName(root, "a")->getLength(), 4u);
}

TEST_P(ElementsOfEachForm, ElementsAreWalkedOneAfterTheOther) {
    std::string ids;
    for (const DOMElement* child = BaseTranslator::GetFirstChildElt(root); child;
         child = BaseTranslator::GetNextSiblingElt(child))
        ids += Id(child) + " ";
    EXPECT_EQ(ids, "1 2 3 4 ");
}

TEST_P(ElementsOfEachForm, NamesAreToldWithoutPrefix) {
    EXPECT_EQ(reader.GetElementName(root), "r");
    EXPECT_EQ(kTranscoder.ToNarrow(BaseTranslator::GetLocalName(root)), "r");
    EXPECT_TRUE(BaseTranslator::HasTag(root, "r"));
    EXPECT_FALSE(BaseTranslator::HasTag(root, "R"));
    EXPECT_FALSE(BaseTranslator::HasTag(root, "p:r"));
}

TEST_P(ElementsOfEachForm, AMissingRequiredChildIsNamedWithItsParent) {
    ExpectError(ErrorOf([&] { reader.GetChildElemByName(root, "Kernel", true); }), 260115, {"Kernel", "r"});
    ExpectError(ErrorOf([&] { reader.GetNodeListLength(root, "Kernel", true); }), 260115, {"Kernel", "r"});
    ExpectError(ErrorOf([&] { reader.GetElemFromNodeList(root, "a", 3, true); }), 260115, {"a", "r"});
}

TEST_P(ElementsOfEachForm, AMissingRequiredAttributeIsNamedWithItsElement) {
    ExpectError(ErrorOf([&] { reader.GetAttributeToString(root, "id", true); }), 260120, {"id", "r"});
    ExpectError(ErrorOf([&] { reader.GetAttributeToDouble(root, "id", true); }), 260120, {"id", "r"});
    ExpectError(ErrorOf([&] { reader.GetAttributeToInt(root, "id", true); }), 260120, {"id", "r"});
}

INSTANTIATE_TEST_SUITE_P(DOMElemUtility, ElementsOfEachForm, testing::ValuesIn(kForms),
                         [](const auto& form) { return std::string(form.param.name); });

TEST(DOMElemUtility, GivesAttributesAsText) {
    const Reading reading("<r plain='v' empty='' blank=' x ' umlaut='Gr&#246;&#223;e &#x1F600;'/>");
    EXPECT_EQ(reading.reader.GetAttributeToString(reading.root, "plain", true), "v");
    EXPECT_EQ(reading.reader.GetAttributeToString(reading.root, "empty", true), "");
    EXPECT_EQ(reading.reader.GetAttributeToString(reading.root, "blank", false), " x ");
    EXPECT_EQ(reading.reader.GetAttributeToString(reading.root, "umlaut", false), "Größe \xF0\x9F\x98\x80");
    EXPECT_EQ(reading.reader.GetAttributeToString(reading.root, "absent", false), "");
    EXPECT_TRUE(reading.reader.HasAttribute(reading.root, "empty"));
    EXPECT_FALSE(reading.reader.HasAttribute(reading.root, "absent"));
    EXPECT_FALSE(reading.reader.HasAttribute(reading.root, "Plain"));
}

TEST(DOMElemUtility, GivesAttributesAsDoubles) {
    const Reading reading("<r a='2.385' b=' -1e-3 ' c='-1' d='INF' e='NaN' f='1e999'/>");
    const auto read = [&](const char* name, bool required) {
        return reading.reader.GetAttributeToDouble(reading.root, name, required);
    };
    EXPECT_EQ(read("a", true), 2.385);
    EXPECT_EQ(read("b", false), -1e-3);
    EXPECT_EQ(read("c", true), -1.0);
    EXPECT_EQ(read("d", true), std::numeric_limits<double>::infinity());
    EXPECT_TRUE(std::isnan(read("e", true)));
    EXPECT_EQ(read("f", true), std::numeric_limits<double>::infinity());
    EXPECT_EQ(read("absent", false), -1.0);
}

TEST(DOMElemUtility, GivesAttributesAsInts) {
    const Reading reading("<r a='17' b='-3.9' c='4294967296' d='-1e300' e='NaN' f='2147483647'/>");
    const auto read = [&](const char* name) { return reading.reader.GetAttributeToInt(reading.root, name, false); };
    static_assert(std::is_same_v<decltype(read("a")), std::int32_t>);
    EXPECT_EQ(read("a"), 17);
    EXPECT_EQ(read("b"), -3);
    EXPECT_EQ(read("c"), 2147483647);
    EXPECT_EQ(read("d"), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(read("e"), 0);
    EXPECT_EQ(read("f"), 2147483647);
    EXPECT_EQ(read("absent"), 0);
}

TEST(DOMElemUtility, ATextThatIsNoNumberIsNamedWithAttributeAndElement) {
    for (const std::string value : {"", "abc", "1,5", "1 2", "0x10", "--1"}) {
        const Reading reading("<Coefficient value='" + value + "'/>");
        for (const bool required : {false, true}) {
            ExpectError(ErrorOf([&] { reading.reader.GetAttributeToDouble(reading.root, "value", required); }), 260153,
                        {value, "value", "Coefficient"});
            ExpectError(ErrorOf([&] { reading.reader.GetAttributeToInt(reading.root, "value", required); }), 260153,
                        {value, "value", "Coefficient"});
        }
    }
}

TEST(DOMElemUtility, KeepsTranslatorAndTranscoder) {
    const DOMElemUtility reader(nullptr, &kTranscoder);
    EXPECT_EQ(reader.GetTranslator(), nullptr);
    EXPECT_EQ(&reader.GetTranscoder(), &kTranscoder);
    static_assert(std::has_virtual_destructor_v<DOMElemUtility>);
}

TEST(BaseTranslator, WalksPastEverythingThatIsNoElement) {
    const Reading reading("<r> <!-- c --> <?p i?> text <![CDATA[<a/>]]> <a id='1'/> more <b id='2'/> end </r>");
    const DOMElement* first = BaseTranslator::GetFirstChildElt(reading.root);
    EXPECT_EQ(Id(first), "1");
    EXPECT_EQ(Id(BaseTranslator::GetNextSiblingElt(first)), "2");
    EXPECT_EQ(BaseTranslator::GetNextSiblingElt(BaseTranslator::GetNextSiblingElt(first)), nullptr);
    EXPECT_EQ(BaseTranslator::GetFirstChildElt(first), nullptr);
    EXPECT_EQ(BaseTranslator::GetFirstChildElt(reading.document.get()), reading.root);
    EXPECT_EQ(BaseTranslator::GetNextSiblingElt(reading.root), nullptr);
    EXPECT_EQ(BaseTranslator::GetFirstChildElt(nullptr), nullptr);
    EXPECT_EQ(BaseTranslator::GetNextSiblingElt(nullptr), nullptr);
}

TEST(BaseTranslator, ComparesWideAndNarrowTexts) {
    const auto isEqual = [](const std::string& wide, const std::string& narrow) {
        return BaseTranslator::IsEqual(kTranscoder.ToWide(wide).c_str(), narrow);
    };
    EXPECT_TRUE(isEqual("FieldRef", "FieldRef"));
    EXPECT_FALSE(isEqual("FieldRef", "fieldRef"));
    EXPECT_FALSE(isEqual("FieldRef", "Field"));
    EXPECT_FALSE(isEqual("Field", "FieldRef"));
    EXPECT_TRUE(isEqual("", ""));
    EXPECT_FALSE(isEqual("", "a"));
    EXPECT_TRUE(isEqual("Größe", "Größe"));
    EXPECT_FALSE(isEqual("Große", "Größe"));
    EXPECT_FALSE(isEqual("Grö", "Größe"));
    EXPECT_FALSE(BaseTranslator::IsEqual(nullptr, ""));
    const XMLCh wideByte[] = {0x141, 0};
    EXPECT_FALSE(BaseTranslator::IsEqual(wideByte, "A"));
}

TEST(BaseTranslator, VerifiesDoubles) {
    const auto verify = [](const std::string& text) {
        return BaseTranslator::VerifyDouble(kTranscoder.ToWide(text).c_str());
    };
    EXPECT_EQ(verify("0.5"), 0.5);
    EXPECT_EQ(verify("\n  -2.25e3 "), -2250.0);
    for (const char* text : {"", " ", "x", "0.5x", "1,5", "٣"}) {
        const auto error = ErrorOf([&] { verify(text); });
        EXPECT_EQ(error.GetErrorCode(), 260153) << text;
        ASSERT_EQ(error.GetArguments().size(), 3u);
        EXPECT_EQ(error.GetArguments()[0], text);
    }
    EXPECT_EQ(ErrorOf([] { BaseTranslator::VerifyDouble(nullptr); }).GetErrorCode(), 260153);
}

TEST(BaseTranslator, ListsElementsOfLevelOneInsideADocumentWithNamespaces) {
    const Reading reading("<r xmlns='u'><a id='1'/></r>");
    DOMElement* added = reading.document->createElement(kTranscoder.ToWide("q:a").c_str());
    reading.root->appendChild(added);
    const auto* list = BaseTranslator::GetElementsByTagName(reading.root, "a");
    ASSERT_EQ(list->getLength(), 2u);
    EXPECT_EQ(list->item(1), added);
}

TEST(BaseTranslator, TheListOfAnElementThatIsReleasedGoesWithIt) {
    const Reading reading("<p:r><p:b><p:a/></p:b></p:r>", false);
    DOMElement* b = BaseTranslator::GetFirstChildElt(reading.root);
    EXPECT_EQ(BaseTranslator::GetElementsByTagName(b, "a")->getLength(), 1u);
    EXPECT_EQ(BaseTranslator::GetElementsByTagName(reading.root, "a")->getLength(), 1u);
    const DocumentHandle copy(static_cast<xercesc::DOMDocument*>(reading.document->cloneNode(true)));
    EXPECT_EQ(BaseTranslator::GetElementsByTagName(copy->getDocumentElement(), "a")->getLength(), 1u);
    reading.root->removeChild(b)->release();
    EXPECT_EQ(BaseTranslator::GetElementsByTagName(reading.root, "a")->getLength(), 0u);
}

TEST(BaseTranslator, WalksEveryOneOfManyElements) {
    constexpr XMLSize_t kCount = 200'000;
    for (const bool useNamespaces : {true, false}) {
        std::string text = "<p:r xmlns:p='u'>";
        for (XMLSize_t i = 0; i < kCount; ++i)
            text += "<p:a/>";
        const Reading reading(text + "</p:r>", useNamespaces);
        EXPECT_EQ(reading.reader.GetNodeListLength(reading.root, "a", true), kCount);
        const auto* list = BaseTranslator::GetElementsByTagName(reading.root, "a");
        const DOMElement* child = BaseTranslator::GetFirstChildElt(reading.root);
        for (XMLSize_t i = 0; i < kCount; ++i) {
            ASSERT_EQ(list->item(i), child);
            child = BaseTranslator::GetNextSiblingElt(child);
        }
        EXPECT_EQ(child, nullptr);
    }
}

}  // namespace
