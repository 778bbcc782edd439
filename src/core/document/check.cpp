#include "check.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include "../../structure/structure_pass.h"
#include "../name_counter.h"
#include "document.h"

namespace {

/// A set of hash values with sixteen bits for each name. For a million names that is two megabytes, which fit
/// into the processor's caches; a table of the names does not.
class Bits {
 public:
  explicit Bits(std::size_t names) {
    std::size_t words = 1;
    while (16 * names > 64 * words)
      words *= 2;
    m_words.resize(words);
  }

  bool has(uint hash) const { return (m_words[indexOf(hash)] >> hash % 64 & 1) != 0; }
  void put(uint hash) { m_words[indexOf(hash)] |= std::uint64_t{1} << hash % 64; }

 private:
  std::size_t indexOf(uint hash) const { return hash / 64 & (m_words.size() - 1); }

  std::vector<std::uint64_t> m_words;  // their number is a power of two
};

/// Calls `visit` with each element whose name one before it has, until it returns false.
///
/// Names that ascend are all different. Otherwise only names that share a bit are compared.
/// @return whether all calls returned true
template <typename Container, typename Visit>
bool visitDuplicates(const Container& elements, Visit&& visit) {
  const ztCAD_Base* last = nullptr;
  const bool allAscend = std::all_of(elements.begin(), elements.end(), [&last](const auto& element) {
    const ztCAD_Base* const before = std::exchange(last, &element);
    return !before || element.shortName().isAfter(before->shortName());
  });
  if (allAscend) return true;
  std::vector<uint> hashes;
  hashes.reserve(elements.size());
  Bits seen(elements.size());
  Bits shared(elements.size());
  for (const auto& element : elements) {
    const uint hash = hashes.emplace_back(ztcad::NameHash()(element.shortName()));
    if (seen.has(hash)) shared.put(hash);
    seen.put(hash);
  }
  ztcad::NameCounter names;
  auto hash = hashes.begin();
  return std::all_of(elements.begin(), elements.end(), [&](const auto& element) {
    return !shared.has(*hash++) || names.isNew(element.shortName()) || visit(element);
  });
}

/// Calls `visit(container)` for the containers whose names must be different but may not be, until it returns
/// false.
template <typename Visit>
bool visitTemplates(const ztCAD_DocumentContent& content, ztcad::Names names, Visit&& visit) {
  if (!visit(content.templateDetails) || !visit(content.templateStructures)) return false;
  return names == ztcad::Names::Unique ||
         (visit(content.templatePoints) && visit(content.templateMipElements));
}

bool areTemplatesUnique(const ztCAD_DocumentContent& content, ztcad::Names names) {
  return visitTemplates(content, names, [](const auto& templates) {
    return visitDuplicates(templates, [](const auto& /*duplicate*/) { return false; });
  });
}

/// @param isKnown whether a structure is known to be sound
template <typename IsKnown>
bool areStructuresSound(const ztCAD_DocumentContent& content, const IsKnown& isKnown) {
  ztcad::StructurePass pass;
  pass.markAll(content.structures);
  return std::all_of(
      content.structures.begin(), content.structures.end(),
      [&](const ztCAD_Structure& structure) { return isKnown(structure) || pass.passesCheck(structure); });
}

}  // namespace

bool ztcad::passesCheck(const ztCAD_DocumentContent& content) {
  return areTemplatesUnique(content, Names::Any) &&
         areStructuresSound(content, [](const ztCAD_Structure& /*structure*/) { return false; });
}

bool ztcad::passesCheckAsRead(const ztCAD_DocumentContent& content, Names names) {
  return areTemplatesUnique(content, names) &&
         areStructuresSound(content, [](const ztCAD_Structure& structure) { return structure.readOk(); });
}

void ztcad::forEachDuplicate(const ztCAD_DocumentContent& content,
                             const std::function<void(const ztCAD_Base& element)>& visit, Names names) {
  visitTemplates(content, names, [&visit](const auto& templates) {
    return visitDuplicates(templates, [&visit](const auto& duplicate) {
      visit(duplicate);
      return true;
    });
  });
}
