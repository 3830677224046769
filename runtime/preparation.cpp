// Rewrites what exporters write and the translator does not read. Each kind of change is one step.
#include "runtime/preparation.h"

#include <utility>

#include <xercesc/dom/DOMElement.hpp>

#include "host/PMMLModelTags.h"
#include "runtime/ModelDocument.h"
#include "runtime/Preparation.h"
#include "runtime/refusals.h"

namespace brevix {

namespace {

using Tags = KwBrevix_930::PMMLModelTags;
using xercesc::DOMElement;
using xercesc::DOMNode;

// Moves derived fields to where the translator reads them, which is one element only: the TransformationDictionary for
// version 2, otherwise the model's LocalTransformations.
void mergeTransformations(Preparation& preparation) {
    const ModelDocument& document = preparation.document;
    DOMElement* outer = document.getTransformations();
    DOMElement* inner = document.findChild(document.getModel(), Tags::XML_ELE_LOCALTRANSFORMATIONS);
    const bool goesOut = document.isVersionTwo();
    const auto moved = document.findChildren(goesOut ? inner : outer, Tags::XML_ELE_DERIVEDFIELD);
    if (moved.empty())
        return;
    DOMElement*& reader = goesOut ? outer : inner;
    if (!reader) {
        DOMElement& parent = goesOut ? document.getRoot() : *document.getModel();
        reader =
            document.createElement(parent, goesOut ? Tags::XML_ELE_TRANSFORMATION : Tags::XML_ELE_LOCALTRANSFORMATIONS);
        parent.appendChild(reader);
    }
    DOMNode* place = goesOut ? nullptr : reader->getFirstChild();
    for (DOMElement* field : moved)
        reader->insertBefore(field, place);
    preparation.note(moved.size(),
                     counted(moved.size(), "derived field", "derived fields") +
                         (goesOut ? " of LocalTransformations put behind those of the TransformationDictionary"
                                  : " of the TransformationDictionary put in front of LocalTransformations"));
}

}  // namespace

// The steps stand in an order in which each finds what those before it leave: categories before what needs them, the
// spelling of methods before what asks for one.
std::vector<std::string> prepareDocument(const ModelDocument& document) {
    Preparation preparation{document};
    liftModel(preparation);
    if (!document.getModel())
        return {};
    for (const auto step :
         {spellAttributes, declareTarget, makeUnitVectors, makeArraysSparse, takeAlternateOfModel, declareCategories,
          completeBinaryMachine, joinTwoMachines, nameOneAgainstOne, mergeTransformations})
        step(preparation);
    throwComplaints(preparation.complaints, "");
    return std::move(preparation.notes);
}

}  // namespace brevix
