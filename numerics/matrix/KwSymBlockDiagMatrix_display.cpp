// Block-diagonal matrix, dumps. A dump that runs out of memory ends early. Test: KwSymBlockDiagMatrix_test.cpp.
#include "numerics/matrix/KwSymBlockDiagMatrix.h"

#include <string>

#include "numerics/display/display.h"

namespace KwMath_930 {

namespace {

std::string Label(const char* head, int number) {
    return head + std::to_string(number) + ": ";
}

}  // namespace

void KwSymBlockDiagMatrix::Display() const try {
    KwDisplay_930::DisplayText(1, "KwSymBlockDiagMatrix display start");
    KwDisplay_930::DisplayI("The number of rows", fNRows);
    KwDisplay_930::DisplayI("The number of blocks", fNBlocks);
    for (int block = 0; block < fNBlocks; ++block) {
        const KwSymMatrix* dense = nullptr;
        const std::vector<double>* diagonal = nullptr;
        if (GetDenseBlock(block, dense)) {
            KwDisplay_930::DisplayDVTR(Label("dense block ", block), dense->AsVectorConst(), dense->GetNRows());
        } else if (GetDiagonalBlock(block, diagonal)) {
            KwDisplay_930::DisplayDV(Label("diagonal block ", block), *diagonal);
        }
    }
    KwDisplay_930::DisplayText(1, "KwSymBlockDiagMatrix display end");
} catch (...) {
    return;
}

void KwSymBlockDiagMatrix::DisplayF() const try {
    KwDisplay_930::DisplayText(1, "KwSymBlockDiagMatrix full matrix display start");
    KwDisplay_930::DisplayI("Number of rows", fNRows);
    std::vector<double> row;
    for (int i = 0; i < fNRows && GetRow(i, row); ++i) {
        KwDisplay_930::DisplayDV(Label("row ", i), row, true);
    }
    KwDisplay_930::DisplayText(1, "KwSymBlockDiagMatrix display end");
} catch (...) {
    return;
}

}  // namespace KwMath_930
