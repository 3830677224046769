// Models and cases at random, and their decision values by the plain loops.
#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "pmml/SVMModelData.h"
#include "svm/SVMKFLinear.h"
#include "svm/SVMKFPolynomial.h"
#include "svm/SVMKFRBF.h"
#include "svm/SVMKFSigmoid.h"

namespace random_models {

using Indices = std::vector<std::int32_t>;
using Values = std::vector<double>;
using KwBrevix_930::SVMModelData;

/// Returns: true for the same bits, and for any two NaNs.
inline bool AreSame(double a, double b) {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) || (std::isnan(a) && std::isnan(b));
}

/// What the numbers of a model or a case are.
enum class Numbers { kPlain, kFloats, kBits, kOdd };

/// How the indices of support vectors go: as they should, or with some repeated, descending, negative or too large.
enum class Order { kAscending, kIrregular };

struct Shape {
    std::int32_t kernel = SVMModelData::kRadialBasis;
    std::size_t columns = 1;
    std::size_t vectors = 0;
    std::size_t machines = 1;
    double density = 1.0;
    Numbers numbers = Numbers::kPlain;
    Order order = Order::kAscending;
};

class Generator {
public:
    explicit Generator(std::uint64_t seed) : fEngine(seed) {}

    std::size_t UpTo(std::size_t most) { return std::uniform_int_distribution<std::size_t>(0, most)(fEngine); }
    bool IsTrue(double probability) { return std::bernoulli_distribution(probability)(fEngine); }
    double Real(double from, double to) { return std::uniform_real_distribution<double>(from, to)(fEngine); }

    double Number(Numbers numbers) {
        switch (numbers) {
            case Numbers::kFloats:
                return static_cast<double>(static_cast<float>(Real(-2.0, 2.0)));
            case Numbers::kBits:
                return IsTrue(0.5) ? 1.0 : (IsTrue(0.1) ? -0.0 : 0.0);
            case Numbers::kOdd:
                return OddOrOrdinary();
            default:
                return Real(-2.0, 2.0);
        }
    }

    /// Returns: a number from the edges: zeros, denormals, infinities, NaN, huge and tiny ones.
    double Odd() { return IsTrue(0.5) ? OneOf(kTame) : OneOf(kAllFierce); }

    Values Case(std::size_t columns, Numbers numbers) {
        Values x(columns);
        for (double& number : x)
            number = Number(numbers);
        return x;
    }

    std::unique_ptr<SVMModelData> Model(const Shape& shape) {
        ChooseOddNumbers(shape);
        auto data = std::make_unique<SVMModelData>();
        data->SetIsClassification(true);
        data->SetKernelType(shape.kernel);
        data->SetGamma(Real(0.01, 0.5));
        data->SetCoef0(IsTrue(0.2) ? 0.0 : Real(-1.0, 1.0));
        data->SetDegree(static_cast<double>(UpTo(5)));
        if (IsTrue(0.2)) {
            // Of a negative number there is no such power: above all products of ordinary numbers.
            data->SetDegree(2.5);
            data->SetCoef0(4.0 * data->GetGamma() * static_cast<double>(shape.columns) + 0.125);
        }
        for (std::size_t v = 0; v < shape.vectors; ++v)
            AddVector(*data, shape, "v" + std::to_string(v));
        for (std::size_t m = 0; m < shape.machines; ++m)
            data->GetMachines().push_back(Machine(*data, shape));
        return data;
    }

private:
    // One infinity or NaN makes the same of every decision that it goes into. So that decisions are left to compare, a
    // model has few of the fierce numbers, and most models have no NaN.
    void ChooseOddNumbers(const Shape& shape) {
        const Values choices[] = {
            {}, {1e300, -1e200}, {1e300, -1.7e308}, {kInfinity, -kInfinity}, {kInfinity, 1e300}, {kNaN}};
        fFierce = choices[UpTo(std::size(choices) - 1)];
        fFierceRate = Real(0.2, 1.0) / static_cast<double>((shape.columns + 1) * (shape.vectors + 4));
        fTameRate = IsTrue(0.7) ? Real(0.05, 0.5) : 0.0;
    }

    template <class List>
    double OneOf(const List& list) {
        return list[UpTo(std::size(list) - 1)];
    }

