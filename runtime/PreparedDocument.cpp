// A document that is parsed and, where that is wanted, prepared for the translator.
#include "runtime/PreparedDocument.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "runtime/Error.h"
#include "runtime/ModelDocument.h"
#include "runtime/one_error_type.h"
#include "runtime/platform/files.h"
#include "runtime/preparation.h"
#include "runtime/refusals.h"

namespace brevix {

namespace {

std::ifstream openStream(const std::string& path) {
    const std::filesystem::path file = platform::toPath(path);
    if (std::filesystem::is_directory(file))
        throw Error("it is a directory");
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        throw Error("it cannot be opened: " + std::generic_category().message(errno));
    return stream;
}

template <class Parse>
PreparedDocument open(bool prepares, const Parse& parse) {
    return withOneErrorType([&] {
        PreparedDocument prepared;
        prepared.document = std::make_unique<ModelDocument>(parse());
        if (prepares)
            prepared.notes = prepareDocument(*prepared.document);
        requireModel(*prepared.document);
        return prepared;
    });
}

}  // namespace

PreparedDocument::PreparedDocument() = default;
PreparedDocument::PreparedDocument(PreparedDocument&&) noexcept = default;
PreparedDocument::~PreparedDocument() = default;

PreparedDocument PreparedDocument::openFile(const std::string& path, bool prepares) {
    return open(prepares, [&path] {
        std::ifstream stream = openStream(path);
        return KwBrevix_930::DocumentParser().ParseStream(stream);
    });
}

PreparedDocument PreparedDocument::openText(std::string_view text, bool prepares) {
    return open(prepares, [text] { return KwBrevix_930::DocumentParser().ParseText(text); });
}

}  // namespace brevix
