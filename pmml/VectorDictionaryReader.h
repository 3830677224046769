// Reads a VectorDictionary element: the columns of the vector space and the support vectors.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMElement;
XERCES_CPP_NAMESPACE_END

namespace KwBrevix_930 {

class DOMElemUtility;
class SVMModel;
class SVMModelData;

/// Errors, as BXException: 260115 (VectorDictionary, SupportVectorMachineModel), (VectorFields, VectorDictionary),
/// (Entries, REAL-SparseArray), (Indices, REAL-SparseArray); 260114 (VectorDictionary) without instances; 260120 (id,
/// VectorInstance); 260251 for lists of different lengths.
class VectorDictionaryReader {
public:
    /// The zeros that arrays without Indices may imply in one document.
    static constexpr std::int64_t kImpliedZerosLimit = 10'000'000;

    /// model: its dictionaries are asked, and may learn missing-value replacements; data: filled.
    VectorDictionaryReader(const DOMElemUtility& reader, const SVMModel& model, SVMModelData& data);

    /// model: the SupportVectorMachineModel element.
    void Read(const xercesc::DOMElement& model);

private:
    void ReadVectorFields(const xercesc::DOMElement& fields);
    void ReadFieldRef(const xercesc::DOMElement& element);
    void ReadCategoricalPredictor(const xercesc::DOMElement& element);
    void RegisterReplacement(const std::string& field, const std::string& replacement) const;
    void ReadVectorInstances(const xercesc::DOMElement& dictionary);
    void ReadVectorInstance(const xercesc::DOMElement& instance);
    void ReadSparseArray(const xercesc::DOMElement& array);
    void ReadArrayLists(const xercesc::DOMElement& array, std::int32_t length);
    void ImplyZeros(std::int32_t length);
    void ReadIndices(const xercesc::DOMElement& indices);
    void ReadEntries(const xercesc::DOMElement& entries);

    const DOMElemUtility& fReader;
    const SVMModel& fModel;
    SVMModelData& fData;
    std::int64_t fImpliedZeros = 0;
    // The lists of the instance being read.
    std::vector<std::int32_t> fIndices;
    std::vector<double> fValues;
};

}  // namespace KwBrevix_930
