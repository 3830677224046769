// The columns of a result table, and what is to be computed for them.
#include "runtime/output_columns.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <unordered_map>

#include <xercesc/dom/DOMElement.hpp>

#include "host/BXException.h"
#include "host/BaseTranslator.h"
#include "host/PMMLModelTags.h"
#include "host/transform/FieldType.h"
#include "host/transform/cast.h"
#include "host/transform/expression_reader.h"
#include "runtime/Error.h"
#include "runtime/ModelDocument.h"
#include "runtime/refusals.h"

namespace brevix {

namespace {

using KwBrevix_930::BaseTranslator;
using KwBrevix_930::FieldType;
using KwBrevix_930::ScoreDictVar;
using Tags = KwBrevix_930::PMMLModelTags;
using xercesc::DOMElement;

std::vector<OutputColumn> listOwnColumns(const TargetDescription& target) {
    std::vector<OutputColumn> columns = {
        {"predicted_" + target.name, OutputColumn::kPrediction, target.type, "predictedValue"}};
    if (!target.isClassification) {
        columns.push_back({"stddev", OutputColumn::kStdDev, "double", "standardDeviation"});
        columns.push_back({"ci_lower", OutputColumn::kLower, "double", "intervalLower"});
        columns.push_back({"ci_upper", OutputColumn::kUpper, "double", "intervalUpper"});
        return columns;
    }
    columns.push_back({"confidence", OutputColumn::kConfidence, "double", "confidence"});
    for (std::size_t i = 0; i < target.categories.size(); ++i) {
        const std::string& category = target.categories[i];
        columns.push_back({"probability_" + category, OutputColumn::kProbability, "double", "probability", category,
                           static_cast<int>(i)});
    }
    return columns;
}

bool givesTheSame(const OutputColumn& one, const OutputColumn& other) {
    return one.content == other.content && one.category == other.category && one.field == other.field;
}

// The features that an outcome may hold as they are.
struct Feature {
    const char* name;
    OutputStep::Feature step;
    OutputColumn::Content content;
    bool isOfClassification;
    bool isOfRegression;
};

constexpr Feature kFeatures[] = {
    {"predictedValue", OutputStep::kPrediction, OutputColumn::kPrediction, true, true},
    {"predictedDisplayValue", OutputStep::kDisplayValue, OutputColumn::kField, true, true},
    {"probability", OutputStep::kProbability, OutputColumn::kProbability, true, false},
    {"confidence", OutputStep::kConfidence, OutputColumn::kConfidence, true, false},
    {"standardError", OutputStep::kStdDev, OutputColumn::kStdDev, false, true},
    {"standardDeviation", OutputStep::kStdDev, OutputColumn::kStdDev, false, true},
    {"residual", OutputStep::kResidual, OutputColumn::kField, true, true},
    {"transformedValue", OutputStep::kExpression, OutputColumn::kField, true, true},
    {"decision", OutputStep::kExpression, OutputColumn::kField, true, true},
};

// Reads the OutputFields of a model into columns and steps, and collects what is wrong with them.
class OutputFieldReader {
public:
    OutputFieldReader(const ModelDocument& document, const TargetDescription& target, OutputProgram& program)
        : fDocument(document),
          fOutput(document.findChild(document.getModel(), "Output")),
          fTarget(target),
          fProgram(program),
          fColumns(listOwnColumns(target)) {
        for (std::size_t i = 0; i < fColumns.size(); ++i)
            fPlaceByName.emplace(fColumns[i].name, i);
        for (const std::string& category : target.categories)
            fIndexByCategory.emplace(category, static_cast<int>(fIndexByCategory.size()));
        if (fOutput)
            fFunctions.AddFunctionsFor(document.getReader(), *fOutput);
    }

    std::vector<OutputColumn> read() {
        for (const DOMElement* field : fDocument.findChildren(fOutput, "OutputField"))
            readField(*field);
        throwComplaints(fComplaints);
        fColumns.push_back({"status", OutputColumn::kStatus, "integer", "status"});
        return std::move(fColumns);
    }

