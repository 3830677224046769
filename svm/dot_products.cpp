// The sums that all kernels are made of: unrolled by four, added in index order.
#include "svm/dot_products.h"

namespace KwSVM_700 {

namespace {

double Square(double x) {
    return x * x;
}

}  // namespace

double DenseDotProduct(const std::vector<double>& x, const std::vector<double>& y) {
    const std::size_t n = x.size();
    double sum = 0.0;
    std::size_t i = 0;
    for (; i + 4 <= n; i += 4) {
        sum += x[i] * y[i];
        sum += x[i + 1] * y[i + 1];
        sum += x[i + 2] * y[i + 2];
        sum += x[i + 3] * y[i + 3];
    }
    for (; i < n; ++i)
        sum += x[i] * y[i];
    return sum;
}

double DenseSquaredDistance(const std::vector<double>& x, const std::vector<double>& y) {
    const std::size_t n = x.size();
    double sum = 0.0;
    std::size_t i = 0;
    for (; i + 4 <= n; i += 4) {
        sum += Square(x[i] - y[i]);
        sum += Square(x[i + 1] - y[i + 1]);
        sum += Square(x[i + 2] - y[i + 2]);
        sum += Square(x[i + 3] - y[i + 3]);
    }
    for (; i < n; ++i)
        sum += Square(x[i] - y[i]);
    return sum;
}

double SparseDotProduct(const std::vector<std::int32_t>& xIndices, const std::vector<double>& xValues,
                        const std::vector<std::int32_t>& yIndices, const std::vector<double>& yValues) {
    double sum = 0.0;
    std::size_t p = 0;
    std::size_t q = 0;
    while (p < xIndices.size() && q < yIndices.size()) {
        if (xIndices[p] == yIndices[q])
            sum += xValues[p++] * yValues[q++];
        else if (xIndices[p] < yIndices[q])
            ++p;
        else
            ++q;
    }
    return sum;
}

double SparseSquaredDistance(const std::vector<std::int32_t>& xIndices, const std::vector<double>& xValues,
                             const std::vector<std::int32_t>& yIndices, const std::vector<double>& yValues) {
    double sum = 0.0;
    std::size_t p = 0;
    std::size_t q = 0;
    while (p < xIndices.size() && q < yIndices.size()) {
        if (xIndices[p] == yIndices[q])
            sum += Square(xValues[p++] - yValues[q++]);
        else if (xIndices[p] < yIndices[q])
            sum += Square(xValues[p++]);
        else
            sum += Square(yValues[q++]);
    }
    for (; q < yIndices.size(); ++q)
        sum += Square(yValues[q]);
    for (; p < xIndices.size(); ++p)
        sum += Square(xValues[p]);
    return sum;
}

}  // namespace KwSVM_700
