// The status value. Copies are member-wise; they stand here so that the library exports them. Test: KwStatus_test.cpp.
#include "numerics/containers/KwStatus.h"

namespace KwSvm {

KwStatus::KwStatus() = default;

KwStatus::KwStatus(long code, bool warning)
    : fErrorCode(static_cast<std::int32_t>(code)), fSeverity(warning ? 1 : -1) {}

KwStatus::KwStatus(const KwStatus& other) = default;
KwStatus::KwStatus(KwStatus&& other) noexcept = default;
KwStatus& KwStatus::operator=(const KwStatus& other) = default;
KwStatus& KwStatus::operator=(KwStatus&& other) noexcept = default;
KwStatus::~KwStatus() = default;

long KwStatus::GetErrorCode() const {
    return fErrorCode;
}

bool KwStatus::IsOK() const {
    return fSeverity == 0;
}

bool KwStatus::IsWarning() const {
    return fSeverity > 0;
}

bool KwStatus::IsError() const {
    return fSeverity < 0;
}

void KwStatus::SetDiscreteDatum(unsigned int i, long v) {
    fDiscreteData[i] = static_cast<std::int32_t>(v);
}

long KwStatus::GetDiscreteDatum(unsigned int i) const {
    return fDiscreteData[i];
}

void KwStatus::SetScaleDatum(unsigned int i, double v) {
    fScaleData[i] = v;
}

double KwStatus::GetScaleDatum(unsigned int i) const {
    return fScaleData[i];
}

bool KwStatus::operator==(const KwStatus& other) const = default;

}  // namespace KwSvm
