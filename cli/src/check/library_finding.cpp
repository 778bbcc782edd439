#include "library_finding.h"

#include <algorithm>

namespace cli {

namespace {

Place toPlace(const ztCAD_Place& place) { return {place.line, place.column, place.offset}; }

Severity toSeverity(std::int32_t severity) {
  if (severity == ztCAD_SeverityNote) return Severity::Note;
  return severity == ztCAD_SeverityWarning ? Severity::Warning : Severity::Error;
}

}  // namespace

Finding toFinding(const ztCAD_Finding& source) {
  Finding finding;
  finding.severity = toSeverity(source.severity);
  finding.rule = source.rule;
  finding.message = source.message;
  finding.place = toPlace(source.place);
  finding.path = source.path;
  if (source.attribute) finding.attribute = source.attribute;
  finding.kind = ztCAD_kindWord(source.kind);
  if (source.name) finding.name = source.name;
  finding.count = source.count;
  for (std::int32_t i = 0; i < source.placeCount; ++i)
    finding.places.push_back(toPlace(source.places[i]));
  return finding;
}

bool isFileProblem(std::int32_t code) {
  return code != ztCAD_ResultLoaded && code <= ztCAD_ResultFileMissing;
}

std::string messageOf(const ztCADInspect_Finding& finding) {
  std::string text = finding.message;
  if (finding.placeKind == ztCADInspect_PlaceNone || finding.placeCount < 1) return text;
  const bool isEdge = finding.placeKind == ztCADInspect_PlaceEdge;
  const bool isFacet = finding.placeKind == ztCADInspect_PlaceFacet;
  const char* const one = isEdge ? "edge" : isFacet ? "facet" : "vertex";
  const char* const several = isEdge ? "edges" : isFacet ? "facets" : "vertices";
  text += finding.count > 1 ? std::string(" The first ") + several + ": " : std::string(" The ") + one + ": ";
  constexpr std::int32_t most = 3;
  for (std::int32_t i = 0; i < std::min(finding.placeCount, most); ++i) {
    const std::int64_t* const place = finding.places + (isEdge ? 2 * i : i);
    if (i > 0) text += ", ";
    text += std::to_string(place[0]);
    if (isEdge) text += "-" + std::to_string(place[1]);
  }
  return text + ".";
}

}  // namespace cli
