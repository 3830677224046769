// The base of what a derived field computes.
#include "host/transform/Expression.h"

#include <utility>

namespace KwBrevix_930 {

Expression::Expression(std::string fieldName) : fFieldName(std::move(fieldName)) {}
Expression::~Expression() = default;

const std::vector<std::string>& Expression::GetAllEncodedValues() const {
    static const std::vector<std::string> kNone;
    return kNone;
}

}  // namespace KwBrevix_930
