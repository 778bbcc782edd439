#include "faces.h"

#include "../core/vocabulary.h"
#include "../number/number_list.h"
#include "../support/lazy_lock.h"
#include "../xml/element_sink.h"
#include "../xml/element_view.h"
#include "triple_text.h"

using ztcad::words;

QString& ztCAD_Facet::toText(QString& out, bool debugForm) const {
  const std::uint32_t triple[] = {m_i1, m_i2, m_i3};
  if (!debugForm) {
    ztcad::appendTriple(out, triple);
    return out;
  }
  return out +=
         QString(QLatin1String("%1(I1=%2, I2=%3, I3=%4)")).arg(words().facet).arg(m_i1).arg(m_i2).arg(m_i3);
}

void ztCAD_Faces::add(const ztCAD_Facet& facet) {
  m_indices.insert(m_indices.end(), {facet.I1(), facet.I2(), facet.I3()});
}

void ztCAD_Faces::add(const std::uint32_t* ijk, std::size_t count) {
  ztcad::appendTriples(m_indices, ijk, count);
}

QString& ztCAD_Faces::toText(QString& out, bool debugForm) const {
  if (debugForm) {
    ztcad::debugText(out, words().faces, m_indices, [](QString& text, const std::uint32_t* facet) {
      ztCAD_Facet(facet[0], facet[1], facet[2]).toText(text, true);
    });
  } else {
    ztcad::storageText(m_indices, [&out](std::string_view piece) { ztcad::appendAscii(out, piece); });
  }
  return out;
}

namespace {
bool parse(const ztcad::ElementText& text, std::vector<std::uint32_t>& indices,
           ztcad::ListRemarks* remarks = nullptr) {
  // One lock around all appends of the call, taken only if more than one thread is configured.
  ztcad::LazyLock lock;
  const ztcad::AppendGuard guard(lock);
  indices.clear();
  return ztcad::parseTriples(text, indices, remarks);
}
}  // namespace

bool ztCAD_Faces::fromText(const QString& text) { return parse(ztcad::ElementText(text), m_indices); }

void ztCAD_Faces::writeElement(ztcad::ElementSink& parent) const {
  parent.element(words().faces, [this](ztcad::ElementSink& element) {
    ztcad::storageText(m_indices, [&element](std::string_view piece) { element.text(piece); });
  });
}

bool ztCAD_Faces::readElement(const ztcad::ElementView& element) {
  return ztcad::readList(element, [this](const ztcad::ElementText& text, ztcad::ListRemarks* remarks) {
    return parse(text, m_indices, remarks);
  });
}
