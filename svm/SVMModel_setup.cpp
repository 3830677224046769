// SVMModel: taking over the data, and everything that scoring needs to find ready.
#include "svm/SVMModel.h"

#include <ostream>
#include <unordered_map>

#include "host/BaseDictionary.h"
#include "host/ScoreCaseRecord.h"
#include "host/transform/TransformationDictionary.h"
#include "svm/SVMKFLinear.h"
#include "svm/SVMKFPolynomial.h"
#include "svm/SVMKFRBF.h"
#include "svm/SVMKFSigmoid.h"
#include "svm/plan/ScoringPlan.h"

namespace KwBrevix_930 {

SVMModel::SVMModel() {
    SetMissingValuePolicy(kUseReplacement);
}

SVMModel::~SVMModel() = default;

void SVMModel::SetSupportVectorMachineModel(SVMModelData* data) {
    if (!data)
        return;
    fPlan.reset();
    fVoteTable = {};
    if (data != fData.get())
        fData.reset(data);
    SetUpModelType(fData->GetIsClassification());
    SetUpVectorField(fData->GetVectorFields(), fData->GetVectorFieldKinds());
    SetUpSVMKFEvaluate(fData.get());
    SetUpPlan();
    SetUpVoteTable();
}

void SVMModel::SetUpModelType(bool isClassification) {
    fModelType = isClassification ? kSVMClassification : kSVMRegression;
}

void SVMModel::SetUpVectorField(const std::vector<std::unique_ptr<SVMVectorField>>& fields, const Indices& types) {
    if (fields.empty() || !GetDictionary())
        return;
    fInputVars.clear();
    for (std::size_t k = 0; k < fields.size(); ++k) {
        if (types[k] != SVMVectorField::kFieldRef && types[k] != SVMVectorField::kCategoricalPredictor)
            continue;
        ScoreDictVar* variable = FindInputVar(fields[k]->fieldName);
        if (types[k] == SVMVectorField::kCategoricalPredictor) {
            const int index = variable ? variable->RegisterCategory(fields[k]->value) : -1;
            fields[k]->categoryIndex = index >= 0 ? index : SVMVectorField::kUnknownCategory;
        }
        fInputVars.push_back(variable);
    }
    SetUpFirstColumns(types);
}

// Kinds are looked up by position, as scoring does.
void SVMModel::SetUpFirstColumns(const Indices& types) {
    std::unordered_map<const ScoreDictVar*, std::size_t> firstOf;
    fFirstColumns.clear();
    for (std::size_t column = 0; column < fInputVars.size(); ++column) {
        const bool isCategory = column < types.size() && types[column] == SVMVectorField::kCategoricalPredictor;
        fFirstColumns.push_back(isCategory ? firstOf.emplace(fInputVars[column], column).first->second : column);
    }
}

ScoreDictVar* SVMModel::FindInputVar(const std::string& name) const {
    ScoreDictVar* variable = GetDictionary()->FindVar(name);
    if (!variable && GetTransformationDictionary())
        variable = GetTransformationDictionary()->FindVar(name);
    return variable;
}

SVMModel::Status SVMModel::SetUpSVMKFEvaluate(SVMModelData* data) {
    if (!data)
        return {};
    fPlan.reset();
    fKernel.reset();
    switch (data->GetKernelType()) {
        case SVMModelData::kLinear:
            fKernel = std::make_unique<KwSVM_700::SVMKFLinear>();
            break;
        case SVMModelData::kPolynomial:
            fKernel =
                std::make_unique<KwSVM_700::SVMKFPolynomial>(data->GetGamma(), data->GetCoef0(), data->GetDegree());
            break;
        case SVMModelData::kRadialBasis:
            fKernel = std::make_unique<KwSVM_700::SVMKFRBF>(data->GetGamma());
            break;
        case SVMModelData::kSigmoid:
            fKernel = std::make_unique<KwSVM_700::SVMKFSigmoid>(data->GetGamma(), data->GetCoef0());
            break;
        default:
            break;
    }
    return {};
}

// Data without columns keeps the input variables of the data before, whose values do not count.
void SVMModel::SetUpPlan() {
    if (fKernel && GetDictionary() && !fData->GetVectorFields().empty())
        fPlan = plan::ScoringPlan::Make(*fData, *fKernel, fInputVars.size());
}

void SVMModel::SetUpDictVarIndex(const ScoreCaseRecord* record, bool) {
    if (fDictVarIndicesReady || !GetDictionary())
        return;
    for (ScoreDictVar* variable : GetDictionary()->GetVars())
        variable->SetIndex(record->GetIndex(variable->GetName()));
    fDictVarIndicesReady = true;
}

void SVMModel::SetTargetVar(const ScoreDictVar* target) {
    fTargetVar = target;
}

void SVMModel::SetTargetCategories() {
    fTargetVar = GetTargetVar();
    if (!fTargetVar)
        return;
    fTargetCategoryNames.clear();
    fTargetCategoryValues.clear();
    if (const auto* categories = fTargetVar->GetCategories()) {
        for (const ScoreCategory& category : *categories) {
            fTargetCategoryNames.push_back(category.name);
            fTargetCategoryValues.push_back(category.value.get());
        }
    }
    SetUpVoteTable();
}

void SVMModel::SetPredictionOnly(bool predictionOnly) {
    fPredictionOnly = predictionOnly;
    SetUpVoteTable();
}

bool SVMModel::GetPredictionOnly() const {
    return fPredictionOnly;
}

ScoreModel::ModelType SVMModel::GetModelType() const {
    return fModelType;
}

ScoreDictionary* SVMModel::GetVarsOfRole(VarRole role) const {
    if (!fTargetVar || !GetDictionary())
        return nullptr;
    auto found = std::make_unique<BaseDictionary>();
    for (const ScoreDictVar* variable : GetDictionary()->GetVars()) {
        if (GetVarRole(variable) == role)
            found->AddVar(variable->GetName(), *variable);
    }
    return found->GetVarCount() > 0 ? found.release() : nullptr;
}

// Deliberate: no field list is written, the categories stand without separators and without a line end, and without
// categories the display ends where they would stand.
void SVMModel::Display(std::ostream& stream) const {
    stream << "\nBegin Display of SupportVectorMachineModel." << std::endl;
    stream << "Input Vector fields is: "
           << " Only prediction? " << (fPredictionOnly ? "True." : "False.") << std::endl;
    stream << "Target variable: ";
    if (fTargetVar)
        fTargetVar->Display(stream);
    stream << "Target categories: ";
    if (fTargetCategoryNames.empty())
        return;
    for (const std::string& name : fTargetCategoryNames)
        stream << name;
    stream << "End of SupportVectorMachineModel display." << std::endl;
}

}  // namespace KwBrevix_930
