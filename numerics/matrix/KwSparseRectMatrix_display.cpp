// Sparse rectangular matrix, dumps. A dump that runs out of memory ends early. Test:
// KwSparseRectMatrix_display_test.cpp.
#include "numerics/matrix/KwSparseRectMatrix.h"

#include <string>

#include "numerics/display/display.h"

namespace KwMath_930 {

void KwSparseRectMatrix::Display() const try {
    KwDisplay_930::DisplayText(1, "KwSparseRectMatrix display start");
    KwDisplay_930::DisplayI("Number of rows", fNRows);
    KwDisplay_930::DisplayI("Number of columns", fNCols);
    KwDisplay_930::DisplayI("Number of stored elements", fNElements);
    for (int i = 0; i < fNRows; ++i) {
        const std::string label = "row " + std::to_string(i);
        KwDisplay_930::DisplayIV(label + " columns: ", fColumns[static_cast<std::size_t>(i)]);
        KwDisplay_930::DisplayDV(label + " values: ", fValues[static_cast<std::size_t>(i)]);
    }
    KwDisplay_930::DisplayText(1, "KwSparseRectMatrix display end");
} catch (...) {
    return;
}

void KwSparseRectMatrix::DisplayF() const try {
    KwDisplay_930::DisplayText(1, "KwSparseRectMatrix full matrix display start");
    KwDisplay_930::DisplayI("Number of rows", fNRows);
    KwDisplay_930::DisplayI("Number of columns", fNCols);
    std::vector<double> row;
    for (int i = 0; i < fNRows && GetRow(i, row); ++i) {
        KwDisplay_930::DisplayDV("row " + std::to_string(i) + ": ", row, true);
    }
    KwDisplay_930::DisplayText(1, "KwSparseRectMatrix display end");
} catch (...) {
    return;
}

}  // namespace KwMath_930
