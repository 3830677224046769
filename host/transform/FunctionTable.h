// The functions that a document defines.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include <xercesc/util/XercesDefs.hpp>

#include "host/Export.h"
#include "host/transform/Expression.h"

XERCES_CPP_NAMESPACE_BEGIN
class DOMElement;
XERCES_CPP_NAMESPACE_END

namespace KwBrevix_930 {

class DOMElemUtility;
class FieldScope;

/// A function read for certain types of its arguments. Its expression reads the arguments as its slots, in order.
struct FunctionBody {
    std::unique_ptr<Expression> expression;
    /// How many expressions are evaluated in one call, and how deep they are nested.
    std::size_t steps = 0;
    std::size_t depth = 0;
};

/// Filled and used while a document's expressions are read; its elements must outlive it.
class BREVIX_HOST_API FunctionTable {
public:
    FunctionTable();
    FunctionTable(const FunctionTable&) = delete;
    FunctionTable& operator=(const FunctionTable&) = delete;
    ~FunctionTable();

    /// Adds the DefineFunction children of an element.
    /// Errors: BXException 260153 for a name that is empty, taken, or that of a built-in function; 260120 for a missing
    /// one.
    void AddFunctions(const DOMElemUtility& reader, const xercesc::DOMElement& parent);

    /// Adds the functions of an element and those of the TransformationDictionary of its document.
    void AddFunctionsFor(const DOMElemUtility& reader, const xercesc::DOMElement& element);

    /// Returns: the DefineFunction element of that name; null where there is none.
    const xercesc::DOMElement* Find(const std::string& name) const;

private:
    friend class ExpressionReader;
    friend std::unique_ptr<Expression> ReadExpression(const DOMElemUtility&, const xercesc::DOMElement&,
                                                      std::optional<FieldType>, FieldScope&, FunctionTable&);

    using Signature = std::pair<std::string, std::vector<std::string>>;

    std::unordered_map<std::string, const xercesc::DOMElement*> fElements;
    std::map<Signature, std::shared_ptr<const FunctionBody>> fBodies;
    // The functions that are being read, the innermost last.
    std::vector<std::string> fOpen;
    // The expression that is being read, the innermost: where an error lies.
    const xercesc::DOMElement* fCurrent = nullptr;
    // How many expressions all calls of functions evaluate, and how many there are.
    std::size_t fCallSteps = 0;
};

}  // namespace KwBrevix_930
