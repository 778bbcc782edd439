#include "base.h"

#include <utility>

#include "../core/name_registry.h"
#include "../core/vocabulary.h"
#include "../text/wide_utf8.h"
#include "../xml/element_sink.h"
#include "../xml/element_view.h"
#include "base_parts.h"
#include "shared_methods.h"

ztCAD_Base::ztCAD_Base(const QString& name, bool& nameIsFree) {
  nameIsFree = ztcad::nameIsFree(name);
  setName(name);
}

ztCAD_baseElement::ztCAD_baseElement() : ztCAD_baseElement(QString()) {}

ztCAD_baseElement::ztCAD_baseElement(const QString& method) : m_method(ztcad::sharedMethod(method)) {
  if (!m_method) m_method = new ztCAD_gMethod(method);
}

ztCAD_baseElement::ztCAD_baseElement(const ztCAD_baseElement& other)
    : m_method(other.m_method->isShared() ? other.m_method : new ztCAD_gMethod(*other.m_method)) {}

ztCAD_baseElement& ztCAD_baseElement::operator=(const ztCAD_baseElement& other) {
  if (this != &other) assignMethod(*other.m_method);
  return *this;
}

ztCAD_baseElement::~ztCAD_baseElement() {
  if (!m_method->isShared()) delete m_method;
}

/// A method of its own stays: the host may hold a reference to it.
void ztCAD_baseElement::assignMethod(const ztCAD_gMethod& method) {
  const ztCAD_gMethod* const shared = m_method->isShared() ? ztcad::sharedMethod(method.method()) : nullptr;
  if (shared)
    m_method = shared;
  else
    ownMethod() = method;
}

ztCAD_gMethod& ztCAD_baseElement::ownMethod() {
  if (m_method->isShared()) m_method = new ztCAD_gMethod(*m_method);
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): made by this element, as an object that may change
  return const_cast<ztCAD_gMethod&>(*m_method);
}

void ztcad::writeBaseParts(const ztCAD_Base& base, const ztCAD_baseElement& element, ElementSink& sink) {
  base.property().write(sink);
  element.method().write(sink);
}

namespace {
/// An absent "method" changes nothing.
void readMethod(ztCAD_baseElement& element, const ztcad::ElementView& view) {
  const ztcad::AttributeBytes bytes = view.attributeBytes(ztcad::words().method);
  if (bytes.state == ztcad::AttributeBytes::Absent) return;
  if (bytes.state == ztcad::AttributeBytes::Known &&
      ztcad::equalsAscii(std::as_const(element).method().method(), bytes.ascii))
    return;
  ztCAD_gMethod method;
  bool fault = false;
  if (method.read(view, fault)) element.setMethod(method);
}
}  // namespace

bool ztcad::readBaseParts(ztCAD_Base& base, ztCAD_baseElement& element, const ElementView& view,
                          bool& fault) {
  readMethod(element, view);
  return base.property().read(view, fault);
}
