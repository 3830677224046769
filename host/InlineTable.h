// A table inside a document.
#pragma once

#include "host/Export.h"

namespace KwBrevix_930 {

/// Rows of named cells. The base of a host's own class; models do not look inside.
class BREVIX_HOST_API InlineTable {
public:
    InlineTable() {}
    InlineTable(const InlineTable&) = default;
    InlineTable& operator=(const InlineTable&) = default;
    virtual ~InlineTable();
};

}  // namespace KwBrevix_930
