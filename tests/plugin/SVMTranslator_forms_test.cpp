// The ways into the translator that it inherits: each leads to its own form and to a model that scores.
#include <sstream>

#include <gtest/gtest.h>
#include <xercesc/dom/DOM.hpp>

#include "host/BaseDictionary.h"
#include "host/DocumentParser.h"
#include "plugin/SVMTranslator.h"
#include "tests/support/svm_document.h"
#include "tests/support/virtual_slot.h"

namespace KwBrevix_930 {
namespace {

using test_support::Failure;
using test_support::FailureOf;
using test_support::kNoTranscoder;
using test_support::Regression;
using test_support::ScoreOf;
using test_support::SvmDocument;
using xercesc::DOMDocument;
using xercesc::DOMElement;

using FormOfElements = ScoreModel* (ScoreTranslator::*)(DOMElement*, DOMElement*, DOMElement*, const std::string&);
using FormOfModel = ScoreModel* (ScoreTranslator::*)(DOMElement*, ScoreModel*, const std::string&);
using FormOfDictionaries = ScoreModel* (ScoreTranslator::*)(DOMElement*, ScoreDictionary*, ScoreDictionary*,
                                                            const std::string&);
using FormOfText = ScoreModel* (ScoreTranslator::*)(const std::string&, const std::string&);
using FormOfStream = ScoreModel* (ScoreTranslator::*)(std::istream&, const std::string&);
using FormOfDocument = ScoreModel* (ScoreTranslator::*)(DOMDocument*, const std::string&);
using FormOfDocumentAndDictionary = ScoreModel* (ScoreTranslator::*)(DOMDocument*, ScoreDictionary*,
                                                                     const std::string&);
using FormOfEncodedStream = ScoreModel* (ScoreTranslator::*)(std::istream&, const std::string&, const std::string&);

TEST(SVMTranslatorSlots, StandInThisOrder) {
    EXPECT_EQ(VirtualSlot<FormOfElements>(&ScoreTranslator::ParseFromTree), 1);
    EXPECT_EQ(VirtualSlot<FormOfModel>(&ScoreTranslator::ParseFromTree), 2);
    EXPECT_EQ(VirtualSlot<FormOfDictionaries>(&ScoreTranslator::ParseFromTree), 3);
    EXPECT_EQ(VirtualSlot<FormOfText>(&ScoreTranslator::ParseFromTree), 4);
    EXPECT_EQ(VirtualSlot<FormOfStream>(&ScoreTranslator::ParseFromTree), 5);
    EXPECT_EQ(VirtualSlot<FormOfDocument>(&ScoreTranslator::ParseFromTree), 6);
    EXPECT_EQ(VirtualSlot(&ScoreTranslator::SetSupportOldParser), 7);
    EXPECT_EQ(VirtualSlot<FormOfDocumentAndDictionary>(&ScoreTranslator::ParseFromTree), 8);
    EXPECT_EQ(VirtualSlot<FormOfEncodedStream>(&ScoreTranslator::ParseFromTree), 9);
}

// A translator beside it, which overrides slot 6 too and nothing else.
struct OtherTranslator : PMMLTranslator {
    OtherTranslator() : PMMLTranslator(std::string()) {}
    using PMMLTranslator::ParseFromTree;
    ScoreModel* ParseFromTree(DOMDocument*, const std::string&) override { return nullptr; }
};

TEST(SVMTranslatorSlots, OnlyTheDestructorAndSlotSixAreItsOwn) {
    const SVMTranslator translator;
    const OtherTranslator other;
    EXPECT_EQ(static_cast<const void*>(static_cast<const ScoreTranslator*>(&translator)), &translator);
    // The destructor takes two entries of the table, so slot s is entry s + 1.
    void* const* table = *reinterpret_cast<void* const* const*>(&translator);
    void* const* otherTable = *reinterpret_cast<void* const* const*>(&other);
    for (int slot = 1; slot <= 9; ++slot)
        EXPECT_EQ(table[slot + 1] == otherTable[slot + 1], slot != 6) << slot;
    EXPECT_NE(table[0], otherTable[0]);
}

class TranslatorForms : public testing::Test {
protected:
    TranslatorForms() : fDocument(DocumentParser().ParseText(Regression().Text())) {}

