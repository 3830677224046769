// Block-diagonal matrix, products with other matrices and extraction: formed on a full copy, as the results are full.
// Test: KwSymBlockDiagMatrix_test.cpp.
#include "numerics/matrix/KwSymBlockDiagMatrix.h"

#include "numerics/matrix/IKwRectMatrix.h"

namespace KwMath_930 {

bool KwSymBlockDiagMatrix::ComputeGMG(const std::vector<double>& g, KwSymMatrix& target) const {
    KwSymMatrix dense;
    return CopyTo(dense) && dense.ComputeGMG(g, target);
}

bool KwSymBlockDiagMatrix::ComputeGMGNG(const IKwSymMatrix& m, const IKwSymMatrix& n, IKwSymMatrix& target,
                                        std::vector<double>& work) const {
    KwSymMatrix dense;
    return CopyTo(dense) && dense.ComputeGMGNG(m, n, target, work);
}

bool KwSymBlockDiagMatrix::ComputeMGN(const IKwSymMatrix& m, const IKwSymMatrix& n, IKwSymMatrix& target) const {
    KwSymMatrix dense;
    return CopyTo(dense) && dense.ComputeMGN(m, n, target);
}

bool KwSymBlockDiagMatrix::ComputeGSG(const IKwSymMatrix& g, IKwSymMatrix& target) const {
    KwSymMatrix dense;
    return CopyTo(dense) && dense.ComputeGSG(g, target);
}

bool KwSymBlockDiagMatrix::ComputeLSLTrans(const IKwSymMatrix& m, IKwSymMatrix& target) const {
    KwSymMatrix dense;
    return CopyTo(dense) && dense.ComputeLSLTrans(m, target);
}

bool KwSymBlockDiagMatrix::ComputeLTransSL(const IKwSymMatrix& m, IKwSymMatrix& target, int k) const {
    KwSymMatrix dense;
    return CopyTo(dense) && dense.ComputeLTransSL(m, target, k);
}

bool KwSymBlockDiagMatrix::ComputeRS(const IKwRectMatrix& r, IKwRectMatrix& target) const {
    KwSymMatrix dense;
    return CopyTo(dense) && dense.ComputeRS(r, target);
}

bool KwSymBlockDiagMatrix::ComputeRSRTrans(const IKwRectMatrix& r, IKwSymMatrix& target) const {
    KwSymMatrix dense;
    return CopyTo(dense) && dense.ComputeRSRTrans(r, target);
}

bool KwSymBlockDiagMatrix::ComputeRTransS(const IKwRectMatrix& r, IKwRectMatrix& target) const {
    KwSymMatrix dense;
    return CopyTo(dense) && dense.ComputeRTransS(r, target);
}

bool KwSymBlockDiagMatrix::ComputeRTransSR(const IKwRectMatrix& r, IKwSymMatrix& target) const {
    KwSymMatrix dense;
    return CopyTo(dense) && dense.ComputeRTransSR(r, target);
}

bool KwSymBlockDiagMatrix::ComputeRTransSV(const IKwRectMatrix& r, const std::vector<double>& v,
                                           std::vector<double>& out) const {
    KwSymMatrix dense;
    return CopyTo(dense) && dense.ComputeRTransSV(r, v, out);
}

bool KwSymBlockDiagMatrix::ComputeSS(const IKwSymMatrix& m, IKwRectMatrix& target) const {
    KwSymMatrix dense;
    return CopyTo(dense) && dense.ComputeSS(m, target);
}

bool KwSymBlockDiagMatrix::ComputeSTransS(IKwSymMatrix& target) const {
    KwSymMatrix dense;
    return CopyTo(dense) && dense.ComputeSTransS(target);
}

bool KwSymBlockDiagMatrix::ExtractFirstNRows(IKwSymMatrix& target) const {
    KwSymMatrix dense;
    return CopyTo(dense) && dense.ExtractFirstNRows(target);
}

bool KwSymBlockDiagMatrix::ExtractSubmatrix(const std::vector<int>& rows, IKwSymMatrix& target) const {
    KwSymMatrix dense;
    return CopyTo(dense) && dense.ExtractSubmatrix(rows, target);
}

double KwSymBlockDiagMatrix::TraceOfProductOfThree(const IKwSymMatrix& m, const IKwSymMatrix& n) const {
    KwSymMatrix dense;
    return CopyTo(dense) ? dense.TraceOfProductOfThree(m, n) : 0.0;
}

}  // namespace KwMath_930
