#include "finding_json.h"
#include "json_text.h"
#include "reporter.h"

namespace cli {

namespace {

using nlohmann::ordered_json;

/// docs/check.schema.json describes the form. Each document and each finding is a line, so that two reports
/// can be compared line by line.
class JsonReporter : public Reporter {
 public:
  explicit JsonReporter(Output& output) : m_output(output) {}

  void begin() override { m_output << jsonBeginning("documents"); }

  void add(const CheckedDocument& document) override {
    const Review& review = document.review;
    ordered_json head{{"file", document.file}};
    head["code"] = review.problem.empty() ? ordered_json(review.code) : ordered_json();
    head["fault"] = review.fault;
    head["omitted"] = document.omitted;
    if (!review.problem.empty()) head["problem"] = review.problem;
    std::string line = jsonText(head);
    line.pop_back();  // the brace that the findings come before
    m_output << (m_isFirst ? "\n    " : ",\n    ") << line << ",\"findings\":[";
    m_isFirst = false;
    const char* separator = "\n      ";
    for (const Finding& finding : review.findings) {
      m_output << separator << jsonText(findingJson(finding));
      separator = ",\n      ";
    }
    m_output << "]}";
  }

  void end(const Summary& summary) override {
    const auto count = [&](Severity severity) {
      return summary.counts.at(static_cast<std::size_t>(severity));
    };
    const ordered_json object{{"documents", summary.documents},
                              {"errors", count(Severity::Error)},
                              {"warnings", count(Severity::Warning)},
                              {"notes", count(Severity::Note)}};
    m_output << (m_isFirst ? "]" : "\n  ]") << ",\n  \"summary\": " << jsonText(object) << "\n}\n";
  }

 private:
  Output& m_output;
  bool m_isFirst = true;
};

}  // namespace

std::unique_ptr<Reporter> makeJsonReporter(Output& output) { return std::make_unique<JsonReporter>(output); }

}  // namespace cli
