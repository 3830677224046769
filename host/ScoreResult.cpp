// Anchors of the result interfaces.
#include "host/ScoreResult.h"

#include "host/ScoreClsResult.h"
#include "host/ScoreRegResult.h"

namespace KwBrevix_930 {

ScoreResult::~ScoreResult() = default;
ScoreClsResult::~ScoreClsResult() = default;
ScoreRegResult::~ScoreRegResult() = default;

}  // namespace KwBrevix_930
