// The powers of two with exponents j / 256, computed by the compiler: each is the one before times 2^(1/256), in sums
// of two doubles. Source of the arithmetic: Dekker, A floating-point technique for extending the available precision,
// Numer. Math. 18 (1971).
// Test: exact_exp_test.cpp.
#include "svm/elementary/exp2_table.h"

#include <bit>

namespace KwSVM_700 {

namespace {

struct Sum {
    double high;
    double low;
};

// The two halves of a double, each of 26 bits.
constexpr Sum Split(double a) {
    const double scaled = 0x1.0000002p27 * a;
    const double high = scaled - (scaled - a);
    return {high, a - high};
}

constexpr Sum Multiply(const Sum& a, const Sum& b) {
    const Sum x = Split(a.high);
    const Sum y = Split(b.high);
    const double product = a.high * b.high;
    const double error = ((x.high * y.high - product) + x.high * y.low + x.low * y.high) + x.low * y.low;
    const double low = error + (a.high * b.low + a.low * b.high);
    const double high = product + low;
    return {high, low - (high - product)};
}

constexpr Exp2Table MakeTable() {
    constexpr Sum kStep = {0x1.00b1afa5abcbfp+0, -0x1.4f6b2a7609f71p-55};
    Exp2Table table{};
    Sum power = {1.0, 0.0};
    for (std::uint64_t j = 0; j < Exp2Table::kSize; ++j) {
        const std::uint64_t bits = std::bit_cast<std::uint64_t>(power.high);
        table.entries[j] = {power.low / power.high, bits - (j << Exp2Table::kIndexPlace)};
        power = Multiply(power, kStep);
    }
    return table;
}

}  // namespace

constinit const Exp2Table kExp2Table = MakeTable();

}  // namespace KwSVM_700
