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

    static Pack Magnitude(Pack value) { return (Pack)((Bits)value & ~kSignBit); }

    struct Computed {
        Pack value;
        // In each lane all bits or none.
        Bits isCertain;
    };

    // Whether the sum of head and rest lies so far from a tie that another function rounds it the same way: a rest
    // enlarged by the margin still makes no difference to head. That holds below a power of two too, where the units
    // are half as large.
    static Bits IsCertain(Pack head, Pack rest, double margin) {
        return (Bits)(head + rest * (1.0 / (1.0 - 2.0 * margin)) == head);
    }

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
        return {head, IsCertain(head, rest, kExpMargin) & (Bits)(Magnitude(x) <= 600.0)};
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
        return {power.head, IsCertain(power.head, power.rest, kPowMargin) & isInRange};
    }

    // At any address that a double may have.
    static Pack Load(const double* from) {
        Pack pack;
        __builtin_memcpy(&pack, from, sizeof pack);
        return pack;
    }
    static void Store(double* to, Pack pack) { __builtin_memcpy(to, &pack, sizeof pack); }

    static void NoteOne(std::size_t place, OpenPlaces& open) {
        open.places[open.count++] = static_cast<std::uint16_t>(place);
    }

    // The open lanes of all packs, a byte for each pack, so that nothing depends on them while packs are computed.
    class OpenLanes {
    public:
        void Add(std::size_t pack, Bits isCertain) {
            const std::uint64_t isOpen = ~Set::GatherSigns(isCertain) & ((1u << kPack) - 1);
            fWords[pack / 8] |= isOpen << pack % 8 * 8;
        }

        void Note(OpenPlaces& open) const {
            for (std::size_t w = 0; w < kWords; ++w) {
                for (std::uint64_t word = fWords[w]; word != 0; word &= word - 1) {
                    const auto bit = static_cast<std::size_t>(__builtin_ctzll(word));
                    NoteOne((w * 8 + bit / 8) * kPack + bit % 8, open);
                }
            }
        }

    private:
        static_assert(kPack <= 8);
        static constexpr std::size_t kWords = OpenPlaces::kMost / kPack / 8;

        std::uint64_t fWords[kWords] = {};
    };

    // argument(x): what compute is to be called with, which is left where the result is open.
    template <class Argument, class Compute>
    static void Visit(const double* x, double* y, std::size_t n, OpenPlaces& open, Argument argument, Compute compute) {
        OpenLanes openLanes;
        std::size_t k = 0;
        for (; n - k >= kPack; k += kPack) {
            const Pack pack = argument(Load(x + k));
            const Computed computed = compute(pack);
            Store(y + k, computed.isCertain ? computed.value : pack);
            openLanes.Add(k / kPack, computed.isCertain);
        }
        openLanes.Note(open);
        // Too few for a pack: to fill one up costs more than to ask the platform.
        for (; k < n; ++k) {
            y[k] = argument(x[k]);
            NoteOne(k, open);
        }
    }

    static void ExpOfAll(double factor, const double* x, double* y, std::size_t n, OpenPlaces& open) {
        Visit(
            x, y, n, open, [factor](auto value) { return factor * value; }, [](Pack pack) { return Exp(pack); });
    }

    static void PowOfAll(const double* x, int degree, double* y, std::size_t n, OpenPlaces& open) {
        Visit(
            x, y, n, open, [](auto value) { return value; }, [degree](Pack pack) { return Pow(pack, degree); });
    }

    static constexpr ElementaryKernels Table(const char* name) { return {name, ExpOfAll, PowOfAll}; }
};

}  // namespace
}  // namespace KwSVM_700
