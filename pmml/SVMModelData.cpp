// One SupportVectorMachineModel element as a plain record.
#include "pmml/SVMModelData.h"

#include <utility>

namespace KwBrevix_930 {

ST_SUPPORTVECTORMACHINE::~ST_SUPPORTVECTORMACHINE() = default;

SVMModelData::SVMModelData() = default;
SVMModelData::~SVMModelData() = default;

void SVMModelData::SetTargetCategoryCount(std::int32_t count) {
    if (count >= 1)
        fTargetCategoryCount = count;
}

void SVMModelData::AddFieldRef(std::string& fieldName, std::string& value) {
    auto field = std::make_unique<SVMVectorField>();
    field->fieldName = std::exchange(fieldName, {});
    field->value = std::exchange(value, {});
    fVectorFields.push_back(std::move(field));
    fVectorFieldKinds.push_back(SVMVectorField::kFieldRef);
}

void SVMModelData::AddCategoricalPredictor(std::string& name, std::string& value, double coefficient) {
    AddFieldRef(name, value);
    fVectorFieldKinds.back() = SVMVectorField::kCategoricalPredictor;
    fVectorFields.back()->coefficient = coefficient;
}

void SVMModelData::AddVectorInstance(const std::string& id, const std::vector<std::int32_t>& indices,
                                     const std::vector<double>& values) {
    if (id.empty() || indices.empty() || indices.size() != values.size())
        return;
    const auto place = fVectorInstances.try_emplace(id);
    if (!place.second)
        return;
    auto instance = std::make_unique<SVMVectorInstance>();
    instance->indices.reserve(indices.size());
    for (const std::int32_t index : indices)
        instance->indices.push_back(static_cast<std::int32_t>(std::int64_t{index} - 1));
    instance->values = values;
    place.first->second = std::move(instance);
}

}  // namespace KwBrevix_930
