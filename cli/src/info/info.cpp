#include "info.h"

#include <algorithm>

#include "../failure.h"
#include "../input_file.h"
#include "../loaded_document.h"
#include "info_printer.h"

namespace cli {

namespace {

ExitCode add(const std::string& file, InfoPrinter& printer) {
  InfoSubject subject;
  subject.file = file;
  const InputFile input(file);
  const LoadedDocument document(ztCAD_loadDocument(input.path().c_str(), &subject.outcome));
  subject.document = document.get();
  printer.add(subject);
  if (!document) return ExitCode::Failed;
  return subject.outcome.code == ztCAD_ResultLoaded && !subject.outcome.fault ? ExitCode::Good
                                                                              : ExitCode::NotWell;
}

}  // namespace

ExitCode printInfo(const InfoOptions& options) {
  if (std::count(options.files.begin(), options.files.end(), standardStream) > 1)
    throw UsageError("\"-\" is given more than once: standard input can be read only once");
  Output output;
  const auto printer = options.json ? makeInfoJson(output, options.tree) : makeInfoText(output, options.tree);
  ExitCode code = ExitCode::Good;
  printer->begin();
  for (const std::string& file : options.files)
    code = worst(code, add(file, *printer));
  printer->end();
  output.flush();
  return code;
}

}  // namespace cli
