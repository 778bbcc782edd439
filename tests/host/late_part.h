#pragma once

#if defined(_WIN32)
#define LATE_PART_API __declspec(dllexport)
#else
#define LATE_PART_API [[gnu::visibility("default")]]
#endif

/// A shared object of a host, which knows nothing of the library: it calls back when its own static objects are
/// destroyed. Linked behind the library, it goes down after it.
extern "C" LATE_PART_API void callWhenThisPartGoes(void (*call)());
