// A derived field.
#include "host/transform/TransformVar.h"

#include <utility>

namespace KwBrevix_930 {

TransformVar::TransformVar(std::string name, DataType type, Kind kind, std::unique_ptr<Expression> expression)
    : DictVar(std::move(name), type, kind), fExpression(std::move(expression)) {}

TransformVar::~TransformVar() = default;

const std::string& TransformVar::GetFieldName() const {
    return fExpression->GetFieldName();
}

const std::vector<std::string>& TransformVar::GetAllEncodedValues() const {
    return fExpression->GetAllEncodedValues();
}

}  // namespace KwBrevix_930
