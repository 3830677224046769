// What translators of PMML documents have in common.
#include "host/PMMLTranslator.h"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include "host/BaseDictionary.h"
#include "host/DOMElemUtility.h"
#include "host/DocumentParser.h"
#include "host/PMMLModelTags.h"
#include "host/dictionary_reader.h"
#include "host/transform/TransformationDictionary.h"
#include "host/transform/transformation_reader.h"

namespace KwBrevix_930 {

namespace {

using xercesc::DOMDocument;
using xercesc::DOMElement;
using xercesc::DOMNode;

// The child of a document's root that has a tag, null where there is none.
DOMElement* RootChild(const DOMElement* anywhere, const char* tag) {
    const DOMElement* root = anywhere->getOwnerDocument()->getDocumentElement();
    DOMElement* child = root ? BaseTranslator::GetFirstChildElt(root) : nullptr;
    while (child && !BaseTranslator::HasTag(child, tag))
        child = BaseTranslator::GetNextSiblingElt(child);
    return child;
}

void AppendCopy(DOMDocument& document, const DOMElement* element) {
    if (element)
        document.getDocumentElement()->appendChild(document.importNode(element, true));
}

void CopyVersion(DOMDocument& document, const DOMElement* from) {
    const auto version = BrevixTranscoder().ToWide(PMMLModelTags::XML_ATT_VERSION);
    const DOMElement* root = from->getOwnerDocument()->getDocumentElement();
    if (root && root->getAttributeNode(version.c_str()))
        document.getDocumentElement()->setAttribute(version.c_str(), root->getAttribute(version.c_str()));
}

}  // namespace

PMMLTranslator::PMMLTranslator(const std::string& transcoder) : BaseTranslator(transcoder) {}
PMMLTranslator::~PMMLTranslator() = default;

ScoreModel* PMMLTranslator::ParseFromTree(DOMElement* dataDictionary, DOMElement* transformations, DOMElement* model,
                                          const std::string& transcoder) {
    if (!model)
        return ParseFromTree(static_cast<DOMDocument*>(nullptr), transcoder);
    const DocumentHandle document = DocumentParser::CreateDocument(PMMLModelTags::XML_ELE_PMML);
    CopyVersion(*document, model);
    AppendCopy(*document, RootChild(model, PMMLModelTags::XML_ELE_HEADER));
    AppendCopy(*document, dataDictionary ? dataDictionary : RootChild(model, PMMLModelTags::XML_ELE_DATADICTIONARY));
    AppendCopy(*document, transformations ? transformations : RootChild(model, PMMLModelTags::XML_ELE_TRANSFORMATION));
    AppendCopy(*document, model);
    // Through the form that makes sure of a DataDictionary element where a dictionary was supplied.
    return ParseFromTree(document.get(), const_cast<ScoreDictionary*>(GetSuppliedDictionary()), transcoder);
}

ScoreDictionary* PMMLTranslator::ParseDictionary(const DOMNode* node, bool withTreatments) const {
    const BrevixTranscoder transcoder;
    const DOMElemUtility reader(nullptr, &transcoder);
    const ScoreDictionary* supplied = GetSuppliedDictionary();
    auto dictionary = supplied ? BaseDictionary::CopyOf(*supplied) : ReadDataDictionary(reader, *node);
    if (withTreatments)
        ReadTreatments(reader, *node, *dictionary);
    return dictionary.release();
}

bool PMMLTranslator::HandleTargets(const DOMElement* element, const ScoreDictionary* dictionary) const {
    const BrevixTranscoder transcoder;
    const DOMElemUtility reader(nullptr, &transcoder);
    for (const DOMElement* child = GetFirstChildElt(element); child; child = GetNextSiblingElt(child)) {
        if (!HasTag(child, PMMLModelTags::XML_ELE_TARGET) ||
            !reader.HasAttribute(child, PMMLModelTags::XML_ATT_SVM_FIELD))
            continue;
        if (!dictionary->FindVar(reader.GetAttributeToString(child, PMMLModelTags::XML_ATT_SVM_FIELD, true)))
            return false;
    }
    return true;
}

TransformationDictionary* PMMLTranslator::HandleTransformationDictionary(const DOMElement* element,
                                                                         const ScoreDictionary* dictionary) const {
    if (!element || !dictionary)
        return nullptr;
    const BrevixTranscoder transcoder;
    const DOMElemUtility reader(nullptr, &transcoder);
    return ReadTransformations(reader, *element, *dictionary).release();
}

}  // namespace KwBrevix_930
