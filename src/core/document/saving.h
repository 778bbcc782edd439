#pragma once

#include <string>

#include "document.h"
#include "file.h"

namespace ztcad {

/// Makes the names in the document unique and writes the file.
FileError saveDocument(ztCAD_GMDDocument& document, const std::string& fileName);

}  // namespace ztcad
