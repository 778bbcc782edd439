#include "detail.h"

#include "../core/review.h"
#include "../xml/element_sink.h"
#include "child_reader.h"
#include "orders.h"

using ztcad::words;

ztCAD_cmnDetail::ztCAD_cmnDetail() : m_content(std::make_unique<ztCAD_DetailContent>()) {}

ztCAD_cmnDetail::ztCAD_cmnDetail(const ztCAD_cmnDetail& other)
    : ztCAD_Base(other),
      ztCAD_ISerialize(other),
      ztCAD_INode(other),
      ztCAD_IBaseChecker(other),
      ztCAD_StateCorrect(other),
      ztCAD_INameLCS_Selector(other),
      m_content(std::make_unique<ztCAD_DetailContent>(*other.m_content)),
      m_mip(other.m_mip) {}

ztCAD_cmnDetail& ztCAD_cmnDetail::operator=(const ztCAD_cmnDetail& other) {
  if (this == &other) return *this;
  ztCAD_Base::operator=(other);
  ztCAD_StateCorrect::operator=(other);
  *m_content = *other.m_content;
  m_mip = other.m_mip;
  return *this;
}

ztCAD_cmnDetail::~ztCAD_cmnDetail() = default;

QString& ztCAD_cmnDetail::toText(QString& out, bool debugForm) const {
  out += elementName() + QLatin1String("(prop=");
  property().toText(out, debugForm);
  return out += QLatin1Char(')');
}

void ztCAD_cmnDetail::write(ztcad::ElementSink& parent) const {
  parent.element(elementName(), [this](ztcad::ElementSink& element) {
    property().write(element);
    m_mip.write(element);
    visitInOrder(ztcad::DetailOrder(), *m_content, [&element](const auto& children) {
      for (const auto& child : children)
        child.write(element);
    });
  });
}

bool ztCAD_cmnDetail::readAndCheck(const ztcad::ElementView& element, bool& fault) {
  bool ok = property().read(element, fault);
  const bool mipOk = m_mip.read(element);
  if (!element.hasAttribute(words().mip)) report(element, ztcad::Rule::missing_mass_inertia);
  *m_content = ztCAD_DetailContent();  // assigned, not replaced: a host may hold a reference to it
  element.forEachChild([&](const ztcad::ElementView& child) {
    ok = ztcad::readChildOf(*m_content, child, child.tag()) && ok;
  });
  setReadOk(ok && mipOk);
  return readOk();
}

QString ztCAD_Detail::lcsWord() const { return words().lcs; }
QString ztCAD_Detail::elementName() const { return words().detail; }
QString ztCAD_TmplDetail::lcsWord() const { return words().mcs; }
QString ztCAD_TmplDetail::elementName() const { return words().templateDetail; }
