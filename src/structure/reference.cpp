#include "reference.h"

#include <algorithm>
#include <iterator>

#include "../core/review.h"
#include "../core/vocabulary.h"
#include "../property/kept_text.h"
#include "../property/system_values.h"
#include "../support/made_once.h"
#include "../xml/element_sink.h"
#include "../xml/element_view.h"
#include "detail.h"
#include "structure.h"

using ztcad::words;

template <typename Template>
ztCAD_commonRef<Template>::ztCAD_commonRef() = default;

template <typename Template>
ztCAD_commonRef<Template>::ztCAD_commonRef(const QString& name, const ztCAD_LCS& lcs, const Template& source,
                                           bool& nameIsFree)
    : ztCAD_Base(name, nameIsFree) {
  setLcs(lcs);
  m_templateName = source.shortName();
}

// delegates, so that what the assignment has allocated is freed if it fails
template <typename Template>
ztCAD_commonRef<Template>::ztCAD_commonRef(const ztCAD_commonRef& other) : ztCAD_commonRef() {
  *this = other;
}

template <typename Template>
ztCAD_commonRef<Template>& ztCAD_commonRef<Template>::operator=(const ztCAD_commonRef& other) {
  if (this == &other) return *this;
  ztCAD_Base::operator=(other);
  const Objects* const source = other.madeObjects();
  if (source || madeObjects()) {
    objects() = source ? *source : *other.newObjects();
  } else {
    std::copy(std::begin(other.m_values), std::end(other.m_values), m_values);
    m_hasValues = other.m_hasValues;
    m_templateName = other.m_templateName;
  }
  return *this;
}

template <typename Template>
ztCAD_commonRef<Template>::~ztCAD_commonRef() {
  delete madeObjects();
}

template <typename Template>
typename ztCAD_commonRef<Template>::Objects* ztCAD_commonRef<Template>::madeObjects() const {
  return m_objects.load(std::memory_order_acquire);
}

template <typename Template>
std::unique_ptr<typename ztCAD_commonRef<Template>::Objects> ztCAD_commonRef<Template>::newObjects() const {
  auto made = std::make_unique<Objects>();
  made->lcs.setValues({placementData(), placementData() + placementSize()});
  made->archetype.setTemplateName(m_templateName.toString());
  return made;
}

template <typename Template>
typename ztCAD_commonRef<Template>::Objects& ztCAD_commonRef<Template>::objects() const {
  return ztcad::madeOnce(m_objects, [this] { return newObjects(); });
}

// Out of line, small as they are: a DLL does not export inline members of explicit instances, which hosts
// that are built without optimisation call.
template <typename Template>
const ztCAD_LCS& ztCAD_commonRef<Template>::lcs() const {
  return objects().lcs;
}

template <typename Template>
const ztCAD_gArche& ztCAD_commonRef<Template>::archetype() const {
  return objects().archetype;
}

template <typename Template>
ztCAD_gArche& ztCAD_commonRef<Template>::archetype() {
  return objects().archetype;
}

template <typename Template>
void ztCAD_commonRef<Template>::setArchetype(const ztCAD_gArche& archetype) {
  if (madeObjects() || !archetype.file().isEmpty())
    objects().archetype = archetype;
  else
    m_templateName = ztCAD_ShortText(archetype.templateName());
}

template <typename Template>
const double* ztCAD_commonRef<Template>::placementData() const {
  const Objects* const made = madeObjects();
  return made ? made->lcs.values().data() : m_values;
}

template <typename Template>
std::size_t ztCAD_commonRef<Template>::placementSize() const {
  if (const Objects* const made = madeObjects()) return made->lcs.values().size();
  return m_hasValues ? std::size(m_values) : 0;
}

template <typename Template>
void ztCAD_commonRef<Template>::setLcs(const ztCAD_LCS& lcs) {
  const std::vector<double>& values = lcs.values();
  const bool isUsual = values.empty() || values.size() == std::size(m_values);
  if (madeObjects() || !isUsual) {
    objects().lcs = ztCAD_LCS(false, values);
  } else {
    std::copy(values.begin(), values.end(), m_values);
    m_hasValues = !values.empty();
  }
}

template <typename Template>
QString ztCAD_commonRef<Template>::templateName() const {
  const Objects* const made = madeObjects();
  return made ? made->archetype.templateName() : m_templateName.toString();
}

template <typename Template>
void ztCAD_commonRef<Template>::setTemplateName(const QString& name) {
  if (Objects* const made = madeObjects())
    made->archetype.setTemplateName(name);
  else
    m_templateName = ztCAD_ShortText(name);
}

template <typename Template>
QString ztCAD_commonRef<Template>::file() const {
  const Objects* const made = madeObjects();
  return made ? made->archetype.file() : QString();
}

template <typename Template>
void ztCAD_commonRef<Template>::setFile(const QString& file) {
  if (madeObjects() || !file.isEmpty()) objects().archetype.setFile(file);
}

template <typename Template>
QString& ztCAD_commonRef<Template>::toText(QString& out, bool debugForm) const {
  const Objects* const present = madeObjects();
  const std::unique_ptr<Objects> made = present ? nullptr : newObjects();
  const Objects& values = present ? *present : *made;
  out += elementName() + QLatin1String("( ") + words().mcs + QLatin1String("=(");
  values.lcs.toText(out, debugForm);
  out += QLatin1String("), ");
  property().toText(out, debugForm);
  out += QLatin1String(", ");
  return values.archetype.toText(out, debugForm);
}

template <typename Template>
void ztCAD_commonRef<Template>::write(ztcad::ElementSink& parent) const {
  parent.element(elementName(), [this](ztcad::ElementSink& element) {
    ztcad::writeSystem(element, words().mcs, placementData(), placementData() + placementSize());
    property().write(element);
    if (const Objects* const made = madeObjects()) return made->archetype.write(element);
    element.shortAttribute(words().templateName, m_templateName);
    element.plainAttribute(words().file, {});
  });
}

template <typename Template>
bool ztCAD_commonRef<Template>::read(const ztcad::ElementView& element, bool& fault) {
  {
    const ztcad::Tolerated tolerated(element);
    property().read(element, fault);
  }
  fault = false;
  double values[ztCAD_LCS::valueCount];
  const bool hasPlacement = ztcad::readSystem(element, words().mcs, values);
  const ztCAD_ShortText templateName = ztcad::readKeptText(element, words().templateName);
  const ztCAD_ShortText file = ztcad::readKeptText(element, words().file);
  if (madeObjects() || !file.isEmpty()) {
    Objects& made = objects();
    if (hasPlacement) made.lcs.setValues({std::begin(values), std::end(values)});
    made.archetype.setTemplateName(templateName.toString());
    made.archetype.setFile(file.toString());
  } else {
    if (hasPlacement) std::copy(std::begin(values), std::end(values), m_values);
    m_hasValues = m_hasValues || hasPlacement;
    m_templateName = templateName;
  }
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
