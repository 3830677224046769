// Copies of the settings record.
#include "svm/SVMSettings.h"

#include <cstddef>

#include <gtest/gtest.h>

namespace KwSVM_700 {
namespace {

SVMSettings Sample() {
    SVMSettings settings;
    settings.svmType = 3;
    settings.kernelType = 2;
    settings.maxIterations = 12345;
    settings.cacheMegabytes = 77;
    settings.degree = 2.5;
    settings.gamma = 0.375;
    settings.coef0 = -1.75;
    settings.targetName = "a name that is longer than any small buffer of a string";
    settings.foldCount = 11;
    settings.weightCount = 4;
    settings.usesShrinking = true;
    settings.estimatesProbability = true;
    settings.cost = 17.5;
    settings.nu = 0.4375;
    settings.epsilon = 0.0625;
    settings.tolerance = 0.00390625;
    return settings;
}

void ExpectSample(const SVMSettings& settings) {
    EXPECT_EQ(settings.svmType, 3);
    EXPECT_EQ(settings.kernelType, 2);
    EXPECT_EQ(settings.maxIterations, 12345);
    EXPECT_EQ(settings.cacheMegabytes, 77);
    EXPECT_EQ(settings.degree, 2.5);
    EXPECT_EQ(settings.gamma, 0.375);
    EXPECT_EQ(settings.coef0, -1.75);
    EXPECT_EQ(settings.targetName, "a name that is longer than any small buffer of a string");
    EXPECT_EQ(settings.foldCount, 11);
    EXPECT_EQ(settings.weightCount, 4);
    EXPECT_TRUE(settings.usesShrinking);
    EXPECT_TRUE(settings.estimatesProbability);
    EXPECT_EQ(settings.cost, 17.5);
    EXPECT_EQ(settings.nu, 0.4375);
    EXPECT_EQ(settings.epsilon, 0.0625);
    EXPECT_EQ(settings.tolerance, 0.00390625);
}

TEST(SVMSettings, ACopyHoldsEveryMemberAndNothingOfTheOriginal) {
    SVMSettings original = Sample();
    const SVMSettings copy(original);
    original.targetName[0] = 'A';
    original.gamma = 1.0;
    ExpectSample(copy);
}

TEST(SVMSettings, AnAssignmentReplacesEveryMember) {
    SVMSettings settings;
    const SVMSettings sample = Sample();
    EXPECT_EQ(&(settings = sample), &settings);
    ExpectSample(settings);
    const SVMSettings& self = settings;
    settings = self;
    ExpectSample(settings);
}

TEST(SVMSettings, FlagsAreBytes) {
    EXPECT_EQ(sizeof(SVMSettings::usesShrinking), 1u);
    EXPECT_EQ(sizeof(SVMSettings::estimatesProbability), 1u);
    EXPECT_EQ(offsetof(SVMSettings, estimatesProbability), offsetof(SVMSettings, usesShrinking) + 1);
}

}  // namespace
}  // namespace KwSVM_700
