// Class probabilities from pairwise probabilities.
#include "svm/PairwiseCoupling.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace KwBrevix_930 {

namespace {

using KwMath_930::KwSymMatrix;

void FillQ(const std::vector<std::vector<double>>& r, KwSymMatrix& q) {
    const std::size_t n = r.size();
    for (std::size_t t = 0; t < n; ++t) {
        double diagonal = 0.0;
        for (std::size_t j = 0; j < n; ++j)
            diagonal += r[j][t] * r[j][t];
        q.SetElem(static_cast<int>(t), static_cast<int>(t), diagonal);
        for (std::size_t j = 0; j < t; ++j)
            q.SetElem(static_cast<int>(t), static_cast<int>(j), -r[j][t] * r[t][j]);
    }
}

void Normalise(std::vector<double>& p) {
    double sum = 0.0;
    for (const double probability : p)
        sum += probability;
    for (double& probability : p)
        probability /= sum;
}

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// No pair covers a category whose diagonal element is 0; its update would divide by it and leave nothing but NaN.
bool CoversAllCategories(const KwSymMatrix& q, int n) {
    for (int t = 0; t < n; ++t) {
        if (q.GetElem(t, t) == 0.0)
            return false;
    }
    return true;
}

void UpdateComponents(const KwSymMatrix& q, std::vector<double>& p) {
    for (std::size_t t = 0; t < p.size(); ++t) {
        const int row = static_cast<int>(t);
        double others = 0.0;
        for (std::size_t j = 0; j < p.size(); ++j) {
            if (j != t)
                others += q.GetElem(row, static_cast<int>(j)) * p[j];
        }
        p[t] = (q.ComputeVSW(p, p) - others) / q.GetElem(row, row);
        Normalise(p);
    }
}

// The largest deviation from the fixed point.
double LargestError(const std::vector<double>& qp, double pqp) {
    double largest = 0.0;
    for (const double component : qp)
        largest = std::max(largest, std::fabs(component - pqp));
    return largest;
}

}  // namespace

KwScore::KwStatus PairwiseCoupling::Solve(const std::vector<std::vector<double>>& r, std::vector<double>& p) const {
    Work work;
    return Solve(r, p, work);
}

KwScore::KwStatus PairwiseCoupling::Solve(const std::vector<std::vector<double>>& r, std::vector<double>& p,
                                          Work& work) const {
    const std::size_t n = r.size();
    KwSymMatrix& q = work.q;
    p.assign(n, 1.0 / static_cast<double>(n));
    if (!q.Resize(static_cast<int>(n)))
        return {};
    FillQ(r, q);
    const bool isCovered = CoversAllCategories(q, static_cast<int>(n));
    std::vector<double>& qp = work.product;
    for (int iteration = 0; iteration < kMaxIterations; ++iteration) {
        if (fInterruption && fInterruption())
            return {1, true};
        if (isCovered)
            UpdateComponents(q, p);
        else
            p.assign(n, kNaN);
        if (!q.ComputeSV(p, qp))
            break;
        const double pqp = q.ComputeVSW(p, p);
        if (std::isnan(pqp)) {
            // No further iteration could bring a number back.
            p.assign(n, kNaN);
            break;
        }
        if (HasConverged(LargestError(qp, pqp), n))
            break;
    }
    return {};
}

}  // namespace KwBrevix_930
