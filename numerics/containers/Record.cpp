// Record of doubles. Test: Record_test.cpp, containers_allocation_test.cpp.
#include "numerics/containers/Record.h"

#include <algorithm>
#include <cstddef>
#include <new>

namespace KwCommon_930 {

namespace {

// n doubles, not initialised; null for n < 1 and where the allocation fails.
std::unique_ptr<double[]> Allocate(int n) {
    return std::unique_ptr<double[]>(n > 0 ? new (std::nothrow) double[static_cast<std::size_t>(n)] : nullptr);
}

}  // namespace

Record::Record(int n) noexcept {
    if (Resize(n < 0 ? 1 : n)) {
        std::fill_n(fData.get(), fSize, 0.0);
    }
}

Record::Record(const Record& other) noexcept {
    *this = other;
}

Record& Record::operator=(const Record& other) noexcept {
    if (this != &other && Resize(other.fSize)) {
        std::copy_n(other.fData.get(), fSize, fData.get());
    }
    return *this;
}

Record::~Record() = default;

bool Record::Resize(int n) noexcept {
    if (n == fSize) {
        return true;
    }
    const int size = std::max(n, 0);
    std::unique_ptr<double[]> data = Allocate(size);
    if (size > 0 && data == nullptr) {
        return false;
    }
    fData = std::move(data);
    fSize = size;
    return true;
}

double& Record::operator[](int i) {
    return fData[static_cast<std::size_t>(i)];
}

double Record::operator[](int i) const {
    return fData[static_cast<std::size_t>(i)];
}

double* Record::GetAll() {
    return fData.get();
}

const double* Record::GetAll() const {
    return fData.get();
}

int Record::Size() const {
    return fSize;
}

}  // namespace KwCommon_930
