#include "finding_list.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <deque>
#include <map>
#include <memory>
#include <new>
#include <set>
#include <tuple>
#include <unordered_map>

#include "../check/library_finding.h"

namespace cli {

namespace {

struct EndFindings {
  void operator()(ztCADInspect_Findings* findings) const { ztCADInspect_endFindings(findings); }
};

using Spots = std::vector<std::vector<Position>>;

/// The places of a finding about a mesh.
Spots spotsOf(const ztCADInspect_Finding& finding) {
  const ztCAD_Vertices* const vertices = finding.element ? ztCAD_getVertices(finding.element) : nullptr;
  const ztCAD_Faces* const faces = finding.element ? ztCAD_getFaces(finding.element) : nullptr;
  const double* const xyz = ztCAD_getVertexData(vertices);
  const std::int64_t vertexCount = ztCAD_getVertexCount(vertices);
  Spots spots;
  const auto addSpot = [&](const std::vector<std::int64_t>& corners) {
    std::vector<Position> points;
    for (const std::int64_t corner : corners)
      if (corner >= 0 && corner < vertexCount &&
          std::all_of(xyz + 3 * corner, xyz + 3 * corner + 3, [](double n) { return std::isfinite(n); }))
        points.push_back({xyz[3 * corner], xyz[3 * corner + 1], xyz[3 * corner + 2]});
    if (points.size() == corners.size()) spots.push_back(points);
  };
  for (std::int64_t i = 0; i < finding.placeCount; ++i) {
    const std::int64_t place = finding.places[i];
    if (finding.placeKind == ztCADInspect_PlaceVertex) {
      addSpot({place});
    } else if (finding.placeKind == ztCADInspect_PlaceEdge) {
      addSpot({finding.places[2 * i], finding.places[2 * i + 1]});
    } else if (finding.placeKind == ztCADInspect_PlaceFacet && place < ztCAD_getFacetCount(faces)) {
      const std::uint32_t* const facet = ztCAD_getFacetData(faces) + 3 * place;
      addSpot({facet[0], facet[1], facet[2]});
    }
  }
  return spots;
}

/// Adds findings to a review, all at once: those of the scene, and markers.
///
/// A review knows elements by their place in the text, the scene by their address. A marker is a finding
/// whose message is the index of its element: the review adds the element's path in the text to it.
class Additions {
 public:
  Additions(const ElementList& elements, ztCADInspect_Scene* scene) : m_elements(elements) {
    if (!scene) return;
    m_source.reset(ztCADInspect_check(scene, ztCADInspect_CheckAll));
    if (!m_source) throw std::bad_alloc();
    for (std::int64_t i = 0; i < ztCADInspect_findingCount(m_source.get()); ++i)
      addFinding(*ztCADInspect_findingAt(m_source.get(), i));
  }

  void addTo(ztCAD_Review* review) {
    addMarkers(review);
    if (!m_added.empty() &&
        !ztCAD_addFindings(review, m_added.data(), static_cast<std::int64_t>(m_added.size())))
      throw std::bad_alloc();
  }

  static bool isMarker(const ztCAD_Finding& finding) { return finding.rule == std::string_view(markerRule); }

  /// The places of a finding that came from the scene.
  Spots spotsFor(std::int64_t element, const Finding& finding) const {
    const auto found = m_spots.find({element, finding.rule, finding.message});
    return found == m_spots.end() ? Spots() : found->second;
  }

 private:
  static constexpr const char* markerRule = "element-place";

  void addFinding(const ztCADInspect_Finding& finding) {
    const std::string& message = m_messages.emplace_back(messageOf(finding));
    m_added.push_back(
        {finding.severity, finding.rule, message.c_str(), finding.element, finding.attribute, finding.count});
    m_kinds.insert(ztCAD_getKind(finding.element));
    Spots spots = spotsOf(finding);
    if (!spots.empty()) m_spots[{m_elements.find(finding.element), finding.rule, message}] = std::move(spots);
  }

