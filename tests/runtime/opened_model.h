// Opens a small document through the plug-in and scores single cases.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "runtime/Error.h"
#include "runtime/ScoringModel.h"
#include "tests/runtime/SmallDocument.h"

namespace test_support {

inline std::unique_ptr<brevix::ScoringModel> openText(const std::string& text, brevix::ModelOptions options = {}) {
    options.plugin = BREVIX_PLUGIN;
    return brevix::ScoringModel::openText(text, options);
}

inline std::unique_ptr<brevix::ScoringModel> open(const SmallDocument& document,
                                                  const brevix::ModelOptions& options = {}) {
    return openText(document.makeText(), options);
}

inline std::string faultOfText(const std::string& text, const brevix::ModelOptions& options = {}) {
    try {
        openText(text, options);
    } catch (const brevix::Error& fault) {
        return fault.what();
    }
    return "no fault";
}

inline std::string faultOf(const SmallDocument& document, const brevix::ModelOptions& options = {}) {
    return faultOfText(document.makeText(), options);
}

inline brevix::Outcome scoreCase(const brevix::ScoringModel& model,
                                 const std::vector<std::pair<std::string, std::string>>& cells) {
    auto record = model.makeRecord();
    for (const auto& [name, text] : cells)
        record.setText(name, text);
    brevix::Outcome outcome;
    model.score(record, outcome);
    return outcome;
}

/// The predicted category, or the status of a case that has none.
inline std::string predictCase(const brevix::ScoringModel& model,
                               const std::vector<std::pair<std::string, std::string>>& cells) {
    const auto outcome = scoreCase(model, cells);
    if (outcome.status != 0 || outcome.category < 0)
        return std::to_string(outcome.status);
    return model.getCategories()[static_cast<std::size_t>(outcome.category)];
}

}  // namespace test_support
