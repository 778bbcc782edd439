#include "review.h"

#include <algorithm>
#include <string_view>

#include "../number/number_text.h"
#include "../text/narrow_text.h"
#include "../text/wide_utf8.h"
#include "../text/windows1251.h"
#include "vocabulary.h"

namespace ztcad {

namespace {

constexpr int longestValue = 60;

/// The kind in a sentence: without the hyphens that separate its words.
QString spoken(const KindName& kind) {
  QString word = QLatin1String(kind.word);
  word.replace(QLatin1Char('-'), QLatin1Char(' '));
  return word.replace(QLatin1String("mass inertia"), QLatin1String("mass-inertia"));
}

QString phraseOf(const KindName* kind, const std::optional<QString>& name) {
  if (!kind) return QLatin1String("document");
  QString phrase = spoken(*kind);
  if (name && !name->isEmpty()) phrase += QLatin1Char(' ') + argumentText(Quoted{*name});
  return phrase;
}

/// Replaces "{element}" and "{1}", "{2}", ... in the message of a rule.
QString messageOf(Rule rule, const QString& element, std::initializer_list<QString> arguments) {
  std::string_view pattern = infoOf(rule).message;
  QString message;
  while (true) {
    const std::string_view text = pattern.substr(0, pattern.find('{'));
    message += QLatin1String(text.data(), static_cast<int>(text.size()));
    if (text.size() == pattern.size()) return message;
    pattern.remove_prefix(text.size() + 1);
    const std::string_view word = pattern.substr(0, pattern.find('}'));
    message += word == "element" ? element : *(arguments.begin() + (word.front() - '1'));
    pattern.remove_prefix(word.size() + 1);
  }
}

Rule ruleOf(ReadObserver::Markup markup) {
  switch (markup) {
    case ReadObserver::Markup::Comment:
      return Rule::comment_not_kept;
    case ReadObserver::Markup::Instruction:
      return Rule::instruction_not_kept;
    case ReadObserver::Markup::DocumentType:
      return Rule::document_type_not_kept;
    case ReadObserver::Markup::EntityReference:
      break;
  }
  return Rule::undeclared_entity;
}

}  // namespace

QString argumentText(const Quoted& value) {
  QString text = value.text.left(longestValue);
  if (!text.isEmpty() && text.at(text.size() - 1).isHighSurrogate()) text.chop(1);
  for (QChar& c : text)
    if (!c.isPrint() && !c.isSurrogate()) c = QLatin1Char('?');
  if (value.text.size() > longestValue) text += QLatin1String("...");
  return QLatin1Char('"') + text + QLatin1Char('"');
}

QString messageOf(Rule rule, std::initializer_list<QString> arguments) {
  return messageOf(rule, QString(), arguments);
}

Review::Review(std::int64_t limit) : m_limit(limit) {}

Review::Named Review::nearestElement() const {
  if (m_open.empty()) return {nullptr, std::nullopt};
  return {m_open.back().kind, m_open.back().view->attribute(words().name)};
}

/// Adds a finding; null if the limit is reached.
FindingInText* Review::add(Rule rule, const char* element, const Named& nearest,
                           std::initializer_list<QString> arguments) {
  const Severity severity = infoOf(rule).severity;
  if (isFull()) {
    ++m_omitted[static_cast<std::size_t>(severity)];
    return nullptr;
  }
  FindingInText& added = m_findings.emplace_back();
  added.rule = infoOf(rule).name;
  added.severity = severity;
  added.element = element;
  added.message = messageOf(rule, phraseOf(nearest.kind, nearest.name), arguments);
  added.kind = nearest.kind;
  added.name = nearest.name;
  return &added;
}

FindingInText* Review::addHere(Rule rule, const char* element, std::initializer_list<QString> arguments) {
  return add(rule, element, isFull() ? Named{} : nearestElement(), arguments);
}

void Review::report(const ElementView& element, Rule rule, const QString* attribute,
                    std::initializer_list<QString> arguments) {
  FindingInText* const added = addHere(rule, element.position(), arguments);
  if (!added || !attribute) return;
  added->attribute = element.attributePosition(*attribute);
  if (added->attribute) added->attributeName = *attribute;
}

void Review::report(const ElementView& list, Rule rule, const Occurrences& occurrences) {
  FindingInText* const added =
      addHere(rule, list.position(), {list.tag(), QString::number(occurrences.count)});
  if (!added) return;
  added->count = occurrences.count;
  for (const char* const place : occurrences.places)
    added->places.push_back(list.textPosition(place));
}

void Review::report(const ElementInText& element, Rule rule, const QString& name,
                    std::initializer_list<QString> arguments) {
  add(rule, element.position, {element.kind, name}, arguments);
}

void Review::report(Rule rule, const char* position, std::initializer_list<QString> arguments) {
  add(rule, position, {}, arguments);
}

void Review::report(Rule rule, const Occurrences& occurrences) {
  FindingInText* const added =
      add(rule, occurrences.places.front(), {}, {QString::number(occurrences.count)});
  if (!added) return;
  added->count = occurrences.count;
  added->places = occurrences.places;
}

void Review::unreadMarkup(Markup markup, const char* at) {
  m_markup[static_cast<std::size_t>(markup)].add(at);
}

void Review::unreadAttribute(const char* element, const char* at, const QString& name, bool isRepeated) {
  FindingInText* const added = addHere(isRepeated ? Rule::repeated_attribute : Rule::unknown_attribute,
                                       element, {argumentText(Quoted{name})});
  if (!added) return;
  added->attribute = at;
  added->attributeName = name;
}

void Review::unreadElement(const char* at, const QString& tag) {
  addHere(Rule::unknown_element, at, {argumentText(Quoted{tag})});
}

void Review::unreadText(const char* element, const char* at) {
  const auto [entry, isNew] = m_texts.emplace(element, m_findings.size());
  if (isNew) {
    FindingInText* const added = addHere(Rule::unexpected_text, element, {});
    if (added) added->places.push_back(at);
    return;
  }
  if (entry->second >= m_findings.size()) return;  // omitted
  FindingInText& finding = m_findings[entry->second];
  ++finding.count;
  if (finding.places.size() < Occurrences::mostPlaces) finding.places.push_back(at);
}

void Review::tolerate(const Mark& from, const Mark& to) {
  for (std::size_t i = from.kept; i < to.kept; ++i)
    m_findings[i].severity = std::min(m_findings[i].severity, Severity::warning);
  const std::int64_t omittedErrors = to.omittedErrors - from.omittedErrors;
  m_omitted[static_cast<std::size_t>(Severity::error)] -= omittedErrors;
  m_omitted[static_cast<std::size_t>(Severity::warning)] += omittedErrors;
}

void Review::enter(const ElementView& view, const KindName& kind, const ztCAD_Base& element,
                   NameCheck nameCheck) {
  m_open.push_back({&view, &kind, nameCheck});
  m_elements.push_back({&element, view.position(), &kind});
}

void Review::finish() {
  if (m_firstAfterReading == 0) beginAfterReading();
  for (std::size_t i = 0; i < m_markup.size(); ++i) {
    const Occurrences& found = m_markup[i];
    if (found.count > 0) report(ruleOf(static_cast<Markup>(i)), found);
  }
}

void Review::clear() { *this = Review(m_limit); }

// ------------------------------------------------------------------------------------------------ reports

QString keptText(const ElementView& element, const QString& attribute) {
  QString text = element.attribute(attribute).value_or(QString());
  reviewText(element, attribute, text);
  return text;
}

void reviewText(const ElementView& element, const QString& attribute, const QString& text) {
  if (!reviewOf(element)) return;
  const std::string utf8 = toNarrow(text);
  constexpr char32_t replacement = 0xfffd;  // reported as invalid bytes
  for (std::size_t at = asciiLength(utf8); at < utf8.size();) {
    const Utf8Character character = utf8Character(utf8.data() + at);
    at += character.length;
    if (character.code < 0x80 || character.code == replacement) continue;
    if (windows1251FromUnicode(character.code)) continue;
    return reportAttribute(element, attribute, Rule::not_in_windows_1251, attribute);
  }
}

void reviewName(const ElementView& element, const std::optional<QString>& name) {
  const Review* const review = reviewOf(element);
  if (!review) return;
  if (name) reviewText(element, words().name, *name);
  if (review->namesAreCheckedByHolder() || (name && !name->isEmpty())) return;
  if (name)
    reportAttribute(element, words().name, Rule::empty_name);
  else
    report(element, Rule::missing_name);
}

void reviewReals(const ElementView& element, const QString& attribute) {
  const auto text = reviewOf(element) ? element.attribute(attribute) : std::nullopt;
  if (!text) return;
  const std::string utf8 = toNarrow(*text);
  std::string_view left = utf8;
  std::int64_t longReals = 0;
  while (!left.empty()) {
    const std::string_view part = left.substr(0, left.find(','));
    longReals += hasMoreDigitsThanWritten(part) ? 1 : 0;
    left.remove_prefix(std::min(part.size() + 1, left.size()));
  }
  if (longReals > 0) reportAttribute(element, attribute, Rule::digits_not_kept, attribute, longReals);
}

void reviewMethod(const ElementView& element, const QString& written) {
  const auto method = reviewOf(element) ? element.attribute(words().method) : std::nullopt;
  if (method && *method != written)
    reportAttribute(element, words().method, Rule::method_not_kept, Quoted{*method}, written);
}

void reviewList(const ElementView& list, const ListRemarks& remarks) {
  Review* const review = reviewOf(list);
  if (!review) return;
  const auto reportAny = [&](Rule rule, const Occurrences& found) {
    if (found.count > 0) review->report(list, rule, found);
  };
  reportAny(Rule::bad_list_piece, remarks.badPieces);
  reportAny(Rule::skipped_list_piece, remarks.skippedPieces);
  reportAny(Rule::cut_list_piece, remarks.cutPieces);
  reportAny(Rule::digits_not_kept, remarks.longReals);
}

void skipUnknown(const ElementView& child) {
  if (!reviewOf(child)) return;
  report(child, Rule::unknown_element, Quoted{child.tag()});
  child.skipSilently();
}

void skipRepeated(const ElementView& child) {
  if (!reviewOf(child)) return;
  report(child, Rule::repeated_list, child.tag());
  child.skipSilently();
}

double ReviewedNumbers::realOrZero(QStringView text) {
  double value = 0;
  count(toReal(text, value), text);
  return value;
}

std::uint32_t ReviewedNumbers::indexOrZero(QStringView text) {
  std::uint32_t value = 0;
  count(toIndex(text, value), text);
  return value;
}

void ReviewedNumbers::count(bool converted, QStringView text) {
  if (converted) return;
  if (m_failures++ == 0 && reviewOf(m_element)) m_firstFailure = text.toString();
}

void ReviewedNumbers::report() const {
  if (m_failures > 0)
    reportAttribute(m_element, m_attribute, Rule::not_a_number, m_attribute, m_failures,
                    Quoted{m_firstFailure});
}

}  // namespace ztcad
