#include "structure.h"

#include <algorithm>
#include <memory>
#include <stdexcept>

#include "../core/elements_ahead.h"
#include "../core/review.h"
#include "../core/vocabulary.h"
#include "../xml/element_sink.h"
#include "../xml/element_view.h"
#include "child_reader.h"
#include "level_names.h"
#include "orders.h"
#include "read_structures.h"
#include "structure_pass.h"

using ztcad::words;

namespace {

template <typename Container>
void appendGroup(QString& out, const Container& elements, bool debugForm) {
  if (elements.empty()) return;
  out += QLatin1String(" [");
  for (const auto& element : elements) {
    out += QLatin1String(" {");
    ztcad::elementOf(element).toText(out, debugForm);
    out += QLatin1Char('}');
  }
  out += QLatin1String(" ]");
}

/// False: or there are many. The names would take room on the stack for each level that is being read, if
/// this became part of the function that reads.
Q_NEVER_INLINE bool hasDifferentNames(const ztCAD_commonStructure& structure) {
  ztcad::FewNames names;
  return takeNames(structure, ztcad::into(names)) && names.areDifferent();
}

}  // namespace

ztCAD_commonStructure::ztCAD_commonStructure() { property().setLcs(ztCAD_LCS()); }

ztCAD_commonStructure::ztCAD_commonStructure(const QString& name, const ztCAD_LCS& lcs, bool& nameIsFree)
    : ztCAD_Base(name, nameIsFree) {
  property().setLcs(lcs);
}

ztCAD_commonStructure::ztCAD_commonStructure(const ztCAD_commonStructure& other)
    : ztCAD_Base(other),
      ztCAD_ISerialize(other),
      ztCAD_INode(other),
      ztCAD_StateCorrect(other),
      m_content(other.m_content) {
  holdAllOf(other);
}

ztCAD_commonStructure::ztCAD_commonStructure(const QString& name, const ztCAD_commonStructure& source,
                                             bool& nameIsFree)
    : ztCAD_Base(name, nameIsFree), m_content(source.m_content) {
  setProperty(source.property());
  setName(name);
  holdAllOf(source);
}

ztCAD_commonStructure& ztCAD_commonStructure::operator=(const ztCAD_commonStructure& other) {
  if (this == &other) return *this;
  ztCAD_Base::operator=(other);
  ztCAD_StateCorrect::operator=(other);
  m_content = other.m_content;
  releaseNested();
  for (ztCAD_commonStructure* const nested : other.m_nested)
    addStructure(*nested);  // refused where this structure is inside `nested`
  return *this;
}

ztCAD_commonStructure* ztCAD_commonStructure::createEmpty() const { return nullptr; }

ztCAD_commonStructure* ztCAD_commonStructure::clone() const { return nullptr; }

void ztCAD_commonStructure::copyWithClones(const ztCAD_commonStructure& source) {
  if (this == &source) return;
  releaseNested();
  setProperty(source.property());
  for (const ztCAD_commonStructure* nested : source.m_nested)
    if (ztCAD_commonStructure* const clone = nested->clone()) hold(*clone);
  m_content = source.m_content;
}

bool ztCAD_commonStructure::unifyNames() {
  ztcad::ElementRenames renames;
  ztcad::StructurePass().unifyNames(*this, renames);
  renames.keep();
  return true;
}

QString& ztCAD_commonStructure::textHeader(QString& out) const {
  const auto lcs = property().lcs();
  if (!lcs) throw std::logic_error("a structure has lost its coordinate system");
  out += elementName() + QLatin1String(", ") + lcsWord() + QLatin1String(", ");
  return lcs->toText(out, true);
}

QString& ztCAD_commonStructure::toText(QString& out, bool debugForm) const {
  textHeader(out);
  appendGroup(out, m_nested, debugForm);
  visitInOrder(ztcad::StructureTextOrder(), m_content,
               [&](const auto& elements) { appendGroup(out, elements, debugForm); });
  return out += QLatin1Char(';');
}

