// What is refused while expressions are read, and what hostile documents and cells come to.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/host/error_of.h"
#include "tests/host/transform/transform_samples.h"

namespace {

using testing::HasSubstr;
using transform_samples::Apply;
using transform_samples::Constant;
using transform_samples::Derived;
using transform_samples::Function;
using transform_samples::kFields;
using transform_samples::Parameter;
using transform_samples::Ref;

KwBrevix_930::BXException ErrorIn(const std::string& derived) {
    return ErrorOf([&] { DerivedFields(kFields, derived); });
}

KwBrevix_930::BXException ErrorOfOne(const std::string& expression, const std::string& type = "double") {
    return ErrorIn(Derived(expression, type));
}

TEST(ExpressionErrors, NameUnknownFunctionsAndFields) {
    ExpectError(ErrorOfOne(Apply("unheard", Ref("x"))), 260103, {"function", "unheard", "Apply"});
    ExpectError(ErrorOfOne(Apply("ABS", Ref("x"))), 260103, {"function", "ABS", "Apply"});
    ExpectError(ErrorOfOne("<Apply>" + Ref("x") + "</Apply>"), 260120, {"function", "Apply"});
    ExpectError(ErrorOfOne(Apply("abs", Ref("gone"))), 260103, {"field", "gone", "FieldRef"});
    const std::string body = Function("f", Parameter("a"), Apply("+", Ref("a") + Ref("x")));
    ExpectError(ErrorIn(body + Derived(Apply("f", Ref("x")))), 260103, {"field", "x", "FieldRef"});
}

TEST(ExpressionErrors, NameWrongArgumentCounts) {
    ExpectError(ErrorOfOne(Apply("+", Ref("x"))), 260104, {"+", "1", "2"});
    ExpectError(ErrorOfOne(Apply("if", Apply("isMissing", Ref("x")))), 260104, {"if", "1", "2 to 3"});
    ExpectError(ErrorOfOne(Apply("sum", "<Extension/>")), 260104, {"sum", "0", "1 or more"});
    ExpectError(ErrorOfOne(Apply("ln", Ref("x") + Ref("y"))), 260104, {"ln", "2", "1"});
    const std::string body = Function("f", Parameter("a"), Ref("a"));
    ExpectError(ErrorIn(body + Derived(Apply("f", Ref("x") + Ref("y")))), 260104, {"f", "2", "1"});
}

TEST(ExpressionErrors, NameCircles) {
    ExpectError(ErrorOfOne(Apply("abs", Ref("d"))), 260105, {"derived fields", "'d' -> 'd'"});
    ExpectError(
        ErrorIn(Derived(Ref("e")) + Derived(Apply("abs", Ref("f")), "double", "e") + Derived(Ref("e"), "double", "f")),
        260105, {"derived fields", "'e' -> 'f' -> 'e'"});
    const std::string own = Function("f", Parameter("a"), Apply("f", Ref("a")));
    ExpectError(ErrorIn(own + Derived(Apply("f", Ref("x")))), 260105, {"functions", "'f' -> 'f'"});
    const std::string two = Function("f", Parameter("a"), Apply("g", Ref("a"))) +
                            Function("g", Parameter("a"), Apply("f", Apply("concat", Ref("a") + Ref("a"))));
    ExpectError(ErrorIn(two + Derived(Apply("f", Ref("x")))), 260105, {"functions", "'f' -> 'g' -> 'f'"});
}

TEST(ExpressionErrors, NameTypesThatContradict) {
    ExpectError(ErrorOfOne(Apply("+", Ref("x") + Constant("abc"))), 260106,
                {"argument 2 of '+'", "string", "a number"});
    ExpectError(ErrorOfOne(Apply("+", Constant("3", "dataType='string'") + Ref("x"))), 260106,
                {"argument 1 of '+'", "string", "a number"});
    ExpectError(ErrorOfOne(Apply("ln", Ref("s"))), 260106, {"argument 1 of 'ln'", "string", "a number"});
    ExpectError(ErrorOfOne(Apply("equal", Ref("x") + Ref("s"))), 260106, {"argument 2 of 'equal'", "string", "double"});
    ExpectError(ErrorOfOne(Apply("equal", Ref("x") + Constant("red"))), 260106,
                {"argument 2 of 'equal'", "string", "double"});
    ExpectError(ErrorOfOne(Apply("not", Ref("s"))), 260106, {"argument 1 of 'not'", "string", "boolean"});
    ExpectError(ErrorOfOne(Apply("and", Ref("b") + Constant("2"))), 260106,
                {"argument 2 of 'and'", "double", "boolean"});
    ExpectError(ErrorOfOne(Constant("red")), 260106, {"Constant", "string", "double"});
    ExpectError(ErrorOfOne(Constant("red", "dataType='integer'")), 260106,
                {"the text 'red' of Constant", "string", "integer"});
    ExpectError(ErrorOfOne(Apply("dateDaysSinceYear", Ref("x") + Constant("1960"))), 260106,
                {"argument 1 of 'dateDaysSinceYear'", "double", "a date or time"});
    ExpectError(ErrorOfOne("<Discretize field='s'/>"), 260106, {"the field 's' of Discretize", "string", "a number"});
    const std::string noon = Constant("12:00:00", "dataType='time'");
    ExpectError(ErrorOfOne(Apply("lessThan", noon + Ref("day"))), 260106, {"argument 1 of 'lessThan'", "time", "date"});
    ExpectError(ErrorOfOne(Apply("isIn", Constant("3", "dataType='timeSeconds'") + Ref("day"))), 260106,
                {"argument 1 of 'isIn'", "timeSeconds", "date"});
    const std::string body = Function("f", Parameter("a", "dataType='double'"), Ref("a"));
    ExpectError(ErrorIn(body + Derived(Apply("f", Constant("red")))), 260106,
                {"argument 1 of 'f'", "string", "double"});
}

TEST(ExpressionErrors, NameTablesThatAreNone) {
    const auto error = [](const std::string& content, const std::string& attributes = "outputColumn='o'") {
        return ErrorOfOne("<MapValues " + attributes + ">" + content + "</MapValues>");
    };
    const std::string pair = "<FieldColumnPair field='s' column='c'/>";
    const std::string row = "<row><c>red</c><o>1</o></row>";
    ExpectError(error(pair + "<InlineTable/>"), 260114, {"InlineTable"});
    ExpectError(error(pair + "<InlineTable><Extension/></InlineTable>"), 260114, {"InlineTable"});
    ExpectError(error(pair), 260115, {"InlineTable", "MapValues"});
    ExpectError(error(pair + "<TableLocator/>"), 260102, {"TableLocator", "MapValues"});
    ExpectError(error("<InlineTable>" + row + "</InlineTable>"), 260115, {"FieldColumnPair", "MapValues"});
    ExpectError(error(pair + "<InlineTable>" + row + "</InlineTable>", ""), 260120, {"outputColumn", "MapValues"});
    ExpectError(error(pair + "<InlineTable>" + row + "</InlineTable>", "outputColumn='p'"), 260103,
                {"column", "p", "MapValues"});
    ExpectError(error("<FieldColumnPair field='s' column='q'/><InlineTable>" + row + "</InlineTable>"), 260103,
                {"column", "q", "MapValues"});
    ExpectError(error(pair + "<InlineTable>" + row + "<row><o>two</o></row></InlineTable>"), 260153,
                {"two", "the output column", "row 2 of InlineTable"});
    ExpectError(error("<FieldColumnPair field='gone' column='c'/><InlineTable>" + row + "</InlineTable>"), 260103,
                {"field", "gone", "FieldColumnPair"});
}

TEST(ExpressionErrors, NameBinsThatAreNone) {
    const auto error = [](const std::string& interval, const std::string& value = "1") {
        return ErrorOfOne("<Discretize field='x'><DiscretizeBin binValue='" + value + "'>" + interval +
                          "</DiscretizeBin></Discretize>");
    };
    ExpectError(error("<Interval closure='openOpen'/>"), 260120, {"leftMargin or rightMargin", "Interval"});
    ExpectError(error("<Interval leftMargin='1'/>"), 260120, {"closure", "Interval"});
    ExpectError(error("<Interval closure='ajar' leftMargin='1'/>"), 260153, {"ajar", "closure", "Interval"});
    ExpectError(error("<Interval closure='openOpen' leftMargin='2' rightMargin='1'/>"), 260153,
                {"2", "leftMargin", "Interval"});
    ExpectError(error("<Interval closure='openOpen' leftMargin='NaN'/>"), 260153, {"NaN", "leftMargin", "Interval"});
    ExpectError(error(""), 260115, {"Interval", "DiscretizeBin"});
    ExpectError(error("<Interval closure='openOpen' leftMargin='1'/>", "low"), 260153,
                {"low", "binValue", "DiscretizeBin"});
}

TEST(ExpressionErrors, NameAttributesAndPatterns) {
    ExpectError(ErrorOfOne(Apply("abs", Ref("x"), "invalidValueTreatment='asValue'")), 260153,
                {"asValue", "invalidValueTreatment", "Apply"});
    ExpectError(ErrorOfOne(Apply("abs", Ref("x"), "mapMissingTo='low'")), 260153, {"low", "mapMissingTo", "Apply"});
    ExpectError(ErrorOfOne(Apply("isMissing", Ref("x"), "defaultValue='2'")), 260153, {"2", "defaultValue", "Apply"});
    ExpectError(ErrorOfOne("<NormDiscrete field='s' value='a' method='thermometer'/>"), 260153,
                {"thermometer", "method", "NormDiscrete"});
    const auto pattern = [](const std::string& function, const std::string& first, const std::string& text) {
        return ErrorOfOne(Apply(function, first + Constant(text)), "string");
    };
    for (const char* text : {"%n", "%s%d", "%999999999d", "%*d", "%", "plain"})
        ExpectError(pattern("formatNumber", Ref("x"), text), 260153, {text, "the pattern", "formatNumber"});
    ExpectError(pattern("formatDatetime", Ref("day"), "%Q"), 260153, {"%Q", "the pattern", "formatDatetime"});
    ExpectError(pattern("matches", Ref("s"), "(a"), 260153, {"(a", "the pattern", "matches"});
    ExpectError(pattern("matches", Ref("s"), "(a)\\1"), 260153, {"(a)\\1", "the pattern", "matches"});
}

TEST(ExpressionErrors, NameFunctionsWithoutANameOfTheirOwn) {
    const std::string body = Function("f", Parameter("a"), Ref("a"));
    ExpectError(ErrorIn(body + body), 260153, {"f", "name", "DefineFunction"});
    ExpectError(ErrorIn(Function("ln", Parameter("a"), Ref("a"))), 260153, {"ln", "name", "DefineFunction"});
    ExpectError(ErrorOf([&] { DerivedFields(kFields, body, "", KwBrevix_930::CaseRecord::kByIndex, body); }), 260153,
                {"f", "name", "DefineFunction"});
    ExpectError(
        ErrorIn(Function("f", Parameter("a") + Parameter("a"), Ref("a")) + Derived(Apply("f", Ref("x") + Ref("x")))),
        260153, {"a", "name", "ParameterField"});
    ExpectError(ErrorIn(Function("f", Parameter("a"), "") + Derived(Apply("f", Ref("x")))), 260115,
                {"an expression", "DefineFunction"});
}

TEST(ExpressionErrors, TellFieldAndLine) {
    EXPECT_THAT(ErrorIn("\n\n" + Derived("\n" + Apply("+", Ref("x") + "\n" + Apply("sin", "")))).what(),
                HasSubstr("In DerivedField 'd', line 5."));
    EXPECT_THAT(ErrorIn("\n" + Derived(Ref("x")) + "\n" + Derived(Ref("x"))).what(),
                HasSubstr("In DerivedField 'd', line 3."));
    EXPECT_THAT(ErrorIn("\n" + Derived("")).what(), HasSubstr("In DerivedField 'd', line 2."));
    EXPECT_THAT(ErrorIn("\n" + Derived("\n<Lag field='x'/>")).what(), HasSubstr("In DerivedField 'd', line 3."));
}

TEST(ExpressionErrors, TellTheLineOfACircleAndOfAFunction) {
    EXPECT_THAT(
        ErrorIn(Derived(Ref("x"), "double", "c") + "\n" + Derived(Ref("e")) + "\n" + Derived(Ref("d"), "double", "e"))
            .what(),
        HasSubstr("In DerivedField 'd', line 2."));
    const std::string body = Function("f", Parameter("a"), Ref("a"));
    EXPECT_THAT(ErrorIn(body + "\n\n" + body).what(), HasSubstr("In DefineFunction 'f', line 3."));
    EXPECT_THAT(ErrorIn("\n<DefineFunction/>").what(), HasSubstr("In DefineFunction, line 2."));
}

TEST(ExpressionErrors, TellTheLineOfABinARowAndAPair) {
    const std::string bin = "<DiscretizeBin binValue='1'><Interval closure='openOpen' ";
    EXPECT_THAT(ErrorOfOne("<Discretize field='x'>\n" + bin + "leftMargin='1'/></DiscretizeBin>\n" + bin +
                           "/></DiscretizeBin></Discretize>")
                    .what(),
                HasSubstr("In DerivedField 'd', line 3."));
    const auto map = [](const std::string& content) {
        return ErrorOfOne("<MapValues outputColumn='o'>\n" + content + "</MapValues>");
    };
    const std::string pair = "<FieldColumnPair field='s' column='c'/>";
    const auto row = map(pair + "<InlineTable>\n<row><c>red</c></row>\n<row><c>red</c><o>two</o></row></InlineTable>");
    ExpectError(row, 260153, {"two", "the output column", "row 2 of InlineTable"});
    EXPECT_THAT(row.what(), HasSubstr("In DerivedField 'd', line 4."));
    EXPECT_THAT(map(pair + "\n<FieldColumnPair field='gone' column='c'/>"
                           "<InlineTable><row><o>1</o></row></InlineTable>")
                    .what(),
                HasSubstr("In DerivedField 'd', line 3."));
}

// f1 calls f0 twice, f2 calls f1 twice, and so on.
std::string Doubling(int count) {
    std::string functions = Function("f0", Parameter("a"), Apply("+", Ref("a") + Constant("1")));
    for (int i = 1; i <= count; ++i) {
        const std::string call = Apply("f" + std::to_string(i - 1), Ref("a"));
        functions += Function("f" + std::to_string(i), Parameter("a"), Apply("+", call + call));
    }
    return functions;
}

TEST(HostileExpressions, ThatMultiplyInFunctionsAreRefused) {
    DerivedFields fields(kFields, Doubling(10) + Derived(Apply("f10", Ref("x"))));
    EXPECT_EQ(fields.Set("x", "0.5").Derive("d"), "1536");
    ExpectError(ErrorIn(Doubling(60) + Derived(Apply("f60", Ref("x")))), 260107, {"1000000 steps in functions"});
}

TEST(HostileExpressions, ThatAreNestedTooDeepAreRefused) {
    const auto nested = [](int depth) {
        std::string expression = Ref("x");
        for (int i = 1; i < depth; ++i)
            expression = Apply("abs", expression);
        return expression;
    };
    EXPECT_EQ(DerivedFields(kFields, Derived(nested(500))).Set("x", "-2.5").Derive("d"), "2.5");
    ExpectError(ErrorOfOne(nested(501)), 260107, {"500 levels of nested expressions"});
    std::string functions = Function("f0", Parameter("a"), Ref("a"));
    for (int i = 1; i < 300; ++i)
        functions += Function("f" + std::to_string(i), Parameter("a"),
                              Apply("abs", Apply("f" + std::to_string(i - 1), Ref("a"))));
    ExpectError(ErrorIn(functions + Derived(Apply("f299", Ref("x")))), 260107, {"500 levels of nested expressions"});
    // Also where the function is known already.
    ExpectError(ErrorIn(functions + Derived(Apply("f200", Ref("x"))) +
                        Derived(Apply("f240", Apply("f10", Ref("x"))), "double", "e") +
                        Derived(
                            [&] {
                                std::string expression = Apply("f240", Ref("x"));
                                for (int i = 0; i < 100; ++i)
                                    expression = Apply("abs", expression);
                                return expression;
                            }(),
                            "double", "g")),
                260107, {"500 levels of nested expressions"});
}

TEST(HostileExpressions, WhoseTextsGrowEndInvalid) {
    std::string derived = Derived(Apply("concat", Ref("s") + Ref("s")), "string", "t0");
    for (int i = 1; i < 60; ++i) {
        const std::string before = Ref("t" + std::to_string(i - 1));
        derived += Derived(Apply("concat", before + before), "string", "t" + std::to_string(i));
    }
    derived += Derived(Apply("replace", Ref("s") + Constant("") + Constant(std::string(1000, 'z'))), "string");
    DerivedFields fields(kFields, derived);
    fields.Set("s", "ab");
    EXPECT_EQ(fields.Derive("t12").size(), 16384u + 2u);
    EXPECT_EQ(fields.Derive("t13"), "invalid");
    EXPECT_EQ(fields.Derive("t59"), "invalid");
    fields.Set("s", std::string(30000, 'a'));
    EXPECT_EQ(fields.Derive("d"), "invalid");
}

TEST(HostileExpressions, MatchInLinearTime) {
    DerivedFields fields(kFields, Derived(Apply("matches", Ref("s") + Constant("^(a+)+$")), "boolean") +
                                      Derived(Apply("matches", Ref("s") + Ref("s")), "boolean", "e"));
    fields.Set("s", std::string(1'000'000, 'a') + "b");
    EXPECT_EQ(fields.Derive("d"), "0");
    fields.Set("s", "((((a{1000}){1000}){1000}){1000})");
    EXPECT_EQ(fields.Derive("e"), "invalid");
}

TEST(HostileExpressions, MayBeLongTablesAndChains) {
    std::string rows;
    std::string chain = Derived(Ref("x"), "double", "c0");
    for (int i = 0; i < 50'000; ++i)
        rows += "<row><c>" + std::to_string(i) + "</c><o>" + std::to_string(2 * i) + "</o></row>";
    for (int i = 1; i < 5'000; ++i)
        chain = Derived(Ref("c" + std::to_string(i - 1)), "double", "c" + std::to_string(i)) + chain;
    DerivedFields fields(kFields, chain + Derived("<MapValues outputColumn='o'><FieldColumnPair field='x' "
                                                  "column='c'/><InlineTable>" +
                                                  rows + "</InlineTable></MapValues>"));
    fields.Set("x", "49999");
    EXPECT_EQ(fields.Derive("d"), "99998");
    EXPECT_EQ(fields.Derive("c4999"), "49999");
}

}  // namespace
