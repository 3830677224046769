// The replaced operator new: malloc, but for the one allocation that is to fail. One thread at a time.
#include "tests/support/failing_new.h"

#include <malloc.h>

#include <cstdlib>
#include <new>

namespace failing_new {

namespace {

constexpr std::size_t kNever = static_cast<std::size_t>(-1);

constinit std::size_t gCount = 0;
constinit std::size_t gLiveBytes = 0;
constinit std::size_t gFailing = kNever;
constinit bool gFailed = false;

std::size_t GetSize(void* block) {
#if defined(_WIN32)
    return block != nullptr ? _msize(block) : 0;
#else
    return malloc_usable_size(block);
#endif
}

void* Allocate(std::size_t size) {
    const std::size_t number = gCount++;
    if (number == gFailing) {
        gFailed = true;
        throw std::bad_alloc();
    }
    if (size > kLargestAllocation) {
        throw std::bad_alloc();
    }
    void* block = std::malloc(size != 0 ? size : 1);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    gLiveBytes += GetSize(block);
    return block;
}

void Free(void* block) noexcept {
    gLiveBytes -= GetSize(block);
    std::free(block);
}

void* AllocateOrNull(std::size_t size) noexcept {
    try {
        return Allocate(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

}  // namespace

std::size_t Count() {
    return gCount;
}

std::size_t GetLiveBytes() {
    return gLiveBytes;
}

FailAfter::FailAfter(std::size_t succeeding) {
    gFailing = gCount + succeeding;
    gFailed = false;
}

FailAfter::~FailAfter() {
    gFailing = kNever;
}

bool FailAfter::Failed() const {
    return gFailed;
}

}  // namespace failing_new

void* operator new(std::size_t size) {
    return failing_new::Allocate(size);
}
void* operator new[](std::size_t size) {
    return failing_new::Allocate(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return failing_new::AllocateOrNull(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return failing_new::AllocateOrNull(size);
}
void operator delete(void* block) noexcept {
    failing_new::Free(block);
}
void operator delete[](void* block) noexcept {
    failing_new::Free(block);
}
void operator delete(void* block, std::size_t) noexcept {
    failing_new::Free(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    failing_new::Free(block);
}
