// Probability distributions: cumulative functions, densities, inverses, upper tails, non-central forms, intervals.
#pragma once

#include <vector>

#include "numerics/Export.h"

namespace KwMath_930 {

/// Static functions over doubles; no state, callable from any thread. Nothing here throws.
///
/// A result that cannot be computed is the missing value (KwCommon_930::KwMV): a NaN argument, a parameter out of its
/// domain or infinite (but for the df of t), a probability outside [0, 1]. An infinite x, t or f gives the limit. The
/// flag ier, where a member has one, is 0 on success, 1 for an argument out of its domain, 2 when the normal form used
/// for very many degrees of freedom fails, 3 for a binomial n (or a hypergeometric count) that is not whole; a non-zero
/// flag goes with the missing value. Both tails keep their relative accuracy; docs/accuracy.md shows what was measured.
class KW_EXPORT KwDistFun {
public:
    // ---- normal --------------------------------------------------------------------------------------------------

    /// Returns: Phi(x); exactly 0.5 for 0 and for NaN.
    static double CdfStdNorm(double x);
    /// Returns: Phi((x - mean)/sd); missing when sd <= 0.
    static double CdfNorm(double x, double mean, double sd);
    /// Returns: 0.3989422804014327 exp(-x^2/2).
    static double PdfNormalStandard(double x);
    /// Returns: the density of the normal distribution at x; missing when sd <= 0.
    static double PdfNormal(double x, double mean, double sd);
    /// Returns: the x with Phi(x) = p; missing unless 0 < p < 1; exactly 0.0 for p = 0.5.
    /// Source:  Wichura, Algorithm AS 241 (PPND16), Appl. Statist. 37 (1988).
    static double IdfStdNorm(double p);
    /// Returns: mean + sd IdfStdNorm(p); missing when sd <= 0.
    static double IdfNorm(double p, double mean, double sd);

    // ---- gamma and chi-square ------------------------------------------------------------------------------------

    /// Returns: P(X <= x) of chi-square with df > 0 degrees of freedom.
    static double CdfChi(double x, double df);
    /// Returns: P(X > x); 1 for x <= 0.
    static double SigChi(double x, double df);
    /// Returns: the x with CdfChi(x, df) = p; 0 for p = 0, missing for p = 1.
    static double IdfChi(double p, double df);
    /// Returns: P(X <= x) of the gamma distribution with shape > 0 and rate > 0.
    /// Note:    shape 1 is 1 - exp(-rate x) as written: a small result keeps only its absolute accuracy.
    static double CdfGam(double x, double shape, double rate);
    /// Returns: the density; 0 for x < 0; at x = 0: 0, rate or missing for a shape above, at or below 1.
    /// Note:    formed through log Gamma: the error grows with |log Gamma(shape)|.
    static double PdfGamma(double x, double shape, double rate);
    /// Returns: the x with CdfGam(x, shape, rate) = p; 0 for p = 0, missing for p = 1.
    static double IdfGam(const double& p, const double& shape, const double& rate);
    /// log Gamma(x).
    /// Returns: missing unless x > 0, and where the result exceeds the largest double; exactly 0 for x = 1 and x = 2.
    static double zarndnlgam(const double& x);

    // ---- beta ----------------------------------------------------------------------------------------------------

    /// Returns: I_x(a, b) for a, b > 0; 0 for x <= 0, 1 for x >= 1.
    /// Note:    a = 1 is 1 - exp(b log(1 - x)) as written: a small result keeps only its absolute accuracy.
    static double CdfBeta(double x, double a, double b);
    /// Returns: the x with I_x(a, b) = p; 0 for p = 0, 1 for p = 1.
    static double IdfBeta(const double& p, const double& a, const double& b);

    // ---- t and F -------------------------------------------------------------------------------------------------

    /// Returns: P(T <= t) with df > 0 degrees of freedom.
    /// Note:    Deliberate: above df = 1e8 this is CdfStdNorm(t).
    static double CdfT(double t, double df);
    /// Returns: the density of t; ier 1 and missing when df <= 0.
    /// Note:    formed through log Gamma: the error grows with log Gamma(df/2). Above df = 1e10 the normal density.
    static double PdfT(double t, double df, long& ier);
    /// Shape:   nc is the non-centrality (0: central t), tol counts machine epsilons; at most 0 means 8.
    /// Returns: the t with P(T <= t) = p; missing unless 0 < p < 1.
    static double IdfT(double p, double df, double nc, double tol);
    /// Returns: P(T > t).
    static double SigT(double t, double df);
    /// Returns: P(F <= f) with df1, df2 > 0 degrees of freedom.
    static double CdfF(double f, double df1, double df2);
    /// Returns: the f with CdfF(f, df1, df2) = p; 0 for p = 0, missing for p = 1.
    static double IdfF(double p, double df1, double df2);
    /// Returns: P(F > f); 1 for f <= 0.
    /// Note:    Deliberate: for f < 1 this is 1 - CdfF, so a small result there keeps only its absolute accuracy.
    static double SigF(double f, double df1, double df2);

    // ---- discrete ------------------------------------------------------------------------------------------------

