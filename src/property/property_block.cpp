#include "property_block.h"

#include <utility>

#include "../core/review.h"
#include "../core/vocabulary.h"
#include "../support/made_once.h"
#include "../xml/element_sink.h"
#include "../xml/element_view.h"
#include "display_values.h"
#include "kept_text.h"

using ztcad::words;

// delegates, so that what the assignment has allocated is freed if it fails
ztCAD_cmnProperty::ztCAD_cmnProperty(const ztCAD_cmnProperty& other) : ztCAD_cmnProperty() { *this = other; }

ztCAD_cmnProperty& ztCAD_cmnProperty::operator=(const ztCAD_cmnProperty& other) {
  if (this == &other) return *this;
  // whatever allocates comes first, so that the copy is all or nothing
  const Rare* const source = other.m_rare.load(std::memory_order_acquire);
  auto lcs = source && source->lcs ? std::make_unique<ztCAD_LCS>(*source->lcs) : nullptr;
  Rare* const target = source || m_rare.load(std::memory_order_acquire) ? &rare() : nullptr;
  const Objects* const objectsOfOther = other.madeObjects();
  if (objectsOfOther || madeObjects()) {
    objects() = objectsOfOther ? *objectsOfOther : *other.newObjects();
  } else {
    if (target) target->comment = source ? source->comment : ztCAD_ShortText();
    if (target) target->inform = source ? source->inform : ztCAD_ShortText();
    m_name = other.m_name;
    m_attributesReadOk = other.m_attributesReadOk;
    m_attributesWereRead = other.m_attributesWereRead;
    m_display = other.m_display;
    m_red = other.m_red;
    m_green = other.m_green;
    m_blue = other.m_blue;
  }
  if (target) target->lcs = std::move(lcs);
  ztCAD_StateCorrect::operator=(other);
  return *this;
}

ztCAD_cmnProperty::~ztCAD_cmnProperty() {
  const Rare* const rare = m_rare.load(std::memory_order_acquire);
  if (!rare) return;
  delete rare->objects.load(std::memory_order_acquire);
  delete rare;
}

ztCAD_cmnProperty::Rare& ztCAD_cmnProperty::rare() const {
  return ztcad::madeOnce(m_rare, [] { return std::make_unique<Rare>(); });
}

std::unique_ptr<ztCAD_cmnProperty::Objects> ztCAD_cmnProperty::newObjects() const {
  auto made = std::make_unique<Objects>();
  made->attributes.setName(m_name.toString());
  made->attributes.setComment(comment());
  made->attributes.setInform(inform());
  if (m_attributesWereRead) made->attributes.setReadOk(m_attributesReadOk);
  made->showable.setColor(color());
  made->showable.setVisible(visible());
  return made;
}

ztCAD_cmnProperty::Objects& ztCAD_cmnProperty::objects() const {
  return ztcad::madeOnce(rare().objects, [this] { return newObjects(); });
}

void ztCAD_cmnProperty::setRareText(ztCAD_ShortText Rare::*member, const ztCAD_ShortText& text) {
  Rare* const present = m_rare.load(std::memory_order_acquire);
  if (present || !text.isEmpty()) (present ? *present : rare()).*member = text;
}

QString ztCAD_cmnProperty::comment() const {
  if (const Objects* const made = madeObjects()) return made->attributes.comment();
  const Rare* const rare = m_rare.load(std::memory_order_acquire);
  return rare ? rare->comment.toString() : QString();
}

void ztCAD_cmnProperty::setComment(const QString& comment) {
  if (Objects* const made = madeObjects())
    made->attributes.setComment(comment);
  else
    setRareText(&Rare::comment, ztCAD_ShortText(comment));
}

QString ztCAD_cmnProperty::inform() const {
  if (const Objects* const made = madeObjects()) return made->attributes.inform();
  const Rare* const rare = m_rare.load(std::memory_order_acquire);
  return rare ? rare->inform.toString() : QString();
}

void ztCAD_cmnProperty::setInform(const QString& inform) {
  if (Objects* const made = madeObjects())
    made->attributes.setInform(inform);
  else
    setRareText(&Rare::inform, ztCAD_ShortText(inform));
}

ztCAD_Color ztCAD_cmnProperty::color() const {
  if (const Objects* const made = madeObjects()) return made->showable.color();
  return (m_display & HasColor) != 0 ? ztCAD_Color(m_red, m_green, m_blue) : ztCAD_Color();
}

