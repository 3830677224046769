// The names of PMML elements, attributes and values.
#include "host/PMMLModelTags.h"

#include <gtest/gtest.h>

#include <ostream>

namespace {

using Tags = KwBrevix_930::PMMLModelTags;

struct Row {
    const char* tag;
    const char* text;
};

void PrintTo(const Row& row, std::ostream* stream) {
    *stream << row.text;
}

class TextOfEachTag : public testing::TestWithParam<Row> {};

TEST_P(TextOfEachTag, IsTheNameInPMML) {
    EXPECT_STREQ(GetParam().tag, GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Elements, TextOfEachTag,
    testing::Values(
        Row{Tags::XML_ELE_PMML, "PMML"}, Row{Tags::XML_ELE_DATADICTIONARY, "DataDictionary"},
        Row{Tags::XML_ELE_SVMMODEL, "SupportVectorMachineModel"}, Row{Tags::XML_ELE_MININGSCHEMA, "MiningSchema"},
        Row{Tags::XML_ELE_MININGFIELD, "MiningField"}, Row{Tags::XML_ELE_TARGETS, "Targets"},
        Row{Tags::XML_ELE_LOCALTRANSFORMATIONS, "LocalTransformations"},
        Row{Tags::XML_ELE_TRANSFORMATION, "TransformationDictionary"}, Row{Tags::XML_ELE_APPLICATION, "Application"},
        Row{Tags::XML_ELE_EXTENSION, "Extension"}, Row{Tags::XML_ELE_SVM_KFTLINEAR, "LinearKernelType"},
        Row{Tags::XML_ELE_SVM_KFTPOLY, "PolynomialKernelType"}, Row{Tags::XML_ELE_SVM_KFTRBF, "RadialBasisKernelType"},
        Row{Tags::XML_ELE_SVM_KFTSIGMOID, "SigmoidKernelType"},
        Row{Tags::XML_ELE_SVM_VECTORDICTION, "VectorDictionary"}, Row{Tags::XML_ELE_SVM_VECTORFIELDS, "VectorFields"},
        Row{Tags::XML_ELE_SVM_VECTORINSTANCE, "VectorInstance"}, Row{Tags::XML_ELE_FIELDREF, "FieldRef"},
        Row{Tags::XML_ELE_CATEGORICAL_PREDICTOR, "CategoricalPredictor"}, Row{Tags::XML_ELE_SVM_REALARRAY, "Array"},
        Row{Tags::XML_ELE_SVM_REALSPARSEARRAY, "REAL-SparseArray"}, Row{Tags::XML_ELE_SVM_INDICES, "Indices"},
        Row{Tags::XML_ELE_SVM_REAL_ENTRIES, "REAL-Entries"}, Row{Tags::XML_ELE_SVM_ENTRIES, "Entries"},
        Row{Tags::XML_ELE_SVM_SVM, "SupportVectorMachine"}, Row{Tags::XML_ELE_SVM_SUPPORTVECTORS, "SupportVectors"},
        Row{Tags::XML_ELE_SVM_SUPPORTVECTOR, "SupportVector"}, Row{Tags::XML_ELE_SVM_COEFFICIENTS, "Coefficients"},
        Row{Tags::XML_ELE_SVM_COEFFICIENT, "Coefficient"}, Row{Tags::XML_ELE_SVM_RESPONSECATEGORY, "ResponseCategory"},
        Row{Tags::XML_ELE_SVM_PROBABILITYPARAM, "ProbabilityParam"},
        Row{Tags::XML_ELE_SVM_STANDARDDEVIATION, "StandardDeviation"}, Row{Tags::XML_ELE_HEADER, "Header"},
        Row{Tags::XML_ELE_DATAFIELD, "DataField"}, Row{Tags::XML_ELE_VALUE, "Value"},
        Row{Tags::XML_ELE_INTERVAL, "Interval"}, Row{Tags::XML_ELE_TARGET, "Target"},
        Row{Tags::XML_ELE_DERIVEDFIELD, "DerivedField"}, Row{Tags::XML_ELE_NORMCONTINUOUS, "NormContinuous"},
        Row{Tags::XML_ELE_NORMDISCRETE, "NormDiscrete"}, Row{Tags::XML_ELE_LINEARNORM, "LinearNorm"}));

INSTANTIATE_TEST_SUITE_P(
    Attributes, TextOfEachTag,
    testing::Values(Row{Tags::XML_ATT_MINING_FUNCTIONNAME, "functionName"}, Row{Tags::XML_ATT_THRESHOLD, "threshold"},
                    Row{Tags::XML_ATT_SVM_CLASSMETHOLD, "classificationMethod"},
                    Row{Tags::XML_ATT_SVM_ONEAGAINSTONE, "OneAgainstOne"}, Row{Tags::XML_ATT_SVM_MAXWINS, "maxWins"},
                    Row{Tags::XML_ATT_RM_IS_SCORABLE, "isScorable"}, Row{Tags::XML_ATT_SVM_GAMMA, "gamma"},
                    Row{Tags::XML_ATT_SVM_BIAS, "coef0"}, Row{Tags::XML_ATT_SVM_DEGREE, "degree"},
                    Row{Tags::XML_ATT_SVM_ID, "id"}, Row{Tags::XML_ATT_SVM_N, "n"},
                    Row{Tags::XML_ATT_SVM_VECTORID, "vectorId"}, Row{Tags::XML_ATT_PPC_TARGET_CAT, "targetCategory"},
                    Row{Tags::XML_ATT_SVM_ALTERNATETAGCATE, "alternateTargetCategory"},
                    Row{Tags::XML_ATT_SVM_ABSOLUTEVALUE, "absoluteValue"},
                    Row{Tags::XML_ATT_COEFFICIENT, "coefficient"}, Row{Tags::XML_ATT_VALUE, "value"},
                    Row{Tags::XML_ATT_NAME, "name"}, Row{Tags::XML_ATT_SVM_FIELD, "field"},
                    Row{Tags::XML_ATT_MISSREPVALUE, "mapMissingTo"},
                    Row{Tags::XML_ATT_MININGFIELD_MISSREPLACE, "missingValueReplacement"},
                    Row{Tags::XML_ATT_MININGFIELD_NAME, "name"}, Row{Tags::XML_ATT_MININGFIELD_USAGETYPE, "usageType"},
                    Row{Tags::XML_ATT_MF_FUT_ACTIVE, "active"}, Row{Tags::XML_ATT_MF_FUT_PREDICTED, "predicted"},
                    Row{Tags::XML_ATT_MF_FUT_TARGET, "target"}, Row{Tags::XML_ATT_VERSION, "version"},
                    Row{Tags::XML_ATT_EXTENSION_EXTENDER, "extender"}, Row{Tags::XML_ATT_SVM_RESPONSE, "response"},
                    Row{Tags::XML_ATT_SVM_NONRESPONSE, "nonresponse"}, Row{Tags::XML_ATT_SVM_PROBABILITY_A, "A"},
                    Row{Tags::XML_ATT_SVM_PROBABILITY_B, "B"}, Row{Tags::XML_ATT_PROPERTY, "property"},
                    Row{Tags::XML_ATT_CLOSURE, "closure"}, Row{Tags::XML_ATT_LEFTMARGIN, "leftMargin"},
                    Row{Tags::XML_ATT_RIGHTMARGIN, "rightMargin"}, Row{Tags::XML_ATT_DATATYPE, "dataType"},
                    Row{Tags::XML_ATT_OPTYPE, "optype"}, Row{Tags::XML_ATT_INVALIDTREATMENT, "invalidValueTreatment"},
                    Row{Tags::XML_ATT_INVALIDREPLACEMENT, "invalidValueReplacement"},
                    Row{Tags::XML_ATT_OUTLIERS, "outliers"}, Row{Tags::XML_ATT_ORIG, "orig"},
                    Row{Tags::XML_ATT_NORM, "norm"}));

INSTANTIATE_TEST_SUITE_P(Values, TextOfEachTag,
                         testing::Values(Row{Tags::XML_VAL_EXTENSION_EXTENDER, "ZARN"},
                                         Row{Tags::XML_VAL_SVM_CLASSIFICATION, "classification"},
                                         Row{Tags::XML_VAL_SVM_REGRESSION, "regression"},
                                         Row{Tags::XML_VAL_THRESHOLD, "threshold"}));

TEST(PMMLModelTags, SeparatorsAreBlankTabAndLineEnds) {
    EXPECT_STREQ(Tags::XML_VAL_SVM_SEPARATORS, " \t\n\r");
}

}  // namespace
