// What exporters write and the translator does not read, rewritten.
#include "runtime/preparation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <xercesc/dom/DOMElement.hpp>

#include "runtime/Error.h"
#include "runtime/ModelDocument.h"
#include "tests/runtime/SmallDocument.h"

namespace {

using brevix::ModelDocument;
using test_support::SmallDocument;
using testing::ElementsAre;
using testing::IsEmpty;
using xercesc::DOMElement;

class Prepared {
public:
    explicit Prepared(const SmallDocument& parts)
        : document(KwBrevix_930::DocumentParser().ParseText(parts.makeText())),
          notes(brevix::prepareDocument(document)) {}

    // The texts of the children with a tag of the first VectorInstance's sparse array.
    std::string arrayText(const char* tag) const {
        const DOMElement* vectors = document.findChild(document.getModel(), "VectorDictionary");
        const DOMElement* array = document.findChild(document.findChild(vectors, "VectorInstance"), "REAL-SparseArray");
        const DOMElement* element = document.findChild(array, tag);
        return element ? KwBrevix_930::BrevixTranscoder().ToNarrow(element->getTextContent()) : "none";
    }

    std::vector<std::string> attributesOf(const DOMElement* parent, const char* tag, const char* attribute) const {
        std::vector<std::string> values;
        for (const DOMElement* child : document.findChildren(parent, tag))
            values.push_back(document.getAttribute(*child, attribute));
        return values;
    }

    std::vector<std::string> categories() const {
        return attributesOf(document.findChildren(document.getDataDictionary(), "DataField").back(), "Value", "value");
    }

    std::vector<std::string> derivedFields(const char* tag) const {
        const std::string name = tag;
        const DOMElement* parent = name == "LocalTransformations" ? document.getModel() : &document.getRoot();
        return attributesOf(document.findChild(parent, tag), "DerivedField", "name");
    }

