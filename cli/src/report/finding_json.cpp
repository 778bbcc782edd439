#include "finding_json.h"

namespace cli {

namespace {

using nlohmann::ordered_json;

ordered_json toJson(const Place& place) {
  return {{"line", place.line}, {"column", place.column}, {"offset", place.offset}};
}

ordered_json elementOf(const Finding& finding) {
  ordered_json element{{"kind", finding.kind}};
  if (finding.name) element["name"] = *finding.name;
  return element;
}

}  // namespace

ordered_json findingJson(const Finding& finding) {
  ordered_json object{{"severity", wordFor(finding.severity)},
                      {"rule", finding.rule},
                      {"message", finding.message},
                      {"line", finding.place.line},
                      {"column", finding.place.column},
                      {"offset", finding.place.offset},
                      {"path", finding.path}};
  if (finding.attribute) object["attribute"] = *finding.attribute;
  if (!finding.kind.empty()) object["element"] = elementOf(finding);
  if (finding.count > 1) {
    object["count"] = finding.count;
    if (!finding.places.empty()) object["places"] = ordered_json::array();
    for (const Place& place : finding.places)
      object["places"].push_back(toJson(place));
  }
  return object;
}

}  // namespace cli
