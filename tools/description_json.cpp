// A model's description as JSON for programs. The keys are promised in docs/command.md.
#include <nlohmann/json.hpp>

#include "runtime/ModelDescription.h"
#include "tools/description_text.h"

namespace brevix {

namespace {

using Json = nlohmann::ordered_json;

Json orNull(const std::string& text) {
    return text.empty() ? Json(nullptr) : Json(text);
}

template <class Value>
Json orNull(const std::optional<Value>& value) {
    return value ? Json(*value) : Json(nullptr);
}

template <class List, class Describe>
Json listOf(const List& list, const Describe& describe) {
    Json items = Json::array();
    for (const auto& item : list)
        items.push_back(describe(item));
    return items;
}

Json kernelJson(const ModelDescription& model) {
    Json parameters = Json::object();
    for (const auto& [name, value] : model.kernelParameters)
        parameters[name] = value;
    return {{"type", model.kernel}, {"parameters", parameters}};
}

Json vectorsJson(const ModelDescription& model) {
    return {{"fields", model.vectorFieldCount},
            {"instances", model.instanceCount},
            {"used", model.usedInstanceCount},
            {"shared", model.sharedInstanceCount},
            {"density", orNull(model.density)}};
}

Json machineJson(const ModelDescription::Machine& machine) {
    return {{"categories", machine.categories},
            {"supportVectors", machine.vectorCount},
            {"leftOut", machine.lostVectorCount}};
}

Json rangeJson(const InputField::Range& range) {
    return {{"lower", orNull(range.lower)},
            {"includesLower", range.includesLower},
            {"upper", orNull(range.upper)},
            {"includesUpper", range.includesUpper}};
}

Json inputJson(const InputField& field) {
    return {{"name", field.name},
            {"type", field.type},
            {"kind", field.kind},
            {"optional", field.isOptional},
            {"values", field.values},
            {"ranges", listOf(field.ranges, rangeJson)},
            {"missingReplacement", orNull(field.missingReplacement)},
            {"invalidTreatment", field.invalidTreatment}};
}

Json derivedFieldJson(const ModelDescription::DerivedField& field) {
    return {{"name", field.name},
            {"type", field.type},
            {"kind", field.kind},
            {"expression", field.expression},
            {"sources", orNull(field.sources)}};
}

Json outputJson(const OutputColumn& column) {
    return {{"name", column.name}, {"type", column.type}, {"feature", column.feature}, {"value", orNull(column.value)}};
}

Json methodJson(const ModelDescription& model) {
    if (model.method.empty())
        return nullptr;
    return {{"name", model.method}, {"threshold", model.threshold}, {"maxWins", model.hasMaxWins}};
}

}  // namespace

std::string describeAsJson(const ModelDescription& description) {
    const Json json = {
        {"modelName", orNull(description.modelName)},
        {"function", description.function},
        {"pmmlVersion", orNull(description.version)},
        {"producer", {{"name", orNull(description.producerName)}, {"version", orNull(description.producerVersion)}}},
        {"method", methodJson(description)},
        {"kernel", kernelJson(description)},
        {"target",
         {{"name", description.targetName}, {"type", description.targetType}, {"categories", description.categories}}},
        {"vectors", vectorsJson(description)},
        {"machines", listOf(description.machines, machineJson)},
        {"inputs", listOf(description.inputs, inputJson)},
        {"derivedFields", listOf(description.derivedFields, derivedFieldJson)},
        {"outputs", listOf(description.outputs, outputJson)},
        {"prepared", description.prepared},
        {"ignored", description.ignored},
    };
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace brevix