    ModelDocument document;
    std::vector<std::string> notes;
};

std::string derivedField(const std::string& name, const std::string& field) {
    return "<DerivedField name=\"" + name + "\" optype=\"continuous\" dataType=\"double\"><FieldRef field=\"" + field +
           "\"/></DerivedField>";
}

std::string faultOfPreparing(const SmallDocument& parts) {
    try {
        const Prepared prepared(parts);
    } catch (const brevix::Error& fault) {
        return fault.what();
    }
    return "no fault";
}

const char* const kFourFields =
    R"(<FieldRef field="x"/><FieldRef field="y"/><FieldRef field="x"/><CategoricalPredictor name="y" value="2"/>)";
const char* const kBareTarget = R"(<DataField name="hue" optype="categorical" dataType="string"/>)";

TEST(Preparation, DocumentThatTheTranslatorReadsStaysAsItIs) {
    const Prepared prepared{SmallDocument()};
    EXPECT_THAT(prepared.notes, IsEmpty());
    EXPECT_EQ(prepared.arrayText("Indices"), "1");
    EXPECT_FALSE(prepared.document.findAttribute(*prepared.document.getModel(), "classificationMethod"));
}

TEST(Preparation, DenseArrayBecomesTheEqualSparseArray) {
    SmallDocument parts;
    parts.vectorFields = kFourFields;
    parts.instances = SmallDocument::denseInstance("v1", "<Array n=\"4\" type=\"real\">\n 1.5 0\t-2e-3\r\n7 </Array>") +
                      SmallDocument::sparseInstance("v2", "2", "1");
    const Prepared prepared(parts);
    EXPECT_EQ(prepared.arrayText("Indices"), "1 2 3 4");
    EXPECT_EQ(prepared.arrayText("REAL-Entries"), "\n 1.5 0\t-2e-3\n7 ");
    EXPECT_THAT(prepared.notes, ElementsAre("1 dense Array was read as REAL-SparseArray"));
}

TEST(Preparation, ArrayTextMayBeCutIntoNodesAnywhere) {
    SmallDocument parts;
    parts.vectorFields = R"(<FieldRef field="x"/><FieldRef field="y"/><FieldRef field="x"/>)";
    parts.instances =
        SmallDocument::denseInstance("v1", "<Array n=\"3\">1<![CDATA[.25 2]]><?pause?>5 <!-- 9 --> 4</Array>") +
        SmallDocument::denseInstance("v2", "<Array>3 2 1</Array>");
    const Prepared prepared(parts);
    EXPECT_EQ(prepared.arrayText("Indices"), "1 2 3");
    EXPECT_EQ(prepared.arrayText("REAL-Entries"), "1.25 25  4");
    EXPECT_THAT(prepared.notes, ElementsAre("2 dense Arrays were read as REAL-SparseArray"));
}

TEST(Preparation, ArrayBesideASparseArrayIsLeftAlone) {
    SmallDocument parts;
    parts.instances = SmallDocument::denseInstance("v1",
                                                   "<Array n=\"2\">8 9</Array><REAL-SparseArray n=\"2\"><Indices>2"
                                                   "</Indices><REAL-Entries>5</REAL-Entries></REAL-SparseArray>");
    const Prepared prepared(parts);
    EXPECT_EQ(prepared.arrayText("REAL-Entries"), "5");
    EXPECT_THAT(prepared.notes, IsEmpty());
}

TEST(Preparation, ArrayWhoseLengthIsNotItsEntriesIsRefused) {
    SmallDocument parts;
    parts.instances = SmallDocument::denseInstance("v1", "<Array n=\"3\" type=\"real\">1.5 2</Array>");
    EXPECT_EQ(faultOfPreparing(parts), "the Array of the VectorInstance 'v1' has n=3 but 2 entries");
    parts.instances = SmallDocument::denseInstance("v1", "<Array n=\"two\" type=\"real\">1.5 2</Array>");
    EXPECT_EQ(faultOfPreparing(parts), "the Array of the VectorInstance 'v1' has n=two but 2 entries");
    parts.instances = SmallDocument::denseInstance("v1", "<Array n=\"2\" type=\"string\">\"1.5\" 2</Array>");
    EXPECT_EQ(faultOfPreparing(parts),
              "the Array of the VectorInstance 'v1' holds a quoted text where numbers must stand");
    parts.instances = SmallDocument::denseInstance("v1", "<Array n=\"3\">1.5 2 3</Array>");
    EXPECT_EQ(faultOfPreparing(parts), "the Array of the VectorInstance 'v1' has 3 entries but VectorFields has 2");
    parts.instances = SmallDocument::denseInstance("v1", "<Array>1,5 2</Array>") +
                      SmallDocument::denseInstance("v2", "<Array>1.5 é</Array>");
    EXPECT_EQ(faultOfPreparing(parts),
              "the Array of the VectorInstance 'v1' holds '1,5' where a number must stand; "
              "the Array of the VectorInstance 'v2' holds '?' where a number must stand");
}

TEST(Preparation, SparseArrayThatWouldBeReadAsAnotherIsRefused) {
    const auto fault = [](const std::string& array) {
        SmallDocument parts;
        parts.instances = SmallDocument::denseInstance("v1", array);
        return faultOfPreparing(parts);
    };
    const auto sparse = [](const std::string& indices, const std::string& entries) {
        return "<REAL-SparseArray><Indices>" + indices + "</Indices><Entries>" + entries +
               "</Entries></REAL-SparseArray>";
    };
    const std::string start = "the REAL-SparseArray of the VectorInstance 'v1' ";
    const auto badIndex = [&](const std::string& index) {
        return start + "has the index '" + index +
               "'; its Indices must ascend from 1 to the number of VectorFields, which is 2";
    };
    EXPECT_EQ(fault(sparse("2 1", "5 6")), badIndex("1"));
    EXPECT_EQ(fault(sparse("1 1", "5 6")), badIndex("1"));
    EXPECT_EQ(fault(sparse("0", "5")), badIndex("0"));
    EXPECT_EQ(fault(sparse("3", "5")), badIndex("3"));
    EXPECT_EQ(fault(sparse("1.5", "5")), badIndex("1.5"));
    EXPECT_EQ(fault(sparse("one", "5")), badIndex("one"));
    EXPECT_EQ(fault(sparse("1.0 2", "5 INF")), "no fault");
    EXPECT_EQ(fault(sparse("1 2", "5 0,25")), start + "holds '0,25' where a number must stand");
    EXPECT_EQ(fault("<REAL-SparseArray defaultValue=\"1\"/>"), start + "asks for defaultValue=1");
    EXPECT_EQ(fault("<INT-SparseArray/>"),
              "the content of the VectorInstance 'v1' cannot be read: it is neither a REAL-SparseArray nor an Array");
    EXPECT_EQ(fault("<Extension/>"), "no fault");
}

TEST(Preparation, VectorOfZerosIsKept) {
    for (const char* array :
         {"<REAL-SparseArray/>", "<REAL-SparseArray n=\"0\"/>",
          "<REAL-SparseArray n=\"2\"><Indices/><REAL-Entries> </REAL-Entries></REAL-SparseArray>"}) {
        SmallDocument parts;
        parts.instances = SmallDocument::denseInstance("v1", array);
        const Prepared prepared(parts);
        EXPECT_EQ(prepared.arrayText("Indices"), "1") << array;
        EXPECT_EQ(prepared.arrayText("REAL-Entries"), "0") << array;
        EXPECT_THAT(prepared.notes, ElementsAre("1 vector without entries was read as zeros"));
    }
}

TEST(Preparation, TargetWithoutValuesGetsThemFromTheMachines) {
    SmallDocument parts;
    parts.targetField = kBareTarget;
    parts.machines = SmallDocument::machine(R"(targetCategory="q" alternateTargetCategory="b")") +
                     SmallDocument::machine(R"(targetCategory="b" alternateTargetCategory="a")") +
                     SmallDocument::machine(R"(targetCategory="q" alternateTargetCategory="a")");
    parts.modelAttributes = R"(classificationMethod="OneAgainstOne")";
    const Prepared prepared(parts);
    EXPECT_THAT(prepared.categories(), ElementsAre("q", "b", "a"));
    EXPECT_THAT(prepared.notes,
                ElementsAre("the target 'hue' declares no values; 3 categories were taken from the machines"));
}

TEST(Preparation, MachineThatNamesNoCategoryGivesThoseOfItsExtension) {
    SmallDocument parts;
    parts.targetField = R"(<DataField name="hue" dataType="string"/>)";
    parts.machines = SmallDocument::machine(
        "", R"(<Extension extender="ZARN"><ResponseCategory response="no" nonresponse="yes"/></Extension>)");
    EXPECT_THAT(Prepared(parts).categories(), ElementsAre("no", "yes"));
    // A machine that names one category is not asked for more; another maker's extension says nothing.
    parts.machines =
        SmallDocument::machine(
            R"(targetCategory="maybe")",
            R"(<Extension extender="ZARN"><ResponseCategory response="no" nonresponse="yes"/></Extension>)") +
        SmallDocument::machine(
            "", R"(<Extension extender="OTHER"><ResponseCategory response="p" nonresponse="q"/></Extension>)");
    EXPECT_THAT(Prepared(parts).categories(), ElementsAre("maybe"));
}

TEST(Preparation, TargetThatDeclaresACategoryOrIsContinuousIsLeftAlone) {
    SmallDocument parts;
    parts.targetField =
        R"(<DataField name="hue" optype="categorical" dataType="string"><Value value="red"/></DataField>)";
    EXPECT_THAT(Prepared(parts).categories(), ElementsAre("red"));
    parts.targetField = R"(<DataField name="hue" optype="continuous" dataType="double"/>)";
    EXPECT_THAT(Prepared(parts).categories(), IsEmpty());
}

TEST(Preparation, TargetThatDeclaresOnlyMissingValuesHasNoCategories) {
    SmallDocument parts;
    parts.targetField =
        R"(<DataField name="hue" optype="categorical" dataType="string"><Value value="?" property="missing"/></DataField>)";
    EXPECT_THAT(Prepared(parts).categories(), ElementsAre("?", "red", "blue"));
}

class OneAgainstOne : public testing::Test {
protected:
    static std::string methodOf(const std::string& machines, const std::string& attributes = "") {
        SmallDocument parts;
        parts.machines = machines;
        parts.modelAttributes = attributes;
        const Prepared prepared(parts);
        return prepared.document.getAttribute(*prepared.document.getModel(), "classificationMethod");
    }
    static std::string pair(const std::string& first, const std::string& second) {
        return SmallDocument::machine("targetCategory=\"" + first + "\" alternateTargetCategory=\"" + second + "\"");
    }
};

TEST_F(OneAgainstOne, AllPairsOfThreeCategoriesAreRecognised) {
    EXPECT_EQ(methodOf(pair("a", "b") + pair("c", "a") + pair("b", "c")), "OneAgainstOne");
}

TEST_F(OneAgainstOne, AnythingElseIsNot) {
    EXPECT_EQ(methodOf(pair("a", "b")), "") << "two categories";
    EXPECT_EQ(methodOf(pair("a", "b") + pair("c", "a")), "") << "a pair is lacking";
    EXPECT_EQ(methodOf(pair("a", "b") + pair("c", "a") + pair("b", "a")), "") << "one pair twice";
    EXPECT_EQ(methodOf(pair("a", "b") + pair("c", "a") + pair("b", "d")), "") << "four categories";
    EXPECT_EQ(methodOf(pair("a", "b") + pair("c", "a") + pair("b", "b")), "") << "no pair";
    EXPECT_EQ(methodOf(pair("a", "b") + pair("c", "a") + SmallDocument::machine(R"(targetCategory="b")")), "");
}

TEST_F(OneAgainstOne, MethodThatIsWrittenStands) {
    const std::string pairs = pair("a", "b") + pair("c", "a") + pair("b", "c");
    EXPECT_EQ(methodOf(pairs, R"(classificationMethod="OneAgainstAll")"), "OneAgainstAll");
    EXPECT_EQ(methodOf(pairs, R"(classificationMethod="")"), "");
}

TEST(Preparation, OneAgainstOneIsNoted) {
    SmallDocument parts;
    parts.machines = SmallDocument::pairMachines();
    EXPECT_THAT(
        Prepared(parts).notes,
        ElementsAre(
            "there is no classificationMethod; the 3 machines stand for all pairs and were read as one-against-one"));
}

TEST(Preparation, TransformationDictionaryIsPutInFrontOfLocalTransformations) {
    SmallDocument parts;
    parts.beforeModel = "<TransformationDictionary><Extension/>" + derivedField("p", "x") + derivedField("q", "p") +
                        "</TransformationDictionary>";
    parts.afterSchema = "<LocalTransformations>" + derivedField("r", "q") + "</LocalTransformations>";
    const Prepared prepared(parts);
    EXPECT_THAT(prepared.derivedFields("LocalTransformations"), ElementsAre("p", "q", "r"));
    EXPECT_THAT(prepared.notes, ElementsAre("2 derived fields of the TransformationDictionary put in front of "
                                            "LocalTransformations"));
}

TEST(Preparation, TransformationDictionaryAloneBecomesLocalTransformations) {
    SmallDocument parts;
    parts.beforeModel = "<TransformationDictionary>" + derivedField("p", "x") + "</TransformationDictionary>";
    EXPECT_THAT(Prepared(parts).derivedFields("LocalTransformations"), ElementsAre("p"));
    parts.beforeModel = "<TransformationDictionary/>";
    EXPECT_THAT(Prepared(parts).notes, IsEmpty());
}

TEST(Preparation, VersionTwoKeepsBothInTheTransformationDictionary) {
    SmallDocument parts;
    parts.version = "2.1";
    parts.afterSchema = "<LocalTransformations>" + derivedField("r", "x") + "</LocalTransformations>";
    EXPECT_THAT(Prepared(parts).derivedFields("TransformationDictionary"), ElementsAre("r"));
    parts.beforeModel = "<TransformationDictionary>" + derivedField("p", "x") + "</TransformationDictionary>";
    const Prepared prepared(parts);
    EXPECT_THAT(prepared.derivedFields("TransformationDictionary"), ElementsAre("p", "r"));
    EXPECT_THAT(prepared.notes, ElementsAre("1 derived field of LocalTransformations put behind those of the "
                                            "TransformationDictionary"));
}

TEST(Preparation, DocumentWithoutAModelOrFieldsIsLeftAlone) {
    const ModelDocument document(
        KwBrevix_930::DocumentParser().ParseText("<PMML version=\"4.2\"><TransformationDictionary>" +
                                                 derivedField("p", "x") + "</TransformationDictionary></PMML>"));
    EXPECT_THAT(brevix::prepareDocument(document), IsEmpty());
}

TEST(Preparation, EveryOneOfManyArraysIsRead) {
    SmallDocument parts;
    parts.instances.clear();
    for (int i = 0; i < 80000; ++i)
        parts.instances += SmallDocument::denseInstance("v" + std::to_string(i), "<Array>1 2</Array>");
    EXPECT_THAT(Prepared(parts).notes, ElementsAre("80000 dense Arrays were read as REAL-SparseArray"));
}

}  // namespace
