// Arguments of the ordinary range for each member of KwDistFun, drawn from a fixed seed: the same for all libraries.
#pragma once

#include <string>
#include <vector>

namespace random_arguments {

using Arguments = std::vector<std::vector<double>>;

/// 512 argument lists for the member; empty for a name that is none.
Arguments Draw(const std::string& member);

}  // namespace random_arguments
