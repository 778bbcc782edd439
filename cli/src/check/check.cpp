#include "check.h"

#include <algorithm>
#include <thread>

#include "../failure.h"
#include "../input_file.h"
#include "../platform/standard_streams.h"
#include "../progress.h"
#include "../rules/rules.h"
#include "../scene.h"
#include "../worker/review_queue.h"
#include "documents.h"

namespace cli {

namespace {

Selection selectionOf(const CheckOptions& options) {
  for (const std::string& rule : options.only)
    requireRule(rule, "--only");
  for (const std::string& rule : options.ignore)
    requireRule(rule, "--ignore");
  Selection selection;
  selection.only.insert(options.only.begin(), options.only.end());
  selection.ignore.insert(options.ignore.begin(), options.ignore.end());
  selection.lowestShown = options.lowestShown.value_or(std::min(Severity::Warning, options.failOn));
  selection.most = options.most;
  return selection;
}

/// `-` means standard input, which can be read once.
void requireOneStandardInput(const CheckOptions& options) {
  const auto streams = std::count(options.paths.begin(), options.paths.end(), standardStream) +
                       (options.baseline == standardStream ? 1 : 0);
  if (streams > 1) throw UsageError("\"-\" is given more than once: standard input can be read only once");
}

std::string counted(std::int64_t number, const std::string& word) {
  return std::to_string(number) + " " + word + (number == 1 ? "" : "s");
}

/// "3 documents: 1 error, 2 warnings, 0 notes"
std::string textOf(const Summary& summary) {
  std::string text = counted(summary.documents, "document");
  const char* separator = ": ";
  for (const Severity severity : {Severity::Error, Severity::Warning, Severity::Note}) {
    text += separator +
            counted(summary.counts.at(static_cast<std::size_t>(severity)), std::string(wordFor(severity)));
    separator = ", ";
  }
  if (summary.hidden > 0) text += "; " + counted(summary.hidden, "finding") + " below --level";
  return text;
}

class Check {
 public:
  explicit Check(const CheckOptions& options)
      : m_options(options),
        m_selection(selectionOf(options)),
        m_baseline(options.baseline.empty() ? Baseline() : Baseline(options.baseline)),
        m_reporter(makeReporter(options.format, m_output)) {}

  ExitCode run() {
    m_documents = findDocuments(m_options.paths);
    copyStandardInput();
    Progress progress(m_documents.size());
    ReviewQueue queue(requests(), jobs(), m_options.timeLimit);
    m_reporter->begin();
    for (const DocumentName& document : m_documents) {
      Review review;
      review.problem = document.problem;
      if (document.problem.empty()) review = queue.next();
      progress.hide();
      add(select(m_selection, m_baseline, document.name, std::move(review)));
      progress.advance();
    }
    progress.hide();
    m_reporter->end(m_summary);
    m_output.flush();
    if (m_options.format == ReportFormat::Text && isTerminal(stderr)) printError(textOf(m_summary));
    return m_summary.exitCode;
  }

 private:
  int jobs() const {
    return m_options.jobs > 0 ? m_options.jobs : static_cast<int>(std::thread::hardware_concurrency());
  }

  void copyStandardInput() {
    for (DocumentName& document : m_documents) {
      if (document.name != standardStream) continue;
      try {
        m_standardInput.emplace(document.name);
      } catch (const Failure& failure) {
        document.problem = failure.what();
      }
    }
  }

  std::vector<ReviewRequest> requests() const {
    std::vector<ReviewRequest> requests;
    for (const DocumentName& document : m_documents) {
      if (!document.problem.empty()) continue;
      const bool isStream = document.name == standardStream;
      requests.push_back({isStream ? m_standardInput->path() : document.name, folderOf(document.name),
                          !m_options.noInspect});
    }
    return requests;
  }

  void add(const CheckedDocument& document) {
    ++m_summary.documents;
    for (std::size_t i = 0; i < m_summary.counts.size(); ++i)
      m_summary.counts.at(i) += document.counts.at(i);
    m_summary.hidden += document.hidden;
    ExitCode code = ExitCode::Good;
    if (!document.review.problem.empty()) {
      code = ExitCode::Failed;
      printError(document.file + ": " + document.review.problem);
    } else if (document.worst && *document.worst >= m_options.failOn) {
      code = ExitCode::NotWell;
    }
    m_summary.exitCode = worst(m_summary.exitCode, code);
    m_reporter->add(document);
    m_output.flush();
  }

  const CheckOptions& m_options;
  const Selection m_selection;
  Baseline m_baseline;
  Output m_output;
  std::unique_ptr<Reporter> m_reporter;
  std::vector<DocumentName> m_documents;
  std::optional<InputFile> m_standardInput;
  Summary m_summary;
};

}  // namespace

ExitCode check(const CheckOptions& options) {
  requireOneStandardInput(options);
  return Check(options).run();
}

}  // namespace cli
