# Finds LAPACK's C interface, which brings no configuration for CMake everywhere: the target lapacke::lapacke.
find_path(lapacke_INCLUDE_DIR lapacke.h)
find_library(lapacke_LIBRARY lapacke)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(lapacke REQUIRED_VARS lapacke_LIBRARY lapacke_INCLUDE_DIR)
if(lapacke_FOUND AND NOT TARGET lapacke::lapacke)
    add_library(lapacke::lapacke UNKNOWN IMPORTED)
    set_target_properties(lapacke::lapacke PROPERTIES IMPORTED_LOCATION ${lapacke_LIBRARY}
        INTERFACE_INCLUDE_DIRECTORIES ${lapacke_INCLUDE_DIR})
    if(WIN32)
        # A static library does not name what it needs.
        target_link_libraries(lapacke::lapacke INTERFACE lapack blas gfortran quadmath)
        get_filename_component(folder ${lapacke_LIBRARY} DIRECTORY)
        target_link_directories(lapacke::lapacke INTERFACE ${folder})
    endif()
endif()
mark_as_advanced(lapacke_INCLUDE_DIR lapacke_LIBRARY)
