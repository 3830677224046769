// An expression for tests: the value of a slot, whatever it is.
#pragma once

#include <cstddef>
#include <string>
#include <utility>

#include "host/transform/Expression.h"

class SameValue : public KwBrevix_930::Expression {
public:
    SameValue(std::size_t slot, std::string field)
        : Expression({KwBrevix_930::FieldType::kDouble}), fSlot(slot), fField(std::move(field)) {}
    void Evaluate(std::span<const KwBrevix_930::DerivedValue> slots,
                  KwBrevix_930::DerivedValue& result) const override {
        result.Borrow(slots[fSlot]);
    }
    void AppendSlots(std::vector<std::size_t>& slots) const override { slots.push_back(fSlot); }
    const std::string& GetFieldName() const override { return fField; }

private:
    std::size_t fSlot;
    std::string fField;
};
