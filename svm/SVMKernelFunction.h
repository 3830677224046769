// A kernel function K(x, y) of a case vector and a support vector.
#pragma once

#include <cstdint>
#include <vector>

namespace KwSVM_700 {

/// Abstract; immutable, so evaluation is safe from any number of threads. Evaluation allocates nothing and tests
/// nothing: a NaN flows on. Virtual operations stand in slot order, slot 0 is the destructor.
/// Note:    slots count in the order of declaration; MSVC lays adjacent overloads out in reverse (docs/windows.md).
class SVMKernelFunction {
public:
    SVMKernelFunction() = default;
    SVMKernelFunction(const SVMKernelFunction&) = default;
    SVMKernelFunction& operator=(const SVMKernelFunction&) = default;
    virtual ~SVMKernelFunction();

    /// Slot 1. Two dense vectors; y has at least as many elements as x.
    virtual double Evaluate(const std::vector<double>& x, const std::vector<double>& y) const = 0;

    /// Slot 2. Two sparse vectors: zero-based indices in strictly ascending order, and as many values.
    virtual double Evaluate(const std::vector<std::int32_t>& xIndices, const std::vector<double>& xValues,
                            const std::vector<std::int32_t>& yIndices, const std::vector<double>& yValues) const = 0;
};

}  // namespace KwSVM_700
