#include "findings.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iterator>
#include <unordered_map>
#include <utility>

#include "../../text/narrow_text.h"
#include "../../xml/xml_view.h"
#include "../vocabulary.h"

namespace ztcad {

namespace {

const char* placeOf(const FindingInText& finding) {
  return finding.attribute ? finding.attribute : finding.element;
}

/// The findings in the order of the text; those at the same place stay in their order.
std::vector<const FindingInText*> inOrder(const std::vector<FindingInText>& all) {
  std::vector<const FindingInText*> ordered;
  ordered.reserve(all.size());
  for (const FindingInText& finding : all)
    ordered.push_back(&finding);
  std::stable_sort(ordered.begin(), ordered.end(), [](const FindingInText* a, const FindingInText* b) {
    return std::less<>()(placeOf(*a), placeOf(*b));
  });
  return ordered;
}

/// Translates addresses in a text into places and paths.
class Locations {
 public:
  Locations(const std::vector<const FindingInText*>& findings, std::string_view bytes, const XmlText& text) {
    for (const FindingInText* const finding : findings) {
      m_positions.push_back(finding->element);
      if (finding->attribute) m_positions.push_back(finding->attribute);
      m_positions.insert(m_positions.end(), finding->places.begin(), finding->places.end());
    }
    std::sort(m_positions.begin(), m_positions.end(), std::less<>());
    m_positions.erase(std::unique(m_positions.begin(), m_positions.end()), m_positions.end());
    m_places = placesOf(m_positions, bytes, text);
    for (const FindingInText* const finding : findings)
      m_elements.push_back(place(finding->element).inText);
    std::sort(m_elements.begin(), m_elements.end());
    m_elements.erase(std::unique(m_elements.begin(), m_elements.end()), m_elements.end());
    m_paths = pathsOf(m_elements, text);
  }

  const TextPlace& place(const char* position) const {
    const auto found = std::lower_bound(m_positions.begin(), m_positions.end(), position, std::less<>());
    return m_places[static_cast<std::size_t>(found - m_positions.begin())];
  }

  const std::string& path(const char* element) const {
    const auto found = std::lower_bound(m_elements.begin(), m_elements.end(), place(element).inText);
    return m_paths[static_cast<std::size_t>(found - m_elements.begin())];
  }

