// The bit set. Copies and moves stand here so that the library exports them. New bits are built aside and then moved
// in, so that a failed allocation leaves the old ones. Test: KwBitSet_test.cpp, containers_allocation_test.cpp.
#include "numerics/containers/KwBitSet.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>

#include "numerics/display/display.h"

namespace KwMath_930 {

namespace {

std::size_t Count(int n) {
    return n > 0 ? static_cast<std::size_t>(n) : 0;
}

// combine(a[i], b[i]) over the common length.
template <class Combine>
std::vector<bool> Combined(const std::vector<bool>& a, const std::vector<bool>& b, Combine combine) {
    std::vector<bool> result(std::min(a.size(), b.size()));
    for (std::size_t i = 0; i < result.size(); ++i) {
        result[i] = combine(a[i], b[i]);
    }
    return result;
}

}  // namespace

KwBitSet::KwBitSet() = default;

KwBitSet::KwBitSet(int n) : fbVec(Count(n), false) {}

KwBitSet::KwBitSet(const std::vector<bool>& bits) : fbVec(bits) {}

KwBitSet::KwBitSet(const KwBitSet& other) = default;
KwBitSet::KwBitSet(KwBitSet&& other) noexcept = default;
KwBitSet& KwBitSet::operator=(const KwBitSet& other) {
    Set(other.fbVec);
    return *this;
}
KwBitSet& KwBitSet::operator=(KwBitSet&& other) noexcept = default;
KwBitSet::~KwBitSet() = default;

int KwBitSet::Size() const {
    return static_cast<int>(fbVec.size());
}

bool KwBitSet::IsRange(int lo, int hi) const {
    return 0 <= lo && lo <= hi && hi < Size();
}

bool KwBitSet::Set(int i, bool v) {
    return SetRange(i, i, v);
}

void KwBitSet::Set(const std::vector<bool>& bits) {
    fbVec = std::vector<bool>(bits);
}

bool KwBitSet::SetRange(int lo, int hi, bool v) {
    if (!IsRange(lo, hi)) {
        return false;
    }
    std::fill(fbVec.begin() + lo, fbVec.begin() + hi + 1, v);
    return true;
}

bool KwBitSet::SetSubset(std::vector<int> indices, bool v) {
    const std::vector<int> listed = std::move(indices);
    if (!std::all_of(listed.begin(), listed.end(), [this](int i) { return IsRange(i, i); })) {
        return false;
    }
    for (const int i : listed) {
        fbVec[static_cast<std::size_t>(i)] = v;
    }
    return true;
}

void KwBitSet::Resize(int n, bool v) {
    fbVec = std::vector<bool>(Count(n), v);
}

void KwBitSet::Clear() {
    std::fill(fbVec.begin(), fbVec.end(), false);
}

void KwBitSet::Negate() {
    fbVec.flip();
}

int KwBitSet::Append(bool v) {
    fbVec.push_back(v);
    return Size();
}

bool KwBitSet::IsIn(int i) const {
    return IsRange(i, i) && fbVec[static_cast<std::size_t>(i)];
}

int KwBitSet::InSet() const {
    return static_cast<int>(std::count(fbVec.begin(), fbVec.end(), true));
}

int KwBitSet::InRange(int lo, int hi) const {
    if (!IsRange(lo, hi)) {
        return -1;
    }
    return static_cast<int>(std::count(fbVec.begin() + lo, fbVec.begin() + hi + 1, true));
}

int KwBitSet::InRangeS(int start, int count) const {
    const std::int64_t last = std::int64_t{start} + count - 1;
    if (start < 0 || count < 0 || last >= Size()) {
        return -1;
    }
    return count == 0 ? 0 : InRange(start, static_cast<int>(last));
}

bool KwBitSet::IsNewFalse(const KwBitSet& other, int n) const {
    for (int i = 0; i < std::min(n, Size()); ++i) {
        if (IsIn(i) && !other.IsIn(i)) {
            return true;
        }
    }
    return false;
}

KwBitSet KwBitSet::GetSubset(int lo, int hi) {
    const int first = std::max(lo, 0);
    const int last = std::min(hi, Size() - 1);
    KwBitSet subset;
    if (first <= last) {
        subset.fbVec.assign(fbVec.begin() + first, fbVec.begin() + last + 1);
    }
    return subset;
}

bool KwBitSet::Duplicate(int n) {
    const std::int64_t size = std::int64_t{Size()} * (std::int64_t{n} + 1);
    if (n < 0 || size > std::numeric_limits<int>::max()) {
        return false;
    }
    if (n == 0) {
        return true;
    }
    std::vector<bool> copies;
    copies.reserve(static_cast<std::size_t>(size));
    for (int k = 0; k <= n && !fbVec.empty(); ++k) {
        copies.insert(copies.end(), fbVec.begin(), fbVec.end());
    }
    fbVec = std::move(copies);
    return true;
}

void KwBitSet::DoOR(const KwBitSet& a, const KwBitSet& b) {
    fbVec = Combined(a.fbVec, b.fbVec, [](bool x, bool y) { return x || y; });
}

void KwBitSet::DoAND(const KwBitSet& a, const KwBitSet& b) {
    fbVec = Combined(a.fbVec, b.fbVec, [](bool x, bool y) { return x && y; });
}

bool KwBitSet::operator<(const KwBitSet& other) const {
    return std::lexicographical_compare(fbVec.begin(), fbVec.end(), other.fbVec.begin(), other.fbVec.end());
}

bool KwBitSet::operator==(const KwBitSet& other) const {
    return fbVec == other.fbVec;
}

void KwBitSet::Display() const {
    KwDisplay_930::DisplayText(1, "KwBitSet display start");
    KwDisplay_930::DisplayBV("fbVec", fbVec);
    KwDisplay_930::DisplayText(1, "KwBitSet display end");
}

}  // namespace KwMath_930
