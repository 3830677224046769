// The vector dictionary: its columns, its instances and their sparse arrays, read from whole documents.
#include "pmml/VectorDictionaryReader.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "host/ScoreDictVar.h"
#include "pmml/SVMModelData.h"
#include "tests/support/svm_document.h"

namespace KwBrevix_930 {
namespace {

using test_support::Failure;
using test_support::kNoFailure;
using test_support::Regression;
using test_support::ScoreOf;
using test_support::SvmDocument;
using test_support::Translate;
using test_support::TranslationFailure;
using test_support::TwoCategories;

using Indices = std::vector<std::int32_t>;
using Values = std::vector<double>;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

const std::string kFields = R"(<FieldRef field="x1"/><FieldRef field="x2"/>)"
                            R"(<CategoricalPredictor name="color" value="red" coefficient="1.5"/>)";
const std::string kFirstArray =
    R"(<REAL-SparseArray n="3"><Indices>1 3</Indices><REAL-Entries>0.5 -1.25</REAL-Entries></REAL-SparseArray>)";
const std::string kFirstInstance = R"(<VectorInstance id="v1">)" + kFirstArray + "</VectorInstance>";
const std::string kSecondInstance =
    R"(<VectorInstance id="v2"><REAL-SparseArray n="3"><Indices>2</Indices><REAL-Entries>2.5</REAL-Entries>)"
    R"(</REAL-SparseArray></VectorInstance>)";

const Failure kBadIndices{260115, {"Indices", "REAL-SparseArray"}};

SvmDocument WithFirstArray(const std::string& array) {
    return TwoCategories().Replace(kFirstArray, array);
}

std::string Array(const std::string& indices, const std::string& entries) {
    return "<REAL-SparseArray><Indices>" + indices + "</Indices><REAL-Entries>" + entries +
           "</REAL-Entries></REAL-SparseArray>";
}

// The instance v1 as it is stored; an instance without indices where it is not.
SVMVectorInstance FirstInstanceOf(const SvmDocument& document) {
    const auto model = Translate(document);
    const auto& instances = model->GetSupportVectorMachineModel()->GetVectorInstances();
    const auto found = instances.find("v1");
    return found == instances.end() ? SVMVectorInstance() : *found->second;
}

Indices IndicesOf(const std::string& tokens, const std::string& entries) {
    return FirstInstanceOf(WithFirstArray(Array(tokens, entries))).indices;
}

Values ValuesOf(const std::string& indices, const std::string& tokens) {
    return FirstInstanceOf(WithFirstArray(Array(indices, tokens))).values;
}

TEST(VectorDictionary, AMissingDictionaryOrMissingFieldsAreErrors) {
    EXPECT_EQ(TranslationFailure(TwoCategories()
                                     .Replace("<VectorDictionary>", "<Elsewhere>")
                                     .Replace("</VectorDictionary>", "</Elsewhere>")),
              (Failure{260115, {"VectorDictionary", "SupportVectorMachineModel"}}));
    EXPECT_EQ(TranslationFailure(
                  TwoCategories().Replace("<VectorFields>", "<Elsewhere>").Replace("</VectorFields>", "</Elsewhere>")),
              (Failure{260115, {"VectorFields", "VectorDictionary"}}));
}

TEST(VectorFields, AreReadInDocumentOrderWithTheirKinds) {
    const auto model = Translate(
        TwoCategories().Replace(kFields, R"(<CategoricalPredictor name="color" value="blue" coefficient="-1"/>)"
                                         R"(<FieldRef field="x2" mapMissingTo="0.375"/><FieldRef field="x1"/>)"));
    const SVMModelData& data = *model->GetSupportVectorMachineModel();
    EXPECT_EQ(data.GetVectorFieldKinds(), (Indices{1, 0, 0}));
    ASSERT_EQ(data.GetVectorFields().size(), 3u);
    EXPECT_EQ(data.GetVectorFields()[0]->fieldName, "color");
    EXPECT_EQ(data.GetVectorFields()[0]->value, "blue");
    EXPECT_EQ(data.GetVectorFields()[0]->coefficient, -1.0);
    EXPECT_EQ(data.GetVectorFields()[1]->fieldName, "x2");
    EXPECT_EQ(data.GetVectorFields()[1]->value, "0.375");
    EXPECT_EQ(data.GetVectorFields()[2]->fieldName, "x1");
    EXPECT_EQ(data.GetVectorFields()[2]->value, "");
}

TEST(VectorFields, ExtensionsAndOtherElementsAndTextAddNoColumn) {
    const auto model = Translate(
        TwoCategories().Replace(kFields, R"(<Extension extender="ZARN"><FieldRef field="color"/></Extension>)"
                                         R"(  text <FieldRef field="x1"/><Constant>3</Constant><!-- none -->)"));
    EXPECT_EQ(model->GetSupportVectorMachineModel()->GetVectorFieldKinds(), Indices{0});
}

TEST(VectorFields, MayBeEmpty) {
    const auto model = Translate(TwoCategories().Remove(kFields));
    EXPECT_TRUE(model->GetSupportVectorMachineModel()->GetVectorFields().empty());
}

TEST(VectorFields, EachRequiredAttributeIsNamedWhenItIsMissing) {
    EXPECT_EQ(TranslationFailure(TwoCategories().Remove(R"( field="x1")")), (Failure{260120, {"field", "FieldRef"}}));
    EXPECT_EQ(TranslationFailure(TwoCategories().Replace(R"(name="color" value)", "value")),
              (Failure{260120, {"name", "CategoricalPredictor"}}));
    EXPECT_EQ(TranslationFailure(TwoCategories().Remove(R"( value="red" coefficient="1.5")")),
              (Failure{260120, {"value", "CategoricalPredictor"}}));
    EXPECT_EQ(TranslationFailure(TwoCategories().Remove(R"( coefficient="1.5")")),
              (Failure{260120, {"coefficient", "CategoricalPredictor"}}));
}

TEST(VectorFields, ACoefficientThatIsNoNumberIsAnError) {
    for (const std::string garbage : {"", "1,5", "one", "0x1p3", "1.5e"})
        EXPECT_EQ(TranslationFailure(TwoCategories().Replace(R"(="1.5")", "=\"" + garbage + '"')),
                  (Failure{260153, {garbage, "coefficient", "CategoricalPredictor"}}));
}

// The derived field is 1 for red; the columns read it instead of color.
SvmDocument WithDerivedColor(const std::string& fieldRef) {
    return Regression()
        .InsertBefore("<LinearKernelType/>",
                      R"(<LocalTransformations><DerivedField name="isRed" optype="continuous" dataType="double">)"
                      R"(<NormDiscrete field="color" value="red"/></DerivedField></LocalTransformations>)")
        .Replace(R"(<CategoricalPredictor name="color" value="red" coefficient="1.5"/>)", fieldRef);
}

const ScoreVarStats& StatsOf(const SVMModel& model, const std::string& name) {
    return *model.GetDictionary()->FindVar(name)->GetVarStats();
}

TEST(MapMissingTo, IsRegisteredForTheOneValueThatTheDerivedFieldEncodes) {
    const auto model = Translate(WithDerivedColor(R"(<FieldRef field="isRed" mapMissingTo="0.625"/>)"));
    ASSERT_NE(StatsOf(*model, "color").GetEncodedMissingReplacement("red"), nullptr);
    EXPECT_EQ(*StatsOf(*model, "color").GetEncodedMissingReplacement("red"), "0.625");
    EXPECT_EQ(StatsOf(*model, "color").GetEncodedMissingReplacement("blue"), nullptr);
    EXPECT_EQ(StatsOf(*model, "color").GetMissingReplacement(), nullptr);
    EXPECT_EQ(model->GetSupportVectorMachineModel()->GetVectorFields()[2]->value, "0.625");
}

TEST(MapMissingTo, StandsInForTheDerivedFieldWhenItsSourceIsMissing) {
    const auto model = Translate(WithDerivedColor(R"(<FieldRef field="isRed" mapMissingTo="0.625"/>)"));
    const auto score = ScoreOf(*model, {{"x1", "3"}, {"x2", "0.75"}});
    ASSERT_EQ(score.code, 0);
    EXPECT_EQ(score.Number(), 0.75 * (0.5 * 3 - 1.25 * 0.625) - 0.5 * (2.5 * 0.75) + 0.125);
}

TEST(MapMissingTo, AbsentOrEmptyRegistersNothingAndTheMissingCaseFails) {
    for (const char* fieldRef : {R"(<FieldRef field="isRed"/>)", R"(<FieldRef field="isRed" mapMissingTo=""/>)"}) {
        const auto model = Translate(WithDerivedColor(fieldRef));
        EXPECT_EQ(StatsOf(*model, "color").GetEncodedMissingReplacement("red"), nullptr);
        EXPECT_EQ(ScoreOf(*model, {{"x1", "3"}, {"x2", "0.75"}}).code, 90029);
    }
}

TEST(MapMissingTo, IsNotRegisteredForASourceThatIsNotCategorical) {
    const auto model =
        Translate(WithDerivedColor(R"(<FieldRef field="isRed" mapMissingTo="0.625"/>)")
                      .Replace(R"(name="color" optype="categorical")", R"(name="color" optype="ordinal")"));
    EXPECT_EQ(StatsOf(*model, "color").GetEncodedMissingReplacement("red"), nullptr);
}

TEST(MapMissingTo, IsNotRegisteredForADerivedFieldThatEncodesNoValue) {
    const auto model =
        Translate(WithDerivedColor(R"(<FieldRef field="isRed" mapMissingTo="0.625"/>)")
                      .Replace(R"(<NormDiscrete field="color" value="red"/>)", R"(<FieldRef field="color"/>)"));
    EXPECT_EQ(StatsOf(*model, "color").GetEncodedMissingReplacement("red"), nullptr);
}

TEST(MapMissingTo, OfARawFieldIsOnlyKept) {
    const auto model =
        Translate(Regression().Replace(R"(<FieldRef field="x1"/>)", R"(<FieldRef field="x1" mapMissingTo="2.75"/>)"));
    EXPECT_EQ(model->GetSupportVectorMachineModel()->GetVectorFields()[0]->value, "2.75");
    EXPECT_EQ(StatsOf(*model, "x1").GetMissingReplacement(), nullptr);
    EXPECT_EQ(ScoreOf(*model, {{"x2", "0.75"}, {"color", "red"}}).code, 90029);
}

TEST(VectorInstances, NoneAtAllIsAnErrorOfTheDictionary) {
    EXPECT_EQ(TranslationFailure(TwoCategories().Remove(kFirstInstance).Remove(kSecondInstance)),
              (Failure{260114, {"VectorDictionary"}}));
}

TEST(VectorInstances, AMissingIdIsAnError) {
    EXPECT_EQ(TranslationFailure(TwoCategories().Replace(R"(<VectorInstance id="v2">)", "<VectorInstance>")),
              (Failure{260120, {"id", "VectorInstance"}}));
}

// Each document fails at two places, and the earlier one is told.
TEST(VectorDictionary, FieldsComeBeforeInstancesAndTheIdBeforeTheArrayAndItsNBeforeItsIndices) {
    EXPECT_EQ(
        TranslationFailure(TwoCategories().Remove(R"( field="x1")").Remove(kFirstInstance).Remove(kSecondInstance)),
        (Failure{260120, {"field", "FieldRef"}}));
    EXPECT_EQ(TranslationFailure(WithFirstArray(Array("1 3 5", "0.5 0.25")).Remove(R"( id="v1")")),
              (Failure{260120, {"id", "VectorInstance"}}));
    EXPECT_EQ(TranslationFailure(WithFirstArray(R"(<REAL-SparseArray n="x"><Indices>nan</Indices>)"
                                                "<REAL-Entries>0.5</REAL-Entries></REAL-SparseArray>")),
              (Failure{260153, {"x", "n", "REAL-SparseArray"}}));
}

TEST(VectorInstances, AnEmptyIdIsDroppedSilently) {
    const auto model = Translate(TwoCategories().Replace(R"(<VectorInstance id="v2">)", R"(<VectorInstance id="">)"));
    EXPECT_EQ(model->GetSupportVectorMachineModel()->GetVectorInstances().size(), 1u);
}

TEST(VectorInstances, OfARepeatedIdTheFirstIsKept) {
    const auto model = Translate(TwoCategories().Replace(R"(<VectorInstance id="v2">)", R"(<VectorInstance id="v1">)"));
    const auto& instances = model->GetSupportVectorMachineModel()->GetVectorInstances();
    ASSERT_EQ(instances.size(), 1u);
    EXPECT_EQ(instances.at("v1")->values, (Values{0.5, -1.25}));
}

TEST(VectorInstances, AreStoredZeroBased) {
    const SVMVectorInstance instance = FirstInstanceOf(TwoCategories());
    EXPECT_EQ(instance.indices, (Indices{0, 2}));
    EXPECT_EQ(instance.values, (Values{0.5, -1.25}));
    EXPECT_EQ(instance.normCache, -1.0);
}

// The nested instance is the first in the list of descendants, so that the last child is beyond the count.
TEST(VectorInstances, AreCountedAsChildrenButTakenFromAllDescendants) {
    const auto model = Translate(TwoCategories().InsertBefore(
        kFirstInstance,
        R"(<Extension><VectorInstance id="nested">)" + Array("2", "-6.5") + "</VectorInstance></Extension>"));
    const auto& instances = model->GetSupportVectorMachineModel()->GetVectorInstances();
    ASSERT_EQ(instances.size(), 2u);
    EXPECT_EQ(instances.at("nested")->values, Values{-6.5});
    EXPECT_EQ(instances.count("v1"), 1u);
    EXPECT_EQ(instances.count("v2"), 0u);
}

TEST(VectorInstances, OnlyNestedOnesAreNone) {
    EXPECT_EQ(TranslationFailure(TwoCategories()
                                     .Replace(kFirstInstance, "<Extension>" + kFirstInstance + "</Extension>")
                                     .Remove(kSecondInstance)),
              (Failure{260114, {"VectorDictionary"}}));
}

TEST(VectorInstances, WithADenseArrayOrNothingInThemAreDroppedSilently) {
    EXPECT_TRUE(FirstInstanceOf(WithFirstArray(R"(<Array type="real" n="3">0.5 0 -1.25</Array>)")).indices.empty());
    EXPECT_TRUE(FirstInstanceOf(WithFirstArray("")).indices.empty());
    EXPECT_TRUE(FirstInstanceOf(WithFirstArray("<INT-SparseArray n='3'/>")).indices.empty());
}

TEST(VectorInstances, TheSparseArrayIsReadWhereverItStands) {
    EXPECT_EQ(FirstInstanceOf(WithFirstArray("<Array type='real'>9 9</Array>" + kFirstArray)).values,
              (Values{0.5, -1.25}));
    EXPECT_EQ(FirstInstanceOf(WithFirstArray(kFirstArray + Array("2", "7.5"))).values, (Values{0.5, -1.25}));
}

TEST(SparseArray, WithoutIndicesIsNZeros) {
    const SVMVectorInstance instance = FirstInstanceOf(WithFirstArray(R"(<REAL-SparseArray n="3"/>)"));
    EXPECT_EQ(instance.indices, (Indices{0, 1, 2}));
    EXPECT_EQ(instance.values, (Values{0.0, 0.0, 0.0}));
}

TEST(SparseArray, WithoutIndicesOrAPositiveNIsDroppedSilently) {
    for (const char* array : {"<REAL-SparseArray/>", "<REAL-SparseArray n='0'/>", "<REAL-SparseArray n='-1'/>",
                              "<REAL-SparseArray n='-7'/>", "<REAL-SparseArray n='0.99'/>",
                              "<REAL-SparseArray n='NaN'/>", "<REAL-SparseArray n='-INF'/>"})
        EXPECT_TRUE(FirstInstanceOf(WithFirstArray(array)).indices.empty()) << array;
}

TEST(SparseArray, NIsTruncated) {
    EXPECT_EQ(FirstInstanceOf(WithFirstArray(R"(<REAL-SparseArray n="2.9"/>)")).indices, (Indices{0, 1}));
}

TEST(SparseArray, AnNThatIsNoNumberIsAnErrorEvenWithIndices) {
    for (const std::string garbage : {"", "three", "3 0"}) {
        EXPECT_EQ(TranslationFailure(
                      TwoCategories().Replace(R"(<VectorInstance id="v1"><REAL-SparseArray n="3">)",
                                              R"(<VectorInstance id="v1"><REAL-SparseArray n=")" + garbage + "\">")),
                  (Failure{260153, {garbage, "n", "REAL-SparseArray"}}));
    }
}

TEST(SparseArray, NIsNotComparedWithTheIndices) {
    EXPECT_EQ(FirstInstanceOf(WithFirstArray("<REAL-SparseArray n='1'><Indices>9 4 4</Indices>"
                                             "<REAL-Entries>1 2 3</REAL-Entries></REAL-SparseArray>"))
                  .indices,
              (Indices{8, 3, 3}));
    EXPECT_EQ(FirstInstanceOf(WithFirstArray("<REAL-SparseArray n='4294967296'><Indices>2</Indices>"
                                             "<REAL-Entries>1.5</REAL-Entries></REAL-SparseArray>"))
                  .indices,
              Indices{1});
}

TEST(SparseArray, ImpliedZerosBeyondTheLimitAreAnError) {
    EXPECT_EQ(TranslationFailure(WithFirstArray(R"(<REAL-SparseArray n="10000001"/>)")), kBadIndices);
    EXPECT_EQ(TranslationFailure(WithFirstArray(R"(<REAL-SparseArray n="4294967296"/>)")), kBadIndices);
    EXPECT_EQ(TranslationFailure(WithFirstArray(R"(<REAL-SparseArray n="INF"/>)")), kBadIndices);
}

// Instances without an id are not stored, but their zeros count.
TEST(SparseArray, ImpliedZerosOfAllArraysOfADocumentCountTogether) {
    const std::string half = R"(<VectorInstance id=""><REAL-SparseArray n="5000000"/></VectorInstance>)";
    const auto document = [&](const std::string& more) {
        return TwoCategories().InsertBefore(kFirstInstance, half + half + more);
    };
    EXPECT_EQ(TranslationFailure(document("")), kNoFailure);
    EXPECT_EQ(TranslationFailure(document(R"(<VectorInstance id="z"><REAL-SparseArray n="1"/></VectorInstance>)")),
              kBadIndices);
}

TEST(SparseArray, EntriesWithoutIndicesAreAnError) {
    EXPECT_EQ(TranslationFailure(
                  WithFirstArray(R"(<REAL-SparseArray n="3"><REAL-Entries>0.5</REAL-Entries></REAL-SparseArray>)")),
              kBadIndices);
    EXPECT_EQ(TranslationFailure(WithFirstArray("<REAL-SparseArray><Entries>0.5</Entries></REAL-SparseArray>")),
              kBadIndices);
}

TEST(SparseArray, IndicesWithoutEntriesAreAnError) {
    EXPECT_EQ(TranslationFailure(WithFirstArray("<REAL-SparseArray n='2'><Indices>1 2</Indices></REAL-SparseArray>")),
              (Failure{260115, {"Entries", "REAL-SparseArray"}}));
}

TEST(SparseArray, EntriesAreReadWhereThereAreNoRealEntries) {
    EXPECT_EQ(FirstInstanceOf(WithFirstArray("<REAL-SparseArray><Indices>1 3</Indices><Entries>0.25 -4</Entries>"
                                             "</REAL-SparseArray>"))
                  .values,
              (Values{0.25, -4.0}));
    EXPECT_EQ(FirstInstanceOf(WithFirstArray("<REAL-SparseArray><Entries>7 7</Entries><Indices>1 3</Indices>"
                                             "<REAL-Entries>0.25 -4</REAL-Entries></REAL-SparseArray>"))
                  .values,
              (Values{0.25, -4.0}));
}

TEST(SparseArray, ListsOfDifferentLengthsAreAnErrorWithBothCounts) {
    EXPECT_EQ(TranslationFailure(WithFirstArray(Array("1 3 5", "0.5 0.25"))),
              (Failure{260251, {"3", "Indices", "REAL-SparseArray", "2", "REAL-Entries", "REAL-SparseArray"}}));
    EXPECT_EQ(TranslationFailure(WithFirstArray(Array("", "0.5"))),
              (Failure{260251, {"0", "Indices", "REAL-SparseArray", "1", "REAL-Entries", "REAL-SparseArray"}}));
    // Deliberate: the message names REAL-Entries whatever the element is called.
    EXPECT_EQ(TranslationFailure(WithFirstArray("<REAL-SparseArray><Indices>1</Indices><Entries/></REAL-SparseArray>")),
              (Failure{260251, {"1", "Indices", "REAL-SparseArray", "0", "REAL-Entries", "REAL-SparseArray"}}));
}

TEST(SparseArray, EmptyListsAreDroppedSilently) {
    EXPECT_TRUE(FirstInstanceOf(WithFirstArray(Array("", " \n "))).indices.empty());
}

TEST(ArrayTokens, AreSeparatedByRunsOfBlanksTabsAndLineEnds) {
    EXPECT_EQ(IndicesOf("\n\t 1  2&#13;&#10;3\t\t4&#13;5 \n", "1 1 1 1 1"), (Indices{0, 1, 2, 3, 4}));
    EXPECT_EQ(ValuesOf("1 2 3", " 0.5\t-2.25\n1e-3 "), (Values{0.5, -2.25, 0.001}));
}

TEST(ArrayTokens, MayStandInCharacterDataAndAroundComments) {
    EXPECT_EQ(ValuesOf("1 2 3", "<![CDATA[0.5 ]]><!-- 9 -->-2.25 <b>8.5</b>"), (Values{0.5, -2.25, 8.5}));
}

TEST(ArrayTokens, AnIndexIsTruncatedAndOneIsSubtracted) {
    EXPECT_EQ(IndicesOf("2.9 -2.9 0.9 1e1 +7 007 -0", "1 1 1 1 1 1 1"), (Indices{1, -3, -1, 9, 6, 6, -1}));
}

TEST(ArrayTokens, AreReadByTheirLeadingNumber) {
    EXPECT_EQ(IndicesOf("3x 5,7 0x10 1e1z", "1 1 1 1"), (Indices{2, 4, 15, 9}));
    EXPECT_EQ(ValuesOf("1 2 3 4 5 6 7", "0.5abc 1,5 0x1.8p1 1e 1e+ .5. -.25-"),
              (Values{0.5, 1.0, 3.0, 1.0, 1.0, 0.5, -0.25}));
}

TEST(ArrayTokens, ThatStartWithNoNumberAreZero) {
    EXPECT_EQ(ValuesOf("1 2 3 4 5 6 7 8",
                       "abc , - + . e5 --1 \xE2\x88\x92"
                       "2"),
              Values(8, 0.0));
    EXPECT_EQ(IndicesOf("abc - \xD9\xA1", "1 1 1"), (Indices{-1, -1, -1}));
}

TEST(ArrayTokens, KnowInfinityAndNaNAndOverflowAndUnderflow) {
    EXPECT_EQ(ValuesOf("1 2 3 4 5 6", "inf -INFINITY 1e999 -1e999 1e-999 0x1p2000"),
              (Values{kInfinity, -kInfinity, kInfinity, -kInfinity, 0.0, kInfinity}));
    const Values values = ValuesOf("1 2 3", "nan NaN(7) -nan");
    ASSERT_EQ(values.size(), 3u);
    for (const double value : values)
        EXPECT_TRUE(std::isnan(value));
}

TEST(ArrayTokens, ADecimalNumberIsReadToTheNearestDouble) {
    EXPECT_EQ(ValuesOf("1 2 3", "0.1 2.2250738585072011e-308 9007199254740993"),
              (Values{0.1, 2.2250738585072011e-308, 9007199254740992.0}));
}

TEST(ArrayTokens, AnIndexAtTheEdgesOfThirtyTwoBitsIsKept) {
    EXPECT_EQ(IndicesOf("2147483647 2147483647.9 -2147483647 -2147483647.9", "1 1 1 1"),
              (Indices{2147483646, 2147483646, -2147483647 - 1, -2147483647 - 1}));
}

TEST(ArrayTokens, AnIndexThatIsNoThirtyTwoBitNumberIsAnError) {
    for (const std::string token : {"2147483648", "-2147483648", "-2147483649", "1e10", "inf", "-inf", "nan", "1e999",
                                    "99999999999999999999", "0x80000000"})
        EXPECT_EQ(TranslationFailure(WithFirstArray(Array("1 " + token, "1 1"))), kBadIndices) << token;
}

TEST(VectorDictionary, NamesAreComparedWithoutTheirPrefix) {
    std::string text = TwoCategories().Replace(R"(version="4.4")", R"(version="4.4" xmlns:p="urn:p")").Text();
    for (const char* tag : {"VectorDictionary", "VectorFields", "FieldRef", "CategoricalPredictor", "VectorInstance",
                            "REAL-SparseArray", "Indices", "REAL-Entries"}) {
        for (const std::string start : {"<", "</"}) {
            std::size_t at = 0;
            while ((at = text.find(start + tag, at)) != std::string::npos) {
                text.insert(at + start.size(), "p:");
                at += start.size() + 2;
            }
        }
    }
    const auto model = Translate(SvmDocument(text));
    EXPECT_EQ(model->GetSupportVectorMachineModel()->GetVectorFieldKinds(), (Indices{0, 0, 1}));
    EXPECT_EQ(model->GetSupportVectorMachineModel()->GetVectorInstances().at("v1")->values, (Values{0.5, -1.25}));
}

}  // namespace
}  // namespace KwBrevix_930