 private:
  std::vector<const char*> m_positions;
  std::vector<TextPlace> m_places;
  std::vector<std::size_t> m_elements;  // offsets in the decoded text
  std::vector<std::string> m_paths;
};

Finding located(const FindingInText& found, const Locations& locations) {
  Finding finding;
  finding.rule = found.rule;
  finding.severity = found.severity;
  finding.message = toNarrow(found.message);
  finding.place = locations.place(placeOf(found));
  finding.path = locations.path(found.element);
  if (found.attribute) {
    finding.attribute = toNarrow(found.attributeName);
    finding.path += "/@" + *finding.attribute;
  }
  finding.kind = found.kind;
  if (found.name) finding.name = toNarrow(*found.name);
  finding.count = found.count;
  for (const char* const place : found.places)
    finding.places.push_back(locations.place(place));
  return finding;
}

void count(Findings& findings, Severity severity) { ++findings.omitted[static_cast<std::size_t>(severity)]; }

/// Reads a start tag in a well-formed text.
/// @param position its "<"
template <typename Visit>
void readStartTag(const char* position, std::string_view text, Visit&& visit) {
  std::string_view tag = text.substr(static_cast<std::size_t>(position - text.data()));
  char quote = 0;
  std::size_t size = 0;
  while (size < tag.size() && (quote != 0 || tag[size] != '>')) {
    const char c = tag[size++];
    if (quote == 0 && (c == '"' || c == '\''))
      quote = c;
    else if (c == quote)
      quote = 0;
  }
  tag = tag.substr(0, size + 1);
  readXml(XmlText(tag, XmlBytes::Decoded), visit);
}

}  // namespace

ReviewedLoad::ReviewedLoad(std::int64_t limit, Rule rule, const QString& argument) : m_limit(limit) {
  const RuleInfo& info = infoOf(rule);
  Finding& finding = m_findings.kept.emplace_back();
  finding.rule = info.name;
  finding.severity = info.severity;
  finding.message = toNarrow(messageOf(rule, {argument}));
  finding.place = {1, 1, 0, 0};
  finding.count = 1;
  cutToLimit(m_findings);
}

ReviewedLoad::ReviewedLoad(Review& review, std::shared_ptr<const TextBytes> bytes,
                           std::unique_ptr<XmlText> text)
    : m_limit(review.limit()), m_bytes(std::move(bytes)), m_text(std::move(text)), m_root(review.root()) {
  for (const Severity severity : {Severity::note, Severity::warning, Severity::error})
    m_findings.omitted[static_cast<std::size_t>(severity)] = review.omitted(severity);
  m_findings.kept = located(review.findings(), m_findings);
  m_elements = review.takeElements();
}

void ReviewedLoad::cutToLimit(Findings& findings) const {
  if (m_limit < 0) return;
  for (; findings.kept.size() > static_cast<std::size_t>(m_limit); findings.kept.pop_back())
    count(findings, findings.kept.back().severity);
}

/// Locates as many findings as the limit allows, in the order of the text.
/// @param counts the others are counted here
std::vector<Finding> ReviewedLoad::located(const std::vector<FindingInText>& findings,
                                           Findings& counts) const {
  std::vector<const FindingInText*> ordered = inOrder(findings);
  for (; m_limit >= 0 && ordered.size() > static_cast<std::size_t>(m_limit); ordered.pop_back())
    count(counts, ordered.back()->severity);
  std::vector<Finding> result;
  if (ordered.empty()) return result;
  const Locations locations(ordered, bytes(), *m_text);
  result.reserve(ordered.size());
  for (const FindingInText* const found : ordered)
    result.push_back(ztcad::located(*found, locations));
  return result;
}

// ---------------------------------------------------------------------------------------- added findings

/// The elements that findings are about, by address; null: the root element. Those that were not read have
/// no position.
std::unordered_map<const ztCAD_Base*, ElementInText> ReviewedLoad::elementsOf(
    const std::vector<AddedFinding>& added) const {
  std::unordered_map<const ztCAD_Base*, ElementInText> elements;
  for (const AddedFinding& finding : added)
    elements.try_emplace(finding.element, ElementInText{finding.element, nullptr, nullptr});
  for (const ElementInText& element : m_elements) {
    const auto found = elements.find(element.element);
    if (found != elements.end()) found->second = element;
  }
  const auto root = elements.find(nullptr);
  if (root != elements.end()) root->second.position = m_root;
  return elements;
}

/// Replaces positions in the bytes by those in the characters.
void ReviewedLoad::moveIntoCharacters(std::unordered_map<const ztCAD_Base*, ElementInText>& elements) const {
  std::vector<const char**> positions;
  positions.reserve(elements.size());
  for (auto& [key, element] : elements)
    if (!isIn(element.position, m_text->characters())) positions.push_back(&element.position);
  std::sort(positions.begin(), positions.end(),
            [](const char* const* a, const char* const* b) { return std::less<>()(*a, *b); });
  std::vector<const char*> inBytes;
  inBytes.reserve(positions.size());
  for (const char* const* const position : positions)
    inBytes.push_back(*position);
  const std::vector<TextPlace> places = placesOf(inBytes, bytes(), *m_text);
  for (std::size_t i = 0; i < positions.size(); ++i)
    *positions[i] = m_text->characters().data() + places[i].inText;
}

/// @param element with a position in the characters
FindingInText ReviewedLoad::inText(const AddedFinding& added, const ElementInText& element) {
  FindingInText finding;
  finding.rule = m_addedRules.emplace(added.rule).first->c_str();
  finding.severity = added.severity;
  finding.element = element.position;
  finding.message = fromNarrow(added.message);
  finding.kind = element.kind;
  finding.count = added.count;
  readStartTag(element.position, m_text->characters(), [&](const ElementView& tag) {
    if (element.kind) finding.name = tag.attribute(words().name);
    if (!added.attribute) return;
    finding.attributeName = fromNarrow(*added.attribute);
    finding.attribute = tag.attributePosition(finding.attributeName);
  });
  return finding;
}

std::optional<Findings> ReviewedLoad::withAdded(const std::vector<AddedFinding>& added) {
  if (!m_root) return std::nullopt;
  auto elements = elementsOf(added);
  const auto isUnknown = [](const auto& entry) { return !entry.second.position; };
  if (std::any_of(elements.begin(), elements.end(), isUnknown)) return std::nullopt;
  moveIntoCharacters(elements);
  std::vector<FindingInText> inText;
  inText.reserve(added.size());
  for (const AddedFinding& finding : added)
    inText.push_back(this->inText(finding, elements.at(finding.element)));

  Findings all;
  all.omitted = m_findings.omitted;
  std::vector<Finding> located = this->located(inText, all);
  std::vector<Finding> former = m_findings.kept;
  all.kept.reserve(former.size() + located.size());
  std::merge(std::make_move_iterator(former.begin()), std::make_move_iterator(former.end()),
             std::make_move_iterator(located.begin()), std::make_move_iterator(located.end()),
             std::back_inserter(all.kept),
             [](const Finding& a, const Finding& b) { return a.place.offset < b.place.offset; });
  cutToLimit(all);
  return all;
}

}  // namespace ztcad
