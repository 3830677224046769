// Reads all of a SupportVectorMachineModel element but its vector dictionary: general attributes, machines, kernel.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>

#include <xercesc/util/XercesDefs.hpp>

#include "pmml/ST_SUPPORTVECTORMACHINE.h"

XERCES_CPP_NAMESPACE_BEGIN
class DOMElement;
XERCES_CPP_NAMESPACE_END

namespace KwBrevix_930 {

class DOMElemUtility;
class PMMLTranslator;
class ScoreDictionary;
class SVMModel;
class SVMModelData;

/// The three steps are called in the order of their declaration, the second after the vector dictionary has been read.
/// Errors are BXException with the code and arguments that each step names.
class SupportVectorMachineReader {
public:
    /// model: asked for its target, and told to collect its categories; data: filled.
    SupportVectorMachineReader(const DOMElemUtility& reader, SVMModel& model, SVMModelData& data);

    /// isScorable, functionName, threshold, classificationMethod, maxWins and Targets. translator, dictionary: handle
    /// the Targets; the dictionary may be null.
    /// Errors: 260281 (isScorable, PMML); 260153 (value, functionName, SupportVectorMachineModel); 260221 (Targets)
    /// when the targets cannot be handled or do not fit the number of machines.
    void ReadGeneralAttributes(const xercesc::DOMElement& element, const PMMLTranslator& translator,
                               const ScoreDictionary* dictionary);

    /// Errors: 260115 (SupportVectorMachine, SupportVectorMachineModel), (SupportVectors, SupportVectorMachine),
    /// (Coefficients, SupportVectorMachine); 260114 (SupportVectors), (Coefficients); 260221 (SupportVectorMachine)
    /// when a support vector or its coefficient cannot be read; 260120 (targetCategory or alternateTargetCategory,
    /// SupportVectorMachine).
    void ReadMachines(const xercesc::DOMElement& element);

    /// Errors: 260115 (LinearKernelType, SupportVectorMachineModel) without a kernel element.
    void ReadKernel(const xercesc::DOMElement& element);

private:
    void ReadThreshold(const xercesc::DOMElement& element);
    void CheckTargets(std::uint64_t machineCount);
    void ReadMachine(const xercesc::DOMElement& element);
    void ReadSupportVectors(const xercesc::DOMElement& vectors, const xercesc::DOMElement& coefficients,
                            ST_SUPPORTVECTORMACHINE& machine) const;
    std::unique_ptr<SVMMachineExtension> ReadExtension(const xercesc::DOMElement& element) const;
    std::unique_ptr<SVMMachineExtension> ReadClassificationExtension(const xercesc::DOMElement& extension) const;
    std::unique_ptr<SVMMachineExtension> ReadRegressionExtension(const xercesc::DOMElement& extension) const;
    double ReadPresentDouble(const xercesc::DOMElement& element, const char* attribute, double otherwise) const;
    void ReadCategories(const xercesc::DOMElement& element, ST_SUPPORTVECTORMACHINE& machine) const;
    std::int32_t CategoryIndex(const std::string& category) const;

    const DOMElemUtility& fReader;
    SVMModel& fModel;
    SVMModelData& fData;
    // The first place of each category name.
    std::unordered_map<std::string, std::int32_t> fCategoryIndices;
};

}  // namespace KwBrevix_930
