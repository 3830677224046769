# kw_add_test(name sources...): one GoogleTest program; every TEST becomes one ctest test, where programs start fast.
# It links the plug-in's objects, so the tests reach its hidden classes too.
include(GoogleTest)

# The frameworks' headers, for all tests.
if(BREVIX_PRECOMPILE_HEADERS)
    file(WRITE ${PROJECT_BINARY_DIR}/test_headers.cpp "// Carries the headers that all tests share.\n")
    add_library(test_headers OBJECT ${PROJECT_BINARY_DIR}/test_headers.cpp)
    kw_compile_options(test_headers)
    target_compile_options(test_headers PRIVATE -Wno-restrict $<$<BOOL:${CMAKE_CROSSCOMPILING}>:-O0>)
    target_link_libraries(test_headers PRIVATE GTest::gmock)
    kw_precompile_headers(test_headers <gmock/gmock.h> <gtest/gtest.h> <filesystem> <fstream> <random> <thread>)
endif()

function(kw_add_test name)
    add_executable(${name} ${ARGN})
    kw_compile_options(${name})
    # g++ 12 at -O3 sees overlapping copies in `"literal" + string` where there are none (GCC bug 105651).
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        target_compile_options(${name} PRIVATE -Wno-restrict)
    endif()
    target_link_libraries(${name} PRIVATE brevix_svm_objects brevix_host GTest::gmock GTest::gtest_main)
    target_compile_definitions(${name} PRIVATE BREVIX_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
    if(BREVIX_PRECOMPILE_HEADERS)
        target_precompile_headers(${name} REUSE_FROM test_headers)
    endif()
    if(CMAKE_CROSSCOMPILING)
        # Tests of this size compile longer than they run.
        target_compile_options(${name} PRIVATE -O0)
        add_test(NAME ${name} COMMAND ${name} --gtest_brief=1)
        set_tests_properties(${name} PROPERTIES TIMEOUT 900)
        return()
    endif()
    gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 300)
endfunction()
