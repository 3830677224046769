// An expression for tests: the value that is read, whatever it is.
#pragma once

#include <string>
#include <utility>

#include "host/transform/Expression.h"

class SameValue : public KwBrevix_930::Expression {
public:
    explicit SameValue(std::string field) : Expression(std::move(field)) {}
    void Evaluate(const KwBrevix_930::ScoreDictVar&, const KwBrevix_930::DerivedValue& value,
                  KwBrevix_930::DerivedValue& result) const override {
        result = value;
    }
};
