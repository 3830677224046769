// Degrees of freedom are log-uniform in 1 .. 200, shapes in 0.5 .. 200, rates and standard deviations in 0.1 .. 10;
// probabilities are uniform in (0, 1), populations and trials to 1000, non-centralities uniform in 0 .. 30 (that of t
// in -5.5 .. 5.5). A variate lies within 5 standard deviations of its mean, uniformly; one of the beta, F and gamma
// families so in the logarithm of its odds or of itself.
#include "benchmarks/distributions/random_arguments.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <random>

#include "numerics/distributions/KwDistFun.h"

namespace random_arguments {

namespace {

using KwMath_930::KwDistFun;
using Row = std::vector<double>;

constexpr int kRows = 512;
constexpr double kReach = 5.0;

// Its own uniform numbers, because the standard library leaves open how a distribution uses its engine.
class Dice {
public:
    double Unit() { return (static_cast<double>(engine_() >> 11) + 0.5) * 0x1p-53; }
    double Uniform(double low, double high) { return low + (high - low) * Unit(); }
    double LogUniform(double low, double high) { return low * std::exp(std::log(high / low) * Unit()); }
    double Whole(double low, double high) { return std::floor(Uniform(low, high + 1.0)); }
    double Deviate() { return Uniform(-kReach, kReach); }
    double Df() { return LogUniform(1.0, 200.0); }
    double Shape() { return LogUniform(0.5, 200.0); }
    double Scale() { return LogUniform(0.1, 10.0); }
    double GammaVariate(double shape) { return shape * std::exp(Deviate() / std::sqrt(shape)); }
    double FVariate(double df1, double df2) { return std::exp(Deviate() * std::sqrt(2.0 / df1 + 2.0 / df2)); }
    double Count(double mean, double deviation, double least, double most) {
        return std::clamp(std::round(mean + deviation * Deviate()), least, most);
    }

private:
    std::mt19937_64 engine_{20261121};
};

Row BetaRow(Dice& dice) {
    const double a = dice.Shape();
    const double b = dice.Shape();
    const double odds = dice.FVariate(2.0 * a, 2.0 * b) * (a / b);
    return {odds / (1.0 + odds), a, b};
}

Row FRow(Dice& dice) {
    const double df1 = dice.Df();
    const double df2 = dice.Df();
    return {dice.FVariate(df1, df2), df1, df2};
}

Row ChiRow(Dice& dice) {
    const double df = dice.Df();
    return {2.0 * dice.GammaVariate(0.5 * df), df};
}

Row GammaRow(Dice& dice) {
    const double shape = dice.Shape();
    const double rate = dice.Scale();
    return {dice.GammaVariate(shape) / rate, shape, rate};
}

Row NormalRow(Dice& dice) {
    const double mean = dice.Uniform(-50.0, 50.0);
    const double sd = dice.Scale();
    return {mean + sd * dice.Deviate(), mean, sd};
}

Row TRow(Dice& dice) {
    return {dice.Deviate(), dice.Df()};
}

Row BinomialRow(Dice& dice) {
    const double n = dice.Whole(1.0, 1000.0);
    const double p = dice.Unit();
    return {dice.Count(n * p, std::sqrt(n * p * (1.0 - p)), 0.0, n), n, p};
}

Row NegativeBinomialRow(Dice& dice) {
    const double r = dice.Shape();
    const double p = dice.Unit();
    const double mean = r * (1.0 - p) / p;
    return {dice.Count(mean, std::sqrt(mean / p), 0.0, 1e9), r, p};
}

Row HyperRow(Dice& dice) {
    const double size = dice.Whole(2.0, 1000.0);
    const double n = dice.Whole(1.0, size - 1.0);
    const double m = dice.Whole(1.0, size - 1.0);
    const double mean = n * m / size;
    const double deviation = std::sqrt(mean * (1.0 - m / size) * ((size - n) / (size - 1.0)));
    return {dice.Count(mean, deviation, std::max(0.0, n + m - size), std::min(n, m)), n, m, size};
}

Row NoncentralChiRow(Dice& dice) {
    const double df = dice.Df();
    const double nc = dice.Uniform(0.0, 30.0);
    const double spread = std::sqrt(2.0 * df + 4.0 * nc) / (df + nc);
    return {(df + nc) * std::exp(spread * dice.Deviate()), df, nc};
}

Row NoncentralFRow(Dice& dice) {
    Row row = FRow(dice);
    const double nc = dice.Uniform(0.0, 30.0);
    row[0] *= 1.0 + nc / row[1];
    row.push_back(nc);
    return row;
}

Row NoncentralTRow(Dice& dice) {
    const double nc = dice.Uniform(-5.5, 5.5);
    return {nc + dice.Deviate(), dice.Df(), nc};
}

// The arguments of an inverse from those of its distribution function.
std::function<Row(Dice&)> Inverse(Row (*draw)(Dice&)) {
    return [draw](Dice& dice) {
        Row row = draw(dice);
        row[0] = dice.Unit();
        return row;
    };
}

// (p, x, parameters) such that a non-centrality within 30 leads to p.
Row SearchRow(double p, Row row) {
    row.pop_back();
    row.insert(row.begin(), p);
    return row;
}

Row SearchChiRow(Dice& dice) {
    const Row row = NoncentralChiRow(dice);
    return SearchRow(KwDistFun::NonCentralCdfChi(row[0], row[1], row[2]), row);
}

Row SearchFRow(Dice& dice) {
    const Row row = NoncentralFRow(dice);
    return SearchRow(KwDistFun::NonCentralCdfF(row[0], row[1], row[2], row[3], 0.0), row);
}

Row SearchTRow(Dice& dice) {
    const Row row = NoncentralTRow(dice);
    return SearchRow(KwDistFun::NonCentralCdfT(row[0], row[1], row[2], 0.0), row);
}

const std::map<std::string, std::function<Row(Dice&)>>& Draws() {
    static const std::map<std::string, std::function<Row(Dice&)>> draws = {
        {"CdfStdNorm", [](Dice& dice) { return Row{dice.Deviate()}; }},
        {"PdfNormalStandard", [](Dice& dice) { return Row{dice.Deviate()}; }},
        {"IdfStdNorm", [](Dice& dice) { return Row{dice.Unit()}; }},
        {"CdfNorm", NormalRow},
        {"PdfNormal", NormalRow},
        {"IdfNorm", Inverse(NormalRow)},
        {"zarndnlgam", [](Dice& dice) { return Row{dice.Shape()}; }},
        {"CdfChi", ChiRow},
        {"SigChi", ChiRow},
        {"IdfChi", Inverse(ChiRow)},
        {"CdfGam", GammaRow},
        {"PdfGamma", GammaRow},
        {"IdfGam", Inverse(GammaRow)},
        {"CdfBeta", BetaRow},
        {"IdfBeta", Inverse(BetaRow)},
        {"CdfT", TRow},
        {"SigT", TRow},
        {"PdfT", TRow},
        {"IdfT", Inverse(TRow)},
        {"CdfF", FRow},
        {"SigF", FRow},
        {"IdfF", Inverse(FRow)},
        {"CdfBin", BinomialRow},
        {"PdfBin", BinomialRow},
        {"IdfBin", Inverse(BinomialRow)},
        {"PdfNegBin", NegativeBinomialRow},
        {"CDFHyper", HyperRow},
        {"PdfHyper", HyperRow},
        {"NonCentralCdfChi", NoncentralChiRow},
        {"NonCentralCdfF", NoncentralFRow},
        {"NonCentralCdfT", NoncentralTRow},
        {"NonCentralPdfT", NoncentralTRow},
        {"FindNCParamChi", SearchChiRow},
        {"FindNCParamF", SearchFRow},
        {"FindNCParamT", SearchTRow}};
    return draws;
}

}  // namespace

Arguments Draw(const std::string& member) {
    Arguments rows;
    const auto draw = Draws().find(member);
    if (draw != Draws().end()) {
        Dice dice;
        while (rows.size() < kRows) {
            rows.push_back(draw->second(dice));
        }
    }
    return rows;
}

}  // namespace random_arguments