    /// Returns: P(X <= k) for n trials of probability p; k is floored.
    /// Fails:   ier 3 when n is not whole, then 1 when n < 1 or p is outside [0, 1].
    static double CdfBin(double k, double n, double p, long& ier);
    /// Returns: P(X = k); 0 for a k that is not whole. Fails as CdfBin.
    static double PdfBin(double k, double n, double p, long& ier);
    /// Returns: the smallest k with CdfBin(k, n, p) >= prob; 0 for prob = 0, n for prob = 1. Fails as CdfBin.
    static double IdfBin(double prob, double n, double p, long& ier);
    /// Returns: the probability of k failures before the r-th success; 0 for a k that is not whole.
    /// Fails:   ier 1 unless r > 0 and 0 < p <= 1.
    static double PdfNegBin(double k, double r, double p, long& ier);
    /// Returns: the probability of at most k marked among n drawn from N of which m are marked; k is floored.
    /// Fails:   ier 3 when n, m or N is not whole; 1 when negative, n or m above N, or N above 1e12.
    static double CDFHyper(double k, double n, double m, double N, int& ier);
    /// Returns: the probability of exactly k marked; missing for the arguments that CDFHyper refuses.
    static double PdfHyper(long k, long n, long m, long N);

    // ---- non-central ---------------------------------------------------------------------------------------------

    /// Shape:   tol, in machine epsilons, ends the series; at most 0: below rounding. |nc| at most 4e4.
    /// Returns: P(T <= t) of the non-central t; CdfT for nc = 0, Phi(-nc) for t = 0.
    static double NonCentralCdfT(double t, double df, double nc, double tol);
    /// Returns: the density of the non-central t. Fails: ier 1 as PdfT, and when |nc| is above 4e4.
    static double NonCentralPdfT(double t, double df, double nc, long& ier);
    /// Shape:   tol as for NonCentralCdfT; 0 <= nc <= 1e9.
    /// Returns: P(F <= f) of the non-central F.
    static double NonCentralCdfF(double f, double df1, double df2, double nc, double tol);
    /// Returns: P(X <= x) of the non-central chi-square, 0 <= nc <= 1e9.
    static double NonCentralCdfChi(double x, double df, double nc);
    /// Shape:   tol, in machine epsilons, at most 0 means 8; a positive most bounds the search.
    /// Returns: the non-centrality with NonCentralCdfT(t, df, nc) = p; missing when none is in reach.
    static double FindNCParamT(double p, double t, double df, double tol, double most);
    /// Returns: the non-centrality >= 0 with NonCentralCdfF(f, df1, df2, nc) = p; missing when none is in reach.
    static double FindNCParamF(double p, double f, double df1, double df2, double tol);
    /// Returns: the non-centrality >= 0 with NonCentralCdfChi(x, df, nc) = p; missing when none is in reach.
    static double FindNCParamChi(double p, double x, double df, double tol);

    // ---- intervals -----------------------------------------------------------------------------------------------

    /// The median of weighted values and the interval of order statistics whose binomial coverage reaches level.
    /// Shape:   n values, ascending, with weights >= 0; level in (0, 1); tol, relative, in which cumulated weights are
    ///          compared; interpolate narrows the interval to the level itself.
    /// Returns: the median, also in median; missing (all four) when n is below 1 or above a vector's size, a weight is
    ///          negative, all are 0, or level is out of range.
    static double Mednci(long n, const std::vector<double>& values, const std::vector<double>& weights, double level,
                         double tol, bool interpolate, double& median, double& lower, double& upper);
    /// The p-th quantile of weighted values, p a fraction in [0, 1].
    /// Shape:   n values, ascending, their weights and the cumulated weights; method 0: weighted average at (N+1)p,
    ///          1: nearest, 2: empirical, 3: empirical with averaging, 4: Tukey's hinges (of the quartile nearest to
    ///          p).
    /// Returns: the quantile, also in result; ier 1 and missing for bad arguments.
    static double GPTile(long n, double p, const std::vector<double>& values, const std::vector<double>& weights,
                         const std::vector<double>& cumulated, long method, double& result, long& ier);

private:
    friend class KwDistFunTestAccess;

    // Kernels. Those with ier set it to 0 on entry and return the missing value with any other flag.
    static double prbnrm(const double& x);
    static double probit(const double& p);
    static double derf(const double& x);
    static double derfc(const double& x);
    static double dnlgam(const double& x);
    static double dnlbnc(const double& n, const double& k);
    static double gammad(const double& x, const double& p, const bool& lower, long& ier);
    static double cdfbet(const double& x, const double& a, const double& b, long& ier);
    static double cbtaux(const double& x);
    static double betinv(const double& p, const double& a, const double& b, long& ier);
    static double ncdbet(const double& x, const double& a, const double& b, const double& nc, long& ier);
    static double idfchb(const double& p, const double& shape, long& ier);
    static double cdfexp(const double& x, const double& rate, long& ier);
    static double zarncdft(const double& t, const double& df, long& ier);
    static double zarncdff(const double& f, const double& df1, const double& df2, long& ier);
    static double zarnidft(const double& p, const double& df, long& ier);
    static double zarnidff(const double& p, const double& df1, const double& df2, long& ier);
    static double zarnidfchi(const double& p, const double& df, long& ier);
};

}  // namespace KwMath_930
