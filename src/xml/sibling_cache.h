#pragma once

#include <cstddef>
#include <limits>
#include <QString>
#include <string_view>
#include <vector>

namespace ztcad {

/// One attribute of a start tag, as bytes of the document.
struct PlainAttribute {
  std::string_view name;
  std::string_view value;
  quint64 key = 0;  // see keyOf
  bool hasReferences = false;
  bool isAscii = true;
  mutable bool isRead = false;  // kept for observers only

  /// The start of the name. A sibling's name is not parsed: `name` then lies in the start tag before.
  const char* position() const { return value.data() - std::string_view("=\"").size() - name.size(); }
};

struct PlainStartTag {
  std::string_view name;
  std::size_t firstAttribute;  // index into the reader's attributes
  std::size_t attributeEnd;
  bool isEmpty;
  const QString* text;  // of the name; null: the reader holds none
};

/// Remembers the last start tag and the attribute lookups made on it. Siblings in a long series usually
/// differ in their values only: the next start tag is then compared with the last one instead of being
/// parsed, and the same lookups return the same attributes without a search.
class SiblingCache {
 public:
  const PlainStartTag& last() const { return m_last; }
  /// The bytes of the last start tag, from its name to the closing ">".
  std::string_view lastBytes() const { return m_bytes; }

  /// Takes the start tag just read, which equals the last one except for its values; keeps the lookups.
  void keepSibling(std::string_view bytes) {
    m_last.name = bytes.substr(0, m_last.name.size());
    m_bytes = bytes;
    m_isSibling = true;
    m_nextLookup = 0;
  }

  /// Takes any other start tag; drops the lookups.
  void keep(const PlainStartTag& tag, std::string_view bytes) {
    m_last = tag;
    m_bytes = bytes;
    m_isSibling = false;
    m_lookups.clear();
    m_nextLookup = 0;
  }

  /// Returns the result of `search(tag, name)`, from the cache if the lookups on the element come in the same
  /// order as those on its siblings.
  template <typename Search>
  const PlainAttribute* find(const PlainStartTag& tag, const QString& name, Search&& search) {
    const bool isLast = tag.name.data() == m_last.name.data();
    if (isLast && m_nextLookup < m_lookups.size()) {
      const Lookup& lookup = m_lookups[m_nextLookup];
      if (lookup.name.constData() == name.constData()) {
        ++m_nextLookup;
        return lookup.result;
      }
    }
    const PlainAttribute* const found = search(tag, name);
    constexpr std::size_t most = 16;
    if (isLast && m_isSibling && m_nextLookup == m_lookups.size() && m_nextLookup < most) {
      m_lookups.push_back({name, found});
      ++m_nextLookup;
    }
    return found;
  }

 private:
  struct Lookup {
    QString name;
    const PlainAttribute* result;  // null: the element has no such attribute
  };

  static constexpr auto none = std::numeric_limits<std::size_t>::max();
  PlainStartTag m_last = {{}, none, none, false, nullptr};
  std::string_view m_bytes;
  bool m_isSibling = false;
  std::vector<Lookup> m_lookups;  // in the order in which they are made on each sibling
  std::size_t m_nextLookup = 0;
};

}  // namespace ztcad
