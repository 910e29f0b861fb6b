#pragma once

/// XOV_EXPORT marks what the shared library exports; everything else stays hidden. XOV_STATIC says that the library
/// is, or is linked as, a static one, and comes with its CMake target and pkg-config file; XOV_BUILDING that it is
/// being compiled.
#if defined(_WIN32) || defined(__CYGWIN__)
#if defined(XOV_STATIC)
#define XOV_EXPORT
#elif defined(XOV_BUILDING)
#define XOV_EXPORT __declspec(dllexport)
#else
#define XOV_EXPORT __declspec(dllimport)
#endif
#elif defined(__GNUC__) && !defined(XOV_STATIC)
#define XOV_EXPORT __attribute__((visibility("default")))
#else
#define XOV_EXPORT
#endif
