// The status value that every scoring operation of a model returns.
#pragma once

#include <cstdint>

namespace KwScore {

/// A code and a flag; a default-constructed status means success.
class KwStatus {
public:
    KwStatus() = default;

    /// code: the status code; isError: whether the code stands for an error.
    KwStatus(std::int32_t code, bool isError) : fCode(code), fIsError(isError) {}

    bool IsError() const { return fIsError; }

    /// Returns: the code, 0 for success.
    std::int32_t GetErrorCode() const { return fCode; }

private:
    std::int32_t fCode = 0;
    bool fIsError = false;
};

}  // namespace KwScore
