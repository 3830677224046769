// Anchors of the host classes that models know only by name. VersionInfo is all inline: where libraries show what their
// own code holds, and no more, this is its place.
#include "host/InlineTable.h"
#include "host/ScoreEncoder.h"
#include "host/ScoreValueLabel.h"
#include "host/ScoreValueLabelSet.h"
#include "host/ScoreValueProbabilitySet.h"
#include "host/VersionInfo.h"

namespace KwBrevix_930 {

ScoreValueLabel::~ScoreValueLabel() = default;
ScoreValueLabelSet::~ScoreValueLabelSet() = default;
ScoreValueProbabilitySet::~ScoreValueProbabilitySet() = default;
ScoreEncoder::~ScoreEncoder() = default;
InlineTable::~InlineTable() = default;

}  // namespace KwBrevix_930
