#pragma once

#include <string_view>

#include "document.h"
#include "file.h"

namespace ztcad {

/// Makes the names in the document unique and writes the file, as `writeTextFile` does. A file longer than
/// `longestXml`, which would not load again, is refused.
FileError saveDocument(ztCAD_GMDDocument& document, std::string_view fileName);

}  // namespace ztcad