    /// Returns: whether some column needs the program.
    bool needsProgram() const { return fNeedsProgram; }

private:
    void readField(const DOMElement& field) {
        OutputStep step;
        step.name = fDocument.getAttribute(field, Tags::XML_ATT_NAME);
        OutputColumn column{step.name, OutputColumn::kField, "", ""};
        if (!checkReference(field, step.name) || !readFeature(field, step, column) || !readTypes(field, step))
            return;
        column.type = fDocument.findAttribute(field, Tags::XML_ATT_DATATYPE) ? step.type.GetName()
                      : column.content == OutputColumn::kPrediction          ? fTarget.type
                                                                             : step.type.GetName();
        const bool isComputed =
            column.content == OutputColumn::kField || KwBrevix_930::NeedsCast(step.type, step.ownType);
        if (isComputed) {
            column.content = OutputColumn::kField;
            column.category = -1;
            column.field = static_cast<int>(fProgram.getSteps().size());
        }
        fNeedsProgram |= isComputed;
        fProgram.add(std::move(step));
        if (fDocument.getAttribute(field, "isFinalResult") != "false")
            add(column);
    }

    bool checkReference(const DOMElement& field, const std::string& name) {
        const auto targetField = fDocument.findAttribute(field, "targetField");
        const auto segment = fDocument.findAttribute(field, "segmentId");
        if (name.empty())
            return complain(name, "has no name");
        if (targetField && *targetField != fTarget.name)
            return complain(name, "asks for targetField='" + *targetField + "'");
        if (segment)
            return complain(name, "asks for segmentId='" + *segment + "'");
        return true;
    }

    bool readFeature(const DOMElement& field, OutputStep& step, OutputColumn& column) {
        const std::string feature = fDocument.findAttribute(field, "feature").value_or("predictedValue");
        const auto* known = std::find_if(std::begin(kFeatures), std::end(kFeatures),
                                         [&](const Feature& one) { return feature == one.name; });
        if (known == std::end(kFeatures) ||
            !(fTarget.isClassification ? known->isOfClassification : known->isOfRegression))
            return complain(step.name, "asks for feature='" + feature + "', which this model does not have");
        if (feature == "confidence" && fDocument.findAttribute(field, Tags::XML_ATT_VALUE))
            return complain(step.name, "asks for the confidence of one value, which this model does not have");
        step.feature = known->step;
        column.content = known->content;
        column.feature = feature;
        const bool isOfCategory = fTarget.isClassification && (feature == "probability" || feature == "residual");
        return isOfCategory ? readCategory(field, step, column) : true;
    }

    // Whose probability or residual is asked for. Without a value it is the predicted category's probability.
    bool readCategory(const DOMElement& field, OutputStep& step, OutputColumn& column) {
        const bool isResidual = step.feature == OutputStep::kResidual;
        const auto value = fDocument.findAttribute(field, Tags::XML_ATT_VALUE);
        if (!value && isResidual)
            return complain(step.name, "asks for a residual and names no category as its value");
        if (!value) {
            step.feature = OutputStep::kPredictedProbability;
            column.content = OutputColumn::kPredictedProbability;
            return true;
        }
        const auto found = fIndexByCategory.find(*value);
        if (found == fIndexByCategory.end())
            return complain(step.name, std::string("asks for the ") + (isResidual ? "residual" : "probability") +
                                           " of '" + *value + "', which is no category");
        step.category = found->second;
        column.value = *value;
        column.category = isResidual ? -1 : found->second;
        return true;
    }

    bool readTypes(const DOMElement& field, OutputStep& step) {
        const auto text = fDocument.findAttribute(field, Tags::XML_ATT_DATATYPE);
        const auto declared = text ? KwBrevix_930::ParseFieldType(*text) : std::nullopt;
        if (text && !declared)
            return complain(step.name, "has dataType='" + *text + "', which is no data type");
        if (!readKind(field, step) || !readExpression(field, declared, step))
            return false;
        step.type = declared.value_or(step.ownType);
        return true;
    }

    bool readKind(const DOMElement& field, OutputStep& step) {
        static constexpr const char* kKinds[] = {"continuous", "ordinal", "categorical"};
        const std::string kind = fDocument.getAttribute(field, Tags::XML_ATT_OPTYPE);
        const auto* found = std::find(std::begin(kKinds), std::end(kKinds), kind);
        if (!kind.empty() && found == std::end(kKinds))
            return complain(step.name, "has optype='" + kind + "', which is no kind of field");
        if (!kind.empty())
            step.kind = static_cast<ScoreDictVar::Kind>(ScoreDictVar::kContinuous + (found - std::begin(kKinds)));
        return true;
    }

