#pragma once

/// Whether nodes of one list share memory. In a build with the address sanitizer each is an allocation of its
/// own.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool isPooled = false;
#else
constexpr bool isPooled = true;
#endif
