// Mersenne Twister MT19937. Test: KwRandomTwister_test.cpp.
#include "numerics/random/KwRandomTwister.h"

#include <algorithm>

namespace KwMath_930 {

namespace {

constexpr std::uint32_t kWords = 624;
constexpr std::uint32_t kShift = 397;  // M of the reference
constexpr std::uint32_t kTwist[2] = {0, 0x9908b0df};
constexpr std::uint32_t kUpperMask = 0x80000000;
constexpr std::uint32_t kLowerMask = 0x7fffffff;
constexpr std::int32_t kUsedUp = 624;
constexpr std::int32_t kNeverSeeded = 625;
constexpr std::uint32_t kDefaultSeed = 5489;
constexpr double kTwoToMinus32 = 2.3283064365386963e-10;
constexpr double kTwoToMinus53 = 1.1102230246251565e-16;

// The word that replaces word, whose successor is next, with the word M places on.
std::uint32_t Twisted(std::uint32_t word, std::uint32_t next, std::uint32_t ahead) {
    const std::uint32_t y = (word & kUpperMask) | (next & kLowerMask);
    return ahead ^ (y >> 1) ^ kTwist[y & 1];
}

void Regenerate(std::uint32_t* mt) {
    std::uint32_t k = 0;
    for (; k < kWords - kShift; ++k) {
        mt[k] = Twisted(mt[k], mt[k + 1], mt[k + kShift]);
    }
    for (; k < kWords - 1; ++k) {
        mt[k] = Twisted(mt[k], mt[k + 1], mt[k + kShift - kWords]);
    }
    mt[k] = Twisted(mt[k], mt[0], mt[kShift - 1]);
}

// What seeding by array mixes the word at i from.
std::uint32_t Mixed(const std::uint32_t* mt, std::uint32_t i, std::uint32_t multiplier) {
    return mt[i] ^ ((mt[i - 1] ^ (mt[i - 1] >> 30)) * multiplier);
}

// The index after i; when the words are through, the last one becomes word 0 and the index 1.
std::uint32_t NextIndex(std::uint32_t* mt, std::uint32_t i) {
    if (++i < kWords) {
        return i;
    }
    mt[0] = mt[kWords - 1];
    return 1;
}

}  // namespace

struct KwRandomTwister::State {
    std::uint32_t words[kWords] = {};
    std::int32_t position = kNeverSeeded;  // of the next word to be tempered
};

KwRandomTwister::KwRandomTwister() : fState(std::make_unique<State>()) {}

KwRandomTwister::KwRandomTwister(const KwRandomTwister& other) : fState(std::make_unique<State>(*other.fState)) {}

KwRandomTwister& KwRandomTwister::operator=(const KwRandomTwister& other) {
    if (this != &other) {
        *fState = *other.fState;
    }
    return *this;
}

KwRandomTwister::~KwRandomTwister() = default;

void KwRandomTwister::Initialize(std::uint32_t seed) {
    std::uint32_t* mt = fState->words;
    mt[0] = seed;
    for (std::uint32_t i = 1; i < kWords; ++i) {
        mt[i] = 1812433253u * (mt[i - 1] ^ (mt[i - 1] >> 30)) + i;
    }
    fState->position = kUsedUp;
}

void KwRandomTwister::InitByArray(std::uint32_t* key, std::uint32_t length) {
    Initialize(19650218);
    std::uint32_t* mt = fState->words;
    std::uint32_t i = 1;
    std::uint32_t j = 0;
    for (std::uint32_t k = std::max(kWords, length); k > 0; --k) {
        mt[i] = Mixed(mt, i, 1664525) + key[j] + j;
        i = NextIndex(mt, i);
        j = j + 1 < length ? j + 1 : 0;
    }
    for (std::uint32_t k = kWords - 1; k > 0; --k) {
        mt[i] = Mixed(mt, i, 1566083941) - i;
        i = NextIndex(mt, i);
    }
    mt[0] = 0x80000000;
}

std::uint32_t KwRandomTwister::GetInteger32() {
    State& state = *fState;
    if (state.position >= kUsedUp) {
        if (state.position == kNeverSeeded) {
            Initialize(kDefaultSeed);
        }
        Regenerate(state.words);
        state.position = 0;
    }
    std::uint32_t y = state.words[state.position++];
    y ^= y >> 11;
    y ^= (y << 7) & 0x9d2c5680;
    y ^= (y << 15) & 0xefc60000;
    y ^= y >> 18;
    return y;
}

std::int32_t KwRandomTwister::GetInteger31() {
    return static_cast<std::int32_t>(GetInteger32() >> 1);
}

double KwRandomTwister::GetRealClosed() {
    return GetInteger32() / 4294967295.0;
}

double KwRandomTwister::GetRealClosedOpen() {
    return GetInteger32() * kTwoToMinus32;
}

double KwRandomTwister::GetRealOpen() {
    return (GetInteger32() + 0.5) * kTwoToMinus32;
}

double KwRandomTwister::GetRealRes53() {
    const std::uint32_t a = GetInteger32() >> 5;
    const std::uint32_t b = GetInteger32() >> 6;
    return (a * 67108864.0 + b) * kTwoToMinus53;
}

}  // namespace KwMath_930
