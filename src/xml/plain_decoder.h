#pragma once

#include <array>
#include <QString>
#include <string_view>

#include "../text/element_text.h"
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

  /// Decodes validated bytes.
  QString characters(std::string_view bytes) const;

  /// Decodes an attribute value and replaces its references, which it validates.
  QString withoutReferences(std::string_view value) const;

 private:
  bool m_isWindows1251 = false;
};

/// Shares one QString among equal short texts, such as tags, colours and empty comments: a cache of the last
/// text per slot.
class SharedTexts {
 public:
  /// @param ascii must stay valid as long as this object
  const QString& get(std::string_view ascii) {
    Entry& entry = m_entries[slotOf(ascii)];
    if (entry.bytes.size() != ascii.size() || !equalBytes(entry.bytes.data(), ascii.data(), ascii.size())) {
      entry.text = QString::fromLatin1(ascii.data(), static_cast<int>(ascii.size()));
      entry.bytes = ascii;
    }
    return entry.text;
  }

  /// Whether a text is likely to occur again: it is empty, or short with a letter at its end. Names with a
  /// counter end in a digit.
  static bool isWorthSharing(std::string_view ascii) {
    constexpr std::size_t longest = 16;
    return ascii.empty() || (ascii.size() <= longest && isLetter(ascii.back()));
  }

 private:
  struct Entry {
    std::string_view bytes;
    QString text;
  };
  static constexpr std::size_t entryCount = 256;

  static std::size_t slotOf(std::string_view bytes) {
    if (bytes.empty()) return 0;
    const auto first = static_cast<unsigned char>(bytes.front());
    const auto last = static_cast<unsigned char>(bytes.back());
    return (37U * first + 7U * last + bytes.size()) % entryCount;
  }

  std::array<Entry, entryCount> m_entries;
};

}  // namespace ztcad
