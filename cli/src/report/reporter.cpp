#include "reporter.h"

#include <cstdlib>

#include "../platform/standard_streams.h"

namespace cli {

namespace {

bool wantsColours() {
  const char* const noColour = std::getenv("NO_COLOR");
  return (!noColour || *noColour == '\0') && isTerminal(stdout);
}

}  // namespace

std::unique_ptr<Reporter> makeReporter(ReportFormat format, Output& output) {
  switch (format) {
    case ReportFormat::Json:
      return makeJsonReporter(output);
    case ReportFormat::Sarif:
      return makeSarifReporter(output);
    case ReportFormat::Text:
      break;
  }
  return makeTextReporter(output, wantsColours());
}

}  // namespace cli
