// The ways into a translator: all of them lead to slot 6.
#include <gmock/gmock.h>

#include <memory>
#include <sstream>
#include <xercesc/dom/DOM.hpp>

#include "host/BaseDictionary.h"
#include "host/BrevixTranscoder.h"
#include "host/DictVar.h"
#include "host/DocumentParser.h"
#include "host/ScoreModel.h"
#include "host/ScoreTranslator.h"
#include "tests/host/TestTranslator.h"
#include "tests/host/error_of.h"

namespace {

using KwBrevix_930::BaseDictionary;
using KwBrevix_930::BaseTranslator;
using KwBrevix_930::BrevixTranscoder;
using KwBrevix_930::DictVar;
using KwBrevix_930::DocumentHandle;
using KwBrevix_930::DocumentParser;
using KwBrevix_930::ScoreDictionary;
using KwBrevix_930::ScoreModel;
using KwBrevix_930::ScoreTranslator;
using testing::HasSubstr;
using xercesc::DOMDocument;
using xercesc::DOMElement;
using ModelHandle = std::unique_ptr<ScoreModel>;

const char* const kText =
    "<PMML version='4.3'><Header><Application version='7.1'/></Header><DataDictionary>"
    "<DataField name='x' dataType='double'/><DataField name='y' dataType='string'/></DataDictionary>"
    "<TransformationDictionary/><SupportVectorMachineModel><MiningSchema/></SupportVectorMachineModel></PMML>";
const char* const kOutline = "PMML(Header DataDictionary TransformationDictionary SupportVectorMachineModel)";

class Entry : public testing::Test {
protected:
    Entry() : document(DocumentParser().ParseText(kText)) {
        supplied.AddVar(std::make_unique<DictVar>("supplied", DictVar::kNumber, DictVar::kContinuous));
    }

    DOMElement* Child(const DocumentHandle& of, const char* tag) {
        const BrevixTranscoder transcoder;
        return KwBrevix_930::DOMElemUtility(nullptr, &transcoder)
            .GetChildElemByName(of->getDocumentElement(), tag, true);
    }

    // Expects one call of slot 6 with these.
    void ExpectCall(const std::string& outline, const std::string& fields, const std::string& transcoderName) {
        ASSERT_EQ(recorder.calls.size(), 1u);
        EXPECT_NE(recorder.calls[0].document, nullptr);
        EXPECT_EQ(recorder.calls[0].outline, outline);
        EXPECT_EQ(recorder.calls[0].fields, fields);
        EXPECT_EQ(recorder.calls[0].transcoder, transcoderName);
        recorder.calls.clear();
    }

