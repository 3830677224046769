// Which version produced a model.
#pragma once

#include <string>

#include "host/Export.h"

namespace KwBrevix_930 {

class BREVIX_HOST_API ScoreVersionInfo {
public:
    ScoreVersionInfo() {}
    ScoreVersionInfo(const ScoreVersionInfo&) = default;
    ScoreVersionInfo& operator=(const ScoreVersionInfo&) = default;
    virtual ~ScoreVersionInfo();

    /// Returns: the version as the document writes it; empty where it does not say.
    virtual const std::string& GetVersion() const = 0;
};

}  // namespace KwBrevix_930
