// How the decision values of a model are computed fast, laid out once: the same bits as the plain loops over machines,
// coefficients and merged vectors give on a thread that rounds to nearest, any NaN for any NaN. On one that rounds
// down, a sum of zeros may have another sign.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "pmml/SVMModelData.h"
#include "svm/SVMKernelFunction.h"
#include "svm/plan/BitRows.h"
#include "svm/plan/KernelShape.h"
#include "svm/plan/Loops.h"
#include "svm/plan/PlanWorkspace.h"
#include "svm/plan/ProductLists.h"
#include "svm/plan/RowSums.h"

namespace KwBrevix_930::plan {

/// What a plan is made for: the processor at hand, if nothing else is said.
struct PlanTarget {
    const Loops* loops = &FastestLoops();
    ElementaryVersions elementary = {};
    /// What one core can count on of a last-level cache that many share, in bytes. Support vectors that do not fit in
    /// are stored in single precision where that is exact: fetching less then pays for converting.
    std::size_t cacheShare = std::size_t{8} << 20;
    /// In bytes; no plan is larger.
    std::size_t largestPlan = std::size_t{1} << 30;
};

/// Immutable. Each support vector is evaluated once for a case, however many machines share it. Where the numbers or
/// the indices are such that a layout would not give the bits of the plain loop, the kernel itself is called.
class ScoringPlan {
public:
    using Target = PlanTarget;

    /// data, kernel: borrowed, and not changed while there is a plan; kernel was made from data. columns: of a case.
    /// Returns: null where there is no plan: no columns, no machines, a null machine or vector, counts that differ, an
    /// unknown kernel, or not enough memory. A regression has a plan for its first machine alone.
    /// Fails:   never throws.
    static std::unique_ptr<const ScoringPlan> Make(const SVMModelData& data, const KwSVM_700::SVMKernelFunction& kernel,
                                                   std::size_t columns, const Target& target = {}) noexcept;

    std::size_t GetColumnCount() const { return fColumns.size(); }
    /// Returns: the number of decision values of a case.
    std::size_t GetMachineCount() const { return fBiases.size(); }

    /// values: one for each column. decisions: one for each machine. work: any, whose memory serves the next call.
    void Decide(const double* values, double* decisions, PlanWorkspace& work) const;
    void Decide(const double* values, double* decisions) const;

    /// columns: for each column the numbers of all cases. decisions: case by case,
    /// decisions[GetMachineCount() * i + machine].
    void DecideBatch(std::size_t count, const double* const* columns, double* decisions, PlanWorkspace& work) const;
    /// The same, of values[stride * column + i] for case i, i < count <= stride.
    void DecideBatch(std::size_t count, const double* values, std::size_t stride, double* decisions) const;

private:
    using Instance = SVMVectorInstance;
    struct Survey;

    using Machines = std::span<const std::unique_ptr<ST_SUPPORTVECTORMACHINE>>;

    // Set-up; false where there is no plan.
    ScoringPlan(const SVMModelData& data, const KwSVM_700::SVMKernelFunction& kernel, std::size_t columns,
                const ElementaryVersions& elementary);
    bool Build(Machines machines, const Target& target);
    bool TakeMachines(Machines machines, Survey& survey);
    void SurveyRows(Survey& survey) const;
    bool IsListed(const Survey& survey) const;
    bool FitsCache(const Target& target) const;
    bool FitsFloats(const Survey& survey, const Target& target) const;
    double GetRowBytes(const Survey& survey, const Target& target) const;
    double GetByteCount(const Survey& survey, const Target& target) const;
    void LayOutRows(const Survey& survey, const Target& target);
    void LayOutLists(const Survey& survey, const Loops& loops);
    template <class Stored>
    void LayOutDense(const Loops& loops);
    bool HasNoPlaceInBlocks(const MergedVector& vector) const;
    const TermLoops& GetTerms(const Loops& loops) const {
        return fShape.TakesDistance() ? loops.distances : loops.products;
    }
    void LayOutBits(const Loops& loops);
    void LayOutMachines(Machines machines, const Survey& survey, const Loops& loops);

    // Scoring. The kernel values of a case or tile have room for whole blocks and a zero behind them.
    std::size_t GetRowSpace() const { return WholeBlocks(fRows.size()); }
    void DecideGathered(double* decisions, PlanWorkspace& work) const;
    void Evaluate(const double* x, double* kernelValues, PlanWorkspace& work) const;
    void DecideApart(std::size_t first, std::size_t cases, const double* const* columns, double* decisions,
                     PlanWorkspace& work) const;
    void DecideTiles(std::size_t first, std::size_t cases, const double* const* columns, double* decisions,
                     PlanWorkspace& work) const;
    void EvaluateTile(const Tiles& tile, std::size_t cases, PlanWorkspace& work) const;
    void CallKernel(const double* x, bool forAll, double* kernelValues, std::size_t stride, PlanWorkspace& work) const;

    KernelShape fShape;
    const KwSVM_700::SVMKernelFunction& fKernel;
    // The indices of a case: 0, 1, 2 and so on.
    std::vector<std::int32_t> fColumns;
    std::vector<double> fBiases;
    // The distinct support vectors, in the order in which the machines name them.
    std::vector<const Instance*> fRows;
    std::vector<std::uint32_t> fMergedRows;
    // How many kernel values of a case are computed: with those behind the last row that make whole packs, where the
    // layout has sums for them.
    std::size_t fAppliedRows = 0;
    bool fNeedsFinite = false;
    std::unique_ptr<RowSums> fSums;
    std::unique_ptr<BitRows> fBits;
    std::unique_ptr<ProductLists> fMachines;
};

}  // namespace KwBrevix_930::plan
