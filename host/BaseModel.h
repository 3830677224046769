// What every model has in common: dictionaries, roles, missing-value policy, version.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/ScoreModel.h"

namespace KwBrevix_930 {

/// Implements the slots that do not depend on the kind of model.
class BREVIX_HOST_API BaseModel : public ScoreModel {
public:
    BaseModel();
    ~BaseModel() override;

    void SetScoreDictionary(ScoreDictionary* dictionary) override;
    void SetTransformationScoreDictionary(TransformationDictionary* dictionary) override;
    void SetResultScoreDictionary(ScoreDictionary* dictionary) override;
    void SetVarRole(const std::string& name, VarRole role) override;
    void SetVarRole(const ScoreDictVar* variable, VarRole role) override;
    /// Derived fields follow the policy too: missing inputs are replaced before derivation under policy 0 only.
    void SetMissingValuePolicy(MVPolicy policy) override;
    void SetVersionInfo(ScoreVersionInfo* version) override;
    VarRole GetVarRole(const std::string& name) const override;
    VarRole GetVarRole(const ScoreDictVar* variable) const override;
    const ScoreVersionInfo* GetVersionInfo() const override;
    const ScoreDictVar* GetTargetVar() const override;
    ScoreDictionary* GetDictionary() const override;
    TransformationDictionary* GetTransformationDictionary() const override;
    ScoreDictionary* GetResultDictionary() const override;
    MVPolicy GetMissingValuePolicy() const override;
    void SetScoreDictionary(ScoreDictionary* dictionary, bool owned) override;
    void SetTransformationScoreDictionary(TransformationDictionary* dictionary, bool owned) override;

private:
    void TellPolicy();

    ScoreDictionary* fDictionary = nullptr;
    std::unique_ptr<ScoreDictionary> fOwnedDictionary;
    TransformationDictionary* fTransformations = nullptr;
    std::unique_ptr<TransformationDictionary> fOwnedTransformations;
    ScoreDictionary* fResultDictionary = nullptr;
    std::unique_ptr<ScoreVersionInfo> fVersion;
    std::unordered_map<std::string, VarRole> fRoles;
    // The names that were ever given the role target, in order.
    std::vector<std::string> fTargets;
    MVPolicy fPolicy = kUseReplacement;
};

}  // namespace KwBrevix_930
