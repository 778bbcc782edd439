#include "../number_text.h"
#include "contents.h"
#include "info_printer.h"
#include "problem.h"

namespace cli {

namespace {

std::string textOf(const std::optional<std::uint32_t>& number) {
  return number ? std::to_string(*number) : "?";
}

class InfoText : public InfoPrinter {
 public:
  InfoText(Output& output, bool tree) : m_output(output), m_tree(tree) {}

  void add(const InfoSubject& subject) override {
    if (subject.outcome.code != ztCAD_ResultLoaded)
      printError(subject.file + ": " + problemOf(subject.outcome));
    if (!subject.document) return;
    m_output << onOneLine(subject.file) << "\n";
    print(summarise(subject.document));
    if (subject.outcome.fault || subject.outcome.code != ztCAD_ResultLoaded)
      line("result", "not well; 'ztcad check' says why");
    if (m_tree) {
      m_output << "  tree\n";
      printTree(subject.document, 4);
    }
    m_output.flush();
  }

 private:
  void line(const std::string& what, const std::string& value) {
    constexpr std::size_t width = 24;
    m_output << "  " << what << std::string(what.size() < width ? width - what.size() : 1, ' ') << value
             << "\n";
  }

  void print(const DocumentSummary& summary) {
    const Header& header = summary.header;
    line("version", textOf(header.majorVersion) + "." + textOf(header.minorVersion));
    if (header.state == "error") line("header", "a version is missing or no number");
    if (header.inform && !header.inform->empty()) line("inform", onOneLine(*header.inform));
    for (const std::int32_t kind : allKinds()) {
      const auto count = summary.elements.find(kind);
      if (count != summary.elements.end()) line(ztCAD_kindWord(kind), std::to_string(count->second));
    }
    line("vertices", std::to_string(summary.vertices));
    line("facets", std::to_string(summary.facets));
    if (summary.box)
      line("box", tripleText(summary.box->min.data()) + " to " + tripleText(summary.box->max.data()));
    if (summary.mass.elements > 0) line("declared mass", numberText(summary.mass.total));
    if (summary.mass.unresolved > 0)
      line("mass not found", std::to_string(summary.mass.unresolved) + " references");
  }

  template <typename Holder>
  void printTree(Holder* holder, std::size_t indentation) {
    for (const std::int32_t kind : allKinds())
      for (ztCAD_Base* element : elementsOf(holder, kind)) {
        m_output << std::string(indentation, ' ') << ztCAD_kindWord(kind) << " \""
                 << onOneLine(nameOf(element)) << "\"\n";
        if (isHolder(kind)) printTree(element, indentation + 2);
      }
  }

  Output& m_output;
  bool m_tree;
};

}  // namespace

std::unique_ptr<InfoPrinter> makeInfoText(Output& output, bool tree) {
  return std::make_unique<InfoText>(output, tree);
}

}  // namespace cli
