#pragma once

#include <string>
#include <utility>

namespace ztcad {

/// The door of every exported function: whatever is thrown inside, memory included, becomes the failure
/// value. The body sees only pointers that it tests itself.
template <typename Result, typename Body>
Result guarded(Result onFailure, Body&& body) noexcept {
  try {
    return std::forward<Body>(body)();
  } catch (...) {
    return onFailure;
  }
}

/// For functions without a result.
template <typename Body>
void guarded(Body&& body) noexcept {
  try {
    std::forward<Body>(body)();
  } catch (...) {
    // nothing to report it through: the function did nothing, or as much as it could
  }
}

/// The text of a zero-terminated argument; null counts as empty.
inline const char* textOf(const char* text) { return text ? text : ""; }
inline const std::string& textOf(const std::string& text) { return text; }

}  // namespace ztcad
