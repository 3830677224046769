// The translator's own wording of what can be wrong with a document. The errors that it raises go through the host's
// codes; the translator and its readers hold these texts, each its own list, made when the plug-in is loaded.
#pragma once

#include <string>

namespace KwBrevix_930::translator_messages {

const std::string kFunctionNameRequired = "functionName is required";
// Deliberate: the runs of blanks belong to the texts.
const std::string kFunctionNameValues =
    "functionName could be either classification            or regression depending on the SVM type";
const std::string kVectorDictionaryRequired = "VectorDictionary is required";
const std::string kVectorFieldsRequired = "VectorFields is required";
const std::string kVectorInstanceRequired = "VectorInstance is required";
const std::string kIdRequired = "ID is required";
const std::string kIndicesRequired = "Indices is required";
const std::string kRealEntriesRequired = "REAL-Entries is required";
const std::string kSparseArrayNotMatching = "This sparse array is not matching.";
const std::string kFieldRefNotMatching = "The FieldRef couldn't match the predictor variables";
const std::string kTargetCategoryRequired = "targetCategory is required";
const std::string kAlternateTargetCategoryRequired = "alternateTargetCategory is required";
const std::string kSupportVectorsRequired = "SupportVectors is required";
const std::string kSupportVectorRequired = "SupportVector is required";
const std::string kCoefficientsRequired = "Coefficients is required";
const std::string kCoefficientRequired = "Coefficient is required";
const std::string kVectorIdRequired = "vectorId is required";
const std::string kKernelNotFound =
    "Can't find any type of kernel for                              Support Vector Machine Model";
const std::string kInvalidModel = "Invalid a Support Vector Machine Model";

}  // namespace KwBrevix_930::translator_messages
