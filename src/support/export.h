#pragma once

/// @file
/// What leaves the shared library, and what stays inside.

#if defined(_WIN32)
#if defined(ZTCAD_BUILDING_LIBRARY)
/// Marks what the library hands to its hosts.
#define ZTCAD_API __declspec(dllexport)
#else
/// Marks what the library hands to its hosts.
#define ZTCAD_API __declspec(dllimport)
#endif
/// Marks class templates of the public headers. Each host makes them anew: here they need nothing.
#define ZTCAD_TEMPLATE_API
#else
/// Marks what the library hands to its hosts. Everything else stays inside.
#define ZTCAD_API __attribute__((visibility("default")))
/// Marks class templates of the public headers. Each host makes them anew, but their type must be as visible as the
/// classes that are built on them.
#define ZTCAD_TEMPLATE_API __attribute__((visibility("default")))
#endif

#if defined(__cplusplus)
/// Marks functions whose result must not be ignored.
#define ZTCAD_NODISCARD [[nodiscard]]
#else
#define ZTCAD_NODISCARD
#endif
