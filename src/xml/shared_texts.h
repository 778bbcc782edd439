#pragma once

#include <array>
#include <cstddef>
#include <QString>
#include <string_view>

#include "plain_characters.h"

namespace ztcad {

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
