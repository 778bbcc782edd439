#pragma once

#include <cstdint>
#include <QString>

#include "../support/export.h"
#include "../support/qt_version.h"

/// @file
/// The state of a document.

/// The optional state code in a document's header.
struct ZTCAD_API ztCAD_State {
  bool isSet = false;      ///< whether there is a code
  std::uint32_t code = 1;  ///< 0 ok, 1 unknown, 2 warning, 3 error; any other value is stored unchanged

  /// " state=" and the word of the code; "no Value" without a code, "unknown value" for any code above 3.
  QString toText() const;
};
