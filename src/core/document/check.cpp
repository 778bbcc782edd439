#include "check.h"

#include <algorithm>
#include <cstdint>
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

/// Names with different bits are different; only names that share a bit are compared.
template <typename Container>
bool namesAreUnique(const Container& elements) {
  std::vector<uint> hashes;
  hashes.reserve(elements.size());
  Bits seen(elements.size());
  Bits shared(elements.size());
  for (const auto& element : elements) {
    const uint hash = hashes.emplace_back(ztcad::NameHash()(element.name()));
    if (seen.has(hash)) shared.put(hash);
    seen.put(hash);
  }
  ztcad::NameCounter names;
  auto hash = hashes.begin();
  return std::all_of(elements.begin(), elements.end(), [&](const auto& element) {
    return !shared.has(*hash++) || names.isNew(element.name());
  });
}

}  // namespace

bool ztcad::passesCheck(const ztCAD_DocumentContent& content) {
  const bool templatesAreUnique =
      namesAreUnique(content.templateDetails) && namesAreUnique(content.templateStructures) &&
      namesAreUnique(content.templatePoints) && namesAreUnique(content.templateMipElements);
  if (!templatesAreUnique) return false;
  StructurePass pass;
  pass.markAll(content.structures);
  return std::all_of(content.structures.begin(), content.structures.end(),
                     [&pass](const ztCAD_Structure& structure) { return pass.passesCheck(structure); });
}
