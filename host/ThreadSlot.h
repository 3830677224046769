// A place for one pointer in every thread of Windows. Internal.
#pragma once

#include <cstdint>

#include "host/Export.h"

namespace KwBrevix_930 {

/// Lasts as long as the process, and so must the library whose function it calls.
class BREVIX_HOST_API ThreadSlot {
public:
    /// end: called where a thread ends whose pointer is not null, with that pointer.
    explicit ThreadSlot(void (*end)(void*)) noexcept;

    /// Returns: the calling thread's pointer; null where none was set.
    void* Get() const noexcept;

    /// Returns: whether the pointer is kept; false where the system had no room for the slot.
    bool Set(void* pointer) const noexcept;

private:
    std::uint32_t fIndex;
};

}  // namespace KwBrevix_930