void ztCAD_commonStructure::write(ztcad::ElementSink& parent) const {
  parent.element(elementName(), [this](ztcad::ElementSink& element) {
    property().write(element);
    const auto writeEach = [&element](const auto& elements) {
      for (const auto& one : elements) {
        ztcad::prefetchElementAfter(one);
        ztcad::elementOf(one).write(element);
      }
    };
    visitInOrder(ztcad::StructureFileOrder(), m_content, writeEach);
    writeEach(m_nested);
    visitInOrder(ztcad::StructureFileOrderAfterNested(), m_content, writeEach);
  });
}

bool ztCAD_commonStructure::read(const ztcad::ElementView& element, bool& fault) {
  releaseNested();
  m_content = ztCAD_StructureContent();
  {
    const ztcad::Tolerated tolerated(element);
    property().read(element, fault);
  }
  bool allRead = true;
  ztcad::NameRuns names;
  element.forEachChild(
      [&](const ztcad::ElementView& child) { allRead = readChild(child, names) && allRead; });
  m_namesWereDifferent = names.areDifferent() || hasDifferentNames(*this);
  setReadOk(allRead);
  return allRead;
}

bool ztCAD_commonStructure::readChild(const ztcad::ElementView& child, ztcad::NameRuns& names) {
  const QString& tag = child.tag();
  if (ztcad::equalsWord(tag, words().structure)) return readNested(child, names);
  return ztcad::readChildOf(m_content, child, tag, &names);
}

bool ztCAD_commonStructure::readNested(const ztcad::ElementView& child, ztcad::NameRuns& names) {
  ztCAD_commonStructure* const nested = createEmpty();
  if (!nested) return false;
  hold(*nested);
  const ztcad::ReviewedElement reviewed(child, ztcad::kinds::structures::name, *nested,
                                        ztcad::NameCheck::ByHolder);
  bool ownFault = false;
  const bool isRead = nested->read(child, ownFault);
  names.take(&m_nested, nested->shortName());
  if (nested->shortName().isEmpty()) report(child, ztcad::Rule::nested_without_name);
  return reviewed.read(isRead && !nested->shortName().isEmpty());
}

bool ztCAD_commonStructure::passesCheck() const { return ztcad::StructurePass().passesCheck(*this); }

// -------------------------------------------------------------------------------- the two classes

namespace {
/// A new structure that `keepReadStructure` has given an owner.
template <typename Structure>
Structure* makeKept() {
  auto structure = std::make_unique<Structure>();
  Structure* const kept = structure.get();
  ztcad::keepReadStructure(std::move(structure));
  return kept;
}
}  // namespace

ztCAD_commonStructure* ztCAD_Structure::createEmpty() const { return makeKept<ztCAD_Structure>(); }

ztCAD_commonStructure* ztCAD_Structure::clone() const {
  auto* const copy = makeKept<ztCAD_Structure>();
  copy->copyWithClones(*this);
  return copy;
}

QString ztCAD_Structure::elementName() const { return words().structure; }
QString ztCAD_Structure::lcsWord() const { return words().lcs; }

ztCAD_TmplStructure::ztCAD_TmplStructure(const QString& name, const ztCAD_commonStructure& source,
                                         bool& nameIsFree)
    : ztCAD_commonStructure(name, source, nameIsFree) {}

ztCAD_commonStructure* ztCAD_TmplStructure::createEmpty() const { return makeKept<ztCAD_TmplStructure>(); }

ztCAD_commonStructure* ztCAD_TmplStructure::clone() const {
  auto* const copy = makeKept<ztCAD_TmplStructure>();
  copy->copyWithClones(*this);
  return copy;
}

QString ztCAD_TmplStructure::elementName() const { return words().templateStructure; }
QString ztCAD_TmplStructure::lcsWord() const { return words().mcs; }
