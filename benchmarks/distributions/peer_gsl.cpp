// GSL behind the members' names.
#include "benchmarks/distributions/peers.h"

#ifdef BREVIX_HAVE_GSL
#include <gsl/gsl_cdf.h>
#include <gsl/gsl_errno.h>
#include <gsl/gsl_randist.h>
#include <gsl/gsl_sf_gamma.h>
#endif

namespace peers {

#ifdef BREVIX_HAVE_GSL

using V = std::vector<double>;

namespace {

unsigned Whole(double x) {
    return static_cast<unsigned>(x);
}

}  // namespace

Members Gsl() {
    gsl_set_error_handler_off();
    return {{"CdfStdNorm", [](const V& v) { return gsl_cdf_ugaussian_P(v[0]); }},
            {"CdfNorm", [](const V& v) { return gsl_cdf_gaussian_P(v[0] - v[1], v[2]); }},
            {"PdfNormalStandard", [](const V& v) { return gsl_ran_ugaussian_pdf(v[0]); }},
            {"PdfNormal", [](const V& v) { return gsl_ran_gaussian_pdf(v[0] - v[1], v[2]); }},
            {"IdfStdNorm", [](const V& v) { return gsl_cdf_ugaussian_Pinv(v[0]); }},
            {"IdfNorm", [](const V& v) { return v[1] + gsl_cdf_gaussian_Pinv(v[0], v[2]); }},
            {"zarndnlgam", [](const V& v) { return gsl_sf_lngamma(v[0]); }},
            {"CdfChi", [](const V& v) { return gsl_cdf_chisq_P(v[0], v[1]); }},
            {"SigChi", [](const V& v) { return gsl_cdf_chisq_Q(v[0], v[1]); }},
            {"IdfChi", [](const V& v) { return gsl_cdf_chisq_Pinv(v[0], v[1]); }},
            {"CdfGam", [](const V& v) { return gsl_cdf_gamma_P(v[0] * v[2], v[1], 1.0); }},
            {"PdfGamma", [](const V& v) { return gsl_ran_gamma_pdf(v[0] * v[2], v[1], 1.0) * v[2]; }},
            {"IdfGam", [](const V& v) { return gsl_cdf_gamma_Pinv(v[0], v[1], 1.0) / v[2]; }},
            {"CdfBeta", [](const V& v) { return gsl_cdf_beta_P(v[0], v[1], v[2]); }},
            {"IdfBeta", [](const V& v) { return gsl_cdf_beta_Pinv(v[0], v[1], v[2]); }},
            {"CdfT", [](const V& v) { return gsl_cdf_tdist_P(v[0], v[1]); }},
            {"SigT", [](const V& v) { return gsl_cdf_tdist_Q(v[0], v[1]); }},
            {"PdfT", [](const V& v) { return gsl_ran_tdist_pdf(v[0], v[1]); }},
            {"IdfT", [](const V& v) { return gsl_cdf_tdist_Pinv(v[0], v[1]); }},
            {"CdfF", [](const V& v) { return gsl_cdf_fdist_P(v[0], v[1], v[2]); }},
            {"SigF", [](const V& v) { return gsl_cdf_fdist_Q(v[0], v[1], v[2]); }},
            {"IdfF", [](const V& v) { return gsl_cdf_fdist_Pinv(v[0], v[1], v[2]); }},
            {"CdfBin", [](const V& v) { return gsl_cdf_binomial_P(Whole(v[0]), v[2], Whole(v[1])); }},
            {"PdfBin", [](const V& v) { return gsl_ran_binomial_pdf(Whole(v[0]), v[2], Whole(v[1])); }},
            {"PdfNegBin", [](const V& v) { return gsl_ran_negative_binomial_pdf(Whole(v[0]), v[2], v[1]); }},
            {"CDFHyper",
             [](const V& v) {
                 return gsl_cdf_hypergeometric_P(Whole(v[0]), Whole(v[2]), Whole(v[3] - v[2]), Whole(v[1]));
             }},
            {"PdfHyper", [](const V& v) {
                 return gsl_ran_hypergeometric_pdf(Whole(v[0]), Whole(v[2]), Whole(v[3] - v[2]), Whole(v[1]));
             }}};
}

#else

Members Gsl() {
    return {};
}

#endif

}  // namespace peers
