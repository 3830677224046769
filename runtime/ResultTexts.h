// The texts of results that come again and again.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "runtime/Export.h"

namespace brevix {

/// Votes have few outcomes. The text of each is made once, and again only when another has taken its place. For one
/// thread.
class BREVIX_RUNTIME_API ResultTexts {
public:
    /// Results of more numbers are not kept.
    static constexpr std::size_t kMostNumbers = 64;

    /// Returns: the text that is kept of the same numbers, bit for bit, valid until another one is; null where there is
    /// none.
    const std::string* find(std::span<const double> result) const;
    void keep(std::span<const double> result, std::string_view text);

private:
    struct Entry {
        std::vector<double> result;
        std::string text;
    };

    static constexpr int kPlaceBits = 8;

    static std::size_t findPlace(std::span<const double> result);

    std::vector<Entry> fEntries = std::vector<Entry>(std::size_t{1} << kPlaceBits);
};

}  // namespace brevix
