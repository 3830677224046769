// LINPACK, singular value decomposition: Householder transformations to bidiagonal form, then implicitly shifted QR
// sweeps (Golub and Reinsch, Singular Value Decomposition and Least Squares Solutions, Numer. Math. 14 (1970),
// 403-420). Test: Linpack_svd_test.cpp.
#include "numerics/linpack/Linpack.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "numerics/blas1/Blas1.h"
#include "numerics/linpack/column_views.h"
#include "numerics/linpack/householder.h"
#include "numerics/linpack/inner_products.h"

namespace KwMath_930 {

namespace {

using linpack::DenseColumns;

constexpr int kSweepLimit = 30;

// What a job of Dsvdc asks for, and its arrays.
struct Decomposition {
    DenseColumns x;
    int n;
    int p;
    double* s;
    double* e;
    DenseColumns u;
    DenseColumns v;
    double* work;
    int leftCount;  // left singular vectors, 0 for none
    bool wantV;

    bool WantU() const { return leftCount > 0; }
    // The numbers of transformations from the left and from the right.
    int LeftSteps() const { return std::min(n - 1, p); }
    int RightSteps() const { return std::max(0, std::min(p - 2, n)); }
    // The order of the bidiagonal matrix.
    int Order() const { return std::min(p, n + 1); }
};

// ---- Bidiagonal form

// Row l of the transformed matrix, right of the diagonal, goes into e while the columns take transformation l.
void TakeLeftStep(const Decomposition& d, int l) {
    double* u = d.x.Column(l) + l;
    const bool isStep = l < d.LeftSteps();
    if (isStep) {
        d.s[l] = linpack::MakeHouseholder(d.n - l, u);
    }
    for (int j = l + 1; j < d.p; ++j) {
        double* column = d.x.Column(j) + l;
        if (isStep && d.s[l] != 0.0) {
            linpack::Reflect(d.n - l, u, column);
        }
        d.e[j] = *column;
    }
    if (isStep) {
        d.s[l] = -d.s[l];
        if (d.WantU() && d.u.Column(l) + l != u) {  // u may be x
            std::copy(u, u + (d.n - l), d.u.Column(l) + l);
        }
    }
}

// The transformation that makes e[l+2 ..] zero, applied to the rows below l.
void TakeRightStep(const Decomposition& d, int l) {
    double* rows = d.e + l + 1;
    d.e[l] = -linpack::MakeHouseholder(d.p - l - 1, rows);
    const int below = d.n - l - 1;
    if (below > 0 && d.e[l] != 0.0) {
        double* sum = d.work + l + 1;
        std::fill(sum, sum + below, 0.0);
        int j = l + 1;
        for (; j + 4 <= d.p; j += 4) {
            const double* columns[4];
            for (int c = 0; c < 4; ++c) {
                columns[c] = d.x.Column(j + c) + l + 1;
            }
            linpack::AddFour(below, d.e + j, columns, sum);
        }
        for (; j < d.p; ++j) {
            linpack::AddScaled(below, d.e[j], d.x.Column(j) + l + 1, sum);
        }
        for (j = l + 1; j < d.p; ++j) {
            linpack::AddScaled(below, -d.e[j] / rows[0], sum, d.x.Column(j) + l + 1);
        }
    }
    if (d.wantV) {
        std::copy(rows, d.e + d.p, d.v.Column(l) + l + 1);
    }
}

void MakeBidiagonal(const Decomposition& d) {
    const int left = d.LeftSteps();
    const int right = d.RightSteps();
    for (int l = 0; l < std::max(left, right); ++l) {
        TakeLeftStep(d, l);
        if (l < right) {
            TakeRightStep(d, l);
        }
    }
    const int m = d.Order();
    if (left < d.p) {
        d.s[left] = d.x.Column(left)[left];
    }
    if (d.n < m) {
        d.s[m - 1] = 0.0;
    }
    if (right + 1 < m) {
        d.e[right] = d.x.Column(m - 1)[right];
    }
    d.e[m - 1] = 0.0;
}

void SetToUnit(int n, int l, double* column) {
    std::fill(column, column + n, 0.0);
    column[l] = 1.0;
}

// The product of the transformations from the left, from the last to the first.
void MakeU(const Decomposition& d) {
    const int left = d.LeftSteps();
    for (int j = left; j < d.leftCount; ++j) {
        SetToUnit(d.n, j, d.u.Column(j));
    }
    for (int l = left - 1; l >= 0; --l) {
        double* column = d.u.Column(l);
        if (d.s[l] == 0.0) {
            SetToUnit(d.n, l, column);
            continue;
        }
        for (int j = l + 1; j < d.leftCount; ++j) {
            linpack::Reflect(d.n - l, column + l, d.u.Column(j) + l);
        }
        Blas1::DScal(d.n - l, -1.0, column + l, 1);
        column[l] += 1.0;
        std::fill(column, column + l, 0.0);
    }
}

// The product of the transformations from the right.
void MakeV(const Decomposition& d) {
    for (int l = d.p - 1; l >= 0; --l) {
        double* u = d.v.Column(l) + l + 1;
        if (l < d.RightSteps() && d.e[l] != 0.0) {
            for (int j = l + 1; j < d.p; ++j) {
                linpack::Reflect(d.p - l - 1, u, d.v.Column(j) + l + 1);
            }
        }
        SetToUnit(d.p, l, d.v.Column(l));
    }
}

// ---- Sweeps over the bidiagonal matrix

// The rotation that turns (a, b) into (r, 0), as DRotG chooses it; a becomes r. Without scaling where that is safe.
void MakeRotation(double& a, double b, double& c, double& s) {
    const double sum = a * a + b * b;
    if (!(sum > linpack::kSmallestSafeSum && sum < linpack::kLargestSafeSum)) {
        Blas1::DRotG(&a, &b, &c, &s);
        return;
    }
    const double larger = std::abs(a) > std::abs(b) ? a : b;
    const double r = std::copysign(std::sqrt(sum), larger);
    c = a / r;
    s = b / r;
    a = r;
}

class Sweeps {
public:
    explicit Sweeps(const Decomposition& d) : fD(d) {}

