// The interface of every scoring model.
#pragma once

#include <iosfwd>
#include <string>

#include "host/Export.h"
#include "host/KwStatus.h"

namespace KwBrevix_930 {

class ScoreCaseRecord;
class ScoreDictVar;
class ScoreDictionary;
class ScoreResult;
class ScoreVersionInfo;
class TransformationDictionary;

/// Abstract; virtual operations stand in slot order, slot 0 is the destructor. Set-up runs on one thread, before
/// scoring.
/// Note:    slots count in the order of declaration; MSVC lays adjacent overloads out in reverse (docs/windows.md).
class BREVIX_HOST_API ScoreModel {
public:
    enum ModelType { kNoModelType = 0, kSVMClassification = 29, kSVMRegression = 30 };
    enum VarRole { kNoRole = 0, kActive = 1, kTarget = 2, kSupplementary = 3 };
    /// What a missing input does: see the model's GetScore.
    enum MVPolicy { kUseReplacement = 0, kMarkAsMissing = 1, kLeavePrediction = 2 };

    ScoreModel() {}
    ScoreModel(const ScoreModel&) = delete;
    ScoreModel& operator=(const ScoreModel&) = delete;
    virtual ~ScoreModel();

    /// Slot 1. The dictionary stays the caller's and must outlive the model.
    virtual void SetScoreDictionary(ScoreDictionary* dictionary) = 0;
    /// Slot 2. The dictionary stays the caller's and must outlive the model.
    virtual void SetTransformationScoreDictionary(TransformationDictionary* dictionary) = 0;
    /// Slot 3. The dictionary stays the caller's.
    virtual void SetResultScoreDictionary(ScoreDictionary* dictionary) = 0;
    /// Slot 4.
    virtual void SetVarRole(const std::string& name, VarRole role) = 0;
    /// Slot 5. A null variable is ignored.
    virtual void SetVarRole(const ScoreDictVar* variable, VarRole role) = 0;
    /// Slot 6.
    virtual void SetMissingValuePolicy(MVPolicy policy) = 0;
    /// Slot 7. The model takes the object over.
    virtual void SetVersionInfo(ScoreVersionInfo* version) = 0;
    /// Slot 8. Whether results carry the prediction alone.
    virtual void SetPredictionOnly(bool predictionOnly) = 0;
    /// Slot 9.
    /// Returns: the role of a variable, kNoRole where none was set.
    virtual VarRole GetVarRole(const std::string& name) const = 0;
    /// Slot 10.
    virtual VarRole GetVarRole(const ScoreDictVar* variable) const = 0;
    /// Slot 11.
    /// Returns: the version of the producing application, owned by the model; may be null.
    virtual const ScoreVersionInfo* GetVersionInfo() const = 0;
    /// Slot 12.
    /// Returns: a new dictionary with copies of the variables of a role, owned by the caller; null for none.
    virtual ScoreDictionary* GetVarsOfRole(VarRole role) const = 0;
    /// Slot 13.
    /// Returns: the first variable that was given the role target; null where there is none.
    virtual const ScoreDictVar* GetTargetVar() const = 0;
    /// Slot 14.
    virtual ScoreDictionary* GetDictionary() const = 0;
    /// Slot 15.
    virtual TransformationDictionary* GetTransformationDictionary() const = 0;
    /// Slot 16.
    virtual ScoreDictionary* GetResultDictionary() const = 0;
    /// Slot 17. Scores one case; a null result is created and handed to the caller, who owns it.
    virtual KwScore::KwStatus GetScore(const ScoreCaseRecord* record, ScoreResult*& result, bool flag) = 0;
    /// Slot 18.
    virtual MVPolicy GetMissingValuePolicy() const = 0;
    /// Slot 19.
    virtual ModelType GetModelType() const = 0;
    /// Slot 20.
    virtual bool GetPredictionOnly() const = 0;
    /// Slot 21. Writes the model for a reader.
    virtual void Display(std::ostream& stream) const = 0;
    /// Slot 22. owned: whether the model deletes the dictionary at its end.
    virtual void SetScoreDictionary(ScoreDictionary* dictionary, bool owned) = 0;
    /// Slot 23. owned: whether the model deletes the dictionary at its end.
    virtual void SetTransformationScoreDictionary(TransformationDictionary* dictionary, bool owned) = 0;
};

}  // namespace KwBrevix_930
