// Applies a model's Targets to what the plug-in has scored.
#include "runtime/TargetRules.h"

#include <algorithm>
#include <utility>

#include <xercesc/dom/DOMElement.hpp>

#include "host/PMMLModelTags.h"
#include "runtime/ModelDocument.h"
#include "runtime/refusals.h"

namespace brevix {

namespace {

using KwBrevix_930::TargetDeclaration;
using Tags = KwBrevix_930::PMMLModelTags;
using xercesc::DOMElement;

bool isKindOf(const std::string& kind, const TargetDescription& target) {
    return kind.empty() ||
           (target.isClassification ? kind == "categorical" || kind == "ordinal" : kind == "continuous");
}

}  // namespace

TargetRules::TargetRules(const ModelDocument& document, const TargetDescription& target) {
    std::vector<std::string> complaints;
    const DOMElement* list = document.findChild(document.getModel(), Tags::XML_ELE_TARGETS);
    for (const DOMElement* element : document.findChildren(list, Tags::XML_ELE_TARGET)) {
        auto declaration = TargetDeclaration::Read(document.getReader(), *element);
        const std::string& field = declaration.GetField();
        const std::string name = "Target '" + (field.empty() ? target.name : field) + "'" + document.placeOf(*element);
        const std::string kind = document.getAttribute(*element, Tags::XML_ATT_OPTYPE);
        if (!field.empty() && field != target.name) {
            fNotes.push_back(name + " is not the target that is scored; it has no effect");
            continue;
        }
        if (fDeclaration)
            complaints.push_back(name + " stands twice");
        if (!isKindOf(kind, target))
            complaints.push_back(name + " asks for optype='" + kind + "', which does not fit the model");
        if (target.isClassification && declaration.ChangesNumbers())
            complaints.push_back(name + " asks for other numbers where categories are predicted");
        fDeclaration = std::move(declaration);
    }
    throwComplaints(complaints);
    if (fDeclaration && target.isClassification)
        readCategories(target);
    else if (fDeclaration)
        readDefault();
}

void TargetRules::readCategories(const TargetDescription& target) {
    fDisplayValues.resize(target.categories.size());
    std::vector<std::optional<double>> priors(target.categories.size());
    for (const TargetDeclaration::Value& value : fDeclaration->GetValues()) {
        const std::string name = value.value.value_or("");
        const auto found = std::find(target.categories.begin(), target.categories.end(), name);
        if (found == target.categories.end()) {
            fNotes.push_back("the TargetValue '" + name + "' is no category of the target; it has no effect");
            continue;
        }
        const auto category = static_cast<std::size_t>(found - target.categories.begin());
        fDisplayValues[category] = value.displayValue;
        priors[category] = value.priorProbability;
    }
    for (std::size_t i = 0; i < priors.size(); ++i) {
        const bool isHighest = fDefaultCategory < 0 || priors[i] > priors[static_cast<std::size_t>(fDefaultCategory)];
        if (priors[i] && isHighest)
            fDefaultCategory = static_cast<int>(i);
    }
    if (std::all_of(priors.begin(), priors.end(), [](const auto& prior) { return prior.has_value(); })) {
        for (const auto& prior : priors)
            fPriors.push_back(*prior);
    }
}

void TargetRules::readDefault() {
    for (const TargetDeclaration::Value& value : fDeclaration->GetValues()) {
        if (value.defaultValue && !fDefaultNumber)
            fDefaultNumber = value.defaultValue;
    }
}

void TargetRules::rescale(Outcome& outcome) const {
    if (!fDeclaration || !outcome.number)
        return;
    outcome.number = fDeclaration->Transform(*outcome.number);
    if (outcome.stdDev)
        outcome.stdDev = fDeclaration->TransformDeviation(*outcome.stdDev);
    if (!outcome.lower || !outcome.upper)
        return;
    outcome.lower = fDeclaration->Transform(*outcome.lower);
    outcome.upper = fDeclaration->Transform(*outcome.upper);
    // A negative factor turns the interval round.
    if (*outcome.lower > *outcome.upper)
        std::swap(outcome.lower, outcome.upper);
}

void TargetRules::replaceMissing(Outcome& outcome, bool predictsOnly) const {
    if (outcome.status != kMissingInput || (fDefaultCategory < 0 && !fDefaultNumber))
        return;
    outcome.status = 0;
    outcome.category = fDefaultCategory;
    outcome.number = fDefaultNumber;
    if (predictsOnly || fPriors.empty())
        return;
    outcome.probabilities = fPriors;
    outcome.confidence = fPriors[static_cast<std::size_t>(fDefaultCategory)];
}

const std::string* TargetRules::findDisplayValue(int category) const {
    const auto place = static_cast<std::size_t>(category);
    const bool isDeclared = category >= 0 && place < fDisplayValues.size() && !fDisplayValues[place].empty();
    return isDeclared ? &fDisplayValues[place] : nullptr;
}

}  // namespace brevix
