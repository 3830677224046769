// A stream buffer that takes nothing.
#pragma once

#include <streambuf>

namespace numerics_samples {

class BrokenBuffer : public std::streambuf {
protected:
    int_type overflow(int_type) override { return traits_type::eof(); }
    std::streamsize xsputn(const char*, std::streamsize) override { return 0; }
};

}  // namespace numerics_samples
