// Reads a VectorDictionary element.
#include "pmml/VectorDictionaryReader.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <numeric>
#include <string_view>

#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNodeList.hpp>

#include "host/BaseTranslator.h"
#include "host/DOMElemUtility.h"
#include "host/PMMLModelTags.h"
#include "host/ScoreDictVar.h"
#include "host/ScoreDictionary.h"
#include "host/number_text.h"
#include "host/transform/TransformationDictionary.h"
#include "pmml/SVMModelData.h"
#include "pmml/element_text.h"
#include "pmml/step_errors.h"
#include "pmml/translator_messages.h"
#include "svm/SVMModel.h"

namespace KwBrevix_930 {

namespace {

using Tags = PMMLModelTags;
using xercesc::DOMElement;

// The characters that separate the tokens of an array.
class SeparatorTable {
public:
    explicit SeparatorTable(const char* characters) {
        for (; *characters; ++characters)
            fIsSeparator[static_cast<unsigned char>(*characters)] = true;
    }
    bool Contains(char c) const { return fIsSeparator[static_cast<unsigned char>(c)]; }

private:
    std::array<bool, 256> fIsSeparator{};
};

// Hands on each token between separators, as strtok finds them.
template <typename Take>
void ForEachToken(const std::string& text, Take take) {
    static const SeparatorTable separators(Tags::XML_VAL_SVM_SEPARATORS);
    const char* const end = text.data() + text.size();
    for (const char* first = text.data(); first != end;) {
        const char* last = first;
        while (last != end && !separators.Contains(*last))
            ++last;
        if (last != first)
            take(std::string_view(first, static_cast<std::size_t>(last - first)));
        first = last == end ? end : last + 1;
    }
}

[[noreturn]] void ThrowBadIndices() {
    ThrowError(260115, Tags::XML_ELE_SVM_INDICES, Tags::XML_ELE_SVM_REALSPARSEARRAY);
}

// An index as read, truncated; it and the zero-based index that it leads to must be 32-bit numbers.
std::int32_t ToIndex(std::string_view token) {
    constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min() + 1;
    constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();
    // Nearly all indices are plain whole numbers, which need no arithmetic of doubles.
    std::int32_t whole = 0;
    const char* const end = token.data() + token.size();
    const auto parsed = std::from_chars(token.data(), end, whole);
    if (parsed.ec == std::errc() && parsed.ptr == end && whole >= kLowest)
        return whole;
    const double index = std::trunc(LeadingNumber(token));
    if (!(index >= kLowest && index <= kLargest))
        ThrowBadIndices();
    return static_cast<std::int32_t>(index);
}

// The codes that reading an array raises itself; any other failure becomes that of the Indices.
bool IsArrayError(int code) {
    return code == 260115 || code == 260251;
}

}  // namespace

VectorDictionaryReader::VectorDictionaryReader(const DOMElemUtility& reader, const SVMModel& model, SVMModelData& data)
    : fReader(reader), fModel(model), fData(data) {}

void VectorDictionaryReader::Read(const DOMElement& model) {
    const DOMElement* dictionary =
        ReadOrThrow([&] { return fReader.GetChildElemByName(&model, Tags::XML_ELE_SVM_VECTORDICTION, true); }, 260115,
                    Tags::XML_ELE_SVM_VECTORDICTION, Tags::XML_ELE_SVMMODEL);
    const DOMElement* fields =
        ReadOrThrow([&] { return fReader.GetChildElemByName(dictionary, Tags::XML_ELE_SVM_VECTORFIELDS, true); },
                    260115, Tags::XML_ELE_SVM_VECTORFIELDS, Tags::XML_ELE_SVM_VECTORDICTION);
    ReadVectorFields(*fields);
    ReadVectorInstances(*dictionary);
}

void VectorDictionaryReader::ReadVectorFields(const DOMElement& fields) {
    for (const DOMElement* child = BaseTranslator::GetFirstChildElt(&fields); child;
         child = BaseTranslator::GetNextSiblingElt(child)) {
        if (BaseTranslator::HasTag(child, Tags::XML_ELE_FIELDREF))
            ReadFieldRef(*child);
        else if (BaseTranslator::HasTag(child, Tags::XML_ELE_CATEGORICAL_PREDICTOR))
            ReadCategoricalPredictor(*child);
    }
}

void VectorDictionaryReader::ReadFieldRef(const DOMElement& element) {
    std::string field = fReader.GetAttributeToString(&element, Tags::XML_ATT_SVM_FIELD, true);
    std::string replacement = fReader.GetAttributeToString(&element, Tags::XML_ATT_MISSREPVALUE, false);
    if (!replacement.empty() && fModel.GetTransformationDictionary() && fModel.GetDictionary())
        RegisterReplacement(field, replacement);
    fData.AddFieldRef(field, replacement);
}

// A column that encodes one value of a categorical field: the field learns what the column becomes when it is missing.
void VectorDictionaryReader::RegisterReplacement(const std::string& field, const std::string& replacement) const {
    const TransformVar* derived = fModel.GetTransformationDictionary()->FindVar(field);
    ScoreDictVar* source = derived ? fModel.GetDictionary()->FindVar(derived->GetFieldName()) : nullptr;
    if (source && source->GetKind() == ScoreDictVar::kCategorical && derived->GetAllEncodedValues().size() == 1)
        source->GetVarStats()->SetEncodedMissingReplacement(derived->GetAllEncodedValues().front(), replacement);
}

void VectorDictionaryReader::ReadCategoricalPredictor(const DOMElement& element) {
    std::string name = fReader.GetAttributeToString(&element, Tags::XML_ATT_NAME, true);
    std::string value = fReader.GetAttributeToString(&element, Tags::XML_ATT_VALUE, true);
    const double coefficient = fReader.GetAttributeToDouble(&element, Tags::XML_ATT_COEFFICIENT, true);
    fData.AddCategoricalPredictor(name, value, coefficient);
}

void VectorDictionaryReader::ReadVectorInstances(const DOMElement& dictionary) {
    // Deliberate: children are counted, but the instances are taken from the list of all descendants.
    const std::uint64_t count =
        ReadOrThrow([&] { return fReader.GetNodeListLength(&dictionary, Tags::XML_ELE_SVM_VECTORINSTANCE, true); },
                    260114, Tags::XML_ELE_SVM_VECTORDICTION);
    const auto* instances = BaseTranslator::GetElementsByTagName(&dictionary, Tags::XML_ELE_SVM_VECTORINSTANCE);
    for (std::uint64_t i = 0; i < count; ++i) {
        if (const auto* instance = static_cast<const DOMElement*>(instances->item(static_cast<XMLSize_t>(i))))
            ReadVectorInstance(*instance);
    }
}

void VectorDictionaryReader::ReadVectorInstance(const DOMElement& instance) {
    const std::string id =
        ReadOrThrow([&] { return fReader.GetAttributeToString(&instance, Tags::XML_ATT_SVM_ID, true); }, 260120,
                    Tags::XML_ATT_SVM_ID, Tags::XML_ELE_SVM_VECTORINSTANCE);
    fIndices.clear();
    fValues.clear();
    // Deliberate: an Array is not read; an instance that has no sparse array stays empty and is not stored.
    if (const DOMElement* array = fReader.GetChildElemByName(&instance, Tags::XML_ELE_SVM_REALSPARSEARRAY, false))
        ReadSparseArray(*array);
    fData.AddVectorInstance(id, fIndices, fValues);
}

void VectorDictionaryReader::ReadSparseArray(const DOMElement& array) {
    const std::int32_t length = fReader.GetAttributeToInt(&array, Tags::XML_ATT_SVM_N, false);
    try {
        ReadArrayLists(array, length);
    } catch (const BXException& error) {
        if (IsArrayError(error.GetErrorCode()))
            throw BXException(error);
        ThrowBadIndices();
    }
}

void VectorDictionaryReader::ReadArrayLists(const DOMElement& array, std::int32_t length) {
    const DOMElement* indices = fReader.GetChildElemByName(&array, Tags::XML_ELE_SVM_INDICES, false);
    const DOMElement* entries = fReader.GetChildElemByName(&array, Tags::XML_ELE_SVM_REAL_ENTRIES, false);
    if (!entries)
        entries = fReader.GetChildElemByName(&array, Tags::XML_ELE_SVM_ENTRIES, false);
    if (!indices && entries)
        ThrowBadIndices();
    if (!indices) {
        ImplyZeros(length);
        return;
    }
    if (!entries)
        ThrowError(260115, Tags::XML_ELE_SVM_ENTRIES, Tags::XML_ELE_SVM_REALSPARSEARRAY);
    ReadIndices(*indices);
    ReadEntries(*entries);
    if (fIndices.size() != fValues.size())
        ThrowError(260251, std::to_string(fIndices.size()).c_str(), Tags::XML_ELE_SVM_INDICES,
                   Tags::XML_ELE_SVM_REALSPARSEARRAY, std::to_string(fValues.size()).c_str(),
                   Tags::XML_ELE_SVM_REAL_ENTRIES, Tags::XML_ELE_SVM_REALSPARSEARRAY);
}

void VectorDictionaryReader::ImplyZeros(std::int32_t length) {
    if (length < 1)
        return;
    fImpliedZeros += length;
    if (fImpliedZeros > kImpliedZerosLimit)
        ThrowBadIndices();
    fIndices.resize(static_cast<std::size_t>(length));
    std::iota(fIndices.begin(), fIndices.end(), 1);
    fValues.assign(static_cast<std::size_t>(length), 0.0);
}

void VectorDictionaryReader::ReadIndices(const DOMElement& indices) {
    ForEachToken(ElementText(fReader.GetTranscoder(), indices),
                 [this](std::string_view token) { fIndices.push_back(ToIndex(token)); });
}

void VectorDictionaryReader::ReadEntries(const DOMElement& entries) {
    ForEachToken(ElementText(fReader.GetTranscoder(), entries),
                 [this](std::string_view token) { fValues.push_back(LeadingNumber(token)); });
}

}  // namespace KwBrevix_930