    double OddOrOrdinary() {
        if (!fFierce.empty() && IsTrue(fFierceRate))
            return OneOf(fFierce);
        return IsTrue(fTameRate) ? OneOf(kTame) : Real(-2.0, 2.0);
    }

    void AddVector(SVMModelData& data, const Shape& shape, const std::string& id) {
        auto vector = std::make_unique<KwBrevix_930::SVMVectorInstance>();
        for (std::size_t p = 0; p < shape.columns; ++p) {
            if (!IsTrue(shape.density))
                continue;
            const bool isMoved = shape.order == Order::kIrregular && IsTrue(0.02);
            vector->indices.push_back(isMoved ? Moved(p, shape.columns) : static_cast<std::int32_t>(p));
            vector->values.push_back(Number(shape.numbers));
        }
        data.GetVectorInstances().emplace(id, std::move(vector));
    }

    std::int32_t Moved(std::size_t p, std::size_t columns) {
        const auto index = static_cast<std::int32_t>(p);
        const std::int32_t places[] = {
            index - 1, index - 3, -1, -2147483647 - 1, index + 2, static_cast<std::int32_t>(columns), 2147483647};
        return places[UpTo(std::size(places) - 1)];
    }

    // Machines share vectors; some name one twice, some name them in another order.
    std::unique_ptr<KwBrevix_930::ST_SUPPORTVECTORMACHINE> Machine(const SVMModelData& data, const Shape& shape) {
        auto machine = std::make_unique<KwBrevix_930::ST_SUPPORTVECTORMACHINE>();
        machine->bias = Number(shape.numbers);
        const double share = IsTrue(0.1) ? 0.0 : Real(0.2, 1.0);
        for (const auto& [id, vector] : data.GetVectorInstances()) {
            for (std::size_t times = IsTrue(0.02) ? 2 : 1; times > 0 && IsTrue(share); --times) {
                machine->supportVectors.push_back(vector.get());
                machine->coefficients.push_back(Number(shape.numbers));
            }
        }
        if (IsTrue(0.2))
            std::shuffle(machine->supportVectors.begin(), machine->supportVectors.end(), fEngine);
        return machine;
    }

    using Limits = std::numeric_limits<double>;
    static constexpr double kInfinity = Limits::infinity();
    static constexpr double kNaN = Limits::quiet_NaN();
    static constexpr double kTame[] = {-0.0, 0.0, Limits::denorm_min(), -3.5e-310, 2.5e-162, Limits::min(), 1.0};
    static constexpr double kAllFierce[] = {kInfinity, -kInfinity, 1e300, kNaN, -1.7e308};

    std::mt19937_64 fEngine;
    // How odd numbers are drawn: as for the model that was made last.
    double fTameRate = 0.05;
    double fFierceRate = 0.05;
    Values fFierce{std::begin(kAllFierce), std::end(kAllFierce)};
};

inline std::unique_ptr<KwSVM_700::SVMKernelFunction> MakeKernel(const SVMModelData& data) {
    switch (data.GetKernelType()) {
        case SVMModelData::kLinear:
            return std::make_unique<KwSVM_700::SVMKFLinear>();
        case SVMModelData::kPolynomial:
            return std::make_unique<KwSVM_700::SVMKFPolynomial>(data.GetGamma(), data.GetCoef0(), data.GetDegree());
        case SVMModelData::kSigmoid:
            return std::make_unique<KwSVM_700::SVMKFSigmoid>(data.GetGamma(), data.GetCoef0());
        default:
            return std::make_unique<KwSVM_700::SVMKFRBF>(data.GetGamma());
    }
}

/// Returns: one value a machine, vector by vector, each merged with the case anew.
inline Values PlainDecisions(const SVMModelData& data, const KwSVM_700::SVMKernelFunction& kernel, const Values& x) {
    Indices indices;
    for (std::size_t p = 0; p < x.size(); ++p)
        indices.push_back(static_cast<std::int32_t>(p));
    Values decisions;
    for (const auto& machine : data.GetMachines()) {
        double sum = 0.0;
        for (std::size_t k = 0; k < machine->coefficients.size(); ++k) {
            const auto& vector = *machine->supportVectors[k];
            sum += kernel.Evaluate(indices, x, vector.indices, vector.values) * machine->coefficients[k];
        }
        decisions.push_back(sum + machine->bias);
    }
    return decisions;
}

}  // namespace random_models
