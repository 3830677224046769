# Installs libraries, program, headers (the tree as it is, under include/brevix/) and the CMake package.
include(CMakePackageConfigHelpers)

install(TARGETS brevix_host brevix_svm brevix_runtime brevix EXPORT brevix-targets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
foreach(folder host numerics runtime)
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/${folder} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/brevix
        FILES_MATCHING PATTERN "*.h" PATTERN platform EXCLUDE)
endforeach()
install(FILES ${PROJECT_SOURCE_DIR}/plugin/entry_point.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/brevix/plugin)
install(FILES ${PROJECT_SOURCE_DIR}/svm/SVMRegResult.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/brevix/svm)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/brevix)
install(EXPORT brevix-targets NAMESPACE brevix:: DESTINATION ${package_folder})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/brevix-config.cmake.in
    ${PROJECT_BINARY_DIR}/brevix-config.cmake INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/brevix-config-version.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/brevix-config.cmake ${PROJECT_BINARY_DIR}/brevix-config-version.cmake
    DESTINATION ${package_folder})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples/ DESTINATION ${CMAKE_INSTALL_DATADIR}/brevix/examples
    PATTERN generate EXCLUDE PATTERN CMakeLists.txt EXCLUDE PATTERN check_quotes.sh EXCLUDE)

if(PROJECT_IS_TOP_LEVEL)
    set(CPACK_GENERATOR ZIP)
    set(CPACK_PACKAGE_VENDOR Brevix)
    set(CPACK_STRIP_FILES ON)
    include(CPack)
endif()
