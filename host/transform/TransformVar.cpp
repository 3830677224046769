// A derived field.
#include "host/transform/TransformVar.h"

#include <utility>

namespace KwBrevix_930 {

TransformVar::TransformVar(std::string name, FieldType type, Kind kind, std::unique_ptr<Expression> expression)
    : DictVar(std::move(name), type.GetStorage(), kind), fExpression(std::move(expression)) {
    SetFieldType(type);
}

TransformVar::~TransformVar() = default;

void TransformVar::SetExpression(std::unique_ptr<Expression> expression) {
    fExpression = std::move(expression);
}

const std::string& TransformVar::GetFieldName() const {
    static const std::string kNone;
    return fExpression ? fExpression->GetFieldName() : kNone;
}

const std::vector<std::string>& TransformVar::GetAllEncodedValues() const {
    static const std::vector<std::string> kNone;
    return fExpression ? fExpression->GetAllEncodedValues() : kNone;
}

}  // namespace KwBrevix_930
