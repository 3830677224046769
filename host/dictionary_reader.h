// Reads the fields of a PMML document: the DataDictionary, and a MiningSchema's treatments of values.
#pragma once

#include <memory>

#include <xercesc/util/XercesDefs.hpp>

#include "host/DictVar.h"

XERCES_CPP_NAMESPACE_BEGIN
class DOMElement;
class DOMNode;
XERCES_CPP_NAMESPACE_END

namespace KwBrevix_930 {

class BaseDictionary;
class DOMElemUtility;

/// Returns: the variable of one DataField.
/// Errors: as ReadDataDictionary.
BREVIX_HOST_API std::unique_ptr<DictVar> ReadField(const DOMElemUtility& reader, const xercesc::DOMElement& field);

/// Gives a variable the kind and the treatments that a MiningField asks for.
/// Errors: BXException 260111 (element, field, problem) for outliers without limits and for a field of texts that is to
/// be continuous; 260120 and 260153 as everywhere.
BREVIX_HOST_API void ReadTreatment(const DOMElemUtility& reader, const xercesc::DOMElement& miningField,
                                   DictVar& variable);

/// Errors: see PMMLTranslator::ParseDictionary.
std::unique_ptr<BaseDictionary> ReadDataDictionary(const DOMElemUtility& reader, const xercesc::DOMNode& node);

/// node: the DataDictionary. The MiningSchema of the first SupportVectorMachineModel beside it counts, without one the
/// first MiningSchema among the children of the elements beside it.
void ReadTreatments(const DOMElemUtility& reader, const xercesc::DOMNode& node, const BaseDictionary& dictionary);

/// Returns: the storage that a dataType attribute leads to; where it is absent, what an optype attribute leads to.
/// Errors: BXException 260153 for a text that is no data type.
DictVar::DataType ReadDataType(const DOMElemUtility& reader, const xercesc::DOMElement& field);

/// Returns: the kind that an optype attribute leads to; where it is absent, continuous for numbers and otherwise
/// categorical.
DictVar::Kind ReadKind(const DOMElemUtility& reader, const xercesc::DOMElement& field, DictVar::DataType type);

}  // namespace KwBrevix_930
