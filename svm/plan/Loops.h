// The inner loops of the scoring plan. One version for each instruction set; all give the same bits, those of a plain
// loop: whatever stands side by side in a register belongs to different sums, and every sum runs left to right.
#pragma once

#include <cstddef>
#include <cstdint>

namespace KwBrevix_930::plan {

/// Support vectors of a block; within a block the numbers of one column lie side by side.
inline constexpr std::size_t kBlock = 16;
/// Cases of a tile; within a tile the numbers of one column lie side by side.
inline constexpr std::size_t kTile = 8;
/// Lists of a group; within a group the n-th entries of all lists lie side by side.
inline constexpr std::size_t kGroup = 4;

/// Columns of a stretch: of so many, the numbers of a block and of a tile stay in the first-level cache together.
inline constexpr std::size_t kStretch = 64;

/// Sums of one kind of term over the columns, for support vectors in blocks.
struct TermLoops {
    /// sums[row] for the one case x. rows: a whole number of blocks.
    void (*oneCase)(std::size_t columns, std::size_t rows, const double* blocks, const double* x, double* sums);
    void (*oneCaseOfFloats)(std::size_t columns, std::size_t rows, const float* blocks, const double* x, double* sums);
    /// Adds the terms of some columns of one block to sums[kTile * row + c] for the cases c of a tile. rows: how many
    /// are wanted, while sums has room for kBlock. isFirst: to zero, whatever stands in sums.
    void (*addToTile)(std::size_t columns, std::size_t rows, const double* block, const double* tile, double* sums,
                      bool isFirst);
};

/// Sums of factor * source[index] over the lists of one group.
struct ListLoops {
    /// sums[list], kGroup of them.
    void (*oneCase)(std::size_t length, const std::int32_t* indices, const double* factors, const double* source,
                    double* sums);
    /// sums[kTile * list + c], where source[kTile * index + c] belongs to case c.
    void (*oneTile)(std::size_t length, const std::int32_t* indices, const double* factors, const double* source,
                    double* sums);
};

/// How many bits are set where the words of support vectors and of cases are joined. A block has kBlock words side by
/// side for each kWordBits columns.
struct CountLoops {
    /// counts[row] for the one case x and one block.
    void (*oneCase)(std::size_t words, const std::uint64_t* block, const std::uint64_t* x, std::uint64_t* counts);
    /// counts[kTile * row + c] for the cases c of a tile, tile[kTile * word + c], and one block.
    void (*oneTile)(std::size_t words, const std::uint64_t* block, const std::uint64_t* tile, std::uint64_t* counts);
};

inline constexpr std::size_t kWordBits = 64;

struct BitLoops {
    /// Turns a case into words: numbers that are one into bits that are set. Returns: false, and words is of no use,
    /// where a number is neither zero nor one.
    bool (*packCase)(std::size_t columns, const double* x, std::uint64_t* words);
    /// The same of all cases of a tile, into words[kTile * word + c].
    bool (*packTile)(std::size_t columns, const double* tile, std::uint64_t* words);
    /// Set in the one or in the other.
    CountLoops differing;
    /// Set in both.
    CountLoops common;
};

/// One version of the loops.
struct Loops {
    const char* name;
    /// (x - y)^2.
    TermLoops distances;
    /// x * y.
    TermLoops products;
    /// doubles[i] = floats[i]. count: a whole number of blocks.
    void (*widen)(std::size_t count, const float* floats, double* doubles);
    ListLoops lists;
    BitLoops bits;
};

extern const Loops kBaselineLoops;
#if defined(__x86_64__)
extern const Loops kAvx2Loops;
extern const Loops kAvx512Loops;
#endif

/// Returns: the versions that this processor can run, the slowest first; ended by null.
const Loops* const* RunnableLoops();
/// Returns: the last of them.
const Loops& FastestLoops();

}  // namespace KwBrevix_930::plan
