#pragma once

#include <array>
#include <cstddef>
#include <map>
#include <QString>
#include <string_view>

#include "plain_characters.h"

namespace ztcad {

/// Shares one QString among equal short texts, such as comments and names of files: a cache of the last
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

/// One QString for each different tag of a document, which stays where it is. Documents of the format have
/// some twenty tags; after `most`, others have none.
class TagTexts {
 public:
  /// Null if there is no room for another one.
  const QString* find(std::string_view ascii) {
    const auto known = m_texts.find(ascii);
    if (known != m_texts.end()) return &known->second;
    constexpr std::size_t most = 256;
    if (m_texts.size() == most) return nullptr;
    return &m_texts.emplace(ascii, QString::fromLatin1(ascii.data(), static_cast<int>(ascii.size())))
                .first->second;
  }

 private:
  std::map<std::string_view, QString> m_texts;  // the keys lie in the document
};

}  // namespace ztcad
