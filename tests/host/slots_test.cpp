// The slots of the interfaces that a plug-in and its host share, read back from the compiler.
#include <gtest/gtest.h>

#include <istream>
#include <ostream>

#include "host/BaseModel.h"
#include "host/PMMLTranslator.h"
#include "host/ScoreCaseRecord.h"
#include "host/ScoreClsResult.h"
#include "host/ScoreDictVar.h"
#include "host/ScoreDictionary.h"
#include "host/ScoreRegResult.h"
#include "host/ScoreValue.h"
#include "tests/support/virtual_slot.h"

namespace {

using KwBrevix_930::BaseModel;
using KwBrevix_930::BaseTranslator;
using KwBrevix_930::PMMLTranslator;
using KwBrevix_930::ScoreCaseRecord;
using KwBrevix_930::ScoreClsResult;
using KwBrevix_930::ScoreDictionary;
using KwBrevix_930::ScoreDictVar;
using KwBrevix_930::ScoreModel;
using KwBrevix_930::ScoreRegResult;
using KwBrevix_930::ScoreResult;
using KwBrevix_930::ScoreTranslator;
using KwBrevix_930::ScoreValue;
using KwBrevix_930::ScoreVersionInfo;
using KwBrevix_930::TransformationDictionary;
using Document = xercesc::DOMDocument;
using Element = xercesc::DOMElement;
using Text = const std::string&;

TEST(Slots, OfVariables) {
    using Variable = ScoreDictVar;
    using Value = const ScoreValue*;
    EXPECT_EQ(VirtualSlot(&Variable::GetName), 1);
    EXPECT_EQ(VirtualSlot(&Variable::IsMissing), 2);
    EXPECT_EQ(VirtualSlot(&Variable::IsValid), 3);
    EXPECT_EQ(VirtualSlot(&Variable::IsString), 4);
    EXPECT_EQ(VirtualSlot<KwBrevix_930::ScoreVarStats* (Variable::*)()>(&Variable::GetVarStats), 5);
    EXPECT_EQ(VirtualSlot<const KwBrevix_930::ScoreVarStats* (Variable::*)() const>(&Variable::GetVarStats), 6);
    EXPECT_EQ(VirtualSlot(&Variable::GetCategories), 7);
    EXPECT_EQ(VirtualSlot<int (Variable::*)(Value) const>(&Variable::GetCategoryIndex), 8);
    EXPECT_EQ(VirtualSlot<int (Variable::*)(const std::string&) const>(&Variable::GetCategoryIndex), 9);
    EXPECT_EQ(VirtualSlot(&Variable::GetIndex), 10);
    EXPECT_EQ(VirtualSlot(&Variable::SetIndex), 11);
    EXPECT_EQ(VirtualSlot(&Variable::Display), 12);
    EXPECT_EQ(VirtualSlot(&Variable::GetKind), 13);
    EXPECT_EQ(VirtualSlot(&Variable::RegisterCategory), 14);
}

TEST(Slots, OfDictionariesAndRecords) {
    using Dictionary = ScoreDictionary;
    using Record = ScoreCaseRecord;
    using Value = const ScoreValue*;
    EXPECT_EQ(VirtualSlot(&Dictionary::GetVarCount), 1);
    EXPECT_EQ(VirtualSlot(&Dictionary::GetVars), 2);
    EXPECT_EQ(VirtualSlot(&Dictionary::FindVar), 3);
    EXPECT_EQ(VirtualSlot(&Record::IsAccessedByIndex), 1);
    EXPECT_EQ(VirtualSlot<Value (Record::*)(int) const>(&Record::GetValue), 2);
    EXPECT_EQ(VirtualSlot<Value (Record::*)(const std::string&) const>(&Record::GetValue), 3);
    EXPECT_EQ(VirtualSlot(&Record::GetIndex), 4);
}

// The slots of the forms of ParseFromTree, in the class as which the object is seen.
template <typename Translator>
void ExpectTranslatorSlots() {
    using Model = ScoreModel*;
    EXPECT_EQ(VirtualSlot<Model (Translator::*)(Element*, Element*, Element*, Text)>(&Translator::ParseFromTree), 1);
    EXPECT_EQ(VirtualSlot<Model (Translator::*)(Element*, ScoreModel*, Text)>(&Translator::ParseFromTree), 2);
    EXPECT_EQ((VirtualSlot<Model (Translator::*)(Element*, ScoreDictionary*, ScoreDictionary*, Text)>(
                  &Translator::ParseFromTree)),
              3);
    EXPECT_EQ(VirtualSlot<Model (Translator::*)(Text, Text)>(&Translator::ParseFromTree), 4);
    EXPECT_EQ(VirtualSlot<Model (Translator::*)(std::istream&, Text)>(&Translator::ParseFromTree), 5);
    EXPECT_EQ(VirtualSlot<Model (Translator::*)(Document*, Text)>(&Translator::ParseFromTree), 6);
    EXPECT_EQ(VirtualSlot<void (Translator::*)(bool)>(&Translator::SetSupportOldParser), 7);
    EXPECT_EQ((VirtualSlot<Model (Translator::*)(Document*, ScoreDictionary*, Text)>(&Translator::ParseFromTree)), 8);
    EXPECT_EQ((VirtualSlot<Model (Translator::*)(std::istream&, Text, Text)>(&Translator::ParseFromTree)), 9);
}

TEST(Slots, OfTranslatorsAreTheOnesThatHostsCall) {
    ExpectTranslatorSlots<ScoreTranslator>();
    ExpectTranslatorSlots<BaseTranslator>();
    ExpectTranslatorSlots<PMMLTranslator>();
}

template <typename Model>
void ExpectModelSlots() {
    using Role = ScoreModel::VarRole;
    EXPECT_EQ(VirtualSlot<void (Model::*)(ScoreDictionary*)>(&Model::SetScoreDictionary), 1);
    EXPECT_EQ(VirtualSlot<void (Model::*)(TransformationDictionary*)>(&Model::SetTransformationScoreDictionary), 2);
    EXPECT_EQ(VirtualSlot(&Model::SetResultScoreDictionary), 3);
    EXPECT_EQ((VirtualSlot<void (Model::*)(Text, Role)>(&Model::SetVarRole)), 4);
    EXPECT_EQ((VirtualSlot<void (Model::*)(const ScoreDictVar*, Role)>(&Model::SetVarRole)), 5);
    EXPECT_EQ(VirtualSlot(&Model::SetMissingValuePolicy), 6);
    EXPECT_EQ(VirtualSlot(&Model::SetVersionInfo), 7);
    EXPECT_EQ(VirtualSlot(&Model::SetPredictionOnly), 8);
    EXPECT_EQ(VirtualSlot<Role (Model::*)(Text) const>(&Model::GetVarRole), 9);
    EXPECT_EQ(VirtualSlot<Role (Model::*)(const ScoreDictVar*) const>(&Model::GetVarRole), 10);
    EXPECT_EQ(VirtualSlot(&Model::GetVersionInfo), 11);
    EXPECT_EQ(VirtualSlot(&Model::GetVarsOfRole), 12);
    EXPECT_EQ(VirtualSlot(&Model::GetTargetVar), 13);
    EXPECT_EQ(VirtualSlot(&Model::GetDictionary), 14);
    EXPECT_EQ(VirtualSlot(&Model::GetTransformationDictionary), 15);
    EXPECT_EQ(VirtualSlot(&Model::GetResultDictionary), 16);
    EXPECT_EQ(VirtualSlot(&Model::GetScore), 17);
    EXPECT_EQ(VirtualSlot(&Model::GetMissingValuePolicy), 18);
    EXPECT_EQ(VirtualSlot(&Model::GetModelType), 19);
    EXPECT_EQ(VirtualSlot(&Model::GetPredictionOnly), 20);
    EXPECT_EQ(VirtualSlot(&Model::Display), 21);
    EXPECT_EQ((VirtualSlot<void (Model::*)(ScoreDictionary*, bool)>(&Model::SetScoreDictionary)), 22);
    EXPECT_EQ((VirtualSlot<void (Model::*)(TransformationDictionary*, bool)>(&Model::SetTransformationScoreDictionary)),
              23);
}

TEST(Slots, OfModelsAreTheOnesThatHostsCall) {
    ExpectModelSlots<ScoreModel>();
    ExpectModelSlots<BaseModel>();
}

template <typename Result>
void ExpectResultSlots() {
    EXPECT_EQ(VirtualSlot(&Result::SetPrediction), 1);
    EXPECT_EQ(VirtualSlot(&Result::GetPrediction), 2);
    EXPECT_EQ(VirtualSlot(&Result::GetTarget), 3);
    EXPECT_EQ(VirtualSlot(&Result::SetConfidence), 4);
    EXPECT_EQ(VirtualSlot(&Result::GetConfidence), 5);
    EXPECT_EQ(VirtualSlot(&Result::GetScoreResultType), 6);
}

TEST(Slots, OfResultsAreTheOnesThatHostsCall) {
    ExpectResultSlots<ScoreResult>();
    ExpectResultSlots<ScoreClsResult>();
    ExpectResultSlots<ScoreRegResult>();
    EXPECT_EQ(VirtualSlot(&ScoreClsResult::AddValuePercent), 7);
    EXPECT_EQ(VirtualSlot(&ScoreClsResult::GetPercent), 8);
    EXPECT_EQ(VirtualSlot(&ScoreClsResult::GetAllValuePercent), 9);
    EXPECT_EQ(VirtualSlot(&ScoreRegResult::SetStdDev), 7);
    EXPECT_EQ(VirtualSlot(&ScoreRegResult::GetStdDev), 8);
    EXPECT_EQ(static_cast<int>(ScoreResult::kSVMClassification), 18);
    EXPECT_EQ(static_cast<int>(ScoreResult::kSVMRegression), 19);
}

TEST(Slots, OfValuesStandInTheirOrder) {
    EXPECT_EQ(VirtualSlot(&ScoreValue::GetType), 1);
    EXPECT_EQ(VirtualSlot(&ScoreValue::GetDouble), 2);
    EXPECT_EQ(VirtualSlot(&ScoreValue::GetInt), 3);
    EXPECT_EQ(VirtualSlot(&ScoreValue::GetString), 4);
    EXPECT_EQ(VirtualSlot(&ScoreValue::GetValue), 5);
    EXPECT_EQ(VirtualSlot(&ScoreValue::Clone), 6);
    EXPECT_EQ(VirtualSlot(&ScoreValue::SetValue), 7);
    EXPECT_EQ(VirtualSlot(&ScoreValue::IsSystemMissingValue), 8);
    EXPECT_EQ(VirtualSlot(&ScoreValue::Equal), 9);
    EXPECT_EQ(VirtualSlot(&ScoreValue::operator==), 10);
    EXPECT_EQ(VirtualSlot(&ScoreValue::operator<), 11);
    EXPECT_EQ(VirtualSlot(&ScoreValue::operator<=), 12);
    EXPECT_EQ(VirtualSlot(&ScoreValue::operator>), 13);
    EXPECT_EQ(VirtualSlot(&ScoreValue::operator>=), 14);
}

}  // namespace
