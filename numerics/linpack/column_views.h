// Views of a matrix by columns, one for each storage, so that an algorithm is written once for all of them:
// Column(j)[i] is element (i, j), counted from 0. Internal.
#pragma once

#include <cstddef>

namespace KwMath_930::linpack {

/// Dense columns, ld apart.
class DenseColumns {
public:
    DenseColumns(double* a, int ld) : fA(a), fLd(ld) {}
    double* Column(int j) const { return fA + j * fLd; }
    /// Returns: the first stored row of column j's upper triangle.
    int FirstRow(int) const { return 0; }

private:
    double* fA;
    std::ptrdiff_t fLd;
};

/// The upper triangle, column after column.
class PackedColumns {
public:
    explicit PackedColumns(double* ap) : fA(ap) {}
    double* Column(int j) const { return fA + std::ptrdiff_t{j} * (j + 1) / 2; }
    int FirstRow(int) const { return 0; }

private:
    double* fA;
};

/// Columns of a band with `above` diagonals over the main one, which stands in row `above` of the storage.
class BandColumns {
public:
    BandColumns(double* abd, int ld, int above) : fA(abd), fLd(ld), fAbove(above) {}
    double* Column(int j) const { return fA + (j * (fLd - 1) + fAbove); }
    int FirstRow(int j) const { return j > fAbove ? j - fAbove : 0; }

private:
    double* fA;
    std::ptrdiff_t fLd;
    int fAbove;
};

}  // namespace KwMath_930::linpack
