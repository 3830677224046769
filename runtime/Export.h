// Visibility of the embedded host's classes and functions.
#pragma once

#if defined(_WIN32)
#if defined(BREVIX_RUNTIME_BUILDING)
#define BREVIX_RUNTIME_API __declspec(dllexport)
#else
#define BREVIX_RUNTIME_API __declspec(dllimport)
#endif
#else
#define BREVIX_RUNTIME_API __attribute__((visibility("default")))
#endif
