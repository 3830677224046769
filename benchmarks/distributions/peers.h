// The members of KwDistFun in Boost.Math, GSL and R's nmath, as far as each has them.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace peers {

using Member = std::function<double(const std::vector<double>&)>;
using Members = std::map<std::string, Member>;

// Empty where the library was not found when this was configured.
Members Boost();
Members Gsl();
Members Nmath();

}  // namespace peers
