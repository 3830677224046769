// The translator's own wordings, character by character, and their place in the built library.
#include "pmml/translator_messages.h"

#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

namespace KwBrevix_930::translator_messages {
namespace {

TEST(TranslatorMessages, AreWordedExactlySo) {
    EXPECT_EQ(kFunctionNameRequired, "functionName is required");
    EXPECT_EQ(kVectorDictionaryRequired, "VectorDictionary is required");
    EXPECT_EQ(kVectorFieldsRequired, "VectorFields is required");
    EXPECT_EQ(kVectorInstanceRequired, "VectorInstance is required");
    EXPECT_EQ(kIdRequired, "ID is required");
    EXPECT_EQ(kIndicesRequired, "Indices is required");
    EXPECT_EQ(kRealEntriesRequired, "REAL-Entries is required");
    EXPECT_EQ(kSparseArrayNotMatching, "This sparse array is not matching.");
    EXPECT_EQ(kFieldRefNotMatching, "The FieldRef couldn't match the predictor variables");
    EXPECT_EQ(kTargetCategoryRequired, "targetCategory is required");
    EXPECT_EQ(kAlternateTargetCategoryRequired, "alternateTargetCategory is required");
    EXPECT_EQ(kSupportVectorsRequired, "SupportVectors is required");
    EXPECT_EQ(kSupportVectorRequired, "SupportVector is required");
    EXPECT_EQ(kCoefficientsRequired, "Coefficients is required");
    EXPECT_EQ(kCoefficientRequired, "Coefficient is required");
    EXPECT_EQ(kVectorIdRequired, "vectorId is required");
    EXPECT_EQ(kInvalidModel, "Invalid a Support Vector Machine Model");
}

TEST(TranslatorMessages, OfFunctionNameHoldsTwelveBlanks) {
    EXPECT_EQ(kFunctionNameValues, "functionName could be either classification" + std::string(12, ' ') +
                                       "or regression depending on the SVM type");
}

TEST(TranslatorMessages, OfTheKernelHoldsThirtyBlanks) {
    EXPECT_EQ(kKernelNotFound,
              "Can't find any type of kernel for" + std::string(30, ' ') + "Support Vector Machine Model");
}

// An optimising build could leave out texts that no error carries.
TEST(TranslatorMessages, AreAllInTheBuiltLibrary) {
    std::ifstream file(BREVIX_SVM_FILE, std::ios::binary);
    ASSERT_TRUE(file) << BREVIX_SVM_FILE;
    const std::string library((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    for (const std::string& message :
         {kFunctionNameRequired, kFunctionNameValues, kVectorDictionaryRequired, kVectorFieldsRequired,
          kVectorInstanceRequired, kIdRequired, kIndicesRequired, kRealEntriesRequired, kSparseArrayNotMatching,
          kFieldRefNotMatching, kTargetCategoryRequired, kAlternateTargetCategoryRequired, kSupportVectorsRequired,
          kSupportVectorRequired, kCoefficientsRequired, kCoefficientRequired, kVectorIdRequired, kKernelNotFound,
          kInvalidModel})
        EXPECT_NE(library.find(message), std::string::npos) << message;
}

}  // namespace
}  // namespace KwBrevix_930::translator_messages
