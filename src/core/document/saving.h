#pragma once

#include <string_view>

#include "document.h"
#include "file.h"

namespace ztcad {

/// Makes the names in the document unique and writes the file, as `writeTextFile` does. A document that would
/// not load again is refused: one nested deeper than `maximalDepth`, or with a text, a list or structures
/// beyond `limits`.
FileError saveDocument(ztCAD_GMDDocument& document, std::string_view fileName);
/// The same to another output.
FileError saveDocument(ztCAD_GMDDocument& document, ByteOutput& output);

}  // namespace ztcad
