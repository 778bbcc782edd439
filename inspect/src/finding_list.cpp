#include "finding_list.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <numeric>
#include <string_view>
#include <utility>

#include "element.h"

namespace ztcad::inspect {

namespace {

const std::size_t longestValue = 60;

std::string phraseOf(int kind, const std::optional<std::string>& name) {
  if (kind == ztCAD_ElementNone) return name ? "document" : "mesh";
  std::string phrase = ztCAD_kindWord(kind);
  std::replace(phrase.begin(), phrase.end(), '-', ' ');
  const std::size_t found = phrase.find("mass inertia");
  if (found != std::string::npos) phrase[found + 4] = '-';
  if (name && !name->empty()) phrase += ' ' + quoted(*name);
  return phrase;
}

std::string filledIn(std::string_view pattern, const std::string& element,
                     const std::vector<std::string>& arguments) {
  std::string message;
  while (true) {
    const std::string_view text = pattern.substr(0, pattern.find('{'));
    message += text;
    if (text.size() == pattern.size()) return message;
    pattern.remove_prefix(text.size() + 1);
    const std::string_view word = pattern.substr(0, pattern.find('}'));
    if (word == "element")
      message += element;
    else
      message += arguments.at(static_cast<std::size_t>(word.front() - '1'));
    pattern.remove_prefix(word.size() + 1);
  }
}

}  // namespace

std::string numberText(double value) {
  if (value != value) return "nan";
  char text[40];
  const int length = std::snprintf(text, sizeof text, "%.9g", value + 0.0);
  // the locale may have another separator
  for (int i = 0; i < length; ++i)
    if (text[i] == ',') text[i] = '.';
  return text;
}

std::string numberText(std::int64_t value) { return std::to_string(value); }

std::string tripleText(const double* values) {
  return numberText(values[0]) + ", " + numberText(values[1]) + ", " + numberText(values[2]);
}

std::string quoted(const std::string& text) {
  std::size_t length = text.size();
  if (length > longestValue) {
    length = longestValue;
    while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xc0U) == 0x80U)
      --length;  // not inside a character
  }
  std::string result = "\"";
  for (const char c : text.substr(0, length))
    result += static_cast<unsigned char>(c) < 0x20U || c == 0x7f ? '?' : c;
  if (length < text.size()) result += "...";
  return result + '"';
}

FindingList::Finding FindingList::made(Rule rule, const Subject& subject, const char* attribute,
                                       std::vector<std::string> arguments, std::int64_t count,
                                       FindingPlaces places, int severity) {
  Finding finding;
  finding.rule = rule;
  finding.severity = severity;
  finding.element = subject.element;
  finding.path = subject.path;
  if (attribute && !finding.path.empty()) finding.path += std::string("/@") + attribute;
  finding.attribute = attribute;
  finding.kind = ztCAD_getKind(subject.element);
  if (subject.element)
    finding.name = nameOf(subject.element);
  else if (!subject.path.empty())
    finding.name = std::string();
  finding.message = filledIn(messageOf(rule), phraseOf(finding.kind, finding.name), arguments);
  if (!subject.element) finding.name.reset();
  finding.count = count;
  finding.places = std::move(places);
  finding.arguments = std::move(arguments);
  return finding;
}

void FindingList::add(Rule rule, const Subject& subject, const char* attribute,
                      std::initializer_list<std::string> arguments, std::int64_t count, FindingPlaces places,
                      std::optional<int> severity) {
  m_findings.push_back(made(rule, subject, attribute, arguments, count, std::move(places),
                            severity.value_or(infoOf(rule).severity)));
}

void FindingList::append(const FindingList& more, const Subject& subject) {
  for (const Finding& finding : more.m_findings)
    m_findings.push_back(made(finding.rule, subject, finding.attribute, finding.arguments, finding.count,
                              finding.places, finding.severity));
}

const ztCADInspect_Finding* FindingList::at(std::int64_t index) const {
  if (index < 0 || index >= count()) return nullptr;
  // the addresses of texts are those of a list that no longer moves
  const Finding& finding = m_findings[static_cast<std::size_t>(index)];
  ztCADInspect_Finding& seen = finding.seen;
  seen.severity = finding.severity;
  seen.rule = infoOf(finding.rule).name;
  seen.message = finding.message.c_str();
  seen.element = finding.element;
  seen.path = finding.path.c_str();
  seen.attribute = finding.attribute;
  seen.kind = finding.kind;
  seen.name = finding.name ? finding.name->c_str() : nullptr;
  seen.count = finding.count;
  seen.placeKind = finding.places.kind;
  const std::size_t size = finding.places.indices.size();
  seen.placeCount =
      static_cast<std::int32_t>(finding.places.kind == ztCADInspect_PlaceEdge ? size / 2 : size);
  seen.places = size == 0 ? nullptr : finding.places.indices.data();
  return &seen;
}

void FindingList::sortBy(const std::vector<std::int64_t>& keys) {
  std::vector<std::size_t> order(m_findings.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(),
                   [&](std::size_t a, std::size_t b) { return keys[a] < keys[b]; });
  std::vector<Finding> sorted;
  sorted.reserve(order.size());
  for (const std::size_t i : order)
    sorted.push_back(std::move(m_findings[i]));
  m_findings = std::move(sorted);
}

}  // namespace ztcad::inspect