    // What is computed, and its type before it is cast.
    bool readExpression(const DOMElement& field, const std::optional<FieldType>& declared, OutputStep& step) {
        const DOMElement* element = findExpression(field);
        if (step.feature == OutputStep::kExpression) {
            if (!element)
                return complain(step.name, "holds no expression");
            step.expression = read(*element, declared, step.name);
            step.ownType = step.expression->GetType();
            return true;
        }
        if (element)
            return complain(step.name, "holds an expression that its feature does not use");
        const bool isText = step.feature == OutputStep::kPrediction || step.feature == OutputStep::kDisplayValue;
        if (fTarget.isClassification && isText)
            step.ownType = step.feature == OutputStep::kDisplayValue
                               ? FieldType{FieldType::kString}
                               : KwBrevix_930::ParseFieldType(fTarget.type).value_or(FieldType{FieldType::kString});
        return true;
    }

    const DOMElement* findExpression(const DOMElement& field) const {
        for (const DOMElement* child : fDocument.findChildren(&field, "")) {
            if (!BaseTranslator::HasTag(child, Tags::XML_ELE_EXTENSION) &&
                !BaseTranslator::HasTag(child, Tags::XML_ELE_VALUE) && !BaseTranslator::HasTag(child, "Decisions"))
                return child;
        }
        return nullptr;
    }

    std::unique_ptr<KwBrevix_930::Expression> read(const DOMElement& element, const std::optional<FieldType>& type,
                                                   const std::string& name) {
        try {
            return KwBrevix_930::ReadExpression(fDocument.getReader(), element, type, fProgram, fFunctions);
        } catch (const KwBrevix_930::BXException& fault) {
            throw Error("OutputField '" + name + "': " + fault.what(), fault.GetErrorCode());
        }
    }

    void add(const OutputColumn& column) {
        const auto [place, isNew] = fPlaceByName.emplace(column.name, fColumns.size());
        if (column.name == "status" || (!isNew && !givesTheSame(fColumns[place->second], column)))
            complain(column.name, "has the name of another column");
        else if (isNew)
            fColumns.push_back(column);
    }

    bool complain(const std::string& name, const std::string& what) {
        fComplaints.push_back("OutputField '" + name + "' " + what);
        return false;
    }

    const ModelDocument& fDocument;
    const DOMElement* fOutput;
    const TargetDescription& fTarget;
    OutputProgram& fProgram;
    KwBrevix_930::FunctionTable fFunctions;
    std::vector<OutputColumn> fColumns;
    std::unordered_map<std::string, std::size_t> fPlaceByName;
    std::unordered_map<std::string, int> fIndexByCategory;
    std::vector<std::string> fComplaints;
    bool fNeedsProgram = false;
};

}  // namespace

std::vector<OutputColumn> listOutputColumns(const ModelDocument& document, const TargetDescription& target,
                                            std::unique_ptr<OutputProgram>& program) {
    OutputFieldReader reader(document, target, *program);
    auto columns = reader.read();
    if (!reader.needsProgram())
        program.reset();
    return columns;
}

namespace {

const double* findProbability(const Outcome& outcome, int category) {
    const auto place = static_cast<std::size_t>(category);
    return category >= 0 && place < outcome.probabilities.size() ? &outcome.probabilities[place] : nullptr;
}

}  // namespace

const double* findNumber(const Outcome& outcome, const OutputColumn& column) {
    const auto find = [](const std::optional<double>& number) { return number ? &*number : nullptr; };
    switch (column.content) {
        case OutputColumn::kPrediction:
            return find(outcome.number);
        case OutputColumn::kConfidence:
            return find(outcome.confidence);
        case OutputColumn::kProbability:
            return findProbability(outcome, column.category);
        case OutputColumn::kPredictedProbability:
            return findProbability(outcome, outcome.category);
        case OutputColumn::kStdDev:
            return find(outcome.stdDev);
        case OutputColumn::kLower:
            return find(outcome.lower);
        case OutputColumn::kUpper:
            return find(outcome.upper);
        case OutputColumn::kStatus:
        case OutputColumn::kField:
            return nullptr;
    }
    return nullptr;
}

}  // namespace brevix
