// Places for a pointer in every thread: the fiber-local storage of Windows, which tells of the end of a thread.
#include "host/ThreadSlot.h"

#include <windows.h>

namespace KwBrevix_930 {

ThreadSlot::ThreadSlot(void (*end)(void*)) noexcept : fIndex(::FlsAlloc(end)) {}

// FLS_OUT_OF_INDEXES is refused by both calls as any index that was not given out.
void* ThreadSlot::Get() const noexcept {
    return ::FlsGetValue(fIndex);
}

bool ThreadSlot::Set(void* pointer) const noexcept {
    return ::FlsSetValue(fIndex, pointer) != 0;
}

}  // namespace KwBrevix_930
