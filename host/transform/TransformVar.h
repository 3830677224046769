// A derived field: a variable whose value is computed from other fields.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "host/DictVar.h"
#include "host/transform/Expression.h"

namespace KwBrevix_930 {

/// Looked up like any variable; its values stand in the derived case record.
class BREVIX_HOST_API TransformVar : public DictVar {
public:
    /// GetFieldType gives the type, never null. The expression may be null, and be given later.
    TransformVar(std::string name, FieldType type, Kind kind, std::unique_ptr<Expression> expression = nullptr);
    ~TransformVar() override;

    /// expression: of this field's own type; reads slots of the dictionary that holds this variable.
    void SetExpression(std::unique_ptr<Expression> expression);
    /// Returns: null as long as there is none; the field is missing then.
    const Expression* GetExpression() const { return fExpression.get(); }

    /// Returns: the name of the first field that the expression reads; empty where it reads none.
    const std::string& GetFieldName() const;

    /// Returns: the values of the source field that the expression encodes as numbers of their own; empty for other
    /// expressions.
    const std::vector<std::string>& GetAllEncodedValues() const;

    /// Returns: where the dictionary that holds this variable keeps its value while it evaluates expressions.
    std::size_t GetSlot() const { return fSlot; }
    /// For that dictionary only.
    void SetSlot(std::size_t slot) { fSlot = slot; }

private:
    std::unique_ptr<Expression> fExpression;
    std::size_t fSlot = 0;
};

}  // namespace KwBrevix_930
