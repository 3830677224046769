// Derived fields: what each expression computes, and what is refused while they are read.
#include <gtest/gtest.h>

#include <limits>

#include "host/NumericValue.h"
#include "tests/host/DerivedFields.h"
#include "tests/host/error_of.h"

namespace {

using KwBrevix_930::CaseRecord;
using KwBrevix_930::DictVar;
using KwBrevix_930::NumericValue;

const std::string kFields =
    "<DataField name='x' dataType='double'/><DataField name='c' dataType='string'><Value value='red'/>"
    "<Value value='green'/></DataField><DataField name='b' dataType='boolean'/>"
    "<DataField name='n' dataType='integer' optype='categorical'><Value value='1'/><Value value='2'/></DataField>";

// One derived field d of a data type; content: its expression.
std::string Derived(const std::string& content, const std::string& type = "double", const std::string& name = "d") {
    return "<DerivedField name='" + name + "' optype='continuous' dataType='" + type + "'>" + content +
           "</DerivedField>";
}

std::string Discrete(const std::string& field, const std::string& value, const std::string& more = "") {
    return "<NormDiscrete field='" + field + "' value='" + value + "' " + more + "/>";
}

const std::string kLine =
    "<LinearNorm orig='1' norm='10'/><LinearNorm orig='2' norm='30'/><LinearNorm orig='4' norm='20'/>";

std::string Continuous(const std::string& more = "", const std::string& points = kLine) {
    return "<NormContinuous field='x' " + more + ">" + points + "</NormContinuous>";
}

TEST(FieldRef, GivesTheValueAsItIs) {
    DerivedFields fields(kFields, Derived("<FieldRef field='x'/>") + Derived("<FieldRef field='c'/>", "string", "e"));
    fields.Set("x", "-2.385").Set("c", "green");
    EXPECT_EQ(fields.Derive("d"), "-2.385");
    EXPECT_EQ(fields.Derive("e"), "'green'");
}

TEST(FieldRef, PassesOnMissingAndInvalid) {
    DerivedFields fields(kFields, Derived("<FieldRef field='x'/>") + Derived("<FieldRef field='c'/>", "string", "e"));
    EXPECT_EQ(fields.Derive("d"), "missing");
    EXPECT_EQ(fields.Derive("e"), "missing");
    fields.Set("x", "1,5").Set("c", "blue");
    EXPECT_EQ(fields.Derive("d"), "invalid");
    EXPECT_EQ(fields.Derive("e"), "invalid");
}

TEST(FieldRef, MapsMissingToAValueOfTheDerivedType) {
    DerivedFields fields(kFields, Derived("<FieldRef field='x' mapMissingTo='-7.5'/>") +
                                      Derived("<FieldRef field='c' mapMissingTo='none'/>", "string", "e") +
                                      Derived("<FieldRef field='b' mapMissingTo='true'/>", "boolean", "f"));
    EXPECT_EQ(fields.Derive("d"), "-7.5");
    EXPECT_EQ(fields.Derive("e"), "'none'");
    EXPECT_EQ(fields.Derive("f"), "1");
    fields.Set("x", "garbage");
    EXPECT_EQ(fields.Derive("d"), "invalid");
}

TEST(FieldRef, ConvertsToTheDerivedType) {
    DerivedFields fields("<DataField name='s' dataType='string'/><DataField name='x' dataType='double'/>",
                         Derived("<FieldRef field='s'/>") + Derived("<FieldRef field='x'/>", "string", "e"));
    fields.Set("s", " 2.5 ").Set("x", "0.50");
    EXPECT_EQ(fields.Derive("d"), "2.5");
    EXPECT_EQ(fields.Derive("e"), "'0.5'");
    fields.Set("s", "two");
    EXPECT_EQ(fields.Derive("d"), "invalid");
}

TEST(NormContinuous, DrawsLinesThroughItsPoints) {
    DerivedFields fields(kFields, Derived(Continuous()));
    EXPECT_EQ(fields.Set("x", "1").Derive("d"), "10");
    EXPECT_EQ(fields.Set("x", "1.25").Derive("d"), "15");
    EXPECT_EQ(fields.Set("x", "2").Derive("d"), "30");
    EXPECT_EQ(fields.Set("x", "3").Derive("d"), "25");
    EXPECT_EQ(fields.Set("x", "4").Derive("d"), "20");
}

TEST(NormContinuous, GoesOnOutsideItsPointsByDefault) {
    for (const char* outliers : {"", "outliers='asIs'"}) {
        DerivedFields fields(kFields, Derived(Continuous(outliers)));
        EXPECT_EQ(fields.Set("x", "0").Derive("d"), "-10");
        EXPECT_EQ(fields.Set("x", "6").Derive("d"), "10");
        EXPECT_EQ(fields.Set("x", "INF").Derive("d"), "-inf");
    }
}

TEST(NormContinuous, TakesOutliersForMissing) {
    DerivedFields fields(kFields,
                         Derived(Continuous("outliers='asMissingValues'")) +
                             Derived(Continuous("outliers='asMissingValues' mapMissingTo='99.5'"), "double", "e"));
    for (const char* outlier : {"0.999", "4.0000001", "INF", "-INF"}) {
        fields.Set("x", outlier);
        EXPECT_EQ(fields.Derive("d"), "missing") << outlier;
        EXPECT_EQ(fields.Derive("e"), "99.5") << outlier;
    }
    EXPECT_EQ(fields.Set("x", "1").Derive("d"), "10");
    EXPECT_EQ(fields.Set("x", "4").Derive("e"), "20");
}

TEST(NormContinuous, TakesOutliersForTheExtremes) {
    DerivedFields fields(kFields, Derived(Continuous("outliers='asExtremeValues'")));
    EXPECT_EQ(fields.Set("x", "-100").Derive("d"), "10");
    EXPECT_EQ(fields.Set("x", "100").Derive("d"), "20");
    EXPECT_EQ(fields.Set("x", "-INF").Derive("d"), "10");
    EXPECT_EQ(fields.Set("x", "3").Derive("d"), "25");
}

TEST(NormContinuous, MapsMissingAndPassesOnInvalid) {
    DerivedFields fields(kFields, Derived(Continuous()) + Derived(Continuous("mapMissingTo='0.25'"), "double", "e"));
    EXPECT_EQ(fields.Derive("d"), "missing");
    EXPECT_EQ(fields.Derive("e"), "0.25");
    fields.Set("x", "NaN");
    EXPECT_EQ(fields.Derive("d"), "invalid");
    EXPECT_EQ(fields.Derive("e"), "invalid");
}

TEST(NormContinuous, OfATextIsInvalid) {
    DerivedFields fields(kFields, Derived("<NormContinuous field='c'>" + kLine + "</NormContinuous>"));
    EXPECT_EQ(fields.Set("c", "red").Derive("d"), "invalid");
}

TEST(NormContinuous, WithoutANumberAtInfinityIsInvalid) {
    DerivedFields fields(kFields,
                         Derived(Continuous("", "<LinearNorm orig='0' norm='5'/><LinearNorm orig='1' norm='5'/>")) +
                             Derived(Discrete("d", "5"), "double", "e"));
    EXPECT_EQ(fields.Set("x", "3").Derive("e"), "1");
    EXPECT_EQ(fields.Set("x", "INF").Derive("d"), "invalid");
    EXPECT_EQ(fields.Derive("e"), "invalid");
}

TEST(NormDiscrete, IsOneForItsValueAndZeroForOthers) {
    DerivedFields fields(kFields, Derived(Discrete("c", "red")) + Derived(Discrete("n", "2.0"), "double", "e") +
                                      Derived(Discrete("b", "true"), "double", "f") +
                                      Derived(Discrete("x", "abc"), "double", "g"));
    fields.Set("c", "red").Set("n", "2").Set("b", "true").Set("x", "1");
    EXPECT_EQ(fields.Derive("d"), "1");
    EXPECT_EQ(fields.Derive("e"), "1");
    EXPECT_EQ(fields.Derive("f"), "1");
    EXPECT_EQ(fields.Derive("g"), "0");
    fields.Set("c", "green").Set("n", "1").Set("b", "0");
    EXPECT_EQ(fields.Derive("d"), "0");
    EXPECT_EQ(fields.Derive("e"), "0");
    EXPECT_EQ(fields.Derive("f"), "0");
}

TEST(NormDiscrete, OfANumberFieldDoesNotKnowTrueAsOne) {
    DerivedFields fields(kFields, Derived(Discrete("x", "true")));
    EXPECT_EQ(fields.Set("x", "1").Derive("d"), "0");
}

TEST(NormDiscrete, MapsMissingAndPassesOnInvalid) {
    DerivedFields fields(
        kFields, Derived(Discrete("c", "red")) + Derived(Discrete("c", "red", "mapMissingTo='0.5'"), "double", "e"));
    EXPECT_EQ(fields.Derive("d"), "missing");
    EXPECT_EQ(fields.Derive("e"), "0.5");
    fields.Set("c", "blue");
    EXPECT_EQ(fields.Derive("d"), "invalid");
    EXPECT_EQ(fields.Derive("e"), "invalid");
}

TEST(NormDiscrete, TakesWhatTheSourceRegisteredForItsValue) {
    DerivedFields fields(kFields, Derived(Discrete("c", "red")) + Derived(Discrete("c", "green"), "double", "e") +
                                      Derived(Discrete("c", "red", "mapMissingTo='0.5'"), "double", "f"));
    auto* stats = fields.dictionary->FindVar("c")->GetVarStats();
    stats->SetEncodedMissingReplacement("red", "0.125");
    EXPECT_EQ(fields.Derive("d"), "0.125");
    EXPECT_EQ(fields.Derive("e"), "missing");
    EXPECT_EQ(fields.Derive("f"), "0.5");
    EXPECT_EQ(fields.Set("c", "red").Derive("d"), "1");
    stats->SetEncodedMissingReplacement("red", "not a number");
    EXPECT_EQ(fields.SetMissing("c").Derive("d"), "missing");
}

TEST(DerivedField, TellsItsSourceAndItsEncodedValue) {
    const DerivedFields fields(kFields, Derived(Discrete("c", "red")) + Derived(Continuous(), "double", "e") +
                                            Derived("<FieldRef field='c'/>", "string", "f"));
    const auto& transformations = *fields.transformations;
    EXPECT_EQ(transformations.FindVar("d")->GetFieldName(), "c");
    EXPECT_EQ(transformations.FindVar("d")->GetAllEncodedValues(), std::vector<std::string>{"red"});
    EXPECT_EQ(transformations.FindVar("e")->GetFieldName(), "x");
    EXPECT_TRUE(transformations.FindVar("e")->GetAllEncodedValues().empty());
    EXPECT_EQ(transformations.FindVar("f")->GetFieldName(), "c");
    EXPECT_TRUE(transformations.FindVar("f")->GetAllEncodedValues().empty());
    EXPECT_TRUE(transformations.FindVar("f")->IsString());
}

TEST(DerivedField, MayReadDerivedFieldsBeforeIt) {
    DerivedFields fields(kFields,
                         Derived(Continuous()) +
                             Derived("<NormContinuous field='d' outliers='asMissingValues'><LinearNorm orig='10' "
                                     "norm='0'/><LinearNorm orig='30' norm='1'/></NormContinuous>",
                                     "double", "e") +
                             Derived("<FieldRef field='e' mapMissingTo='-1'/>", "double", "f"));
    EXPECT_EQ(fields.Set("x", "1.5").Derive("f"), "0.5");
    EXPECT_EQ(fields.Set("x", "0").Derive("e"), "missing");
    EXPECT_EQ(fields.Derive("f"), "-1");
    EXPECT_EQ(fields.SetMissing("x").Derive("f"), "-1");
    EXPECT_EQ(fields.Set("x", "bad").Derive("f"), "invalid");
}

TEST(DerivedField, FollowsTheTreatmentOfItsSource) {
    const auto derive = [](const std::string& treatment, const std::string& cell) {
        return DerivedFields(
                   "<DataField name='x' dataType='double'><Interval closure='closedClosed' leftMargin='0' "
                   "rightMargin='9'/></DataField>",
                   Derived("<FieldRef field='x'/>"),
                   "<MiningField name='x' invalidValueTreatment='" + treatment + "'/>")
            .Set("x", cell)
            .Derive("d");
    };
    EXPECT_EQ(derive("returnInvalid", "10"), "invalid");
    EXPECT_EQ(derive("asIs", "10"), "10");
    EXPECT_EQ(derive("asIs", "ten"), "invalid");
    EXPECT_EQ(derive("asMissing", "10"), "missing");
    EXPECT_EQ(derive("asValue' invalidValueReplacement='3", "10"), "3");
    EXPECT_EQ(derive("returnInvalid", "9"), "9");
}

TEST(DerivedField, ReadsReplacementsOnlyWhereTheyCount) {
    DerivedFields fields(kFields, Derived("<FieldRef field='x'/>"));
    fields.dictionary->FindVar("x")->GetVarStats()->SetMissingReplacement(std::make_unique<NumericValue>(6.25));
    fields.SetMissing("x");
    EXPECT_EQ(fields.Derive("d"), "6.25");
    fields.transformations->SetUsesReplacements(false);
    EXPECT_EQ(fields.Derive("d"), "missing");
    EXPECT_EQ(fields.Set("x", "6.25").Derive("d"), "6.25");
}

TEST(DerivedField, IsTheSameWithRecordsByName) {
    DerivedFields fields(kFields, Derived(Continuous()), "", CaseRecord::kByName);
    for (auto* variable : fields.dictionary->GetVars())
        variable->SetIndex(-1);
    EXPECT_EQ(fields.Set("x", "1.25").Derive("d"), "15");
}

TEST(DerivedField, MayBeSurroundedByDescriptions) {
    DerivedFields fields(kFields,
                         "<Extension/><p:DerivedField xmlns:p='u' name='d' optype='continuous' dataType='double'>"
                         "<Extension/><p:FieldRef field='x'/><Value value='1'/></p:DerivedField>");
    EXPECT_EQ(fields.Set("x", "4").Derive("d"), "4");
}

TEST(HandleTransformationDictionary, GivesNullForANullElementOrDictionary) {
    const TestTranslator translator;
    const DerivedFields fields(kFields, "");
    EXPECT_EQ(translator.HandleTransformationDictionary(nullptr, fields.dictionary.get()), nullptr);
    const auto document = KwBrevix_930::DocumentParser().ParseText("<LocalTransformations/>");
    EXPECT_EQ(translator.HandleTransformationDictionary(document->getDocumentElement(), nullptr), nullptr);
    EXPECT_TRUE(fields.transformations->GetVars().empty());
}

TEST(HandleTransformationDictionary, RefusesWhatItDoesNotSupport) {
    const auto error = [](const std::string& derived) { return ErrorOf([&] { DerivedFields(kFields, derived); }); };
    ExpectError(error("<Aggregate field='x'/>"), 260102, {"Aggregate", "LocalTransformations"});
    for (const char* element : {"Aggregate", "TextIndex", "Lag", "Unheard"})
        ExpectError(error(Derived("<" + std::string(element) + " field='x'/>")), 260102, {element, "DerivedField"});
    ExpectError(error(Derived("")), 260115, {"an expression", "DerivedField"});
    ExpectError(error(Derived("<Extension/>")), 260115, {"an expression", "DerivedField"});
}

TEST(HandleTransformationDictionary, RefusesFieldsThatAreNotThere) {
    const auto error = [](const std::string& derived) { return ErrorOf([&] { DerivedFields(kFields, derived); }); };
    ExpectError(error(Derived("<FieldRef field='gone'/>")), 260103, {"field", "gone", "FieldRef"});
    ExpectError(error(Derived(Discrete("gone", "v"))), 260103, {"field", "gone", "NormDiscrete"});
    ExpectError(error(Derived("<FieldRef/>")), 260120, {"field", "FieldRef"});
}

TEST(HandleTransformationDictionary, RefusesNamesThatAreNoneOrTaken) {
    const auto error = [](const std::string& derived) { return ErrorOf([&] { DerivedFields(kFields, derived); }); };
    const std::string reference = "<FieldRef field='x'/>";
    ExpectError(error("<DerivedField dataType='double'>" + reference + "</DerivedField>"), 260120,
                {"name", "DerivedField"});
    ExpectError(error(Derived(reference, "double", "")), 260153, {"", "name", "DerivedField"});
    ExpectError(error(Derived(reference, "double", "c")), 260153, {"c", "name", "DerivedField"});
    ExpectError(error(Derived(reference) + Derived(reference)), 260153, {"d", "name", "DerivedField"});
    ExpectError(error("<DerivedField name='d'>" + reference + "</DerivedField>"), 260120, {"dataType", "DerivedField"});
    ExpectError(error(Derived(reference, "fuzzy")), 260153, {"fuzzy", "dataType", "DerivedField"});
}

TEST(HandleTransformationDictionary, RefusesTextsThatTheirAttributesDoNotKnow) {
    const auto error = [](const std::string& expression, const std::string& type = "double") {
        return ErrorOf([&] { DerivedFields(kFields, Derived(expression, type)); });
    };
    ExpectError(error("<FieldRef field='x' mapMissingTo='low'/>"), 260153, {"low", "mapMissingTo", "FieldRef"});
    ExpectError(error("<FieldRef field='b' mapMissingTo='yes'/>", "boolean"), 260153,
                {"yes", "mapMissingTo", "FieldRef"});
    ExpectError(error(Discrete("c", "red", "mapMissingTo='low'")), 260153, {"low", "mapMissingTo", "NormDiscrete"});
    ExpectError(error("<NormDiscrete field='c'/>"), 260120, {"value", "NormDiscrete"});
    ExpectError(error(Continuous("outliers='asZero'")), 260153, {"asZero", "outliers", "NormContinuous"});
    ExpectError(error(Continuous("outliers=''")), 260153, {"", "outliers", "NormContinuous"});
    ExpectError(error(Continuous("mapMissingTo=''")), 260153, {"", "mapMissingTo", "NormContinuous"});
}

TEST(HandleTransformationDictionary, RefusesPointsThatMakeNoLine) {
    const auto error = [](const std::string& points) {
        return ErrorOf([&] { DerivedFields(kFields, Derived(Continuous("", points))); });
    };
    const std::string first = "<LinearNorm orig='1' norm='2'/>";
    ExpectError(error(""), 260115, {"LinearNorm", "NormContinuous"});
    ExpectError(error(first), 260115, {"LinearNorm", "NormContinuous"});
    ExpectError(error(first + "<LinearNorm orig='1.0' norm='3'/>"), 260153, {"1.0", "orig", "LinearNorm"});
    ExpectError(error(first + "<LinearNorm orig='0' norm='3'/>"), 260153, {"0", "orig", "LinearNorm"});
    ExpectError(error(first + "<LinearNorm norm='3'/>"), 260120, {"orig", "LinearNorm"});
    ExpectError(error(first + "<LinearNorm orig='3'/>"), 260120, {"norm", "LinearNorm"});
    ExpectError(error(first + "<LinearNorm orig='3' norm='x'/>"), 260153, {"x", "norm", "LinearNorm"});
    for (const char* text : {"NaN", "INF", "-INF", "1e999"}) {
        ExpectError(error(first + "<LinearNorm orig='" + text + "' norm='3'/>"), 260153, {text, "orig", "LinearNorm"});
        ExpectError(error("<LinearNorm orig='0' norm='" + std::string(text) + "'/>" + first), 260153,
                    {text, "norm", "LinearNorm"});
    }
}

}  // namespace
