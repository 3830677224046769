// The base of what a derived field computes.
#include "host/transform/Expression.h"

namespace KwBrevix_930 {

Expression::~Expression() = default;

void Expression::AppendSlots(std::vector<std::size_t>&) const {}

const std::string& Expression::GetFieldName() const {
    static const std::string kNone;
    return kNone;
}

const std::vector<std::string>& Expression::GetAllEncodedValues() const {
    static const std::vector<std::string> kNone;
    return kNone;
}

}  // namespace KwBrevix_930
