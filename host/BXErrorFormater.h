// The host's error formatter: one English sentence per message code.
#pragma once

#include "host/IErrorFormater.h"

namespace ScoreContext {

/// Knows the messages of the host and its plug-ins; each contains the numeric code and every argument.
class BREVIX_HOST_API BXErrorFormater : public IErrorFormater {  // sic
public:
    /// Returns: the sentence; for an unknown code or a wrong number of arguments, a sentence that lists them all.
    std::string Format(int code, const std::vector<std::string>& arguments) const override;
    int GetArgumentCount(int code) const override;
};

}  // namespace ScoreContext

namespace KwBrevix_930 {

/// The formatter that every BXException is built over.
extern BREVIX_HOST_API ScoreContext::BXErrorFormater gErrorFormater;

}  // namespace KwBrevix_930
