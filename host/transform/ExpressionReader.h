// Reads a tree of expressions; the readers of the single elements are spread over several files.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "host/DOMElemUtility.h"
#include "host/transform/expression_reader.h"

namespace KwBrevix_930 {

/// One for each tree, and for each function's body.
class ExpressionReader {
public:
    /// depth: how deep the tree stands in others.
    ExpressionReader(const DOMElemUtility& reader, FieldScope& scope, FunctionTable& functions, std::size_t depth)
        : fReader(reader), fScope(scope), fFunctions(functions), fDepth(depth), fDeepest(depth) {}

    /// Errors: see ReadExpression; they tell the line.
    std::unique_ptr<Expression> Read(const xercesc::DOMElement& element, std::optional<FieldType> type);

    /// Returns: how many expressions were read, those of called functions included, and the depth that they reach.
    std::size_t GetSteps() const { return fSteps; }
    std::size_t GetDeepest() const { return fDeepest; }

private:
    using Element = xercesc::DOMElement;

    std::unique_ptr<Expression> ReadUncast(const Element& element, std::optional<FieldType> type);
    std::unique_ptr<Expression> ReadFieldRef(const Element& element, std::optional<FieldType> type);
    std::unique_ptr<Expression> ReadConstant(const Element& element);
    std::unique_ptr<Expression> ReadNormContinuous(const Element& element);
    std::unique_ptr<Expression> ReadNormDiscrete(const Element& element);

    Field FindField(const Element& element, const std::string& name);
    std::string ReadFieldName(const Element& element) const;
    std::optional<double> ReadOptionalNumber(const Element& element, const char* attribute) const;
    std::optional<Literal> ReadOptionalLiteral(const Element& element, const char* attribute, FieldType type) const;
    std::optional<FieldType> ReadOptionalType(const Element& element) const;

    const DOMElemUtility& fReader;
    FieldScope& fScope;
    FunctionTable& fFunctions;
    std::size_t fDepth;
    std::size_t fDeepest;
    std::size_t fSteps = 0;
};

}  // namespace KwBrevix_930
