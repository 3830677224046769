// Between the parser's UTF-16 strings and the library's narrow strings, which are UTF-8.
#pragma once

#include <string>
#include <string_view>

#include <xercesc/util/XercesDefs.hpp>

#include "host/Export.h"

namespace KwBrevix_930 {

/// Stateless; a lone surrogate, or a byte that is not UTF-8, becomes U+FFFD.
class BREVIX_HOST_API BrevixTranscoder {
public:
    virtual ~BrevixTranscoder();

    /// text: zero-terminated; null gives the empty string.
    std::string ToNarrow(const XMLCh* text) const;
    std::basic_string<XMLCh> ToWide(std::string_view text) const;
};

}  // namespace KwBrevix_930
