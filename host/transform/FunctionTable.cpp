// The functions that a document defines.
#include "host/transform/FunctionTable.h"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include "host/BXException.h"
#include "host/BaseTranslator.h"
#include "host/DOMElemUtility.h"
#include "host/PMMLModelTags.h"
#include "host/refusal.h"
#include "host/transform/built_in_functions.h"

namespace KwBrevix_930 {

using Tags = PMMLModelTags;
using xercesc::DOMElement;

FunctionTable::FunctionTable() = default;
FunctionTable::~FunctionTable() = default;

void FunctionTable::AddFunctions(const DOMElemUtility& reader, const DOMElement& parent) {
    for (const DOMElement* child = BaseTranslator::GetFirstChildElt(&parent); child;
         child = BaseTranslator::GetNextSiblingElt(child)) {
        if (!BaseTranslator::HasTag(child, "DefineFunction"))
            continue;
        try {
            const std::string name = reader.GetAttributeToString(child, Tags::XML_ATT_NAME, true);
            if (name.empty() || FindBuiltInFunction(name) || !fElements.emplace(name, child).second)
                RefuseAttribute(reader, *child, Tags::XML_ATT_NAME);
        } catch (BXException& error) {
            PutPlace(error, reader, *child, *child);
            throw;
        }
    }
}

void FunctionTable::AddFunctionsFor(const DOMElemUtility& reader, const DOMElement& element) {
    AddFunctions(reader, element);
    const DOMElement* root = element.getOwnerDocument()->getDocumentElement();
    const DOMElement* common = root ? reader.GetChildElemByName(root, Tags::XML_ELE_TRANSFORMATION, false) : nullptr;
    if (common && common != &element)
        AddFunctions(reader, *common);
}

const DOMElement* FunctionTable::Find(const std::string& name) const {
    const auto found = fElements.find(name);
    return found == fElements.end() ? nullptr : found->second;
}

}  // namespace KwBrevix_930
