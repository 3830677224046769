// Symmetric matrix, dumps: the texts of Display, DisplayF and DisplayS on the dump stream. A dump that runs out of
// memory ends early. Test: KwSymMatrix_display_test.cpp.
#include "numerics/matrix/KwSymMatrix.h"

#include <charconv>
#include <string>

#include "numerics/display/display.h"

namespace KwMath_930 {

namespace {

std::string RowLabel(int row) {
    char digits[16];
    return "row " + std::string(digits, std::to_chars(digits, digits + sizeof digits, row).ptr) + ": ";
}

}  // namespace

void KwSymMatrix::Display() const try {
    KwDisplay_930::DisplayText(1, "KwSymMatrix display start");
    KwDisplay_930::DisplayI("The number of rows", fNRows);
    KwDisplay_930::DisplayI("The number of blocks", fNBlocks);
    KwDisplay_930::DisplayI("The block size", fBlockSize);
    KwDisplay_930::DisplayDVTR("Lower triangular", fData, fNRows);
    KwDisplay_930::DisplayText(1, "KwSymMatrix display end");
} catch (...) {
    return;
}

void KwSymMatrix::DisplayF() const try {
    KwDisplay_930::DisplayText(1, "KwSymMatrix full matrix display start");
    KwDisplay_930::DisplayI("Number of rows", fNRows);
    std::vector<double> row;
    for (int i = 0; i < fNRows && GetRow(i, row); ++i) {
        KwDisplay_930::DisplayDV(RowLabel(i), row, true);
    }
    KwDisplay_930::DisplayText(1, "KwSymMatrix display end");
} catch (...) {
    return;
}

void KwSymMatrix::DisplayS() const {
    KwDisplay_930::DisplayDVTRS(fData, fNRows);
}

}  // namespace KwMath_930
