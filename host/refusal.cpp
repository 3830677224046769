// Errors in a document.
#include "host/refusal.h"

#include "host/BXErrorFormater.h"
#include "host/BXException.h"
#include "host/DOMElemUtility.h"
#include "host/DocumentParser.h"
#include "host/PMMLModelTags.h"

namespace KwBrevix_930 {

void Refuse(int code, const std::string& first, const std::string& second, const std::string& third) {
    BXException error(&gErrorFormater);
    error.PutErrorMessage(code, first.c_str(), second.c_str(), third.c_str());
    throw error;
}

void RefuseValue(const std::string& value, const std::string& attribute, const std::string& element) {
    Refuse(260153, value, attribute, element);
}

void RefuseAttribute(const DOMElemUtility& reader, const xercesc::DOMElement& element, const std::string& attribute) {
    RefuseValue(reader.GetAttributeToString(&element, attribute, true), attribute, reader.GetElementName(&element));
}

void PutPlace(BXException& error, const DOMElemUtility& reader, const xercesc::DOMElement& field,
              const xercesc::DOMElement& at) {
    std::string place = "In " + reader.GetElementName(&field);
    const std::string name = reader.GetAttributeToString(&field, PMMLModelTags::XML_ATT_NAME, false);
    if (!name.empty())
        place += " '" + name + "'";
    if (const std::size_t line = DocumentParser::LineOf(at))
        place += ", line " + std::to_string(line);
    error.PutPlace(place);
}

}  // namespace KwBrevix_930
