#include <algorithm>
#include <array>
#include <cstdio>
#include <vector>

#include "mass_printer.h"

namespace cli {

namespace {

constexpr std::size_t columns = 13;
using Cells = std::array<std::string, columns>;

const Cells titles{"",    "mass", "volume", "area", "center x", "center y", "center z",
                   "Ixx", "Iyy",  "Izz",    "Ixy",  "Ixz",      "Iyz"};

/// Six digits: what a document keeps.
std::string digits(double number) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.6g", number + 0.0);
  return text.data();
}

Cells cellsOf(const char* what, const ztCADInspect_MassProperties& mass) {
  Cells cells;
  cells[0] = std::string("  ") + what;
  cells[1] = mass.hasMass != 0 ? digits(mass.mass) : "-";
  cells[2] = mass.hasVolume != 0 ? digits(mass.volume) : "-";
  cells[3] = mass.hasVolume != 0 && mass.area >= 0 ? digits(mass.area) : "-";
  for (std::size_t k = 0; k < 3; ++k)
    cells.at(4 + k) = digits(mass.center[k]);
  constexpr std::array<std::size_t, 6> entries{0, 4, 8, 1, 2, 5};  // of the matrix, row by row
  for (std::size_t k = 0; k < entries.size(); ++k)
    cells.at(7 + k) = digits(mass.inertia[entries.at(k)]);
  return cells;
}

/// A table. A line without cells is a heading, which no column has to be wide for.
class MassText : public MassPrinter {
 public:
  explicit MassText(Output& output) : m_output(output) { addCells(titles); }

  void add(const ztCADInspect_MassRow& row) override {
    addHeading(std::string(row.path) + " \"" + row.name + "\"");
    addProperties(row);
  }

  void end(const ztCADInspect_MassRow& total) override {
    addHeading("total");
    addProperties(total);
    for (const Line& line : m_lines)
      print(line);
  }

 private:
  struct Line {
    std::string heading;
    Cells cells;
  };

  void addHeading(const std::string& text) { m_lines.push_back({onOneLine(text), {}}); }
  void addCells(const Cells& cells) {
    for (std::size_t i = 0; i < columns; ++i)
      m_widths.at(i) = std::max(m_widths.at(i), cells.at(i).size());
    m_lines.push_back({"", cells});
  }

  void addProperties(const ztCADInspect_MassRow& row) {
    if (isDeclared(row)) addCells(cellsOf("declared", row.declared));
    if (isComputed(row))
      addCells(cellsOf("computed", row.computed));
    else
      addHeading("  not computed: " + std::string(row.reason));
  }

  void print(const Line& line) {
    if (!line.heading.empty()) {
      m_output << line.heading << "\n";
      return;
    }
    std::string text = line.cells[0] + std::string(m_widths[0] - line.cells[0].size(), ' ');
    for (std::size_t i = 1; i < columns; ++i)
      text += "  " + std::string(m_widths.at(i) - line.cells.at(i).size(), ' ') + line.cells.at(i);
    m_output << text << "\n";
  }

  Output& m_output;
  std::vector<Line> m_lines;
  std::array<std::size_t, columns> m_widths{};
};

}  // namespace

std::unique_ptr<MassPrinter> makeMassText(Output& output) { return std::make_unique<MassText>(output); }

}  // namespace cli
