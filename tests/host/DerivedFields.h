// A document's raw and derived fields with one case, for tests that ask what a derived field becomes.
#pragma once

#include <memory>
#include <string>
#include <xercesc/dom/DOM.hpp>

#include "host/BrevixTranscoder.h"
#include "host/CaseRecord.h"
#include "host/DocumentParser.h"
#include "host/transform/TransformationDictionary.h"
#include "tests/host/TestTranslator.h"

class DerivedFields {
public:
    /// fields: the content of the DataDictionary; derived: of the LocalTransformations; schema: of the MiningSchema;
    /// common: of the TransformationDictionary, of which only the functions are read.
    DerivedFields(const std::string& fields, const std::string& derived, const std::string& schema = "",
                  KwBrevix_930::CaseRecord::Access access = KwBrevix_930::CaseRecord::kByIndex,
                  const std::string& common = "") {
        const auto document = KwBrevix_930::DocumentParser().ParseText(
            "<PMML><DataDictionary>" + fields + "</DataDictionary><TransformationDictionary>" + common +
            "</TransformationDictionary><SupportVectorMachineModel><MiningSchema>" + schema +
            "</MiningSchema><LocalTransformations>" + derived +
            "</LocalTransformations></SupportVectorMachineModel></PMML>");
        const KwBrevix_930::BrevixTranscoder transcoder;
        const KwBrevix_930::DOMElemUtility reader(nullptr, &transcoder);
        const auto* root = document->getDocumentElement();
        const TestTranslator translator;
        dictionary.reset(translator.ParseDictionary(reader.GetChildElemByName(root, "DataDictionary", true), true));
        transformations.reset(translator.HandleTransformationDictionary(
            reader.GetChildElemByName(reader.GetChildElemByName(root, "SupportVectorMachineModel", true),
                                      "LocalTransformations", true),
            dictionary.get()));
        transformations->SetUpDerivedCaseRecord();
        record = std::make_unique<KwBrevix_930::CaseRecord>(*dictionary, access);
        for (auto* variable : dictionary->GetVars())
            variable->SetIndex(record->GetIndex(variable->GetName()));
    }

    /// Sets a raw field of the case.
    DerivedFields& Set(const std::string& name, const std::string& text) {
        record->SetText(record->GetIndex(name), text);
        return *this;
    }
    DerivedFields& SetMissing(const std::string& name) {
        record->SetMissing(record->GetIndex(name));
        return *this;
    }

    const KwBrevix_930::ScoreCaseRecord* Compute() const {
        return transformations->GetValuesForDerivedVars(record.get(), dictionary.get());
    }

    /// What a derived field becomes: "missing", "invalid", or its text; texts stand in quotes.
    std::string Derive(const std::string& name) const {
        const auto* variable = transformations->FindVar(name);
        const auto* value = Compute()->GetValue(name);
        if (value != Compute()->GetValue(variable->GetIndex()))
            return "different by index and by name";
        if (variable->IsMissing(value))
            return "missing";
        if (!variable->IsValid(value))
            return "invalid";
        return variable->IsString() ? "'" + value->GetString() + "'" : value->GetString();
    }

    std::unique_ptr<KwBrevix_930::ScoreDictionary> dictionary;
    std::unique_ptr<KwBrevix_930::TransformationDictionary> transformations;
    std::unique_ptr<KwBrevix_930::CaseRecord> record;
};
