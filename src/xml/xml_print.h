#pragma once

#include <string>

#include "xml_text.h"

namespace ztcad {

/// Prints what an XML text holds as `QDomDocument::toString` of Qt 5.15 prints the tree of it, in UTF-8 and
/// with the improvements of `XmlWriter`. Characters that the declared encoding lacks become numeric
/// references. Of an ill-formed text, what comes before the error is printed; of a refused text nothing.
///
/// @param indent spaces per level, not negative
std::string printXml(const XmlText& text, int indent);

}  // namespace ztcad
