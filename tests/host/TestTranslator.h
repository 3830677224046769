// A translator that notes what slot 6 receives and gives back an empty model.
#pragma once

#include <string>
#include <vector>
#include <xercesc/dom/DOM.hpp>

#include "host/BXErrorFormater.h"
#include "host/BXException.h"
#include "host/DOMElemUtility.h"
#include "host/PMMLTranslator.h"
#include "host/ScoreDictVar.h"
#include "host/ScoreDictionary.h"
#include "tests/host/TestModel.h"

class TestTranslator : public KwBrevix_930::PMMLTranslator {
public:
    /// What one call of slot 6 received.
    struct Call {
        const xercesc::DOMDocument* document = nullptr;
        std::string transcoder;
        /// Local names of the root and its children: "PMML(Header DataDictionary ...)".
        std::string outline;
        /// The root's version attribute; "none" where there is none.
        std::string version;
        /// The names of the variables that ParseDictionary gives for the document's DataDictionary.
        std::string fields;
    };

    TestTranslator() : PMMLTranslator("") {}

    using PMMLTranslator::ParseFromTree;
    KwBrevix_930::ScoreModel* ParseFromTree(xercesc::DOMDocument* document, const std::string& transcoder) override {
        calls.push_back({document, transcoder, {}, {}, {}});
        if (!document)
            return nullptr;
        CreateTranscoder(transcoder);
        auto model = std::make_unique<TestModel>();
        Note(document->getDocumentElement(), *model);
        if (fails) {
            KwBrevix_930::BXException error(&KwBrevix_930::gErrorFormater);
            error.PutErrorMessage(260281, "isScorable", "PMML");
            throw error;
        }
        return model.release();
    }

    const KwBrevix_930::BrevixTranscoder* Transcoder() const { return GetTranscoder(); }
    const KwBrevix_930::ScoreDictionary* SuppliedDictionary() const { return GetSuppliedDictionary(); }

    std::vector<Call> calls;
    bool fails = false;

private:
    void Note(xercesc::DOMElement* root, TestModel& model) {
        const KwBrevix_930::BrevixTranscoder transcoder;
        const KwBrevix_930::DOMElemUtility reader(this, &transcoder);
        Call& call = calls.back();
        if (!root)
            return;
        call.version =
            reader.HasAttribute(root, "version") ? reader.GetAttributeToString(root, "version", true) : "none";
        call.outline = reader.GetElementName(root) + "(";
        for (const auto* child = GetFirstChildElt(root); child; child = GetNextSiblingElt(child)) {
            call.outline += (call.outline.back() == '(' ? "" : " ") + reader.GetElementName(child);
        }
        call.outline += ")";
        if (const auto* element = reader.GetChildElemByName(root, "DataDictionary", false)) {
            auto* dictionary = ParseDictionary(element, true);
            model.SetScoreDictionary(dictionary, true);
            for (const auto* variable : dictionary->GetVars())
                call.fields += variable->GetName() + " ";
        }
    }
};
