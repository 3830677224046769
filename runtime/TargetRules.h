// Applies a model's Targets to what the plug-in has scored.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/TargetDeclaration.h"
#include "runtime/Outcome.h"
#include "runtime/output_columns.h"

namespace brevix {

class ModelDocument;

/// Immutable: any number of threads may use it at once.
class TargetRules {
public:
    /// Fails: one Error that names all that the model's Targets ask for and that makes no sense for its target; or
    /// BXException for an attribute that cannot be read.
    TargetRules(const ModelDocument& document, const TargetDescription& target);

    /// Rescales the number, the deviation and the bounds of a regression's result; of other results nothing changes.
    void rescale(Outcome& outcome) const;
    /// Gives a case that failed for a missing value the result that the model declares for it, where it declares one.
    /// predictsOnly: whether the prediction is all that is wanted.
    void replaceMissing(Outcome& outcome, bool predictsOnly) const;

    /// Returns: what people are to see in place of a category; null where Targets say nothing of it.
    const std::string* findDisplayValue(int category) const;

    /// Returns: one sentence for each thing that has no effect.
    const std::vector<std::string>& getNotes() const { return fNotes; }

private:
    void readCategories(const TargetDescription& target);
    void readDefault();

    std::optional<KwBrevix_930::TargetDeclaration> fDeclaration;
    // By category; empty where nothing is declared.
    std::vector<std::string> fDisplayValues;
    // By category, one for each; empty unless every category has one.
    std::vector<double> fPriors;
    // The category of the highest prior probability, -1 for none; or the default of a continuous target.
    int fDefaultCategory = -1;
    std::optional<double> fDefaultNumber;
    std::vector<std::string> fNotes;
};

}  // namespace brevix
