// One SupportVectorMachineModel element as a plain record.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "pmml/ST_SUPPORTVECTORMACHINE.h"
#include "pmml/SVMVectorField.h"
#include "pmml/SVMVectorInstance.h"

namespace KwBrevix_930 {

/// Filled by the readers, then owned by the model that it is given to. Raises nothing itself.
class SVMModelData {
public:
    enum KernelType : std::int32_t { kKernelNotSet = -1, kLinear = 0, kPolynomial = 1, kRadialBasis = 2, kSigmoid = 3 };

    SVMModelData();
    SVMModelData(const SVMModelData&) = delete;
    SVMModelData& operator=(const SVMModelData&) = delete;
    virtual ~SVMModelData();

    bool GetIsClassification() const { return fIsClassification; }
    void SetIsClassification(bool isClassification) { fIsClassification = isClassification; }

    double GetThreshold() const { return fThreshold; }
    void SetThreshold(double threshold) { fThreshold = threshold; }

    bool GetIsOneAgainstAll() const { return fIsOneAgainstAll; }
    void SetIsOneAgainstAll(bool isOneAgainstAll) { fIsOneAgainstAll = isOneAgainstAll; }
    bool IsOneAgainstOne() const { return !fIsOneAgainstAll; }

    std::int32_t GetTargetCategoryCount() const { return fTargetCategoryCount; }
    /// A count below 1 is ignored.
    void SetTargetCategoryCount(std::int32_t count);
    bool IsMultiClass() const { return fTargetCategoryCount > 2; }

    std::int32_t GetKernelType() const { return fKernelType; }
    void SetKernelType(std::int32_t type) { fKernelType = type; }

    double GetGamma() const { return fGamma; }
    void SetGamma(double gamma) { fGamma = gamma; }

    double GetCoef0() const { return fCoef0; }
    void SetCoef0(double coef0) { fCoef0 = coef0; }

    double GetDegree() const { return fDegree; }
    void SetDegree(double degree) { fDegree = degree; }

    bool GetIsZarnModel() const { return fIsZarnModel; }
    void SetIsZarnModel(bool isZarnModel) { fIsZarnModel = isZarnModel; }

    bool GetHasStandardDeviation() const { return fHasStandardDeviation; }
    void SetHasStandardDeviation(bool hasStandardDeviation) { fHasStandardDeviation = hasStandardDeviation; }

    bool GetIsMaxWins() const { return fIsMaxWins; }
    void SetIsMaxWins(bool isMaxWins) { fIsMaxWins = isMaxWins; }
    void SetMaxWins() { fIsMaxWins = true; }

    /// Appends a column; the caller's strings are empty afterwards.
    void AddFieldRef(std::string& fieldName, std::string& value);
    /// Appends a column; the caller's strings are empty afterwards.
    void AddCategoricalPredictor(std::string& name, std::string& value, double coefficient);

    /// Adds a support vector. indices: one-based. Does nothing when the id or the indices are empty, or the lengths
    /// differ; of two vectors with one id, the first is kept.
    void AddVectorInstance(const std::string& id, const std::vector<std::int32_t>& indices,
                           const std::vector<double>& values);

    /// One entry a column, in document order.
    const std::vector<std::int32_t>& GetVectorFieldKinds() const { return fVectorFieldKinds; }
    std::vector<std::int32_t>& GetVectorFieldKinds() { return fVectorFieldKinds; }
    const std::vector<std::unique_ptr<SVMVectorField>>& GetVectorFields() const { return fVectorFields; }
    std::vector<std::unique_ptr<SVMVectorField>>& GetVectorFields() { return fVectorFields; }

    const std::map<std::string, std::unique_ptr<SVMVectorInstance>>& GetVectorInstances() const {
        return fVectorInstances;
    }
    std::map<std::string, std::unique_ptr<SVMVectorInstance>>& GetVectorInstances() { return fVectorInstances; }

    const std::vector<std::unique_ptr<ST_SUPPORTVECTORMACHINE>>& GetMachines() const { return fMachines; }
    std::vector<std::unique_ptr<ST_SUPPORTVECTORMACHINE>>& GetMachines() { return fMachines; }

private:
    bool fIsClassification = false;
    double fThreshold = 0.0;
    bool fIsOneAgainstAll = true;
    std::int32_t fTargetCategoryCount = 1;
    std::vector<std::int32_t> fVectorFieldKinds;
    std::vector<std::unique_ptr<SVMVectorField>> fVectorFields;
    std::map<std::string, std::unique_ptr<SVMVectorInstance>> fVectorInstances;
    std::vector<std::unique_ptr<ST_SUPPORTVECTORMACHINE>> fMachines;
    std::int32_t fKernelType = kKernelNotSet;
    double fGamma = 1.0;
    double fCoef0 = 1.0;
    double fDegree = 1.0;
    bool fIsZarnModel = false;
    bool fHasStandardDeviation = false;
    bool fIsMaxWins = false;
};

}  // namespace KwBrevix_930
