// A record of doubles: an array with its size.
#pragma once

#include <memory>

#include "numerics/Export.h"

namespace KwCommon_930 {

/// An owned array of doubles, sized at construction or by Resize.
/// Fails:   never throws; what cannot be allocated leaves an empty record (constructors) or an unchanged one.
/// Note:    indices are not checked.
class KW_EXPORT Record {
public:
    /// n zeros; nothing is allocated for n = 0.
    /// Fails:   an allocation that fails gives size 0.
    /// Note:    Deliberate: a negative n gives size 1.
    Record(int n = 2) noexcept;
    /// A copy of its own; an empty record for an empty one and where the allocation fails.
    Record(const Record& other) noexcept;
    /// Takes over size and elements; nothing on self-assignment.
    /// Fails:   unchanged where the allocation fails.
    Record& operator=(const Record& other) noexcept;
    ~Record();

    /// Makes the size n, or 0 for a negative n.
    /// Returns: true; false when the allocation failed, the record unchanged.
    /// Note:    a record of that size keeps its elements; otherwise the new elements are neither copied nor
    ///          initialised.
    bool Resize(int n) noexcept;

    /// Element i, 0 <= i < Size().
    double& operator[](int i);
    /// Element i, 0 <= i < Size().
    double operator[](int i) const;

    /// Returns: the elements, null when there are none; valid until the size changes.
    double* GetAll();
    /// Returns: the elements, null when there are none; valid until the size changes.
    const double* GetAll() const;
    /// Returns: the number of elements.
    int Size() const;

private:
    std::unique_ptr<double[]> fData;
    int fSize = 0;
};

}  // namespace KwCommon_930
