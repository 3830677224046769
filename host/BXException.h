// The host's exception: a numeric message code and the text arguments that fill its message.
#pragma once

#include <exception>
#include <string>
#include <vector>

#include "host/IErrorFormater.h"

namespace KwBrevix_930 {

/// The only exception type that a plug-in raises. Catch sites catch it by reference and throw a copy.
class BREVIX_HOST_API BXException : public std::exception {
public:
    /// formater: turns code and arguments into the text; not owned, must outlive the exception.
    explicit BXException(ScoreContext::IErrorFormater* formater);
    BXException(const BXException&);
    BXException& operator=(const BXException&);
    ~BXException() override;

    /// Sets code and message. Further arguments: one zero-terminated narrow string (UTF-8) for each argument of the
    /// code, in the order of the code's table entry; a null pointer counts as the empty string.
    /// Returns: false for a code that has no message; code is kept then, without arguments.
    bool PutErrorMessage(int code, ...);

    /// Adds a sentence to the message that tells where in a document the error lies; code and arguments stay as they
    /// are. place: without its full stop. The next message that is put has none.
    void PutPlace(const std::string& place);

    /// Returns: the code put last, 0 before any.
    int GetErrorCode() const { return fCode; }
    const std::vector<std::string>& GetArguments() const { return fArguments; }

    /// Returns: the message text, UTF-8, valid as long as this object; empty before any message was put.
    const char* what() const noexcept override { return fMessage.c_str(); }

private:
    ScoreContext::IErrorFormater* fFormater;
    int fCode = 0;
    std::vector<std::string> fArguments;
    std::string fMessage;
};

}  // namespace KwBrevix_930
