// The control word of the x87 unit, for tests: x86-64 and compilers with GNU assembler statements.
#pragma once

#include <cstdint>

namespace test_support {

inline std::uint16_t controlWord() {
    std::uint16_t word = 0;
    asm volatile("fnstcw %0" : "=m"(word));
    return word;
}

/// Sets the calling thread's control word for a lifetime.
class UnderControlWord {
public:
    explicit UnderControlWord(std::uint16_t word) : fBefore(controlWord()) { asm volatile("fldcw %0" : : "m"(word)); }
    ~UnderControlWord() { asm volatile("fldcw %0" : : "m"(fBefore)); }
    UnderControlWord(const UnderControlWord&) = delete;
    UnderControlWord& operator=(const UnderControlWord&) = delete;

private:
    std::uint16_t fBefore;
};

/// Rounds to 53 bits, as Windows starts a thread; to 64, as the C runtime starts a program.
constexpr std::uint16_t kDoublePrecision = 0x27F;
constexpr std::uint16_t kExtendedPrecision = 0x37F;

}  // namespace test_support
