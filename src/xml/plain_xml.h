#pragma once

#include <cstddef>
#include <functional>
#include <limits>
#include <string_view>

#include "element_view.h"

namespace ztcad {

/// How bytes are decoded.
enum class XmlBytes {
  AsDeclared,  ///< as the XML declaration says; UTF-8 without one
  Utf8,        ///< as UTF-8, whatever the declaration says
};

/// Bytes of the longest text that is read: Qt counts in int, and a QString takes two bytes a character.
constexpr std::size_t longestXml = std::numeric_limits<int>::max() / 2 - 64;

/// Reads XML from its bytes, without a tree and without copies of long texts, if it is plain, as programs write it:
/// UTF-8 or windows-1251; elements, attributes, text, comments, the five predefined entities and numeric references; no
/// document type, CDATA section or processing instruction.
///
/// The views give what `parseXml` and a `DomView` give, many times faster. The function refuses whatever it is not sure
/// about (ill-formed text, nesting too deep, rare forms of any kind); the whole text must then be parsed into a tree.
///
/// @param visit called with the root element; must take the whole of each `text()` that it asks for
/// @return false for a text that is not plain; the results of `visit` must then be discarded
bool readPlainXml(std::string_view bytes, XmlBytes kind,
                  const std::function<void(const ElementView& root)>& visit);

}  // namespace ztcad
