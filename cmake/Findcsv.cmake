# Finds libcsv, which brings no configuration of its own: the target csv::csv.
find_path(csv_INCLUDE_DIR csv.h)
find_library(csv_LIBRARY csv)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(csv REQUIRED_VARS csv_LIBRARY csv_INCLUDE_DIR)
if(csv_FOUND AND NOT TARGET csv::csv)
    add_library(csv::csv UNKNOWN IMPORTED)
    set_target_properties(csv::csv PROPERTIES IMPORTED_LOCATION ${csv_LIBRARY}
        INTERFACE_INCLUDE_DIRECTORIES ${csv_INCLUDE_DIR})
endif()
mark_as_advanced(csv_INCLUDE_DIR csv_LIBRARY)
