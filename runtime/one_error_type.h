// Documents are read by libraries with exceptions of their own: here whatever they throw becomes an Error.
#pragma once

#include <new>
#include <string>

#include <xercesc/dom/DOMException.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/XMLException.hpp>

#include "host/BXException.h"
#include "host/BrevixTranscoder.h"
#include "runtime/Error.h"

namespace brevix {

/// Returns: what step() returns. Fails: Error, or std::bad_alloc.
template <class Step>
auto withOneErrorType(const Step& step) {
    using KwBrevix_930::BrevixTranscoder;
    try {
        return step();
    } catch (const KwBrevix_930::BXException& fault) {
        throw Error(fault.what(), fault.GetErrorCode());
    } catch (const xercesc::OutOfMemoryException&) {
        throw std::bad_alloc();
    } catch (const xercesc::XMLException& fault) {
        throw Error(BrevixTranscoder().ToNarrow(fault.getMessage()));
    } catch (const xercesc::DOMException& fault) {
        throw Error(BrevixTranscoder().ToNarrow(fault.getMessage()));
    }
}

/// Returns: what step() returns. Fails: as step, an Error with the file's name in front.
template <class Step>
auto withFileName(const std::string& path, const Step& step) {
    try {
        return step();
    } catch (const Error& fault) {
        throw Error(path + ": " + fault.what(), fault.getCode());
    }
}

}  // namespace brevix
