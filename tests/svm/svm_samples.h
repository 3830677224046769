// Models, records and data that the tests of scoring are made of.
#pragma once

#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/BaseDictionary.h"
#include "host/DictVar.h"
#include "host/NumericValue.h"
#include "host/ScoreCaseRecord.h"
#include "host/ScoreResult.h"
#include "host/StringValue.h"
#include "host/transform/TransformationDictionary.h"
#include "tests/support/SVMModelTestAccess.h"

namespace svm_samples {

using Values = std::vector<double>;
using Indices = std::vector<std::int32_t>;

inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
inline constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// A record that says exactly what a test wants it to; it counts what it is asked.
class FakeRecord : public KwBrevix_930::ScoreCaseRecord {
public:
    explicit FakeRecord(bool isByIndex) : fIsByIndex(isByIndex) {}

    /// The variable gets the next index.
    void Add(const std::string& name, const KwBrevix_930::ScoreValue* value) {
        fNames.push_back(name);
        fValues.push_back(value);
    }
    void Set(std::size_t index, const KwBrevix_930::ScoreValue* value) { fValues.at(index) = value; }

    bool IsAccessedByIndex() const override { return fIsByIndex; }
    const KwBrevix_930::ScoreValue* GetValue(int index) const override {
        ++askedByIndex;
        return index >= 0 && index < static_cast<int>(fValues.size()) ? fValues[static_cast<std::size_t>(index)]
                                                                      : nullptr;
    }
    const KwBrevix_930::ScoreValue* GetValue(const std::string& name) const override {
        ++askedByName;
        const int index = Find(name);
        return index < 0 ? nullptr : fValues[static_cast<std::size_t>(index)];
    }
    int GetIndex(const std::string& name) const override {
        ++askedForIndex;
        namesAskedFor.push_back(name);
        return Find(name);
    }

    mutable int askedByIndex = 0;
    mutable int askedByName = 0;
    mutable int askedForIndex = 0;
    mutable std::vector<std::string> namesAskedFor;

private:
    int Find(const std::string& name) const {
        for (std::size_t i = 0; i < fNames.size(); ++i) {
            if (fNames[i] == name)
                return static_cast<int>(i);
        }
        return -1;
    }

