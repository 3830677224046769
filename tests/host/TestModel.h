// The smallest model that can be made: the base's slots, and nothing to score.
#pragma once

#include <ostream>

#include "host/BaseModel.h"

class TestModel : public KwBrevix_930::BaseModel {
public:
    void SetPredictionOnly(bool predictionOnly) override { fPredictionOnly = predictionOnly; }
    KwBrevix_930::ScoreDictionary* GetVarsOfRole(VarRole) const override { return nullptr; }
    KwScore::KwStatus GetScore(const KwBrevix_930::ScoreCaseRecord*, KwBrevix_930::ScoreResult*&, bool) override {
        return {};
    }
    ModelType GetModelType() const override { return kNoModelType; }
    bool GetPredictionOnly() const override { return fPredictionOnly; }
    void Display(std::ostream& stream) const override { stream << "test model"; }

private:
    bool fPredictionOnly = false;
};
