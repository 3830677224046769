# kw_instruction_set(avx2|avx512 sources...): adds to the plug-in sources that are compiled for an instruction set which
# may be there at run time, without fused multiply-add. Nothing on processors of other kinds.
function(kw_instruction_set set)
    if(NOT CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64|amd64)$")
        return()
    endif()
    set(avx2 -mavx2)
    set(avx512 -mavx512f)
    set(options ${${set}} -mpopcnt -mno-fma)
    # g++ for Windows takes its stack for aligned to 32 and 64 bytes, which it is not (GCC bug 54412).
    if(WIN32 AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        list(APPEND options -Wa,-muse-unaligned-vector-move)
    endif()
    target_sources(brevix_svm_objects PRIVATE ${ARGN})
    # Nothing of the standard library may be compiled for them.
    set_source_files_properties(${ARGN} TARGET_DIRECTORY brevix_svm_objects PROPERTIES COMPILE_OPTIONS "${options}"
        SKIP_PRECOMPILE_HEADERS ON SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()