    DOMElement* Element(const char* tag) const {
        return static_cast<DOMElement*>(BaseTranslator::GetElementsByTagName(Root(), tag)->item(0));
    }
    DOMElement* Root() const { return fDocument->getDocumentElement(); }

    // Takes a model over and checks that it scores as the document says.
    void ExpectScores(ScoreModel* translated) {
        const std::unique_ptr<ScoreModel> model(translated);
        ASSERT_NE(model, nullptr);
        const auto score = ScoreOf(*model, {{"x1", "3"}, {"x2", "0.75"}, {"color", "red"}});
        ASSERT_EQ(score.code, 0);
        EXPECT_EQ(score.Number(), 0.75 * (0.5 * 3 - 1.25) - 0.5 * (2.5 * 0.75) + 0.125);
    }

    std::unique_ptr<ScoreDictionary> Dictionary() {
        const std::unique_ptr<ScoreModel> model(AsBase().ParseFromTree(fDocument.get(), kNoTranscoder));
        return BaseDictionary::CopyOf(*model->GetDictionary());
    }

    ScoreTranslator& AsBase() { return fTranslator; }

    DocumentHandle fDocument;
    SVMTranslator fTranslator;
};

TEST_F(TranslatorForms, FromAParsedDocument) {
    ExpectScores(AsBase().ParseFromTree(fDocument.get(), kNoTranscoder));
    ExpectScores(fTranslator.ParseFromTree(fDocument.get(), "UTF-8"));
}

TEST_F(TranslatorForms, FromSingleElements) {
    ExpectScores(AsBase().ParseFromTree(Element("DataDictionary"), static_cast<DOMElement*>(nullptr),
                                        Element("SupportVectorMachineModel"), kNoTranscoder));
}

TEST_F(TranslatorForms, FromSingleElementsOfDifferentDocuments) {
    const DocumentHandle dictionary = DocumentParser().ParseText(
        R"(<x><DataDictionary><DataField name="x1" optype="continuous" dataType="double"/>)"
        R"(<DataField name="x2" optype="continuous" dataType="double"/>)"
        R"(<DataField name="color" optype="categorical" dataType="string"/>)"
        R"(<DataField name="y" optype="continuous" dataType="double"/></DataDictionary></x>)");
    auto* fields = BaseTranslator::GetFirstChildElt(dictionary->getDocumentElement());
    ExpectScores(AsBase().ParseFromTree(fields, static_cast<DOMElement*>(nullptr), Element("SupportVectorMachineModel"),
                                        kNoTranscoder));
}

TEST_F(TranslatorForms, FromAModelElementAndAModelThatExists) {
    const std::unique_ptr<ScoreModel> context(AsBase().ParseFromTree(fDocument.get(), kNoTranscoder));
    ExpectScores(AsBase().ParseFromTree(Element("SupportVectorMachineModel"), context.get(), kNoTranscoder));
}

TEST_F(TranslatorForms, FromAModelElementAndDictionaries) {
    const auto dictionary = Dictionary();
    BaseDictionary results;
    ScoreModel* model =
        AsBase().ParseFromTree(Element("SupportVectorMachineModel"), dictionary.get(), &results, kNoTranscoder);
    ASSERT_NE(model, nullptr);
    EXPECT_EQ(model->GetResultDictionary(), &results);
    ExpectScores(model);
}

TEST_F(TranslatorForms, FromAText) {
    ExpectScores(AsBase().ParseFromTree(Regression().Text(), kNoTranscoder));
}

TEST_F(TranslatorForms, FromAStream) {
    std::istringstream stream(Regression().Text());
    ExpectScores(AsBase().ParseFromTree(stream, kNoTranscoder));
}

TEST_F(TranslatorForms, FromAParsedDocumentAndADictionary) {
    const auto dictionary = Dictionary();
    const DocumentHandle bare = DocumentParser().ParseText(Regression().Text());
    Root()->removeChild(Element("DataDictionary"));
    ExpectScores(AsBase().ParseFromTree(fDocument.get(), dictionary.get(), kNoTranscoder));
    ExpectScores(AsBase().ParseFromTree(bare.get(), dictionary.get(), kNoTranscoder));
}

TEST_F(TranslatorForms, FromAStreamInAnEncoding) {
    std::string text = Regression().Text();
    for (std::size_t at = 0; (at = text.find("color", at)) != std::string::npos; at += 4)
        text.replace(at, 5, "f\xFChl");
    std::istringstream stream(text);
    const std::unique_ptr<ScoreModel> model(AsBase().ParseFromTree(stream, "ISO-8859-1", kNoTranscoder));
    ASSERT_NE(model, nullptr);
    EXPECT_NE(model->GetDictionary()->FindVar("f\xC3\xBChl"), nullptr);
    EXPECT_EQ(ScoreOf(*model, {{"x1", "3"}, {"x2", "0.75"}, {"f\xC3\xBChl", "red"}}).code, 0);
}

// All names get a prefix that is declared nowhere.
std::string WithPrefix(std::string text) {
    for (std::size_t at = 0; (at = text.find('<', at)) != std::string::npos; ++at)
        text.insert(text[at + 1] == '/' ? at + 2 : at + 1, "pmml:");
    return text;
}

TEST_F(TranslatorForms, TheOldParserTakesPrefixesThatNobodyDeclared) {
    const std::string text = WithPrefix(Regression().Text());
    EXPECT_EQ(FailureOf([&] { AsBase().ParseFromTree(text, kNoTranscoder); }).code, 260101);
    AsBase().SetSupportOldParser(true);
    ExpectScores(AsBase().ParseFromTree(text, kNoTranscoder));
    AsBase().SetSupportOldParser(false);
    EXPECT_EQ(FailureOf([&] { AsBase().ParseFromTree(text, kNoTranscoder); }).code, 260101);
}

TEST_F(TranslatorForms, APrefixThatIsDeclaredDoesNotMatter) {
    const std::string text = Regression().Replace("<PMML", R"(<PMML xmlns:pmml="http://www.dmg.org/PMML-4_4")").Text();
    ExpectScores(AsBase().ParseFromTree(WithPrefix(text), kNoTranscoder));
}

TEST_F(TranslatorForms, EachGivesNoModelForNoDocument) {
    const auto dictionary = Dictionary();
    auto* const noElement = static_cast<DOMElement*>(nullptr);
    auto* const noDocument = static_cast<DOMDocument*>(nullptr);
    EXPECT_EQ(AsBase().ParseFromTree(Element("DataDictionary"), noElement, noElement, kNoTranscoder), nullptr);
    EXPECT_EQ(AsBase().ParseFromTree(noElement, static_cast<ScoreModel*>(nullptr), kNoTranscoder), nullptr);
    EXPECT_EQ(AsBase().ParseFromTree(noElement, dictionary.get(), nullptr, kNoTranscoder), nullptr);
    EXPECT_EQ(AsBase().ParseFromTree(noDocument, kNoTranscoder), nullptr);
    EXPECT_EQ(AsBase().ParseFromTree(noDocument, dictionary.get(), kNoTranscoder), nullptr);
}

TEST_F(TranslatorForms, EachPassesTheTranslatorsErrorsOn) {
    Element("SupportVectorMachineModel")->removeChild(Element("LinearKernelType"));
    const Failure noKernel{260115, {"LinearKernelType", "SupportVectorMachineModel"}};
    const std::string text = Regression().Remove("<LinearKernelType/>").Text();
    std::istringstream stream(text), encoded(text);
    const auto context = test_support::Translate(Regression());
    ScoreDictionary* dictionary = context->GetDictionary();
    DOMElement* model = Element("SupportVectorMachineModel");
    DOMElement* const noElement = nullptr;
    EXPECT_EQ(FailureOf([&] { AsBase().ParseFromTree(noElement, noElement, model, kNoTranscoder); }), noKernel);
    EXPECT_EQ(FailureOf([&] { AsBase().ParseFromTree(model, context.get(), kNoTranscoder); }), noKernel);
    EXPECT_EQ(FailureOf([&] { AsBase().ParseFromTree(model, dictionary, nullptr, kNoTranscoder); }), noKernel);
    EXPECT_EQ(FailureOf([&] { AsBase().ParseFromTree(text, kNoTranscoder); }), noKernel);
    EXPECT_EQ(FailureOf([&] { AsBase().ParseFromTree(stream, kNoTranscoder); }), noKernel);
    EXPECT_EQ(FailureOf([&] { AsBase().ParseFromTree(fDocument.get(), dictionary, kNoTranscoder); }), noKernel);
    EXPECT_EQ(FailureOf([&] { AsBase().ParseFromTree(encoded, "UTF-8", kNoTranscoder); }), noKernel);
}

}  // namespace
}  // namespace KwBrevix_930
