// Boost.Math behind the members' names.
#include "benchmarks/distributions/peers.h"

#ifdef BREVIX_HAVE_BOOST_MATH
#include <boost/math/distributions.hpp>
#endif

namespace peers {

#ifdef BREVIX_HAVE_BOOST_MATH

namespace bm = boost::math;
using V = std::vector<double>;
namespace policies = boost::math::policies;
using Quiet = policies::policy<
    policies::domain_error<policies::ignore_error>, policies::pole_error<policies::ignore_error>,
    policies::overflow_error<policies::ignore_error>, policies::underflow_error<policies::ignore_error>,
    policies::evaluation_error<policies::ignore_error>, policies::rounding_error<policies::ignore_error>,
    policies::discrete_quantile<policies::integer_round_up>>;
using Normal = bm::normal_distribution<double, Quiet>;
using Chi = bm::chi_squared_distribution<double, Quiet>;
using Gamma = bm::gamma_distribution<double, Quiet>;
using Beta = bm::beta_distribution<double, Quiet>;
using T = bm::students_t_distribution<double, Quiet>;
using F = bm::fisher_f_distribution<double, Quiet>;
using Bin = bm::binomial_distribution<double, Quiet>;
using NegBin = bm::negative_binomial_distribution<double, Quiet>;
using Hyper = bm::hypergeometric_distribution<double, Quiet>;
using NcChi = bm::non_central_chi_squared_distribution<double, Quiet>;
using NcF = bm::non_central_f_distribution<double, Quiet>;
using NcT = bm::non_central_t_distribution<double, Quiet>;

namespace {

// A count; Boost takes whole populations as unsigned.
unsigned Whole(double x) {
    return static_cast<unsigned>(x);
}

}  // namespace

Members Boost() {
    return {{"CdfStdNorm", [](const V& v) { return bm::cdf(Normal(), v[0]); }},
            {"CdfNorm", [](const V& v) { return bm::cdf(Normal(v[1], v[2]), v[0]); }},
            {"PdfNormalStandard", [](const V& v) { return bm::pdf(Normal(), v[0]); }},
            {"PdfNormal", [](const V& v) { return bm::pdf(Normal(v[1], v[2]), v[0]); }},
            {"IdfStdNorm", [](const V& v) { return bm::quantile(Normal(), v[0]); }},
            {"IdfNorm", [](const V& v) { return bm::quantile(Normal(v[1], v[2]), v[0]); }},
            {"zarndnlgam", [](const V& v) { return bm::lgamma(v[0], Quiet()); }},
            {"CdfChi", [](const V& v) { return bm::cdf(Chi(v[1]), v[0]); }},
            {"SigChi", [](const V& v) { return bm::cdf(bm::complement(Chi(v[1]), v[0])); }},
            {"IdfChi", [](const V& v) { return bm::quantile(Chi(v[1]), v[0]); }},
            {"CdfGam", [](const V& v) { return bm::cdf(Gamma(v[1], 1.0), v[0] * v[2]); }},
            {"PdfGamma", [](const V& v) { return bm::pdf(Gamma(v[1], 1.0), v[0] * v[2]) * v[2]; }},
            {"IdfGam", [](const V& v) { return bm::quantile(Gamma(v[1], 1.0), v[0]) / v[2]; }},
            {"CdfBeta", [](const V& v) { return bm::cdf(Beta(v[1], v[2]), v[0]); }},
            {"IdfBeta", [](const V& v) { return bm::quantile(Beta(v[1], v[2]), v[0]); }},
            {"CdfT", [](const V& v) { return bm::cdf(T(v[1]), v[0]); }},
            {"SigT", [](const V& v) { return bm::cdf(bm::complement(T(v[1]), v[0])); }},
            {"PdfT", [](const V& v) { return bm::pdf(T(v[1]), v[0]); }},
            {"IdfT", [](const V& v) { return bm::quantile(T(v[1]), v[0]); }},
            {"CdfF", [](const V& v) { return bm::cdf(F(v[1], v[2]), v[0]); }},
            {"SigF", [](const V& v) { return bm::cdf(bm::complement(F(v[1], v[2]), v[0])); }},
            {"IdfF", [](const V& v) { return bm::quantile(F(v[1], v[2]), v[0]); }},
            {"CdfBin", [](const V& v) { return bm::cdf(Bin(v[1], v[2]), v[0]); }},
            {"PdfBin", [](const V& v) { return bm::pdf(Bin(v[1], v[2]), v[0]); }},
            {"IdfBin", [](const V& v) { return bm::quantile(Bin(v[1], v[2]), v[0]); }},
            {"PdfNegBin", [](const V& v) { return bm::pdf(NegBin(v[1], v[2]), v[0]); }},
            {"CDFHyper", [](const V& v) { return bm::cdf(Hyper(Whole(v[2]), Whole(v[1]), Whole(v[3])), v[0]); }},
            {"PdfHyper", [](const V& v) { return bm::pdf(Hyper(Whole(v[2]), Whole(v[1]), Whole(v[3])), v[0]); }},
            {"NonCentralCdfChi", [](const V& v) { return bm::cdf(NcChi(v[1], v[2]), v[0]); }},
            {"NonCentralCdfF", [](const V& v) { return bm::cdf(NcF(v[1], v[2], v[3]), v[0]); }},
            {"NonCentralCdfT", [](const V& v) { return bm::cdf(NcT(v[1], v[2]), v[0]); }},
            {"NonCentralPdfT", [](const V& v) { return bm::pdf(NcT(v[1], v[2]), v[0]); }},
            {"FindNCParamChi", [](const V& v) { return NcChi::find_non_centrality(v[2], v[1], v[0]); }}};
}

#else

Members Boost() {
    return {};
}

#endif

}  // namespace peers
