#pragma once

/// Marks what the shared library hands to its hosts. Everything else stays inside.
#if defined(_WIN32)
#if defined(ZTCAD_BUILDING_LIBRARY)
#define ZTCAD_API __declspec(dllexport)
#else
#define ZTCAD_API __declspec(dllimport)
#endif
/// Class templates of the public headers are made anew by each host; on ELF their type must be as visible as
/// the classes that are built on them.
#define ZTCAD_TEMPLATE_API
#else
#define ZTCAD_API __attribute__((visibility("default")))
#define ZTCAD_TEMPLATE_API __attribute__((visibility("default")))
#endif
