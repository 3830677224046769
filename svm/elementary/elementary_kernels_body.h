// The loops of exp and pow, for packs of as many doubles as the source that includes it asks for. Included only by the
// sources elementary_kernels_<set>.cpp, each compiled for its own instruction set; everything here has internal linkage
// and calls nothing outside, so that no code for one set can be linked into another. Internal.
//
// A result is computed as head + rest: head is the nearest double to a sum that is good for some ten bits more, rest
// what the rounding took off. The farther |rest| stays below half a unit, the farther the result is from a tie.
#pragma once

#include <cstddef>
#include <cstdint>

#include "svm/elementary/elementary_kernels.h"
#include "svm/elementary/exp2_table.h"

namespace KwSVM_700 {
namespace {

// Set gives the types, which g++ 12 would silently shrink if they depended on a template parameter: Pack of doubles and
// Bits of as many std::uint64_t, and Entries of the table. It looks entries up and gathers the signs of a pack.
template <class Set>
struct ElementaryLoops {
    using Pack = typename Set::Pack;
    using Bits = typename Set::Bits;
    using Entries = typename Set::Entries;
    static constexpr std::size_t kPack = sizeof(Pack) / sizeof(double);

    static constexpr std::uint64_t kSignBit = std::uint64_t{1} << 63;
    static constexpr std::uint64_t kExponentBits = std::uint64_t{0x7ff} << 52;
    static constexpr std::uint64_t kMantissaBits = (std::uint64_t{1} << 52) - 1;

    // In each lane all bits or none.
    static Bits All(bool isSet) { return Bits{} - static_cast<std::uint64_t>(isSet); }
    static Pack Magnitude(Pack value) { return (Pack)((Bits)value & ~kSignBit); }

    // Whether the sum of head and rest lies so near a tie that another function might round it the other way. Below a
    // power of two the units are half as large: a rest on that side is never certain. The signs are compared as bits: a
    // product of small numbers would be zero.
    static Bits IsNearTie(Pack head, Pack rest, double margin) {
        const Bits bits = (Bits)head;
        const Pack power = (Pack)(bits & kExponentBits);
        const Bits isOutside = (Bits)(Magnitude(rest) >= power * (0x1p-53 * (1.0 - 2.0 * margin)));
        const Bits isPower = (Bits)((bits & kMantissaBits) == Bits{});
        const Pack outward = (Pack)((Bits)rest ^ (bits & kSignBit));
        return isOutside | (isPower & (Bits)(outward < Pack{}));
    }

    struct Computed {
        Pack value;
        Bits isOpen;
    };

    // exp(x) = 2^m 2^(j/256) exp(r), 256 m + j the nearest whole number to 256 x / ln 2, |r| <= ln 2 / 512.
    static Computed Exp(Pack x) {
        constexpr double kWholeNumbers = 0x1.8p52;
        const Pack shifted = x * 0x1.71547652b82fep+8 + kWholeNumbers;
        const Bits k = (Bits)shifted;
        const Pack multiple = shifted - kWholeNumbers;
        const Pack r = (x - multiple * 0x1.62e42fef8p-9) - multiple * 0x1.1cf79abc9e3b4p-44;
        const Entries entry = Set::LookUp(k % Exp2Table::kSize);
        const Pack scale = (Pack)(entry.shiftedBits + (k << Exp2Table::kIndexPlace));
        const Pack squared = r * r;
        const Pack above = squared * ((0.5 + r * (1.0 / 6)) + squared * (1.0 / 24 + r * (1.0 / 120)));
        const Pack change = scale * (r + (entry.tail + above));
        const Pack head = scale + change;
        const Pack rest = change - (head - scale);
        const Bits isInRange = (Bits)(x >= -600.0) & (Bits)(x <= 709.0);
        return {head, IsNearTie(head, rest, kExpMargin) | ~isInRange};
    }

    // The upper 26 bits.
    static Pack Upper(Pack value) {
        const Pack scaled = value * 0x1.0000002p27;
        return scaled - (scaled - value);
    }

    // A number as the sum of two doubles, and the upper 26 bits of the first.
    struct Exact {
        Pack head;
        Pack rest;
        Pack upper;
    };

    static Exact MakeExact(Pack head, Pack rest) {
        const Pack scaled = head * 0x1.0000002p27;
        return {head, rest, scaled - (scaled - head)};
    }

    // Source: as exp2_table.cpp.
    static Exact Multiply(const Exact& a, const Exact& b) {
        const Pack aLower = a.head - a.upper;
        const Pack bLower = b.head - b.upper;
        const Pack product = a.head * b.head;
        const Pack error = ((a.upper * b.upper - product) + a.upper * bLower + aLower * b.upper) + aLower * bLower;
        const Pack low = error + (a.head * b.rest + a.rest * b.head);
        const Pack head = product + low;
        return MakeExact(head, low - (head - product));
    }

    static Computed Pow(Pack x, int degree) {
        const Exact base = MakeExact(x, Pack{});
        Exact power = base;
        for (int bit = 1 << (30 - __builtin_clz(static_cast<unsigned>(degree))); bit != 0; bit /= 2) {
            power = Multiply(power, power);
            if ((degree & bit) != 0)
                power = Multiply(power, base);
        }
        const Pack size = Magnitude(power.head);
        const Bits isInRange = (Bits)(size >= 0x1p-128) & (Bits)(size <= 0x1p128);
        return {power.head, IsNearTie(power.head, power.rest, kPowMargin) | ~isInRange};
    }

    // At any address that a double may have.
    static Pack Load(const double* from) {
        Pack pack;
        __builtin_memcpy(&pack, from, sizeof pack);
        return pack;
    }
    static void Store(double* to, Pack pack) { __builtin_memcpy(to, &pack, sizeof pack); }

    static void Note(std::uint32_t isOpen, std::size_t first, OpenPlaces& open) {
        for (; isOpen != 0; isOpen &= isOpen - 1) {
            open.places[open.count++] =
                static_cast<std::uint16_t>(first + static_cast<std::size_t>(__builtin_ctz(isOpen)));
        }
    }

    // x where the result is open, so that it is still there when x and y are the same.
    static Pack Choose(const Computed& computed, Pack x) {
        return (Pack)(((Bits)x & computed.isOpen) | ((Bits)computed.value & ~computed.isOpen));
    }

    template <class Compute>
    static void Visit(const double* x, double* y, std::size_t n, OpenPlaces& open, Compute compute) {
        std::size_t k = 0;
        for (; n - k >= kPack; k += kPack) {
            const Pack pack = Load(x + k);
            const Computed computed = compute(pack);
            Store(y + k, Choose(computed, pack));
            Note(Set::GatherSigns(computed.isOpen), k, open);
        }
        // Too few for a pack: to fill one up costs more than to ask the platform.
        for (; k < n; ++k) {
            y[k] = x[k];
            Note(1, k, open);
        }
    }

    static void ExpOfAll(const double* x, double* y, std::size_t n, OpenPlaces& open) {
        Visit(x, y, n, open, [](Pack pack) { return Exp(pack); });
    }

    static void PowOfAll(const double* x, int degree, double* y, std::size_t n, OpenPlaces& open) {
        Visit(x, y, n, open, [degree](Pack pack) { return Pow(pack, degree); });
    }

    static constexpr ElementaryKernels Table(const char* name) { return {name, ExpOfAll, PowOfAll}; }
};

}  // namespace
}  // namespace KwSVM_700
