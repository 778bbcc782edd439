#pragma once

#include <QString>
#include <string_view>

#include "../text/element_text.h"
#include "../text/text_limits.h"
#include "plain_characters.h"

namespace ztcad {

/// Validates and decodes the bytes of plain XML, UTF-8 or windows-1251. Throws `NotPlain`.
class PlainDecoder final : public TextDecoder {
 public:
  void useWindows1251() { m_isWindows1251 = true; }

  /// Validates and decodes a text or a part of one. A text with references or other markup is not plain.
  QString decoded(std::string_view part) const override {
    checkText(part);
    return characters(part);
  }

  /// Validates text between tags.
  void checkText(std::string_view text) const;
  /// Validates the inside of a comment.
  void checkComment(std::string_view text) const;
  /// Validates the bytes beyond ASCII. In UTF-8 the lead byte EF hex is refused: it starts the byte order
  /// mark and the characters U+FFFE and U+FFFF, at which Qt's parser stops.
  void checkNonAscii(std::string_view bytes) const;

  /// Decodes validated bytes. Those that only the general reader can count are not plain.
  QString characters(std::string_view bytes) const;

  /// The same for bytes that are ASCII.
  static QString ascii(std::string_view bytes) {
    require(bytes.size() <= limits.text);
    return QString::fromLatin1(bytes.data(), static_cast<int>(bytes.size()));
  }

  /// Decodes an attribute value and replaces its references, which it validates.
  QString withoutReferences(std::string_view value) const;

 private:
  bool m_isWindows1251 = false;
};

}  // namespace ztcad
