// The links between a structure and the structures nested in it.

#include <algorithm>

#include "../xml/xml_outcome.h"
#include "kinds.h"
#include "read_structures.h"

namespace {

bool abandoned = false;

/// Levels of XML elements that the elements of a content struct take. Details are measured: the table has
/// their maximum.
template <typename Content>
int levelsOf(const Content& content) {
  int levels = 0;
  ztcad::visitKinds<Content>([&](auto kind) {
    using Kind = decltype(kind);
    const auto& elements = Kind::in(content);
    if constexpr (std::is_same_v<Kind, ztcad::kinds::details>) {
      for (const ztCAD_Detail& detail : elements)
        levels = std::max(levels, 1 + levelsOf(detail.content()));
    } else if (!elements.empty()) {
      levels = std::max(levels, Kind::levels);
    }
  });
  return levels;
}

constexpr int levelsOfRoot = 1;

}  // namespace

void ztcad::abandonNestedStructures(bool nowAbandoned) { abandoned = nowAbandoned; }

ztCAD_commonStructure::~ztCAD_commonStructure() {
  if (abandoned) return;
  releaseNested();
  leaveHolders();
}

int ztCAD_commonStructure::levelsBelow(KnownLevels& known) const {
  const auto [entry, isNew] = known.emplace(this, 0);
  if (!isNew) return entry->second;
  int below = levelsOf(m_content);
  for (const auto& [nested, place] : m_entries)
    below = std::max(below, nested->levelsBelow(known));
  return known[this] = 1 + below;
}

int ztCAD_commonStructure::levelsAbove(KnownLevels& known) const {
  const auto [entry, isNew] = known.emplace(this, 0);
  if (!isNew) return entry->second;
  int above = levelsOfRoot;
  for (const auto& [holder, entries] : m_holders)
    above = std::max(above, holder->levelsAbove(known));
  return known[this] = 1 + above;
}

bool ztCAD_commonStructure::hasRoomFor(int levels) const {
  KnownLevels known;
  return levelsAbove(known) + levels <= ztcad::maximalDepth;
}

bool ztCAD_commonStructure::addStructure(ztCAD_commonStructure& structure) {
  KnownLevels known;
  const int levels = structure.levelsBelow(known);
  const bool closesRing = known.count(this) == 1;
  if (closesRing || !hasRoomFor(levels)) return true;
  hold(structure);
  return false;
}

bool ztCAD_commonStructure::removeStructure(const void* address) {
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): a key to compare with
  auto* const structure = static_cast<ztCAD_commonStructure*>(const_cast<void*>(address));
  const auto [first, last] = m_entries.equal_range(structure);
  if (first == last) return false;
  auto entry = first;
  if (std::next(first) != last) {
    const auto front = std::find(m_nested.begin(), m_nested.end(), structure);
    entry = std::find_if(first, last, [front](const auto& held) { return held.second == front; });
  }
  m_nested.erase(entry->second);
  m_entries.erase(entry);
  structure->forgetEntry(*this);
  return true;
}

void ztCAD_commonStructure::forgetEntry(ztCAD_commonStructure& holder) {
  const auto known = m_holders.find(&holder);
  if (known != m_holders.end() && --known->second == 0) m_holders.erase(known);
}

void ztCAD_commonStructure::hold(ztCAD_commonStructure& structure) {
  ++structure.m_holders[this];
  try {
    m_nested.add(&structure);
    m_entries.emplace(&structure, std::prev(m_nested.end()));
  } catch (...) {
    if (m_nested.size() > m_entries.size()) m_nested.erase(std::prev(m_nested.end()));
    structure.forgetEntry(*this);
    throw;
  }
}

void ztCAD_commonStructure::holdAllOf(const ztCAD_commonStructure& other) {
  try {
    for (ztCAD_commonStructure* const nested : other.m_nested)
      hold(*nested);
  } catch (...) {
    releaseNested();  // a constructor that throws runs no destructor
    throw;
  }
}

void ztCAD_commonStructure::releaseNested() {
  for (const auto& [nested, place] : m_entries)
    nested->m_holders.erase(this);
  m_entries.clear();
  m_nested.clear();
}

void ztCAD_commonStructure::leaveHolders() {
  for (const auto& [holder, count] : m_holders) {
    const auto [first, last] = holder->m_entries.equal_range(this);
    for (auto entry = first; entry != last; ++entry)
      holder->m_nested.erase(entry->second);
    holder->m_entries.erase(first, last);
  }
  m_holders.clear();
}
