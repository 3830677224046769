// Home of the interface's virtual table. Test: KwSymMatrix_slots_test.cpp.
#include "numerics/matrix/IKwSymMatrix.h"

namespace KwMath_930 {

IKwSymMatrix::~IKwSymMatrix() = default;

}  // namespace KwMath_930