void ztCAD_cmnProperty::setColor(const ztCAD_Color& color) {
  if (!ztcad::fitsBytes(color) || madeObjects()) return objects().showable.setColor(color);
  m_red = static_cast<std::uint8_t>(color.red());
  m_green = static_cast<std::uint8_t>(color.green());
  m_blue = static_cast<std::uint8_t>(color.blue());
  m_display = static_cast<std::uint8_t>((m_display & ~HasColor) | (color.isSet() ? HasColor : 0));
}

ztCAD_Visible ztCAD_cmnProperty::visible() const {
  if (const Objects* const made = madeObjects()) return made->showable.visible();
  return (m_display & HasVisible) != 0 ? ztCAD_Visible((m_display & IsVisible) != 0) : ztCAD_Visible();
}

void ztCAD_cmnProperty::setVisible(const ztCAD_Visible& visible) {
  if (Objects* const made = madeObjects()) return made->showable.setVisible(visible);
  const int set = visible.isSet() ? HasVisible : 0;
  const int shown = visible.value().value_or(false) ? IsVisible : 0;
  m_display = static_cast<std::uint8_t>((m_display & HasColor) | set | shown);
}

void ztCAD_cmnProperty::setLcs(const std::optional<ztCAD_LCS>& lcs) {
  if (lcs)
    rare().lcs = std::make_unique<ztCAD_LCS>(*lcs);
  else if (Rare* const present = m_rare.load(std::memory_order_acquire))
    present->lcs = nullptr;
}

QString& ztCAD_cmnProperty::toText(QString& out, bool debugForm) const {
  const Objects* const present = madeObjects();
  const std::unique_ptr<Objects> made = present ? nullptr : newObjects();
  const Objects& values = present ? *present : *made;
  out += QLatin1String("attr=");
  values.attributes.toText(out, debugForm);
  out += QLatin1String(" ,");
  values.showable.toText(out, debugForm);
  if (const auto system = lcs()) system->toText(out, debugForm);
  return out;
}

void ztCAD_cmnProperty::write(ztcad::ElementSink& element) const {
  if (const Objects* const made = madeObjects()) {
    made->attributes.write(element);
    made->showable.write(element);
  } else {
    writeValues(element);
  }
  const Rare* const rare = m_rare.load(std::memory_order_acquire);
  if (rare && rare->lcs) rare->lcs->write(element);
}

void ztCAD_cmnProperty::writeValues(ztcad::ElementSink& element) const {
  const Rare* const rare = m_rare.load(std::memory_order_acquire);
  const ztCAD_ShortText empty;
  element.shortAttribute(words().comment, rare ? rare->comment : empty);
  element.shortAttribute(words().name, m_name);
  element.shortAttribute(words().inform, rare ? rare->inform : empty);
  color().write(element);
  visible().write(element);
}

bool ztCAD_cmnProperty::read(const ztcad::ElementView& element, bool& fault) {
  bool ok = false;
  if (Objects* const made = madeObjects()) {
    const bool attributesOk = made->attributes.read(element, fault);
    ok = made->showable.read(element, fault) && attributesOk;
  } else {
    ok = readValues(element);
  }
  if (element.attributeBytes(words().lcs).state !=
      ztcad::AttributeBytes::Absent) {  // rare; saves constructing an LCS
    auto lcs = std::make_unique<ztCAD_LCS>();
    if (lcs->read(element, fault)) rare().lcs = std::move(lcs);
  }
  fault = false;
  setReadOk(ok);
  return readOk();
}

bool ztCAD_cmnProperty::readValues(const ztcad::ElementView& element) {
  const auto name = ztcad::readName(element);
  m_attributesWereRead = true;
  m_attributesReadOk = name.has_value();
  m_name = name.value_or(ztCAD_ShortText());
  setRareText(&Rare::comment, ztcad::readKeptText(element, words().comment));
  setRareText(&Rare::inform, ztcad::readKeptText(element, words().inform));
  std::optional<ztCAD_Color> color;
  const bool colorOk = ztcad::readColor(element, color);
  if (color) setColor(*color);
  const std::optional<ztCAD_Visible> visible = ztcad::readVisible(element);
  if (visible) setVisible(*visible);
  return m_attributesReadOk && colorOk;
}
