// A file or standard input, read as it comes.
#pragma once

#include "runtime/ByteSource.h"
#include "runtime/Export.h"

namespace brevix {

class BREVIX_RUNTIME_API InputFile : public ByteSource {
public:
    /// path: "-" is standard input.
    /// Fails: Error where there is no such file, or it is a directory.
    explicit InputFile(const std::string& path);
    ~InputFile() override;

    std::size_t read(char* target, std::size_t most) override;
    const std::string& getName() const override { return fName; }

private:
    std::string fName;
    int fDescriptor;
    bool fIsOwned;
};

}  // namespace brevix
