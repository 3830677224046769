// One column of the vector space.
#pragma once

#include <cstdint>
#include <string>

namespace KwBrevix_930 {

struct SVMVectorField {
    /// What a column is made of.
    enum VectorFieldType : std::int32_t { kFieldRef = 0, kCategoricalPredictor = 1 };

    /// The category index of a column whose value its variable cannot have: it equals no case's category.
    static constexpr std::int32_t kUnknownCategory = -2;

    std::string fieldName;
    /// Of a FieldRef column, the missing-value replacement text; of a CategoricalPredictor column, the category.
    std::string value;
    /// CategoricalPredictor columns only.
    double coefficient = 0.0;
    /// CategoricalPredictor columns only: the index of value among the variable's categories, set when a model takes
    /// over.
    std::int32_t categoryIndex = kUnknownCategory;
};

}  // namespace KwBrevix_930
