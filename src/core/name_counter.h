#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <QHash>
#include <QString>
#include <vector>

#include "renames.h"
#include "vocabulary.h"

namespace ztcad {

/// Qt's hash of a name, with the seed of the process.
struct NameHash {
  uint operator()(const QString& name) const {
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    return qHash(name, static_cast<uint>(qGlobalQHashSeed()));
#else
    return static_cast<uint>(qHash(name, QHashSeed::globalSeed()));
#endif
  }
};

/// Makes names unique within one pass. The first element with a name keeps it; "_$1", "_$2", ... are appended
/// to the names of the next ones. A new name is not compared with names that come later in the pass.
///
/// A flat table with open addressing holds the hashes; the names are stored in insertion order, in which they
/// are also freed: freeing a million names in hash order costs more than finding them. If many names collide
/// (the hash of Qt 5 is easily inverted, so a document may be crafted that way), an ordered map replaces the
/// table, so that no document takes quadratic time.
///
/// @tparam Hash a function object; tests replace it
template <typename Hash>
class BasicNameCounter {
 public:
  /// Reserves space for `count` further names.
  void expect(std::size_t count) {
    if (m_ordered.empty() && 2 * (m_names.size() + count) > m_slots.size()) resize(m_names.size() + count);
  }

  /// Prefetches the name's slot while other names are looked up: in a large table nearly every access is a
  /// cache miss.
  void prefetch(const QString& name) const {
    if (m_slots.empty()) return;
    [[maybe_unused]] const Slot* const slot = &m_slots[Hash()(name) & (m_slots.size() - 1)];
#if defined(__GNUC__)
    __builtin_prefetch(slot, 1);
#endif
  }

  /// Whether the name is seen for the first time; marks it as seen.
  bool isNew(const QString& name) { return find(name).isNew; }

  /// The new name for an element whose name was seen before; std::nullopt, with the name marked as seen, if
  /// it was not.
  std::optional<QString> newNameFor(const QString& name) {
    const Found found = find(name);
    if (found.isNew) return std::nullopt;
    QString made = name + words().nameSeparator + QString::number(m_names[found.index].next++);
    m_names[find(made).index].next = 1;
    return made;
  }

 private:
  struct Name {
    QString text;
    unsigned next = 1;  // the counter for the next element of this name
  };

  struct Slot {
    uint hash = 0;
    uint next = 0;  // index of the name plus 1; 0: the slot is free
  };

  struct Found {
    std::size_t index;  // among the names
    bool isNew;
  };

  /// Finds or inserts the name. At least half of all slots are always free.
  Found find(const QString& name) {
    expect(1);
    if (!m_ordered.empty()) return findInOrder(name);
    constexpr std::size_t longestProbe =
        256;  // several times the longest probe among a million names of any kind
    const uint hash = Hash()(name);
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t probe = 0; probe < longestProbe; ++probe) {
      Slot& slot = m_slots[(hash + probe) & mask];
      if (slot.next == 0) {
        const std::size_t index = append(name);
        slot = {hash, static_cast<uint>(m_names.size())};
        return {index, true};
      }
      const std::size_t index = slot.next - 1;
      if (slot.hash == hash && m_names[index].text == name) return {index, false};
    }
    for (std::size_t index = 0; index < m_names.size(); ++index)
      m_ordered.emplace(m_names[index].text, index);
    m_slots = {};
    return findInOrder(name);
  }

  Found findInOrder(const QString& name) {
    const auto [entry, isNew] = m_ordered.emplace(name, m_names.size());
    if (isNew) append(name);
    return {entry->second, isNew};
  }

  std::size_t append(const QString& name) {
    m_names.push_back({name});
    return m_names.size() - 1;
  }

  void resize(std::size_t count) {
    std::size_t size = 16;
    while (size < 2 * count)
      size *= 2;
    m_names.reserve(size / 2);
    std::vector<Slot> former(size);
    former.swap(m_slots);
    for (const Slot& slot : former) {
      if (slot.next == 0) continue;
      std::size_t at = slot.hash & (size - 1);
      while (m_slots[at].next != 0)
        at = (at + 1) & (size - 1);
      m_slots[at] = slot;
    }
  }

  std::vector<Name> m_names;                 // in insertion order
  std::vector<Slot> m_slots;                 // their number is a power of two
  std::map<QString, std::size_t> m_ordered;  // once not empty, replaces the slots
};

using NameCounter = BasicNameCounter<NameHash>;

/// Gives the element a new name if its name is taken.
template <typename Element, typename Named>
void renameIfTaken(Element& element, NameCounter& counter, Renames<Named>& renames) {
  if (const auto newName = counter.newNameFor(element.name())) renames.rename(element, *newName);
}

/// Renames the duplicates in a container of named elements, in container order.
template <typename Container, typename Named>
void renameDuplicates(Container& elements, NameCounter& counter, Renames<Named>& renames) {
  counter.expect(elements.size());
  auto ahead = elements.begin();
  const auto prefetchNext = [&] {
    if (ahead != elements.end()) counter.prefetch((ahead++)->name());
  };
  constexpr int distance = 16;
  for (int i = 0; i < distance; ++i)
    prefetchNext();
  for (auto& element : elements) {
    prefetchNext();
    renameIfTaken(element, counter, renames);
  }
}

}  // namespace ztcad
