// The points at which the loops of exp and pow are compared with the platform's own functions before they are used.
// Internal.
#pragma once

#include <cstddef>
#include <cstdint>

namespace KwSVM_700 {

/// Arguments whose exp lies hardly farther from a tie than the loops need it: a platform that is less exact than
/// assumed rounds some of them the other way. Found with mpmath at 200 bits.
constexpr double kHardForExp[] = {
    -0x1.05085b39eb34bp+4, -0x1.b26cc34558ed3p+4, -0x1.75aaf5d0a208ap+4, -0x1.04fc008366499p+5,
    -0x1.3b8516ca95122p+4, -0x1.39c8209730100p-3, -0x1.30d47cd18b718p+4, -0x1.d6d5faa452afep+3,
    -0x1.84068c5ad53f0p+2, -0x1.01beb40a446dbp+3, -0x1.095c6aae8d686p+5, -0x1.2ea798ae60054p+4,
    0x1.812810048f707p+6,  0x1.657cf215ab2ccp+6,  0x1.98151e49cc034p+7,  0x1.b57db36b09de5p+4};

/// Arguments spread evenly over a range, the same ones in every run. Source: Steele, Lea and Flood, Fast splittable
/// pseudorandom number generators, OOPSLA 2014 (SplitMix64).
class CheckPoints {
public:
    CheckPoints(double low, double high) : fLow(low), fWidth(high - low) {}

    double Next() {
        fState += 0x9e3779b97f4a7c15;
        std::uint64_t bits = (fState ^ (fState >> 30)) * 0xbf58476d1ce4e5b9;
        bits = (bits ^ (bits >> 27)) * 0x94d049bb133111eb;
        return fLow + fWidth * (static_cast<double>((bits ^ (bits >> 31)) >> 11) * 0x1p-53);
    }

    /// Returns: whether agree(x, n) is true of all groups of count points.
    template <class Agree>
    bool All(std::size_t count, const Agree& agree) {
        constexpr std::size_t kGroup = 128;
        for (std::size_t done = 0; done < count; done += kGroup) {
            double x[kGroup];
            for (double& point : x)
                point = Next();
            if (!agree(x, kGroup))
                return false;
        }
        return true;
    }

private:
    std::uint64_t fState = 8;
    double fLow;
    double fWidth;
};

}  // namespace KwSVM_700
