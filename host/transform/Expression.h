// What a derived field computes: a tree, resolved when it is read.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "host/Export.h"
#include "host/transform/DerivedValue.h"
#include "host/transform/FieldType.h"

namespace KwBrevix_930 {

struct Literal;

/// Abstract; immutable after loading, so that any number of threads may evaluate it. Fields are read by the numbers of
/// their slots, never by name.
class BREVIX_HOST_API Expression {
public:
    explicit Expression(FieldType type) : fType(type) {}
    Expression(const Expression&) = delete;
    Expression& operator=(const Expression&) = delete;
    virtual ~Expression();

    /// Computes the result for one case. slots: the fields' values, at least as many as the scope has given numbers
    /// for; result: none of the slots that are read; overwritten with a value of this expression's type. Its text stays
    /// as long as the slots and the expression do.
    virtual void Evaluate(std::span<const DerivedValue> slots, DerivedValue& result) const = 0;

    /// Returns: the type of the values that are computed.
    FieldType GetType() const { return fType; }

    /// Appends the slots that are read, in any order, some perhaps repeatedly.
    virtual void AppendSlots(std::vector<std::size_t>& slots) const;

    /// Returns: the name of the first field that is read; empty where none is.
    virtual const std::string& GetFieldName() const;

    /// Returns: the values of that field that are encoded as numbers of their own.
    virtual const std::vector<std::string>& GetAllEncodedValues() const;

    /// Returns: the value, where this is a constant; otherwise null.
    virtual const Literal* GetLiteral() const { return nullptr; }

private:
    FieldType fType;
};

}  // namespace KwBrevix_930
