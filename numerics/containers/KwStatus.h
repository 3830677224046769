// The status value of the numerics library: a code, its severity and details of a message.
#pragma once

#include <cstdint>

#include "numerics/Export.h"

namespace KwSvm {

/// A status with an error code, a severity, three whole and three real details.
/// Shape:   codes and whole details are signed 32-bit values whatever the size of long; details have indices 0, 1, 2.
/// Fails:   never throws and never allocates; indices are not checked.
class KW_EXPORT KwStatus {
public:
    /// OK: code 0, all details 0.
    KwStatus();
    /// A warning or an error, never OK, whatever the code; all details 0.
    KwStatus(long code, bool warning);
    /// Copies and moves are member by member.
    KwStatus(const KwStatus& other);
    KwStatus(KwStatus&& other) noexcept;
    KwStatus& operator=(const KwStatus& other);
    KwStatus& operator=(KwStatus&& other) noexcept;
    ~KwStatus();

    /// Returns: the code given at construction.
    long GetErrorCode() const;
    /// Returns: true when neither warning nor error.
    bool IsOK() const;
    /// Returns: true when constructed as a warning.
    bool IsWarning() const;
    /// Returns: true when constructed with a code and not as a warning.
    bool IsError() const;

    /// Sets whole detail i, which is 0, 1 or 2.
    void SetDiscreteDatum(unsigned int i, long v);
    /// Returns: whole detail i, which is 0, 1 or 2.
    long GetDiscreteDatum(unsigned int i) const;
    /// Sets real detail i, which is 0, 1 or 2.
    void SetScaleDatum(unsigned int i, double v);
    /// Returns: real detail i, which is 0, 1 or 2.
    double GetScaleDatum(unsigned int i) const;

    /// Returns: true when code, severity and all details are equal.
    /// Note:    a detail that is NaN makes a status unequal to every other, its copy included.
    bool operator==(const KwStatus& other) const;

private:
    std::int32_t fErrorCode = 0;
    std::int16_t fSeverity = 0;  // 0 OK, +1 warning, -1 error
    std::int32_t fDiscreteData[3] = {0, 0, 0};
    double fScaleData[3] = {0.0, 0.0, 0.0};
};

}  // namespace KwSvm
