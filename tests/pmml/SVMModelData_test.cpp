// The model data record: initial values, what its operations drop and move, and who owns what.
#include "pmml/SVMModelData.h"

#include <limits>
#include <type_traits>

#include <gtest/gtest.h>

#include "host/NumericValue.h"

namespace KwBrevix_930 {
namespace {

constexpr std::int32_t kLowestIndex = std::numeric_limits<std::int32_t>::min();

TEST(SVMModelData, StartsWithTheseValues) {
    const SVMModelData data;
    EXPECT_FALSE(data.GetIsClassification());
    EXPECT_EQ(data.GetThreshold(), 0.0);
    EXPECT_TRUE(data.GetIsOneAgainstAll());
    EXPECT_FALSE(data.IsOneAgainstOne());
    EXPECT_EQ(data.GetTargetCategoryCount(), 1);
    EXPECT_FALSE(data.IsMultiClass());
    EXPECT_TRUE(data.GetVectorFieldKinds().empty());
    EXPECT_TRUE(data.GetVectorFields().empty());
    EXPECT_TRUE(data.GetVectorInstances().empty());
    EXPECT_TRUE(data.GetMachines().empty());
    EXPECT_EQ(data.GetKernelType(), SVMModelData::kKernelNotSet);
    EXPECT_EQ(data.GetGamma(), 1.0);
    EXPECT_EQ(data.GetCoef0(), 1.0);
    EXPECT_EQ(data.GetDegree(), 1.0);
    EXPECT_FALSE(data.GetIsZarnModel());
    EXPECT_FALSE(data.GetHasStandardDeviation());
    EXPECT_FALSE(data.GetIsMaxWins());
}

TEST(SVMModelData, EachSetterChangesItsOwnFieldOnly) {
    SVMModelData data;
    data.SetThreshold(-0.375);
    data.SetGamma(0.0625);
    data.SetCoef0(-3.5);
    data.SetDegree(2.75);
    data.SetKernelType(SVMModelData::kSigmoid);
    data.SetTargetCategoryCount(7);
    EXPECT_EQ(data.GetThreshold(), -0.375);
    EXPECT_EQ(data.GetGamma(), 0.0625);
    EXPECT_EQ(data.GetCoef0(), -3.5);
    EXPECT_EQ(data.GetDegree(), 2.75);
    EXPECT_EQ(data.GetKernelType(), 3);
    EXPECT_EQ(data.GetTargetCategoryCount(), 7);
    EXPECT_FALSE(data.GetIsClassification());
    EXPECT_TRUE(data.GetIsOneAgainstAll());
    EXPECT_FALSE(data.GetIsMaxWins());
}

TEST(SVMModelData, EachFlagIsItsOwn) {
    const auto flags = [](const SVMModelData& data) {
        return std::vector<bool>{data.GetIsClassification(), !data.GetIsOneAgainstAll(), data.GetIsZarnModel(),
                                 data.GetHasStandardDeviation(), data.GetIsMaxWins()};
    };
    SVMModelData classification, pairs, zarn, deviation, wins, bySetter;
    classification.SetIsClassification(true);
    pairs.SetIsOneAgainstAll(false);
    zarn.SetIsZarnModel(true);
    deviation.SetHasStandardDeviation(true);
    wins.SetMaxWins();
    bySetter.SetIsMaxWins(true);
    EXPECT_EQ(flags(classification), (std::vector<bool>{true, false, false, false, false}));
    EXPECT_EQ(flags(pairs), (std::vector<bool>{false, true, false, false, false}));
    EXPECT_EQ(flags(zarn), (std::vector<bool>{false, false, true, false, false}));
    EXPECT_EQ(flags(deviation), (std::vector<bool>{false, false, false, true, false}));
    EXPECT_EQ(flags(wins), (std::vector<bool>{false, false, false, false, true}));
    EXPECT_EQ(flags(bySetter), flags(wins));
    EXPECT_TRUE(pairs.IsOneAgainstOne());
    pairs.SetIsOneAgainstAll(true);
    EXPECT_FALSE(pairs.IsOneAgainstOne());
}

TEST(SVMModelData, ACategoryCountBelowOneIsIgnored) {
    SVMModelData data;
    data.SetTargetCategoryCount(4);
    data.SetTargetCategoryCount(0);
    EXPECT_EQ(data.GetTargetCategoryCount(), 4);
    data.SetTargetCategoryCount(-3);
    EXPECT_EQ(data.GetTargetCategoryCount(), 4);
    data.SetTargetCategoryCount(1);
    EXPECT_EQ(data.GetTargetCategoryCount(), 1);
}

TEST(SVMModelData, MoreThanTwoCategoriesAreMultiClass) {
    SVMModelData data;
    data.SetTargetCategoryCount(2);
    EXPECT_FALSE(data.IsMultiClass());
    data.SetTargetCategoryCount(3);
    EXPECT_TRUE(data.IsMultiClass());
}

TEST(SVMModelData, AddFieldRefAppendsAColumnOfKindZeroAndEmptiesTheStrings) {
    SVMModelData data;
    std::string name = "a field whose name is too long for a string without memory of its own";
    std::string value = "0.375, just as long as the name, so that it is moved and not only copied";
    const std::string nameBefore = name, valueBefore = value;
    data.AddFieldRef(name, value);
    EXPECT_TRUE(name.empty());
    EXPECT_TRUE(value.empty());
    ASSERT_EQ(data.GetVectorFields().size(), 1u);
    EXPECT_EQ(data.GetVectorFieldKinds(), std::vector<std::int32_t>{0});
    EXPECT_EQ(data.GetVectorFields()[0]->fieldName, nameBefore);
    EXPECT_EQ(data.GetVectorFields()[0]->value, valueBefore);
    EXPECT_EQ(data.GetVectorFields()[0]->coefficient, 0.0);
}

TEST(SVMModelData, AddCategoricalPredictorAppendsAColumnOfKindOneAndEmptiesTheStrings) {
    SVMModelData data;
    std::string first = "x", noValue;
    data.AddFieldRef(first, noValue);
    std::string name = "color", value = "red";
    data.AddCategoricalPredictor(name, value, -2.375);
    EXPECT_TRUE(name.empty());
    EXPECT_TRUE(value.empty());
    EXPECT_EQ(data.GetVectorFieldKinds(), (std::vector<std::int32_t>{0, 1}));
    ASSERT_EQ(data.GetVectorFields().size(), 2u);
    EXPECT_EQ(data.GetVectorFields()[1]->fieldName, "color");
    EXPECT_EQ(data.GetVectorFields()[1]->value, "red");
    EXPECT_EQ(data.GetVectorFields()[1]->coefficient, -2.375);
}

TEST(SVMModelData, AnInstanceIsStoredWithItsIndicesMinusOneAndNeitherSortedNorChecked) {
    SVMModelData data;
    data.AddVectorInstance("v", {7, 0, 7, -4, kLowestIndex + 1}, {0.5, -1.25, 2.0, 3.5, 4.75});
    const SVMVectorInstance& instance = *data.GetVectorInstances().at("v");
    EXPECT_EQ(instance.normCache, -1.0);
    EXPECT_EQ(instance.indices, (std::vector<std::int32_t>{6, -1, 6, -5, kLowestIndex}));
    EXPECT_EQ(instance.values, (std::vector<double>{0.5, -1.25, 2.0, 3.5, 4.75}));
}

TEST(SVMModelData, AnInstanceWithoutIdOrIndicesOrWithOtherLengthIsDroppedSilently) {
    SVMModelData data;
    data.AddVectorInstance("", {1}, {0.5});
    data.AddVectorInstance("empty", {}, {});
    data.AddVectorInstance("values only", {}, {0.5});
    data.AddVectorInstance("indices only", {1}, {});
    data.AddVectorInstance("longer", {1, 2, 3}, {0.5, 0.25});
    EXPECT_TRUE(data.GetVectorInstances().empty());
}

TEST(SVMModelData, OfTwoInstancesWithOneIdTheFirstIsKept) {
    SVMModelData data;
    data.AddVectorInstance("v", {1}, {0.625});
    data.AddVectorInstance("v", {2}, {-0.375});
    ASSERT_EQ(data.GetVectorInstances().size(), 1u);
    EXPECT_EQ(data.GetVectorInstances().at("v")->indices, std::vector<std::int32_t>{0});
    EXPECT_EQ(data.GetVectorInstances().at("v")->values, std::vector<double>{0.625});
}

TEST(SVMModelData, ADroppedInstanceLeavesItsIdFree) {
    SVMModelData data;
    data.AddVectorInstance("v", {}, {});
    data.AddVectorInstance("v", {3}, {0.875});
    EXPECT_EQ(data.GetVectorInstances().at("v")->values, std::vector<double>{0.875});
}

TEST(SVMModelData, InstancesStandInTheOrderOfTheirIds) {
    SVMModelData data;
    for (const char* id : {"v10", "a", "v2"})
        data.AddVectorInstance(id, {1}, {1.5});
    std::string ids;
    for (const auto& [id, instance] : data.GetVectorInstances())
        ids += id + ' ';
    EXPECT_EQ(ids, "a v10 v2 ");
}

TEST(SVMModelData, GettersReturnTheVectorsThemselves) {
    SVMModelData data;
    data.GetMachines().push_back(std::make_unique<ST_SUPPORTVECTORMACHINE>());
    data.GetVectorFieldKinds().push_back(1);
    const SVMModelData& same = data;
    EXPECT_EQ(&same.GetMachines(), &data.GetMachines());
    EXPECT_EQ(&same.GetVectorFieldKinds(), &data.GetVectorFieldKinds());
    EXPECT_EQ(&same.GetVectorFields(), &data.GetVectorFields());
    EXPECT_EQ(&same.GetVectorInstances(), &data.GetVectorInstances());
    EXPECT_EQ(same.GetMachines().size(), 1u);
}

// Under the address sanitizer these tests show leaks and double deletion.
TEST(SVMModelData, AnEmptyRecordIsDestroyedThroughItsVirtualDestructor) {
    static_assert(std::has_virtual_destructor_v<SVMModelData>);
    static_assert(std::has_virtual_destructor_v<ST_SUPPORTVECTORMACHINE>);
    const auto data = std::make_unique<SVMModelData>();
    EXPECT_NE(data, nullptr);
}

struct CountedMachine : ST_SUPPORTVECTORMACHINE {
    explicit CountedMachine(int& counter) : count(counter) {}
    ~CountedMachine() override { ++count; }
    int& count;
};

TEST(SVMModelData, DeletesFieldsInstancesAndEachMachineThroughItsVirtualDestructor) {
    int deletedCount = 0;
    {
        SVMModelData data;
        std::string name = "x", value;
        data.AddFieldRef(name, value);
        data.AddVectorInstance("v", {1}, {0.5});
        for (int i = 0; i < 3; ++i) {
            auto machine = std::make_unique<CountedMachine>(deletedCount);
            machine->supportVectors.push_back(data.GetVectorInstances().at("v").get());
            machine->extension = std::make_unique<SVMMachineExtension>();
            data.GetMachines().push_back(std::move(machine));
        }
    }
    EXPECT_EQ(deletedCount, 3);
}

TEST(SVMMachine, StartsWithTheseValues) {
    const ST_SUPPORTVECTORMACHINE machine;
    EXPECT_EQ(machine.targetCategoryIndex, -1);
    EXPECT_EQ(machine.alternateTargetCategoryIndex, -1);
    EXPECT_EQ(machine.threshold, 0.0);
    EXPECT_EQ(machine.bias, 0.0);
    EXPECT_TRUE(machine.supportVectors.empty());
    EXPECT_TRUE(machine.coefficients.empty());
    EXPECT_EQ(machine.extension, nullptr);
}

TEST(SVMMachine, NeverFreesTheInstancesThatItPointsAt) {
    SVMModelData data;
    data.AddVectorInstance("v", {2}, {0.6875});
    SVMVectorInstance* instance = data.GetVectorInstances().at("v").get();
    auto machine = std::make_unique<ST_SUPPORTVECTORMACHINE>();
    machine->supportVectors = {instance, instance};
    machine.reset();
    EXPECT_EQ(instance->values, std::vector<double>{0.6875});
}

TEST(SVMMachineExtension, StartsWithSystemMissingNumbersAndNoCategory) {
    const SVMMachineExtension extension;
    const double missing = NumericValue::GetSysmisValue();
    EXPECT_EQ(extension.standardDeviation, missing);
    EXPECT_EQ(extension.probabilityA, missing);
    EXPECT_EQ(extension.probabilityB, missing);
    EXPECT_EQ(extension.responseCategoryIndex, -1);
    EXPECT_EQ(extension.nonresponseCategoryIndex, -1);
}

}  // namespace
}  // namespace KwBrevix_930
