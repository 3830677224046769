// The version of the application that produced a document.
#pragma once

#include <utility>

#include "host/ScoreVersionInfo.h"

namespace KwBrevix_930 {

class BREVIX_HOST_API VersionInfo : public ScoreVersionInfo {
public:
    /// version: the text of the version attribute, empty where there is none.
    explicit VersionInfo(std::string version) : fVersion(std::move(version)) {}

    const std::string& GetVersion() const override { return fVersion; }

private:
    std::string fVersion;
};

}  // namespace KwBrevix_930
