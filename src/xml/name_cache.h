#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <QString>
#include <string>
#include <string_view>
#include <vector>

namespace ztcad {

/// The names of attributes and elements that a writer has met, each encoded once and with its place in the
/// order of names. A name is recognised by the address of its characters, which the copies of a QString
/// share: the words of a format are found without comparing texts.
class NameCache {
 public:
  using Index = std::uint32_t;

  /// Looks a name up and adds it if it is new. Indices are valid until `trim`.
  /// @param encode returns the bytes of a name, called once for each
  template <typename Encode>
  Index find(const QString& name, Encode&& encode) {
    Slot& slot = m_recent[slotOf(name.constData())];
    if (slot.address == name.constData()) return slot.name;
    const auto known = m_indices.find(name);
    const Index index = known != m_indices.end() ? known->second : add(name, encode(name));
    slot = {name.constData(), name, index};
    return index;
  }

  /// The name, encoded.
  std::string_view bytes(Index name) const {
    const std::string& start = m_names[name].attributeStart;
    return std::string_view(start).substr(1, start.size() - 3);
  }
  /// The start of an attribute: ` name="`.
  std::string_view attributeStart(Index name) const { return m_names[name].attributeStart; }
  /// The place of a name among all names found so far.
  std::uint32_t rank(Index name) {
    if (m_ranked < m_names.size()) rankAll();
    return m_names[name].rank;
  }

  /// Forgets all names if there are more than a format has.
  /// @return whether it did
  bool trim() {
    const bool isFull = m_names.size() > most;
    if (isFull) clear();
    return isFull;
  }

 private:
  struct Name {
    QString text;
    std::string attributeStart;
    std::uint32_t rank;
  };

  struct Slot {
    const void* address = nullptr;
    QString text;  // keeps the address
    Index name = 0;
  };

  static constexpr std::size_t most = 256;
  static constexpr std::size_t slotCount = 256;

  /// Characters of different names are at least 32 bytes apart.
  static std::size_t slotOf(const void* address) {
    const auto number = reinterpret_cast<std::uintptr_t>(address);
    return ((number >> 5) ^ (number >> 13)) % slotCount;
  }

  Index add(const QString& name, const std::string& bytes);
  void rankAll();
  void clear();

  std::vector<Name> m_names;
  std::map<QString, Index> m_indices;  // no hash: names of a hostile document could all have the same
  std::array<Slot, slotCount> m_recent;
  std::size_t m_ranked = 0;  // this many names have their ranks
};

}  // namespace ztcad
