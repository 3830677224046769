// The host's exception: reading the variadic arguments by the code's argument count.
#include "host/BXException.h"

#include <cstdarg>
#include <utility>

namespace KwBrevix_930 {

BXException::BXException(ScoreContext::IErrorFormater* formater) : fFormater(formater) {}
BXException::BXException(const BXException&) = default;
BXException& BXException::operator=(const BXException&) = default;
BXException::~BXException() = default;

bool BXException::PutErrorMessage(int code, ...) {
    const int count = fFormater ? fFormater->GetArgumentCount(code) : -1;
    // Collected aside: an argument may point into this object's own message or arguments.
    std::vector<std::string> texts;
    std::va_list arguments;
    va_start(arguments, code);
    for (int i = 0; i < count; ++i) {
        const char* argument = va_arg(arguments, const char*);
        texts.emplace_back(argument ? argument : "");
    }
    va_end(arguments);
    fCode = code;
    fArguments = std::move(texts);
    fMessage = fFormater ? fFormater->Format(code, fArguments) : std::string();
    return count >= 0;
}

void BXException::PutPlace(const std::string& place) {
    fMessage += " " + place + ".";
}

}  // namespace KwBrevix_930
