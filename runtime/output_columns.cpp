// The columns of a result table.
#include "runtime/output_columns.h"

#include <optional>
#include <unordered_map>

#include <xercesc/dom/DOMElement.hpp>

#include "host/PMMLModelTags.h"
#include "runtime/ModelDocument.h"
#include "runtime/refusals.h"

namespace brevix {

namespace {

using Tags = KwBrevix_930::PMMLModelTags;
using xercesc::DOMElement;

std::vector<OutputColumn> listOwnColumns(const TargetDescription& target) {
    std::vector<OutputColumn> columns = {{"predicted_" + target.name, OutputColumn::kPrediction, target.type}};
    if (!target.isClassification) {
        columns.push_back({"stddev", OutputColumn::kStdDev, "double"});
        columns.push_back({"ci_lower", OutputColumn::kLower, "double"});
        columns.push_back({"ci_upper", OutputColumn::kUpper, "double"});
        return columns;
    }
    columns.push_back({"confidence", OutputColumn::kConfidence, "double"});
    for (std::size_t i = 0; i < target.categories.size(); ++i)
        columns.push_back(
            {"probability_" + target.categories[i], OutputColumn::kProbability, "double", static_cast<int>(i)});
    return columns;
}

bool givesTheSame(const OutputColumn& one, const OutputColumn& other) {
    return one.content == other.content && one.category == other.category;
}

// Reads the OutputFields of a model into columns, and collects what is wrong with them.
class OutputFieldReader {
public:
    OutputFieldReader(const ModelDocument& document, const TargetDescription& target)
        : fDocument(document), fTarget(target), fColumns(listOwnColumns(target)) {
        for (std::size_t i = 0; i < fColumns.size(); ++i)
            fPlaceByName.emplace(fColumns[i].name, i);
        for (const std::string& category : target.categories)
            fIndexByCategory.emplace(category, static_cast<int>(fIndexByCategory.size()));
    }

    std::vector<OutputColumn> read() {
        const OutputColumn status{"status", OutputColumn::kStatus, "integer"};
        const DOMElement* output = fDocument.findChild(fDocument.getModel(), "Output");
        for (const DOMElement* field : fDocument.findChildren(output, "OutputField")) {
            const std::string name = fDocument.getAttribute(*field, Tags::XML_ATT_NAME);
            const auto column = readField(*field, name);
            if (column && name == status.name)
                complain(name, "has the name of another column");
            else if (column)
                add(*column);
        }
        throwComplaints(fComplaints);
        fColumns.push_back(status);
        return std::move(fColumns);
    }

private:
    std::optional<OutputColumn> readField(const DOMElement& field, const std::string& name) {
        const std::string feature = fDocument.findAttribute(field, "feature").value_or("predictedValue");
        const auto targetField = fDocument.findAttribute(field, "targetField");
        if (name.empty())
            return complain(name, "has no name");
        if (targetField && *targetField != fTarget.name)
            return complain(name, "asks for targetField='" + *targetField + "'");
        if (feature == "predictedValue")
            return OutputColumn{name, OutputColumn::kPrediction, fTarget.type};
        if (feature != "probability" || !fTarget.isClassification)
            return complain(name, "asks for feature='" + feature + "'");
        return readProbability(name, fDocument.findAttribute(field, Tags::XML_ATT_VALUE));
    }

    std::optional<OutputColumn> readProbability(const std::string& name, const std::optional<std::string>& value) {
        if (!value)
            return OutputColumn{name, OutputColumn::kPredictedProbability, "double"};
        const auto found = fIndexByCategory.find(*value);
        if (found == fIndexByCategory.end())
            return complain(name, "asks for the probability of '" + *value + "', which is no category");
        return OutputColumn{name, OutputColumn::kProbability, "double", found->second};
    }

    void add(const OutputColumn& column) {
        const auto [place, isNew] = fPlaceByName.emplace(column.name, fColumns.size());
        if (isNew)
            fColumns.push_back(column);
        else if (!givesTheSame(fColumns[place->second], column))
            complain(column.name, "has the name of another column");
    }

    std::optional<OutputColumn> complain(const std::string& name, const std::string& what) {
        fComplaints.push_back("OutputField '" + name + "' " + what);
        return std::nullopt;
    }

    const ModelDocument& fDocument;
    const TargetDescription& fTarget;
    std::vector<OutputColumn> fColumns;
    std::unordered_map<std::string, std::size_t> fPlaceByName;
    std::unordered_map<std::string, int> fIndexByCategory;
    std::vector<std::string> fComplaints;
};

}  // namespace

std::vector<OutputColumn> listOutputColumns(const ModelDocument& document, const TargetDescription& target) {
    return OutputFieldReader(document, target).read();
}

}  // namespace brevix
