#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <QHash>
#include <QString>
#include <vector>

#include "../text/short_text.h"
#include "ascending_names.h"
#include "numbered_name.h"
#include "renames.h"

namespace ztcad {

/// A hash with the seed of the process. Short names have one of their own, which takes two multiplications;
/// every character decides on all bits that a table uses. The others have Qt's.
struct NameHash {
  uint operator()(const ztCAD_ShortText& name) const {
    if (!name.isShort()) return qtHash(name.longOne());
    const auto [first, last] = name.words();
    const quint64 mixed = (first ^ seed()) * 0x9e3779b97f4a7c15U;
    const quint64 sum = (mixed ^ (mixed >> 32)) + last;
    return static_cast<uint>(((sum ^ (sum >> 32)) * 0xd6e8feb86659fd93U) >> 32);
  }

 private:
  static quint64 seed() { return static_cast<quint64>(qtSeed()) * 0xa0761d6478bd642fU; }
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
  static uint qtSeed() { return static_cast<uint>(qGlobalQHashSeed()); }
  static uint qtHash(const QString& name) { return qHash(name, qtSeed()); }
#else
  static std::size_t qtSeed() { return QHashSeed::globalSeed(); }
  static uint qtHash(const QString& name) { return static_cast<uint>(qHash(name, qtSeed())); }
#endif
};

/// Makes names unique within one pass. The first element with a name keeps it; "_$1", "_$2", ... are appended
/// to the names of the next ones. A new name is not compared with names that come later in the pass.
///
/// As long as the names are different and come in a few ascending runs, as numbered ones usually do, they are
/// only listed (`AscendingNames`). The first name that does not fit makes a flat table with open addressing
/// of them, which holds the hashes; the names stay in insertion order, in which they are also freed: freeing
/// a million names in hash order costs more than finding them. The table holds only names that elements had:
/// a made name is known from the counter of the name that it was made of. If many names collide (the hash of
/// Qt 5 is easily inverted, so a document may be crafted that way), an ordered map replaces the table, so
/// that no document takes quadratic time.
///
/// @tparam Hash a function object; tests replace it
template <typename Hash>
class BasicNameCounter {
 public:
  /// Reserves space for `count` further names.
  void expect(std::size_t count) {
    if (m_isAscending) return reserve(m_ascending, count);
    reserve(m_names, count);
    const std::size_t needed = m_names.size() + count;
    if (m_ordered.empty() && 2 * needed > m_slots.size()) resize(needed);
  }

  /// Takes a new name of an ascending run. False, with nothing taken, if it is none, or if an earlier one was
  /// none.
  bool takeAscending(const ztCAD_ShortText& name) {
    if (!m_isAscending) return false;
    if (m_ascending.take(name)) return true;
    beginTable();
    return false;
  }

  /// The hash of a name, for `newNameFor`. Prefetches its slot while other names are looked up: in a large
  /// table nearly every access is a cache miss.
  uint prefetch(const ztCAD_ShortText& name) const {
    const uint hash = Hash()(name);
    if (m_slots.empty()) return hash;
    [[maybe_unused]] const Slot* const slot = &m_slots[hash & (m_slots.size() - 1)];
#if defined(__GNUC__)
    __builtin_prefetch(slot, 1);
#endif
    return hash;
  }

  /// Whether the name is seen for the first time; marks it as seen.
  bool isNew(const ztCAD_ShortText& name) { return takeAscending(name) || find(name, Hash()(name)).isNew; }

  /// The new name for an element whose name was seen before; std::nullopt, with the name marked as seen, if
  /// it was not.
  /// @{
  std::optional<ztCAD_ShortText> newNameFor(const ztCAD_ShortText& name) {
    return takeAscending(name) ? std::nullopt : newNameFor(name, Hash()(name));
  }
  /// Only after `takeAscending` was false.
  std::optional<ztCAD_ShortText> newNameFor(const ztCAD_ShortText& name, uint hash) {
    const Found found = find(name, hash);
    if (found.isNew) return std::nullopt;
    Counter& counter = m_counters[found.index];
    const unsigned number = counter.next++;
    counter.greatestMade = std::max(counter.greatestMade, number);
    const ztCAD_ShortText made = textOf(name, number);
    if (m_hasNumberedNames) restart(made);
    return made;
  }
  /// @}

 private:
  struct Slot {
    uint hash = 0;
    uint next = 0;  // index of the name plus 1; 0: the slot is free
  };

  struct Found {
    std::size_t index;  // among the names
    bool isNew;
  };

  /// Of a name that an element had.
  struct Counter {
    unsigned next = 1;          // for the next element of the name
    unsigned greatestMade = 0;  // of the names that were made of it
  };

  /// Grows to twice the size at least, so that many calls take linear time.
  template <typename Names>
  static void reserve(Names& names, std::size_t count) {
    const std::size_t needed = names.size() + count;
    if (names.capacity() < needed) names.reserve(std::max(needed, 2 * names.size()));
  }

  void beginTable() {
    m_isAscending = false;
    m_names = m_ascending.takeAll();
    m_counters.resize(m_names.size());
    m_hasNumberedNames = std::any_of(m_names.begin(), m_names.end(), numberedNameOf);
    resize(m_names.size() + 1);
    for (std::size_t index = 0; index < m_names.size(); ++index)
      if (!insert({Hash()(m_names[index]), static_cast<uint>(index + 1)})) return beginOrder();
  }

