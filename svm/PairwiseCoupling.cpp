// Class probabilities from pairwise probabilities.
#include "svm/PairwiseCoupling.h"

#include <cmath>

#include "numerics/matrix/KwSymMatrix.h"

namespace KwBrevix_930 {

namespace {

using KwMath_930::KwSymMatrix;

void FillQ(const std::vector<std::vector<double>>& r, KwSymMatrix& q) {
    const std::size_t n = r.size();
    for (std::size_t t = 0; t < n; ++t) {
        double diagonal = 0.0;
        for (std::size_t j = 0; j < n; ++j) {
            if (j != t)
                diagonal += r[j][t] * r[j][t];
        }
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

// The largest deviation from the fixed point; NaN is never the largest.
double LargestError(const std::vector<double>& qp, double pqp) {
    double largest = 0.0;
    for (const double component : qp)
        largest = std::fmax(largest, std::fabs(component - pqp));
    return largest;
}

}  // namespace

KwScore::KwStatus PairwiseCoupling::Solve(const std::vector<std::vector<double>>& r, std::vector<double>& p) const {
    const std::size_t n = r.size();
    KwSymMatrix q(static_cast<int>(n), true);
    p.assign(n, 1.0 / static_cast<double>(n));
    if (!q.IsValidMatrix())
        return {};
    FillQ(r, q);
    const double tolerance = 0.005 / static_cast<double>(n);
    std::vector<double> qp;
    for (int iteration = 0; iteration < kMaxIterations; ++iteration) {
        if (fInterruption && fInterruption())
            return {1, true};
        UpdateComponents(q, p);
        if (!q.ComputeSV(p, qp))
            break;
        const double pqp = q.ComputeVSW(p, p);
        if (std::isnan(pqp) || LargestError(qp, pqp) < tolerance)
            break;
    }
    return {};
}

}  // namespace KwBrevix_930