    // Returns: 0, or the number of a singular value that was not found within the limit.
    int Run() {
        int sweeps = 0;
        for (fM = fD.Order(); fM > 0;) {
            if (sweeps >= kSweepLimit) {
                return fM;
            }
            switch (FindBlock()) {
                case Case::kLastIsNegligible:
                    sweeps += DeflateLast() ? 0 : 1;
                    break;
                case Case::kOneIsNegligible:
                    sweeps += Split() ? 0 : 1;
                    break;
                case Case::kSweep:
                    Sweep();
                    ++sweeps;
                    break;
                case Case::kConverged:
                    FinishLast();
                    sweeps = 0;
                    --fM;
                    break;
            }
        }
        return 0;
    }

private:
    enum class Case { kLastIsNegligible, kOneIsNegligible, kSweep, kConverged };

    // Exactly: an element is negligible when adding it to its neighbours' magnitudes changes nothing. NaN never is.
    static bool IsNegligible(double element, double neighbours) { return neighbours + std::abs(element) == neighbours; }

    // Looks for negligible elements in the leading part of order fM, from its end, and sets them to zero. The block to
    // be worked on then starts at fL.
    Case FindBlock() {
        double* s = fD.s;
        double* e = fD.e;
        int l = fM - 2;
        for (; l >= 0; --l) {
            if (IsNegligible(e[l], std::abs(s[l]) + std::abs(s[l + 1]))) {
                e[l] = 0.0;
                break;
            }
        }
        fL = l + 1;
        if (fL == fM - 1) {
            return Case::kConverged;
        }
        for (int k = fM - 1; k >= fL; --k) {
            const double right = k != fM - 1 ? std::abs(e[k]) : 0.0;
            const double above = k != fL ? std::abs(e[k - 1]) : 0.0;
            if (IsNegligible(s[k], right + above)) {
                s[k] = 0.0;
                if (k == fM - 1) {
                    return Case::kLastIsNegligible;
                }
                fL = k + 1;
                return Case::kOneIsNegligible;
            }
        }
        return Case::kSweep;
    }

    void RotateV(int j, int k, double c, double s) const {
        if (fD.wantV) {
            Blas1::DRot(fD.p, fD.v.Column(j), 1, fD.v.Column(k), 1, c, s);
        }
    }
    void RotateU(int j, int k, double c, double s) const {
        if (fD.WantU() && std::max(j, k) < fD.n) {
            Blas1::DRot(fD.n, fD.u.Column(j), 1, fD.u.Column(k), 1, c, s);
        }
    }

    // The last s is zero: rotates the e above it away.
    // Returns: false when that e is zero already. It then was not negligible beside a NaN and will not be the next
    //          time; such a step counts as a sweep, so that the limit ends it.
    bool DeflateLast() const {
        const int last = fM - 1;
        double f = fD.e[last - 1];
        const bool isChange = f != 0.0;
        fD.e[last - 1] = 0.0;
        for (int k = last - 1; k >= fL; --k) {
            double c = 0.0;
            double sn = 0.0;
            MakeRotation(fD.s[k], f, c, sn);
            if (k != fL) {
                f = -sn * fD.e[k - 1];
                fD.e[k - 1] = c * fD.e[k - 1];
            }
            RotateV(k, last, c, sn);
        }
        return isChange;
    }

