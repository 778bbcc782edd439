#include "mass.h"

#include <array>
#include <vector>

#include "../failure.h"
#include "../info/problem.h"
#include "../input_file.h"
#include "../loaded_document.h"
#include "../scene.h"
#include "mass_printer.h"

namespace cli {

namespace {

struct EndMassTable {
  void operator()(ztCADInspect_MassTable* table) const { ztCADInspect_endMassTable(table); }
};

/// Data for an element.
struct NewData {
  ztCAD_Base* element;
  std::array<double, 10> values;
};

bool takesData(std::int32_t kind) {
  return kind == ztCAD_ElementSphere || kind == ztCAD_ElementTriangle || kind == ztCAD_ElementTmplTriangle ||
         kind == ztCAD_ElementDetail || kind == ztCAD_ElementTmplDetail;
}

class Masses {
 public:
  explicit Masses(const MassOptions& options) : m_options(options) {
    ztCADInspect_initOptions(&m_settings, sizeof m_settings);
    m_settings.density = options.density.value_or(0);
    m_settings.threads = 0;
  }

  ExitCode run() {
    const InputFile input(m_options.file);
    ztCAD_Outcome outcome;
    m_document.reset(ztCAD_loadDocument(input.path().c_str(), &outcome));
    if (!m_document) throw Failure(m_options.file + ": " + problemOf(outcome));
    const bool isWell = outcome.code == ztCAD_ResultLoaded && !outcome.fault;
    if (!isWell) printError(m_options.file + ": the document has errors; 'ztcad check' lists them");
    printTable();
    if (!m_options.output.empty()) write();
    return isWell ? ExitCode::Good : ExitCode::NotWell;
  }

 private:
  /// Prints the table, and keeps what was computed: the document must not change while it is open.
  void printTable() {
    const OpenScene scene = openScene(m_document.get(), m_options.file, &m_settings);
    const std::unique_ptr<ztCADInspect_MassTable, EndMassTable> table(
        ztCADInspect_openMassTable(scene.get()));
    if (!table) throw std::bad_alloc();
    Output output;
    const auto printer =
        m_options.json ? makeMassJson(output, m_options.file, m_options.density) : makeMassText(output);
    const ztCADInspect_MassRow* const rows = ztCADInspect_massRows(table.get());
    for (std::int64_t i = 0; i < ztCADInspect_massRowCount(table.get()); ++i) {
      printer->add(rows[i]);
      keep(rows[i]);
    }
    printer->end(*ztCADInspect_massTotal(table.get()));
    output.flush();
  }

  void keep(const ztCADInspect_MassRow& row) {
    if (!takesData(row.kind) || !isComputed(row) || row.computed.hasMass == 0) return;
    NewData data{const_cast<ztCAD_Base*>(row.element), {}};  // NOLINT: it is the document's, which is ours
    if (ztCADInspect_massToNumbers(&row.computed, row.element, &m_settings, data.values.data()))
      m_newData.push_back(data);
  }

  void write() {
    ztCAD_MIP* const record = crtMIP_nostl(std::array<double, 10>{}.data(), 10);
    for (const NewData& data : m_newData) {
      ztCAD_fillMIP(record, data.values.data(), 10);
      ztCAD_setMIP(data.element, record);
    }
    ztCAD_Outcome outcome;
    if (!ztCAD_saveDocument(m_document.get(), m_options.output.c_str(), &outcome))
      throw Failure(m_options.output + ": " + problemOf(outcome));
  }

  const MassOptions& m_options;
  ztCADInspect_Options m_settings{};
  LoadedDocument m_document;
  std::vector<NewData> m_newData;
};

}  // namespace

ExitCode printMass(const MassOptions& options) {
  if (!options.output.empty() && !options.density)
    throw UsageError("--write needs --density: without one there is no mass to write");
  if (options.output == standardStream)
    throw UsageError("--write needs a file: the table goes to standard output");
  return Masses(options).run();
}

}  // namespace cli
