// BLAS level 1, the scalar routines: Givens rotation, machine constants, letters, the error handler, small functions.
// Test: Blas1_scalars_test.cpp.
#include "numerics/blas1/Blas1.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <iostream>
#include <string_view>

namespace KwMath_930 {

namespace {

// The last candidate, from 0.5 down by halves, at which 1 still grows.
double MachineEpsilon() {
    double candidate = 0.5;
    while (1.0 + candidate / 2.0 > 1.0) {
        candidate /= 2.0;
    }
    return candidate;
}

// Far enough above the smallest number, found by sixteenths, that dividing by eps is safe.
double MachineTiny() {
    double smallest = 1.0;
    while (smallest / 16.0 != 0.0) {
        smallest /= 16.0;
    }
    return smallest / MachineEpsilon() * 100.0;
}

// Unformatted, so that neither width nor locale of standard output shows.
void Write(std::string_view text) {
    std::cout.write(text.data(), static_cast<std::streamsize>(text.size()));
}

}  // namespace

void Blas1::DRotG(double* a, double* b, double* c, double* s) {
    const double roe = std::abs(*a) > std::abs(*b) ? *a : *b;
    const double scale = std::abs(*a) + std::abs(*b);
    if (scale == 0.0) {
        *c = 1.0;
        *s = 0.0;
        *a = 0.0;
        *b = 0.0;
        return;
    }
    const double scaledA = *a / scale;
    const double scaledB = *b / scale;
    double r = scale * std::sqrt(scaledA * scaledA + scaledB * scaledB);
    if (roe < 0.0) {
        r = -r;
    }
    *c = *a / r;
    *s = *b / r;
    *a = r;
    *b = std::abs(*c) > 0.0 && *s >= std::abs(*c) ? 1.0 / *c : *s;
}

double Blas1::DMach(int job) {
    switch (job) {
        case 1:
            return MachineEpsilon();
        case 2:
            return MachineTiny();
        case 3:
            return 1.0 / MachineTiny();
        default: {
            char name[] = "DMACH";
            XErBla(name, 1);
        }
    }
}

bool Blas1::LSame(char ca, char cb) {
    if (ca == cb) {
        return true;
    }
    if (ca >= 'A' && ca <= 'Z') {
        return ca == cb - 32;
    }
    return ca >= 'a' && ca <= 'z' && ca == cb + 32;
}

void Blas1::XErBla(char* name, int info) {
    char number[16];
    const char* const end = std::to_chars(number, number + sizeof number, info).ptr;
    // The process ends even if its last words cannot be written.
    try {
        Write("\nXERBLA - Fatal error!\n  On entry to routine ");
        Write(name);
        Write("\n  input parameter number ");
        Write({number, end});
        Write(" had an illegal value.\n");
        std::cout.flush();
    } catch (...) {
        std::exit(1);
    }
    std::exit(1);
}

int Blas1::I_Min(int a, int b) {
    return a < b ? a : b;
}

int Blas1::I_Max(int a, int b) {
    return a > b ? a : b;
}

double Blas1::D_Max(double a, double b) {
    return a > b ? a : b;
}

double Blas1::D_Abs(double a) {
    return std::abs(a);
}

double Blas1::D_Sign(double a) {
    return a < 0.0 ? -1.0 : 1.0;
}

}  // namespace KwMath_930
