#include "element_list.h"

#include <array>

#include "../info/contents.h"

namespace cli {

namespace {

constexpr std::size_t kindCount = 23;

/// The tag that a save writes an element of a kind with.
const char* tagOf(std::int32_t kind) {
  switch (kind) {
    case ztCAD_ElementDetail:
      return "detail";
    case ztCAD_ElementTmplDetail:
      return "template_detail";
    case ztCAD_ElementStructure:
      return "structure";
    case ztCAD_ElementTmplStructure:
      return "template_structure";
    case ztCAD_ElementDetailRef:
      return "detailRef";
    case ztCAD_ElementStructureRef:
      return "structureRef";
    case ztCAD_ElementPoint:
      return "point";
    case ztCAD_ElementTmplPoint:
      return "templatePoint";
    case ztCAD_ElementPointRef:
      return "pointRef";
    case ztCAD_ElementLine:
      return "line";
    case ztCAD_ElementTmplLine:
      return "templateLine";
    case ztCAD_ElementLineRef:
      return "lineRef";
    case ztCAD_ElementElementMIP:
      return "elementMIP";
    case ztCAD_ElementTmplElementMIP:
      return "templateElementMIP";
    case ztCAD_ElementElementMipRef:
      return "elementMipRef";
    case ztCAD_ElementTmplTriangle:
      return "templateSolid";
    case ztCAD_ElementTriangleRef:
      return "solidRef";
    default:
      return "solid";
  }
}

/// A mass-inertia element without data is not written.
bool isWritten(const ztCAD_Base* element, std::int32_t kind) {
  const bool isMassElement = kind == ztCAD_ElementElementMIP || kind == ztCAD_ElementTmplElementMIP;
  return !isMassElement || ztCAD_getMIP(element, nullptr, 0) >= 0;
}

}  // namespace

ElementList::ElementList(ztCAD_GMDDocument* document) {
  add(document, none);
  m_indices.reserve(m_elements.size());
  for (std::size_t i = 0; i < m_elements.size(); ++i)
    m_indices.emplace(m_elements[i].element, static_cast<std::int64_t>(i));
}

template <typename Holder>
void ElementList::add(Holder* holder, std::int64_t parent) {
  std::array<std::int64_t, kindCount> numbers{};
  for (const std::int32_t listKind : allKinds())
    for (ztCAD_Base* element : elementsOf(holder, listKind)) {
      const auto index = static_cast<std::int64_t>(m_elements.size());
      const std::int32_t kind = ztCAD_getKind(element);
      // spheres come before triangulated solids, and both have the same tag
      const std::int32_t counted = kind == ztCAD_ElementSphere ? std::int32_t{ztCAD_ElementTriangle} : kind;
      const std::int64_t number =
          isWritten(element, kind) ? ++numbers.at(static_cast<std::size_t>(counted)) : 0;
      m_elements.push_back({element, listKind, parent, tagOf(kind), number});
      if (isHolder(listKind)) add(element, index);
    }
}

std::int64_t ElementList::find(const ztCAD_Base* element) const {
  const auto found = m_indices.find(element);
  return found == m_indices.end() ? none : found->second;
}

}  // namespace cli
