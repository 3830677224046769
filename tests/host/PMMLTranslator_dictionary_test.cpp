// Reading a DataDictionary, the treatments of invalid values, and Targets.
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <xercesc/dom/DOM.hpp>

#include "host/BrevixTranscoder.h"
#include "host/DictVar.h"
#include "host/DocumentParser.h"
#include "host/NumericValue.h"
#include "host/StringValue.h"
#include "tests/host/TestTranslator.h"
#include "tests/host/error_of.h"

namespace {

using KwBrevix_930::BrevixTranscoder;
using KwBrevix_930::DictVar;
using KwBrevix_930::DocumentHandle;
using KwBrevix_930::DocumentParser;
using KwBrevix_930::DOMElemUtility;
using KwBrevix_930::NumericValue;
using KwBrevix_930::ScoreDictionary;
using KwBrevix_930::ScoreDictVar;
using KwBrevix_930::StringValue;
using xercesc::DOMElement;
using DictionaryHandle = std::unique_ptr<ScoreDictionary>;

DOMElement* Child(const DocumentHandle& document, const char* tag) {
    const BrevixTranscoder transcoder;
    return DOMElemUtility(nullptr, &transcoder).GetChildElemByName(document->getDocumentElement(), tag, true);
}

// The dictionary of a document's DataDictionary element.
DictionaryHandle ReadDocument(const std::string& text, bool withTreatments = true) {
    const DocumentHandle document = DocumentParser().ParseText(text);
    return DictionaryHandle(TestTranslator().ParseDictionary(Child(document, "DataDictionary"), withTreatments));
}

DictionaryHandle ReadFields(const std::string& fields) {
    return ReadDocument("<PMML><DataDictionary>" + fields + "</DataDictionary></PMML>");
}

const DictVar& Field(const DictionaryHandle& dictionary, const std::string& name) {
    return dynamic_cast<const DictVar&>(*dictionary->FindVar(name));
}

bool IsValid(const DictVar& variable, double number) {
    const NumericValue value(number);
    return variable.IsValid(&value);
}

TEST(ParseDictionary, ReadsFieldsInOrder) {
    const auto dictionary = ReadFields(
        "<Extension/><DataField name='b' dataType='double'/>text<Taxonomy/><DataField name='a' dataType='string'/>"
        "<p:DataField xmlns:p='u' name='Größe' dataType='integer'/>");
    ASSERT_EQ(dictionary->GetVarCount(), 3);
    EXPECT_EQ(dictionary->GetVars()[0]->GetName(), "b");
    EXPECT_EQ(dictionary->GetVars()[1]->GetName(), "a");
    EXPECT_EQ(dictionary->GetVars()[2]->GetName(), "Größe");
    EXPECT_EQ(ReadFields("")->GetVarCount(), 0);
}

struct TypeRow {
    const char* name;
    DictVar::DataType type;
    ScoreDictVar::Kind kind;
};

class FieldOfEachDataType : public testing::TestWithParam<TypeRow> {};

TEST_P(FieldOfEachDataType, HasItsStorageAndKind) {
    const std::string head = std::string("<DataField name='x' dataType='") + GetParam().name + "'";
    const auto plain = ReadFields(head + "/>");
    EXPECT_EQ(Field(plain, "x").GetDataType(), GetParam().type);
    EXPECT_EQ(Field(plain, "x").GetKind(), GetParam().kind);
    EXPECT_EQ(Field(ReadFields(head + " optype='continuous'/>"), "x").GetKind(), ScoreDictVar::kContinuous);
    EXPECT_EQ(Field(ReadFields(head + " optype='ordinal'/>"), "x").GetKind(), ScoreDictVar::kOrdinal);
    EXPECT_EQ(Field(ReadFields(head + " optype='categorical'/>"), "x").GetKind(), ScoreDictVar::kCategorical);
}

INSTANTIATE_TEST_SUITE_P(ParseDictionary, FieldOfEachDataType,
                         testing::Values(TypeRow{"integer", DictVar::kNumber, ScoreDictVar::kContinuous},
                                         TypeRow{"float", DictVar::kNumber, ScoreDictVar::kContinuous},
                                         TypeRow{"double", DictVar::kNumber, ScoreDictVar::kContinuous},
                                         TypeRow{"timeSeconds", DictVar::kNumber, ScoreDictVar::kContinuous},
                                         TypeRow{"dateDaysSince[0]", DictVar::kNumber, ScoreDictVar::kContinuous},
                                         TypeRow{"dateDaysSince[1960]", DictVar::kNumber, ScoreDictVar::kContinuous},
                                         TypeRow{"dateTimeSecondsSince[1970]", DictVar::kNumber,
                                                 ScoreDictVar::kContinuous},
                                         TypeRow{"boolean", DictVar::kBoolean, ScoreDictVar::kCategorical},
                                         TypeRow{"string", DictVar::kString, ScoreDictVar::kCategorical},
                                         TypeRow{"date", DictVar::kString, ScoreDictVar::kCategorical},
                                         TypeRow{"time", DictVar::kString, ScoreDictVar::kCategorical},
                                         TypeRow{"dateTime", DictVar::kString, ScoreDictVar::kCategorical}));

TEST(ParseDictionary, ReadsValuesByTheirProperty) {
    const auto dictionary = ReadFields(
        "<DataField name='s' dataType='string' optype='categorical'><Value value='a'/><Value value='b' "
        "property='valid'/>"
        "<Value value='?' property='missing'/><Value value='bad' property='invalid'/><Extension/></DataField>"
        "<DataField name='x' dataType='double'><Value value='-9' property='missing'/><Value value='NA' "
        "property='missing'/>"
        "<Value value='0' property='invalid'/></DataField>");
    const DictVar& s = Field(dictionary, "s");
    ASSERT_EQ(s.GetCategories()->size(), 2u);
    EXPECT_EQ(s.GetCategories()->at(1).name, "b");
    const StringValue question("?");
    const StringValue bad("bad");
    EXPECT_TRUE(s.IsMissing(&question));
    EXPECT_FALSE(s.IsMissing(&bad));
    EXPECT_FALSE(s.IsValid(&bad));
    const DictVar& x = Field(dictionary, "x");
    const NumericValue nine(-9.0);
    const StringValue notAvailable("NA");
    EXPECT_TRUE(x.IsMissing(&nine));
    EXPECT_TRUE(x.IsMissing(&notAvailable));
    EXPECT_FALSE(IsValid(x, 0.0));
    EXPECT_TRUE(IsValid(x, 1.0));
}

TEST(ParseDictionary, KeepsACategorysTextAsWritten) {
    const auto dictionary = ReadFields(
        "<DataField name='n' dataType='integer' optype='categorical'><Value value='1.0'/><Value value=' "
        "2'/></DataField>"
        "<DataField name='s' dataType='string'><Value value=' padded '/><Value value=''/></DataField>");
    EXPECT_EQ(Field(dictionary, "n").GetCategories()->at(0).name, "1.0");
    EXPECT_EQ(Field(dictionary, "n").GetCategories()->at(1).name, " 2");
    EXPECT_EQ(Field(dictionary, "n").GetCategories()->at(1).value->GetDouble(), 2.0);
    EXPECT_EQ(Field(dictionary, "s").GetCategories()->at(0).name, " padded ");
    EXPECT_EQ(Field(dictionary, "s").GetCategoryIndex(""), 1);
}

TEST(ParseDictionary, ReadsIntervalsOfEveryClosure) {
    const auto field = [](const std::string& interval) {
        return ReadFields("<DataField name='x' dataType='double'><Interval " + interval + "/></DataField>");
    };
    const auto accepts = [&](const std::string& closure, double number) {
        const auto dictionary = field("closure='" + closure + "' leftMargin='-1.5' rightMargin='2.5'");
        return IsValid(Field(dictionary, "x"), number);
    };
    EXPECT_TRUE(accepts("closedClosed", -1.5) && accepts("closedClosed", 2.5));
    EXPECT_TRUE(accepts("closedOpen", -1.5) && !accepts("closedOpen", 2.5));
    EXPECT_TRUE(!accepts("openClosed", -1.5) && accepts("openClosed", 2.5));
    EXPECT_TRUE(!accepts("openOpen", -1.5) && !accepts("openOpen", 2.5) && accepts("openOpen", 0.0));
    const auto leftOnly = field("closure='closedOpen' leftMargin='-1'");
    EXPECT_TRUE(IsValid(Field(leftOnly, "x"), -1.0));
    EXPECT_TRUE(IsValid(Field(leftOnly, "x"), 1e308));
    EXPECT_FALSE(IsValid(Field(leftOnly, "x"), -1.5));
}

TEST(ParseDictionary, KeepsDisplayValues) {
    const auto dictionary = ReadFields(
        "<DataField name='s' dataType='string'><Value value='a'/><Value value='?' displayValue='none' "
        "property='missing'/><Value value='b' displayValue='Größe'/><Value value='c'/></DataField>");
    const DictVar& s = Field(dictionary, "s");
    EXPECT_EQ(s.GetDisplayValue(0), "a");
    EXPECT_EQ(s.GetDisplayValue(1), "Größe");
    EXPECT_EQ(s.GetDisplayValue(2), "c");
    EXPECT_EQ(DictVar(s).GetDisplayValue(1), "Größe");
    EXPECT_THROW(s.GetDisplayValue(3), std::out_of_range);
    EXPECT_THROW(s.GetDisplayValue(-1), std::out_of_range);
}

TEST(ParseDictionary, RefusesAnIntervalThatHoldsNothing) {
    const auto error = [](const std::string& interval) {
        return ErrorOf(
            [&] { ReadFields("<DataField name='x' dataType='double'><Interval " + interval + "/></DataField>"); });
    };
    ExpectError(error("closure='closedClosed'"), 260111, {"Interval", "x", "has neither leftMargin nor rightMargin"});
    for (const char* interval :
         {"closure='closedClosed' leftMargin='2.5' rightMargin='2.25'",
          "closure='openOpen' leftMargin='3' rightMargin='3'", "closure='openClosed' leftMargin='3' rightMargin='3'",
          "closure='openOpen' leftMargin='NaN'", "closure='openOpen' leftMargin='INF'"})
        ExpectError(error(interval), 260111, {"Interval", "x", "holds no number"});
    const auto point = ReadFields(
        "<DataField name='x' dataType='double'><Interval closure='closedClosed' leftMargin='3' rightMargin='3'/>"
        "<Interval closure='closedOpen' leftMargin='-INF' rightMargin='INF'/></DataField>");
    EXPECT_EQ(Field(point, "x").GetIntervals().size(), 2u);
}

TEST(ParseDictionary, RefusesAFieldWithoutNameOrType) {
    ExpectError(ErrorOf([] { ReadFields("<DataField dataType='double'/>"); }), 260120, {"name", "DataField"});
    ExpectError(ErrorOf([] { ReadFields("<DataField name='' dataType='double'/>"); }), 260153,
                {"", "name", "DataField"});
    ExpectError(ErrorOf([] { ReadFields("<DataField name='x'/>"); }), 260120, {"dataType", "DataField"});
}

TEST(ParseDictionary, TakesTheStorageFromTheKindWhereNoTypeIsNamed) {
    const auto dictionary = ReadFields(
        "<DataField name='x' optype='continuous'/><DataField name='y' optype='categorical'/>"
        "<DataField name='z' optype='ordinal'/>");
    EXPECT_EQ(Field(dictionary, "x").GetDataType(), DictVar::kNumber);
    EXPECT_EQ(Field(dictionary, "x").GetKind(), ScoreDictVar::kContinuous);
    EXPECT_EQ(Field(dictionary, "y").GetDataType(), DictVar::kString);
    EXPECT_EQ(Field(dictionary, "y").GetKind(), ScoreDictVar::kCategorical);
    EXPECT_EQ(Field(dictionary, "z").GetKind(), ScoreDictVar::kOrdinal);
}

TEST(ParseDictionary, RefusesARepeatedName) {
    ExpectError(
        ErrorOf([] { ReadFields("<DataField name='x' dataType='double'/><DataField name='x' dataType='string'/>"); }),
        260153, {"x", "name", "DataField"});
}

TEST(ParseDictionary, RefusesTextsThatTheirAttributesDoNotKnow) {
    const auto field = [](const std::string& attributes, const std::string& content) {
        return ErrorOf([&] { ReadFields("<DataField name='x' " + attributes + ">" + content + "</DataField>"); });
    };
    ExpectError(field("dataType='complex'", ""), 260153, {"complex", "dataType", "DataField"});
    ExpectError(field("dataType='dateDaysSince[x]'", ""), 260153, {"dateDaysSince[x]", "dataType", "DataField"});
    ExpectError(field("dataType='date'", "<Value value='2023-02-30'/>"), 260153, {"2023-02-30", "value", "Value"});
    ExpectError(field("dataType=''", ""), 260153, {"", "dataType", "DataField"});
    ExpectError(field("dataType='double' optype='nominal'", ""), 260153, {"nominal", "optype", "DataField"});
    ExpectError(field("dataType='double'", "<Value value='1' property='odd'/>"), 260153, {"odd", "property", "Value"});
    ExpectError(field("dataType='double'", "<Value/>"), 260120, {"value", "Value"});
    ExpectError(field("dataType='double'", "<Value value='low'/>"), 260153, {"low", "value", "Value"});
    ExpectError(field("dataType='boolean'", "<Value value='yes'/>"), 260153, {"yes", "value", "Value"});
    ExpectError(field("dataType='double'", "<Interval leftMargin='1'/>"), 260120, {"closure", "Interval"});
    ExpectError(field("dataType='double'", "<Interval closure='half'/>"), 260153, {"half", "closure", "Interval"});
    ExpectError(field("dataType='double'", "<Interval closure='openOpen' leftMargin='x'/>"), 260153,
                {"x", "leftMargin", "Interval"});
    ExpectError(field("dataType='double'", "<Interval closure='openOpen' rightMargin=''/>"), 260153,
                {"", "rightMargin", "Interval"});
}

// A document with two fields and the attributes of the MiningField of x.
std::string WithMiningField(const std::string& attributes) {
    return "<PMML><DataDictionary><DataField name='x' dataType='double'><Interval closure='closedClosed' "
           "leftMargin='0' "
           "rightMargin='1'/></DataField><DataField name='s' dataType='string'><Value value='a'/></DataField>"
           "</DataDictionary><SupportVectorMachineModel><MiningSchema><MiningField name='s'/><MiningField " +
           attributes + "/></MiningSchema></SupportVectorMachineModel></PMML>";
}

TEST(Treatments, AreReadFromTheMiningSchema) {
    const auto treatment = [](const std::string& attributes) {
        return Field(ReadDocument(WithMiningField(attributes)), "x").GetInvalidTreatment();
    };
    EXPECT_EQ(treatment("name='x'"), DictVar::kReturnInvalid);
    EXPECT_EQ(treatment("name='x' invalidValueTreatment='returnInvalid'"), DictVar::kReturnInvalid);
    EXPECT_EQ(treatment("name='x' invalidValueTreatment='asIs'"), DictVar::kAsIs);
    EXPECT_EQ(treatment("name='x' invalidValueTreatment='asMissing'"), DictVar::kAsMissing);
    EXPECT_EQ(treatment("name='x' invalidValueTreatment='asValue' invalidValueReplacement='0.5'"), DictVar::kAsValue);
    EXPECT_EQ(treatment("name='unknown' invalidValueTreatment='asIs'"), DictVar::kReturnInvalid);
    EXPECT_EQ(
        Field(ReadDocument(WithMiningField("name='x' invalidValueTreatment='asIs'"), false), "x").GetInvalidTreatment(),
        DictVar::kReturnInvalid);
}

// Whoever reads the schema itself reports such a field; here it is in nobody's way.
TEST(Treatments, PassOverAFieldWithoutAName) {
    const auto document = ReadDocument(WithMiningField("invalidValueTreatment='asIs'"));
    EXPECT_EQ(Field(document, "x").GetInvalidTreatment(), DictVar::kReturnInvalid);
    EXPECT_EQ(Field(document, "s").GetInvalidTreatment(), DictVar::kReturnInvalid);
}

TEST(Treatments, ReplaceByAValueOfTheFieldsType) {
    const auto number =
        ReadDocument(WithMiningField("name='x' invalidValueTreatment='asValue' invalidValueReplacement='7.5'"));
    EXPECT_EQ(Field(number, "x").GetInvalidReplacement()->GetDouble(), 7.5);
    const auto text =
        ReadDocument(WithMiningField("name='s' invalidValueTreatment='asValue' invalidValueReplacement='7.5'"));
    EXPECT_EQ(Field(text, "s").GetInvalidReplacement()->GetType(), KwBrevix_930::ScoreValue::kString);
}

TEST(Treatments, RefuseWhatTheyDoNotKnow) {
    const auto error = [](const std::string& attributes) {
        return ErrorOf([&] { ReadDocument(WithMiningField(attributes)); });
    };
    ExpectError(error("name='x' invalidValueTreatment='ignore'"), 260153,
                {"ignore", "invalidValueTreatment", "MiningField"});
    ExpectError(error("name='x' invalidValueTreatment='asValue'"), 260120, {"invalidValueReplacement", "MiningField"});
    ExpectError(error("name='x' invalidValueTreatment='asValue' invalidValueReplacement='much'"), 260153,
                {"much", "invalidValueReplacement", "MiningField"});
    ExpectError(error("name='x' outliers='clip'"), 260153, {"clip", "outliers", "MiningField"});
    ExpectError(error("name='x' outliers='asExtremeValues' lowValue='low'"), 260153,
                {"low", "lowValue", "MiningField"});
    ExpectError(error("name='x' outliers='asMissingValues'"), 260111,
                {"MiningField", "x", "treats outliers but has neither lowValue nor highValue"});
    ExpectError(error("name='x' outliers='asExtremeValues' lowValue='2' highValue='1'"), 260111,
                {"MiningField", "x", "has a lowValue above its highValue"});
    ExpectError(error("name='x' missingValueTreatment='guess'"), 260153,
                {"guess", "missingValueTreatment", "MiningField"});
    ExpectError(error("name='x' optype='nominal'"), 260153, {"nominal", "optype", "MiningField"});
    ExpectError(error("name='s' optype='continuous'"), 260111,
                {"MiningField", "s", "makes a field of texts continuous"});
}

TEST(Treatments, OfOutliersAreReadForContinuousFields) {
    const auto treated = [](const std::string& attributes, double number) {
        const auto dictionary = ReadDocument(WithMiningField("name='x' " + attributes));
        const NumericValue value(number);
        const auto* result = Field(dictionary, "x").Treat(value);
        return result ? result->GetDouble() : -1.0;
    };
    EXPECT_EQ(treated("outliers='asIs' lowValue='0.25'", 0.125), 0.125);
    EXPECT_EQ(treated("outliers='asExtremeValues' lowValue='0.25' highValue='0.75'", 0.125), 0.25);
    EXPECT_EQ(treated("outliers='asExtremeValues' highValue='0.75'", 0.875), 0.75);
    EXPECT_EQ(treated("outliers='asExtremeValues' highValue='0.75'", 0.125), 0.125);
    EXPECT_EQ(treated("outliers='asMissingValues' lowValue='0.25'", 0.125), -1.0);
    EXPECT_EQ(treated("outliers='asMissingValues' lowValue='0.25' optype='categorical'", 0.125), 0.125);
}

TEST(Treatments, OfMissingValuesAreOnlyReturnInvalid) {
    const auto treated = [](const std::string& treatment) {
        const auto dictionary = ReadDocument(WithMiningField("name='x' missingValueTreatment='" + treatment + "'"));
        return Field(dictionary, "x").TreatMissing();
    };
    for (const char* treatment : {"asIs", "asMean", "asMode", "asMedian", "asValue"})
        EXPECT_EQ(treated(treatment), nullptr) << treatment;
    const auto dictionary = ReadDocument(WithMiningField("name='s' missingValueTreatment='returnInvalid'"));
    const DictVar& s = Field(dictionary, "s");
    ASSERT_NE(s.TreatMissing(), nullptr);
    EXPECT_FALSE(s.IsMissing(s.TreatMissing()));
    EXPECT_FALSE(s.IsValid(s.TreatMissing()));
}

TEST(Treatments, TakeTheKindOfTheMiningField) {
    const auto kind = [](const std::string& attributes, const char* field) {
        return Field(ReadDocument(WithMiningField(attributes)), field).GetKind();
    };
    EXPECT_EQ(kind("name='x' optype='categorical'", "x"), ScoreDictVar::kCategorical);
    EXPECT_EQ(kind("name='x' optype='ordinal'", "x"), ScoreDictVar::kOrdinal);
    EXPECT_EQ(kind("name='s' optype='ordinal'", "s"), ScoreDictVar::kOrdinal);
}

TEST(Treatments, AreThoseOfTheSupportVectorMachine) {
    const std::string schema = "<MiningSchema><MiningField name='x' invalidValueTreatment='asIs'/></MiningSchema>";
    const std::string head = "<PMML><DataDictionary><DataField name='x' dataType='double'/></DataDictionary>";
    const auto treatment = [&](const std::string& models) {
        return Field(ReadDocument(head + models + "</PMML>"), "x").GetInvalidTreatment();
    };
    EXPECT_EQ(treatment("<TreeModel>" + schema + "</TreeModel>"), DictVar::kAsIs);
    EXPECT_EQ(treatment("<TreeModel>" + schema + "</TreeModel><SupportVectorMachineModel/>"), DictVar::kReturnInvalid);
    EXPECT_EQ(treatment("<TreeModel><MiningSchema/></TreeModel><SupportVectorMachineModel>" + schema +
                        "</SupportVectorMachineModel>"),
              DictVar::kAsIs);
    EXPECT_EQ(
        treatment("<SupportVectorMachineModel/><SupportVectorMachineModel>" + schema + "</SupportVectorMachineModel>"),
        DictVar::kReturnInvalid);
}

TEST(ParseDictionary, NeedsNoParentElement) {
    const DocumentHandle document =
        DocumentParser().ParseText("<DataDictionary><DataField name='x' dataType='double'/></DataDictionary>");
    const DictionaryHandle dictionary(TestTranslator().ParseDictionary(document->getDocumentElement(), true));
    EXPECT_EQ(dictionary->GetVarCount(), 1);
    auto* detached = static_cast<DOMElement*>(document->removeChild(document->getDocumentElement()));
    const DictionaryHandle second(TestTranslator().ParseDictionary(detached, true));
    EXPECT_EQ(second->GetVarCount(), 1);
    detached->release();
}

TEST(ParseDictionary, ReadsEveryOneOfManyFieldsAndValues) {
    std::string fields;
    for (int i = 0; i < 20'000; ++i)
        fields += "<DataField name='f" + std::to_string(i) + "' dataType='double'/>";
    fields += "<DataField name='s' dataType='string'>";
    for (int i = 0; i < 50'000; ++i)
        fields += "<Value value='v" + std::to_string(i) + "'/>";
    const auto dictionary = ReadFields(fields + "</DataField>");
    EXPECT_EQ(dictionary->GetVarCount(), 20'001);
    EXPECT_EQ(dictionary->FindVar("s")->GetCategoryIndex("v49999"), 49'999);
}

TEST(HandleTargets, WantsEveryFieldThatIsNamed) {
    const auto dictionary = ReadFields("<DataField name='y' dataType='double'/>");
    const auto handle = [&](const std::string& targets) {
        const DocumentHandle document = DocumentParser().ParseText("<Targets>" + targets + "</Targets>");
        return TestTranslator().HandleTargets(document->getDocumentElement(), dictionary.get());
    };
    EXPECT_TRUE(handle(""));
    EXPECT_TRUE(handle("<Target field='y' castInteger='round'/>"));
    EXPECT_TRUE(handle("<Target/>"));
    EXPECT_TRUE(handle("<Extension field='z'/><Target field='y'/>"));
    EXPECT_FALSE(handle("<Target field='z'/>"));
    EXPECT_FALSE(handle("<Target field='y'/><p:Target xmlns:p='u' field='Y'/>"));
    EXPECT_FALSE(handle("<Target field=''/>"));
}

}  // namespace
