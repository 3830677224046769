// The four kernels in both forms.
#include "svm/SVMKernelFunction.h"

#include <bit>
#include <cmath>
#include <memory>
#include <type_traits>

#include <gtest/gtest.h>

#include "svm/SVMKFLinear.h"
#include "svm/SVMKFPolynomial.h"
#include "svm/SVMKFRBF.h"
#include "svm/SVMKFSigmoid.h"
#include "tests/support/virtual_slot.h"
#include "tests/svm/svm_samples.h"

namespace KwSVM_700 {
namespace {

using svm_samples::Indices;
using svm_samples::kInfinity;
using svm_samples::kNaN;
using svm_samples::Values;

std::uint64_t Bits(double x) {
    return std::bit_cast<std::uint64_t>(x);
}

using Dense = double (SVMKernelFunction::*)(const Values&, const Values&) const;
using Sparse = double (SVMKernelFunction::*)(const Indices&, const Values&, const Indices&, const Values&) const;

// The same three vectors in both forms: x . y = 3.0625 and |x - y|^2 = 28.015625.
const Values kX = {1.5, 0.0, -2.25, 0.0, 4.0};
const Values kY = {0.5, 3.0, -1.25, 0.0, -0.125};
const Indices kXIndices = {0, 2, 4};
const Values kXValues = {1.5, -2.25, 4.0};
const Indices kYIndices = {0, 1, 2, 4};
const Values kYValues = {0.5, 3.0, -1.25, -0.125};
constexpr double kDot = 0.75 + 2.8125 - 0.5;
constexpr double kDistance = 1.0 + 9.0 + 1.0 + 4.125 * 4.125;

void ExpectBoth(const SVMKernelFunction& kernel, double expected) {
    EXPECT_EQ(Bits(kernel.Evaluate(kX, kY)), Bits(expected));
    EXPECT_EQ(Bits(kernel.Evaluate(kXIndices, kXValues, kYIndices, kYValues)), Bits(expected));
}

TEST(SVMKernelFunction, DenseEvaluationStandsBeforeSparseBehindTheDestructor) {
    EXPECT_TRUE(std::has_virtual_destructor_v<SVMKernelFunction>);
    EXPECT_TRUE(std::is_abstract_v<SVMKernelFunction>);
    EXPECT_EQ(VirtualSlot(static_cast<Dense>(&SVMKernelFunction::Evaluate)), 1);
    EXPECT_EQ(VirtualSlot(static_cast<Sparse>(&SVMKernelFunction::Evaluate)), 2);
}

template <class Kernel>
class EveryKernel : public testing::Test {};
using Kernels = testing::Types<SVMKFLinear, SVMKFPolynomial, SVMKFRBF, SVMKFSigmoid>;
TYPED_TEST_SUITE(EveryKernel, Kernels);

TYPED_TEST(EveryKernel, IsConcreteAndHoldsItsParametersOnly) {
    EXPECT_TRUE((std::is_base_of_v<SVMKernelFunction, TypeParam>));
    EXPECT_FALSE(std::is_abstract_v<TypeParam>);
    EXPECT_TRUE(std::has_virtual_destructor_v<TypeParam>);
    // A virtual table pointer and the parameters, nothing else: no pointer into the model data.
    const std::size_t parameterCount = (sizeof(TypeParam) - sizeof(void*)) / sizeof(double);
    const std::size_t expected = std::is_same_v<TypeParam, SVMKFLinear>       ? 0u
                                 : std::is_same_v<TypeParam, SVMKFPolynomial> ? 3u
                                 : std::is_same_v<TypeParam, SVMKFRBF>        ? 1u
                                                                              : 2u;
    EXPECT_EQ(parameterCount, expected);
}

TEST(SVMKFLinear, IsTheDotProduct) {
    ExpectBoth(SVMKFLinear(), kDot);
}

TEST(SVMKFPolynomial, ScalesTheDotProductBeforeTheConstantAndRaisesTheSum) {
    ExpectBoth(SVMKFPolynomial(0.375, 1.625, 3.0), std::pow(0.375 * kDot + 1.625, 3.0));
    EXPECT_NE(std::pow(0.375 * kDot + 1.625, 3.0), std::pow(0.375 * (kDot + 1.625), 3.0));
}

TEST(SVMKFPolynomial, UsesARealDegreeAsItStands) {
    ExpectBoth(SVMKFPolynomial(0.375, 1.625, 2.5), std::pow(0.375 * kDot + 1.625, 2.5));
    ExpectBoth(SVMKFPolynomial(0.375, 1.625, -1.75), std::pow(0.375 * kDot + 1.625, -1.75));
    // 2.7734375 ^ 2.5 from the squares of exact halves: (2.7734375^5)^(1/2).
    EXPECT_NEAR(SVMKFPolynomial(0.375, 1.625, 2.5).Evaluate(kX, kY), std::sqrt(std::pow(2.7734375, 5.0)), 1e-14);
}

TEST(SVMKFPolynomial, OfANegativeBaseAndAFractionIsNaN) {
    EXPECT_TRUE(std::isnan(SVMKFPolynomial(1.0, -20.5, 2.5).Evaluate(kX, kY)));
    EXPECT_TRUE(std::isnan(SVMKFPolynomial(1.0, -20.5, 2.5).Evaluate(kXIndices, kXValues, kYIndices, kYValues)));
    EXPECT_LT(SVMKFPolynomial(1.0, -20.5, 3.0).Evaluate(kX, kY), 0.0);
}

TEST(SVMKFPolynomial, OfDegreeZeroIsOneWhateverTheBase) {
    ExpectBoth(SVMKFPolynomial(kNaN, 1.5, 0.0), 1.0);
}

TEST(SVMKFRBF, IsTheExponentialOfTheScaledSquaredDistance) {
    ExpectBoth(SVMKFRBF(0.0625), std::exp(-(0.0625 * kDistance)));
    EXPECT_NEAR(SVMKFRBF(0.0625).Evaluate(kX, kY), 0.173604325, 5e-10) << "exp(-1.7509765625)";
}

TEST(SVMKFRBF, WithoutGammaIsOneForEveryPair) {
    ExpectBoth(SVMKFRBF(0.0), 1.0);
    EXPECT_EQ(SVMKFRBF(0.0).Evaluate(Values{}, Values{}), 1.0);
}

TEST(SVMKFRBF, WithNegativeGammaGrows) {
    ExpectBoth(SVMKFRBF(-0.0625), std::exp(0.0625 * kDistance));
}

TEST(SVMKFRBF, OfInfiniteDistanceIsZero) {
    EXPECT_EQ(SVMKFRBF(0.5).Evaluate({kInfinity}, {1.5}), 0.0);
    EXPECT_TRUE(std::isnan(SVMKFRBF(0.0).Evaluate({kInfinity}, {1.5})));
}

TEST(SVMKFSigmoid, ScalesTheDotProductBeforeTheConstant) {
    ExpectBoth(SVMKFSigmoid(0.125, -0.75), std::tanh(0.125 * kDot - 0.75));
    EXPECT_NE(std::tanh(0.125 * kDot - 0.75), std::tanh(0.125 * (kDot - 0.75)));
}

TEST(SVMKFSigmoid, EndsAtOneForInfinity) {
    EXPECT_EQ(SVMKFSigmoid(1.0, 0.5).Evaluate({kInfinity}, {1.5}), 1.0);
    EXPECT_EQ(SVMKFSigmoid(1.0, 0.5).Evaluate({kInfinity}, {-1.5}), -1.0);
}

TEST(SVMKernelFunction, OfAnEmptyCaseUsesOnlyTheParametersAndTheSupportVector) {
    const Indices none;
    const Values nothing;
    EXPECT_EQ(SVMKFLinear().Evaluate(none, nothing, kYIndices, kYValues), 0.0);
    EXPECT_EQ(SVMKFPolynomial(0.375, 1.625, 2.5).Evaluate(none, nothing, kYIndices, kYValues), std::pow(1.625, 2.5));
    EXPECT_EQ(SVMKFSigmoid(0.375, 0.625).Evaluate(none, nothing, kYIndices, kYValues), std::tanh(0.625));
    const double squares = 0.25 + 9.0 + 1.5625 + 0.015625;
    EXPECT_EQ(SVMKFRBF(0.0625).Evaluate(none, nothing, kYIndices, kYValues), std::exp(-(0.0625 * squares)));
}

TEST(SVMKernelFunction, OfDisjointVectorsSeesNoProductAndBothSquares) {
    const Indices xIndices = {0, 2};
    const Indices yIndices = {1, 5};
    const Values x = {1.5, 2.5};
    const Values y = {3.5, 4.5};
    EXPECT_EQ(SVMKFLinear().Evaluate(xIndices, x, yIndices, y), 0.0);
    EXPECT_EQ(SVMKFPolynomial(0.375, 1.625, 3.0).Evaluate(xIndices, x, yIndices, y), std::pow(1.625, 3.0));
    EXPECT_EQ(SVMKFRBF(0.03125).Evaluate(xIndices, x, yIndices, y),
              std::exp(-(0.03125 * (2.25 + 12.25 + 6.25 + 20.25))));
}

TEST(SVMKernelFunction, LetsNaNFlowOn) {
    const std::unique_ptr<SVMKernelFunction> kernels[] = {
        std::make_unique<SVMKFLinear>(), std::make_unique<SVMKFPolynomial>(1.0, 0.5, 2.0),
        std::make_unique<SVMKFRBF>(0.5), std::make_unique<SVMKFSigmoid>(1.0, 0.5)};
    for (const auto& kernel : kernels) {
        EXPECT_TRUE(std::isnan(kernel->Evaluate({1.5, kNaN}, {2.5, 3.5})));
        EXPECT_TRUE(std::isnan(kernel->Evaluate({0, 1}, {1.5, kNaN}, {1}, {2.5})));
        EXPECT_TRUE(std::isnan(kernel->Evaluate({1}, {2.5}, {0, 1}, {1.5, kNaN})));
    }
}

}  // namespace
}  // namespace KwSVM_700