    DocumentHandle document;
    BaseDictionary supplied;
    TestTranslator recorder;
    ScoreTranslator& translator = recorder;
};

TEST_F(Entry, BySlotOneJoinsTheElementsInANewDocument) {
    const DocumentHandle other = DocumentParser().ParseText(
        "<PMML version='9'><DataDictionary><DataField name='z' dataType='double'/></DataDictionary>"
        "<LocalTransformations/></PMML>");
    const ModelHandle model(translator.ParseFromTree(Child(other, "DataDictionary"),
                                                     Child(other, "LocalTransformations"),
                                                     Child(document, "SupportVectorMachineModel"), "UTF-8"));
    ASSERT_NE(model, nullptr);
    EXPECT_NE(recorder.calls[0].document, document.get());
    EXPECT_EQ(recorder.calls[0].version, "4.3");
    ExpectCall("PMML(Header DataDictionary LocalTransformations SupportVectorMachineModel)", "z ", "UTF-8");
    EXPECT_NE(Child(other, "DataDictionary"), nullptr);
    EXPECT_NE(Child(document, "SupportVectorMachineModel"), nullptr);
}

TEST_F(Entry, BySlotOneTakesWhatIsNullFromTheModelsDocument) {
    const ModelHandle model(
        translator.ParseFromTree(nullptr, nullptr, Child(document, "SupportVectorMachineModel"), "t"));
    ExpectCall(kOutline, "x y ", "t");
}

TEST_F(Entry, BySlotOneAddsNoVersionWhereThereIsNone) {
    const DocumentHandle bare = DocumentParser().ParseText("<r><SupportVectorMachineModel/></r>");
    const ModelHandle model(translator.ParseFromTree(nullptr, nullptr, Child(bare, "SupportVectorMachineModel"), ""));
    EXPECT_EQ(recorder.calls[0].version, "none");
    ExpectCall("PMML(SupportVectorMachineModel)", "", "");
}

TEST_F(Entry, BySlotOneTakesAModelThatIsItsDocumentsRoot) {
    const DocumentHandle bare = DocumentParser().ParseText("<p:SupportVectorMachineModel xmlns:p='u' version='1'/>");
    const ModelHandle model(
        translator.ParseFromTree(Child(document, "DataDictionary"), nullptr, bare->getDocumentElement(), ""));
    ExpectCall("PMML(DataDictionary SupportVectorMachineModel)", "x y ", "");
}

TEST_F(Entry, BySlotTwoTakesTheDictionaryOfAnotherModel) {
    TestModel context;
    context.SetScoreDictionary(&supplied);
    const ModelHandle model(translator.ParseFromTree(Child(document, "SupportVectorMachineModel"), &context, "t2"));
    ASSERT_NE(model, nullptr);
    EXPECT_NE(model->GetDictionary(), &supplied);
    ExpectCall(kOutline, "supplied ", "t2");
}

TEST_F(Entry, BySlotTwoWithoutAModelTakesTheDocumentsDictionary) {
    const ModelHandle model(translator.ParseFromTree(Child(document, "SupportVectorMachineModel"),
                                                     static_cast<ScoreModel*>(nullptr), "t2"));
    ExpectCall(kOutline, "x y ", "t2");
    const TestModel empty;
    const ModelHandle second(
        translator.ParseFromTree(Child(document, "SupportVectorMachineModel"), const_cast<TestModel*>(&empty), "t2"));
    ExpectCall(kOutline, "x y ", "t2");
}

TEST_F(Entry, BySlotThreeTakesBothDictionaries) {
    BaseDictionary results;
    const ModelHandle model(
        translator.ParseFromTree(Child(document, "SupportVectorMachineModel"), &supplied, &results, "t3"));
    ASSERT_NE(model, nullptr);
    EXPECT_EQ(model->GetResultDictionary(), &results);
    EXPECT_EQ(model->GetDictionary()->GetVars().at(0)->GetName(), "supplied");
    EXPECT_NE(model->GetDictionary()->GetVars().at(0), supplied.GetVars().at(0));
    ExpectCall(kOutline, "supplied ", "t3");
}

TEST_F(Entry, BySlotThreeTakesEitherDictionaryAlone) {
    BaseDictionary results;
    const ModelHandle first(translator.ParseFromTree(Child(document, "SupportVectorMachineModel"),
                                                     static_cast<ScoreDictionary*>(nullptr), &results, ""));
    EXPECT_EQ(first->GetResultDictionary(), &results);
    ExpectCall(kOutline, "x y ", "");
    const ModelHandle second(translator.ParseFromTree(Child(document, "SupportVectorMachineModel"), &supplied,
                                                      static_cast<ScoreDictionary*>(nullptr), ""));
    EXPECT_EQ(second->GetResultDictionary(), nullptr);
    ExpectCall(kOutline, "supplied ", "");
}

TEST_F(Entry, BySlotThreeNeedsNoDataDictionaryInTheDocument) {
    const DocumentHandle bare = DocumentParser().ParseText("<PMML><SupportVectorMachineModel/></PMML>");
    const ModelHandle model(translator.ParseFromTree(Child(bare, "SupportVectorMachineModel"), &supplied,
                                                     static_cast<ScoreDictionary*>(nullptr), ""));
    ExpectCall("PMML(DataDictionary SupportVectorMachineModel)", "supplied ", "");
    EXPECT_EQ(BaseTranslator::GetElementsByTagName(bare->getDocumentElement(), "DataDictionary")->getLength(), 0u);
}

TEST_F(Entry, BySlotFourReadsAText) {
    const ModelHandle model(translator.ParseFromTree(std::string(kText), std::string("t4")));
    ASSERT_NE(model, nullptr);
    EXPECT_EQ(recorder.calls[0].version, "4.3");
    ExpectCall(kOutline, "x y ", "t4");
}

TEST_F(Entry, BySlotFiveReadsAStream) {
    std::istringstream stream(kText);
    const ModelHandle model(translator.ParseFromTree(stream, "t5"));
    ASSERT_NE(model, nullptr);
    ExpectCall(kOutline, "x y ", "t5");
}

TEST_F(Entry, BySlotSixHandsOverTheDocumentItself) {
    const ModelHandle model(translator.ParseFromTree(document.get(), "t6"));
    EXPECT_EQ(recorder.calls[0].document, document.get());
    ExpectCall(kOutline, "x y ", "t6");
}

TEST_F(Entry, BySlotEightUsesTheSuppliedDictionaryInPlaceOfTheDocuments) {
    const ModelHandle model(translator.ParseFromTree(document.get(), &supplied, "t8"));
    EXPECT_EQ(recorder.calls[0].document, document.get());
    ExpectCall(kOutline, "supplied ", "t8");
    const ModelHandle second(translator.ParseFromTree(document.get(), static_cast<ScoreDictionary*>(nullptr), "t8"));
    ExpectCall(kOutline, "x y ", "t8");
}

TEST_F(Entry, BySlotEightAddsAnEmptyDataDictionaryForTheCallWhereThereIsNone) {
    for (const char* text : {"<PMML><Header/></PMML>", "<p:PMML xmlns:p='u'><p:Header/></p:PMML>"}) {
        const DocumentHandle bare = DocumentParser().ParseText(text);
        const ModelHandle model(translator.ParseFromTree(bare.get(), &supplied, ""));
        ExpectCall("PMML(DataDictionary Header)", "supplied ", "");
        const ModelHandle unsupplied(translator.ParseFromTree(bare.get(), static_cast<ScoreDictionary*>(nullptr), ""));
        ExpectCall("PMML(Header)", "", "");
    }
}

TEST_F(Entry, BySlotEightTheDocumentsTreatmentsHoldForTheSuppliedDictionary) {
    // The translator reads the dictionary with treatments, as a plug-in does.
    struct Reading : KwBrevix_930::PMMLTranslator {
        Reading() : PMMLTranslator("") {}
        using PMMLTranslator::ParseFromTree;
        KwBrevix_930::ScoreModel* ParseFromTree(xercesc::DOMDocument* parsed, const std::string&) override {
            dictionary.reset(ParseDictionary(GetFirstChildElt(parsed->getDocumentElement()), true));
            return nullptr;
        }
        std::unique_ptr<ScoreDictionary> dictionary;
    };
    const DocumentHandle treated = DocumentParser().ParseText(
        "<PMML><DataDictionary/><SupportVectorMachineModel><MiningSchema>"
        "<MiningField name='supplied' "
        "invalidValueTreatment='asIs'/></MiningSchema></SupportVectorMachineModel></PMML>");
    Reading reading;
    reading.ParseFromTree(treated.get(), &supplied, "");
    const auto* variable = dynamic_cast<const KwBrevix_930::DictVar*>(reading.dictionary->FindVar("supplied"));
    ASSERT_NE(variable, nullptr);
    EXPECT_EQ(variable->GetInvalidTreatment(), KwBrevix_930::DictVar::kAsIs);
}

TEST_F(Entry, BySlotEightTakesADocumentWithoutARoot) {
    const DocumentHandle bare = DocumentParser().ParseText("<r/>");
    bare->removeChild(bare->getDocumentElement())->release();
    const ModelHandle model(translator.ParseFromTree(bare.get(), &supplied, ""));
    ExpectCall("", "", "");
}

TEST_F(Entry, BySlotNineReadsAStreamInAGivenEncoding) {
    std::istringstream stream(
        "<?xml version='1.0' encoding='UTF-8'?><Gr\xF6\xDF"
        "e/>");
    const ModelHandle model(translator.ParseFromTree(stream, "ISO-8859-1", "t9"));
    ExpectCall("Größe()", "", "t9");
    std::istringstream plain(kText);
    const ModelHandle second(translator.ParseFromTree(plain, "", "t9"));
    ExpectCall(kOutline, "x y ", "t9");
}

TEST_F(Entry, TheSuppliedDictionaryIsForgottenAfterTheCall) {
    const ModelHandle model(translator.ParseFromTree(document.get(), &supplied, ""));
    EXPECT_EQ(recorder.SuppliedDictionary(), nullptr);
    recorder.fails = true;
    EXPECT_EQ(ErrorOf([&] { translator.ParseFromTree(document.get(), &supplied, ""); }).GetErrorCode(), 260281);
    EXPECT_EQ(recorder.SuppliedDictionary(), nullptr);
}

TEST_F(Entry, NullLeadsToSlotSixAndBack) {
    DOMElement* noElement = nullptr;
    DOMDocument* noDocument = nullptr;
    ScoreDictionary* noDictionary = nullptr;
    TestModel context;
    context.SetScoreDictionary(&supplied);
    EXPECT_EQ(translator.ParseFromTree(noElement, noElement, noElement, "a"), nullptr);
    EXPECT_EQ(translator.ParseFromTree(Child(document, "DataDictionary"), noElement, noElement, "a"), nullptr);
    EXPECT_EQ(translator.ParseFromTree(noElement, &context, "a"), nullptr);
    EXPECT_EQ(translator.ParseFromTree(noElement, &supplied, noDictionary, "a"), nullptr);
    EXPECT_EQ(translator.ParseFromTree(noElement, noDictionary, &supplied, "a"), nullptr);
    EXPECT_EQ(translator.ParseFromTree(noDocument, "a"), nullptr);
    EXPECT_EQ(translator.ParseFromTree(noDocument, &supplied, "a"), nullptr);
    ASSERT_EQ(recorder.calls.size(), 7u);
    for (const auto& call : recorder.calls) {
        EXPECT_EQ(call.document, nullptr);
        EXPECT_EQ(call.transcoder, "a");
    }
}

TEST_F(Entry, ErrorsOfTheTranslatorPassByEveryWay) {
    recorder.fails = true;
    DOMElement* model = Child(document, "SupportVectorMachineModel");
    TestModel context;
    context.SetScoreDictionary(&supplied);
    const auto expectPasses = [](auto&& call) { ExpectError(ErrorOf(call), 260281, {"isScorable", "PMML"}); };
    expectPasses([&] { translator.ParseFromTree(nullptr, nullptr, model, ""); });
    expectPasses([&] { translator.ParseFromTree(model, &context, ""); });
    expectPasses([&] { translator.ParseFromTree(model, &supplied, &supplied, ""); });
    expectPasses([&] { translator.ParseFromTree(std::string(kText), std::string()); });
    expectPasses([&] {
        std::istringstream stream(kText);
        translator.ParseFromTree(stream, "");
    });
    expectPasses([&] { translator.ParseFromTree(document.get(), &supplied, ""); });
    expectPasses([&] {
        std::istringstream stream(kText);
        translator.ParseFromTree(stream, "UTF-8", "");
    });
    EXPECT_EQ(recorder.calls.size(), 7u);
}

TEST_F(Entry, AnUnreadableDocumentNeverReachesSlotSix) {
    const std::string text = "<PMML>\n<Header>\n</PMML>";
    std::istringstream stream(text);
    std::istringstream again(text);
    for (const auto& error : {ErrorOf([&] { translator.ParseFromTree(text, std::string()); }),
                              ErrorOf([&] { translator.ParseFromTree(stream, ""); }),
                              ErrorOf([&] { translator.ParseFromTree(again, "UTF-8", ""); })}) {
        EXPECT_EQ(error.GetErrorCode(), 260101);
        EXPECT_EQ(error.GetArguments().at(1), "3");
    }
    EXPECT_EQ(ErrorOf([&] { translator.ParseFromTree(std::string(), std::string()); }).GetErrorCode(), 260101);
    EXPECT_TRUE(recorder.calls.empty());
}

TEST_F(Entry, TheOldParserNeedsNoDeclarationOfPrefixes) {
    const std::string text =
        "<p:PMML version='3.0'><q:DataDictionary><DataField name='x' dataType='double'/>"
        "</q:DataDictionary></p:PMML>";
    EXPECT_EQ(ErrorOf([&] { translator.ParseFromTree(text, std::string()); }).GetErrorCode(), 260101);
    translator.SetSupportOldParser(true);
    const ModelHandle fromText(translator.ParseFromTree(text, std::string()));
    ExpectCall("PMML(DataDictionary)", "x ", "");
    std::istringstream stream(text);
    const ModelHandle fromStream(translator.ParseFromTree(stream, ""));
    ExpectCall("PMML(DataDictionary)", "x ", "");
    std::istringstream encoded(text);
    const ModelHandle fromEncoded(translator.ParseFromTree(encoded, "UTF-8", ""));
    ExpectCall("PMML(DataDictionary)", "x ", "");
    translator.SetSupportOldParser(false);
    EXPECT_EQ(ErrorOf([&] { translator.ParseFromTree(text, std::string()); }).GetErrorCode(), 260101);
}

TEST_F(Entry, ADocumentOfTheOldParserMayBeTakenApart) {
    const DocumentHandle old = DocumentParser(false).ParseText(
        "<p:PMML version='3.0'><p:DataDictionary><DataField name='x' dataType='double'/></p:DataDictionary>"
        "<p:SupportVectorMachineModel/></p:PMML>");
    const ModelHandle model(translator.ParseFromTree(nullptr, nullptr, Child(old, "SupportVectorMachineModel"), ""));
    EXPECT_EQ(recorder.calls[0].version, "3.0");
    ExpectCall("PMML(DataDictionary SupportVectorMachineModel)", "x ", "");
}

TEST(TranscoderOfATranslator, IsCreatedOnceAndOnDemand) {
    TestTranslator translator;
    EXPECT_EQ(translator.Transcoder(), nullptr);
    translator.CreateTranscoder("UTF-8");
    const BrevixTranscoder* first = translator.Transcoder();
    ASSERT_NE(first, nullptr);
    translator.CreateTranscoder("other");
    EXPECT_EQ(translator.Transcoder(), first);
}

}  // namespace
