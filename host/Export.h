// Visibility of the host library's classes and functions.
#pragma once

#if defined(_WIN32)
#if defined(BREVIX_HOST_BUILDING)
#define BREVIX_HOST_API __declspec(dllexport)
#else
#define BREVIX_HOST_API __declspec(dllimport)
#endif
#else
#define BREVIX_HOST_API __attribute__((visibility("default")))
#endif
