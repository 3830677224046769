// A LIBSVM model in memory, made from a model record, to be measured beside it.
#include "benchmarks/svm/LibsvmPeer.h"

#include <cmath>
#include <limits>
#include <numeric>
#include <stdexcept>

namespace benchmarks {

using KwBrevix_930::ST_SUPPORTVECTORMACHINE;
using KwBrevix_930::SVMModelData;

// LIBSVM numbers the kernels in the same way.
static_assert(LINEAR == static_cast<int>(SVMModelData::kLinear) &&
              POLY == static_cast<int>(SVMModelData::kPolynomial) &&
              RBF == static_cast<int>(SVMModelData::kRadialBasis) &&
              SIGMOID == static_cast<int>(SVMModelData::kSigmoid));

// LIBSVM counts two classes for regression, which has one machine.
LibsvmPeer::LibsvmPeer(const SVMModelData& data)
    : fClassCount(data.GetIsClassification() ? static_cast<std::size_t>(data.GetTargetCategoryCount()) : 2),
      fRho(fClassCount * (fClassCount - 1) / 2, std::numeric_limits<double>::quiet_NaN()) {
    if (data.GetMachines().size() != fRho.size())
        throw std::invalid_argument("not one machine a pair of categories");
    SetParameters(data);
    for (const auto& machine : data.GetMachines())
        fPairs.push_back(FindPair(data, *machine));
    SortVectors(data);
    if (data.GetIsZarnModel() && data.GetIsClassification()) {
        fProbabilityA.resize(fRho.size());
        fProbabilityB.resize(fRho.size());
    }
    for (std::size_t m = 0; m < fPairs.size(); ++m)
        AddMachine(*data.GetMachines()[m], fPairs[m]);
    LinkModel();
}

LibsvmPeer::Case LibsvmPeer::MakeCase(const std::vector<std::int32_t>& indices, const std::vector<double>& values) {
    Case nodes;
    for (std::size_t i = 0; i < indices.size(); ++i) {
        if (values[i] != 0.0)
            nodes.push_back({indices[i] + 1, values[i]});
    }
    nodes.push_back({-1, 0.0});
    return nodes;
}

double LibsvmPeer::GetDecision(const std::vector<double>& values, std::size_t machine) const {
    return fPairs[machine].sign * values[PairPosition(fPairs[machine])];
}

void LibsvmPeer::SetParameters(const SVMModelData& data) {
    if (data.GetKernelType() == SVMModelData::kPolynomial && data.GetDegree() != std::floor(data.GetDegree()))
        throw std::invalid_argument("the degree is not whole");
    fModel.param.svm_type = data.GetIsClassification() ? C_SVC : EPSILON_SVR;
    fModel.param.kernel_type = data.GetKernelType();
    fModel.param.degree = static_cast<int>(data.GetDegree());
    fModel.param.gamma = data.GetGamma();
    fModel.param.coef0 = data.GetCoef0();
}

// Without maxWins a positive decision speaks for the alternate category.
LibsvmPeer::Pair LibsvmPeer::FindPair(const SVMModelData& data, const ST_SUPPORTVECTORMACHINE& machine) const {
    if (!data.GetIsClassification())
        return {};
    const auto target = static_cast<std::size_t>(machine.targetCategoryIndex);
    const auto alternate = static_cast<std::size_t>(machine.alternateTargetCategoryIndex);
    if (target >= fClassCount || alternate >= fClassCount || target == alternate)
        throw std::invalid_argument("a machine does not name two categories");
    const std::size_t positive = data.GetIsMaxWins() ? target : alternate;
    const std::size_t negative = data.GetIsMaxWins() ? alternate : target;
    return positive < negative ? Pair{positive, negative, 1.0} : Pair{negative, positive, -1.0};
}

std::size_t LibsvmPeer::PairPosition(const Pair& pair) const {
    return pair.first * (2 * fClassCount - pair.first - 1) / 2 + pair.second - pair.first - 1;
}

// A support vector belongs to the category for which its coefficients speak; LIBSVM keeps them class by class.
void LibsvmPeer::SortVectors(const SVMModelData& data) {
    std::vector<std::vector<const Vector*>> classes(fClassCount);
    for (std::size_t m = 0; m < fPairs.size(); ++m) {
        const ST_SUPPORTVECTORMACHINE& machine = *data.GetMachines()[m];
        for (std::size_t k = 0; k < machine.supportVectors.size(); ++k) {
            const bool isFirst = !data.GetIsClassification() || machine.coefficients[k] * fPairs[m].sign > 0.0;
            const std::size_t itsClass = isFirst ? fPairs[m].first : fPairs[m].second;
            const auto [found, isNew] = fClasses.emplace(machine.supportVectors[k], itsClass);
            if (isNew)
                classes[itsClass].push_back(machine.supportVectors[k]);
            else if (found->second != itsClass)
                throw std::invalid_argument("a support vector speaks for two categories");
        }
    }
    for (const auto& vectors : classes) {
        fVectorCounts.push_back(static_cast<int>(vectors.size()));
        for (const Vector* vector : vectors) {
            fPositions.emplace(vector, fVectors.size());
            fVectors.push_back(MakeCase(vector->indices, vector->values));
        }
    }
    fCoefficients.assign(fClassCount - 1, std::vector<double>(fVectors.size(), 0.0));
}

// A vector of class i has its coefficient against class j in row j - 1 where i < j, otherwise in row j.
void LibsvmPeer::AddMachine(const ST_SUPPORTVECTORMACHINE& machine, const Pair& pair) {
    const std::size_t position = PairPosition(pair);
    if (!std::isnan(fRho[position]))
        throw std::invalid_argument("two machines for one pair of categories");
    fRho[position] = -(pair.sign * machine.bias);
    for (std::size_t k = 0; k < machine.supportVectors.size(); ++k) {
        const Vector* vector = machine.supportVectors[k];
        const std::size_t row = fClasses.at(vector) == pair.first ? pair.second - 1 : pair.first;
        fCoefficients[row][fPositions.at(vector)] += pair.sign * machine.coefficients[k];
    }
    if (!fProbabilityA.empty()) {
        if (!machine.extension)
            throw std::invalid_argument("a machine has no sigmoid");
        fProbabilityA[position] = pair.sign * machine.extension->probabilityA;
        fProbabilityB[position] = machine.extension->probabilityB;
    }
}

void LibsvmPeer::LinkModel() {
    for (Case& vector : fVectors)
        fVectorRows.push_back(vector.data());
    for (auto& row : fCoefficients)
        fCoefficientRows.push_back(row.data());
    fLabels.resize(fClassCount);
    std::iota(fLabels.begin(), fLabels.end(), 0);
    fModel.nr_class = static_cast<int>(fClassCount);
    fModel.l = static_cast<int>(fVectors.size());
    fModel.SV = fVectorRows.data();
    fModel.sv_coef = fCoefficientRows.data();
    fModel.rho = fRho.data();
    fModel.probA = fProbabilityA.empty() ? nullptr : fProbabilityA.data();
    fModel.probB = fProbabilityB.empty() ? nullptr : fProbabilityB.data();
    fModel.label = fLabels.data();
    fModel.nSV = fVectorCounts.data();
}

}  // namespace benchmarks