    // s[fL-1] is zero: rotates the e right of it away.
    // Returns: as DeflateLast.
    bool Split() const {
        double f = fD.e[fL - 1];
        const bool isChange = f != 0.0;
        fD.e[fL - 1] = 0.0;
        for (int k = fL; k < fM; ++k) {
            double c = 0.0;
            double sn = 0.0;
            MakeRotation(fD.s[k], f, c, sn);
            f = -sn * fD.e[k];
            fD.e[k] = c * fD.e[k];
            RotateU(k, fL - 1, c, sn);
        }
        return isChange;
    }

    // The first element of the bulge for the shift from the trailing 2 by 2 block of B^T B.
    void StartBulge(double& f, double& g) const {
        const double* s = fD.s;
        const double* e = fD.e;
        const int last = fM - 1;
        double scale = std::abs(s[last]);
        for (const double element : {s[last - 1], e[last - 1], s[fL], e[fL]}) {
            scale = Blas1::D_Max(scale, std::abs(element));
        }
        const double sm = s[last] / scale;
        const double smm1 = s[last - 1] / scale;
        const double emm1 = e[last - 1] / scale;
        const double sl = s[fL] / scale;
        const double el = e[fL] / scale;
        const double b = ((smm1 + sm) * (smm1 - sm) + emm1 * emm1) / 2.0;
        const double c = (sm * emm1) * (sm * emm1);
        double shift = 0.0;
        if (b != 0.0 || c != 0.0) {
            const double root = std::sqrt(b * b + c);
            shift = c / (b + (b < 0.0 ? -root : root));
        }
        f = (sl + sm) * (sl - sm) + shift;
        g = sl * el;
    }

    void Sweep() const {
        double* s = fD.s;
        double* e = fD.e;
        double f = 0.0;
        double g = 0.0;
        StartBulge(f, g);
        for (int k = fL; k < fM - 1; ++k) {
            double c = 0.0;
            double sn = 0.0;
            MakeRotation(f, g, c, sn);
            if (k != fL) {
                e[k - 1] = f;
            }
            f = c * s[k] + sn * e[k];
            e[k] = c * e[k] - sn * s[k];
            g = sn * s[k + 1];
            s[k + 1] = c * s[k + 1];
            RotateV(k, k + 1, c, sn);
            MakeRotation(f, g, c, sn);
            s[k] = f;
            f = c * e[k] + sn * s[k + 1];
            s[k + 1] = -sn * e[k] + c * s[k + 1];
            g = sn * e[k + 1];
            e[k + 1] = c * e[k + 1];
            RotateU(k, k + 1, c, sn);
        }
        e[fM - 2] = f;
    }

    // The last singular value is found: makes it positive and moves it to its place among those behind it.
    void FinishLast() const {
        double* s = fD.s;
        int l = fM - 1;
        if (!(s[l] >= 0.0)) {
            s[l] = -s[l];
            if (fD.wantV) {
                Blas1::DScal(fD.p, -1.0, fD.v.Column(l), 1);
            }
        }
        for (; l < fD.Order() - 1 && !(s[l] >= s[l + 1]); ++l) {
            std::swap(s[l], s[l + 1]);
            if (fD.wantV && l < fD.p - 1) {
                Blas1::DSwap(fD.p, fD.v.Column(l), 1, fD.v.Column(l + 1), 1);
            }
            if (fD.WantU() && l < fD.n - 1) {
                Blas1::DSwap(fD.n, fD.u.Column(l), 1, fD.u.Column(l + 1), 1);
            }
        }
    }

    Decomposition fD;
    int fM = 0;  // the order of the part that is not finished
    int fL = 0;
};

}  // namespace

int Linpack::Dsvdc(double* x, int ldx, int n, int p, double* s, double* e, double* u, int ldu, double* v, int ldv,
                   double* work, int job) {
    const int left = job % 100 / 10;
    const int leftCount = left == 0 ? 0 : left == 1 ? n : std::min(n, p);
    const Decomposition decomposition{
        DenseColumns(x, ldx), n, p, s, e, DenseColumns(u, ldu), DenseColumns(v, ldv), work, leftCount, job % 10 != 0};
    if (n < 1 || p < 1) {
        return 0;
    }
    MakeBidiagonal(decomposition);
    if (decomposition.WantU()) {
        MakeU(decomposition);
    }
    if (decomposition.wantV) {
        MakeV(decomposition);
    }
    return Sweeps(decomposition).Run();
}

}  // namespace KwMath_930
