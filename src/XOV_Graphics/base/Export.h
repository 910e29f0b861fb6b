#pragma once

/// Marks what the shared library exports; everything else stays hidden.
#if defined(_WIN32)
#define XOV_EXPORT __declspec(dllexport)
#else
#define XOV_EXPORT __attribute__((visibility("default")))
#endif
