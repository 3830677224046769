// Reads the expressions of a PMML document.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>

#include <xercesc/util/XercesDefs.hpp>

#include "host/Export.h"
#include "host/transform/Expression.h"
#include "host/transform/FieldScope.h"
#include "host/transform/FunctionTable.h"

XERCES_CPP_NAMESPACE_BEGIN
class DOMElement;
XERCES_CPP_NAMESPACE_END

namespace KwBrevix_930 {

class DOMElemUtility;

/// How deep expressions may be nested, the functions that they call included.
inline constexpr std::size_t kExpressionDepthLimit = 500;
/// How many expressions the calls of a document's functions may read or evaluate for one case, altogether.
inline constexpr std::size_t kFunctionStepLimit = 1'000'000;

/// Reads one expression and resolves its fields. element: FieldRef, Constant, NormContinuous, NormDiscrete, Discretize,
/// MapValues or Apply; type: what the values are cast to, none for the expression's own type; scope: the fields that
/// may be read; functions: those that may be called beside the built-in ones.
/// Returns: the expression, never null.
/// Errors: BXException 260102 (element, parent) for an element that is no expression or not supported; 260103 (kind,
/// name, element) for a field or function that is not there; 260104 (function, count, counts) for a wrong number of
/// arguments; 260105 (kind, names) for functions that call each other in a circle; 260106 (what, type, type) for types
/// that contradict each other; 260107 (limit) beyond one of the limits above; 260114, 260115, 260120 and 260153 as
/// everywhere. Each error says which expression it is in, and the line where it is known.
BREVIX_HOST_API std::unique_ptr<Expression> ReadExpression(const DOMElemUtility& reader,
                                                           const xercesc::DOMElement& element,
                                                           std::optional<FieldType> type, FieldScope& scope,
                                                           FunctionTable& functions);

/// Returns: the first child that can be an expression: Extension and Value elements and parameters are passed over.
/// Errors: BXException 260115 where there is none.
BREVIX_HOST_API const xercesc::DOMElement& FindExpression(const DOMElemUtility& reader,
                                                          const xercesc::DOMElement& parent);

}  // namespace KwBrevix_930
