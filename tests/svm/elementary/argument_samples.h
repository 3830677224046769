// Arguments for the tests of exp and pow: every exponent, and the values at which something changes.
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>

namespace KwSVM_700::argument_samples {

// Equal bits; any NaN stands for any other.
inline bool AreSame(double a, double b) {
    return (std::isnan(a) && std::isnan(b)) || std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

// Doubles of any bits: all exponents, both signs, now and then an infinity or NaN.
inline std::vector<double> AnyBits(std::size_t count, std::uint64_t seed) {
    std::mt19937_64 engine(seed);
    std::vector<double> values(count);
    for (double& value : values)
        value = std::bit_cast<double>(engine());
    return values;
}

inline std::vector<double> Uniform(std::size_t count, double low, double high, std::uint64_t seed) {
    std::mt19937_64 engine(seed);
    std::uniform_real_distribution<double> draw(low, high);
    std::vector<double> values(count);
    for (double& value : values)
        value = draw(engine);
    return values;
}

inline std::vector<double> Specials() {
    using Limits = std::numeric_limits<double>;
    std::vector<double> values;
    for (const double magnitude : {0.0,
                                   Limits::denorm_min(),
                                   0x1.8p-1060,
                                   Limits::min(),
                                   0x1p-54,
                                   0x1p-53,
                                   0.5,
                                   1.0,
                                   2.0,
                                   3.0,
                                   708.5,
                                   0x1.62e42fefa39efp+9,
                                   0x1.62e42fefa39fp+9,
                                   745.2,
                                   746.0,
                                   0x1p16,
                                   0x1p64,
                                   0x1p128,
                                   0x1p341,
                                   0x1.fffffffffffffp511,
                                   0x1p1000,
                                   Limits::max(),
                                   Limits::infinity(),
                                   Limits::quiet_NaN()}) {
        values.push_back(magnitude);
        values.push_back(-magnitude);
    }
    return values;
}

}  // namespace KwSVM_700::argument_samples
