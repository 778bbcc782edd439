#pragma once

#if defined(_WIN32)
#define LATE_PART_API __declspec(dllexport)
#else
#define LATE_PART_API [[gnu::visibility("default")]]
#endif

/// A shared object of a host that does not use the library and calls back when its static objects are
/// destroyed. Linked after the library, it is destroyed after it.
extern "C" LATE_PART_API void callOnDestruction(void (*call)());
