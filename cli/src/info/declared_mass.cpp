#include "declared_mass.h"

#include "contents.h"

namespace cli {

namespace {

/// The kind of template that a reference of a kind places; `ztCAD_ElementNone` for kinds without mass.
std::int32_t templateKindOf(std::int32_t kind) {
  switch (kind) {
    case ztCAD_ElementTriangleRef:
      return ztCAD_ElementTmplTriangle;
    case ztCAD_ElementElementMipRef:
      return ztCAD_ElementTmplElementMIP;
    case ztCAD_ElementDetailRef:
      return ztCAD_ElementTmplDetail;
    case ztCAD_ElementStructureRef:
      return ztCAD_ElementTmplStructure;
    default:
      return ztCAD_ElementNone;
  }
}

constexpr std::int32_t templateKinds[] = {ztCAD_ElementTmplTriangle, ztCAD_ElementTmplElementMIP,
                                          ztCAD_ElementTmplDetail, ztCAD_ElementTmplStructure};

/// The kinds of elements that count where they are. A document's templates do not. Nested structures are all
/// in the list of structures, whether or not they are templates.
constexpr std::int32_t kindsWithMass[] = {
    ztCAD_ElementSphere,        ztCAD_ElementTriangle,  ztCAD_ElementElementMIP,
    ztCAD_ElementDetail,        ztCAD_ElementStructure, ztCAD_ElementTriangleRef,
    ztCAD_ElementElementMipRef, ztCAD_ElementDetailRef, ztCAD_ElementStructureRef};

}  // namespace

DeclaredMass& DeclaredMass::operator+=(const DeclaredMass& other) {
  total += other.total;
  elements += other.elements;
  unresolved += other.unresolved;
  return *this;
}

MassSum::MassSum(ztCAD_GMDDocument* document) {
  for (const std::int32_t kind : templateKinds)
    for (ztCAD_Base* element : elementsOf(document, kind))
      m_templates.emplace(Key(kind, nameOf(element)), element);  // the first of its name
  m_result = massIn(document);
}

template <typename Holder>
DeclaredMass MassSum::massIn(Holder* holder) {
  DeclaredMass sum;
  for (const std::int32_t kind : kindsWithMass)
    for (ztCAD_Base* element : elementsOf(holder, kind))
      sum += massOf(element);
  return sum;
}

DeclaredMass MassSum::massOf(ztCAD_Base* element) {
  const std::int32_t kind = ztCAD_getKind(element);
  const std::int32_t templateKind = templateKindOf(kind);
  if (templateKind != ztCAD_ElementNone) return massOfTemplate(element, templateKind);
  double mass = 0;
  if (ztCAD_getMIP(element, &mass, 1) > 0) return {mass, 1, 0};
  return isHolder(kind) ? massIn(element) : DeclaredMass();
}

DeclaredMass MassSum::massOfTemplate(ztCAD_Base* reference, std::int32_t templateKind) {
  const DeclaredMass notFound{0, 0, 1};
  if (!textOf(reference, ztCAD_getTemplateFile).empty()) return notFound;
  const Key key(templateKind, textOf(reference, ztCAD_getTemplateName));
  const auto element = m_templates.find(key);
  if (element == m_templates.end()) return notFound;
  const auto [known, isNew] = m_known.try_emplace(key, notFound);
  if (isNew) known->second = massOf(element->second);
  return known->second;
}

}  // namespace cli
