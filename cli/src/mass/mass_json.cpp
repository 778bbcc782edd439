#include "../report/json_text.h"
#include "mass_printer.h"
#include "mass_values.h"

namespace cli {

namespace {

using nlohmann::ordered_json;

/// docs/mass.schema.json describes the form. Each element is a line.
class MassJson : public MassPrinter {
 public:
  MassJson(Output& output, const std::string& file, std::optional<double> density) : m_output(output) {
    m_output << "{\n  \"file\": " << jsonText(ordered_json(file))
             << ",\n  \"density\": " << jsonText(density ? ordered_json(*density) : ordered_json())
             << ",\n  \"elements\": [";
  }

  void add(const ztCADInspect_MassRow& row) override {
    const std::string reason = row.reason;
    ordered_json object{{"path", row.path}, {"kind", ztCAD_kindWord(row.kind)}, {"name", row.name}};
    object["declared"] = declaredJson(row);
    object["computed"] = computedJson(row);
    object["reason"] = reason.empty() ? ordered_json() : ordered_json(reason);
    m_output << (m_isFirst ? "\n    " : ",\n    ") << jsonText(object);
    m_isFirst = false;
  }

  void end(const ztCADInspect_MassRow& total) override {
    const ordered_json object{{"declared", declaredJson(total)}, {"computed", computedJson(total)}};
    m_output << (m_isFirst ? "]" : "\n  ]") << ",\n  \"total\": " << jsonText(object) << "\n}\n";
  }

 private:
  Output& m_output;
  bool m_isFirst = true;
};

}  // namespace

std::unique_ptr<MassPrinter> makeMassJson(Output& output, const std::string& file,
                                          std::optional<double> density) {
  return std::make_unique<MassJson>(output, file, density);
}

}  // namespace cli