  /// Only for kinds that findings are about: a document may have millions of elements.
  void addMarkers(const ztCAD_Review* review) {
    for (std::int64_t i = 0; i < ztCAD_findingCount(review); ++i)
      m_kinds.insert(ztCAD_findingAt(review, i)->kind);
    for (std::size_t i = 0; i < m_elements.elements().size(); ++i) {
      ztCAD_Base* const element = m_elements.elements()[i].element;
      if (m_kinds.count(ztCAD_getKind(element)) == 0) continue;
      const char* const index = m_messages.emplace_back(std::to_string(i)).c_str();
      m_added.push_back({ztCAD_SeverityNote, markerRule, index, element, nullptr, 1});
    }
  }

  const ElementList& m_elements;
  std::unique_ptr<ztCADInspect_Findings, EndFindings> m_source;
  std::vector<ztCAD_AddedFinding> m_added;
  std::deque<std::string> m_messages;
  std::set<std::int32_t> m_kinds;
  std::map<std::tuple<std::int64_t, std::string, std::string>, Spots> m_spots;
};

/// The elements by their path in the text.
class MarkedPaths {
 public:
  void add(const ztCAD_Finding& marker) {
    const std::string_view message = marker.message;
    std::int64_t index = 0;
    std::from_chars(message.data(), message.data() + message.size(), index);
    m_elements.emplace(marker.path, index);
  }

  /// The element at a path, or the nearest that contains what is there: "/GMD/point[2]/@center".
  std::int64_t find(std::string path) const {
    while (!path.empty()) {
      const auto found = m_elements.find(path);
      if (found != m_elements.end()) return found->second;
      path.erase(std::min(path.rfind('/'), path.size()));
    }
    return ElementList::none;
  }

 private:
  std::unordered_map<std::string, std::int64_t> m_elements;
};

}  // namespace

FindingList::FindingList(ztCAD_Review* review, const ElementList& elements, ztCADInspect_Scene* scene,
                         std::string_view bytes) {
  Additions additions(elements, scene);
  additions.addTo(review);
  MarkedPaths paths;
  for (std::int64_t i = 0; i < ztCAD_findingCount(review); ++i) {
    const ztCAD_Finding& finding = *ztCAD_findingAt(review, i);
    if (Additions::isMarker(finding))
      paths.add(finding);
    else
      m_findings.push_back({toFinding(finding)});
  }
  m_hasErrors = std::any_of(m_findings.begin(), m_findings.end(), [](const ShownFinding& shown) {
    return shown.finding.severity == Severity::Error;
  });
  keepMostSevere();
  for (ShownFinding& shown : m_findings) {
    shown.element = paths.find(shown.finding.path);
    shown.spots = additions.spotsFor(shown.element, shown.finding);
  }
  addLines(bytes);
}

void FindingList::keepMostSevere() {
  std::array<std::size_t, severityCount> counts{};
  for (const ShownFinding& shown : m_findings)
    ++counts.at(static_cast<std::size_t>(shown.finding.severity));
  std::size_t room = most;
  for (const Severity severity : {Severity::Error, Severity::Warning, Severity::Note}) {
    std::size_t& kept = counts.at(static_cast<std::size_t>(severity));
    kept = std::min(kept, room);
    room -= kept;
  }
  const auto isOmitted = [&](const ShownFinding& shown) {
    std::size_t& kept = counts.at(static_cast<std::size_t>(shown.finding.severity));
    if (kept == 0) return true;
    --kept;
    return false;
  };
  std::vector<ShownFinding> findings;
  for (ShownFinding& shown : m_findings) {
    if (isOmitted(shown))
      ++m_omitted;
    else
      findings.push_back(std::move(shown));
  }
  m_findings = std::move(findings);
}

void FindingList::addLines(std::string_view bytes) {
  std::vector<Place> places;
  places.reserve(m_findings.size());
  for (const ShownFinding& shown : m_findings)
    places.push_back(shown.finding.place);
  std::vector<std::vector<SourceLine>> lines = linesAround(bytes, places);
  for (std::size_t i = 0; i < m_findings.size(); ++i)
    m_findings[i].lines = std::move(lines[i]);
}

}  // namespace cli
