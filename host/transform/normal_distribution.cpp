// The standard normal distribution.
#include "host/transform/normal_distribution.h"

#include <cmath>
#include <cstddef>
#include <limits>
#include <numbers>

namespace KwBrevix_930 {

namespace {

// Numerator and denominator of a rational function, the lowest power first.
struct Rational {
    double above[8];
    double below[8];

    double operator()(double x) const { return Horner(above, x) / Horner(below, x); }

    static double Horner(const double (&coefficients)[8], double x) {
        double sum = 0.0;
        for (std::size_t i = 8; i-- > 0;)
            sum = sum * x + coefficients[i];
        return sum;
    }
};

constexpr Rational kCentre = {
    {3.3871328727963666080e0, 1.3314166789178437745e+2, 1.9715909503065514427e+3, 1.3731693765509461125e+4,
     4.5921953931549871457e+4, 6.7265770927008700853e+4, 3.3430575583588128105e+4, 2.5090809287301226727e+3},
    {1.0, 4.2313330701600911252e+1, 6.8718700749205790830e+2, 5.3941960214247511077e+3, 2.1213794301586595867e+4,
     3.9307895800092710610e+4, 2.8729085735721942674e+4, 5.2264952788528545610e+3}};

constexpr Rational kNearTail = {
    {1.42343711074968357734e0, 4.63033784615654529590e0, 5.76949722146069140550e0, 3.64784832476320460504e0,
     1.27045825245236838258e0, 2.41780725177450611770e-1, 2.27238449892691845833e-2, 7.74545014278341407640e-4},
    {1.0, 2.05319162663775882187e0, 1.67638483018380384940e0, 6.89767334985100004550e-1, 1.48103976427480074590e-1,
     1.51986665636164571966e-2, 5.47593808499534494600e-4, 1.05075007164441684324e-9}};

constexpr Rational kFarTail = {
    {6.65790464350110377720e0, 5.46378491116411436990e0, 1.78482653991729133580e0, 2.96560571828504891230e-1,
     2.65321895265761230930e-2, 1.24266094738807843860e-3, 2.71155556874348757815e-5, 2.01033439929228813265e-7},
    {1.0, 5.99832206555887937690e-1, 1.36929880922735805310e-1, 1.48753612908506148525e-2, 7.86869131145613259100e-4,
     1.84631831751005468180e-5, 1.42151175831644588870e-7, 2.04426310338993978564e-15}};

// What is lost when the product of two numbers of moderate size is rounded, by Veltkamp's and Dekker's splitting.
double ProductError(double a, double b, double product) {
    const auto upperHalf = [](double x) {
        const double scaled = 134217729.0 * x;
        return scaled - (scaled - x);
    };
    const double aHigh = upperHalf(a);
    const double bHigh = upperHalf(b);
    const double aLow = a - aHigh;
    const double bLow = b - bHigh;
    return ((aHigh * bHigh - product) + aHigh * bLow + aLow * bHigh) + aLow * bLow;
}

// For a probability of at most one half.
double LowerQuantile(double p) {
    const double q = p - 0.5;
    if (q >= -0.425)
        return q * kCentre(0.180625 - q * q);
    const double r = std::sqrt(-std::log(p));
    return r <= 5.0 ? -kNearTail(r - 1.6) : -kFarTail(r - 5.0);
}

// One step towards the x that has exactly that probability, where the density can be divided by.
double Refined(double x, double p) {
    const double density = NormalDensity(x);
    if (!(density > std::numeric_limits<double>::min()))
        return x;
    const double step = (NormalProbability(x) - p) / density;
    return x - step / (1.0 + 0.5 * x * step);
}

}  // namespace

double NormalDensity(double x) {
    return std::exp(-0.5 * x * x) / std::sqrt(2.0 * std::numbers::pi);
}

// In the tail the rounding of x / sqrt(2) would be multiplied by x * x: it is put right by the derivative.
double NormalProbability(double x) {
    constexpr double kRootHigh = 0.7071067811865476;
    constexpr double kRootLow = -4.833646656726457e-17;
    if (!(std::fabs(x) < 40.0))
        return 0.5 * std::erfc(-x * kRootHigh);
    const double scaled = x * kRootHigh;
    const double lost = ProductError(x, kRootHigh, scaled) + x * kRootLow;
    return 0.5 * std::erfc(-scaled) + lost * std::exp(-scaled * scaled) / std::sqrt(std::numbers::pi);
}

double NormalQuantile(double p) {
    if (!(p >= 0.0 && p <= 1.0))
        return std::numeric_limits<double>::quiet_NaN();
    if (p == 0.0 || p == 1.0)
        return p == 0.0 ? -std::numeric_limits<double>::infinity() : std::numeric_limits<double>::infinity();
    const double tail = p <= 0.5 ? p : 1.0 - p;
    const double x = Refined(LowerQuantile(tail), tail);
    return p <= 0.5 ? x : -x;
}

}  // namespace KwBrevix_930
