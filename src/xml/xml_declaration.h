#pragma once

#include <string>
#include <string_view>

#include "xml_cursor.h"

namespace ztcad {

/// The XML declaration as an instruction, as Qt's parser reports it: `version`, `encoding` and `standalone`
/// in single quotes. A declaration with an empty version is reported by its last attribute instead.
struct XmlDeclaration {
  std::string target;
  std::string data;
};

/// Reads the XML declaration after its "<?xml".
XmlDeclaration readXmlDeclaration(XmlCursor& cursor);

/// The encoding that the data of an XML declaration names, found as QDom finds it; empty without one.
std::string encodingIn(std::string_view data);

}  // namespace ztcad
