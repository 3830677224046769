// Reads general attributes, machines and kernel of a SupportVectorMachineModel element.
#include "pmml/SupportVectorMachineReader.h"

#include <utility>

#include <xercesc/dom/DOMElement.hpp>

#include "host/BrevixTranscoder.h"
#include "host/DOMElemUtility.h"
#include "host/PMMLModelTags.h"
#include "host/PMMLTranslator.h"
#include "host/ScoreDictVar.h"
#include "pmml/SVMModelData.h"
#include "pmml/element_text.h"
#include "pmml/step_errors.h"
#include "pmml/translator_messages.h"
#include "svm/SVMModel.h"

namespace KwBrevix_930 {

namespace {

using Tags = PMMLModelTags;
using xercesc::DOMElement;

std::string LowerCased(std::string text) {
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    }
    return text;
}

// A continuous target without categories counts as one category.
std::size_t CountCategories(const ScoreDictVar& target) {
    if (const auto* categories = target.GetCategories())
        return categories->size();
    return target.GetKind() == ScoreDictVar::kContinuous ? 1 : 0;
}

const DOMElement* NextWithTag(const DOMElement* element, const char* tag) {
    do {
        element = BaseTranslator::GetNextSiblingElt(element);
    } while (element && !BaseTranslator::HasTag(element, tag));
    return element;
}

}  // namespace

SupportVectorMachineReader::SupportVectorMachineReader(const DOMElemUtility& reader, SVMModel& model,
                                                       SVMModelData& data)
    : fReader(reader), fModel(model), fData(data) {}

void SupportVectorMachineReader::ReadGeneralAttributes(const DOMElement& element, const PMMLTranslator& translator,
                                                       const ScoreDictionary* dictionary) {
    // Deliberate: the message names the PMML element, although the attribute sits on the model element.
    if (LowerCased(fReader.GetAttributeToString(&element, Tags::XML_ATT_RM_IS_SCORABLE, false)) == "false")
        ThrowError(260281, Tags::XML_ATT_RM_IS_SCORABLE, Tags::XML_ELE_PMML);
    const std::string function = fReader.GetAttributeToString(&element, Tags::XML_ATT_MINING_FUNCTIONNAME, true);
    if (function != Tags::XML_VAL_SVM_CLASSIFICATION && function != Tags::XML_VAL_SVM_REGRESSION)
        ThrowError(260153, function.c_str(), Tags::XML_ATT_MINING_FUNCTIONNAME, Tags::XML_ELE_SVMMODEL);
    fData.SetIsClassification(function == Tags::XML_VAL_SVM_CLASSIFICATION);
    ReadThreshold(element);
    if (fReader.GetAttributeToString(&element, Tags::XML_ATT_SVM_CLASSMETHOLD, false) ==
        Tags::XML_ATT_SVM_ONEAGAINSTONE)
        fData.SetIsOneAgainstAll(false);
    if (fReader.GetAttributeToString(&element, Tags::XML_ATT_SVM_MAXWINS, false) == "true")
        fData.SetMaxWins();
    const DOMElement* targets = fReader.GetChildElemByName(&element, Tags::XML_ELE_TARGETS, false);
    const auto isHandled = [&] { return translator.HandleTargets(targets, dictionary); };
    if (targets && dictionary && !ReadOrThrow(isHandled, 260221, Tags::XML_ELE_TARGETS))
        ThrowError(260221, Tags::XML_ELE_TARGETS);
    CheckTargets(fReader.GetNodeListLength(&element, Tags::XML_ELE_SVM_SVM, false));
}

// Taken as written when it is there, -1 included.
void SupportVectorMachineReader::ReadThreshold(const DOMElement& element) {
    fData.SetThreshold(ReadPresentDouble(element, Tags::XML_ATT_THRESHOLD, 0.0));
}

void SupportVectorMachineReader::CheckTargets(std::uint64_t machineCount) {
    const ScoreDictVar* target = fModel.GetTargetVar();
    if (machineCount == 0 || !target)
        ThrowError(260221, Tags::XML_ELE_TARGETS);
    const std::uint64_t categoryCount = CountCategories(*target);
    const bool isRegression = !fData.GetIsClassification();
    const bool isFree = !isRegression && categoryCount > 2 && fData.GetIsOneAgainstAll();
    const bool fits = isRegression ? categoryCount == 1 && machineCount == 1
                                   : isFree || machineCount == categoryCount * (categoryCount - 1) / 2;
    // A categorical target without categories fits no number of machines.
    if (!fits)
        ThrowError(260221, Tags::XML_ELE_TARGETS);
    fData.SetTargetCategoryCount(static_cast<std::int32_t>(categoryCount));
    fModel.SetTargetCategories();
    const auto& names = fModel.GetTargetCategoryNames();
    fCategoryIndices.clear();
    for (std::size_t i = 0; i < names.size(); ++i)
        fCategoryIndices.emplace(names[i], static_cast<std::int32_t>(i));
}

