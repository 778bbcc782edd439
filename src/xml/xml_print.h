#pragma once

#include <QDomDocument>
#include <string>

namespace ztcad {

/// Prints a tree in UTF-8, in the layout of `QDomDocument::toString(indent)`, but with attributes and
/// notations in the order of their names. A character that the encoding named in the tree's XML declaration
/// lacks becomes one numeric reference (also beyond U+FFFF); without a known encoding all characters are
/// written directly. In text and values, unpaired surrogates and the characters at which parsers stop
/// (U+0000, U+FFFE, U+FFFF) become numeric references.
///
/// @param tree   a tree built by `parseXml`: text inside elements only, no namespace processing
/// @param indent spaces per level, not negative
std::string printXml(const QDomDocument& tree, int indent);

}  // namespace ztcad
