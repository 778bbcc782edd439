#pragma once

#include <string>

#include "document.h"
#include "file.h"

namespace ztcad {

/// Makes names unique, in the document too, and writes the file.
FileError saveDocument(ztCAD_GMDDocument& document, const std::string& fileName);

}  // namespace ztcad
