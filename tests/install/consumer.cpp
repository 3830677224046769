// A program outside the tree: links the library, uses its numerics, and asks its entry point for a translator.
#include <iostream>
#include <memory>

#include "host/ScoreTranslator.h"
#include "numerics/matrix/KwSymMatrix.h"
#include "numerics/power/KwMV.h"
#include "plugin/entry_point.h"

int main() {
    const std::unique_ptr<KwBrevix_930::ScoreTranslator> translator(GiveMyTranslator());
    KwMath_930::KwSymMatrix matrix(3, true);
    matrix.SetElem(2, 0, 2.385);
    const bool isRight = matrix.GetElem(0, 2) == 2.385 && KwCommon_930::KwMV::IsMissing(KwCommon_930::KwMV::Missing());
    std::cout << (translator && isRight ? "consumer works" : "consumer fails") << '\n';
    return translator && isRight ? 0 : 1;
}
