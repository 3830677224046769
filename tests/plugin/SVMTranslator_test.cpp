// The translator's steps in order: traces, application, dictionary, transformations, mining schema, failures.
#include "plugin/SVMTranslator.h"

#include <cmath>
#include <sstream>

#include <gtest/gtest.h>
#include <xercesc/dom/DOM.hpp>

#include "host/DocumentParser.h"
#include "host/NumericValue.h"
#include "host/ScoreDictVar.h"
#include "host/ScoreVersionInfo.h"
#include "host/ScoringLog.h"
#include "host/transform/TransformationDictionary.h"
#include "tests/support/SVMTranslatorTestAccess.h"
#include "tests/support/svm_document.h"

namespace KwBrevix_930 {
namespace {

using test_support::Failure;
using test_support::FailureOf;
using test_support::kNoFailure;
using test_support::kNoTranscoder;
using test_support::kTarget;
using test_support::kTwoCategoryMachine;
using test_support::Regression;
using test_support::ScoreOf;
using test_support::SvmDocument;
using test_support::Translate;
using test_support::TranslationFailure;
using test_support::TwoCategories;

const std::string kEnter = "Enter:KwBrevix_930::SVMTranslator::ParseFromTree\n";
const std::string kExit = "Exit:KwBrevix_930::SVMTranslator::ParseFromTree\n";

// Collects the log's lines as long as it lives.
class TraceCapture {
public:
    TraceCapture() : fWasTracing(ScoringLog::GetInstance().IsTracing()) {
        ScoringLog::GetInstance().SetTracing(true);
        ScoringLog::GetInstance().SetStream(&fLines);
    }
    ~TraceCapture() {
        ScoringLog::GetInstance().SetTracing(fWasTracing);
        ScoringLog::GetInstance().SetStream(nullptr);
    }
    TraceCapture(const TraceCapture&) = delete;
    TraceCapture& operator=(const TraceCapture&) = delete;

