// Computes what a model's OutputFields ask for, one after the other, for one case after another.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/transform/Expression.h"
#include "host/transform/FieldScope.h"
#include "runtime/Outcome.h"

namespace KwBrevix_930 {
class ScoreCaseRecord;
class ScoreDictVar;
class ScoreDictionary;
class TransformVar;
class TransformationDictionary;
}  // namespace KwBrevix_930

namespace brevix {

/// The values of one thread's case.
using OutputSlots = std::vector<KwBrevix_930::DerivedValue>;

/// One OutputField that is computed. What its feature needs beside is set; the rest is not.
struct OutputStep {
    enum Feature {
        kPrediction,
        kDisplayValue,
        kProbability,
        kPredictedProbability,
        kConfidence,
        kStdDev,
        kResidual,
        kExpression
    };

    std::string name;
    Feature feature = kPrediction;
    /// kProbability and kResidual: which category; otherwise -1.
    int category = -1;
    std::unique_ptr<KwBrevix_930::Expression> expression;
    /// The type of what is computed, and the one that it is cast to.
    KwBrevix_930::FieldType ownType;
    KwBrevix_930::FieldType type;
    KwBrevix_930::ScoreDictVar::Kind kind = KwBrevix_930::ScoreDictVar::kUnknownKind;
    std::size_t slot = 0;
};

/// Filled while a model is opened, and the scope of its own expressions meanwhile: they may read the OutputFields
/// before them, the fields of the data dictionary and the derived fields. From then on any number of threads may run it
/// at once.
class OutputProgram : public KwBrevix_930::FieldScope {
public:
    /// What predictions are, for the steps that speak of them.
    struct Target {
        const KwBrevix_930::ScoreDictVar* variable = nullptr;
        std::vector<std::string> categories;
        /// What people are to see of each category.
        std::vector<std::string> displayValues;
    };

    /// dictionary, transformations (which may be null): must outlive the program. usesReplacements: whether what stands
    /// in for a missing raw field is a value here.
    OutputProgram(const KwBrevix_930::ScoreDictionary& dictionary,
                  const KwBrevix_930::TransformationDictionary* transformations, Target target, bool usesReplacements);

    std::optional<KwBrevix_930::Field> Find(const std::string& name) override;
    /// Adds a step behind the others, and gives it its slot.
    void add(OutputStep step);

    const std::vector<OutputStep>& getSteps() const { return fSteps; }
    /// Returns: the names of the raw fields that are read, derived fields traced to theirs; the target for a residual.
    std::vector<std::string> listRawFields() const;

    OutputSlots makeSlots() const { return OutputSlots(fSlotCount); }
    /// Computes all steps of a case that was scored with status 0, into outcome.fields: one value for each step.
    void run(const KwBrevix_930::ScoreCaseRecord& record, OutputSlots& slots, Outcome& outcome) const;

private:
    // A field that the expressions read.
    struct Source {
        const KwBrevix_930::ScoreDictVar* variable;
        bool isDerived;
        std::size_t slot;
    };

    void fetch(const KwBrevix_930::ScoreCaseRecord& record, OutputSlots& slots) const;
    void compute(const OutputStep& step, const KwBrevix_930::ScoreCaseRecord& record, const Outcome& outcome,
                 OutputSlots& slots) const;
    void setPrediction(const Outcome& outcome, KwBrevix_930::DerivedValue& value) const;
    void setDisplayValue(const Outcome& outcome, KwBrevix_930::DerivedValue& value) const;
    void setResidual(const OutputStep& step, const KwBrevix_930::ScoreCaseRecord& record, const Outcome& outcome,
                     KwBrevix_930::DerivedValue& value) const;

    const KwBrevix_930::ScoreDictionary& fDictionary;
    const KwBrevix_930::TransformationDictionary* fTransformations;
    Target fTarget;
    bool fUsesReplacements;
    std::vector<OutputStep> fSteps;
    std::vector<Source> fSources;
    std::unordered_map<std::string, KwBrevix_930::Field> fFieldByName;
    bool fReadsDerivedFields = false;
    std::size_t fSlotCount = 0;
};

}  // namespace brevix
