// The model data record: initial values, what its operations drop and move, and who owns what.
#include "pmml/SVMModelData.h"

#include <cxxabi.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <type_traits>
#include <typeinfo>

#include <gtest/gtest.h>

#include "host/NumericValue.h"
#include "tests/support/virtual_slot.h"

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

// All fields that have a setter.
std::vector<double> FieldsOf(const SVMModelData& data) {
    return {data.GetIsClassification() ? 1.0 : 0.0,
            data.GetThreshold(),
            data.GetIsOneAgainstAll() ? 1.0 : 0.0,
            static_cast<double>(data.GetTargetCategoryCount()),
            static_cast<double>(data.GetKernelType()),
            data.GetGamma(),
            data.GetCoef0(),
            data.GetDegree(),
            data.GetIsZarnModel() ? 1.0 : 0.0,
            data.GetHasStandardDeviation() ? 1.0 : 0.0,
            data.GetIsMaxWins() ? 1.0 : 0.0};
}

TEST(SVMModelData, EachSetterChangesItsOwnFieldOnly) {
    struct Setting {
        std::size_t field;
        double value;
        void (*set)(SVMModelData&);
    };
    const Setting settings[] = {{0, 1.0, [](SVMModelData& data) { data.SetIsClassification(true); }},
                                {1, -0.375, [](SVMModelData& data) { data.SetThreshold(-0.375); }},
                                {2, 0.0, [](SVMModelData& data) { data.SetIsOneAgainstAll(false); }},
                                {3, 7.0, [](SVMModelData& data) { data.SetTargetCategoryCount(7); }},
                                {4, 3.0, [](SVMModelData& data) { data.SetKernelType(SVMModelData::kSigmoid); }},
                                {5, 0.0625, [](SVMModelData& data) { data.SetGamma(0.0625); }},
                                {6, -3.5, [](SVMModelData& data) { data.SetCoef0(-3.5); }},
                                {7, 2.75, [](SVMModelData& data) { data.SetDegree(2.75); }},
                                {8, 1.0, [](SVMModelData& data) { data.SetIsZarnModel(true); }},
                                {9, 1.0, [](SVMModelData& data) { data.SetHasStandardDeviation(true); }},
                                {10, 1.0, [](SVMModelData& data) { data.SetIsMaxWins(true); }},
                                {10, 1.0, [](SVMModelData& data) { data.SetMaxWins(); }}};
    for (const auto& [field, value, set] : settings) {
        SVMModelData data;
        std::vector<double> expected = FieldsOf(data);
        ASSERT_NE(expected[field], value) << field;
        expected[field] = value;
        set(data);
        EXPECT_EQ(FieldsOf(data), expected) << field;
        EXPECT_TRUE(data.GetVectorFieldKinds().empty() && data.GetVectorFields().empty());
        EXPECT_TRUE(data.GetVectorInstances().empty() && data.GetMachines().empty());
    }
}

TEST(SVMModelData, EachFlagCanBeTakenBack) {
    SVMModelData data;
    const std::vector<double> initial = FieldsOf(data);
    for (const bool isChanged : {true, false}) {
        data.SetIsClassification(isChanged);
        data.SetIsOneAgainstAll(!isChanged);
        data.SetIsZarnModel(isChanged);
        data.SetHasStandardDeviation(isChanged);
        data.SetIsMaxWins(isChanged);
        EXPECT_EQ(data.IsOneAgainstOne(), isChanged);
        EXPECT_EQ(FieldsOf(data) == initial, !isChanged);
    }
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

TEST(SVMModelData, HasNoBaseClass) {
    // The type of a type description tells classes without a base from those with one.
    EXPECT_EQ(typeid(typeid(SVMModelData)), typeid(abi::__class_type_info));
}

struct OneMoreOperation : SVMModelData {
    virtual void Next() {}
};

TEST(SVMModelData, TheDestructorIsItsOnlyVirtualOperation) {
    EXPECT_TRUE(std::has_virtual_destructor_v<SVMModelData>);
    EXPECT_EQ(VirtualSlot(&OneMoreOperation::Next), 1);
}

struct CountedData : SVMModelData {
    explicit CountedData(int& counter) : count(counter) {}
    ~CountedData() override { ++count; }
    int& count;
};

// Under the address sanitizer these tests show leaks and double deletion.
TEST(SVMModelData, AnEmptyRecordIsDestroyedThroughItsVirtualDestructor) {
    int deletedCount = 0;
    std::unique_ptr<SVMModelData> data = std::make_unique<CountedData>(deletedCount);
    data.reset();
    EXPECT_EQ(deletedCount, 1);
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

TEST(SVMMachine, MembersStandInThisOrder) {
    const ST_SUPPORTVECTORMACHINE machine;
    const void* const members[] = {&machine.targetCategoryIndex,
                                   &machine.alternateTargetCategoryIndex,
                                   &machine.threshold,
                                   &machine.bias,
                                   &machine.supportVectors,
                                   &machine.coefficients,
                                   &machine.extension};
    EXPECT_TRUE(std::is_sorted(std::begin(members), std::end(members), std::less<>()));
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

TEST(SVMMachineExtension, MembersStandInThisOrder) {
    const SVMMachineExtension e{0.5, 1, 2, -1.5, 0.375};
    EXPECT_EQ(e.standardDeviation, 0.5);
    EXPECT_EQ(e.responseCategoryIndex, 1);
    EXPECT_EQ(e.nonresponseCategoryIndex, 2);
    EXPECT_EQ(e.probabilityA, -1.5);
    EXPECT_EQ(e.probabilityB, 0.375);
}

}  // namespace
}  // namespace KwBrevix_930
