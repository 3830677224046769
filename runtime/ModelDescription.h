// What a model is, for people and programs that look at it before they trust it.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "runtime/Export.h"
#include "runtime/InputField.h"
#include "runtime/OutputColumn.h"

namespace brevix {

class ModelDocument;
class ScoringModel;
struct PreparedDocument;

struct BREVIX_RUNTIME_API ModelDescription {
    struct Machine {
        /// The categories that it tells apart: two, one (against all others), or none in a regression.
        std::vector<std::string> categories;
        /// Support vectors that it uses, and those that are left out because their instance cannot be read.
        std::size_t vectorCount = 0;
        std::size_t lostVectorCount = 0;
    };

    struct DerivedField {
        std::string name;
        std::string type;
        std::string kind;
        /// The element that computes it: "NormContinuous", "Apply" and so on.
        std::string expression;
        /// The raw fields that it reads in the end, through other derived fields too; nothing behind the first two
        /// thousand derived fields, nor behind the first 4 MiB of sources.
        std::optional<std::vector<std::string>> sources;
    };

    std::string modelName;
    std::string producerName;
    std::string producerVersion;
    std::string version;
    /// "classification" or "regression".
    std::string function;
    /// Classification: "OneAgainstOne" or "OneAgainstAll".
    std::string method;
    double threshold = 0.0;
    bool hasMaxWins = false;
    std::string kernel;
    std::vector<std::pair<std::string, double>> kernelParameters;
    std::string targetName;
    std::string targetType;
    std::vector<std::string> categories;
    std::vector<Machine> machines;
    std::size_t vectorFieldCount = 0;
    /// Instances that can be read; those that some machine uses; those that more than one uses.
    std::size_t instanceCount = 0;
    std::size_t usedInstanceCount = 0;
    std::size_t sharedInstanceCount = 0;
    /// The share of entries that are not zero; nothing without vectors.
    std::optional<double> density;
    std::vector<InputField> inputs;
    std::vector<DerivedField> derivedFields;
    std::vector<OutputColumn> outputs;
    /// One sentence each.
    std::vector<std::string> prepared;
    std::vector<std::string> ignored;

    /// Returns: what a document and the model that was opened from it are, in time linear in the document's size.
    static ModelDescription describe(const PreparedDocument& prepared, const ScoringModel& model);

private:
    void describeHead(const ModelDocument& document);
    void describeKernel(const ModelDocument& document);
    void describeDerivedFields(const ModelDocument& document, const ScoringModel& model);
    void describeMachines(const ModelDocument& document);
};

}  // namespace brevix
