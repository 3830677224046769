// A document that is parsed and, where that is wanted, prepared for the translator.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "runtime/Export.h"

namespace brevix {

class ModelDocument;

struct BREVIX_RUNTIME_API PreparedDocument {
    PreparedDocument();
    PreparedDocument(PreparedDocument&&) noexcept;
    ~PreparedDocument();

    /// Opens the document in a file, or the document that a text is. prepares: whether it is rewritten where exporters
    /// write what the translator does not read.
    /// Fails: Error, without the file's name, for one that cannot be read or holds no model.
    static PreparedDocument openFile(const std::string& path, bool prepares);
    static PreparedDocument openText(std::string_view text, bool prepares);

    /// Never null.
    std::unique_ptr<ModelDocument> document;
    /// One sentence for each kind of change that was made.
    std::vector<std::string> notes;
};

}  // namespace brevix
