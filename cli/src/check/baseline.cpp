#include "baseline.h"

#include <fstream>
#include <nlohmann/json.hpp>

#include "../failure.h"
#include "../input_file.h"
#include "../platform/file_names.h"
#include "../report/json_text.h"

namespace cli {

namespace {

using nlohmann::json;

std::string identityOf(const json& file, const json& rule, const json& message, const json& kind,
                       const json& name) {
  return jsonText(json::array({file, rule, message, kind, name}));
}

std::string identityOf(const std::string& file, const json& finding) {
  const json element = finding.value("element", json::object());
  return identityOf(file, finding.at("rule"), finding.at("message"), element.value("kind", json()),
                    element.value("name", json()));
}

json readReport(const std::string& file) {
  const InputFile input(file);
  std::ifstream stream(pathOf(input.path()), std::ios::binary);
  if (!stream) throw Failure(file + ": the earlier report cannot be read");
  json report = json::parse(stream);
  if (report.at("schema") != reportSchema) throw Failure(file + ": the earlier report has another schema");
  return report;
}

}  // namespace

Baseline::Baseline(const std::string& reportFile) {
  try {
    const json report = readReport(reportFile);
    for (const json& document : report.at("documents"))
      for (const json& finding : document.at("findings"))
        ++m_known[identityOf(document.at("file").get<std::string>(), finding)];
  } catch (const json::exception&) {
    throw Failure(reportFile + ": this is no report of 'ztcad check --format json'");
  }
}

bool Baseline::takeKnown(const std::string& file, const Finding& finding) {
  if (m_known.empty()) return false;
  const json kind = finding.kind.empty() ? json() : json(finding.kind);
  const json name = finding.name ? json(*finding.name) : json();
  const auto known = m_known.find(identityOf(file, finding.rule, finding.message, kind, name));
  if (known == m_known.end() || known->second == 0) return false;
  --known->second;
  return true;
}

}  // namespace cli
