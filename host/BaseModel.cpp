// What every model has in common.
#include "host/BaseModel.h"

#include "host/IBatchModel.h"

#include <algorithm>

#include "host/ScoreDictVar.h"
#include "host/ScoreDictionary.h"
#include "host/ScoreVersionInfo.h"
#include "host/transform/TransformationDictionary.h"

namespace KwBrevix_930 {

IBatchModel::~IBatchModel() = default;

ScoreVersionInfo::~ScoreVersionInfo() = default;
ScoreModel::~ScoreModel() = default;

namespace {

// Handing over the object that is held already only changes who owns it.
template <typename T>
void SetOwned(std::unique_ptr<T>& holder, T* object, bool owned) {
    if (holder.get() == object)
        (void)holder.release();
    holder.reset(owned ? object : nullptr);
}

}  // namespace

BaseModel::BaseModel() = default;
BaseModel::~BaseModel() = default;

void BaseModel::SetScoreDictionary(ScoreDictionary* dictionary) {
    SetScoreDictionary(dictionary, false);
}

void BaseModel::SetScoreDictionary(ScoreDictionary* dictionary, bool owned) {
    fDictionary = dictionary;
    SetOwned(fOwnedDictionary, dictionary, owned);
}

void BaseModel::SetTransformationScoreDictionary(TransformationDictionary* dictionary) {
    SetTransformationScoreDictionary(dictionary, false);
}

void BaseModel::SetTransformationScoreDictionary(TransformationDictionary* dictionary, bool owned) {
    fTransformations = dictionary;
    SetOwned(fOwnedTransformations, dictionary, owned);
    TellPolicy();
}

void BaseModel::SetResultScoreDictionary(ScoreDictionary* dictionary) {
    fResultDictionary = dictionary;
}

void BaseModel::SetVarRole(const std::string& name, VarRole role) {
    fRoles[name] = role;
    if (role == kTarget && std::find(fTargets.begin(), fTargets.end(), name) == fTargets.end())
        fTargets.push_back(name);
}

void BaseModel::SetVarRole(const ScoreDictVar* variable, VarRole role) {
    if (variable)
        SetVarRole(variable->GetName(), role);
}

void BaseModel::SetMissingValuePolicy(MVPolicy policy) {
    fPolicy = policy;
    TellPolicy();
}

void BaseModel::TellPolicy() {
    if (fTransformations)
        fTransformations->SetUsesReplacements(fPolicy == kUseReplacement);
}

void BaseModel::SetVersionInfo(ScoreVersionInfo* version) {
    SetOwned(fVersion, version, true);
}

ScoreModel::VarRole BaseModel::GetVarRole(const std::string& name) const {
    const auto found = fRoles.find(name);
    return found == fRoles.end() ? kNoRole : found->second;
}

ScoreModel::VarRole BaseModel::GetVarRole(const ScoreDictVar* variable) const {
    return variable ? GetVarRole(variable->GetName()) : kNoRole;
}

const ScoreVersionInfo* BaseModel::GetVersionInfo() const {
    return fVersion.get();
}

const ScoreDictVar* BaseModel::GetTargetVar() const {
    const auto isTarget = [this](const std::string& name) { return GetVarRole(name) == kTarget; };
    const auto first = std::find_if(fTargets.begin(), fTargets.end(), isTarget);
    return first == fTargets.end() || !fDictionary ? nullptr : fDictionary->FindVar(*first);
}

ScoreDictionary* BaseModel::GetDictionary() const {
    return fDictionary;
}

TransformationDictionary* BaseModel::GetTransformationDictionary() const {
    return fTransformations;
}

ScoreDictionary* BaseModel::GetResultDictionary() const {
    return fResultDictionary;
}

ScoreModel::MVPolicy BaseModel::GetMissingValuePolicy() const {
    return fPolicy;
}

}  // namespace KwBrevix_930
