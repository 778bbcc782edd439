#include "reference.h"

#include "../core/review.h"
#include "../core/vocabulary.h"
#include "../xml/element_sink.h"
#include "../xml/element_view.h"
#include "detail.h"
#include "structure.h"

using ztcad::words;

template <typename Template>
ztCAD_commonRef<Template>::ztCAD_commonRef()
    : m_lcs(false, {}), m_archetype(std::make_unique<ztCAD_gArche>()) {}

template <typename Template>
ztCAD_commonRef<Template>::ztCAD_commonRef(const QString& name, const ztCAD_LCS& lcs, const Template& source,
                                           bool& nameIsFree)
    : ztCAD_Base(name, nameIsFree),
      m_lcs(false, lcs.values()),
      m_archetype(std::make_unique<ztCAD_gArche>()) {
  m_archetype->setTemplateName(source.name());
}

template <typename Template>
ztCAD_commonRef<Template>::ztCAD_commonRef(const ztCAD_commonRef& other)
    : ztCAD_Base(other),
      ztCAD_INode(other),
      ztCAD_ISerialize(other),
      m_lcs(other.m_lcs),
      m_archetype(std::make_unique<ztCAD_gArche>(*other.m_archetype)) {}

template <typename Template>
ztCAD_commonRef<Template>& ztCAD_commonRef<Template>::operator=(const ztCAD_commonRef& other) {
  ztCAD_Base::operator=(other);
  m_lcs = other.m_lcs;
  *m_archetype = *other.m_archetype;
  return *this;
}

template <typename Template>
ztCAD_commonRef<Template>::~ztCAD_commonRef() = default;

// Out of line, small as they are: a DLL does not export inline members of explicit instances, which hosts
// that are built without optimisation call.
template <typename Template>
const ztCAD_LCS& ztCAD_commonRef<Template>::lcs() const {
  return m_lcs;
}

template <typename Template>
const ztCAD_gArche& ztCAD_commonRef<Template>::archetype() const {
  return *m_archetype;
}

template <typename Template>
ztCAD_gArche& ztCAD_commonRef<Template>::archetype() {
  return *m_archetype;
}

template <typename Template>
void ztCAD_commonRef<Template>::setArchetype(const ztCAD_gArche& archetype) {
  *m_archetype = archetype;
}

template <typename Template>
void ztCAD_commonRef<Template>::setLcs(const ztCAD_LCS& lcs) {
  m_lcs = ztCAD_LCS(false, lcs.values());
}

template <typename Template>
QString& ztCAD_commonRef<Template>::toText(QString& out, bool debugForm) const {
  out += elementName() + QLatin1String("( ") + words().mcs + QLatin1String("=(");
  m_lcs.toText(out, debugForm);
  out += QLatin1String("), ");
  property().toText(out, debugForm);
  out += QLatin1String(", ");
  return m_archetype->toText(out, debugForm);
}

template <typename Template>
void ztCAD_commonRef<Template>::write(ztcad::ElementSink& parent) const {
  parent.element(elementName(), [this](ztcad::ElementSink& element) {
    m_lcs.write(element);
    property().write(element);
    m_archetype->write(element);
  });
}

template <typename Template>
bool ztCAD_commonRef<Template>::read(const ztcad::ElementView& element, bool& fault) {
  {
    const ztcad::Tolerated tolerated(element);
    property().read(element, fault);
  }
  ztCAD_LCS placement(false, {});
  if (placement.read(element, fault)) m_lcs = placement;
  m_archetype->read(element, fault);
  return true;
}

template class ztCAD_commonRef<ztCAD_TmplPoint>;
template class ztCAD_commonRef<ztCAD_TmplLine>;
template class ztCAD_commonRef<ztCAD_TmplTriangle>;
template class ztCAD_commonRef<ztCAD_TmplElementMIP>;
template class ztCAD_commonRef<ztCAD_TmplDetail>;
template class ztCAD_commonRef<ztCAD_TmplStructure>;

ztCAD_DetailRef::ztCAD_DetailRef(const QString& name, const ztCAD_LCS& lcs, const ztCAD_TmplDetail& source,
                                 bool& nameIsFree)
    : ztCAD_commonRef(name, lcs, source, nameIsFree) {
  setLcs(ztCAD_LCS());
}

QString ztCAD_PointRef::elementName() const { return words().pointRef; }
QString ztCAD_LineRef::elementName() const { return words().lineRef; }
QString ztCAD_TriangleRef::elementName() const { return words().solidRef; }
QString ztCAD_ElementMipRef::elementName() const { return words().elementMipRef; }
QString ztCAD_DetailRef::elementName() const { return words().detailRef; }
QString ztCAD_StructureRef::elementName() const { return words().structureRef; }
