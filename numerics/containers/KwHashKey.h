// A key made of a sequence of whole numbers, with its hash code.
#pragma once

#include <cstdint>
#include <memory>

#include "numerics/Export.h"

namespace KwMath_930 {

/// A key for hashed and ordered containers. The hash code is computed on construction and by UpdateHashCode; changing
/// an element leaves it stale.
/// Fails:   only by std::bad_alloc where a key's elements cannot be allocated; a key assigned to is unchanged then.
/// Note:    indices are not checked. The offset is class-wide: setting it while other threads hash is not supported.
class KW_EXPORT KwHashKey {
public:
    /// The odd primes from 3 to 229: element i is multiplied by number i mod 49.
    static const int PRIME_FACTOR[49];
    /// Added to every element before hashing; 0 at first.
    static int ADD_LOWER_BOUND;

    /// No elements, hash code 0.
    KwHashKey();
    /// n elements, all 0 and hashed; the caller fills them and calls UpdateHashCode. No elements for n < 1.
    KwHashKey(int n);
    /// Copies elements and hash code, the latter even if it is stale.
    KwHashKey(const KwHashKey& other);
    /// As the copy; elements are allocated anew only when the lengths differ.
    KwHashKey& operator=(const KwHashKey& other);
    ~KwHashKey();

    /// Element i, 0 <= i < GetLength().
    int& operator[](int i);
    /// Element i, 0 <= i < GetLength().
    const int& operator[](int i) const;

    /// Returns: the number of elements.
    int GetLength() const;
    /// Returns: the stored hash code.
    int GetHashcode() const;  // sic: spelt unlike ComputeHashCode

    /// Returns: the hash code of the elements as they are now, which is not stored; 0 for no elements.
    int ComputeHashCode();  // sic: not const
    /// Stores the hash code of the elements as they are now.
    void UpdateHashCode();

    /// Returns: ADD_LOWER_BOUND.
    static int GetElementOffset();
    /// Sets ADD_LOWER_BOUND for all keys; keys hashed before keep their stored codes.
    static void SetElementOffset(int offset);
    /// Returns: 9377657 - ADD_LOWER_BOUND, the largest element for which element + offset times 229 stays below 2^31.
    static int GetElementUpperBound();

    /// Returns: true when stored hash codes, lengths and all elements are equal.
    bool operator==(const KwHashKey& other) const;
    /// Returns: the number of leading elements in which both keys agree.
    int Mismatch(const KwHashKey& other) const;

    /// Writes "\t Key: " and each element behind two blanks to the dump stream.
    void Display() const;

private:
    std::unique_ptr<std::int32_t[]> fElements;
    std::int32_t fLength = 0;
    std::int32_t fHashCode = 0;
};

/// Returns: true when a is shorter than b, or as long and smaller in the first element in which they differ.
KW_EXPORT bool operator<(const KwHashKey& a, const KwHashKey& b);

}  // namespace KwMath_930
