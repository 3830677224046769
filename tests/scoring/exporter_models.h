// The models of this folder that score as their tables say; README.md tells where each table comes from.
#pragma once

#include <string>

namespace exporter_models {

inline constexpr const char* kAll[] = {
    "alternate_on_model",
    "categorical_predictors",
    "conditions",
    "conditions_missing",
    "defined_functions",
    "fields_of_version_two",
    "intervals",
    "kernel_defaults_polynomial",
    "kernel_defaults_radialbasis",
    "kernel_defaults_sigmoid",
    "knime_own_machines",
    "knime_two_machines",
    "ksvm_air_regression",
    "ksvm_cars_polynomial",
    "ksvm_iris_radial",
    "ksvm_iris_tanh",
    "mathematics",
    "no_target",
    "outer_transformations",
    "output_features",
    "pairs_without_method",
    "prefixed_names",
    "py_booleans",
    "py_dates",
    "py_imputer",
    "py_k_bins",
    "py_linear_one_against_all",
    "py_logarithms",
    "py_mining_model",
    "py_one_class",
    "py_one_hot",
    "py_ordinal",
    "py_polynomial_features",
    "py_rest_ensemble",
    "py_wine_scaled",
    "r_chickwts_unscaled",
    "r_infert_probability",
    "r_iris_polynomial",
    "r_iris_probability",
    "r_iris_radial",
    "r_mtcars_linear",
    "r_one_class",
    "r_toothgrowth_mixed",
    "r_warpbreaks_factors",
    "tables",
    "targets_ceiling",
    "targets_default",
    "targets_deviation",
    "targets_floor",
    "targets_round",
    "texts_and_dates",
    "thresholds_largest",
    "thresholds_smallest",
    "treatments",
    "usage_types",
    "verified_classes",
    "verified_numbers",
    "zero_vector_absent",
    "zero_vector_dense",
    "zero_vector_empty",
};

inline std::string FolderOf(const std::string& model) {
    return BREVIX_SOURCE_DIR "/tests/scoring/" + model;
}

}  // namespace exporter_models
