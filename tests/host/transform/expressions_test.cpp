// What expressions compute beside the values of single functions: constants, tables, treatments, functions of the
// document.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/host/transform/transform_samples.h"

namespace {

using transform_samples::Apply;
using transform_samples::Constant;
using transform_samples::Derived;
using transform_samples::Function;
using transform_samples::kFields;
using transform_samples::Parameter;
using transform_samples::Ref;

std::string DeriveOne(const std::string& expression, const std::string& type = "double", const std::string& x = "2.5",
                      const std::string& s = "red") {
    DerivedFields fields(kFields, Derived(expression, type));
    if (!x.empty())
        fields.Set("x", x);
    if (!s.empty())
        fields.Set("s", s);
    return fields.Derive("d");
}

TEST(Constant, IsOneOfItsTypeOrOfWhatItsTextIs) {
    EXPECT_EQ(DeriveOne(Constant("-2.5e3")), "-2500");
    EXPECT_EQ(DeriveOne(Constant(" 7 ", "dataType='integer'")), "7");
    EXPECT_EQ(DeriveOne(Constant("red"), "string"), "'red'");
    EXPECT_EQ(DeriveOne(Constant("007"), "string"), "'007'");
    EXPECT_EQ(DeriveOne(Constant("true", "dataType='boolean'"), "boolean"), "1");
    EXPECT_EQ(DeriveOne(Constant("true"), "boolean"), "1");
    EXPECT_EQ(DeriveOne(Constant("2004-02-29", "dataType='date'"), "dateDaysSince[2004]"), "59");
    EXPECT_EQ(DeriveOne(Constant("", "missing='true'")), "missing");
    EXPECT_EQ(DeriveOne(Constant("2.5", "missing='1'")), "missing");
    EXPECT_EQ(DeriveOne(Constant("2.5", "missing='false'")), "2.5");
    EXPECT_EQ(DeriveOne(Apply("sum", Ref("x") + Constant("", "missing='true' dataType='double'"))), "2.5");
}

TEST(Casts, RoundHalvesUpAndTellBooleans) {
    EXPECT_EQ(DeriveOne(Ref("x"), "integer"), "3");
    EXPECT_EQ(DeriveOne(Ref("x"), "integer", "-2.5"), "-2");
    EXPECT_EQ(DeriveOne(Ref("x"), "boolean"), "invalid");
    EXPECT_EQ(DeriveOne(Ref("x"), "boolean", "1"), "1");
    EXPECT_EQ(DeriveOne(Apply("greaterThan", Ref("x") + Constant("1")), "string"), "'true'");
    EXPECT_EQ(DeriveOne(Ref("s"), "boolean", "", "false"), "0");
    EXPECT_EQ(DeriveOne(Ref("s"), "date", "", "2004-02-29T12:30:00"), "'2004-02-29'");
    EXPECT_EQ(DeriveOne(Ref("s"), "dateTime", "", "2004-02-29"), "'2004-02-29T00:00:00'");
    EXPECT_EQ(DeriveOne(Ref("s"), "date", "", "2003-02-29"), "invalid");
    EXPECT_EQ(DeriveOne(Ref("s"), "timeSeconds", "", "01:00:30"), "3630");
    EXPECT_EQ(DeriveOne(Ref("s"), "dateTimeSecondsSince[1970]", "", "1970-01-02"), "86400");
}

TEST(Constant, IsCastFromTheTypeThatItNames) {
    EXPECT_EQ(DeriveOne(Constant("true", "dataType='boolean'")), "1");
    EXPECT_EQ(DeriveOne(Constant("2.6", "dataType='integer'")), "3");
    EXPECT_EQ(DeriveOne(Apply("+", Ref("x") + Constant("2.6", "dataType='integer'"))), "5.5");
    EXPECT_EQ(DeriveOne(Constant("366", "dataType='dateDaysSince[1960]'"), "dateDaysSince[1961]"), "0");
    EXPECT_EQ(DeriveOne(Apply("if", Apply("isValid", Ref("x")) + Constant("false", "dataType='boolean'") + Ref("x"))),
              "0");
    EXPECT_EQ(DeriveOne(Constant("2.50", "dataType='double'"), "string"), "'2.50'");
}

TEST(Casts, KnowTruthInLettersOfEitherCase) {
    DerivedFields fields(kFields, Derived("<NormDiscrete field='b' value='TRUE'/>") +
                                      Derived(Apply("equal", Ref("b") + Constant("False")), "boolean", "e") +
                                      Derived(Ref("s"), "boolean", "f"));
    fields.Set("b", "TRUE").Set("s", "True");
    EXPECT_EQ(fields.Derive("d"), "1");
    EXPECT_EQ(fields.Derive("e"), "0");
    EXPECT_EQ(fields.Derive("f"), "1");
    fields.Set("b", "false");
    EXPECT_EQ(fields.Derive("d"), "0");
    EXPECT_EQ(fields.Derive("e"), "1");
}

const std::string kBins =
    "<DiscretizeBin binValue='low'><Interval closure='openOpen' rightMargin='0'/></DiscretizeBin>"
    "<DiscretizeBin binValue='zero'><Interval closure='closedOpen' leftMargin='0' rightMargin='1'/></DiscretizeBin>"
    "<DiscretizeBin binValue='mid'><Interval closure='openClosed' leftMargin='1' rightMargin='5'/></DiscretizeBin>"
    "<DiscretizeBin binValue='high'><Interval closure='closedClosed' leftMargin='6'/></DiscretizeBin>";

std::string Discretize(const std::string& attributes) {
    return "<Discretize field='x' " + attributes + "><Extension/>" + kBins + "</Discretize>";
}

TEST(Discretize, TakesTheBinThatHoldsTheNumber) {
    const auto derive = [](const std::string& x) { return DeriveOne(Discretize("defaultValue='else'"), "string", x); };
    EXPECT_EQ(derive("-1e300"), "'low'");
    EXPECT_EQ(derive("-0.001"), "'low'");
    EXPECT_EQ(derive("0"), "'zero'");
    EXPECT_EQ(derive("1"), "'else'");
    EXPECT_EQ(derive("1.0000001"), "'mid'");
    EXPECT_EQ(derive("5"), "'mid'");
    EXPECT_EQ(derive("5.5"), "'else'");
    EXPECT_EQ(derive("6"), "'high'");
    EXPECT_EQ(derive("INF"), "'high'");
}

TEST(Discretize, MapsMissingAndHasADefault) {
    EXPECT_EQ(DeriveOne(Discretize("mapMissingTo='none' defaultValue='else'"), "string", ""), "'none'");
    EXPECT_EQ(DeriveOne(Discretize("defaultValue='else'"), "string", ""), "missing");
    EXPECT_EQ(DeriveOne(Discretize(""), "string", "1"), "missing");
    EXPECT_EQ(DeriveOne(Discretize("mapMissingTo='none'"), "string", "-99"), "invalid");
    EXPECT_EQ(DeriveOne("<Discretize field='x' dataType='integer'><DiscretizeBin binValue='7'><Interval "
                        "closure='closedClosed' leftMargin='0'/></DiscretizeBin></Discretize>"),
              "7");
}

const std::string kRows =
    "<InlineTable><Extension/><row><c>red</c><n>1</n><out>10</out></row>"
    "<row><t:c xmlns:t='u'>red</t:c><n>2.0</n><t:out xmlns:t='u'>20</t:out></row>"
    "<row><c>green</c><n>1</n><out>30</out></row><row><c>red</c><n>1</n><out>40</out></row>"
    "<row><n>3</n><out>50</out></row></InlineTable>";

std::string Map(const std::string& pairs, const std::string& attributes = "") {
    return "<MapValues outputColumn='out' " + attributes + ">" + pairs + kRows + "</MapValues>";
}

const std::string kBoth = "<FieldColumnPair field='s' column='c'/><FieldColumnPair field='x' column='n'/>";

TEST(MapValues, FindsTheFirstRowThatHoldsAllFields) {
    EXPECT_EQ(DeriveOne(Map(kBoth), "double", "1"), "10");
    EXPECT_EQ(DeriveOne(Map(kBoth), "double", "2"), "20");
    EXPECT_EQ(DeriveOne(Map(kBoth), "double", "1", "green"), "30");
    EXPECT_EQ(DeriveOne(Map(kBoth), "double", "2", "green"), "missing");
    EXPECT_EQ(DeriveOne(Map("<FieldColumnPair field='s' column='t:c'/>"), "string", "", "green"), "'30'");
    EXPECT_EQ(DeriveOne(Map("<FieldColumnPair field='x' column='n'/>"), "double", "3", ""), "50");
}

TEST(MapValues, MapsMissingAndHasADefault) {
    const std::string attributes = "defaultValue='-1' mapMissingTo='-2'";
    EXPECT_EQ(DeriveOne(Map(kBoth, attributes), "double", "4"), "-1");
    EXPECT_EQ(DeriveOne(Map(kBoth, attributes), "double", ""), "-2");
    EXPECT_EQ(DeriveOne(Map(kBoth, attributes), "double", "1", ""), "-2");
    EXPECT_EQ(DeriveOne(Map(kBoth, attributes), "double", "1", "bad"), "invalid");
    EXPECT_EQ(DeriveOne(Map(kBoth), "double", ""), "missing");
}

TEST(Apply, SaysWhatMissingArgumentsAndResultsBecome) {
    const std::string sum = Ref("x") + Ref("y");
    EXPECT_EQ(DeriveOne(Apply("+", sum)), "missing");
    EXPECT_EQ(DeriveOne(Apply("+", sum, "mapMissingTo='7.5'")), "7.5");
    EXPECT_EQ(DeriveOne(Apply("+", sum, "defaultValue='8.5'")), "8.5");
    EXPECT_EQ(DeriveOne(Apply("+", sum, "mapMissingTo='7.5' defaultValue='8.5'")), "7.5");
    EXPECT_EQ(DeriveOne(Apply("sum", sum, "mapMissingTo='7.5'")), "7.5");
    EXPECT_EQ(DeriveOne(Apply("sum", sum, "defaultValue='7.5'")), "2.5");
    EXPECT_EQ(DeriveOne(Apply("if", Apply("isMissing", Ref("y")) + Ref("y"), "defaultValue='9.5'")), "9.5");
    EXPECT_EQ(DeriveOne(Apply("concat", Ref("s") + Ref("y"), "mapMissingTo='none'"), "string"), "'none'");
}

TEST(Apply, TreatsInvalidResultsAsItIsTold) {
    const std::string ratio = Ref("x") + Constant("0");
    EXPECT_EQ(DeriveOne(Apply("/", ratio)), "invalid");
    EXPECT_EQ(DeriveOne(Apply("/", ratio, "invalidValueTreatment='returnInvalid' defaultValue='1'")), "invalid");
    EXPECT_EQ(DeriveOne(Apply("/", ratio, "invalidValueTreatment='asIs'")), "inf");
    EXPECT_EQ(DeriveOne(Apply("sqrt", Constant("-1"), "invalidValueTreatment='asIs'")), "invalid");
    EXPECT_EQ(DeriveOne(Apply("/", ratio, "invalidValueTreatment='asMissing'")), "missing");
    EXPECT_EQ(DeriveOne(Apply("/", ratio, "invalidValueTreatment='asMissing' defaultValue='1.5'")), "1.5");
    EXPECT_EQ(DeriveOne(Apply("+", Ref("x") + Ref("x"), "invalidValueTreatment='asMissing'"), "double", "-99"),
              "missing");
}

TEST(Apply, TakesConstantsForTheTypeBesideThem) {
    EXPECT_EQ(DeriveOne(Apply("equal", Ref("s") + Constant("1")), "boolean", "", "1"), "1");
    EXPECT_EQ(DeriveOne(Apply("equal", Ref("x") + Constant("2.50")), "boolean"), "1");
    EXPECT_EQ(DeriveOne(Apply("equal", Ref("x") + Constant("2.50", "dataType='string'")), "boolean"), "1");
    EXPECT_EQ(DeriveOne(Apply("equal", Constant("2.50", "dataType='string'") + Ref("x")), "boolean"), "1");
    EXPECT_EQ(DeriveOne(Apply("isIn", Constant("1", "dataType='integer'") + Ref("s")), "boolean", "", "1"), "1");
    EXPECT_EQ(DeriveOne(Apply("equal", Ref("b") + Constant("true")), "boolean"), "missing");
    EXPECT_EQ(
        DeriveOne(Apply("lessThan", Ref("s") + Constant("2004-03-01", "dataType='date'")), "boolean", "", "2004-02-29"),
        "1");
    EXPECT_EQ(DeriveOne(Apply("if", Apply("lessThan", Ref("x") + Constant("9")) + Constant("1") + Constant("many")),
                        "string"),
              "'1'");
    EXPECT_EQ(DeriveOne(Apply("and", Constant("true") + Constant("1")), "boolean"), "1");
}

TEST(Apply, ComparesADayAsItsMidnightWhicheverStandsFirst) {
    const std::string noon = Constant("2004-02-29T12:00:00", "dataType='dateTime'");
    const std::string day = Constant("2004-02-29", "dataType='date'");
    EXPECT_EQ(DeriveOne(Apply("lessThan", day + noon), "boolean"), "1");
    EXPECT_EQ(DeriveOne(Apply("greaterThan", noon + day), "boolean"), "1");
    EXPECT_EQ(DeriveOne(Apply("equal", day + noon), "boolean"), "0");
    EXPECT_EQ(DeriveOne(Apply("isIn", day + Ref("day") + noon), "boolean"), "missing");
    const std::string count = Constant("0", "dataType='dateDaysSince[1960]'");
    EXPECT_EQ(DeriveOne(Apply("lessThan", count + Constant("1", "dataType='dateTimeSecondsSince[1960]'")), "boolean"),
              "1");
    EXPECT_EQ(DeriveOne(Apply("if", Apply("isValid", Ref("x")) + day + noon), "string"), "'2004-02-29T00:00:00'");
}

TEST(Apply, DoesNotEvaluateTheBranchThatIsNotTaken) {
    const std::string safe =
        Apply("if", Apply("equal", Ref("x") + Constant("0")) + Constant("-1") + Apply("/", Constant("1") + Ref("x")));
    EXPECT_EQ(DeriveOne(safe, "double", "0"), "-1");
    EXPECT_EQ(DeriveOne(safe, "double", "0.25"), "4");
}

TEST(DefineFunction, IsCalledWithItsArguments) {
    const std::string hyp = Function("ratio", Parameter("a") + Parameter("b", "dataType='double'"),
                                     Apply("/", Ref("a") + Ref("b")), "dataType='integer'");
    DerivedFields fields(kFields, Derived(Apply("ratio", Ref("x") + Ref("y"))), "", KwBrevix_930::CaseRecord::kByIndex,
                         hyp);
    EXPECT_EQ(fields.Set("x", "5").Set("y", "2").Derive("d"), "3");
    EXPECT_EQ(fields.SetMissing("y").Derive("d"), "missing");
}

TEST(DefineFunction, TakesTypesFromItsCallsAndCallsOthers) {
    const std::string twice = Function("twice", Parameter("a"), Apply("concat", Ref("a") + Ref("a")));
    const std::string loud = Function("loud", Parameter("x"), Apply("uppercase", Apply("twice", Ref("x"))));
    DerivedFields fields(kFields, loud + Derived(Apply("loud", Ref("s")), "string") +
                                      Derived(Apply("loud", Ref("x")), "string", "e") + twice);
    fields.Set("s", "ab").Set("x", "1.5");
    EXPECT_EQ(fields.Derive("d"), "'ABAB'");
    EXPECT_EQ(fields.Derive("e"), "'1.51.5'");
}

TEST(DefineFunction, MayGiveBackAnArgumentOfAnyLength) {
    const std::string first = Function("first", Parameter("a") + Parameter("b"), Ref("a"));
    const std::string text(200, 'q');
    DerivedFields fields(
        kFields, first + Derived(Apply("first", Apply("concat", Ref("s") + Constant("!")) + Ref("x")), "string"));
    EXPECT_EQ(fields.Set("s", text).Set("x", "1").Derive("d"), "'" + text + "!'");
}

TEST(DefineFunction, WithManyParametersAndTreatments) {
    std::string parameters;
    std::string sum;
    std::string arguments;
    for (int i = 0; i < 9; ++i) {
        parameters += Parameter("p" + std::to_string(i));
        sum += Ref("p" + std::to_string(i));
        arguments += i == 4 ? Ref("y") : Ref("x");
    }
    const std::string all = Function("all", parameters, Apply("sum", sum));
    EXPECT_EQ(DeriveOne(Apply("sum", Ref("x") + Ref("x"))), "5");
    DerivedFields fields(kFields, all + Derived(Apply("all", arguments)) +
                                      Derived(Apply("all", arguments, "mapMissingTo='-1'"), "double", "e"));
    fields.Set("x", "2.5");
    EXPECT_EQ(fields.Derive("d"), "20");
    EXPECT_EQ(fields.Derive("e"), "-1");
}

TEST(DerivedFields, MayStandInAnyOrderAndTellAllTheirSources) {
    DerivedFields fields(kFields, Derived(Apply("+", Ref("e") + Ref("x"))) +
                                      Derived(Apply("*", Ref("y") + Constant("2")), "double", "e"));
    fields.Set("x", "0.5").Set("y", "1.25");
    EXPECT_EQ(fields.Derive("d"), "3");
    auto sources = fields.transformations->FindRawFields({"d"});
    std::sort(sources.begin(), sources.end());
    EXPECT_EQ(sources, (std::vector<std::string>{"x", "y"}));
    EXPECT_EQ(fields.transformations->FindVar("d")->GetFieldName(), "e");
}

}  // namespace
