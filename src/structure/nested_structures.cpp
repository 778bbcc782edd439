// Who holds whom: the pointers between a structure and the structures nested in it.

#include <algorithm>

#include "../xml/xml_parse.h"
#include "structure.h"

namespace {

bool abandoned = false;

int levelsOf(const ztCAD_Detail& detail) {
  const ztCAD_DetailContent& content = detail.content();
  if (!content.triangles.empty() || !content.lines.empty()) return 3;  // detail, solid, vertices
  return content.points.empty() && content.spheres.empty() ? 1 : 2;
}

/// How many levels of elements what a structure holds by value takes below it.
int levelsOf(const ztCAD_StructureContent& content) {
  int deepestDetail = 0;
  for (const ztCAD_Detail& detail : content.details)
    deepestDetail = std::max(deepestDetail, levelsOf(detail));
  if (deepestDetail > 1) return deepestDetail;
  if (!content.triangles.empty() || !content.lines.empty()) return 2;
  const bool isEmpty = content.details.empty() && content.points.empty() && content.spheres.empty() &&
                       content.mipElements.empty() && content.structureReferences.empty() &&
                       content.detailReferences.empty() && content.pointReferences.empty() &&
                       content.lineReferences.empty() && content.mipReferences.empty() &&
                       content.triangleReferences.empty();
  return isEmpty ? 0 : 1;
}

constexpr int levelsOfRoot = 1;

}  // namespace

void ztcad::abandonNestedStructures(bool nowAbandoned) { abandoned = nowAbandoned; }

ztCAD_commonStructure::~ztCAD_commonStructure() {
  if (abandoned) return;
  letNestedGo();
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
  for (const ztCAD_commonStructure* holder : m_holders)
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
  const auto entry = std::find_if(m_entries.begin(), m_entries.end(),
                                  [address](const auto& held) { return held.first == address; });
  if (entry == m_entries.end()) return false;
  ztCAD_commonStructure* const structure = entry->first;
  m_nested.erase(entry->second);
  m_entries.erase(entry);
  if (m_entries.count(structure) == 0) structure->m_holders.erase(this);
  return true;
}

void ztCAD_commonStructure::hold(ztCAD_commonStructure& structure) {
  const bool isNewHolder = structure.m_holders.insert(this).second;
  try {
    m_nested.add(&structure);
    m_entries.emplace(&structure, std::prev(m_nested.end()));
  } catch (...) {
    if (m_nested.size() > m_entries.size()) m_nested.erase(std::prev(m_nested.end()));
    if (isNewHolder) structure.m_holders.erase(this);
    throw;
  }
}

void ztCAD_commonStructure::holdAllOf(const ztCAD_commonStructure& other) {
  try {
    for (ztCAD_commonStructure* const nested : other.m_nested)
      hold(*nested);
  } catch (...) {
    letNestedGo();  // a constructor that fails runs no destructor
    throw;
  }
}

void ztCAD_commonStructure::letNestedGo() {
  for (const auto& [nested, place] : m_entries)
    nested->m_holders.erase(this);
  m_entries.clear();
  m_nested.clear();
}

void ztCAD_commonStructure::leaveHolders() {
  for (ztCAD_commonStructure* const holder : m_holders) {
    const auto [first, last] = holder->m_entries.equal_range(this);
    for (auto entry = first; entry != last; ++entry)
      holder->m_nested.erase(entry->second);
    holder->m_entries.erase(first, last);
  }
  m_holders.clear();
}
