// Rectangular matrix, dumps: the texts of Display and DisplayF on the dump stream. A dump that runs out of memory ends
// early. Test: KwRectMatrix_display_test.cpp.
#include "numerics/matrix/KwRectMatrix.h"

#include <charconv>
#include <string>

#include "numerics/display/display.h"

namespace KwMath_930 {

namespace {

std::string RowLabel(const char* head, int row) {
    char digits[16];
    return head + std::string(digits, std::to_chars(digits, digits + sizeof digits, row).ptr) + ": ";
}

}  // namespace

// Deliberate: the row labels of this form have two blanks before the number.
void KwRectMatrix::Display() const try {
    KwDisplay_930::DisplayText(1, "KwRectMatrix display start");
    KwDisplay_930::DisplayI("Number of rows", fNRows);
    KwDisplay_930::DisplayI("Number of columns", fNCols);
    for (int i = 0; i < fNRows; ++i) {
        KwDisplay_930::DisplayDA(RowLabel("row  ", i), RowData(i), fNCols, false);
    }
    KwDisplay_930::DisplayText(1, "KwRectMatrix display end");
} catch (...) {
    return;
}

void KwRectMatrix::DisplayF() const try {
    KwDisplay_930::DisplayText(1, "KwRectMatrix full matrix display start");
    KwDisplay_930::DisplayI("Number of rows", fNRows);
    KwDisplay_930::DisplayI("Number of columns", fNCols);
    std::vector<double> row;
    for (int i = 0; i < fNRows && GetRow(i, row); ++i) {
        KwDisplay_930::DisplayDV(RowLabel("row ", i), row, true);
    }
    KwDisplay_930::DisplayText(1, "KwRectMatrix display end");
} catch (...) {
    return;
}

}  // namespace KwMath_930
