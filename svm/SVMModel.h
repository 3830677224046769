// A support vector machine model, scored case by case.
#pragma once

#include <cstdint>
#include <exception>
#include <memory>
#include <string>
#include <vector>

#include "host/BaseModel.h"
#include "host/IBatchModel.h"
#include "pmml/SVMModelData.h"
#include "svm/PairwiseCoupling.h"
#include "svm/SVMKernelFunction.h"

namespace KwBrevix_930 {

class ScoreValue;
namespace plan {
class ScoringPlan;
}

/// Built by the translator: it is given its dictionaries, then its data, and then scores any number of cases. The first
/// case that is accessed by index fixes the dictionary indices of the input fields; from then on scoring only reads the
/// model, so that any number of threads may score at once. The order of summation is fixed everywhere: left to right.
class SVMModel : public BaseModel, public IBatchModel {
public:
    SVMModel();
    ~SVMModel() override;

    /// Takes the data over and sets up everything that depends on it: model type, input variables, kernel. Data held so
    /// far is deleted. Null is ignored. A missing dictionary or an unknown kernel type shows only when a case is
    /// scored. Data that is changed afterwards has to be handed over again: the same pointer will do.
    void SetSupportVectorMachineModel(SVMModelData* data);
    /// Returns: the data, owned here; null before any was set.
    const SVMModelData* GetSupportVectorMachineModel() const { return fData.get(); }

    /// target: not owned.
    void SetTargetVar(const ScoreDictVar* target);

    /// Looks the target variable up and collects its categories, whose order gives the category indices.
    void SetTargetCategories();
    const std::vector<ScoreValue*>& GetTargetCategories() const { return fTargetCategoryValues; }
    const std::vector<std::string>& GetTargetCategoryNames() const { return fTargetCategoryNames; }

    /// Returns: one variable for each column of the vector space, null for a column whose field is nowhere to be found.
    const std::vector<ScoreDictVar*>& GetInputVars() const { return fInputVars; }
    const KwSVM_700::SVMKernelFunction* GetKernel() const { return fKernel.get(); }

    void SetPredictionOnly(bool predictionOnly) override;
    ScoreDictionary* GetVarsOfRole(VarRole role) const override;

    /// record: its values are read, by index where it says so, otherwise by name. result: null, and then created here
    /// and owned by the caller, or a result that this model made before, which is filled anew. flag: handed to the
    /// set-up of the dictionary indices.
    /// Returns: success; 90029 when the record, the data, the target or the kernel is missing, or an input that no
    /// replacement excuses; 90027 for an invalid input, or when no category can be chosen. Under the policies
    /// kUseReplacement and kMarkAsMissing a missing input leaves a result whose prediction is the system-missing value
    /// or the empty text.
    KwScore::KwStatus GetScore(const ScoreCaseRecord* record, ScoreResult*& result, bool flag) override;
    void ScoreCases(std::size_t count, const ScoreCaseRecord* const* records, ScoreResult** results,
                    KwScore::KwStatus* statuses, bool flag) override;
    bool ScoreNumbers(std::size_t count, const double* const* columns, std::size_t columnCount, double* numbers,
                      KwScore::KwStatus* statuses) override;
    ModelType GetModelType() const override;
    bool GetPredictionOnly() const override;
    void Display(std::ostream& stream) const override;

private:
    friend class SVMModelTestAccess;

    using Status = KwScore::KwStatus;
    using Indices = std::vector<std::int32_t>;
    using Values = std::vector<double>;

    // What the voting operations answer with; the caller initialises it. Behind the answer stands what they work in,
    // kept so that its memory serves the next case.
    struct Vote {
        std::int32_t category = -1;
        double confidence = 0.0;
        Values probabilities;

        Indices tickets = {};
        std::vector<Values> pairs = {};
        PairwiseCoupling::Work coupling = {};

        // Returns: roughly how many numbers there is room for.
        std::size_t GetRoom() const;
    };
    class Workspace;

    // The numbers of a regression's result.
    struct Deviation {
        double deviation;
        double lower;
        double upper;
    };

    // Every vote that few machines can cast, and what ScoreNumbers gives for it. A vote's place has a bit for each
    // machine, set where that one picks its target category. Empty where a vote depends on more than that.
    struct VoteTable {
        Values thresholds = {};
        std::vector<Vote> votes = {};
        std::vector<Status> statuses = {};
        Values numbers = {};
    };

    // Set-up.
    void SetUpModelType(bool isClassification);
    void SetUpVectorField(const std::vector<std::unique_ptr<SVMVectorField>>& fields, const Indices& types);
    void SetUpFirstColumns(const Indices& types);
    Status SetUpSVMKFEvaluate(SVMModelData* data);
    void SetUpPlan();
    void SetUpVoteTable();
    void SetUpDictVarIndex(const ScoreCaseRecord* record, bool flag);
    ScoreDictVar* FindInputVar(const std::string& name) const;

