#include "reporter.h"

namespace cli {

namespace {

struct Colours {
  const char* place;
  std::array<const char*, severityCount> severities;
  const char* rule;
  const char* end;
};
constexpr Colours terminalColours{"\x1b[1m", {"\x1b[36m", "\x1b[33m", "\x1b[31m"}, "\x1b[2m", "\x1b[0m"};
constexpr Colours noColours{"", {"", "", ""}, "", ""};

/// One line for each finding, as compilers print their errors: editors and build logs understand it.
class TextReporter : public Reporter {
 public:
  TextReporter(Output& output, const Colours& colours) : m_output(output), m_colours(colours) {}

  void add(const CheckedDocument& document) override {
    const std::string file = onOneLine(document.file);
    for (const Finding& finding : document.review.findings)
      print(file, finding);
    if (document.omitted > 0)
      m_output << file << ": findings that are not shown: " << std::to_string(document.omitted) << "\n";
  }

 private:
  void print(const std::string& file, const Finding& finding) {
    const char* const severity = m_colours.severities.at(static_cast<std::size_t>(finding.severity));
    m_output << m_colours.place << file << ":" << std::to_string(finding.place.line) << ":"
             << std::to_string(finding.place.column) << ":" << m_colours.end << " " << severity
             << wordFor(finding.severity) << ":" << m_colours.end << " " << onOneLine(finding.message) << " "
             << m_colours.rule << "[" << finding.rule << "]" << m_colours.end << "\n";
  }

  Output& m_output;
  const Colours& m_colours;
};

}  // namespace

std::unique_ptr<Reporter> makeTextReporter(Output& output, bool colours) {
  return std::make_unique<TextReporter>(output, colours ? terminalColours : noColours);
}

}  // namespace cli
