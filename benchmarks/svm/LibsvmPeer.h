// A LIBSVM model in memory, made from a model record, to be measured beside it.
#pragma once

#include <libsvm/svm.h>

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "pmml/SVMModelData.h"

namespace benchmarks {

/// Category c of the record is class c of LIBSVM. LIBSVM keeps one machine for each pair (i, j), i < j, in row order,
/// whose positive decision speaks for i; a machine of the record may stand elsewhere and have the other sign.
class LibsvmPeer {
public:
    using Case = std::vector<svm_node>;

    /// data: a regression model, or a classification model with one machine a pair of categories. Not needed
    /// afterwards. Fails:  std::invalid_argument for a model that LIBSVM cannot hold.
    explicit LibsvmPeer(const KwBrevix_930::SVMModelData& data);
    LibsvmPeer(const LibsvmPeer&) = delete;
    LibsvmPeer& operator=(const LibsvmPeer&) = delete;

    /// Returns: a vector as LIBSVM takes it: one-based, ended by index -1, entries that are zero left out.
    static Case MakeCase(const std::vector<std::int32_t>& indices, const std::vector<double>& values);

    /// Returns: LIBSVM's model, owned here.
    const svm_model* GetModel() const { return &fModel; }
    bool HasProbabilities() const { return fModel.probA != nullptr; }
    std::size_t GetPairCount() const { return fRho.size(); }

    /// values: one for each pair, as svm_predict_values fills them. Returns: the decision value of a machine of the
    /// record.
    double GetDecision(const std::vector<double>& values, std::size_t machine) const;

private:
    // Which pair of classes a machine of the record decides, and the sign that turns its decision into LIBSVM's.
    struct Pair {
        std::size_t first = 0;
        std::size_t second = 1;
        double sign = 1.0;
    };
    using Vector = KwBrevix_930::SVMVectorInstance;

    void SetParameters(const KwBrevix_930::SVMModelData& data);
    Pair FindPair(const KwBrevix_930::SVMModelData& data, const KwBrevix_930::ST_SUPPORTVECTORMACHINE& machine) const;
    std::size_t PairPosition(const Pair& pair) const;
    void SortVectors(const KwBrevix_930::SVMModelData& data);
    void AddMachine(const KwBrevix_930::ST_SUPPORTVECTORMACHINE& machine, const Pair& pair);
    void LinkModel();

    std::size_t fClassCount;
    std::vector<Pair> fPairs;
    std::unordered_map<const Vector*, std::size_t> fPositions;
    std::unordered_map<const Vector*, std::size_t> fClasses;
    std::vector<Case> fVectors;
    std::vector<std::vector<double>> fCoefficients;
    std::vector<double> fRho;
    std::vector<double> fProbabilityA;
    std::vector<double> fProbabilityB;
    std::vector<int> fLabels;
    std::vector<int> fVectorCounts;
    // What LIBSVM's tables of rows point at.
    std::vector<svm_node*> fVectorRows;
    std::vector<double*> fCoefficientRows;
    svm_model fModel{};
};

}  // namespace benchmarks
