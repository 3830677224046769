// A model's description as text for people.
#include "tools/description_text.h"

#include "host/number_text.h"
#include "runtime/ModelDescription.h"
#include "runtime/printable_text.h"
#include "tools/TextTable.h"

namespace brevix {

namespace {

using KwBrevix_930::NumberText;

// Longer tables are cut; the JSON has all.
constexpr std::size_t kMostRows = 40;
constexpr std::size_t kValuesWidth = 24;
constexpr std::size_t kHeadingWidth = 12;
constexpr std::size_t kListWidth = 3 * (TextTable::kWidth - kHeadingWidth);

std::string headed(std::string heading, const std::string& text) {
    heading.resize(kHeadingWidth, ' ');
    return wrapped(heading, printableText(text));
}

std::string counted(std::size_t count, const std::string& one, const std::string& many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

// Of a share, four digits tell enough.
std::string percent(double share) {
    return NumberText(static_cast<double>(static_cast<long>(share * 10000.0 + 0.5)) / 100.0) + "%";
}

std::string orNone(const std::string& text) {
    return text.empty() ? "(none)" : text;
}

// A name in a list, in quotes where a comma in it would look like two names.
std::string quoted(const std::string& name) {
    const std::string text = printableText(name);
    return text.empty() || text.find(',') != std::string::npos ? "'" + text + "'" : text;
}

std::string listNames(const std::vector<std::string>& names) {
    std::vector<std::string> shown;
    for (const std::string& name : names)
        shown.push_back(quoted(name));
    return listed(shown, kValuesWidth);
}

std::string describeModel(const ModelDescription& model) {
    std::string text = orNone(model.modelName) + ", " + model.function;
    if (!model.method.empty())
        text +=
            ", " + model.method + ", threshold " + NumberText(model.threshold) + (model.hasMaxWins ? ", maxWins" : "");
    return text;
}

std::string describeKernel(const ModelDescription& model) {
    std::string text = model.kernel;
    for (const auto& [name, value] : model.kernelParameters)
        text += ", " + name + " " + NumberText(value);
    return text;
}

std::string describeVectors(const ModelDescription& model) {
    std::string text = counted(model.instanceCount, "instance", "instances") + " of " +
                       counted(model.vectorFieldCount, "field", "fields");
    if (model.density)
        text += ", " + percent(*model.density) + " not zero";
    return text + "; " + std::to_string(model.usedInstanceCount) + " used, " +
           std::to_string(model.sharedInstanceCount) + " shared by machines";
}

std::string describeRange(const InputField::Range& range) {
    std::string text(1, range.includesLower ? '[' : '(');
    text += range.lower ? NumberText(*range.lower) : "-inf";
    text += ", ";
    text += range.upper ? NumberText(*range.upper) : "inf";
    return text += range.includesUpper ? ']' : ')';
}

std::string describeValues(const InputField& field) {
    std::vector<std::string> names;
    for (const std::string& value : field.values)
        names.push_back(quoted(value));
    for (const InputField::Range& range : field.ranges)
        names.push_back(describeRange(range));
    return names.empty() ? "any" : listed(names, kValuesWidth);
}

// A heading, the table's first rows, and how many rows it has besides.
class Section {
public:
    explicit Section(std::vector<std::string> headings) : fTable(std::move(headings)) {}

    void add(std::vector<std::string> cells) {
        if (fCount++ < kMostRows)
            fTable.add(std::move(cells));
    }

    std::size_t getCount() const { return fCount; }

    std::string makeText() const {
        if (fCount == 0)
            return "";
        const std::string rest =
            fCount > kMostRows ? "... and " + std::to_string(fCount - kMostRows) + " more (--json lists all)\n" : "";
        return std::string("\n").append(fTable.makeText()).append(rest);
    }

private:
    TextTable fTable;
    std::size_t fCount = 0;
};

std::string listMachines(const ModelDescription& model) {
    Section section({"machine", "categories", "support vectors", "left out"});
    for (const auto& machine : model.machines) {
        std::string categories;
        for (const std::string& category : machine.categories)
            categories += (categories.empty() ? "" : " / ") + category;
        section.add({std::to_string(section.getCount() + 1), categories, std::to_string(machine.vectorCount),
                     std::to_string(machine.lostVectorCount)});
    }
    return section.makeText();
}

std::string listInputs(const ModelDescription& model) {
    Section section({"input", "type", "kind", "valid values", "if missing", "if invalid"});
    for (const InputField& field : model.inputs)
        section.add({field.name + (field.isOptional ? " (optional)" : ""), field.type, field.kind,
                     describeValues(field), field.missingReplacement.value_or("stays missing"),
                     field.invalidTreatment});
    return section.makeText();
}

std::string listDerivedFields(const ModelDescription& model) {
    Section section({"derived field", "type", "kind", "expression", "reads"});
    for (const auto& field : model.derivedFields)
        section.add({field.name, field.type, field.kind, field.expression,
                     field.sources ? listNames(*field.sources) : "(not traced)"});
    return section.makeText();
}

std::string listOutputs(const ModelDescription& model) {
    Section section({"output column", "type", "feature"});
    for (const OutputColumn& column : model.outputs)
        section.add(
            {column.name, column.type, column.feature + (column.value.empty() ? "" : " of " + quoted(column.value))});
    return section.makeText();
}

std::string listNotes(const std::string& heading, const std::vector<std::string>& notes) {
    std::string text = notes.empty() ? "" : "\n" + heading + "\n";
    for (const std::string& note : notes)
        text += wrapped("- ", printableText(note));
    return text;
}

}  // namespace

std::string describeAsText(const ModelDescription& description) {
    std::string target = description.targetName + " (" + description.targetType + ")";
    std::vector<std::string> categories;
    for (const std::string& category : description.categories)
        categories.push_back(quoted(category));
    if (!categories.empty())
        target += ": " + listed(categories, kListWidth);
    const std::string producer = description.producerName + " " + description.producerVersion;
    return headed("model", describeModel(description)) + headed("producer", orNone(producer == " " ? "" : producer)) +
           headed("PMML", orNone(description.version)) + headed("kernel", describeKernel(description)) +
           headed("target", target) + headed("vectors", describeVectors(description)) + listMachines(description) +
           listInputs(description) + listDerivedFields(description) + listOutputs(description) +
           listNotes("prepared before translation", description.prepared) +
           listNotes("without effect", description.ignored);
}

}  // namespace brevix
