// The names of PMML elements, attributes and values.
#pragma once

#include "host/Export.h"

namespace KwBrevix_930 {

/// Constant zero-terminated narrow strings; code reads them only by name.
class BREVIX_HOST_API PMMLModelTags {
public:
    static const char* const XML_ELE_PMML;
    static const char* const XML_ELE_HEADER;
    static const char* const XML_ELE_DATADICTIONARY;
    static const char* const XML_ELE_SVMMODEL;
    static const char* const XML_ELE_MININGSCHEMA;
    static const char* const XML_ELE_MININGFIELD;
    static const char* const XML_ELE_TARGETS;
    static const char* const XML_ELE_LOCALTRANSFORMATIONS;
    static const char* const XML_ELE_TRANSFORMATION;
    static const char* const XML_ELE_APPLICATION;
    static const char* const XML_ELE_EXTENSION;
    static const char* const XML_ELE_SVM_KFTLINEAR;
    static const char* const XML_ELE_SVM_KFTPOLY;
    static const char* const XML_ELE_SVM_KFTRBF;
    static const char* const XML_ELE_SVM_KFTSIGMOID;
    static const char* const XML_ELE_SVM_VECTORDICTION;
    static const char* const XML_ELE_SVM_VECTORFIELDS;
    static const char* const XML_ELE_SVM_VECTORINSTANCE;
    static const char* const XML_ELE_FIELDREF;
    static const char* const XML_ELE_CATEGORICAL_PREDICTOR;
    static const char* const XML_ELE_SVM_REALARRAY;
    static const char* const XML_ELE_SVM_REALSPARSEARRAY;
    static const char* const XML_ELE_SVM_INDICES;
    static const char* const XML_ELE_SVM_REAL_ENTRIES;
    static const char* const XML_ELE_SVM_ENTRIES;
    static const char* const XML_ELE_SVM_SVM;
    static const char* const XML_ELE_SVM_SUPPORTVECTORS;
    static const char* const XML_ELE_SVM_SUPPORTVECTOR;
    static const char* const XML_ELE_SVM_COEFFICIENTS;
    static const char* const XML_ELE_SVM_COEFFICIENT;
    static const char* const XML_ELE_SVM_RESPONSECATEGORY;
    static const char* const XML_ELE_SVM_PROBABILITYPARAM;
    static const char* const XML_ELE_SVM_STANDARDDEVIATION;
    static const char* const XML_ATT_MINING_FUNCTIONNAME;
    static const char* const XML_ATT_THRESHOLD;
    static const char* const XML_ATT_SVM_CLASSMETHOLD;  // sic
    static const char* const XML_ATT_SVM_ONEAGAINSTONE;
    static const char* const XML_ATT_SVM_MAXWINS;
    static const char* const XML_ATT_RM_IS_SCORABLE;
    static const char* const XML_ATT_SVM_GAMMA;
    static const char* const XML_ATT_SVM_BIAS;
    static const char* const XML_ATT_SVM_DEGREE;
    static const char* const XML_ATT_SVM_ID;
    static const char* const XML_ATT_SVM_N;
    static const char* const XML_ATT_SVM_VECTORID;
    static const char* const XML_ATT_PPC_TARGET_CAT;
    static const char* const XML_ATT_SVM_ALTERNATETAGCATE;  // sic
    static const char* const XML_ATT_SVM_ABSOLUTEVALUE;
    static const char* const XML_ATT_SVM_RESPONSE;
    static const char* const XML_ATT_SVM_NONRESPONSE;
    static const char* const XML_ATT_SVM_PROBABILITY_A;
    static const char* const XML_ATT_SVM_PROBABILITY_B;
    static const char* const XML_ATT_COEFFICIENT;
    static const char* const XML_ATT_VALUE;
    static const char* const XML_ATT_NAME;
    static const char* const XML_ATT_SVM_FIELD;
    static const char* const XML_ATT_MISSREPVALUE;
    static const char* const XML_ATT_MININGFIELD_MISSREPLACE;
    static const char* const XML_ATT_MININGFIELD_NAME;
    static const char* const XML_ATT_MININGFIELD_USAGETYPE;
    static const char* const XML_ATT_MF_FUT_ACTIVE;
    static const char* const XML_ATT_MF_FUT_PREDICTED;
    static const char* const XML_ATT_MF_FUT_TARGET;
    static const char* const XML_ATT_VERSION;
    static const char* const XML_ATT_EXTENSION_EXTENDER;
    static const char* const XML_VAL_EXTENSION_EXTENDER;
    static const char* const XML_VAL_SVM_CLASSIFICATION;
    static const char* const XML_VAL_SVM_REGRESSION;
    static const char* const XML_VAL_SVM_SEPARATORS;
    static const char* const XML_VAL_THRESHOLD;
    static const char* const XML_ELE_DATAFIELD;
    static const char* const XML_ELE_VALUE;
    static const char* const XML_ELE_INTERVAL;
    static const char* const XML_ELE_TARGET;
    static const char* const XML_ATT_PROPERTY;
    static const char* const XML_ATT_CLOSURE;
    static const char* const XML_ATT_LEFTMARGIN;
    static const char* const XML_ATT_RIGHTMARGIN;
    static const char* const XML_ATT_DATATYPE;
    static const char* const XML_ATT_OPTYPE;
    static const char* const XML_ATT_INVALIDTREATMENT;
    static const char* const XML_ATT_INVALIDREPLACEMENT;
    static const char* const XML_ELE_DERIVEDFIELD;
    static const char* const XML_ELE_NORMCONTINUOUS;
    static const char* const XML_ELE_NORMDISCRETE;
    static const char* const XML_ELE_LINEARNORM;
    static const char* const XML_ATT_OUTLIERS;
    static const char* const XML_ATT_ORIG;
    static const char* const XML_ATT_NORM;
};

}  // namespace KwBrevix_930
