// Hash keys: codes fresh and stale, the class-wide offset, equality, order, the dump.
#include "numerics/containers/KwHashKey.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <initializer_list>
#include <random>
#include <vector>

#include "tests/numerics/display/DumpCapture.h"

namespace {

using KwMath_930::KwHashKey;

KwHashKey Key(std::initializer_list<int> elements) {
    KwHashKey key(static_cast<int>(elements.size()));
    int i = 0;
    for (const int element : elements) {
        key[i++] = element;
    }
    key.UpdateHashCode();
    return key;
}

// Sets the class-wide offset for the length of a test.
class Offset {
public:
    explicit Offset(int offset) { KwHashKey::SetElementOffset(offset); }
    ~Offset() { KwHashKey::SetElementOffset(0); }
    Offset(const Offset&) = delete;
    Offset& operator=(const Offset&) = delete;
};

TEST(KwHashKey, FactorsAreTheOddPrimesFrom3To229) {
    std::vector<int> primes;
    for (int candidate = 3; candidate <= 229; candidate += 2) {
        bool isPrime = true;
        for (int divisor = 3; divisor * divisor <= candidate; divisor += 2) {
            isPrime = isPrime && candidate % divisor != 0;
        }
        if (isPrime) {
            primes.push_back(candidate);
        }
    }
    ASSERT_EQ(primes.size(), 49u);
    EXPECT_EQ(primes, std::vector<int>(KwHashKey::PRIME_FACTOR, KwHashKey::PRIME_FACTOR + 49));
}

TEST(KwHashKey, IsAPointerALengthAndACode) {
    struct Layout {
        std::int32_t* elements;
        std::int32_t length;
        std::int32_t hashCode;
    };
    EXPECT_EQ(sizeof(KwHashKey), sizeof(Layout));
}

TEST(KwHashKey, DefaultHasNoElementsAndCodeZero) {
    KwHashKey key;
    EXPECT_EQ(key.GetLength(), 0);
    EXPECT_EQ(key.GetHashcode(), 0);
    EXPECT_EQ(key.ComputeHashCode(), 0);
}

TEST(KwHashKey, NewElementsAreZeroAndHashed) {
    const Offset offset(10);
    KwHashKey key(2);
    EXPECT_EQ(key.GetLength(), 2);
    EXPECT_EQ(key[0], 0);
    EXPECT_EQ(key[1], 0);
    EXPECT_EQ(key.GetHashcode(), (3 * 10) ^ (5 * 10));
}

TEST(KwHashKey, LengthBelowOneIsEmpty) {
    for (const int n : {0, -1, INT_MIN}) {
        KwHashKey key(n);
        EXPECT_EQ(key.GetLength(), 0);
        EXPECT_EQ(key.GetHashcode(), 0);
        EXPECT_TRUE(key == KwHashKey());
    }
}

TEST(KwHashKey, OrderOfElementsChangesTheCode) {
    EXPECT_EQ(Key({1, 2}).GetHashcode(), 9);
    EXPECT_EQ(Key({2, 1}).GetHashcode(), 3);
}

TEST(KwHashKey, CodeIsTheXorOfElementsTimesPrimesModulo32Bits) {
    std::mt19937 engine(91);
    for (const int length : {1, 2, 48, 49, 50, 98, 99, 200}) {
        for (const int offset : {0, 10, -7, INT_MAX, INT_MIN}) {
            const Offset set(offset);
            KwHashKey key(length);
            std::int64_t expected = 0;
            for (int i = 0; i < length; ++i) {
                key[i] = static_cast<int>(engine());
                const std::int64_t element = std::int64_t{key[i]} + offset;
                expected ^= KwHashKey::PRIME_FACTOR[i % 49] * element;
            }
            EXPECT_EQ(key.ComputeHashCode(), static_cast<std::int32_t>(expected)) << length << " " << offset;
        }
    }
}

TEST(KwHashKey, ChangedElementLeavesTheStoredCodeStale) {
    KwHashKey key = Key({1, 2});
    key[0] = 2;
    EXPECT_EQ(key.GetHashcode(), 9);
    EXPECT_EQ(key.ComputeHashCode(), (3 * 2) ^ (5 * 2));
    EXPECT_EQ(key.GetHashcode(), 9);
    key.UpdateHashCode();
    EXPECT_EQ(key.GetHashcode(), (3 * 2) ^ (5 * 2));
}

TEST(KwHashKey, CopiesCarryTheStoredCodeEvenIfStale) {
    KwHashKey stale = Key({1, 2});
    stale[0] = 70;
    const KwHashKey copy(stale);
    EXPECT_EQ(copy.GetHashcode(), 9);
    EXPECT_EQ(copy[0], 70);
    KwHashKey assigned = Key({5});
    assigned = stale;
    EXPECT_EQ(assigned.GetHashcode(), 9);
    EXPECT_EQ(assigned.GetLength(), 2);
    EXPECT_EQ(assigned[0], 70);
}

TEST(KwHashKey, CopiesAreTheirOwn) {
    KwHashKey source = Key({1, 2, 3});
    KwHashKey copy(source);
    KwHashKey assigned(3);
    const int* const elements = &assigned[0];
    assigned = source;
    EXPECT_EQ(&assigned[0], elements);
    source[1] = 99;
    EXPECT_EQ(copy[1], 2);
    EXPECT_EQ(assigned[1], 2);
}

TEST(KwHashKey, SelfAssignmentChangesNothing) {
    KwHashKey key = Key({1, 2});
    const KwHashKey& same = key;
    key = same;
    EXPECT_TRUE(key == Key({1, 2}));
    EXPECT_EQ(same[1], 2);
}

TEST(KwHashKey, AssignedEmptyKeyIsEmpty) {
    KwHashKey key = Key({1, 2});
    key = KwHashKey();
    EXPECT_EQ(key.GetLength(), 0);
    EXPECT_EQ(key.GetHashcode(), 0);
}

TEST(KwHashKey, OffsetIsClassWideAndLeavesStoredCodes) {
    EXPECT_EQ(KwHashKey::GetElementOffset(), 0);
    EXPECT_EQ(KwHashKey::GetElementUpperBound(), 9377657);
    KwHashKey key = Key({1, 2});
    const Offset offset(10);
    EXPECT_EQ(KwHashKey::GetElementOffset(), 10);
    EXPECT_EQ(KwHashKey::ADD_LOWER_BOUND, 10);
    EXPECT_EQ(KwHashKey::GetElementUpperBound(), 9377647);
    EXPECT_EQ(key.GetHashcode(), 9);
    EXPECT_EQ(key.ComputeHashCode(), (3 * 11) ^ (5 * 12));
}

TEST(KwHashKey, UpperBoundKeepsProductsBelowTwoToThe31) {
    EXPECT_LT(229LL * KwHashKey::GetElementUpperBound(), 1LL << 31);
    EXPECT_GE(229LL * (KwHashKey::GetElementUpperBound() + 1), 1LL << 31);
    const Offset offset(INT_MIN);
    EXPECT_EQ(KwHashKey::GetElementUpperBound(), static_cast<std::int32_t>(9377657LL + (1LL << 31)));
}

TEST(KwHashKey, EqualityComparesCodesFirst) {
    EXPECT_TRUE(Key({1, 2}) == Key({1, 2}));
    EXPECT_FALSE(Key({1, 2}) == Key({2, 1}));
    KwHashKey stale = Key({5, 5});
    stale[0] = 1;
    stale[1] = 2;
    EXPECT_FALSE(stale == Key({1, 2}));
}

TEST(KwHashKey, EqualCodesAreNotEnough) {
    // 3 * 5 = 5 * 3 cancel each other out, so the codes agree.
    EXPECT_EQ(Key({5, 3}).GetHashcode(), 0);
    EXPECT_FALSE(Key({5, 3}) == Key({10, 6}));
    EXPECT_FALSE(Key({5, 3}) == KwHashKey());
    EXPECT_FALSE(Key({0}) == Key({0, 0}));
}

TEST(KwHashKey, MismatchCountsLeadingEqualElements) {
    EXPECT_EQ(Key({1, 2, 3}).Mismatch(Key({1, 2})), 2);
    EXPECT_EQ(Key({1, 2}).Mismatch(Key({1, 2, 3})), 2);
    EXPECT_EQ(Key({1, 2, 3}).Mismatch(Key({1, 9, 3})), 1);
    EXPECT_EQ(Key({1, 2, 3}).Mismatch(KwHashKey()), 0);
    EXPECT_EQ(KwHashKey().Mismatch(Key({1})), 0);
    EXPECT_EQ(Key({1, 2}).Mismatch(Key({1, 2})), 2);
}

TEST(KwHashKey, ShorterKeyComesFirst) {
    EXPECT_TRUE(Key({9}) < Key({1, 1}));
    EXPECT_FALSE(Key({1, 1}) < Key({9}));
    EXPECT_TRUE(KwHashKey() < Key({-5}));
}

TEST(KwHashKey, FirstDifferenceDecidesAmongEqualLengths) {
    EXPECT_TRUE(Key({1, 2, 9}) < Key({1, 3, 0}));
    EXPECT_FALSE(Key({1, 3, 0}) < Key({1, 2, 9}));
    EXPECT_TRUE(Key({INT_MIN}) < Key({INT_MAX}));
    EXPECT_FALSE(Key({1, 2}) < Key({1, 2}));
    EXPECT_FALSE(KwHashKey() < KwHashKey());
}

TEST(KwHashKey, DumpHasTwoBlanksBeforeEachElement) {
    DumpCapture dump;
    Key({12, -7, INT_MIN}).Display();
    EXPECT_EQ(dump.Take(), "\n\t Key:   12  -7  -2147483648");
    KwHashKey().Display();
    EXPECT_EQ(dump.Take(), "\n\t Key: ");
}

}  // namespace
