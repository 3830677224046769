// Order of the virtual operations of the model and of both results.
#include <type_traits>

#include <gtest/gtest.h>

#include "svm/SVMClsResult.h"
#include "svm/SVMModel.h"
#include "svm/SVMRegResult.h"
#include "tests/support/virtual_slot.h"

namespace KwBrevix_930 {
namespace {

using Role = ScoreModel::VarRole;

template <class Model>
class ModelSlots : public testing::Test {};
using Models = testing::Types<ScoreModel, BaseModel, SVMModel>;
TYPED_TEST_SUITE(ModelSlots, Models);

TYPED_TEST(ModelSlots, StandInTheirFixedOrder) {
    using M = TypeParam;
    EXPECT_TRUE(std::has_virtual_destructor_v<M>);
    EXPECT_EQ(VirtualSlot(static_cast<void (M::*)(ScoreDictionary*)>(&M::SetScoreDictionary)), 1);
    EXPECT_EQ(VirtualSlot(static_cast<void (M::*)(TransformationDictionary*)>(&M::SetTransformationScoreDictionary)),
              2);
    EXPECT_EQ(VirtualSlot(&M::SetResultScoreDictionary), 3);
    EXPECT_EQ(VirtualSlot(static_cast<void (M::*)(const std::string&, Role)>(&M::SetVarRole)), 4);
    EXPECT_EQ(VirtualSlot(static_cast<void (M::*)(const ScoreDictVar*, Role)>(&M::SetVarRole)), 5);
    EXPECT_EQ(VirtualSlot(&M::SetMissingValuePolicy), 6);
    EXPECT_EQ(VirtualSlot(&M::SetVersionInfo), 7);
    EXPECT_EQ(VirtualSlot(&M::SetPredictionOnly), 8);
    EXPECT_EQ(VirtualSlot(static_cast<Role (M::*)(const std::string&) const>(&M::GetVarRole)), 9);
    EXPECT_EQ(VirtualSlot(static_cast<Role (M::*)(const ScoreDictVar*) const>(&M::GetVarRole)), 10);
    EXPECT_EQ(VirtualSlot(&M::GetVersionInfo), 11);
    EXPECT_EQ(VirtualSlot(&M::GetVarsOfRole), 12);
    EXPECT_EQ(VirtualSlot(&M::GetTargetVar), 13);
    EXPECT_EQ(VirtualSlot(&M::GetDictionary), 14);
    EXPECT_EQ(VirtualSlot(&M::GetTransformationDictionary), 15);
    EXPECT_EQ(VirtualSlot(&M::GetResultDictionary), 16);
    EXPECT_EQ(VirtualSlot(&M::GetScore), 17);
    EXPECT_EQ(VirtualSlot(&M::GetMissingValuePolicy), 18);
    EXPECT_EQ(VirtualSlot(&M::GetModelType), 19);
    EXPECT_EQ(VirtualSlot(&M::GetPredictionOnly), 20);
    EXPECT_EQ(VirtualSlot(&M::Display), 21);
    EXPECT_EQ(VirtualSlot(static_cast<void (M::*)(ScoreDictionary*, bool)>(&M::SetScoreDictionary)), 22);
    EXPECT_EQ(
        VirtualSlot(static_cast<void (M::*)(TransformationDictionary*, bool)>(&M::SetTransformationScoreDictionary)),
        23);
}

TEST(SVMModelSlots, OtherOperationsAreNotVirtual) {
    EXPECT_EQ(VirtualSlot(&SVMModel::SetSupportVectorMachineModel), -1);
    EXPECT_EQ(VirtualSlot(&SVMModel::SetTargetVar), -1);
    EXPECT_EQ(VirtualSlot(&SVMModel::SetTargetCategories), -1);
    EXPECT_EQ(VirtualSlot(&SVMModel::GetTargetCategories), -1);
}

template <class Result>
void ExpectCommonSlots() {
    EXPECT_TRUE(std::has_virtual_destructor_v<Result>);
    EXPECT_EQ(VirtualSlot(&Result::SetPrediction), 1);
    EXPECT_EQ(VirtualSlot(&Result::GetPrediction), 2);
    EXPECT_EQ(VirtualSlot(&Result::GetTarget), 3);
    EXPECT_EQ(VirtualSlot(&Result::SetConfidence), 4);
    EXPECT_EQ(VirtualSlot(&Result::GetConfidence), 5);
    EXPECT_EQ(VirtualSlot(&Result::GetScoreResultType), 6);
}

TEST(ResultSlots, StandInTheirFixedOrder) {
    ExpectCommonSlots<ScoreResult>();
    ExpectCommonSlots<ScoreClsResult>();
    ExpectCommonSlots<ScoreRegResult>();
    ExpectCommonSlots<SVMClsResult>();
    ExpectCommonSlots<SVMRegResult>();
    EXPECT_EQ(VirtualSlot(&SVMClsResult::AddValuePercent), 7);
    EXPECT_EQ(VirtualSlot(&SVMClsResult::GetPercent), 8);
    EXPECT_EQ(VirtualSlot(&SVMClsResult::GetAllValuePercent), 9);
    EXPECT_EQ(VirtualSlot(&SVMRegResult::SetStdDev), 7);
    EXPECT_EQ(VirtualSlot(&SVMRegResult::GetStdDev), 8);
}

TEST(ResultSlots, OtherOperationsAreNotVirtual) {
    EXPECT_EQ(VirtualSlot(&SVMClsResult::RemoveValuePercent), -1);
    EXPECT_EQ(VirtualSlot(&SVMRegResult::SetCI), -1);
    EXPECT_EQ(VirtualSlot(&SVMRegResult::GetCI), -1);
}

}  // namespace
}  // namespace KwBrevix_930
