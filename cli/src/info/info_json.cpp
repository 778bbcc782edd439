#include "../report/json_text.h"
#include "contents.h"
#include "info_printer.h"
#include "problem.h"

namespace cli {

namespace {

using nlohmann::ordered_json;

template <typename Value>
ordered_json orNull(const std::optional<Value>& value) {
  return value ? ordered_json(*value) : ordered_json();
}

ordered_json toJson(const DocumentSummary& summary) {
  const Header& header = summary.header;
  ordered_json elements = ordered_json::object();
  for (const std::int32_t kind : allKinds()) {
    const auto count = summary.elements.find(kind);
    if (count != summary.elements.end()) elements[ztCAD_kindWord(kind)] = count->second;
  }
  ordered_json object{{"header",
                       {{"majorVersion", orNull(header.majorVersion)},
                        {"minorVersion", orNull(header.minorVersion)},
                        {"inform", orNull(header.inform)},
                        {"state", header.state}}},
                      {"elements", elements},
                      {"vertices", summary.vertices},
                      {"facets", summary.facets}};
  object["box"] =
      summary.box ? ordered_json{{"min", summary.box->min}, {"max", summary.box->max}} : ordered_json();
  object["mass"] = {
      {"declared", summary.mass.elements > 0 ? ordered_json(summary.mass.total) : ordered_json()},
      {"elements", summary.mass.elements},
      {"unresolved", summary.mass.unresolved}};
  return object;
}

/// docs/info.schema.json describes the form.
class InfoJson : public InfoPrinter {
 public:
  InfoJson(Output& output, bool tree) : m_output(output), m_tree(tree) {}

  void begin() override { m_output << jsonBeginning("documents"); }

  void add(const InfoSubject& subject) override {
    const std::int32_t code = subject.outcome.code;
    const bool wasRead = code == ztCAD_ResultLoaded || code > ztCAD_ResultFileMissing;
    ordered_json object{{"file", subject.file}};
    object["code"] = wasRead ? ordered_json(code) : ordered_json();
    object["fault"] = subject.outcome.fault;
    if (code != ztCAD_ResultLoaded) {
      object["problem"] = problemOf(subject.outcome);
      printError(subject.file + ": " + problemOf(subject.outcome));
    }
    if (subject.document) object.update(toJson(summarise(subject.document)));
    std::string text = jsonText(object);
    text.pop_back();  // the brace that the tree comes before
    m_output << (m_isFirst ? "\n    " : ",\n    ") << text;
    m_isFirst = false;
    if (m_tree && subject.document) {
      m_output << ",\n      \"tree\":";
      printTree(subject.document, "\n      ");
    }
    m_output << "}";
  }

  void end() override { m_output << (m_isFirst ? "]" : "\n  ]") << "\n}\n"; }

 private:
  /// Printed element by element: a document may have millions of them.
  template <typename Holder>
  void printTree(Holder* holder, const std::string& newLine) {
    const std::string inner = newLine + "  ";
    const char* separator = "";
    m_output << "[";
    for (const std::int32_t kind : allKinds())
      for (ztCAD_Base* element : elementsOf(holder, kind)) {
        std::string text = jsonText(ordered_json{{"kind", ztCAD_kindWord(kind)}, {"name", nameOf(element)}});
        text.pop_back();
        m_output << separator << inner << text;
        if (isHolder(kind)) {
          m_output << ",\"elements\":";
          printTree(element, inner);
        }
        m_output << "}";
        separator = ",";
      }
    m_output << (*separator == '\0' ? "]" : newLine + "]");
  }

  Output& m_output;
  bool m_tree;
  bool m_isFirst = true;
};

}  // namespace

std::unique_ptr<InfoPrinter> makeInfoJson(Output& output, bool tree) {
  return std::make_unique<InfoJson>(output, tree);
}

}  // namespace cli
