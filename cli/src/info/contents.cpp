#include "contents.h"

namespace cli {

namespace {

template <typename List>
std::vector<ztCAD_Base*> listed(List list) {
  std::vector<ztCAD_Base*> elements(static_cast<std::size_t>(list(nullptr, 0)));
  if (!elements.empty()) list(elements.data(), static_cast<std::int32_t>(elements.size()));
  return elements;
}

bool isStructure(std::int32_t kind) {
  return kind == ztCAD_ElementStructure || kind == ztCAD_ElementTmplStructure;
}

bool isDetail(std::int32_t kind) { return kind == ztCAD_ElementDetail || kind == ztCAD_ElementTmplDetail; }

}  // namespace

const std::vector<std::int32_t>& allKinds() {
  static const std::vector<std::int32_t> kinds{
      ztCAD_ElementPoint,        ztCAD_ElementLine,           ztCAD_ElementSphere,
      ztCAD_ElementTriangle,     ztCAD_ElementElementMIP,     ztCAD_ElementDetail,
      ztCAD_ElementStructure,    ztCAD_ElementPointRef,       ztCAD_ElementLineRef,
      ztCAD_ElementTriangleRef,  ztCAD_ElementElementMipRef,  ztCAD_ElementDetailRef,
      ztCAD_ElementStructureRef, ztCAD_ElementTmplPoint,      ztCAD_ElementTmplLine,
      ztCAD_ElementTmplTriangle, ztCAD_ElementTmplElementMIP, ztCAD_ElementTmplDetail,
      ztCAD_ElementTmplStructure};
  return kinds;
}

std::vector<ztCAD_Base*> elementsOf(ztCAD_GMDDocument* document, std::int32_t kind) {
  return listed([&](ztCAD_Base** elements, std::int32_t capacity) {
    return ztCAD_listDoc(document, kind, elements, capacity);
  });
}

std::vector<ztCAD_Base*> elementsOf(ztCAD_Base* holder, std::int32_t kind) {
  const std::int32_t holderKind = ztCAD_getKind(holder);
  return listed([&](ztCAD_Base** elements, std::int32_t capacity) {
    if (isStructure(holderKind))
      return ztCAD_listStructure(reinterpret_cast<ztCAD_commonStructure*>(holder), kind, elements, capacity);
    if (isDetail(holderKind))
      return ztCAD_listDetail(reinterpret_cast<ztCAD_cmnDetail*>(holder), kind, elements, capacity);
    return std::int32_t{0};
  });
}

bool isHolder(std::int32_t kind) { return isStructure(kind) || isDetail(kind); }

}  // namespace cli
