# Toolchain: 64-bit Windows, cross-built by MinGW-w64 with POSIX threads; programs run under Wine.
# What the project links lies in BREVIX_WINDOWS_PREFIX, a variable or of the environment (scripts/windows-dependencies).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

if(NOT BREVIX_WINDOWS_PREFIX)
    set(BREVIX_WINDOWS_PREFIX "$ENV{BREVIX_WINDOWS_PREFIX}" CACHE PATH "Libraries built for Windows")
endif()
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES BREVIX_WINDOWS_PREFIX)
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32 "${BREVIX_WINDOWS_PREFIX}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Every module carries its own copy of the compiler's libraries.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_SHARED_LINKER_FLAGS_INIT -static)
set(CMAKE_MODULE_LINKER_FLAGS_INIT -static)

# The loader lies in the library folder of its package, outside PATH.
find_program(BREVIX_WINE NAMES wine64 PATHS /usr/lib/wine /usr/lib/x86_64-linux-gnu/wine)
if(BREVIX_WINE)
    set(CMAKE_CROSSCOMPILING_EMULATOR env WINEDEBUG=-all WINEDLLOVERRIDES=mscoree,mshtml,winedbg.exe= ${BREVIX_WINE})
endif()
