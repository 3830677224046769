// What a derived field computes.
#pragma once

#include <string>
#include <vector>

#include "host/Export.h"

namespace KwBrevix_930 {

class ScoreDictVar;
class ScoreValue;

/// The state of one input or output of an expression.
struct DerivedValue {
    enum State { kMissing, kInvalid, kNumber, kText };

    State state = kMissing;
    double number = 0.0;
    std::string text;
};

/// Abstract; immutable after loading, so that any number of threads may evaluate it.
class BREVIX_HOST_API Expression {
public:
    Expression(const Expression&) = delete;
    Expression& operator=(const Expression&) = delete;
    virtual ~Expression();

    /// Computes the result for one source value. source: the variable read, raw or derived; result: overwritten.
    virtual void Evaluate(const ScoreDictVar& source, const DerivedValue& value, DerivedValue& result) const = 0;

    /// Returns: the name of the field that is read.
    const std::string& GetFieldName() const { return fFieldName; }

    /// Returns: the source values that are encoded as numbers of their own.
    virtual const std::vector<std::string>& GetAllEncodedValues() const;

protected:
    explicit Expression(std::string fieldName);

private:
    std::string fFieldName;
};

}  // namespace KwBrevix_930
