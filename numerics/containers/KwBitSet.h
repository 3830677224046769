// A resizable sequence of booleans with checked setters and counts.
#pragma once

#include <vector>

#include "numerics/Export.h"

namespace KwMath_930 {

/// A set of flags. Index i is valid when 0 <= i < Size(); a range lo .. hi, both included, when 0 <= lo <= hi < Size().
/// Fails:   setters and counts report invalid indices by their results and change nothing; an allocation that fails
///          throws std::bad_alloc, the set unchanged then.
class KW_EXPORT KwBitSet {
public:
    /// Empty.
    KwBitSet();
    /// n bits, all false; empty for a negative n.
    KwBitSet(int n);
    /// These bits.
    KwBitSet(const std::vector<bool>& bits);
    /// Copies have bits of their own; what was moved from may be assigned to or destroyed.
    KwBitSet(const KwBitSet& other);
    KwBitSet(KwBitSet&& other) noexcept;
    KwBitSet& operator=(const KwBitSet& other);
    KwBitSet& operator=(KwBitSet&& other) noexcept;
    ~KwBitSet();

    /// Returns: the number of bits.
    int Size() const;

    /// Sets bit i.
    /// Returns: false for an invalid i.
    bool Set(int i, bool v);
    /// Replaces all bits.
    void Set(const std::vector<bool>& bits);
    /// Sets the bits lo .. hi.
    /// Returns: false for an invalid range.
    bool SetRange(int lo, int hi, bool v);
    /// Sets every bit listed, or none.
    /// Returns: false when an index is invalid.
    /// Owns:    the list is taken by value and released before returning.
    bool SetSubset(std::vector<int> indices, bool v);

    /// Makes the size n and every bit, old ones included, v; empties the set for n < 1.
    void Resize(int n, bool v);
    /// Makes every bit false; the size stays.
    void Clear();
    /// Inverts every bit.
    void Negate();
    /// Adds a bit at the end.
    /// Returns: the new size.
    int Append(bool v);

    /// Returns: bit i; false for an invalid i.
    bool IsIn(int i) const;
    /// Returns: the number of true bits.
    int InSet() const;
    /// Returns: the number of true bits in lo .. hi; -1 for an invalid range.
    int InRange(int lo, int hi) const;
    /// Returns: the number of true bits in start .. start + count - 1; -1 when start < 0, count < 0 or the last index
    ///          is not below Size(), even if count is 0; otherwise 0 for count 0.
    int InRangeS(int start, int count) const;
    /// Returns: true when some i < min(n, Size()) is true here and false, or beyond the end, in other.
    bool IsNewFalse(const KwBitSet& other, int n) const;

    /// Returns: a set of the bits max(lo, 0) .. min(hi, Size() - 1), empty when that range is.
    KwBitSet GetSubset(int lo, int hi);  // sic: not const
    /// Appends n further copies of the bits; nothing for n = 0.
    /// Returns: false for n < 0 and when the size would not fit an int; the set is unchanged then.
    bool Duplicate(int n);

    /// This set becomes a OR b, bit by bit; a or b may be this set.
    /// Note:    Deliberate: as long as the shorter of the two.
    void DoOR(const KwBitSet& a, const KwBitSet& b);
    /// This set becomes a AND b, bit by bit, as long as the shorter of the two; a or b may be this set.
    void DoAND(const KwBitSet& a, const KwBitSet& b);

    /// Returns: true when the bits come first in lexicographic order: false before true, a prefix before the longer.
    bool operator<(const KwBitSet& other) const;
    /// Returns: true when sizes and bits are equal.
    bool operator==(const KwBitSet& other) const;

    /// Writes the bits to the dump stream, under the label "fbVec" between a line for start and one for end.
    void Display() const;

private:
    bool IsRange(int lo, int hi) const;

    std::vector<bool> fbVec;
};

}  // namespace KwMath_930
