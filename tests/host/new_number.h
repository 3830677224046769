// A variable of numbers, for tests of what keeps variables.
#pragma once

#include <memory>
#include <string>

#include "host/DictVar.h"

namespace test_support {

inline std::unique_ptr<KwBrevix_930::DictVar> NewNumber(const std::string& name) {
    using KwBrevix_930::DictVar;
    return std::make_unique<DictVar>(name, DictVar::kNumber, DictVar::kContinuous);
}

}  // namespace test_support
