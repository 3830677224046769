// Translates a PMML document into an SVMModel.
#include "plugin/SVMTranslator.h"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include "host/BXException.h"
#include "host/DOMElemUtility.h"
#include "host/NumericValue.h"
#include "host/PMMLModelTags.h"
#include "host/ScoreDictVar.h"
#include "host/ScoreDictionary.h"
#include "host/ScoringLog.h"
#include "host/StringValue.h"
#include "host/VersionInfo.h"
#include "host/transform/TransformationDictionary.h"
#include "pmml/SVMModelData.h"
#include "pmml/SupportVectorMachineReader.h"
#include "pmml/VectorDictionaryReader.h"
#include "pmml/step_errors.h"
#include "pmml/translator_messages.h"
#include "svm/SVMModel.h"

namespace KwBrevix_930 {

namespace {

using Tags = PMMLModelTags;
using xercesc::DOMDocument;
using xercesc::DOMElement;

// Traces entry and exit of a call, however it is left.
class CallTrace {
public:
    CallTrace() { ScoringLog::GetInstance().TraceText(1, "Enter:%s", kMethod); }
    ~CallTrace() { ScoringLog::GetInstance().TraceText(1, "Exit:%s", kMethod); }
    CallTrace(const CallTrace&) = delete;
    CallTrace& operator=(const CallTrace&) = delete;

private:
    static constexpr const char* kMethod = "KwBrevix_930::SVMTranslator::ParseFromTree";
};

}  // namespace

SVMTranslator::SVMTranslator() : PMMLTranslator(std::string()) {}
SVMTranslator::~SVMTranslator() = default;

ScoreModel* SVMTranslator::ParseFromTree(DOMDocument* document, const std::string& transcoder) {
    const CallTrace trace;
    if (!document)
        return nullptr;
    CreateTranscoder(transcoder);
    try {
        return Translate(*document).release();
    } catch (const BXException& error) {
        SVMTranslatorDictionary = nullptr;
        throw BXException(error);
    } catch (...) {
        SVMTranslatorDictionary = nullptr;
        throw;
    }
}

std::unique_ptr<SVMModel> SVMTranslator::Translate(const DOMDocument& document) {
    const DOMElemUtility reader(this, GetTranscoder());
    const DOMElement* documentElement = document.getDocumentElement();
    if (!documentElement)
        ThrowError(260115, Tags::XML_ELE_SVMMODEL, Tags::XML_ELE_PMML);
    const DOMElement& root = *documentElement;
    const DOMElement& element = *reader.GetChildElemByName(&root, Tags::XML_ELE_SVMMODEL, true);
    auto model = std::make_unique<SVMModel>();
    ReadApplication(reader, root, *model);
    ReadDictionary(reader, root, *model);
    ReadTransformations(reader, root, element, *model);
    ReadMiningSchema(reader, element, *model);
    model->SetSupportVectorMachineModel(BuildModelData(reader, element, *model).release());
    return model;
}

// The version of the producing application; neither element nor attribute need be there.
void SVMTranslator::ReadApplication(const DOMElemUtility& reader, const DOMElement& root, SVMModel& model) const {
    const DOMElement* header = reader.GetChildElemByName(&root, Tags::XML_ELE_HEADER, false);
    const DOMElement* application =
        header ? reader.GetElemFromNodeList(header, Tags::XML_ELE_APPLICATION, 0, false) : nullptr;
    const std::string version =
        application ? reader.GetAttributeToString(application, Tags::XML_ATT_VERSION, false) : std::string();
    model.SetVersionInfo(new VersionInfo(version));
}

void SVMTranslator::ReadDictionary(const DOMElemUtility& reader, const DOMElement& root, SVMModel& model) {
    SVMTranslatorDictionary = nullptr;
    const DOMElement* element = reader.GetChildElemByName(&root, Tags::XML_ELE_DATADICTIONARY, false);
    if (element)
        SVMTranslatorDictionary = ParseDictionary(element, true);
    if (SVMTranslatorDictionary)
        model.SetScoreDictionary(SVMTranslatorDictionary, true);
}

// Version 2 of PMML keeps derived fields in the document's TransformationDictionary, later versions in the model.
void SVMTranslator::ReadTransformations(const DOMElemUtility& reader, const DOMElement& root, const DOMElement& element,
                                        SVMModel& model) const {
    const bool isVersion2 = reader.GetAttributeToString(&root, Tags::XML_ATT_VERSION, false).starts_with('2');
    const DOMElement* fields = isVersion2
                                   ? reader.GetChildElemByName(&root, Tags::XML_ELE_TRANSFORMATION, false)
                                   : reader.GetChildElemByName(&element, Tags::XML_ELE_LOCALTRANSFORMATIONS, false);
    if (TransformationDictionary* dictionary = HandleTransformationDictionary(fields, SVMTranslatorDictionary)) {
        model.SetTransformationScoreDictionary(dictionary, true);
        dictionary->SetUpDerivedCaseRecord();
    }
}

void SVMTranslator::ReadMiningSchema(const DOMElemUtility& reader, const DOMElement& element, SVMModel& model) const {
    const DOMElement* schema = reader.GetChildElemByName(&element, Tags::XML_ELE_MININGSCHEMA, false);
    for (const DOMElement* child = schema ? GetFirstChildElt(schema) : nullptr; child;
         child = GetNextSiblingElt(child)) {
        if (HasTag(child, Tags::XML_ELE_MININGFIELD))
            ReadMiningField(reader, *child, model);
    }
}

void SVMTranslator::ReadMiningField(const DOMElemUtility& reader, const DOMElement& field, SVMModel& model) const {
    const std::string name = reader.GetAttributeToString(&field, Tags::XML_ATT_MININGFIELD_NAME, true);
    ScoreDictVar* variable = SVMTranslatorDictionary ? SVMTranslatorDictionary->FindVar(name) : nullptr;
    if (!variable)
        return;
    // Only an absent usage means active: an empty one is some other usage.
    const std::string usage = reader.HasAttribute(&field, Tags::XML_ATT_MININGFIELD_USAGETYPE)
                                  ? reader.GetAttributeToString(&field, Tags::XML_ATT_MININGFIELD_USAGETYPE, true)
                                  : Tags::XML_ATT_MF_FUT_ACTIVE;
    if (usage == Tags::XML_ATT_MF_FUT_ACTIVE)
        model.SetVarRole(variable, ScoreModel::kActive);
    else if (usage == Tags::XML_ATT_MF_FUT_PREDICTED || usage == Tags::XML_ATT_MF_FUT_TARGET)
        model.SetVarRole(variable, ScoreModel::kTarget);
    if (!reader.HasAttribute(&field, Tags::XML_ATT_MININGFIELD_MISSREPLACE))
        return;
    std::unique_ptr<ScoreValue> replacement;
    if (variable->IsString())
        replacement = std::make_unique<StringValue>(
            reader.GetAttributeToString(&field, Tags::XML_ATT_MININGFIELD_MISSREPLACE, true));
    else
        replacement = std::make_unique<NumericValue>(
            reader.GetAttributeToDouble(&field, Tags::XML_ATT_MININGFIELD_MISSREPLACE, true));
    variable->GetVarStats()->SetMissingReplacement(std::move(replacement));
}

std::unique_ptr<SVMModelData> SVMTranslator::BuildModelData(const DOMElemUtility& reader, const DOMElement& element,
                                                            SVMModel& model) const {
    auto data = std::make_unique<SVMModelData>();
    SupportVectorMachineReader machines(reader, model, *data);
    machines.ReadGeneralAttributes(element, *this, SVMTranslatorDictionary);
    VectorDictionaryReader(reader, model, *data).Read(element);
    machines.ReadMachines(element);
    machines.ReadKernel(element);
    return data;
}

}  // namespace KwBrevix_930
