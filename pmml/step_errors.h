// Turns a failed read into the error of the step that it belongs to.
#pragma once

#include "host/BXErrorFormater.h"
#include "host/BXException.h"

namespace KwBrevix_930 {

/// Throws a BXException with a code and its arguments.
template <typename... Arguments>
[[noreturn]] void ThrowError(int code, const Arguments*... arguments) {
    BXException error(&gErrorFormater);
    error.PutErrorMessage(code, arguments...);
    throw error;
}

/// Returns what a read returns; a BXException that it throws becomes one with the code and arguments given.
template <typename Read, typename... Arguments>
auto ReadOrThrow(Read read, int code, const Arguments*... arguments) {
    try {
        return read();
    } catch (const BXException&) {
        ThrowError(code, arguments...);
    }
}

}  // namespace KwBrevix_930
