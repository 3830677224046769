// Home of the interface's virtual table. Test: KwRectMatrix_slots_test.cpp.
#include "numerics/matrix/IKwRectMatrix.h"

namespace KwMath_930 {

IKwRectMatrix::~IKwRectMatrix() = default;

}  // namespace KwMath_930
