// The host's exception: reading the variadic arguments by the code's argument count.
#include "host/BXException.h"

#include <cstdarg>

namespace KwBrevix_930 {

BXException::BXException(ScoreContext::IErrorFormater* formater) : fFormater(formater) {}
BXException::BXException(const BXException&) = default;
BXException& BXException::operator=(const BXException&) = default;
BXException::~BXException() = default;

bool BXException::PutErrorMessage(int code, ...) {
    const int count = fFormater ? fFormater->GetArgumentCount(code) : -1;
    fCode = code;
    fArguments.clear();
    std::va_list arguments;
    va_start(arguments, code);
    for (int i = 0; i < count; ++i) {
        const char* argument = va_arg(arguments, const char*);
        fArguments.emplace_back(argument ? argument : "");
    }
    va_end(arguments);
    fMessage = fFormater ? fFormater->Format(code, fArguments) : std::string();
    return count >= 0;
}

}  // namespace KwBrevix_930
