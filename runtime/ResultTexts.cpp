// The texts of results that come again and again.
#include "runtime/ResultTexts.h"

namespace brevix {

void ResultTexts::keep(std::span<const double> result, std::string_view text) {
    if (result.empty() || result.size() > kMostNumbers)
        return;
    Entry& entry = fEntries[findPlace(result)];
    entry.result.assign(result.begin(), result.end());
    entry.text = text;
}

}  // namespace brevix
