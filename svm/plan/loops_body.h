// The inner loops on packs, as wide as the registers of the instruction set that the file is compiled for. Included
// only by the sources loops_<set>.cpp; everything here has internal linkage, and nothing of the standard library is
// called, so that no code for one instruction set is taken for another's.
#pragma once

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
typedef float FloatPack __attribute__((vector_size(kLanes * sizeof(float))));

// So many sums run side by side that no addition waits for the one before it.
constexpr std::size_t kChains = 8;

// Packs go by reference: as a parameter or a result, one would need a fixed calling convention.
inline void Load(const double* from, Pack& pack) {
    __builtin_memcpy(&pack, from, sizeof pack);
}

inline void Load(const float* from, Pack& pack) {
    FloatPack narrow;
    __builtin_memcpy(&narrow, from, sizeof narrow);
    pack = __builtin_convertvector(narrow, Pack);
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

template <class Term>
void AddToCase(std::size_t columns, const double* block, const double* x, double* sums, bool isFirst) {
    constexpr std::size_t kPacks = kBlock / kLanes;
    Pack s[kPacks];
    LoadSums(sums, isFirst, s);
    for (std::size_t p = 0; p < columns; ++p) {
        const double number = x[p];
#pragma GCC unroll 8
        for (std::size_t j = 0; j < kPacks; ++j) {
            Pack y;
            Load(block + p * kBlock + j * kLanes, y);
            Term::Add(number, y, s[j]);
        }
    }
    StoreSums(s, sums);
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

struct Differing {
    static std::uint64_t Join(std::uint64_t a, std::uint64_t b) { return a ^ b; }
};

struct Common {
    static std::uint64_t Join(std::uint64_t a, std::uint64_t b) { return a & b; }
};

template <class Joined>
void CountRows(std::size_t words, std::size_t rows, const std::uint64_t* bits, const std::uint64_t* x,
               std::uint32_t* counts) {
    for (std::size_t row = 0; row < rows; ++row, bits += words) {
        std::uint64_t even = 0;
        std::uint64_t odd = 0;
        std::size_t w = 0;
        for (; w + 2 <= words; w += 2) {
            even += static_cast<std::uint64_t>(__builtin_popcountll(Joined::Join(bits[w], x[w])));
            odd += static_cast<std::uint64_t>(__builtin_popcountll(Joined::Join(bits[w + 1], x[w + 1])));
        }
        if (w < words)
            even += static_cast<std::uint64_t>(__builtin_popcountll(Joined::Join(bits[w], x[w])));
        counts[row] = static_cast<std::uint32_t>(even + odd);
    }
}

template <class Term>
constexpr TermLoops LoopsOf() {
    return {SumCase<Term, double>, SumCase<Term, float>, AddToCase<Term>, AddToTile<Term>};
}

constexpr Loops Table(const char* name) {
    return {name,
            LoopsOf<SquaredDifference>(),
            LoopsOf<Product>(),
            Widen,
            {SumLists, SumListsOfTile},
            CountRows<Differing>,
            CountRows<Common>};
}

}  // namespace
}  // namespace KwBrevix_930::plan
