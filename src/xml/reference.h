#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace ztcad {

/// A reference in text or in an attribute value, from its "&" to its ";".
struct XmlReference {
  enum class Kind {
    Character,   ///< denotes `character`
    Entity,      ///< an entity that is not predefined: `name`
    NoName,      ///< ill-formed: a name is expected `length` bytes after the "&"
    IllFormed,   ///< ill-formed at the byte `length` bytes after the "&"
    Incomplete,  ///< the text ends before the reference does
  };
  Kind kind = Kind::Incomplete;
  char32_t character = 0;  ///< may be any UTF-16 unit, a surrogate or NUL included
  std::string_view name = {};
  std::size_t length = 0;  ///< in bytes, with "&" and ";"
};

/// The reference at the start of `text`, which starts with "&". A numeric reference beyond U+10FFFF that
/// fits 32 bits denotes its low 16 bits.
XmlReference referenceAtStart(std::string_view text);

/// Replaces the references of a value or text that holds well-formed ones only. References to entities that
/// are not predefined disappear.
/// @{
QString withoutReferences(std::string_view text);
void appendWithoutReferences(std::string_view text, std::string& out);
/// @}

/// Whether a text with well-formed references has nothing but whitespace once they are replaced.
bool isBlankWithReferences(std::string_view text);

}  // namespace ztcad
