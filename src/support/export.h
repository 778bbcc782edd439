#pragma once

/// @file
/// Symbol visibility of the shared library.

#if defined(_WIN32)
#if defined(ZTCAD_BUILDING_LIBRARY)
/// Exports a function or class from the library.
#define ZTCAD_API __declspec(dllexport)
#else
/// Imports a function or class of the library.
#define ZTCAD_API __declspec(dllimport)
#endif
/// Marks class templates of the public headers. Empty on Windows: each host instantiates them itself.
#define ZTCAD_TEMPLATE_API
#else
/// Exports a function or class from the library; everything else is hidden.
#define ZTCAD_API __attribute__((visibility("default")))
/// Marks class templates of the public headers. Each host instantiates them itself, but a template must be as
/// visible as the classes derived from it.
#define ZTCAD_TEMPLATE_API __attribute__((visibility("default")))
#endif

#if defined(__cplusplus)
/// Marks functions whose result must not be ignored.
#define ZTCAD_NODISCARD [[nodiscard]]
#else
#define ZTCAD_NODISCARD
#endif