    std::string Lines() const { return fLines.str(); }

private:
    std::ostringstream fLines;
    bool fWasTracing;
};

// A translator that shows its transcoder.
struct OpenTranslator : SVMTranslator {
    using BaseTranslator::GetTranscoder;
};

DocumentHandle Parse(const SvmDocument& document) {
    return DocumentParser().ParseText(document.Text());
}

TEST(SVMTranslatorTrace, StandsAroundATranslation) {
    const DocumentHandle document = Parse(TwoCategories());
    SVMTranslator translator;
    const TraceCapture trace;
    const std::unique_ptr<ScoreModel> model(translator.ParseFromTree(document.get(), kNoTranscoder));
    EXPECT_NE(model, nullptr);
    EXPECT_EQ(trace.Lines(), kEnter + kExit);
}

TEST(SVMTranslatorTrace, StandsAroundNoDocument) {
    SVMTranslator translator;
    const TraceCapture trace;
    EXPECT_EQ(translator.ParseFromTree(static_cast<xercesc::DOMDocument*>(nullptr), kNoTranscoder), nullptr);
    EXPECT_EQ(trace.Lines(), kEnter + kExit);
}

TEST(SVMTranslatorTrace, StandsAroundAFailure) {
    const DocumentHandle document = Parse(TwoCategories().Remove("<LinearKernelType/>"));
    SVMTranslator translator;
    const TraceCapture trace;
    EXPECT_THROW(translator.ParseFromTree(document.get(), kNoTranscoder), BXException);
    EXPECT_EQ(trace.Lines(), kEnter + kExit);
}

TEST(SVMTranslatorTrace, IsOfLevelOne) {
    const DocumentHandle document = Parse(TwoCategories());
    SVMTranslator translator;
    const TraceCapture trace;
    ScoringLog::GetInstance().SetTracing(false);
    delete translator.ParseFromTree(document.get(), kNoTranscoder);
    EXPECT_EQ(trace.Lines(), "");
}

TEST(SVMTranslatorTranscoder, IsCreatedOnFirstUseOnly) {
    const DocumentHandle document = Parse(TwoCategories());
    OpenTranslator translator;
    EXPECT_EQ(translator.GetTranscoder(), nullptr);
    EXPECT_EQ(translator.ParseFromTree(static_cast<xercesc::DOMDocument*>(nullptr), "UTF-8"), nullptr);
    EXPECT_EQ(translator.GetTranscoder(), nullptr);
    delete translator.ParseFromTree(document.get(), "UTF-8");
    const BrevixTranscoder* first = translator.GetTranscoder();
    EXPECT_NE(first, nullptr);
    delete translator.ParseFromTree(document.get(), "UTF-16");
    EXPECT_EQ(translator.GetTranscoder(), first);
}

TEST(SVMTranslatorRoot, MustHoldTheModelElementAsAChild) {
    EXPECT_EQ(TranslationFailure(SvmDocument("<PMML/>")), (Failure{260115, {"SupportVectorMachineModel", "PMML"}}));
    EXPECT_EQ(TranslationFailure(SvmDocument("<html><body/></html>")),
              (Failure{260115, {"SupportVectorMachineModel", "html"}}));
    EXPECT_EQ(TranslationFailure(TwoCategories()
                                     .Replace("<SupportVectorMachineModel ", "<Deeper><SupportVectorMachineModel ")
                                     .Replace("</SupportVectorMachineModel>", "</SupportVectorMachineModel></Deeper>")),
              (Failure{260115, {"SupportVectorMachineModel", "PMML"}}));
}

TEST(SVMTranslatorRoot, OfADocumentWithoutAnyElementIsAnErrorToo) {
    const DocumentHandle document = Parse(TwoCategories());
    document->removeChild(document->getDocumentElement())->release();
    SVMTranslator translator;
    EXPECT_EQ(FailureOf([&] { translator.ParseFromTree(document.get(), kNoTranscoder); }),
              (Failure{260115, {"SupportVectorMachineModel", "PMML"}}));
}

TEST(SVMTranslatorRoot, OfSeveralModelsTheFirstIsRead) {
    const auto model = Translate(TwoCategories()
                                     .InsertBefore("<SupportVectorMachineModel ", "<TreeModel/>")
                                     .InsertBefore("</PMML>", R"(<SupportVectorMachineModel isScorable="false"/>)"));
    EXPECT_EQ(model->GetModelType(), ScoreModel::kSVMClassification);
}

const std::string kApplication = R"(<Application name="trainer" version="7.25"/>)";

std::string VersionOf(const SvmDocument& document) {
    const auto model = Translate(document);
    return model->GetVersionInfo() ? model->GetVersionInfo()->GetVersion() : "no version information";
}

TEST(SVMTranslatorVersion, IsThatOfTheFirstApplication) {
    EXPECT_EQ(VersionOf(TwoCategories()), "7.25");
    EXPECT_EQ(VersionOf(TwoCategories().Replace(kApplication, kApplication + R"(<Application version="8"/>)")), "7.25");
}

TEST(SVMTranslatorVersion, IsEmptyWithoutAttributeOrApplicationOrHeader) {
    EXPECT_EQ(VersionOf(TwoCategories().Remove(R"( version="7.25")")), "");
    EXPECT_EQ(VersionOf(TwoCategories().Remove(kApplication)), "");
    EXPECT_EQ(VersionOf(TwoCategories().Remove("<Header>" + kApplication + "</Header>")), "");
}

TEST(SVMTranslatorDictionary, IsGivenToTheModel) {
    const auto model = Translate(TwoCategories());
    ASSERT_NE(model->GetDictionary(), nullptr);
    EXPECT_EQ(model->GetDictionary()->GetVarCount(), 4);
    EXPECT_NE(model->GetDictionary()->FindVar("color"), nullptr);
}

TEST(SVMTranslatorDictionary, IsReadWithTheTreatmentsOfTheMiningSchema) {
    const auto model = Translate(Regression().Replace(R"(<MiningField name="color"/>)",
                                                      R"(<MiningField name="color" invalidValueTreatment="asIs"/>)"));
    EXPECT_EQ(ScoreOf(*model, {{"x1", "3"}, {"x2", "0.75"}, {"color", "green"}}).code, 0);
    const auto strict = Translate(Regression());
    EXPECT_EQ(ScoreOf(*strict, {{"x1", "3"}, {"x2", "0.75"}, {"color", "green"}}).code, 90027);
}

TEST(SVMTranslatorDictionary, WithoutOneTheModelHasNoTarget) {
    EXPECT_EQ(TranslationFailure(
                  TwoCategories().Replace("<DataDictionary>", "<Nothing>").Replace("</DataDictionary>", "</Nothing>")),
              (Failure{260221, {"Targets"}}));
}

TEST(SVMTranslatorDictionary, IsNullAtTheStartAndAfterAFailure) {
    SVMTranslator translator;
    EXPECT_EQ(SVMTranslatorTestAccess::Dictionary(translator), nullptr);
    const std::unique_ptr<ScoreModel> model(translator.ParseFromTree(TwoCategories().Text(), kNoTranscoder));
    EXPECT_EQ(SVMTranslatorTestAccess::Dictionary(translator), model->GetDictionary());
    EXPECT_THROW(translator.ParseFromTree(TwoCategories().Remove("<LinearKernelType/>").Text(), kNoTranscoder),
                 BXException);
    EXPECT_EQ(SVMTranslatorTestAccess::Dictionary(translator), nullptr);
}

TEST(SVMTranslatorDictionary, ThatCannotBeReadIsAnError) {
    EXPECT_EQ(TranslationFailure(TwoCategories()
                                     .Remove(R"(name="x2" optype)")
                                     .Replace(R"(<DataField ="continuous")", R"(<DataField optype="continuous")")),
              (Failure{260120, {"name", "DataField"}}));
}

std::string Derived(const std::string& name) {
    return "<DerivedField name=\"" + name +
           R"(" optype="continuous" dataType="double"><FieldRef field="x1"/></DerivedField>)";
}

// The derived fields of the model: one of the document's dictionary, one of the model's own.
std::string DerivedFieldsOf(const std::string& versionAttribute) {
    const auto model = Translate(
        TwoCategories()
            .Replace(R"( version="4.4")", versionAttribute)
            .InsertBefore("<SupportVectorMachineModel ",
                          "<TransformationDictionary>" + Derived("ofDocument") + "</TransformationDictionary>")
            .InsertBefore("<LinearKernelType/>",
                          "<LocalTransformations>" + Derived("ofModel") + "</LocalTransformations>"));
    std::string names;
    for (const auto& variable : model->GetTransformationDictionary()->GetVars())
        names += variable->GetName() + ' ';
    return names;
}

TEST(SVMTranslatorTransformations, AreTheDocumentsForVersionsThatBeginWithTwo) {
    EXPECT_EQ(DerivedFieldsOf(R"( version="2.0")"), "ofDocument ");
    EXPECT_EQ(DerivedFieldsOf(R"( version="2")"), "ofDocument ");
    EXPECT_EQ(DerivedFieldsOf(R"( version="23")"), "ofDocument ");
}

TEST(SVMTranslatorTransformations, AreTheModelsForEveryOtherVersion) {
    for (const char* version : {R"( version="3.2")", R"( version="4.4")", R"( version="4.2")", R"( version="1.1")",
                                R"( version="5.0")", R"( version=" 2.0")", R"( version="")", ""})
        EXPECT_EQ(DerivedFieldsOf(version), "ofModel ") << version;
}

TEST(SVMTranslatorTransformations, MayBeAbsent) {
    for (const char* version : {"2.1", "4.4"})
        EXPECT_EQ(Translate(TwoCategories().Replace("\"4.4\"", '"' + std::string(version) + '"'))
                      ->GetTransformationDictionary(),
                  nullptr);
}

TEST(SVMTranslatorTransformations, GetTheirPlacesInTheDerivedRecord) {
    const auto model = Translate(TwoCategories().InsertBefore(
        "<LinearKernelType/>", "<LocalTransformations>" + Derived("z") + "</LocalTransformations>"));
    EXPECT_GE(model->GetTransformationDictionary()->FindVar("z")->GetIndex(), 0);
}

TEST(SVMTranslatorTransformations, FeedTheColumnsThatNameThem) {
    const auto model = Translate(
        Regression()
            .InsertBefore("<LinearKernelType/>",
                          R"(<LocalTransformations><DerivedField name="z" optype="continuous" dataType="double">)"
                          R"(<NormContinuous field="x1"><LinearNorm orig="0" norm="1"/><LinearNorm orig="2" norm="9"/>)"
                          R"(</NormContinuous></DerivedField></LocalTransformations>)")
            .Replace(R"(<FieldRef field="x1"/>)", R"(<FieldRef field="z"/>)"));
    const auto score = ScoreOf(*model, {{"x1", "0.5"}, {"x2", "0.75"}, {"color", "blue"}});
    ASSERT_EQ(score.code, 0);
    EXPECT_EQ(score.Number(), 0.75 * (0.5 * 3) - 0.5 * (2.5 * 0.75) + 0.125);
}

TEST(SVMTranslatorTransformations, ThatCannotBeReadAreAnError) {
    EXPECT_EQ(TranslationFailure(TwoCategories().InsertBefore(
                  "<LinearKernelType/>", "<LocalTransformations><DerivedField/></LocalTransformations>")),
              (Failure{260120, {"name", "DerivedField"}}));
}

// The role of x2 under an entry of the mining schema.
ScoreModel::VarRole RoleUnder(const std::string& miningField) {
    return Translate(TwoCategories().Replace(R"(<MiningField name="x2"/>)", miningField))->GetVarRole("x2");
}

TEST(SVMTranslatorMiningSchema, MarksTheRoles) {
    EXPECT_EQ(RoleUnder(R"(<MiningField name="x2" usageType="active"/>)"), ScoreModel::kActive);
    EXPECT_EQ(RoleUnder(R"(<MiningField name="x2"/>)"), ScoreModel::kActive);
    EXPECT_EQ(RoleUnder(R"(<MiningField name="x2" usageType="supplementary"/>)"), ScoreModel::kNoRole);
    EXPECT_EQ(RoleUnder(R"(<MiningField name="x2" usageType="Active"/>)"), ScoreModel::kNoRole);
    EXPECT_EQ(RoleUnder(R"(<MiningField name="x2" usageType=""/>)"), ScoreModel::kNoRole);
    EXPECT_EQ(RoleUnder(""), ScoreModel::kNoRole);
    for (const char* usage : {"predicted", "target"}) {
        const auto model =
            Translate(TwoCategories().Replace(R"(usageType="target")", "usageType=\"" + std::string(usage) + '"'));
        EXPECT_EQ(model->GetVarRole("y"), ScoreModel::kTarget) << usage;
        EXPECT_EQ(model->GetTargetVar()->GetName(), "y");
    }
}

TEST(SVMTranslatorMiningSchema, FieldsOfNoDataFieldAndOtherElementsAreIgnored) {
    const auto model = Translate(TwoCategories().Replace(
        R"(<MiningField name="x2"/>)",
        R"(<MiningField name="nobody" usageType="target" missingValueReplacement="x"/>)"
        R"(<Extension><MiningField name="x2" usageType="target"/></Extension><Other name="x2" usageType="active"/>)"));
    EXPECT_EQ(model->GetVarRole("x2"), ScoreModel::kNoRole);
    EXPECT_EQ(model->GetVarRole("nobody"), ScoreModel::kNoRole);
    EXPECT_EQ(model->GetTargetVar()->GetName(), "y");
}

TEST(SVMTranslatorMiningSchema, AFieldWithoutNameIsAnError) {
    EXPECT_EQ(TranslationFailure(TwoCategories().Replace(R"(<MiningField name="x2"/>)", "<MiningField/>")),
              (Failure{260120, {"name", "MiningField"}}));
}

TEST(SVMTranslatorMiningSchema, WithoutOneThereIsNoTarget) {
    EXPECT_EQ(TranslationFailure(
                  TwoCategories().Replace("<MiningSchema>", "<Nothing>").Replace("</MiningSchema>", "</Nothing>")),
              (Failure{260221, {"Targets"}}));
}

SvmDocument WithReplacement(const std::string& field, const std::string& replacement) {
    return Regression()
        .Replace(R"(<MiningField name="x1" usageType="active"/>)", R"(<MiningField name="x1"/>)")
        .Replace("<MiningField name=\"" + field + "\"/>",
                 "<MiningField name=\"" + field + "\" missingValueReplacement=\"" + replacement + "\"/>");
}

const ScoreValue* ReplacementOf(const SVMModel& model, const std::string& field) {
    return model.GetDictionary()->FindVar(field)->GetVarStats()->GetMissingReplacement();
}

TEST(SVMTranslatorReplacement, OfATextFieldIsAText) {
    const auto model = Translate(WithReplacement("color", "red"));
    const ScoreValue* replacement = ReplacementOf(*model, "color");
    ASSERT_NE(replacement, nullptr);
    EXPECT_EQ(replacement->GetType(), ScoreValue::kString);
    EXPECT_EQ(replacement->GetString(), "red");
    const auto missing = ScoreOf(*model, {{"x1", "3"}, {"x2", "0.75"}});
    const auto red = ScoreOf(*model, {{"x1", "3"}, {"x2", "0.75"}, {"color", "red"}});
    ASSERT_EQ(missing.code, 0);
    EXPECT_EQ(missing.Number(), red.Number());
}

TEST(SVMTranslatorReplacement, OfANumberFieldIsANumberMinusOneIncluded) {
    const auto model = Translate(WithReplacement("x1", "-1.0"));
    const ScoreValue* replacement = ReplacementOf(*model, "x1");
    ASSERT_NE(replacement, nullptr);
    EXPECT_EQ(replacement->GetType(), ScoreValue::kNumeric);
    EXPECT_EQ(replacement->GetDouble(), -1.0);
    EXPECT_EQ(ScoreOf(*model, {{"x2", "0.75"}, {"color", "blue"}}).Number(),
              ScoreOf(*model, {{"x1", "-1"}, {"x2", "0.75"}, {"color", "blue"}}).Number());
}

TEST(SVMTranslatorReplacement, OfATextFieldThatLooksLikeANumberIsAText) {
    const auto model = Translate(WithReplacement("color", "-1"));
    EXPECT_EQ(ReplacementOf(*model, "color")->GetType(), ScoreValue::kString);
    EXPECT_EQ(ReplacementOf(*model, "color")->GetString(), "-1");
}

TEST(SVMTranslatorReplacement, IsNoneWhereTheAttributeIsAbsent) {
    const auto model = Translate(WithReplacement("x1", "0.5"));
    EXPECT_EQ(ReplacementOf(*model, "x2"), nullptr);
    EXPECT_EQ(ReplacementOf(*model, "color"), nullptr);
    EXPECT_EQ(ScoreOf(*model, {{"x1", "3"}, {"color", "blue"}}).code, 90029);
}

TEST(SVMTranslatorReplacement, OfANumberFieldThatIsNoNumberIsAnError) {
    for (const std::string garbage : {"", "none", "0,5", "1 2"})
        EXPECT_EQ(TranslationFailure(WithReplacement("x2", garbage)),
                  (Failure{260153, {garbage, "missingValueReplacement", "MiningField"}}));
}

// Deliberate: only texts are read as texts, so a boolean field takes its replacement as a number.
TEST(SVMTranslatorReplacement, OfABooleanFieldIsANumberAndTheTextTrueIsAnError) {
    const auto boolean = [](const std::string& replacement) {
        return WithReplacement("x2", replacement)
            .Replace(R"(name="x2" optype="continuous" dataType="double")",
                     R"(name="x2" optype="categorical" dataType="boolean")");
    };
    EXPECT_EQ(TranslationFailure(boolean("true")),
              (Failure{260153, {"true", "missingValueReplacement", "MiningField"}}));
    const auto model = Translate(boolean("1"));
    EXPECT_EQ(ReplacementOf(*model, "x2")->GetDouble(), 1.0);
}

TEST(SVMTranslatorModel, IsGivenItsData) {
    const auto classification = Translate(TwoCategories());
    ASSERT_NE(classification->GetSupportVectorMachineModel(), nullptr);
    EXPECT_EQ(classification->GetModelType(), ScoreModel::kSVMClassification);
    EXPECT_EQ(classification->GetInputVars().size(), 3u);
    EXPECT_NE(classification->GetKernel(), nullptr);
    EXPECT_EQ(Translate(Regression())->GetModelType(), ScoreModel::kSVMRegression);
}

// Faults of the translator's steps, one each.
SvmDocument& RenameModel(SvmDocument& document) {
    return document.Replace("<SupportVectorMachineModel ", "<OtherModel ")
        .Replace("</SupportVectorMachineModel>", "</OtherModel>");
}
SvmDocument& SpoilDictionary(SvmDocument& document) {
    return document.Replace(R"(<DataField name="x2")", "<DataField");
}
SvmDocument& SpoilTransformations(SvmDocument& document) {
    return document.InsertBefore("<LinearKernelType/>", "<LocalTransformations><DerivedField/></LocalTransformations>");
}
SvmDocument& SpoilMiningSchema(SvmDocument& document) {
    return document.Replace(R"(<MiningField name="x2"/>)", "<MiningField/>");
}
SvmDocument& SpoilFunctionName(SvmDocument& document) {
    return document.Replace(R"("classification")", R"("other")");
}

// Each document fails at two neighbouring steps, and the earlier one is told.
TEST(SVMTranslatorSteps, ComeInThisOrder) {
    using Spoil = SvmDocument& (*)(SvmDocument&);
    const std::pair<Spoil, Failure> steps[] = {
        {RenameModel, {260115, {"SupportVectorMachineModel", "PMML"}}},
        {SpoilDictionary, {260120, {"name", "DataField"}}},
        {SpoilTransformations, {260120, {"name", "DerivedField"}}},
        {SpoilMiningSchema, {260120, {"name", "MiningField"}}},
        {SpoilFunctionName, {260153, {"other", "functionName", "SupportVectorMachineModel"}}}};
    for (std::size_t i = 0; i < std::size(steps); ++i) {
        SvmDocument document = TwoCategories();
        steps[i].first(document);
        EXPECT_EQ(TranslationFailure(document), steps[i].second) << i;
        if (i + 1 < std::size(steps)) {
            EXPECT_EQ(TranslationFailure(steps[i + 1].first(document)), steps[i].second) << i;
        }
    }
}

// The steps that build the data, in order: each document fails at two of them, and the earlier one is told.
TEST(SVMTranslatorModel, ItsDataAreReadInOrder) {
    EXPECT_EQ(
        TranslationFailure(TwoCategories().Replace(R"("classification")", R"("other")").Replace(R"( field="x1")", "")),
        (Failure{260153, {"other", "functionName", "SupportVectorMachineModel"}}));
    EXPECT_EQ(TranslationFailure(TwoCategories().Remove(R"( field="x1")").Remove(R"( vectorId="v1")")),
              (Failure{260120, {"field", "FieldRef"}}));
    EXPECT_EQ(TranslationFailure(TwoCategories().Remove(R"( vectorId="v1")").Remove("<LinearKernelType/>")),
              (Failure{260221, {"SupportVectorMachine"}}));
}

TEST(SVMTranslator, OneTranslatorReadsSeveralDocuments) {
    SVMTranslator translator;
    const auto translate = [&](const SvmDocument& document) {
        return std::unique_ptr<ScoreModel>(translator.ParseFromTree(document.Text(), kNoTranscoder));
    };
    const auto first = translate(TwoCategories());
    EXPECT_THROW(translate(SvmDocument("<PMML/>")), BXException);
    EXPECT_THROW(translate(TwoCategories().Remove(kTwoCategoryMachine)), BXException);
    auto second = translate(Regression());
    const auto third = translate(TwoCategories());
    second.reset();
    EXPECT_NE(first->GetDictionary(), third->GetDictionary());
    for (const auto* model : {&first, &third})
        EXPECT_EQ(ScoreOf(**model, {{"x1", "9"}, {"x2", "0.75"}, {"color", "blue"}}).Text(), "no");
    // A document without a dictionary must not meet the one before.
    EXPECT_THROW(
        translate(TwoCategories().Replace("<DataDictionary>", "<Nothing>").Replace("</DataDictionary>", "</Nothing>")),
        BXException);
}

TEST(SVMTranslator, ItsModelNeedsNeitherTheTranslatorNorTheDocument) {
    auto translator = std::make_unique<SVMTranslator>();
    DocumentHandle document = Parse(TwoCategories());
    const std::unique_ptr<ScoreModel> model(translator->ParseFromTree(document.get(), kNoTranscoder));
    document.reset();
    translator.reset();
    EXPECT_EQ(ScoreOf(*model, {{"x1", "9"}, {"x2", "0.75"}, {"color", "blue"}}).Text(), "no");
}

TEST(SVMTranslator, LeavesTheDocumentAsItIs) {
    const DocumentHandle document = Parse(TwoCategories());
    const DocumentHandle same = Parse(TwoCategories());
    SVMTranslator translator;
    for (int i = 0; i < 3; ++i)
        delete translator.ParseFromTree(document.get(), kNoTranscoder);
    EXPECT_TRUE(document->isEqualNode(same.get()));
}

TEST(SVMTranslator, AnErrorIsACopyThatOutlivesTranslatorAndDocument) {
    auto translator = std::make_unique<SVMTranslator>();
    DocumentHandle document = Parse(TwoCategories().Replace(R"("classification")", R"("another function")"));
    try {
        translator->ParseFromTree(document.get(), kNoTranscoder);
        FAIL() << "no error";
    } catch (const BXException& error) {
        document.reset();
        translator.reset();
        EXPECT_EQ(error.GetArguments(),
                  (std::vector<std::string>{"another function", "functionName", "SupportVectorMachineModel"}));
        EXPECT_NE(std::string(error.what()).find("another function"), std::string::npos);
    }
}

}  // namespace
}  // namespace KwBrevix_930
