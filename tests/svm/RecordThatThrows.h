// A case whose values cannot be had.
#pragma once

#include <stdexcept>
#include <string>

#include "host/CaseRecord.h"

namespace svm_samples {

class RecordThatThrows : public KwBrevix_930::CaseRecord {
public:
    using CaseRecord::CaseRecord;
    const KwBrevix_930::ScoreValue* GetValue(int) const override { throw std::runtime_error("the record is gone"); }
    const KwBrevix_930::ScoreValue* GetValue(const std::string&) const override {
        throw std::runtime_error("the record is gone");
    }
};

}  // namespace svm_samples