    bool fIsByIndex;
    std::vector<std::string> fNames;
    std::vector<const KwBrevix_930::ScoreValue*> fValues;
};

/// A derived field: a factor times another field; missing and invalid where that is.
class ScaledField : public KwBrevix_930::Expression {
public:
    ScaledField(std::size_t slot, double factor)
        : Expression({KwBrevix_930::FieldType::kDouble}), fSlot(slot), fFactor(factor) {}
    void Evaluate(std::span<const KwBrevix_930::DerivedValue> slots,
                  KwBrevix_930::DerivedValue& result) const override {
        result.Borrow(slots[fSlot]);
        if (result.IsNumber())
            result.SetNumber(fFactor * result.GetNumber());
    }
    void AppendSlots(std::vector<std::size_t>& slots) const override { slots.push_back(fSlot); }

private:
    std::size_t fSlot;
    double fFactor;
};

/// source: a raw field.
inline void AddScaledVar(KwBrevix_930::TransformationDictionary& derived, const std::string& name,
                         const std::string& source, double factor) {
    derived.AddVar(std::make_unique<KwBrevix_930::TransformVar>(
        name, KwBrevix_930::FieldType{}, KwBrevix_930::ScoreDictVar::kContinuous,
        std::make_unique<ScaledField>(derived.AddRawField(source), factor)));
}

inline void AddNumericColumn(KwBrevix_930::SVMModelData& data, std::string field) {
    std::string replacement;
    data.AddFieldRef(field, replacement);
}

inline void AddCategoryColumn(KwBrevix_930::SVMModelData& data, std::string field, std::string category) {
    data.AddCategoricalPredictor(field, category, 1.0);
}

/// A machine without support vectors: its decision value is its bias.
inline KwBrevix_930::ST_SUPPORTVECTORMACHINE& AddMachine(KwBrevix_930::SVMModelData& data, double bias = 0.0,
                                                         std::int32_t target = -1, std::int32_t alternate = -1) {
    auto machine = std::make_unique<KwBrevix_930::ST_SUPPORTVECTORMACHINE>();
    machine->bias = bias;
    machine->targetCategoryIndex = target;
    machine->alternateTargetCategoryIndex = alternate;
    data.GetMachines().push_back(std::move(machine));
    return *data.GetMachines().back();
}

/// indices: zero-based, in any order.
inline void AddSupportVector(KwBrevix_930::SVMModelData& data, KwBrevix_930::ST_SUPPORTVECTORMACHINE& machine,
                             double coefficient, Indices indices, const Values& values) {
    for (std::int32_t& index : indices)
        ++index;
    const std::string id = "v" + std::to_string(data.GetVectorInstances().size());
    data.AddVectorInstance(id, indices, values);
    machine.supportVectors.push_back(data.GetVectorInstances().at(id).get());
    machine.coefficients.push_back(coefficient);
}

inline void AddExtension(KwBrevix_930::ST_SUPPORTVECTORMACHINE& machine, std::int32_t response,
                         std::int32_t nonresponse, double a, double b) {
    machine.extension = std::make_unique<KwBrevix_930::SVMMachineExtension>();
    machine.extension->responseCategoryIndex = response;
    machine.extension->nonresponseCategoryIndex = nonresponse;
    machine.extension->probabilityA = a;
    machine.extension->probabilityB = b;
}

/// A dictionary and a model over it. The dictionary starts with the target "y".
struct Bench {
    using DictVar = KwBrevix_930::DictVar;

    /// categories: of a string target; none for a numeric one.
    explicit Bench(const std::vector<std::string>& categories = {}) {
        target = &AddVar("y", categories.empty() ? DictVar::kNumber : DictVar::kString,
                         categories.empty() ? DictVar::kContinuous : DictVar::kCategorical);
        for (const std::string& category : categories)
            target->AddCategory(category);
        model.SetScoreDictionary(&dictionary);
        model.SetVarRole("y", KwBrevix_930::ScoreModel::kTarget);
        model.SetTargetCategories();
    }

    DictVar& AddVar(const std::string& name, DictVar::DataType type = DictVar::kNumber,
                    DictVar::Kind kind = DictVar::kContinuous) {
        dictionary.AddVar(std::make_unique<DictVar>(name, type, kind));
        return static_cast<DictVar&>(*dictionary.FindVar(name));
    }

    /// Hands new data with the given number of categories to the model. The caller adds machines afterwards.
    KwBrevix_930::SVMModelData& TakeData(std::unique_ptr<KwBrevix_930::SVMModelData> data) {
        KwBrevix_930::SVMModelData& taken = *data;
        model.SetSupportVectorMachineModel(data.release());
        return taken;
    }

    KwBrevix_930::BaseDictionary dictionary;
    DictVar* target;
    KwBrevix_930::SVMModel model;
    KwBrevix_930::SVMModelTestAccess access{model};
};

inline std::unique_ptr<KwBrevix_930::SVMModelData> NewClassification(std::int32_t categoryCount) {
    auto data = std::make_unique<KwBrevix_930::SVMModelData>();
    data->SetIsClassification(true);
    data->SetTargetCategoryCount(categoryCount);
    data->SetKernelType(KwBrevix_930::SVMModelData::kLinear);
    data->SetIsOneAgainstAll(false);
    return data;
}

inline std::unique_ptr<KwBrevix_930::SVMModelData> NewRegression() {
    auto data = std::make_unique<KwBrevix_930::SVMModelData>();
    data->SetKernelType(KwBrevix_930::SVMModelData::kLinear);
    return data;
}

}  // namespace svm_samples
