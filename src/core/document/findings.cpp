#include "findings.h"

#include <algorithm>
#include <cstddef>

#include "../../text/narrow_text.h"

namespace ztcad {

namespace {

const char* placeOf(const FindingInText& finding) {
  return finding.attribute ? finding.attribute : finding.element;
}

/// The findings to keep, in the order of the text.
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

}  // namespace

Findings soleFinding(std::int64_t limit, Rule rule, const QString& argument) {
  Findings findings;
  const RuleInfo& info = infoOf(rule);
  if (limit == 0) {
    count(findings, info.severity);
    return findings;
  }
  Finding& finding = findings.kept.emplace_back();
  finding.rule = rule;
  finding.severity = info.severity;
  finding.message = toNarrow(messageOf(rule, {argument}));
  finding.place = {1, 1, 0, 0};
  finding.count = 1;
  return findings;
}

Findings findingsOf(const Review& review, std::string_view bytes, const XmlText& text) {
  Findings findings;
  for (const Severity severity : {Severity::note, Severity::warning, Severity::error})
    findings.omitted[static_cast<std::size_t>(severity)] = review.omitted(severity);
  std::vector<const FindingInText*> ordered = inOrder(review.findings());
  const auto limit = static_cast<std::size_t>(review.limit());
  if (review.limit() >= 0 && ordered.size() > limit) {
    for (std::size_t i = limit; i < ordered.size(); ++i)
      count(findings, ordered[i]->severity);
    ordered.resize(limit);
  }
  if (ordered.empty()) return findings;
  const Locations locations(ordered, bytes, text);
  findings.kept.reserve(ordered.size());
  for (const FindingInText* const found : ordered)
    findings.kept.push_back(located(*found, locations));
  return findings;
}

}  // namespace ztcad
