#include <ztCAD/ztCAD_c.h>

#include <map>
#include <vector>

#include "../rules/rules.h"
#include "json_text.h"
#include "reporter.h"
#include "sarif_text.h"

namespace cli {

namespace {

using nlohmann::ordered_json;

/// Consumers refuse reports with more results.
constexpr std::int64_t mostResults = 25000;

ordered_json message(const std::string& text) { return {{"text", sarifMessage(text)}}; }

ordered_json artifact(const std::string& file) { return {{"uri", sarifUri(file)}}; }

ordered_json regionOf(const Place& place, std::int64_t length) {
  return {{"startLine", place.line},
          {"startColumn", place.column},
          {"endLine", place.line},
          {"endColumn", place.column + length}};
}

ordered_json descriptorOf(const RuleDescription& rule) {
  const std::string page(rule.page);
  ordered_json help{{"text", rule.sentence}};
  if (!page.empty()) help["markdown"] = page;
  return {{"id", rule.name},
          {"shortDescription", {{"text", rule.sentence}}},
          {"help", help},
          {"defaultConfiguration", {{"level", wordFor(rule.severity)}}},
          {"properties", {{"since", rule.since}, {"page", rulePageReference(rule.name)}}}};
}

ordered_json locationOf(const std::string& file, const Finding& finding) {
  ordered_json location{
      {"physicalLocation",
       {{"artifactLocation", artifact(file)}, {"region", regionOf(finding.place, regionLength(finding))}}}};
  if (!finding.path.empty()) {
    ordered_json logical{{"fullyQualifiedName", finding.path},
                         {"kind", finding.attribute ? "attribute" : "element"}};
    if (finding.name) logical["name"] = *finding.name;
    location["logicalLocations"] = ordered_json::array({logical});
  }
  return location;
}

/// SARIF 2.1.0. Results are printed as they come, one a line; files without a result are notifications.
class SarifReporter : public Reporter {
 public:
  explicit SarifReporter(Output& output) : m_output(output) {}

  void begin() override {
    ordered_json rules = ordered_json::array();
    for (const RuleDescription& rule : allRules()) {
      m_ruleIndices[rule.name] = rules.size();
      rules.push_back(descriptorOf(rule));
    }
    const ordered_json tool{
        {"driver", {{"name", "ztcad"}, {"version", ztCADVersion()}, {"rules", std::move(rules)}}}};
    m_output << "{\n  \"$schema\": \"https://json.schemastore.org/sarif-2.1.0.json\",\n"
             << "  \"version\": \"2.1.0\",\n  \"runs\": [{\n    \"tool\": " << jsonText(tool)
             << ",\n    \"columnKind\": \"unicodeCodePoints\",\n"
             << "    \"newlineSequences\": [\"\\r\\n\", \"\\n\", \"\\r\"],\n    \"results\": [";
  }

  void add(const CheckedDocument& document) override {
    if (!document.review.problem.empty()) notify("error", document.review.problem, &document.file);
    for (const Finding& finding : document.review.findings)
      add(document.file, finding);
    if (document.omitted > 0)
      notify("warning", "Findings that are not shown: " + std::to_string(document.omitted), &document.file);
  }

  void end(const Summary& summary) override {
    if (m_results > mostResults)
      notify("warning",
             "Results beyond the first " + std::to_string(mostResults) +
                 " are left out: " + std::to_string(m_results - mostResults),
             nullptr);
    ordered_json invocation{{"executionSuccessful", summary.exitCode != ExitCode::Failed},
                            {"exitCode", static_cast<int>(summary.exitCode)}};
    invocation["toolExecutionNotifications"] = std::move(m_notifications);
    m_output << (m_results > 0 ? "\n    ]" : "]") << ",\n    \"invocations\": [" << jsonText(invocation)
             << "]\n  }]\n}\n";
  }

 private:
  void add(const std::string& file, const Finding& finding) {
    if (++m_results > mostResults) return;
    ordered_json result{{"ruleId", finding.rule}};
    const auto rule = m_ruleIndices.find(finding.rule);
    if (rule != m_ruleIndices.end()) result["ruleIndex"] = rule->second;
    result["level"] = wordFor(finding.severity);
    result["message"] = message(finding.message);
    result["locations"] = ordered_json::array({locationOf(file, finding)});
    result["properties"] = {{"offset", finding.place.offset}};
    if (finding.count > 1) addOccurrences(result, file, finding);
    m_output << (m_results == 1 ? "\n      " : ",\n      ") << jsonText(result);
  }

  static void addOccurrences(ordered_json& result, const std::string& file, const Finding& finding) {
    result["occurrenceCount"] = finding.count;
    ordered_json locations = ordered_json::array();
    for (const Place& place : finding.places) {
      constexpr std::int64_t length = 1;
      const ordered_json physical{{"artifactLocation", artifact(file)}, {"region", regionOf(place, length)}};
      locations.push_back({{"physicalLocation", physical}});
    }
    if (!locations.empty()) result["relatedLocations"] = std::move(locations);
  }

  void notify(const char* level, const std::string& text, const std::string* file) {
    ordered_json notification{{"level", level}, {"message", message(text)}};
    if (file) {
      const ordered_json location{{"physicalLocation", {{"artifactLocation", artifact(*file)}}}};
      notification["locations"] = ordered_json::array({location});
    }
    m_notifications.push_back(std::move(notification));
  }

  Output& m_output;
  std::map<std::string, std::size_t> m_ruleIndices;
  ordered_json m_notifications = ordered_json::array();
  std::int64_t m_results = 0;  // those that are left out included
};

}  // namespace

std::unique_ptr<Reporter> makeSarifReporter(Output& output) {
  return std::make_unique<SarifReporter>(output);
}

}  // namespace cli