    // Case scoring.
    Status CheckReady(const ScoreCaseRecord* record) const;
    void CreateResult(ScoreResult*& result) const;
    Status PrepareCase(const ScoreCaseRecord* record, ScoreResult*& result, bool flag);
    Status ReadCase(const ScoreCaseRecord& record, ScoreResult*& result, Workspace& work) const;
    Status DecideCase(ScoreResult*& result, Workspace& work) const;
    Status FillResult(Workspace& work, ScoreResult*& result) const;
    std::size_t ReadCases(std::size_t count, const ScoreCaseRecord* const* records, ScoreResult** results,
                          Status* statuses, bool flag, Workspace& work, std::exception_ptr& fault);
    void ReadOneOfCases(std::size_t place, std::size_t stride, const ScoreCaseRecord* record, ScoreResult*& result,
                        Status& status, bool flag, Workspace& work);
    void DecideCases(std::size_t stride, ScoreResult** results, Status* statuses, Workspace& work) const;
    void DecideColumns(std::size_t cases, Workspace& work) const;
    static void TakeDecisions(const double* decisions, std::size_t count, Workspace& work);
    Status FillNumbers(const double* decisions, double* numbers, Workspace& work) const;
    std::size_t GetNumberCount() const;
    bool FindSources(std::size_t first, std::size_t cases, const double* const* columns, std::size_t columnCount,
                     Workspace& work) const;
    std::size_t GetDecisionCount() const;
    std::size_t GetMostTogether() const;
    static void Trace(const Status& status);
    Status FillCaseRecord(ScoreResult*& result, const ScoreCaseRecord* record, bool& isComplete, Indices& indices,
                          Values& values, Indices& categories) const;
    Status ReadInput(std::size_t position, const ScoreCaseRecord& record, const ScoreCaseRecord* derived,
                     ScoreResult*& result, double& number, std::int32_t& category) const;
    double EncodeInput(std::size_t position, const ScoreValue& value, std::int32_t& category) const;
    bool IsCategory(std::size_t position) const;
    double EncodeCategory(std::size_t position, std::int32_t category) const;
    Status ScoreSVMByKernelType(const Indices& indices, const Values& values, std::int32_t machine,
                                double& value) const;
    bool IsPlannedFor(std::size_t machineCount, std::size_t columnCount) const;
    Status ComputeDecisions(Workspace& work) const;
    Status ScoreSVMClsModel(ScoreResult*& result, Workspace& work) const;
    Status ScoreSVMRegModel(ScoreResult*& result, Workspace& work) const;
    bool IsMissScoreValue(const ScoreDictVar* variable, const ScoreValue* value) const;
    bool IsInvalidScoreValue(const ScoreDictVar* variable, const ScoreValue* value) const;
    const ScoreValue* GetMissReplacement(const ScoreDictVar* variable) const;
    Status HandleMissInvalidValue(bool isMissing, bool isInvalid, const ScoreDictVar* variable,
                                  ScoreResult*& result) const;
    void MarkPredictionMissing(ScoreResult& result) const;

    // Voting: decisions holds one value a machine, in machine order.
    Status CastVote(const Values& decisions, Vote& vote) const;
    Status DoVotingForSVMCls(const Values& decisions, Vote& vote) const;
    Status VoteForOneAgainstOne(const Values& decisions, Vote& vote) const;
    Status VoteForOneAgainstAll(const Values& decisions, Vote& vote) const;
    static std::int32_t PickCategory(const ST_SUPPORTVECTORMACHINE& machine, bool isMaxWins, double decision);
    Status GetTicketByBinaryClass(const Values& decisions, std::int32_t machine, Vote& vote) const;
    Status GetZARNTicketByBinaryClass(const Values& decisions, Vote& vote) const;
    Status GetTicketByMultiClass(const Values& decisions, Vote& vote) const;
    Status GetZARNTicketByMultiClass(const Values& decisions, Vote& vote) const;
    Status GetTicketsToCategories(const Values& decisions, Indices& votes) const;
    Status GetProbablitiesForMultiClass(const Indices& votes, Vote& vote) const;                   // sic
    Status CalculateClassProbabilites(const Values& decisions, std::vector<Values>& pairs) const;  // sic
    static double ComputeZARNZValue(double decision, double a, double b);
    Status DoMultiProbLearn(const std::vector<Values>& pairs, const PairwiseCoupling& coupling, Values& probabilities,
                            PairwiseCoupling::Work& work) const;
    bool IsVoteOfPicks() const;
    bool HasVoteTableFor(std::size_t machineCount) const;
    std::size_t FindPicks(const double* decisions) const;

    // Results.
    Status FillSVMClsResult(const Vote& vote, ScoreResult*& result) const;
    Status FillSVMZARNClsResult(const Vote& vote, ScoreResult*& result) const;
    Status FillSVMRegResult(double decision, ScoreResult*& result) const;
    Status FillSVMZARNRegResult(double decision, ScoreResult*& result) const;
    bool IsKnownCategory(std::int32_t category) const;
    bool HasProbabilities(const Vote& vote) const;
    Status WriteVote(const Vote& vote, double* numbers) const;
    void WriteRegression(double decision, double* numbers) const;
    bool FindDeviation(double decision, Deviation& found) const;

    bool fPredictionOnly = false;
    const ScoreDictVar* fTargetVar = nullptr;
    ModelType fModelType = kNoModelType;
    bool fDictVarIndicesReady = false;
    std::unique_ptr<SVMModelData> fData;
    std::vector<ScoreDictVar*> fInputVars;
    // Of each column that stands for a category, the first one of the same variable; otherwise the column itself.
    std::vector<std::size_t> fFirstColumns;
    std::vector<std::string> fTargetCategoryNames;
    std::vector<ScoreValue*> fTargetCategoryValues;
    std::unique_ptr<KwSVM_700::SVMKernelFunction> fKernel;
    // Of the data and the kernel; null where there is none.
    std::unique_ptr<const plan::ScoringPlan> fPlan;
    VoteTable fVoteTable;
};

}  // namespace KwBrevix_930
