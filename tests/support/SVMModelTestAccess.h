// Opens the private operations of SVMModel to the tests.
#pragma once

#include "svm/PairwiseCoupling.h"
#include "svm/SVMModel.h"

namespace KwBrevix_930 {

class SVMModelTestAccess {
public:
    using Status = SVMModel::Status;
    using Indices = SVMModel::Indices;
    using Values = SVMModel::Values;
    using Vote = SVMModel::Vote;

    explicit SVMModelTestAccess(SVMModel& model) : fModel(model) {}

    SVMModelData* Data() { return fModel.fData.get(); }
    const plan::ScoringPlan* Plan() const { return fModel.fPlan.get(); }
    bool AreIndicesReady() const { return fModel.fDictVarIndicesReady; }
    Status SetUpKernel(SVMModelData* data) { return fModel.SetUpSVMKFEvaluate(data); }
    void SetUpVectorField(const std::vector<std::unique_ptr<SVMVectorField>>& fields, const Indices& types) {
        fModel.SetUpVectorField(fields, types);
    }
    void SetUpDictVarIndex(const ScoreCaseRecord* record, bool flag) { fModel.SetUpDictVarIndex(record, flag); }

    Status FillCaseRecord(ScoreResult*& result, const ScoreCaseRecord* record, bool& isComplete, Indices& indices,
                          Values& values) {
        Indices categories;
        return fModel.FillCaseRecord(result, record, isComplete, indices, values, categories);
    }
    Status ScoreByKernel(const Indices& indices, const Values& values, std::int32_t machine, double& value) {
        return fModel.ScoreSVMByKernelType(indices, values, machine, value);
    }
    Status HandleMissInvalid(bool isMissing, bool isInvalid, const ScoreDictVar* variable, ScoreResult*& result) {
        return fModel.HandleMissInvalidValue(isMissing, isInvalid, variable, result);
    }

    Status DoVoting(const Values& decisions, Vote& vote) { return fModel.DoVotingForSVMCls(decisions, vote); }
    Status VoteOneAgainstOne(const Values& decisions, Vote& vote) {
        return fModel.VoteForOneAgainstOne(decisions, vote);
    }
    Status VoteOneAgainstAll(const Values& decisions, Vote& vote) {
        return fModel.VoteForOneAgainstAll(decisions, vote);
    }
    Status BinaryTicket(const Values& decisions, std::int32_t machine, Vote& vote) {
        return fModel.GetTicketByBinaryClass(decisions, machine, vote);
    }
    Status ZarnBinaryTicket(const Values& decisions, Vote& vote) {
        return fModel.GetZARNTicketByBinaryClass(decisions, vote);
    }
    Status MultiTicket(const Values& decisions, Vote& vote) { return fModel.GetTicketByMultiClass(decisions, vote); }
    Status ZarnMultiTicket(const Values& decisions, Vote& vote) {
        return fModel.GetZARNTicketByMultiClass(decisions, vote);
    }
    Status Tickets(const Values& decisions, Indices& votes) { return fModel.GetTicketsToCategories(decisions, votes); }
    Status VoteShares(const Indices& votes, Vote& vote) { return fModel.GetProbablitiesForMultiClass(votes, vote); }
    Status PairProbabilities(const Values& decisions, std::vector<Values>& pairs) {
        return fModel.CalculateClassProbabilites(decisions, pairs);
    }
    static double Sigmoid(double decision, double a, double b) { return SVMModel::ComputeZARNZValue(decision, a, b); }
    Status Couple(const std::vector<Values>& pairs, Values& probabilities, const PairwiseCoupling& coupling = {}) {
        PairwiseCoupling::Work work;
        return fModel.DoMultiProbLearn(pairs, coupling, probabilities, work);
    }

    Status FillCls(const Vote& vote, ScoreResult*& result) { return fModel.FillSVMClsResult(vote, result); }
    Status FillZarnCls(const Vote& vote, ScoreResult*& result) { return fModel.FillSVMZARNClsResult(vote, result); }
    Status FillReg(double decision, ScoreResult*& result) { return fModel.FillSVMRegResult(decision, result); }
    Status FillZarnReg(double decision, ScoreResult*& result) { return fModel.FillSVMZARNRegResult(decision, result); }

private:
    SVMModel& fModel;
};

}  // namespace KwBrevix_930
