#pragma once

#include <string>
#include <utility>

#include "../support/swallowed_exception.h"

namespace ztcad {

/// Runs the body of an exported function. Every exception, `std::bad_alloc` included, becomes the failure
/// value and is reported by `reportSwallowedException`: to the assertion log, except that memory exhaustion
/// is reported only to an installed writer. The body checks the pointers that it uses.
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

/// The same for functions without a result. What the body did before the exception remains.
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
