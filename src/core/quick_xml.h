#pragma once

#include <cstddef>
#include <functional>
#include <limits>
#include <string_view>

#include "element_view.h"

namespace ztcad {

/// How bytes are to be decoded.
enum class XmlBytes {
  AsDeclared,  ///< as the XML declaration says, UTF-8 without one
  Utf8,        ///< as UTF-8, whatever the declaration says
};

/// Bytes of the longest text that is read at all: Qt counts in int, and a character takes two bytes of a QString.
constexpr std::size_t longestXml = std::numeric_limits<int>::max() / 2 - 64;

/// Reads XML straight from its bytes, without a tree and without a copy of long texts, if it is of the plain kind that
/// programs write: UTF-8 or windows-1251; elements, attributes, text, comments, the five entities and numeric
/// references; no document type, CDATA section or processing instruction.
///
/// What it reads is what `parseXml` and a `DomView` would give, at many times their speed. Whatever it does not know for
/// certain is not its business: an ill-formed text, a nesting too deep, rare forms of any kind. It then answers false, and
/// the whole text has to be read in the other way.
///
/// @param visit is called with the root element. It has to look at the whole of each `text()` that it takes.
/// @return false for a text that is not of this kind; what `visit` has done until then is to be forgotten
bool readPlainXml(std::string_view bytes, XmlBytes kind,
                  const std::function<void(const ElementView& root)>& visit);

}  // namespace ztcad
