// The one export macro: classes and functions that carry it are visible outside the plug-in library, all else is hidden.
#pragma once

#if defined(_WIN32)
#if defined(BREVIX_SVM_BUILDING)
#define KW_EXPORT __declspec(dllexport)
#else
#define KW_EXPORT __declspec(dllimport)
#endif
#else
#define KW_EXPORT __attribute__((visibility("default")))
#endif
