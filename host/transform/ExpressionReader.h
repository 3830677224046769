// Reads a tree of expressions; the readers of the single elements are spread over several files.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/DOMElemUtility.h"
#include "host/transform/FunctionExpression.h"
#include "host/transform/expression_reader.h"

namespace KwBrevix_930 {

class MapValuesExpression;

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

    // A row of an InlineTable: its number, from 1, and its cells by the names of their columns.
    struct TableRow {
        const Element* element;
        std::size_t number;
        std::unordered_map<std::string, std::string> cells;
    };

    std::unique_ptr<Expression> ReadUncast(const Element& element, std::optional<FieldType> type);
    std::unique_ptr<Expression> ReadFieldRef(const Element& element, std::optional<FieldType> type);
    std::unique_ptr<Expression> ReadConstant(const Element& element);
    std::unique_ptr<Expression> ReadNormContinuous(const Element& element);
    std::unique_ptr<Expression> ReadNormDiscrete(const Element& element);
    std::unique_ptr<Expression> ReadDiscretize(const Element& element, std::optional<FieldType> type);
    std::unique_ptr<Expression> ReadMapValues(const Element& element, std::optional<FieldType> type);
    std::vector<std::string> ReadColumns(const Element& element, MapValuesExpression& expression);
    void AddRows(MapValuesExpression& expression, const std::vector<std::string>& columns,
                 const std::vector<TableRow>& rows, const std::vector<std::string>& outputs) const;

    std::unique_ptr<Expression> ReadApply(const Element& element);
    std::string ReadTreatment(const Element& element) const;
    std::unique_ptr<FunctionExpression> MakeUserCall(const Element& function, FunctionCall&& call);
    std::shared_ptr<const FunctionBody> FindBody(const Element& function, const std::vector<const Element*>& parameters,
                                                 const FunctionCall& call);
    std::shared_ptr<const FunctionBody> ReadBody(const Element& function, const std::vector<const Element*>& parameters,
                                                 const FunctionCall& call);
    void RefuseCircle(const std::string& name) const;
    [[noreturn]] static void RefuseDepth();

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
