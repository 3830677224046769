// What an expression may read.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "host/Export.h"
#include "host/ScoreDictVar.h"
#include "host/transform/FieldType.h"

namespace KwBrevix_930 {

/// A field, as expressions are resolved to it.
struct Field {
    /// Its place in the span that expressions are evaluated over.
    std::size_t slot = 0;
    FieldType type;
    ScoreDictVar::Kind kind = ScoreDictVar::kUnknownKind;
    /// May be null; needed only while expressions are read.
    const ScoreDictVar* variable = nullptr;
};

/// Abstract; asked by name while expressions are read, never while they are evaluated.
class BREVIX_HOST_API FieldScope {
public:
    FieldScope() {}
    FieldScope(const FieldScope&) = delete;
    FieldScope& operator=(const FieldScope&) = delete;
    virtual ~FieldScope();

    /// Returns: the field of that name; nothing where there is none. Asked again, it gives the same slot.
    virtual std::optional<Field> Find(const std::string& name) = 0;
};

}  // namespace KwBrevix_930
