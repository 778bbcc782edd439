#include "library_contents.h"

#include <algorithm>
#include <vector>

namespace benchmarks {

namespace {

/// Calls `list(kind, elements, capacity)`, which lists the elements of one kind, for every kind.
template <typename List>
std::vector<ztCAD_Base*> listAll(List list) {
  std::vector<ztCAD_Base*> all;
  for (std::int32_t kind = ztCAD_ElementDetail; kind <= ztCAD_ElementSphere; ++kind) {
    std::vector<ztCAD_Base*> elements(static_cast<std::size_t>(list(kind, nullptr, 0)));
    list(kind, elements.data(), static_cast<std::int32_t>(elements.size()));
    all.insert(all.end(), elements.begin(), elements.end());
  }
  return all;
}

std::size_t numbersOf(const ztCAD_Base* element) {
  const auto present = [](std::int32_t count) { return static_cast<std::size_t>(std::max(count, 0)); };
  std::size_t numbers = present(ztCAD_getLCS(element, nullptr, 0)) +
                        present(ztCAD_getPlacement(element, nullptr, 0)) +
                        present(ztCAD_getMIP(element, nullptr, 0));
  if (ztCAD_getColor(element, nullptr)) numbers += 3;
  if (ztCAD_getCenter(element, nullptr)) numbers += 3;
  if (const ztCAD_Vertices* const vertices = ztCAD_getVertices(element))
    numbers += vertices->coordinates().size();
  if (const ztCAD_Faces* const faces = ztCAD_getFaces(element)) numbers += faces->indices().size();
  return numbers;
}

void add(const std::vector<ztCAD_Base*>& elements, ContentSize& size) {
  for (ztCAD_Base* const element : elements) {
    ++size.elements;
    size.numbers += numbersOf(element);
    if (auto* const structure = dynamic_cast<ztCAD_commonStructure*>(element))
      add(listAll([&](auto... arguments) { return ztCAD_listStructure(structure, arguments...); }), size);
    else if (auto* const detail = dynamic_cast<ztCAD_cmnDetail*>(element))
      add(listAll([&](auto... arguments) { return ztCAD_listDetail(detail, arguments...); }), size);
  }
}

}  // namespace

ContentSize sizeOf(ztCAD_GMDDocument* document) {
  ContentSize size;
  add(listAll([&](auto... arguments) { return ztCAD_listDoc(document, arguments...); }), size);
  return size;
}

}  // namespace benchmarks
