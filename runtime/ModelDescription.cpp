// What a model is: its head, its kernel and its fields.
#include "runtime/ModelDescription.h"

#include <xercesc/dom/DOMElement.hpp>

#include "host/BaseTranslator.h"
#include "host/PMMLModelTags.h"
#include "host/number_text.h"
#include "runtime/ModelDocument.h"
#include "runtime/PreparedDocument.h"
#include "runtime/ScoringModel.h"

namespace brevix {

namespace {

// Fields of fields may have sources in the square of their number, which is more than anybody reads.
constexpr std::size_t kMostTracedFields = 2000;
constexpr std::size_t kMostSourceText = 4 << 20;

using KwBrevix_930::BaseTranslator;
using Tags = KwBrevix_930::PMMLModelTags;
using xercesc::DOMElement;

double numberOf(const ModelDocument& document, const DOMElement& element, const char* attribute, double otherwise) {
    const auto text = document.findAttribute(element, attribute);
    return text ? KwBrevix_930::ParseNumber(*text).value_or(otherwise) : otherwise;
}

// What computes a derived field stands beside what only describes it.
std::string findExpression(const ModelDocument& document, const DOMElement& field) {
    for (const DOMElement* child : document.findChildren(&field, "")) {
        const bool isRemark = BaseTranslator::HasTag(child, Tags::XML_ELE_EXTENSION) ||
                              BaseTranslator::HasTag(child, Tags::XML_ELE_VALUE) ||
                              BaseTranslator::HasTag(child, Tags::XML_ELE_INTERVAL);
        if (!isRemark)
            return KwBrevix_930::BrevixTranscoder().ToNarrow(BaseTranslator::GetLocalName(child));
    }
    return {};
}

}  // namespace

ModelDescription ModelDescription::describe(const PreparedDocument& prepared, const ScoringModel& model) {
    const ModelDocument& document = *prepared.document;
    ModelDescription description;
    description.describeHead(document);
    description.describeKernel(document);
    description.describeDerivedFields(document, model);
    description.describeMachines(document);
    description.targetName = model.getTargetName();
    description.targetType = model.getOutputColumns().front().type;
    description.categories = model.getCategories();
    description.inputs = model.getInputs();
    description.outputs = model.getOutputColumns();
    description.prepared = prepared.notes;
    description.ignored = model.getIgnored();
    return description;
}

void ModelDescription::describeHead(const ModelDocument& document) {
    const DOMElement& model = *document.getModel();
    version = document.getAttribute(document.getRoot(), Tags::XML_ATT_VERSION);
    const DOMElement* header = document.findChild(&document.getRoot(), Tags::XML_ELE_HEADER);
    if (const DOMElement* application = document.findChild(header, Tags::XML_ELE_APPLICATION)) {
        producerName = document.getAttribute(*application, Tags::XML_ATT_NAME);
        producerVersion = document.getAttribute(*application, Tags::XML_ATT_VERSION);
    }
    modelName = document.getAttribute(model, "modelName");
    function = document.getAttribute(model, Tags::XML_ATT_MINING_FUNCTIONNAME);
    if (function == Tags::XML_VAL_SVM_REGRESSION)
        return;
    const bool isPairwise =
        document.getAttribute(model, Tags::XML_ATT_SVM_CLASSMETHOLD) == Tags::XML_ATT_SVM_ONEAGAINSTONE;
    method = isPairwise ? "OneAgainstOne" : "OneAgainstAll";
    threshold = numberOf(document, model, Tags::XML_ATT_THRESHOLD, 0.0);
    hasMaxWins = document.getAttribute(model, Tags::XML_ATT_SVM_MAXWINS) == "true";
}

void ModelDescription::describeKernel(const ModelDocument& document) {
    struct Kernel {
        const char* tag;
        const char* name;
        std::vector<const char*> parameters;
    };
    const Kernel kernels[] = {
        {Tags::XML_ELE_SVM_KFTLINEAR, "linear", {}},
        {Tags::XML_ELE_SVM_KFTPOLY,
         "polynomial",
         {Tags::XML_ATT_SVM_GAMMA, Tags::XML_ATT_SVM_BIAS, Tags::XML_ATT_SVM_DEGREE}},
        {Tags::XML_ELE_SVM_KFTRBF, "radial basis", {Tags::XML_ATT_SVM_GAMMA}},
        {Tags::XML_ELE_SVM_KFTSIGMOID, "sigmoid", {Tags::XML_ATT_SVM_GAMMA, Tags::XML_ATT_SVM_BIAS}}};
    for (const Kernel& known : kernels) {
        const DOMElement* element = document.findChild(document.getModel(), known.tag);
        if (!element)
            continue;
        kernel = known.name;
        for (const char* parameter : known.parameters) {
            const double value = numberOf(document, *element, parameter, 1.0);
            // As the translator reads them: -1 counts as not given.
            kernelParameters.emplace_back(parameter, value == -1.0 ? 1.0 : value);
        }
        return;
    }
}

void ModelDescription::describeDerivedFields(const ModelDocument& document, const ScoringModel& model) {
    const DOMElement* inner = document.findChild(document.getModel(), Tags::XML_ELE_LOCALTRANSFORMATIONS);
    std::size_t sourceText = 0;
    for (const DOMElement* list : {static_cast<const DOMElement*>(document.getTransformations()), inner}) {
        for (const DOMElement* field : document.findChildren(list, Tags::XML_ELE_DERIVEDFIELD)) {
            const std::string name = document.getAttribute(*field, Tags::XML_ATT_NAME);
            derivedFields.push_back({name, document.getAttribute(*field, Tags::XML_ATT_DATATYPE),
                                     document.getAttribute(*field, Tags::XML_ATT_OPTYPE),
                                     findExpression(document, *field), std::nullopt});
            if (derivedFields.size() > kMostTracedFields || sourceText > kMostSourceText)
                continue;
            derivedFields.back().sources = model.listSources(name);
            for (const std::string& source : *derivedFields.back().sources)
                sourceText += source.size();
        }
    }
}

}  // namespace brevix
