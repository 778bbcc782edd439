#pragma once

#include <string>
#include <utility>

#include "../support/swallowed_exception.h"

namespace ztcad {

/// Runs the body of an exported function: every exception, memory included, becomes the failure value and a line in the
/// assertion log. The body tests the pointers that it uses.
template <typename Result, typename Body>
Result guarded(Result onFailure, Body&& body, const char* function = __builtin_FUNCTION(),
               unsigned line = __builtin_LINE()) noexcept {
  try {
    return std::forward<Body>(body)();
  } catch (...) {
    reportSwallowedException(function, line);
    return onFailure;
  }
}

/// The same for functions without a result: they did nothing, or as much as they could.
template <typename Body>
void guarded(Body&& body, const char* function = __builtin_FUNCTION(),
             unsigned line = __builtin_LINE()) noexcept {
  try {
    std::forward<Body>(body)();
  } catch (...) {
    reportSwallowedException(function, line);
  }
}

/// The text of a zero-terminated argument; null counts as empty.
inline const char* textOf(const char* text) { return text ? text : ""; }
inline const std::string& textOf(const std::string& text) { return text; }

}  // namespace ztcad