  /// Replaces the table by the map.
  void beginOrder() {
    for (std::size_t index = 0; index < m_names.size(); ++index)
      m_ordered.emplace(m_names[index].toString(), index);
    m_slots = {};
  }

  /// Finds or inserts the name. At least half of all slots are always free.
  Found find(const ztCAD_ShortText& name, uint hash) {
    expect(1);
    if (m_ordered.empty()) {
      if (Slot* const slot = slotFor(name, hash)) {
        if (slot->next != 0) return {slot->next - 1, false};
        const Found found = append(name);
        *slot = {hash, static_cast<uint>(m_names.size())};
        return found;
      }
      beginOrder();
    }
    const auto [entry, isInserted] = m_ordered.emplace(name.toString(), m_names.size());
    return isInserted ? append(name) : Found{entry->second, false};
  }

  /// The place of the name; std::nullopt if no element had it.
  std::optional<std::size_t> indexOf(const ztCAD_ShortText& name, uint hash) {
    if (!m_ordered.empty()) {
      const auto entry = m_ordered.find(name.toString());
      return entry != m_ordered.end() ? std::optional(entry->second) : std::nullopt;
    }
    const Slot* const slot = slotFor(name, hash);
    return slot && slot->next != 0 ? std::optional<std::size_t>(slot->next - 1) : std::nullopt;
  }

  /// A name that is made again begins to count again.
  void restart(const ztCAD_ShortText& made) {
    if (const auto index = indexOf(made, Hash()(made))) m_counters[*index].next = 1;
  }

  /// The slot of the name, or the free one that it would take; null if too many names collide.
  Slot* slotFor(const ztCAD_ShortText& name, uint hash) {
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t probe = 0; probe < longestProbe; ++probe) {
      Slot& slot = m_slots[(hash + probe) & mask];
      if (slot.next == 0 || (slot.hash == hash && m_names[slot.next - 1] == name)) return &slot;
    }
    return nullptr;
  }

  /// Takes the name of an element, the first one that has it. It is new unless it was made for another one.
  Found append(const ztCAD_ShortText& name) {
    bool isNew = true;
    if (const auto numbered = numberedNameOf(name)) {
      m_hasNumberedNames = true;
      const auto index = indexOf(numbered->name, Hash()(numbered->name));
      isNew = !index || m_counters[*index].greatestMade < numbered->number;
    }
    m_names.push_back(name);
    m_counters.emplace_back();
    return {m_names.size() - 1, isNew};
  }

  void resize(std::size_t count) {
    std::size_t size = 16;
    while (size < 2 * count)
      size *= 2;
    std::vector<Slot> former(size);
    former.swap(m_slots);
    for (const Slot& slot : former)
      if (slot.next != 0 && !insert(slot)) return beginOrder();
  }

  /// False, with nothing inserted, if too many names collide.
  bool insert(const Slot& inserted) {
    for (std::size_t probe = 0; probe < longestProbe; ++probe) {
      Slot& slot = m_slots[(inserted.hash + probe) & (m_slots.size() - 1)];
      if (slot.next != 0) continue;
      slot = inserted;
      return true;
    }
    return false;
  }

  /// Several times the longest probe among a million names of any kind.
  static constexpr std::size_t longestProbe = 256;

  bool m_isAscending = true;
  AscendingNames m_ascending;                // while they ascend, they are here alone
  std::vector<ztCAD_ShortText> m_names;      // in insertion order
  std::vector<Counter> m_counters;           // of the names
  bool m_hasNumberedNames = false;           // whether one has the form of a made one
  std::vector<Slot> m_slots;                 // their number is a power of two
  std::map<QString, std::size_t> m_ordered;  // once not empty, replaces the slots
};

using NameCounter = BasicNameCounter<NameHash>;

/// Gives the element a new name if its name is taken.
template <typename Element, typename Named>
void renameIfTaken(Element& element, NameCounter& counter, Renames<Named>& renames) {
  if (const auto newName = counter.newNameFor(element.shortName())) renames.rename(element, *newName);
}

/// Renames the duplicates in a container of named elements, in container order.
template <typename Container, typename Named>
void renameDuplicates(Container& elements, NameCounter& counter, Renames<Named>& renames) {
  counter.expect(elements.size());
  auto element = elements.begin();
  while (element != elements.end() && counter.takeAscending(element->shortName()))
    ++element;
  constexpr std::size_t distance = 16;
  std::array<uint, distance> hashes = {};  // of the next elements
  auto ahead = element;
  const auto prefetch = [&](std::size_t place) {
    if (ahead != elements.end()) hashes[place] = counter.prefetch((ahead++)->shortName());
  };
  for (std::size_t i = 0; i < distance; ++i)
    prefetch(i);
  for (std::size_t place = 0; element != elements.end(); ++element, place = (place + 1) % distance) {
    const auto newName = counter.newNameFor(element->shortName(), hashes[place]);
    prefetch(place);
    if (newName) renames.rename(*element, *newName);
  }
}

}  // namespace ztcad
