// Translates a PMML document with a SupportVectorMachineModel element into an SVMModel.
#pragma once

#include <memory>
#include <string>

#include "host/PMMLTranslator.h"

namespace KwBrevix_930 {

class DOMElemUtility;
class SVMModel;
class SVMModelData;

class SVMTranslator : public PMMLTranslator {
public:
    SVMTranslator();
    ~SVMTranslator() override;

    using PMMLTranslator::ParseFromTree;

    /// document: stays the caller's, and is not needed afterwards. transcoder: the name of the transcoder, which is
    /// created on first use.
    /// Returns: a new SVMModel, owned by the caller; null for a null document.
    /// Errors: BXException, for which docs/errors.md lists codes and arguments; nothing leaks.
    ScoreModel* ParseFromTree(xercesc::DOMDocument* document, const std::string& transcoder) override;

private:
    friend class SVMTranslatorTestAccess;

    std::unique_ptr<SVMModel> Translate(const xercesc::DOMDocument& document);
    void ReadApplication(const DOMElemUtility& reader, const xercesc::DOMElement& root, SVMModel& model) const;
    void ReadDictionary(const DOMElemUtility& reader, const xercesc::DOMElement& root, SVMModel& model);
    void ReadTransformations(const DOMElemUtility& reader, const xercesc::DOMElement& root,
                             const xercesc::DOMElement& element, SVMModel& model) const;
    void ReadMiningSchema(const DOMElemUtility& reader, const xercesc::DOMElement& element, SVMModel& model) const;
    void ReadMiningField(const DOMElemUtility& reader, const xercesc::DOMElement& field, SVMModel& model) const;
    std::unique_ptr<SVMModelData> BuildModelData(const DOMElemUtility& reader, const xercesc::DOMElement& element,
                                                 SVMModel& model) const;

    // The document's dictionary, owned by the model that was translated last; null at creation and after a failure.
    ScoreDictionary* SVMTranslatorDictionary = nullptr;
};

}  // namespace KwBrevix_930
