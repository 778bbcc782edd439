#pragma once

#include <QDomDocument>
#include <string>

namespace ztcad {

/// The text of a tree, in UTF-8, laid out as `QDomDocument::toString(indent)` does, but with attributes and
/// notations in the order of their names. A character that the encoding named in the tree's XML declaration
/// lacks is a numeric reference (also beyond U+FFFF); without a known encoding every character is written as
/// it is. Half a surrogate pair and the characters at which parsers stop (U+0000, U+FFFE, U+FFFF) are numeric
/// references in text and values.
///
/// @param tree   a tree as `parseXml` makes it: text inside elements only, no namespace processing
/// @param indent blanks per level, not negative
std::string printXml(const QDomDocument& tree, int indent);

}  // namespace ztcad