void SupportVectorMachineReader::ReadMachines(const DOMElement& element) {
    const DOMElement* machine =
        ReadOrThrow([&] { return fReader.GetChildElemByName(&element, Tags::XML_ELE_SVM_SVM, true); }, 260115,
                    Tags::XML_ELE_SVM_SVM, Tags::XML_ELE_SVMMODEL);
    for (; machine; machine = NextWithTag(machine, Tags::XML_ELE_SVM_SVM))
        ReadMachine(*machine);
    // Deliberate: the last machine speaks for all.
    const bool hasExtension = fData.GetMachines().back()->extension != nullptr;
    fData.SetIsZarnModel(hasExtension);
    fData.SetHasStandardDeviation(hasExtension);
}

void SupportVectorMachineReader::ReadMachine(const DOMElement& element) {
    const auto require = [&](const char* tag) {
        return ReadOrThrow([&] { return fReader.GetChildElemByName(&element, tag, true); }, 260115, tag,
                           Tags::XML_ELE_SVM_SVM);
    };
    const DOMElement* vectors = require(Tags::XML_ELE_SVM_SUPPORTVECTORS);
    const DOMElement* coefficients = require(Tags::XML_ELE_SVM_COEFFICIENTS);
    if (fReader.GetNodeListLength(vectors, Tags::XML_ELE_SVM_SUPPORTVECTOR, false) == 0)
        ThrowError(260114, Tags::XML_ELE_SVM_SUPPORTVECTORS);
    if (fReader.GetNodeListLength(coefficients, Tags::XML_ELE_SVM_COEFFICIENT, false) == 0)
        ThrowError(260114, Tags::XML_ELE_SVM_COEFFICIENTS);
    auto machine = std::make_unique<ST_SUPPORTVECTORMACHINE>();
    ReadOrThrow([&] { ReadSupportVectors(*vectors, *coefficients, *machine); }, 260221, Tags::XML_ELE_SVM_SVM);
    machine->extension = ReadExtension(element);
    ReadCategories(element, *machine);
    // Deliberate: a threshold of exactly -1.0 counts as not given.
    const double threshold = fReader.GetAttributeToDouble(&element, Tags::XML_VAL_THRESHOLD, false);
    machine->threshold = threshold == -1.0 ? fData.GetThreshold() : threshold;
    machine->bias = ReadPresentDouble(*coefficients, Tags::XML_ATT_SVM_ABSOLUTEVALUE, machine->bias);
    fData.GetMachines().push_back(std::move(machine));
}

void SupportVectorMachineReader::ReadSupportVectors(const DOMElement& vectors, const DOMElement& coefficients,
                                                    ST_SUPPORTVECTORMACHINE& machine) const {
    const auto& instances = fData.GetVectorInstances();
    const DOMElement* vector = fReader.GetChildElemByName(&vectors, Tags::XML_ELE_SVM_SUPPORTVECTOR, true);
    const DOMElement* coefficient = fReader.GetChildElemByName(&coefficients, Tags::XML_ELE_SVM_COEFFICIENT, true);
    while (vector) {
        const std::string id = fReader.GetAttributeToString(vector, Tags::XML_ATT_SVM_VECTORID, true);
        if (!coefficient)
            ThrowError(260114, Tags::XML_ELE_SVM_COEFFICIENT);
        const double value = fReader.GetAttributeToDouble(coefficient, Tags::XML_ATT_VALUE, true);
        // Deliberate: a vector that was not stored is dropped together with its coefficient.
        const auto found = instances.find(id);
        if (found != instances.end()) {
            machine.supportVectors.push_back(found->second.get());
            machine.coefficients.push_back(value);
        }
        vector = NextWithTag(vector, Tags::XML_ELE_SVM_SUPPORTVECTOR);
        coefficient = NextWithTag(coefficient, Tags::XML_ELE_SVM_COEFFICIENT);
    }
}

std::unique_ptr<SVMMachineExtension> SupportVectorMachineReader::ReadExtension(const DOMElement& element) const {
    // Deliberate: only the first Extension is examined.
    const DOMElement* extension = fReader.GetChildElemByName(&element, Tags::XML_ELE_EXTENSION, false);
    if (!extension || fReader.GetAttributeToString(extension, Tags::XML_ATT_EXTENSION_EXTENDER, false) !=
                          Tags::XML_VAL_EXTENSION_EXTENDER)
        return nullptr;
    return fData.GetIsClassification() ? ReadClassificationExtension(*extension) : ReadRegressionExtension(*extension);
}

