// R's nmath behind the members' names.
#include "benchmarks/distributions/peers.h"

#ifdef BREVIX_HAVE_NMATH
#define MATHLIB_STANDALONE
#include <Rmath.h>
#endif

namespace peers {

#ifdef BREVIX_HAVE_NMATH

using V = std::vector<double>;

Members Nmath() {
    return {{"CdfStdNorm", [](const V& v) { return pnorm5(v[0], 0, 1, 1, 0); }},
            {"CdfNorm", [](const V& v) { return pnorm5(v[0], v[1], v[2], 1, 0); }},
            {"PdfNormalStandard", [](const V& v) { return dnorm4(v[0], 0, 1, 0); }},
            {"PdfNormal", [](const V& v) { return dnorm4(v[0], v[1], v[2], 0); }},
            {"IdfStdNorm", [](const V& v) { return qnorm5(v[0], 0, 1, 1, 0); }},
            {"IdfNorm", [](const V& v) { return qnorm5(v[0], v[1], v[2], 1, 0); }},
            {"zarndnlgam", [](const V& v) { return lgammafn(v[0]); }},
            {"CdfChi", [](const V& v) { return pchisq(v[0], v[1], 1, 0); }},
            {"SigChi", [](const V& v) { return pchisq(v[0], v[1], 0, 0); }},
            {"IdfChi", [](const V& v) { return qchisq(v[0], v[1], 1, 0); }},
            {"CdfGam", [](const V& v) { return pgamma(v[0] * v[2], v[1], 1.0, 1, 0); }},
            {"PdfGamma", [](const V& v) { return dgamma(v[0] * v[2], v[1], 1.0, 0) * v[2]; }},
            {"IdfGam", [](const V& v) { return qgamma(v[0], v[1], 1.0, 1, 0) / v[2]; }},
            {"CdfBeta", [](const V& v) { return pbeta(v[0], v[1], v[2], 1, 0); }},
            {"IdfBeta", [](const V& v) { return qbeta(v[0], v[1], v[2], 1, 0); }},
            {"CdfT", [](const V& v) { return pt(v[0], v[1], 1, 0); }},
            {"SigT", [](const V& v) { return pt(v[0], v[1], 0, 0); }},
            {"PdfT", [](const V& v) { return dt(v[0], v[1], 0); }},
            {"IdfT", [](const V& v) { return qt(v[0], v[1], 1, 0); }},
            {"CdfF", [](const V& v) { return pf(v[0], v[1], v[2], 1, 0); }},
            {"SigF", [](const V& v) { return pf(v[0], v[1], v[2], 0, 0); }},
            {"IdfF", [](const V& v) { return qf(v[0], v[1], v[2], 1, 0); }},
            {"CdfBin", [](const V& v) { return pbinom(v[0], v[1], v[2], 1, 0); }},
            {"PdfBin", [](const V& v) { return dbinom(v[0], v[1], v[2], 0); }},
            {"IdfBin", [](const V& v) { return qbinom(v[0], v[1], v[2], 1, 0); }},
            {"PdfNegBin", [](const V& v) { return dnbinom(v[0], v[1], v[2], 0); }},
            {"CDFHyper", [](const V& v) { return phyper(v[0], v[2], v[3] - v[2], v[1], 1, 0); }},
            {"PdfHyper", [](const V& v) { return dhyper(v[0], v[2], v[3] - v[2], v[1], 0); }},
            {"NonCentralCdfChi", [](const V& v) { return pnchisq(v[0], v[1], v[2], 1, 0); }},
            {"NonCentralCdfF", [](const V& v) { return pnf(v[0], v[1], v[2], v[3], 1, 0); }},
            {"NonCentralCdfT", [](const V& v) { return pnt(v[0], v[1], v[2], 1, 0); }},
            {"NonCentralPdfT", [](const V& v) { return dnt(v[0], v[1], v[2], 0); }}};
}

#else

Members Nmath() {
    return {};
}

#endif

}  // namespace peers
