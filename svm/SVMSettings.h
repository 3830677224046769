// The settings of a training run, kept beside the kernels. Scoring never reads them.
#pragma once

#include <cstdint>
#include <string>

namespace KwSVM_700 {

/// A plain record: a copy copies every member.
struct SVMSettings {
    std::int32_t svmType = 0;
    std::int32_t kernelType = 0;
    std::int32_t maxIterations = 0;
    std::int32_t cacheMegabytes = 0;
    double degree = 1.0;
    double gamma = 1.0;
    double coef0 = 1.0;
    std::string targetName;
    std::int32_t foldCount = 0;
    std::int32_t weightCount = 0;
    bool usesShrinking = false;
    bool estimatesProbability = false;
    double cost = 1.0;
    double nu = 0.5;
    double epsilon = 0.1;
    double tolerance = 0.001;
};

}  // namespace KwSVM_700
