// A model that another one holds alone, taken out of it, with everything that the outer one says about it.
#include <algorithm>
#include <unordered_map>

#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNodeList.hpp>

#include "host/BaseTranslator.h"
#include "host/PMMLModelTags.h"
#include "runtime/ModelDocument.h"
#include "runtime/Preparation.h"
#include "runtime/refusals.h"

namespace brevix {

namespace {

using KwBrevix_930::BaseTranslator;
using Tags = KwBrevix_930::PMMLModelTags;
using xercesc::DOMElement;

constexpr const char* kMining = "MiningModel";
constexpr const char* kAnomaly = "AnomalyDetectionModel";
constexpr const char* kOutput = "Output";
constexpr const char* kOutputField = "OutputField";
constexpr const char* kSegmentation = "Segmentation";
constexpr const char* kVerification = "ModelVerification";

bool isAnyOf(const std::string& text, std::initializer_list<const char*> texts) {
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

// Takes the model out of one outer model.
class Lifting {
public:
    Lifting(const ModelDocument& document, DOMElement& outer) : fDocument(document), fOuter(outer) {}

    // Returns: the inner model, now in the outer one's place.
    DOMElement& lift() {
        DOMElement& inner = BaseTranslator::HasTag(&fOuter, kMining) ? findInSegmentation() : findInAnomalyModel();
        mergeFunctions(inner);
        mergeSchemas(inner);
        checkTargets(inner);
        mergeOutputs(inner);
        moveTargets(inner);
        moveTransformations(inner);
        moveVerification(inner);
        moveUnread(inner);
        // Not released: a new element could take the place of one whose line is known.
        fOuter.getParentNode()->replaceChild(&inner, &fOuter);
        return inner;
    }

private:
    [[noreturn]] void refuse(const std::string& why) const { refuseNested(fDocument, why); }

    DOMElement& onlyModelOf(const DOMElement& holder) const {
        std::vector<DOMElement*> models;
        for (DOMElement* child : fDocument.findChildren(&holder, "")) {
            if (fDocument.nameOf(*child).ends_with("Model"))
                models.push_back(child);
        }
        if (models.size() != 1)
            refuse("the " + fDocument.nameOf(holder) + " holds " + counted(models.size(), "model", "models"));
        const std::string name = fDocument.nameOf(*models.front());
        if (!isAnyOf(name, {Tags::XML_ELE_SVMMODEL, kMining, kAnomaly}))
            refuse("the " + fDocument.nameOf(holder) + " holds a " + name);
        return *models.front();
    }

    DOMElement& findInAnomalyModel() const {
        const std::string algorithm = fDocument.getAttribute(fOuter, "algorithmType");
        if (algorithm != "ocsvm")
            refuse("algorithmType=" + quoted(algorithm) + " of AnomalyDetectionModel is not ocsvm");
        if (fDocument.findAttribute(fOuter, "sampleDataSize"))
            refuse("AnomalyDetectionModel asks for sampleDataSize");
        if (fDocument.findChild(&fOuter, "MeanClusterDistances"))
            refuse("AnomalyDetectionModel asks for MeanClusterDistances");
        return onlyModelOf(fOuter);
    }

    // One segment whose predicate is always true: whatever its result is combined with the results of no others.
    DOMElement& findInSegmentation() {
        const DOMElement* segmentation = fDocument.findChild(&fOuter, kSegmentation);
        if (!segmentation)
            refuse("the MiningModel has no Segmentation");
        const auto segments = fDocument.findChildren(segmentation, "Segment");
        if (segments.size() != 1)
            refuse("the MiningModel has " + counted(segments.size(), "Segment", "Segments"));
        const std::string method = fDocument.getAttribute(*segmentation, "multipleModelMethod");
        const bool isRegression =
            fDocument.getAttribute(fOuter, Tags::XML_ATT_MINING_FUNCTIONNAME) == Tags::XML_VAL_SVM_REGRESSION;
        const bool givesTheOne = isAnyOf(method, {"selectFirst", "selectAll", "modelChain"});
        const bool averages = isAnyOf(method, {"average", "weightedAverage", "median", "max", "sum"});
        if (!givesTheOne && !(averages && isRegression))
            refuse("multipleModelMethod=" + quoted(method) + " changes the result of the only Segment");
        if (!fDocument.findChild(segments.front(), "True"))
            refuse("the predicate of the only Segment is not True");
        // A Segment without an id has its place as one.
        fSegment = fDocument.findAttribute(*segments.front(), "id").value_or("1");
        return onlyModelOf(*segments.front());
    }

    void mergeFunctions(DOMElement& inner) const {
        const auto outerFunction = fDocument.findAttribute(fOuter, Tags::XML_ATT_MINING_FUNCTIONNAME);
        const std::string function = fDocument.getAttribute(inner, Tags::XML_ATT_MINING_FUNCTIONNAME);
        if (outerFunction && *outerFunction != function)
            refuse("the functionName " + quoted(function) + " is not that of the model around it");
        if (const auto isScorable = fDocument.findAttribute(fOuter, Tags::XML_ATT_RM_IS_SCORABLE))
            fDocument.setAttribute(inner, Tags::XML_ATT_RM_IS_SCORABLE, *isScorable);
    }

    DOMElement& childOf(DOMElement& parent, const char* tag) const {
        DOMElement* child = fDocument.findChild(&parent, tag);
        if (!child) {
            child = fDocument.createElement(parent, tag);
            parent.insertBefore(child, parent.getFirstChild());
        }
        return *child;
    }

    bool isTarget(const DOMElement& field) const {
        return isAnyOf(fDocument.getAttribute(field, Tags::XML_ATT_MININGFIELD_USAGETYPE),
                       {Tags::XML_ATT_MF_FUT_TARGET, Tags::XML_ATT_MF_FUT_PREDICTED});
    }

    // A field's values go through the outer treatments first. What one of the two is silent about, the other says.
    void mergeField(const DOMElement& outer, DOMElement& inner) const {
        const std::string name = quoted(fDocument.getAttribute(outer, Tags::XML_ATT_MININGFIELD_NAME));
        if (isTarget(outer) != isTarget(inner))
            refuse("the field " + name + " is a target in one of the two MiningSchemas only");
        for (const char* attribute : {Tags::XML_ATT_OPTYPE, Tags::XML_ATT_OUTLIERS, "lowValue", "highValue",
                                      "missingValueTreatment", Tags::XML_ATT_MININGFIELD_MISSREPLACE,
                                      Tags::XML_ATT_INVALIDTREATMENT, Tags::XML_ATT_INVALIDREPLACEMENT}) {
            const auto outside = fDocument.findAttribute(outer, attribute);
            const auto inside = fDocument.findAttribute(inner, attribute);
            const bool isReturned = attribute == Tags::XML_ATT_INVALIDTREATMENT && inside && !outside;
            if ((outside && inside && *outside != *inside) || (isReturned && *inside != "returnInvalid"))
                refuse("the two MiningSchemas say different things about " + std::string(attribute) + " of the field " +
                       name);
            if (outside && !inside)
                fDocument.setAttribute(inner, attribute, *outside);
        }
    }

    void mergeSchemas(DOMElement& inner) const {
        const auto outers =
            fDocument.findChildren(fDocument.findChild(&fOuter, Tags::XML_ELE_MININGSCHEMA), Tags::XML_ELE_MININGFIELD);
        DOMElement& schema = childOf(inner, Tags::XML_ELE_MININGSCHEMA);
        std::unordered_map<std::string, DOMElement*> inners;
        bool hasTarget = false;
        for (DOMElement* field : fDocument.findChildren(&schema, Tags::XML_ELE_MININGFIELD)) {
            inners.emplace(fDocument.getAttribute(*field, Tags::XML_ATT_MININGFIELD_NAME), field);
            hasTarget |= isTarget(*field);
        }
        for (DOMElement* field : outers) {
            const auto found = inners.find(fDocument.getAttribute(*field, Tags::XML_ATT_MININGFIELD_NAME));
            if (found != inners.end())
                mergeField(*field, *found->second);
            else if (hasTarget && isTarget(*field))
                refuse("the two MiningSchemas have different targets");
            else
                schema.appendChild(field);
        }
    }

    void mergeOutputs(DOMElement& inner) const {
        DOMElement* outside = fDocument.findChild(&fOuter, kOutput);
        if (!outside)
            return;
        std::unordered_map<std::string, const DOMElement*> known;
        for (const DOMElement* field : fDocument.findChildren(fDocument.findChild(&inner, kOutput), kOutputField))
            known.emplace(fDocument.getAttribute(*field, Tags::XML_ATT_NAME), field);
        DOMElement& output = childOf(inner, kOutput);
        for (DOMElement* field : fDocument.findChildren(outside, kOutputField)) {
            const std::string name = fDocument.getAttribute(*field, Tags::XML_ATT_NAME);
            const auto same = known.find(name);
            if (same != known.end() && !field->isEqualNode(same->second))
                refuse("both Outputs hold an OutputField " + quoted(name));
            if (same != known.end())
                continue;
            dropSegment(*field);
            output.appendChild(field);
        }
    }

    void dropSegment(DOMElement& outputField) const {
        const auto segment = fDocument.findAttribute(outputField, "segmentId");
        if (!segment)
            return;
        if (*segment != fSegment)
            refuse("the OutputField " + quoted(fDocument.getAttribute(outputField, Tags::XML_ATT_NAME)) +
                   " asks for a Segment that is not there");
        fDocument.removeAttribute(outputField, "segmentId");
    }

    // The inner Output is computed before the outer Targets change the prediction.
    void checkTargets(DOMElement& inner) const {
        if (!fDocument.findChild(&fOuter, Tags::XML_ELE_TARGETS))
            return;
        if (fDocument.findChild(&inner, Tags::XML_ELE_TARGETS))
            refuse("both models have Targets");
        for (const DOMElement* field : fDocument.findChildren(fDocument.findChild(&inner, kOutput), kOutputField)) {
            const std::string feature = fDocument.findAttribute(*field, "feature").value_or("predictedValue");
            if (!isAnyOf(feature, {"probability", "confidence", "transformedValue", "decision"}))
                refuse("the Targets of the " + fDocument.nameOf(fOuter) + " would change the OutputField " +
                       quoted(fDocument.getAttribute(*field, Tags::XML_ATT_NAME)) + " of the model in it");
        }
    }

    void moveTargets(DOMElement& inner) const {
        if (DOMElement* outside = fDocument.findChild(&fOuter, Tags::XML_ELE_TARGETS))
            inner.appendChild(outside);
    }

    // The outer one's expectations are of what the whole gives.
    void moveVerification(DOMElement& inner) const {
        DOMElement* outside = fDocument.findChild(&fOuter, kVerification);
        if (!outside)
            return;
        if (DOMElement* inside = fDocument.findChild(&inner, kVerification))
            inner.removeChild(inside);
        inner.appendChild(outside);
    }

    // What nobody reads is kept where nobody reads it, to be told of.
    void moveUnread(const DOMElement& inner) const {
        for (DOMElement* child : fDocument.findChildren(&fOuter, "")) {
            if (child != &inner &&
                !isAnyOf(fDocument.nameOf(*child),
                         {Tags::XML_ELE_MININGSCHEMA, kOutput, kSegmentation, Tags::XML_ELE_LOCALTRANSFORMATIONS}))
                fDocument.getRoot().appendChild(child);
        }
    }

    void moveTransformations(DOMElement& inner) const {
        DOMElement* outside = fDocument.findChild(&fOuter, Tags::XML_ELE_LOCALTRANSFORMATIONS);
        if (!outside)
            return;
        DOMElement& inside = childOf(inner, Tags::XML_ELE_LOCALTRANSFORMATIONS);
        xercesc::DOMNode* place = inside.getFirstChild();
        for (DOMElement* field : fDocument.findChildren(outside, ""))
            inside.insertBefore(field, place);
    }

    const ModelDocument& fDocument;
    DOMElement& fOuter;
    std::string fSegment;
};

DOMElement* findOuter(const ModelDocument& document) {
    for (DOMElement* child : document.findChildren(&document.getRoot(), "")) {
        if (isAnyOf(document.nameOf(*child), {kMining, kAnomaly}))
            return child;
    }
    return nullptr;
}

}  // namespace

void liftModel(Preparation& preparation) {
    const ModelDocument& document = preparation.document;
    DOMElement* outer = document.getModel() ? nullptr : findOuter(document);
    const auto* inside = outer ? BaseTranslator::GetElementsByTagName(outer, Tags::XML_ELE_SVMMODEL) : nullptr;
    if (!inside || !inside->item(0))
        return;
    std::string path = document.nameOf(*outer);
    DOMElement* model = outer;
    while (!BaseTranslator::HasTag(model, Tags::XML_ELE_SVMMODEL))
        model = &Lifting(document, *model).lift();
    preparation.note(1, "the SupportVectorMachineModel was taken out of the " + path + " that holds it alone");
}

}  // namespace brevix
