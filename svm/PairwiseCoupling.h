// Class probabilities from pairwise probabilities.
#pragma once

#include <functional>
#include <utility>
#include <vector>

#include "host/KwStatus.h"
#include "numerics/matrix/KwSymMatrix.h"

namespace KwBrevix_930 {

/// Couples r[i][j] = P(i | i or j) into one probability a category: the fixed point of the normalised equations
/// Q p = (p^T Q p) 1 with Q[t][t] = sum of r[j][t]^2 and Q[t][j] = -r[j][t] r[t][j].
/// Source:  Wu, Lin and Weng, Probability Estimates for Multi-class Classification by Pairwise Coupling, JMLR 5 (2004),
///          algorithm 2; every component is updated with p^T Q p computed anew, and convergence is tested after the
///          sweep.
class PairwiseCoupling {
public:
    static constexpr int kMaxIterations = 100;

    /// What the equations are held in; its memory serves the next call.
    struct Work {
        KwMath_930::KwSymMatrix q = {};
        std::vector<double> product = {};
    };

    /// hook: asked before each iteration; true ends the iterations with an error.
    void SetInterruption(std::function<bool()> hook) { fInterruption = std::move(hook); }

    /// r: n by n, with a zero diagonal. p: n entries, overwritten by the probabilities, which sum to 1; the state of
    /// the last iteration when there is no convergence. A category that no pair covers, or a NaN, makes all of them
    /// NaN, and no further iteration is begun.
    /// Returns: success; error 1 when the interruption hook asked to stop.
    KwScore::KwStatus Solve(const std::vector<std::vector<double>>& r, std::vector<double>& p, Work& work) const;
    KwScore::KwStatus Solve(const std::vector<std::vector<double>>& r, std::vector<double>& p) const;

    /// error: the largest deviation from the fixed point after an iteration over n categories.
    /// Returns: whether it is strictly below 0.005 / n.
    static bool HasConverged(double error, std::size_t n) { return error < 0.005 / static_cast<double>(n); }

private:
    std::function<bool()> fInterruption;
};

}  // namespace KwBrevix_930
