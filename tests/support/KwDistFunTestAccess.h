// Opens the kernels of KwDistFun to the tests.
#pragma once

#include "numerics/distributions/KwDistFun.h"

namespace KwMath_930 {

class KwDistFunTestAccess {
public:
    static constexpr auto prbnrm = &KwDistFun::prbnrm;
    static constexpr auto probit = &KwDistFun::probit;
    static constexpr auto derf = &KwDistFun::derf;
    static constexpr auto derfc = &KwDistFun::derfc;
    static constexpr auto dnlgam = &KwDistFun::dnlgam;
    static constexpr auto dnlbnc = &KwDistFun::dnlbnc;
    static constexpr auto gammad = &KwDistFun::gammad;
    static constexpr auto cdfbet = &KwDistFun::cdfbet;
    static constexpr auto cbtaux = &KwDistFun::cbtaux;
    static constexpr auto betinv = &KwDistFun::betinv;
    static constexpr auto ncdbet = &KwDistFun::ncdbet;
    static constexpr auto idfchb = &KwDistFun::idfchb;
    static constexpr auto cdfexp = &KwDistFun::cdfexp;
    static constexpr auto zarncdft = &KwDistFun::zarncdft;
    static constexpr auto zarncdff = &KwDistFun::zarncdff;
    static constexpr auto zarnidft = &KwDistFun::zarnidft;
    static constexpr auto zarnidff = &KwDistFun::zarnidff;
    static constexpr auto zarnidfchi = &KwDistFun::zarnidfchi;
};

}  // namespace KwMath_930
