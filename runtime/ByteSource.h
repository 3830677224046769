// Where bytes come from.
#pragma once

#include <cstddef>
#include <string>

#include "runtime/Export.h"

namespace brevix {

class BREVIX_RUNTIME_API ByteSource {
public:
    ByteSource() = default;
    ByteSource(const ByteSource&) = delete;
    ByteSource& operator=(const ByteSource&) = delete;
    virtual ~ByteSource() = default;

    /// Waits for the next bytes, at least one and no more than most.
    /// Returns: how many; 0 at the end.
    /// Fails: Error that names the source.
    virtual std::size_t read(char* target, std::size_t most) = 0;
    /// Returns: what messages call this source.
    virtual const std::string& getName() const = 0;
};

}  // namespace brevix
