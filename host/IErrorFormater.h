// Interface of the objects that turn a message code and its arguments into a message text.
#pragma once

#include <string>
#include <vector>

#include "host/Export.h"

namespace ScoreContext {

class BREVIX_HOST_API IErrorFormater {  // sic
public:
    IErrorFormater() = default;
    IErrorFormater(const IErrorFormater&) = default;
    IErrorFormater& operator=(const IErrorFormater&) = default;
    virtual ~IErrorFormater();

    /// Returns: the message text of a code, with its arguments in the order of the code's table entry.
    virtual std::string Format(int code, const std::vector<std::string>& arguments) const = 0;

    /// Returns: how many arguments a code takes; -1 for a code that has no message.
    virtual int GetArgumentCount(int code) const = 0;
};

}  // namespace ScoreContext
