// A wrong command line.
#pragma once

#include <stdexcept>

namespace brevix {

/// A command line that asks for what cannot be.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace brevix
