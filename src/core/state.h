#pragma once

#include <cstdint>
#include <QString>

#include "../support/export.h"

/// @file
/// The state of a document, as its header has it.

/// What a header says about its document: a code, or nothing.
struct ZTCAD_API ztCAD_State {
  bool isSet = false;      ///< whether `code` holds anything
  std::uint32_t code = 1;  ///< 0 ok, 1 unknown, 2 warning, 3 error; any other value is kept as it is

  /// " state=" and the word of the code; "no Value" for a state that is not set, "unknown value" for another
  /// code.
  QString toText() const;
};
