// A derived field: a variable whose value is computed from another field.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/DictVar.h"
#include "host/transform/Expression.h"

namespace KwBrevix_930 {

/// Looked up like any variable; its values stand in the derived case record.
class BREVIX_HOST_API TransformVar : public DictVar {
public:
    TransformVar(std::string name, DataType type, Kind kind, std::unique_ptr<Expression> expression);
    ~TransformVar() override;

    /// Returns: the name of the field that the expression reads; empty where it reads none.
    const std::string& GetFieldName() const;

    /// Returns: the values of the source field that the expression encodes as numbers of their own; empty for other
    /// expressions.
    const std::vector<std::string>& GetAllEncodedValues() const;

    const Expression& GetExpression() const { return *fExpression; }

private:
    std::unique_ptr<Expression> fExpression;
};

}  // namespace KwBrevix_930
