// A regression without a target, as exporters write models that tell what is unusual: its result gets a name.
#include <unordered_set>

#include <xercesc/dom/DOMElement.hpp>

#include "host/PMMLModelTags.h"
#include "runtime/ModelDocument.h"
#include "runtime/Preparation.h"

namespace brevix {

namespace {

using Tags = KwBrevix_930::PMMLModelTags;
using xercesc::DOMElement;

// A name that no field has.
std::string findFreeName(const ModelDocument& document) {
    std::unordered_set<std::string> names;
    for (const DOMElement* field : document.findChildren(document.getDataDictionary(), Tags::XML_ELE_DATAFIELD))
        names.insert(document.getAttribute(*field, Tags::XML_ATT_NAME));
    for (const DOMElement* fields :
         {document.getTransformations(), document.findChild(document.getModel(), Tags::XML_ELE_LOCALTRANSFORMATIONS)}) {
        for (const DOMElement* field : document.findChildren(fields, Tags::XML_ELE_DERIVEDFIELD))
            names.insert(document.getAttribute(*field, Tags::XML_ATT_NAME));
    }
    std::string name = "score";
    while (names.contains(name))
        name += '_';
    return name;
}

}  // namespace

void declareTarget(Preparation& preparation) {
    const ModelDocument& document = preparation.document;
    DOMElement& model = *document.getModel();
    DOMElement* schema = document.findChild(&model, Tags::XML_ELE_MININGSCHEMA);
    if (!schema || !document.getDataDictionary() || !document.getTargetName().empty() ||
        document.getAttribute(model, Tags::XML_ATT_MINING_FUNCTIONNAME) != Tags::XML_VAL_SVM_REGRESSION)
        return;
    const std::string name = findFreeName(document);
    DOMElement* field = document.createElement(*schema, Tags::XML_ELE_DATAFIELD);
    document.setAttribute(*field, Tags::XML_ATT_NAME, name);
    document.setAttribute(*field, Tags::XML_ATT_OPTYPE, "continuous");
    document.setAttribute(*field, Tags::XML_ATT_DATATYPE, "double");
    document.getDataDictionary()->appendChild(field);
    DOMElement* mining = document.createElement(*schema, Tags::XML_ELE_MININGFIELD);
    document.setAttribute(*mining, Tags::XML_ATT_MININGFIELD_NAME, name);
    document.setAttribute(*mining, Tags::XML_ATT_MININGFIELD_USAGETYPE, Tags::XML_ATT_MF_FUT_TARGET);
    schema->appendChild(mining);
    preparation.note(1, "the model names no target; its result is called '" + name + "'");
}

}  // namespace brevix
