// The Mersenne Twister generator of pseudo-random numbers.
#pragma once

#include <cstdint>
#include <memory>

#include "numerics/Export.h"

namespace KwMath_930 {

/// MT19937: the same sequence as the published reference for the same seed, and its conversions to real numbers.
/// Fails:   only by std::bad_alloc where a constructor cannot allocate the state.
/// Note:    an object is not safe for concurrent use; separate objects are independent. A generator that was never
///          seeded seeds itself with 5489 at its first draw. Seeding again restarts the sequence.
/// Source:  Matsumoto and Nishimura, Mersenne Twister, ACM TOMACS 8 (1998), 3-30; seeding and conversions as in their
///          reference program of 2002.
class KW_EXPORT KwRandomTwister {
public:
    /// A generator that is not seeded yet.
    KwRandomTwister();
    /// A generator that goes on where other stands.
    KwRandomTwister(const KwRandomTwister& other);
    /// Goes on where other stands; nothing on self-assignment.
    KwRandomTwister& operator=(const KwRandomTwister& other);
    ~KwRandomTwister();

    /// Seeds by one number.
    void Initialize(std::uint32_t seed);
    /// Seeds by a sequence of numbers.
    /// Shape:   length >= 1 numbers; this is not checked.
    void InitByArray(std::uint32_t* key, std::uint32_t length);

    /// Returns: the next number, 0 .. 2^32 - 1.
    std::uint32_t GetInteger32();
    /// Returns: the next number without its lowest bit, 0 .. 2^31 - 1.
    std::int32_t GetInteger31();
    /// Returns: a number in [0, 1], a multiple of 1/(2^32 - 1).
    double GetRealClosed();
    /// Returns: a number in [0, 1), a multiple of 2^-32.
    double GetRealClosedOpen();
    /// Returns: a number in (0, 1), an odd multiple of 2^-33.
    double GetRealOpen();
    /// Returns: a number in [0, 1), a multiple of 2^-53, made of two draws.
    double GetRealRes53();

private:
    struct State;

    std::unique_ptr<State> fState;
};

}  // namespace KwMath_930
