// The models of this folder that score as their tables say; README.md tells where each table comes from.
#pragma once

#include <string>

namespace exporter_models {

inline constexpr const char* kAll[] = {
    "alternate_on_model",
    "fields_of_version_two",
    "intervals",
    "kernel_defaults_polynomial",
    "kernel_defaults_radialbasis",
    "kernel_defaults_sigmoid",
    "knime_own_machines",
    "knime_two_machines",
    "ksvm_cars_polynomial",
    "ksvm_iris_radial",
    "ksvm_iris_tanh",
    "prefixed_names",
    "py_linear_one_against_all",
    "py_rest_ensemble",
    "r_chickwts_unscaled",
    "r_infert_probability",
    "r_iris_polynomial",
    "r_iris_probability",
    "r_iris_radial",
    "r_warpbreaks_factors",
    "thresholds_largest",
    "thresholds_smallest",
    "treatments",
    "usage_types",
    "verified_classes",
    "zero_vector_absent",
    "zero_vector_dense",
    "zero_vector_empty",
};

inline std::string FolderOf(const std::string& model) {
    return BREVIX_SOURCE_DIR "/tests/scoring/" + model;
}

}  // namespace exporter_models
