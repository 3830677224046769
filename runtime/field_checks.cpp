// Whether the fields of a document can be read.
#include "runtime/field_checks.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include <xercesc/dom/DOMElement.hpp>

#include "host/BXException.h"
#include "host/PMMLModelTags.h"
#include "host/dictionary_reader.h"
#include "runtime/ModelDocument.h"
#include "runtime/refusals.h"

namespace brevix {

namespace {

using KwBrevix_930::BXException;
using KwBrevix_930::DictVar;
using Tags = KwBrevix_930::PMMLModelTags;
using xercesc::DOMElement;

class FieldChecks {
public:
    explicit FieldChecks(const ModelDocument& document) : fDocument(document) {}

    void readDataField(const DOMElement& field) {
        const std::string name = fDocument.getAttribute(field, Tags::XML_ATT_NAME);
        attempt(field, name, [&] {
            auto variable = KwBrevix_930::ReadField(fDocument.getReader(), field);
            fVariables.emplace(name, std::move(variable));
        });
        fNames.emplace(name, &field);
    }

    // A field that was complained about already is not looked at again.
    void readMiningField(const DOMElement& field) {
        const std::string name = fDocument.getAttribute(field, Tags::XML_ATT_MININGFIELD_NAME);
        const auto variable = fVariables.find(name);
        if (variable != fVariables.end())
            attempt(field, name, [&] {
                KwBrevix_930::ReadTreatment(fDocument.getReader(), field, *variable->second);
                checkReplacement(field, *variable->second);
            });
        else if (!fNames.contains(name))
            refuseTreatments(field, name);
    }

    void finish() const { throwComplaints(fComplaints, "", fCode); }

private:
    template <class Step>
    void attempt(const DOMElement& element, const std::string& name, const Step& step) {
        try {
            step();
        } catch (const BXException& fault) {
            if (fCode == 0)
                fCode = fault.GetErrorCode();
            fComplaints.push_back(std::string(fault.what()) + " It is in " + describe(element, name));
        }
    }

    std::string describe(const DOMElement& element, const std::string& name) const {
        return fDocument.nameOf(element) + " '" + name + "'" + fDocument.placeOf(element) + ".";
    }

    void checkReplacement(const DOMElement& field, const DictVar& variable) {
        const auto text = fDocument.findAttribute(field, Tags::XML_ATT_MININGFIELD_MISSREPLACE);
        if (text && !variable.MakeValue(*text))
            fComplaints.push_back("missingValueReplacement='" + *text +
                                  "' is no value of the field's data type. It is in " +
                                  describe(field, variable.GetName()));
    }

    // What names no DataField is a derived field, to whose values no treatment would be applied.
    void refuseTreatments(const DOMElement& field, const std::string& name) {
        for (const char* attribute : {Tags::XML_ATT_MININGFIELD_MISSREPLACE, Tags::XML_ATT_INVALIDTREATMENT,
                                      Tags::XML_ATT_OUTLIERS, "missingValueTreatment"}) {
            const auto text = fDocument.findAttribute(field, attribute);
            if (text && *text != "asIs" && *text != "returnInvalid")
                fComplaints.push_back(std::string(attribute) + " is asked for where no DataField is named. It is in " +
                                      describe(field, name));
        }
    }

    const ModelDocument& fDocument;
    std::unordered_map<std::string, std::unique_ptr<DictVar>> fVariables;
    std::unordered_map<std::string, const DOMElement*> fNames;
    std::vector<std::string> fComplaints;
    int fCode = 0;
};

}  // namespace

void checkFields(const ModelDocument& document) {
    FieldChecks checks(document);
    for (const DOMElement* field : document.findChildren(document.getDataDictionary(), Tags::XML_ELE_DATAFIELD))
        checks.readDataField(*field);
    for (const DOMElement* field : document.getMiningFields())
        checks.readMiningField(*field);
    checks.finish();
}

}  // namespace brevix
