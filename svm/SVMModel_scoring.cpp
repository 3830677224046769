// SVMModel: scoring one case. The input vector has one entry for each column: its position and its value.
#include "svm/SVMModel.h"

#include "host/ExtendedPrecision.h"
#include "host/NumericValue.h"
#include "host/ScoreCaseRecord.h"
#include "host/ScoreDictVar.h"
#include "host/ScoringLog.h"
#include "host/StringValue.h"
#include "host/transform/TransformationDictionary.h"
#include "svm/SVMClsResult.h"
#include "svm/SVMModelWorkspace.h"
#include "svm/SVMRegResult.h"
#include "svm/plan/ScoringPlan.h"
#include "svm/status_codes.h"

namespace KwBrevix_930 {

KwScore::KwStatus SVMModel::GetScore(const ScoreCaseRecord* record, ScoreResult*& result, bool flag) {
    const ExtendedPrecision precision;
    Status status = PrepareCase(record, result, flag);
    if (!status.IsError()) {
        Lent<Workspace> lent;
        status = ReadCase(*record, result, *lent);
        if (!status.IsError())
            status = DecideCase(result, *lent);
    }
    Trace(status);
    return status;
}

void SVMModel::Trace(const Status& status) {
    if (status.IsError())
        ScoringLog::GetInstance().TraceText(1, "KwStatus error code is :%ld", static_cast<long>(status.GetErrorCode()));
}

// Everything that comes before the inputs.
SVMModel::Status SVMModel::PrepareCase(const ScoreCaseRecord* record, ScoreResult*& result, bool flag) {
    const Status status = CheckReady(record);
    if (record && !fDictVarIndicesReady && record->IsAccessedByIndex())
        SetUpDictVarIndex(record, flag);
    if (!status.IsError() && !result)
        CreateResult(result);
    return status;
}

SVMModel::Status SVMModel::CheckReady(const ScoreCaseRecord* record) const {
    return record && fData && fTargetVar ? Status() : kMissingStatus;
}

void SVMModel::CreateResult(ScoreResult*& result) const {
    if (fData->GetIsClassification())
        result = new SVMClsResult(fTargetVar);
    else
        result = new SVMRegResult(fTargetVar);
}

SVMModel::Status SVMModel::ReadCase(const ScoreCaseRecord& record, ScoreResult*& result, Workspace& work) const {
    work.indices.clear();
    work.values.clear();
    bool isComplete = false;
    return FillCaseRecord(result, &record, isComplete, work.indices, work.values, work.categories);
}

SVMModel::Status SVMModel::DecideCase(ScoreResult*& result, Workspace& work) const {
    return fData->GetIsClassification() ? ScoreSVMClsModel(result, work) : ScoreSVMRegModel(result, work);
}

// isComplete: whether every column was given its value. categories: where a variable's category is kept once it is
// looked up, for all columns that stand for one of its categories.
SVMModel::Status SVMModel::FillCaseRecord(ScoreResult*& result, const ScoreCaseRecord* record, bool& isComplete,
                                          Indices& indices, Values& values, Indices& categories) const {
    const auto* transformations = GetTransformationDictionary();
    const ScoreCaseRecord* derived = transformations && GetDictionary()
                                         ? transformations->GetValuesForDerivedVars(record, GetDictionary())
                                         : nullptr;
    indices.reserve(fInputVars.size());
    values.reserve(fInputVars.size());
    categories.resize(fInputVars.size());
    Status status;
    for (std::size_t i = 0; i < fInputVars.size() && !status.IsError(); ++i) {
        double number = 0.0;
        if (fFirstColumns[i] < i && IsCategory(i) && IsCategory(fFirstColumns[i]))
            number = EncodeCategory(i, categories[fFirstColumns[i]]);
        else
            status = ReadInput(i, *record, derived, result, number, categories[i]);
        if (!status.IsError()) {
            indices.push_back(static_cast<std::int32_t>(i));
            values.push_back(number);
        }
    }
    isComplete = indices.size() == fInputVars.size();
    return indices.size() > fInputVars.size() ? kInvalidStatus : status;
}

SVMModel::Status SVMModel::ReadInput(std::size_t position, const ScoreCaseRecord& record,
                                     const ScoreCaseRecord* derived, ScoreResult*& result, double& number,
                                     std::int32_t& category) const {
    const ScoreDictVar* variable = fInputVars[position];
    if (!variable)
        return kMissingStatus;
    const ScoreValue* value = record.GetValueOf(*variable);
    if (!value && derived)
        value = derived->GetValueOf(*variable);
    const bool isMissing = IsMissScoreValue(variable, value);
    const bool isInvalid = !isMissing && IsInvalidScoreValue(variable, value);
    if (isMissing || isInvalid) {
        const Status status = HandleMissInvalidValue(isMissing, isInvalid, variable, result);
        if (status.IsError())
            return status;
    }
    // A replacement excuses a missing value, but the record must hold it.
    if (!value)
        return kMissingStatus;
    number = EncodeInput(position, *value, category);
    return {};
}

// Kinds are looked up by position. A model that was given data without columns keeps the input variables of the data
// before, for which there are none.
bool SVMModel::IsCategory(std::size_t position) const {
    const Indices& kinds = fData->GetVectorFieldKinds();
    return position < kinds.size() && kinds[position] == SVMVectorField::kCategoricalPredictor;
}

double SVMModel::EncodeInput(std::size_t position, const ScoreValue& value, std::int32_t& category) const {
    if (IsCategory(position)) {
        category = fInputVars[position]->GetCategoryIndex(&value);
        return EncodeCategory(position, category);
    }
    const Indices& kinds = fData->GetVectorFieldKinds();
    const bool isNumber = position < kinds.size() && kinds[position] == SVMVectorField::kFieldRef;
    return isNumber ? value.GetDouble() : 0.0;
}

double SVMModel::EncodeCategory(std::size_t position, std::int32_t category) const {
    return category == fData->GetVectorFields()[position]->categoryIndex ? 1.0 : 0.0;
}

bool SVMModel::IsMissScoreValue(const ScoreDictVar* variable, const ScoreValue* value) const {
    return !value || variable->IsMissing(value);
}

bool SVMModel::IsInvalidScoreValue(const ScoreDictVar* variable, const ScoreValue* value) const {
    return !variable->IsValid(value);
}

const ScoreValue* SVMModel::GetMissReplacement(const ScoreDictVar* variable) const {
    return variable->GetVarStats()->GetMissingReplacement();
}

SVMModel::Status SVMModel::HandleMissInvalidValue(bool isMissing, bool isInvalid, const ScoreDictVar* variable,
                                                  ScoreResult*& result) const {
    if (!result || !variable)
        return {};
    if (isMissing) {
        const MVPolicy policy = GetMissingValuePolicy();
        if (policy == kUseReplacement && GetMissReplacement(variable))
            return {};
        if (policy == kUseReplacement || policy == kMarkAsMissing)
            MarkPredictionMissing(*result);
        return kMissingStatus;
    }
    return isInvalid ? kInvalidStatus : Status();
}

void SVMModel::MarkPredictionMissing(ScoreResult& result) const {
    std::unique_ptr<ScoreValue> absent;
    if (fTargetVar->IsString())
        absent = std::make_unique<StringValue>("");
    else
        absent = std::make_unique<NumericValue>(NumericValue::GetSysmisValue());
    if (result.GetScoreResultType() == ScoreResult::kSVMClassification)
        static_cast<SVMClsResult&>(result).SetOwnedPrediction(std::move(absent));
    else
        result.SetPrediction(absent.release());
}

SVMModel::Status SVMModel::ScoreSVMByKernelType(const Indices& indices, const Values& values, std::int32_t machine,
                                                double& value) const {
    if (!fData || machine < 0 || static_cast<std::size_t>(machine) >= fData->GetMachines().size())
        return {};
    const ST_SUPPORTVECTORMACHINE* itsMachine = fData->GetMachines()[static_cast<std::size_t>(machine)].get();
    if (!itsMachine)
        return {};
    if (!fKernel && !itsMachine->coefficients.empty())
        return kMissingStatus;
    for (std::size_t k = 0; k < itsMachine->coefficients.size(); ++k) {
        const bool isThere = k < itsMachine->supportVectors.size() && itsMachine->supportVectors[k];
        if (!isThere || itsMachine->supportVectors[k]->values.size() < itsMachine->supportVectors[k]->indices.size())
            return kMissingStatus;
        const SVMVectorInstance& vector = *itsMachine->supportVectors[k];
        value += fKernel->Evaluate(indices, values, vector.indices, vector.values) * itsMachine->coefficients[k];
    }
    value += itsMachine->bias;
    return {};
}

bool SVMModel::IsPlannedFor(std::size_t machineCount, std::size_t columnCount) const {
    return fPlan && fPlan->GetMachineCount() == machineCount && fPlan->GetColumnCount() == columnCount;
}

// As many decision values as there is room for; by the plan where it fits, and with the same bits by the plain loops
// where not.
SVMModel::Status SVMModel::ComputeDecisions(Workspace& work) const {
    const Values& values = work.values;
    const std::size_t count = work.decisions.size();
    double* decisions = work.decisions.data();
    if (IsPlannedFor(count, values.size())) {
        fPlan->Decide(values.data(), decisions, work.plan);
        return {};
    }
    Status status;
    for (std::size_t machine = 0; machine < count && !status.IsError(); ++machine) {
        decisions[machine] = 0.0;
        status = ScoreSVMByKernelType(work.indices, values, static_cast<std::int32_t>(machine), decisions[machine]);
    }
    return status;
}

SVMModel::Status SVMModel::ScoreSVMClsModel(ScoreResult*& result, Workspace& work) const {
    work.decisions.resize(fData->GetMachines().size());
    const Status status = ComputeDecisions(work);
    return status.IsError() ? status : FillResult(work, result);
}

// Deliberate: of several machines only the first counts, and without inputs the result is left as it is.
SVMModel::Status SVMModel::ScoreSVMRegModel(ScoreResult*& result, Workspace& work) const {
    if (work.indices.empty())
        return {};
    work.decisions.resize(1);
    const Status status = ComputeDecisions(work);
    return status.IsError() ? status : FillResult(work, result);
}

// From the decision values of a case.
SVMModel::Status SVMModel::FillResult(Workspace& work, ScoreResult*& result) const {
    if (!fData->GetIsClassification())
        return FillSVMRegResult(work.decisions.front(), result);
    if (HasVoteTableFor(work.decisions.size())) {
        const std::size_t picks = FindPicks(work.decisions.data());
        const Status known = fVoteTable.statuses[picks];
        return known.IsError() ? known : FillSVMClsResult(fVoteTable.votes[picks], result);
    }
    const Status status = CastVote(work.decisions, work.vote);
    return status.IsError() ? status : FillSVMClsResult(work.vote, result);
}

}  // namespace KwBrevix_930