// Deliberate: an extension that cannot be read is none, without a message.
std::unique_ptr<SVMMachineExtension> SupportVectorMachineReader::ReadClassificationExtension(
    const DOMElement& extension) const {
    try {
        auto result = std::make_unique<SVMMachineExtension>();
        const DOMElement* category = fReader.GetChildElemByName(&extension, Tags::XML_ELE_SVM_RESPONSECATEGORY, true);
        const std::string response = fReader.GetAttributeToString(category, Tags::XML_ATT_SVM_RESPONSE, true);
        const std::string nonresponse = fReader.GetAttributeToString(category, Tags::XML_ATT_SVM_NONRESPONSE, true);
        if (!response.empty() && !nonresponse.empty()) {
            result->responseCategoryIndex = CategoryIndex(response);
            result->nonresponseCategoryIndex = CategoryIndex(nonresponse);
        }
        const DOMElement* sigmoid = fReader.GetChildElemByName(&extension, Tags::XML_ELE_SVM_PROBABILITYPARAM, false);
        if (sigmoid) {
            result->probabilityA = ReadPresentDouble(*sigmoid, Tags::XML_ATT_SVM_PROBABILITY_A, result->probabilityA);
            result->probabilityB = ReadPresentDouble(*sigmoid, Tags::XML_ATT_SVM_PROBABILITY_B, result->probabilityB);
        }
        return result;
    } catch (const BXException&) {
        return nullptr;
    }
}

std::unique_ptr<SVMMachineExtension> SupportVectorMachineReader::ReadRegressionExtension(
    const DOMElement& extension) const {
    const DOMElement* element = fReader.GetChildElemByName(&extension, Tags::XML_ELE_SVM_STANDARDDEVIATION, false);
    if (!element)
        return nullptr;
    const std::string text = ElementText(fReader.GetTranscoder(), *element);
    const auto wideText = fReader.GetTranscoder().ToWide(text);
    auto result = std::make_unique<SVMMachineExtension>();
    result->standardDeviation = ReadOrThrow([&] { return BaseTranslator::VerifyDouble(wideText.c_str()); }, 260153,
                                            text.c_str(), Tags::XML_ELE_SVM_STANDARDDEVIATION, Tags::XML_ELE_EXTENSION);
    return result;
}

// An attribute whose presence counts, not its value: a written -1 stands.
double SupportVectorMachineReader::ReadPresentDouble(const DOMElement& element, const char* attribute,
                                                     double otherwise) const {
    return fReader.HasAttribute(&element, attribute) ? fReader.GetAttributeToDouble(&element, attribute, true)
                                                     : otherwise;
}

void SupportVectorMachineReader::ReadCategories(const DOMElement& element, ST_SUPPORTVECTORMACHINE& machine) const {
    const bool needsTarget = fData.GetIsClassification() && !machine.extension;
    const bool isPair = fData.GetTargetCategoryCount() == 2 || (fData.IsMultiClass() && fData.IsOneAgainstOne());
    const std::string target = fReader.GetAttributeToString(&element, Tags::XML_ATT_PPC_TARGET_CAT, needsTarget);
    const std::string alternate =
        fReader.GetAttributeToString(&element, Tags::XML_ATT_SVM_ALTERNATETAGCATE, needsTarget && isPair);
    if (!target.empty())
        machine.targetCategoryIndex = CategoryIndex(target);
    if (!alternate.empty())
        machine.alternateTargetCategoryIndex = CategoryIndex(alternate);
}

// Deliberate: 0 without categories, and one past the last for a text that names none of them.
std::int32_t SupportVectorMachineReader::CategoryIndex(const std::string& category) const {
    if (category.empty() || fCategoryIndices.empty())
        return 0;
    const auto found = fCategoryIndices.find(category);
    return found != fCategoryIndices.end() ? found->second
                                           : static_cast<std::int32_t>(fModel.GetTargetCategoryNames().size());
}

void SupportVectorMachineReader::ReadKernel(const DOMElement& element) {
    const std::pair<const char*, SVMModelData::KernelType> kernels[] = {
        {Tags::XML_ELE_SVM_KFTLINEAR, SVMModelData::kLinear},
        {Tags::XML_ELE_SVM_KFTPOLY, SVMModelData::kPolynomial},
        {Tags::XML_ELE_SVM_KFTRBF, SVMModelData::kRadialBasis},
        {Tags::XML_ELE_SVM_KFTSIGMOID, SVMModelData::kSigmoid}};
    const DOMElement* kernel = nullptr;
    for (const auto& [tag, type] : kernels) {
        kernel = fReader.GetChildElemByName(&element, tag, false);
        if (!kernel)
            continue;
        fData.SetKernelType(type);
        break;
    }
    if (!kernel)
        ThrowError(260115, Tags::XML_ELE_SVM_KFTLINEAR, Tags::XML_ELE_SVMMODEL);
    // Deliberate: exactly -1.0, written or absent, leaves a parameter as it is.
    const auto read = [&](const char* attribute, void (SVMModelData::*set)(double)) {
        const double value = fReader.GetAttributeToDouble(kernel, attribute, false);
        if (value != -1.0)
            (fData.*set)(value);
    };
    read(Tags::XML_ATT_SVM_GAMMA, &SVMModelData::SetGamma);
    read(Tags::XML_ATT_SVM_BIAS, &SVMModelData::SetCoef0);
    read(Tags::XML_ATT_SVM_DEGREE, &SVMModelData::SetDegree);
}

}  // namespace KwBrevix_930
