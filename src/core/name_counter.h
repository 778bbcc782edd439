#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <QHash>
#include <QString>
#include <vector>

#include "vocabulary.h"

namespace ztcad {

/// Gives out names so that none occurs twice in one pass. The first bearer of a name keeps it, the next ones
/// get "_$1", "_$2", ... behind it. A new name is not compared with names that come later in the pass.
///
/// A flat table with open addressing holds hashes alone; the names stand in the order in which they came. That is how they lie
/// in memory, too: to let go of a million names in the order of their hashes takes longer than to find them. Names that were
/// made to have one hash (Qt's is easily turned back) are found through an ordered table instead, so that no document takes
/// quadratic time.
class NameCounter {
 public:
  static uint hashOf(const QString& name) { return qHash(name, static_cast<uint>(qGlobalQHashSeed())); }

  /// Makes room for so many names more.
  void expect(std::size_t count) {
    if (m_ordered.empty() && 2 * (m_names.size() + count) > m_slots.size()) resize(m_names.size() + count);
  }

  /// Has the name's place in the table brought near while there are others to be looked up: of a large table nearly every
  /// place is far.
  void prepare(const QString& name) const {
    if (m_slots.empty()) return;
    [[maybe_unused]] const Slot* const place = &m_slots[hashOf(name) & (m_slots.size() - 1)];
#if defined(__GNUC__)
    __builtin_prefetch(place, 1);
#endif
  }

  /// Whether the name was not seen yet; from now on it was.
  bool isNew(const QString& name) { return find(name).isNew; }

  /// Nothing when the name was not seen yet (from now on it was), else a new one made from it.
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
    unsigned next;  // the counter that the next bearer gets
  };

  struct Slot {
    uint hash = 0;
    uint next = 0;  // index behind that of the name; 0: the slot is free
  };

  struct Found {
    std::size_t index;  // among the names
    bool isNew;
  };

  /// The name's entry, made where there is none; half of all slots are always free.
  Found find(const QString& name) {
    expect(1);
    if (!m_ordered.empty()) return findInOrder(name);
    constexpr std::size_t farthest = 256;  // several times the longest way among a million names of any kind
    const uint hash = hashOf(name);
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t way = 0; way < farthest; ++way) {
      Slot& slot = m_slots[(hash + way) & mask];
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
    m_names.push_back({name, 1});
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

  std::vector<Name> m_names;                 // in the order in which they were first seen
  std::vector<Slot> m_slots;                 // a power of two of them
  std::map<QString, std::size_t> m_ordered;  // takes the place of all slots once it holds a name
};

/// Gives the element a new name if its name is taken.
template <typename Element>
void renameIfTaken(Element& element, NameCounter& counter) {
  if (const auto newName = counter.newNameFor(element.name())) element.setName(*newName);
}

/// Renames the duplicates of one container of named elements, in its order.
template <typename Container>
void renameDuplicates(Container& elements, NameCounter& counter) {
  counter.expect(elements.size());
  auto ahead = elements.begin();
  const auto prepareNext = [&] {
    if (ahead != elements.end()) counter.prepare((ahead++)->name());
  };
  constexpr int distance = 16;
  for (int i = 0; i < distance; ++i)
    prepareNext();
  for (auto& element : elements) {
    prepareNext();
    renameIfTaken(element, counter);
  }
}

}  // namespace ztcad
