#include "diff.h"

#include "../failure.h"
#include "../info/problem.h"
#include "../input_file.h"
#include "../loaded_document.h"
#include "diff_printers.h"

namespace cli {

namespace {

/// A document to compare. Of one with errors only what was read is compared.
class Side {
 public:
  explicit Side(const std::string& file) {
    const InputFile input(file);
    ztCAD_Outcome outcome;
    m_document.reset(ztCAD_loadDocument(input.path().c_str(), &outcome));
    if (!m_document) throw Failure(file + ": " + problemOf(outcome));
    m_isWell = outcome.code == ztCAD_ResultLoaded && !outcome.fault;
    if (!m_isWell) printError(file + ": the document has errors; only what was read is compared");
  }

  ztCAD_GMDDocument* document() const { return m_document.get(); }
  bool isWell() const { return m_isWell; }

 private:
  LoadedDocument m_document;
  bool m_isWell = false;
};

const char* stateOf(const Side& side) { return side.isWell() ? "well" : "has errors"; }

/// Passes differences on and counts them.
class CountingPrinter : public DifferencePrinter {
 public:
  explicit CountingPrinter(DifferencePrinter& printer) : m_printer(printer) {}
  void add(const Difference& difference) override {
    m_hasDifference = true;
    m_printer.add(difference);
  }
  bool hasDifference() const { return m_hasDifference; }

 private:
  DifferencePrinter& m_printer;
  bool m_hasDifference = false;
};

}  // namespace

ExitCode diff(const DiffOptions& options) {
  if (options.a == standardStream && options.b == standardStream)
    throw UsageError("\"-\" is given more than once: standard input can be read only once");
  const Side a(options.a);
  const Side b(options.b);
  Output output;
  const auto printer = options.json ? makeDiffJson(output, options) : makeDiffText(output, options);
  CountingPrinter counter(*printer);
  printer->begin();
  if (a.isWell() != b.isWell()) {
    Difference difference;
    difference.field = "result";
    difference.a = stateOf(a);
    difference.b = stateOf(b);
    counter.add(difference);
  }
  compareDocuments(a.document(), b.document(), options.tolerance, counter);
  printer->end();
  output.flush();
  return counter.hasDifference() ? ExitCode::NotWell : ExitCode::Good;
}

}  // namespace cli
