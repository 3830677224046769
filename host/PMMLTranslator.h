// What translators of PMML documents have in common: dictionaries, targets and transformations.
#pragma once

#include <string>

#include "host/BaseTranslator.h"

namespace KwBrevix_930 {

class TransformationDictionary;

class BREVIX_HOST_API PMMLTranslator : public BaseTranslator {
public:
    explicit PMMLTranslator(const std::string& transcoder);
    ~PMMLTranslator() override;

    using BaseTranslator::ParseFromTree;
    ScoreModel* ParseFromTree(xercesc::DOMElement* dataDictionary, xercesc::DOMElement* transformations,
                              xercesc::DOMElement* model, const std::string& transcoder) override;

    /// Reads a DataDictionary element: fields with their values and intervals. withTreatments: also the kinds and
    /// the treatments of values that the model's MiningSchema beside it asks for.
    /// Returns: a new dictionary, owned by the caller; where the caller of the translator supplied one, a copy of that.
    /// Errors: BXException 260120 (attribute, element) for a missing name; 260153 (value, attribute, element) for a
    /// name that is empty or repeated and for a text that does not fit its attribute or the field's data type; 260111
    /// (element, field, problem) for an Interval without margins or numbers and for treatments that contradict.
    ScoreDictionary* ParseDictionary(const xercesc::DOMNode* node, bool withTreatments) const;

    /// Checks a Targets element against a dictionary; what it asks for is applied after scoring, by the host.
    /// Returns: false when it names a field that the dictionary does not hold.
    bool HandleTargets(const xercesc::DOMElement* element, const ScoreDictionary* dictionary) const;

    /// Reads the DerivedField elements of a TransformationDictionary or LocalTransformations element.
    /// Returns: a new dictionary, owned by the caller; null for a null element.
    /// Errors: BXException 260102 (element, parent) for an expression that is not supported; 260103 (kind, name,
    /// element) for a field that is read before it is defined; 260115, 260120 and 260153 as everywhere.
    TransformationDictionary* HandleTransformationDictionary(const xercesc::DOMElement* element,
                                                             const ScoreDictionary* dictionary) const;
};

}  // namespace KwBrevix_930
