// Computes what a model's OutputFields ask for.
#include "runtime/OutputProgram.h"

#include "host/ExtendedPrecision.h"
#include "host/NumericValue.h"
#include "host/ScoreCaseRecord.h"
#include "host/ScoreDictVar.h"
#include "host/ScoreDictionary.h"
#include "host/transform/DerivedRecord.h"
#include "host/transform/TransformationDictionary.h"
#include "host/transform/cast.h"

namespace brevix {

namespace {

using KwBrevix_930::DerivedValue;
using KwBrevix_930::Field;
using KwBrevix_930::FieldType;
using KwBrevix_930::ScoreCaseRecord;
using KwBrevix_930::ScoreDictVar;

void setNumber(std::optional<double> number, DerivedValue& value) {
    if (number)
        value.SetNumber(*number);
    else
        value.SetMissing();
}

std::optional<double> probabilityOf(const Outcome& outcome, int category) {
    const auto place = static_cast<std::size_t>(category);
    const bool isThere = category >= 0 && place < outcome.probabilities.size();
    return isThere ? std::optional(outcome.probabilities[place]) : std::nullopt;
}

// Invalid values leave a cell empty, as missing ones do.
void publish(const DerivedValue& value, FieldType type, OutputValue& result) {
    result.kind = OutputValue::kAbsent;
    if (value.IsText()) {
        result.kind = OutputValue::kText;
        result.text.assign(value.GetText());
    } else if (value.IsNumber() && type.code == FieldType::kBoolean) {
        result.kind = OutputValue::kText;
        result.text = value.GetNumber() != 0.0 ? "true" : "false";
    } else if (value.IsNumber()) {
        result.kind = OutputValue::kNumber;
        result.number = value.GetNumber();
    }
}

}  // namespace

OutputProgram::OutputProgram(const KwBrevix_930::ScoreDictionary& dictionary,
                             const KwBrevix_930::TransformationDictionary* transformations, Target target,
                             bool usesReplacements)
    : fDictionary(dictionary),
      fTransformations(transformations),
      fTarget(std::move(target)),
      fUsesReplacements(usesReplacements) {}

std::optional<Field> OutputProgram::Find(const std::string& name) {
    const auto known = fFieldByName.find(name);
    if (known != fFieldByName.end())
        return known->second;
    const ScoreDictVar* variable = fDictionary.FindVar(name);
    FieldType type;
    const bool isDerived = !variable && fTransformations;
    if (variable) {
        type = KwBrevix_930::TypeOf(*variable);
    } else if (const auto* derived = isDerived ? fTransformations->FindVar(name) : nullptr) {
        variable = derived;
        type = *derived->GetFieldType();
    }
    if (!variable)
        return std::nullopt;
    fReadsDerivedFields |= isDerived;
    fSources.push_back({variable, isDerived, fSlotCount});
    return fFieldByName.emplace(name, Field{fSlotCount++, type, variable->GetKind(), variable}).first->second;
}

void OutputProgram::add(OutputStep step) {
    step.slot = fSlotCount++;
    // From here on the name means this field, whatever it meant before.
    fFieldByName.insert_or_assign(step.name, Field{step.slot, step.type, step.kind, nullptr});
    fSteps.push_back(std::move(step));
}

std::vector<std::string> OutputProgram::listRawFields() const {
    std::vector<std::string> names;
    std::vector<std::string> derived;
    for (const Source& source : fSources)
        (source.isDerived ? derived : names).push_back(source.variable->GetName());
    if (fReadsDerivedFields) {
        const auto raw = fTransformations->FindRawFields(derived);
        names.insert(names.end(), raw.begin(), raw.end());
    }
    for (const OutputStep& step : fSteps) {
        if (step.feature == OutputStep::kResidual)
            names.push_back(fTarget.variable->GetName());
    }
    return names;
}

void OutputProgram::fetch(const ScoreCaseRecord& record, OutputSlots& slots) const {
    const ScoreCaseRecord* derived =
        fReadsDerivedFields ? fTransformations->GetValuesForDerivedVars(&record, &fDictionary) : nullptr;
    for (const Source& source : fSources) {
        DerivedValue& value = slots[source.slot];
        value.SetVariable(source.variable);
        const ScoreCaseRecord& from = source.isDerived ? *derived : record;
        KwBrevix_930::ReadRaw(*source.variable, from.GetValueOf(*source.variable), fUsesReplacements, value);
        // The derived record serves the thread's next case too.
        value.KeepText();
    }
}

void OutputProgram::run(const ScoreCaseRecord& record, OutputSlots& slots, Outcome& outcome) const {
    const KwBrevix_930::ExtendedPrecision precision;
    fetch(record, slots);
    outcome.fields.resize(fSteps.size());
    for (std::size_t i = 0; i < fSteps.size(); ++i) {
        const OutputStep& step = fSteps[i];
        DerivedValue& value = slots[step.slot];
        compute(step, record, outcome, slots);
        KwBrevix_930::CastToType(step.type, step.ownType, value);
        publish(value, step.type, outcome.fields[i]);
    }
}

void OutputProgram::compute(const OutputStep& step, const ScoreCaseRecord& record, const Outcome& outcome,
                            OutputSlots& slots) const {
    DerivedValue& value = slots[step.slot];
    switch (step.feature) {
        case OutputStep::kPrediction:
            return setPrediction(outcome, value);
        case OutputStep::kDisplayValue:
            return setDisplayValue(outcome, value);
        case OutputStep::kProbability:
            return setNumber(probabilityOf(outcome, step.category), value);
        case OutputStep::kPredictedProbability:
            return setNumber(probabilityOf(outcome, outcome.category), value);
        case OutputStep::kConfidence:
            return setNumber(outcome.confidence, value);
        case OutputStep::kStdDev:
            return setNumber(outcome.stdDev, value);
        case OutputStep::kResidual:
            return setResidual(step, record, outcome, value);
        case OutputStep::kExpression:
            return step.expression->Evaluate(slots, value);
    }
}

void OutputProgram::setPrediction(const Outcome& outcome, DerivedValue& value) const {
    if (outcome.category < 0)
        return setNumber(outcome.number, value);
    const auto category = static_cast<std::size_t>(outcome.category);
    if (fTarget.variable->IsString())
        value.BorrowText(fTarget.categories[category]);
    else
        value.SetNumber((*fTarget.variable->GetCategories())[category].value->GetDouble());
}

void OutputProgram::setDisplayValue(const Outcome& outcome, DerivedValue& value) const {
    if (outcome.category >= 0)
        value.BorrowText(fTarget.displayValues[static_cast<std::size_t>(outcome.category)]);
    else
        setNumber(outcome.number, value);
}

// What was observed less what was predicted; of a category, 1 or 0 less its probability.
void OutputProgram::setResidual(const OutputStep& step, const ScoreCaseRecord& record, const Outcome& outcome,
                                DerivedValue& value) const {
    value.SetMissing();
    const ScoreDictVar& target = *fTarget.variable;
    const auto* actual = record.GetValueOf(target);
    if (target.IsMissing(actual) || !target.IsValid(actual))
        return;
    const auto predicted = step.category >= 0 ? probabilityOf(outcome, step.category) : outcome.number;
    if (!predicted)
        return;
    if (step.category >= 0)
        value.SetNumber((target.GetCategoryIndex(actual) == step.category ? 1.0 : 0.0) - *predicted);
    else
        value.SetNumber(actual->GetDouble() - *predicted);
}

}  // namespace brevix
