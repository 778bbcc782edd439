#include "json_text.h"

#include <ztCAD/ztCAD_c.h>

namespace cli {

std::string jsonHead() {
  using nlohmann::ordered_json;
  const ordered_json tool{{"name", "ztcad"}, {"version", ztCADVersion()}};
  return "{\n  \"schema\": " + std::to_string(reportSchema) + ",\n  \"tool\": " + jsonText(tool) + ",\n";
}

std::string jsonBeginning(const char* list) { return jsonHead() + "  \"" + list + "\": ["; }

}  // namespace cli
