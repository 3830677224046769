// The inner loops on packs, as wide as the registers of the instruction set that the file is compiled for. Included
// only by the sources loops_<set>.cpp; everything here has internal linkage, and nothing of the standard library is
// called, so that no code for one instruction set is taken for another's.
#pragma once

#if defined(__AVX2__)
#include <immintrin.h>
#endif

#include "svm/plan/Loops.h"

namespace KwBrevix_930::plan {
namespace {

#if defined(__AVX512F__)
constexpr std::size_t kLanes = 8;
#elif defined(__AVX2__)
constexpr std::size_t kLanes = 4;
#else
constexpr std::size_t kLanes = 2;
#endif

typedef double Pack __attribute__((vector_size(kLanes * sizeof(double))));

// So many sums run side by side that no addition waits for the one before it.
constexpr std::size_t kChains = 8;

// Packs go by reference: as a parameter or a result, one would need a fixed calling convention.
inline void Load(const double* from, Pack& pack) {
    __builtin_memcpy(&pack, from, sizeof pack);
}

// By intrinsics where there are some: g++ 12 makes two halves of such a conversion, by way of memory.
inline void Load(const float* from, Pack& pack) {
#if defined(__AVX512F__)
    pack = _mm512_maskz_cvtps_pd(0xff, _mm256_loadu_ps(from));
#elif defined(__AVX2__)
    pack = _mm256_cvtps_pd(_mm_loadu_ps(from));
#else
    typedef float FloatPack __attribute__((vector_size(kLanes * sizeof(float))));
    FloatPack narrow;
    __builtin_memcpy(&narrow, from, sizeof narrow);
    pack = __builtin_convertvector(narrow, Pack);
#endif
}

inline void Store(const Pack& pack, double* to) {
    __builtin_memcpy(to, &pack, sizeof pack);
}

struct SquaredDifference {
    static void Add(double x, const Pack& y, Pack& sum) {
        const Pack difference = x - y;
        sum += difference * difference;
    }
    static void Add(const Pack& x, double y, Pack& sum) {
        const Pack difference = x - y;
        sum += difference * difference;
    }
};

struct Product {
    static void Add(double x, const Pack& y, Pack& sum) { sum += x * y; }
    static void Add(const Pack& x, double y, Pack& sum) { sum += x * y; }
};

template <class Term, std::size_t kBlocks, class Stored>
void SumBlocks(std::size_t columns, const Stored* blocks, const double* x, double* sums) {
    constexpr std::size_t kPacks = kBlock / kLanes;
    Pack s[kBlocks * kPacks] = {};
    for (std::size_t p = 0; p < columns; ++p) {
        const double number = x[p];
#pragma GCC unroll 4
        for (std::size_t b = 0; b < kBlocks; ++b) {
#pragma GCC unroll 8
            for (std::size_t j = 0; j < kPacks; ++j) {
                Pack y;
                Load(blocks + (b * columns + p) * kBlock + j * kLanes, y);
                Term::Add(number, y, s[b * kPacks + j]);
            }
        }
    }
#pragma GCC unroll 16
    for (std::size_t i = 0; i < kBlocks * kPacks; ++i)
        Store(s[i], sums + i * kLanes);
}

template <class Term, class Stored>
void SumCase(std::size_t columns, std::size_t rows, const Stored* blocks, const double* x, double* sums) {
    constexpr std::size_t kAtOnce = kChains * kLanes / kBlock;
    std::size_t row = 0;
    for (; rows - row >= kAtOnce * kBlock; row += kAtOnce * kBlock)
        SumBlocks<Term, kAtOnce>(columns, blocks + row * columns, x, sums + row);
    for (; row < rows; row += kBlock)
        SumBlocks<Term, 1>(columns, blocks + row * columns, x, sums + row);
}

void Widen(std::size_t count, const float* floats, double* doubles) {
    for (std::size_t i = 0; i < count; i += kLanes) {
        Pack pack;
        Load(floats + i, pack);
        Store(pack, doubles + i);
    }
}

// Those of so many packs, from zero if they are the first.
template <std::size_t kPacks>
inline void LoadSums(const double* sums, bool isFirst, Pack (&s)[kPacks]) {
#pragma GCC unroll 16
    for (std::size_t i = 0; i < kPacks; ++i) {
        if (isFirst)
            s[i] = Pack{};
        else
            Load(sums + i * kLanes, s[i]);
    }
}

template <std::size_t kPacks>
inline void StoreSums(const Pack (&s)[kPacks], double* sums) {
#pragma GCC unroll 16
    for (std::size_t i = 0; i < kPacks; ++i)
        Store(s[i], sums + i * kLanes);
}

// For kAtOnce vectors of a block.
template <class Term, std::size_t kAtOnce>
inline void AddVectorsToTile(std::size_t columns, const double* vectors, const double* tile, double* sums,
                             bool isFirst) {
    constexpr std::size_t kPacks = kTile / kLanes;
    Pack s[kAtOnce * kPacks];
    LoadSums(sums, isFirst, s);
    for (std::size_t p = 0; p < columns; ++p) {
        Pack x[kPacks];
#pragma GCC unroll 4
        for (std::size_t j = 0; j < kPacks; ++j)
            Load(tile + p * kTile + j * kLanes, x[j]);
#pragma GCC unroll 8
        for (std::size_t v = 0; v < kAtOnce; ++v) {
            const double y = vectors[p * kBlock + v];
#pragma GCC unroll 4
            for (std::size_t j = 0; j < kPacks; ++j)
                Term::Add(x[j], y, s[v * kPacks + j]);
        }
    }
    StoreSums(s, sums);
}

template <class Term>
void AddToTile(std::size_t columns, std::size_t rows, const double* block, const double* tile, double* sums,
               bool isFirst) {
    constexpr std::size_t kAtOnce = kChains * kLanes / kTile;
    static_assert(kBlock % kAtOnce == 0);
    for (std::size_t row = 0; row < rows; row += kAtOnce)
        AddVectorsToTile<Term, kAtOnce>(columns, block + row, tile, sums + row * kTile, isFirst);
}

void SumLists(std::size_t length, const std::int32_t* indices, const double* factors, const double* source,
              double* sums) {
    typedef double Four __attribute__((vector_size(kGroup * sizeof(double))));
    Four s = {};
    for (std::size_t k = 0; k < length; ++k) {
        const std::int32_t* i = indices + k * kGroup;
        Four factor;
        __builtin_memcpy(&factor, factors + k * kGroup, sizeof factor);
        const Four numbers = {source[i[0]], source[i[1]], source[i[2]], source[i[3]]};
        s += numbers * factor;
    }
    __builtin_memcpy(sums, &s, sizeof s);
}

void SumListsOfTile(std::size_t length, const std::int32_t* indices, const double* factors, const double* source,
                    double* sums) {
    constexpr std::size_t kPacks = kTile / kLanes;
    Pack s[kGroup * kPacks] = {};
    for (std::size_t k = 0; k < length * kGroup; k += kGroup) {
#pragma GCC unroll 4
        for (std::size_t list = 0; list < kGroup; ++list) {
            const double* cases = source + static_cast<std::size_t>(indices[k + list]) * kTile;
#pragma GCC unroll 4
            for (std::size_t j = 0; j < kPacks; ++j) {
                Pack numbers;
                Load(cases + j * kLanes, numbers);
                s[list * kPacks + j] += numbers * factors[k + list];
            }
        }
    }
#pragma GCC unroll 16
    for (std::size_t i = 0; i < kGroup * kPacks; ++i)
        Store(s[i], sums + i * kLanes);
}

// What comparing packs gives: all bits of a lane, or none.
typedef std::uint64_t Lanes __attribute__((vector_size(kLanes * sizeof(std::uint64_t))));

// others: gathers what is neither zero nor one.
inline void FindOnes(const Pack& numbers, Lanes& ones, Lanes& others) {
    ones = (Lanes)(numbers == 1.0);
    others |= ~(ones | (Lanes)(numbers == 0.0));
}

inline bool HasBit(const Lanes& lanes) {
    std::uint64_t all = 0;
    for (std::size_t i = 0; i < kLanes; ++i)
        all |= lanes[i];
    return all != 0;
}

inline std::uint64_t PackWord(const double* numbers, Lanes& others) {
    Lanes word = {};
    Lanes places;
    for (std::size_t i = 0; i < kLanes; ++i)
        places[i] = std::uint64_t{1} << i;
    for (std::size_t i = 0; i < kWordBits; i += kLanes, places <<= kLanes) {
        Pack pack;
        Load(numbers + i, pack);
        Lanes ones;
        FindOnes(pack, ones, others);
        word |= ones & places;
    }
    std::uint64_t packed = 0;
    for (std::size_t i = 0; i < kLanes; ++i)
        packed |= word[i];
    return packed;
}

bool PackCase(std::size_t columns, const double* x, std::uint64_t* words) {
    Lanes others = {};
    std::size_t first = 0;
    for (; columns - first >= kWordBits; first += kWordBits)
        *words++ = PackWord(x + first, others);
    if (first < columns) {
        double rest[kWordBits] = {};
        for (std::size_t i = 0; first + i < columns; ++i)
            rest[i] = x[first + i];
        *words = PackWord(rest, others);
    }
    return !HasBit(others);
}

bool PackTile(std::size_t columns, const double* tile, std::uint64_t* words) {
    constexpr std::size_t kPacks = kTile / kLanes;
    Lanes others = {};
    for (std::size_t first = 0; first < columns; first += kWordBits, words += kTile) {
        const std::size_t count = columns - first < kWordBits ? columns - first : kWordBits;
        Lanes word[kPacks] = {};
        for (std::size_t p = 0; p < count; ++p) {
            const std::uint64_t place = std::uint64_t{1} << p;
#pragma GCC unroll 4
            for (std::size_t j = 0; j < kPacks; ++j) {
                Pack pack;
                Load(tile + (first + p) * kTile + j * kLanes, pack);
                Lanes ones;
                FindOnes(pack, ones, others);
                word[j] |= ones & place;
            }
        }
        __builtin_memcpy(words, word, sizeof word);
    }
    return !HasBit(others);
}

// Adds, byte by byte, how many bits are set; and adds the bytes of each word.
#if defined(__AVX2__)
typedef std::uint64_t Words __attribute__((vector_size(4 * sizeof(std::uint64_t))));

// Of half bytes, from a table.
inline void AddBitCounts(const Words& words, Words& bytes) {
    const __m256i counts = _mm256_broadcastsi128_si256(_mm_setr_epi8(0, 1, 1, 2, 1, 2, 2, 3, 1, 2, 2, 3, 2, 3, 3, 4));
    const __m256i lower = _mm256_set1_epi8(15);
    const __m256i ofLower = _mm256_shuffle_epi8(counts, _mm256_and_si256((__m256i)words, lower));
    const __m256i ofUpper = _mm256_shuffle_epi8(counts, _mm256_and_si256(_mm256_srli_epi16((__m256i)words, 4), lower));
    bytes = (Words)_mm256_add_epi8((__m256i)bytes, _mm256_add_epi8(ofLower, ofUpper));
}

inline void AddBytes(const Words& bytes, Words& sums) {
    sums += (Words)_mm256_sad_epu8((__m256i)bytes, _mm256_setzero_si256());
}
#else
typedef std::uint64_t Words __attribute__((vector_size(2 * sizeof(std::uint64_t))));

// Of pairs of bits, of fours, of bytes.
inline void AddBitCounts(const Words& words, Words& bytes) {
    const Words pairs = words - (words >> 1 & 0x5555555555555555u);
    const Words fours = (pairs & 0x3333333333333333u) + (pairs >> 2 & 0x3333333333333333u);
    bytes += (fours + (fours >> 4)) & 0x0f0f0f0f0f0f0f0fu;
}

inline void AddBytes(const Words& bytes, Words& sums) {
    const Words pairs = (bytes & 0x00ff00ff00ff00ffu) + (bytes >> 8 & 0x00ff00ff00ff00ffu);
    const Words fours = pairs + (pairs >> 16);
    sums += (fours + (fours >> 32)) & 0xffffu;
}
#endif

constexpr std::size_t kWords = sizeof(Words) / sizeof(std::uint64_t);

// So many words may be counted before a byte is full.
constexpr std::size_t kMostWords = 31;

struct Differing {
    static void Join(const Words& a, std::uint64_t b, Words& joined) { joined = a ^ b; }
};

struct Common {
    static void Join(const Words& a, std::uint64_t b, Words& joined) { joined = a & b; }
};

template <class Joined>
void CountCase(std::size_t words, const std::uint64_t* block, const std::uint64_t* x, std::uint64_t* counts) {
    constexpr std::size_t kPacks = kBlock / kWords;
    Words sums[kPacks] = {};
    for (std::size_t first = 0; first < words; first += kMostWords) {
        const std::size_t end = words - first < kMostWords ? words : first + kMostWords;
        Words bytes[kPacks] = {};
        for (std::size_t w = first; w < end; ++w) {
#pragma GCC unroll 8
            for (std::size_t j = 0; j < kPacks; ++j) {
                Words joined;
                __builtin_memcpy(&joined, block + w * kBlock + j * kWords, sizeof joined);
                Joined::Join(joined, x[w], joined);
                AddBitCounts(joined, bytes[j]);
            }
        }
        for (std::size_t j = 0; j < kPacks; ++j)
            AddBytes(bytes[j], sums[j]);
    }
    __builtin_memcpy(counts, sums, sizeof sums);
}

// For kAtOnce rows of a block.
template <class Joined, std::size_t kAtOnce>
inline void CountRowsOfTile(std::size_t words, const std::uint64_t* rows, const std::uint64_t* tile,
                            std::uint64_t* counts) {
    constexpr std::size_t kPacks = kTile / kWords;
    Words sums[kAtOnce * kPacks] = {};
    for (std::size_t first = 0; first < words; first += kMostWords) {
        const std::size_t end = words - first < kMostWords ? words : first + kMostWords;
        Words bytes[kAtOnce * kPacks] = {};
        for (std::size_t w = first; w < end; ++w) {
#pragma GCC unroll 4
            for (std::size_t j = 0; j < kPacks; ++j) {
                Words cases;
                __builtin_memcpy(&cases, tile + w * kTile + j * kWords, sizeof cases);
#pragma GCC unroll 4
                for (std::size_t row = 0; row < kAtOnce; ++row) {
                    Words joined;
                    Joined::Join(cases, rows[w * kBlock + row], joined);
                    AddBitCounts(joined, bytes[row * kPacks + j]);
                }
            }
        }
        for (std::size_t i = 0; i < kAtOnce * kPacks; ++i)
            AddBytes(bytes[i], sums[i]);
    }
    __builtin_memcpy(counts, sums, sizeof sums);
}

template <class Joined>
void CountTile(std::size_t words, const std::uint64_t* block, const std::uint64_t* tile, std::uint64_t* counts) {
    constexpr std::size_t kAtOnce = 2;
    for (std::size_t row = 0; row < kBlock; row += kAtOnce)
        CountRowsOfTile<Joined, kAtOnce>(words, block + row, tile, counts + row * kTile);
}

template <class Term>
constexpr TermLoops LoopsOf() {
    return {SumCase<Term, double>, SumCase<Term, float>, AddToTile<Term>};
}

constexpr Loops Table(const char* name) {
    return {name,
            LoopsOf<SquaredDifference>(),
            LoopsOf<Product>(),
            Widen,
            {SumLists, SumListsOfTile},
            {PackCase, PackTile, {CountCase<Differing>, CountTile<Differing>}, {CountCase<Common>, CountTile<Common>}}};
}

}  // namespace
}  // namespace KwBrevix_930::plan
