# kw_compile_options(target): language level, warnings, floating-point rules and sanitizers, the same for every target.
function(kw_compile_options target)
    target_compile_features(${target} PUBLIC cxx_std_20)
    set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
    target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
        $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/brevix>)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -ffp-contract=off)
    if(BREVIX_WARNINGS_AS_ERRORS)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    if(BREVIX_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=${BREVIX_SANITIZE} -fno-sanitize-recover=all
            -fno-omit-frame-pointer)
        target_link_options(${target} PUBLIC -fsanitize=${BREVIX_SANITIZE})
    endif()
endfunction()

# kw_precompile_headers(target headers...): where asked for, parses headers that most sources of a target include once
# for all of them.
function(kw_precompile_headers target)
    if(BREVIX_PRECOMPILE_HEADERS)
        target_precompile_headers(${target} PRIVATE ${ARGN} <algorithm> <cmath> <cstdint> <limits> <map> <memory> <optional>
            <sstream> <string> <string_view> <unordered_map> <vector>)
    endif()
endfunction()
