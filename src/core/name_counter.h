#pragma once

#include <map>
#include <optional>
#include <QHash>
#include <QString>
#include <utility>
#include <vector>

#include "vocabulary.h"

namespace ztcad {

/// Gives out names so that none occurs twice in one pass. The first bearer of a name keeps it, the next ones
/// get "_$1", "_$2", ... behind it. A new name is not compared with names that come later in the pass.
///
/// The names stand in one flat table with open addressing: with a million of them, the memory of a QHash and the way
/// through it take longer than all the rest. Names that were made to have one hash (Qt's is easily turned back) go into an
/// ordered table instead, so that no document takes quadratic time.
class NameCounter {
 public:
  static uint hashOf(const QString& name) { return qHash(name, static_cast<uint>(qGlobalQHashSeed())); }

  /// Makes room for so many names more.
  void expect(std::size_t count) {
    if (m_ordered.empty() && 2 * (m_used + count) > m_slots.size()) resize(m_used + count);
  }

  /// Whether the name was not seen yet; from now on it was.
  bool isNew(const QString& name) {
    expect(1);
    Slot& slot = slotOf(name);
    if (slot.next != 0) return false;
    take(slot, name);
    return true;
  }

  /// Nothing when the name was not seen yet (from now on it was), else a new one made from it.
  std::optional<QString> newNameFor(const QString& name) {
    expect(1);
    Slot& slot = slotOf(name);
    if (slot.next == 0) {
      take(slot, name);
      return std::nullopt;
    }
    QString made = name + words().nameSeparator + QString::number(slot.next++);
    Slot& ofMade = slotOf(made);
    if (ofMade.next == 0) take(ofMade, made);
    ofMade.next = 1;
    return made;
  }

 private:
  struct Slot {
    QString name;
    uint hash = 0;
    unsigned next = 0;  // the counter that the next bearer gets; 0: the slot is free
  };

  /// The slot of the name or the free one that it may take; half of all slots are always free.
  Slot& slotOf(const QString& name) {
    if (!m_ordered.empty()) return m_ordered[name];
    constexpr std::size_t farthest = 256;  // several times the longest way among a million names of any kind
    const uint hash = hashOf(name);
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t way = 0; way < farthest; ++way) {
      Slot& slot = m_slots[(hash + way) & mask];
      if (slot.next != 0 && (slot.hash != hash || slot.name != name)) continue;
      slot.hash = hash;
      return slot;
    }
    putInOrder();
    return m_ordered[name];
  }

  void putInOrder() {
    for (Slot& slot : m_slots) {
      if (slot.next == 0) continue;
      const QString name = slot.name;
      m_ordered.emplace(name, std::move(slot));
    }
    m_slots = {};
  }

  void take(Slot& slot, const QString& name) {
    slot.name = name;
    slot.next = 1;
    ++m_used;
  }

  void resize(std::size_t count) {
    std::size_t size = 16;
    while (size < 2 * count)
      size *= 2;
    std::vector<Slot> former(size);
    former.swap(m_slots);
    for (Slot& slot : former) {
      if (slot.next == 0) continue;
      std::size_t at = slot.hash & (size - 1);
      while (m_slots[at].next != 0)
        at = (at + 1) & (size - 1);
      m_slots[at] = std::move(slot);
    }
  }

  std::vector<Slot> m_slots;          // a power of two of them
  std::map<QString, Slot> m_ordered;  // takes the place of all slots once it holds a name
  std::size_t m_used = 0;
};

template <typename Element>
void renameDuplicate(Element& element, NameCounter& counter) {
  if (const auto newName = counter.newNameFor(element.name())) element.setName(*newName);
}

template <typename Element>
void renameDuplicate(Element* element, NameCounter& counter) {
  renameDuplicate(*element, counter);
}

/// Renames the duplicates of one container of named elements, or of pointers to such (none of them null), in
/// its order.
template <typename Container>
void renameDuplicates(Container& elements, NameCounter& counter) {
  counter.expect(elements.size());
  for (auto& element : elements)
    renameDuplicate(element, counter);
}

}  // namespace ztcad
