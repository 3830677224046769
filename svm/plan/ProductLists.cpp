// Lists of (index, factor), summed left to right as factor * source[index].
#include "svm/plan/ProductLists.h"

#include <algorithm>

namespace KwBrevix_930::plan {

namespace {

std::size_t CountGroups(std::size_t lists) {
    return (lists + kGroup - 1) / kGroup;
}

std::vector<std::size_t> FindStarts(const std::vector<std::size_t>& lengths) {
    std::vector<std::size_t> starts;
    starts.reserve(CountGroups(lengths.size()) + 1);
    starts.push_back(0);
    for (std::size_t list = 0; list < lengths.size(); list += kGroup) {
        const auto first = lengths.begin() + static_cast<std::ptrdiff_t>(list);
        const auto count = std::min(kGroup, lengths.size() - list);
        starts.push_back(starts.back() + *std::max_element(first, first + static_cast<std::ptrdiff_t>(count)));
    }
    return starts;
}

}  // namespace

ProductLists::ProductLists(const std::vector<std::size_t>& lengths, std::size_t zeroIndex, const ListLoops& loops)
    : fLists(lengths.size()),
      fStarts(FindStarts(lengths)),
      fIndices(fStarts.back() * kGroup),
      fFactors(fStarts.back() * kGroup),
      fLoops(loops) {
    std::fill_n(fIndices.data(), fIndices.size(), static_cast<std::int32_t>(zeroIndex));
}

double ProductLists::GetByteCount(const std::vector<std::size_t>& lengths) {
    const double entries = static_cast<double>(FindStarts(lengths).back()) * kGroup;
    return sizeof(ProductLists) + static_cast<double>(CountGroups(lengths.size()) + 1) * sizeof(std::size_t) +
           AlignedArray<std::int32_t>::GetByteCount(entries) + AlignedArray<double>::GetByteCount(entries);
}

void ProductLists::Set(std::size_t list, std::size_t k, std::size_t index, double factor) {
    const std::size_t place = (fStarts[list / kGroup] + k) * kGroup + list % kGroup;
    fIndices[place] = static_cast<std::int32_t>(index);
    fFactors[place] = factor;
}

void ProductLists::SumCase(const double* source, double* sums) const {
    for (std::size_t list = 0; list < fLists; list += kGroup) {
        const std::size_t start = fStarts[list / kGroup];
        double group[kGroup];
        fLoops.oneCase(fStarts[list / kGroup + 1] - start, fIndices.data() + start * kGroup,
                       fFactors.data() + start * kGroup, source, group);
        std::copy_n(group, std::min(kGroup, fLists - list), sums + list);
    }
}

void ProductLists::SumTile(const double* source, double* sums) const {
    for (std::size_t list = 0; list < fLists; list += kGroup) {
        const std::size_t start = fStarts[list / kGroup];
        double group[kGroup * kTile];
        fLoops.oneTile(fStarts[list / kGroup + 1] - start, fIndices.data() + start * kGroup,
                       fFactors.data() + start * kGroup, source, group);
        std::copy_n(group, std::min(kGroup, fLists - list) * kTile, sums + list * kTile);
    }
}

void ProductLists::SumTiles(const Tiles& tiles) const {
    for (std::size_t tile = 0; tile < tiles.count; ++tile)
        SumTile(tiles.numbers + tile * tiles.numberStride, tiles.sums + tile * tiles.sumStride);
}

}  // namespace KwBrevix_930::plan
