// The hash key. Arithmetic is in unsigned 32 bits, which wrap. Test: KwHashKey_test.cpp,
// containers_allocation_test.cpp.
#include "numerics/containers/KwHashKey.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <iterator>
#include <string>

#include "numerics/display/display.h"

namespace KwMath_930 {

const int KwHashKey::PRIME_FACTOR[49] = {3,   5,   7,   11,  13,  17,  19,  23,  29,  31,  37,  41,  43,
                                         47,  53,  59,  61,  67,  71,  73,  79,  83,  89,  97,  101, 103,
                                         107, 109, 113, 127, 131, 137, 139, 149, 151, 157, 163, 167, 173,
                                         179, 181, 191, 193, 197, 199, 211, 223, 227, 229};
int KwHashKey::ADD_LOWER_BOUND = 0;

namespace {

constexpr std::uint32_t kUpperBoundWithoutOffset = 9377657;

// n zeros; null for n < 1.
std::unique_ptr<std::int32_t[]> Allocate(int n) {
    return n > 0 ? std::make_unique<std::int32_t[]>(static_cast<std::size_t>(n)) : nullptr;
}

}  // namespace

KwHashKey::KwHashKey() = default;

KwHashKey::KwHashKey(int n) : fElements(Allocate(n)), fLength(std::max(n, 0)) {
    UpdateHashCode();
}

KwHashKey::KwHashKey(const KwHashKey& other)
    : fElements(Allocate(other.fLength)), fLength(other.fLength), fHashCode(other.fHashCode) {
    std::copy_n(other.fElements.get(), fLength, fElements.get());
}

KwHashKey& KwHashKey::operator=(const KwHashKey& other) {
    if (this == &other) {
        return *this;
    }
    if (fLength != other.fLength) {
        fElements = Allocate(other.fLength);
        fLength = other.fLength;
    }
    std::copy_n(other.fElements.get(), fLength, fElements.get());
    fHashCode = other.fHashCode;
    return *this;
}

KwHashKey::~KwHashKey() = default;

int& KwHashKey::operator[](int i) {
    return fElements[static_cast<std::size_t>(i)];
}

const int& KwHashKey::operator[](int i) const {
    return fElements[static_cast<std::size_t>(i)];
}

int KwHashKey::GetLength() const {
    return fLength;
}

int KwHashKey::GetHashcode() const {
    return fHashCode;
}

int KwHashKey::ComputeHashCode() {
    const auto offset = static_cast<std::uint32_t>(ADD_LOWER_BOUND);
    std::uint32_t hash = 0;
    for (std::size_t i = 0; i < static_cast<std::size_t>(fLength); ++i) {
        const auto prime = static_cast<std::uint32_t>(PRIME_FACTOR[i % std::size(PRIME_FACTOR)]);
        hash ^= prime * (static_cast<std::uint32_t>(fElements[i]) + offset);
    }
    return static_cast<std::int32_t>(hash);
}

void KwHashKey::UpdateHashCode() {
    fHashCode = ComputeHashCode();
}

int KwHashKey::GetElementOffset() {
    return ADD_LOWER_BOUND;
}

void KwHashKey::SetElementOffset(int offset) {
    ADD_LOWER_BOUND = offset;
}

int KwHashKey::GetElementUpperBound() {
    return static_cast<std::int32_t>(kUpperBoundWithoutOffset - static_cast<std::uint32_t>(ADD_LOWER_BOUND));
}

bool KwHashKey::operator==(const KwHashKey& other) const {
    return fHashCode == other.fHashCode && fLength == other.fLength &&
           std::equal(fElements.get(), fElements.get() + fLength, other.fElements.get());
}

int KwHashKey::Mismatch(const KwHashKey& other) const {
    const std::int32_t* const begin = fElements.get();
    const std::int32_t common = std::min(fLength, other.fLength);
    return static_cast<int>(std::mismatch(begin, begin + common, other.fElements.get()).first - begin);
}

void KwHashKey::Display() const try {
    std::string text = "\t Key: ";
    for (std::int32_t i = 0; i < fLength; ++i) {
        char digits[16];
        text += "  ";
        text.append(digits, std::to_chars(digits, digits + sizeof digits, (*this)[i]).ptr);
    }
    KwDisplay_930::DisplayText(1, text);
} catch (...) {
    return;  // a dump that cannot be built is dropped
}

bool operator<(const KwHashKey& a, const KwHashKey& b) {
    if (a.GetLength() != b.GetLength()) {
        return a.GetLength() < b.GetLength();
    }
    const int first = a.Mismatch(b);
    return first < a.GetLength() && a[first] < b[first];
}

}  // namespace KwMath_930
