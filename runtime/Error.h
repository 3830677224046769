// What the embedded host throws.
#pragma once

#include <stdexcept>
#include <string>

#include "runtime/Export.h"

namespace brevix {

/// A model, a table or a plug-in that cannot be used. what() is one UTF-8 sentence that names the file; texts of the
/// document stand in it as they are, so a terminal wants printableText around it.
class BREVIX_RUNTIME_API Error : public std::runtime_error {
public:
    explicit Error(const std::string& message, int code = 0) : std::runtime_error(message), fCode(code) {}

    /// Returns: the numeric message code, 0 where the fault has none.
    int getCode() const { return fCode; }

private:
    int fCode;
};

}  // namespace brevix
