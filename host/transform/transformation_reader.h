// Reads the derived fields of a PMML document.
#pragma once

#include <memory>

#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMElement;
XERCES_CPP_NAMESPACE_END

namespace KwBrevix_930 {

class DOMElemUtility;
class ScoreDictionary;
class TransformationDictionary;

/// element: a TransformationDictionary or LocalTransformations.
/// Errors: see PMMLTranslator::HandleTransformationDictionary.
std::unique_ptr<TransformationDictionary> ReadTransformations(const DOMElemUtility& reader,
                                                              const xercesc::DOMElement& element,
                                                              const ScoreDictionary& dictionary);

}  // namespace KwBrevix_930
