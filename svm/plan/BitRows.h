// Support vectors of zeros and ones, for cases of zeros and ones: every partial sum is a whole number, so the order
// does not matter, and there are so few sums that the kernel value of each is kept.
#pragma once

#include <cstdint>
#include <vector>

#include "svm/plan/AlignedArray.h"
#include "svm/plan/KernelShape.h"
#include "svm/plan/Loops.h"
#include "svm/plan/PlanWorkspace.h"
#include "svm/plan/merged_vector.h"

namespace KwBrevix_930::plan {

class BitRows {
public:
    BitRows(std::size_t rows, std::size_t columns, const KernelShape& shape, const Loops& loops);

    /// largestConstant: how many ones a vector has that meet no column, at most, where distances are taken.
    /// Returns: how many bytes such rows take.
    static double GetByteCount(std::size_t rows, std::size_t columns, std::size_t largestConstant);
    /// Returns: how many ones of a vector meet no column.
    static std::size_t CountConstant(const MergedVector& vector);

    /// Returns: true for +0, -0 and 1.
    static bool IsBit(double number) { return number == 0.0 || number == 1.0; }

    /// vector: of bits alone; each row is set once, then Finish is called.
    void Set(std::size_t row, const MergedVector& vector);
    void Finish();

    /// x: a number for each column. kernelValues: one a row, with room for whole blocks.
    /// Returns: false, with nothing done, when x is not made of bits.
    bool EvaluateCase(const double* x, double* kernelValues, PlanWorkspace& work) const;
    /// tile: kTile numbers for each column. kernelValues: kTile a row, with room for whole blocks.
    /// Returns: false, with nothing done, when one of the cases is not made of bits.
    bool EvaluateTile(const double* tile, double* kernelValues, PlanWorkspace& work) const;

private:
    std::size_t fColumns;
    std::size_t fWords;
    KernelShape fShape;
    const BitLoops& fLoops;
    const CountLoops& fCount;
    // In blocks, word by word.
    AlignedArray<std::uint64_t> fBits;
    // What each row of the blocks adds to its count for every case: the ones that meet no column.
    std::vector<std::uint32_t> fConstants;
    // The kernel value of each sum.
    std::vector<double> fValues;
};

}  // namespace KwBrevix_930::plan
