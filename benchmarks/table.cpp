#include "table.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <ostream>

namespace benchmarks {

namespace {

constexpr double million = 1e6;
constexpr double thousand = 1e3;

std::string formatted(double value, int digits) {
  if (!std::isfinite(value)) return "-";
  char text[64] = {};
  std::snprintf(text, sizeof text, "%.*f", digits, value);
  return text;
}

std::string milliseconds(double seconds) { return formatted(seconds * thousand, seconds < 0.1 ? 2 : 0); }
std::string milliseconds(const std::optional<Measurement>& measurement) {
  return measurement ? milliseconds(measurement->seconds) : "-";
}
std::string ratio(const Row& row, const std::optional<Measurement>& other) {
  return other ? formatted(row.library.seconds / other->seconds, 2) : "-";
}
std::string megabytes(double bytes) { return formatted(bytes / million, 1); }
std::string rate(const Row& row) {
  return row.bytes > 0 ? formatted(row.bytes / million / row.library.seconds, 0) : "-";
}

using Cells = std::vector<std::string>;

class Table {
 public:
  explicit Table(Cells titles) : m_lines{std::move(titles)} {}
  void add(Cells line) { m_lines.push_back(std::move(line)); }

  void print(std::ostream& out, bool markdown) const {
    const std::vector<std::size_t> widths = columnWidths();
    for (std::size_t line = 0; line < m_lines.size(); ++line) {
      printLine(out, m_lines[line], widths, markdown);
      if (line == 0) printRule(out, widths, markdown);
    }
    out << "\n";
  }

 private:
  std::vector<std::size_t> columnWidths() const {
    std::vector<std::size_t> widths(m_lines.front().size());
    for (const Cells& line : m_lines)
      for (std::size_t i = 0; i < line.size(); ++i)
        widths[i] = std::max(widths[i], line[i].size());
    return widths;
  }

  /// The first column is left-aligned text, the others are right-aligned numbers.
  static void printLine(std::ostream& out, const Cells& cells, const std::vector<std::size_t>& widths,
                        bool markdown) {
    for (std::size_t i = 0; i < cells.size(); ++i) {
      const std::string padding(widths[i] - cells[i].size(), ' ');
      out << (markdown ? "| " : i == 0 ? "" : "  ");
      out << (i == 0 ? cells[i] + padding : padding + cells[i]) << (markdown ? " " : "");
    }
    out << (markdown ? "|\n" : "\n");
  }

  static void printRule(std::ostream& out, const std::vector<std::size_t>& widths, bool markdown) {
    for (std::size_t i = 0; i < widths.size(); ++i) {
      const std::string line(widths[i], '-');
      if (markdown)
        out << "|-" << line << (i == 0 ? "-" : ":");
      else
        out << (i == 0 ? "" : "  ") << line;
    }
    out << (markdown ? "|\n" : "\n");
  }

  std::vector<Cells> m_lines;
};

void printTimes(std::ostream& out, const Results& results, bool markdown) {
  Table table({"case", "size", "file MB", "library ms", "Qt ms", "reference ms", "library/Qt",
               "library/reference", "library MB/s", "library disk ms", "reference disk ms"});
  for (const Row& row : results.rows())
    table.add({row.name, std::to_string(row.size), row.bytes > 0 ? megabytes(row.bytes) : "-",
               milliseconds(row.library.seconds), milliseconds(row.qt), milliseconds(row.reference),
               ratio(row, row.qt), ratio(row, row.reference), rate(row),
               milliseconds(row.library.diskSeconds),
               row.reference ? milliseconds(row.reference->diskSeconds) : "-"});
  table.print(out, markdown);
}

std::string peakOf(const std::optional<Measurement>& measurement) {
  return measurement ? megabytes(measurement->peak) : "-";
}

void printMemory(std::ostream& out, const Results& results, bool markdown) {
  Table table({"case", "size", "file MB", "library peak MB", "library retained MB", "peak/file",
               "peak - file, bytes per element", "retained - file, bytes per element", "Qt peak MB",
               "reference peak MB"});
  for (const Row& row : results.rows()) {
    if (row.memory == MemoryKind::NotReported) continue;
    const bool load = row.memory == MemoryKind::Load;
    const auto size = static_cast<double>(row.size);
    table.add({row.name, std::to_string(row.size), megabytes(row.bytes), megabytes(row.library.peak),
               megabytes(row.library.retained), formatted(row.library.peak / row.bytes, 2),
               load ? formatted((row.library.peak - row.bytes) / size, 0) : "-",
               load ? formatted((row.library.retained - row.bytes) / size, 0) : "-", peakOf(row.qt),
               peakOf(row.reference)});
  }
  table.print(out, markdown);
}

std::string processor() {
  std::ifstream file("/proc/cpuinfo");
  const std::string field = "model name";
  for (std::string line; std::getline(file, line);) {
    const std::size_t colon = line.find(": ");
    if (line.compare(0, field.size(), field) == 0 && colon != std::string::npos)
      return line.substr(colon + 2);
  }
  return "unknown processor";
}

std::string compiler() {
#if defined(__clang__)
  return "Clang " __clang_version__;
#elif defined(__GNUC__)
  return "GCC " __VERSION__;
#else
  return "unknown compiler";
#endif
}

}  // namespace

void printTables(std::ostream& out, const Results& results, bool markdown) {
  if (markdown) out << "Measured on " << processor() << ", " << compiler() << ".\n\n";
  out << "Times: the best of up to three runs, each in a process of its own. The wait for the disk is listed "
         "separately.\n\n";
  printTimes(out, results, markdown);
  out << "Memory: above what the process held before the run.\n\n";
  printMemory(out, results, markdown);
}

// --------------------------------------------------------------------------------------------------- targets

namespace {

class Targets {
 public:
  explicit Targets(const Results& results) : m_results(results) {}

  /// Adds a target: `value` of the case must be at most `limit` at its `rank`-th largest size (0: the
  /// largest). Does nothing if that size was not run.
  template <typename Value>
  void atMost(double limit, const std::string& unit, const std::string& name, Value&& value,
              std::size_t rank = 0) {
    const Row* const row = m_results.largest(name, rank);
    if (row) add(name + " " + std::to_string(row->size), unit, value(*row), limit);
  }

  /// Adds a target for growth: ten times the elements in at most twelve times the time.
  void growsLinearly(const std::string& name) {
    const Row* const large = m_results.largest(name);
    const Row* const small = m_results.largest(name, 1);
    if (!large || !small) return;
    const double elements = static_cast<double>(large->size) / static_cast<double>(small->size);
    const double time = large->library.seconds / small->library.seconds;
    add(name + " " + std::to_string(small->size) + " to " + std::to_string(large->size),
        "x the time at 10 x the size", 10 * time / elements, 12);
  }

  void print(std::ostream& out, bool markdown) const { m_table.print(out, markdown); }
  bool areMet() const { return m_areMet; }

 private:
  void add(const std::string& target, const std::string& unit, double measured, double limit) {
    m_areMet = m_areMet && measured <= limit;  // false if not a number
    m_table.add({target, formatted(measured, 3), formatted(limit, 2), unit,
                 !std::isfinite(measured) ? "not measured"
                 : measured <= limit      ? "PASS"
                                          : "FAIL"});
  }

  const Results& m_results;
  bool m_areMet = true;
  Table m_table{{"target", "measured", "limit", "unit", "verdict"}};
};

double ratioToReference(const Row& row) {
  return row.reference ? row.library.seconds / row.reference->seconds : std::nan("");
}
double peakPerFileByte(const Row& row) { return row.library.peak / row.bytes; }
double peakMegabytes(const Row& row) { return row.library.peak / (1024.0 * 1024.0); }
double memoryRatioToReference(const Row& row) {
  return (row.library.peak - row.bytes) / (row.reference->peak - row.referenceBytes);
}
double bytesPerElement(const Row& row) {
  return (row.library.peak - row.bytes) / static_cast<double>(row.size);
}

/// At the two largest sizes, which are a hundred thousand and a million.
void addTargetsOfSmallElements(Targets& targets) {
  for (const std::size_t rank : {1, 0}) {
    for (const std::string name :
         {"points", "points in structures", "template points", "references to points"}) {
      targets.atMost(0.6, "x reference", name + ", load", ratioToReference, rank);
      targets.atMost(1.0, "x reference", name + ", save", ratioToReference, rank);
      if (rank == 0)
        targets.atMost(260, "bytes per element beyond the file", name + ", load", bytesPerElement);
    }
    targets.atMost(1.2, "x plain structs", "points, build", ratioToReference, rank);
    targets.atMost(1.0, "x plain structs", "points, delete", ratioToReference, rank);
  }
}

}  // namespace

bool printTargets(std::ostream& out, const Results& results, bool markdown) {
  Targets targets(results);
  targets.atMost(0.55, "x reference", "mesh, load", ratioToReference);
  targets.atMost(0.38, "x reference", "mesh, save", ratioToReference);
  targets.atMost(3, "x file size", "mesh, load", peakPerFileByte);
  targets.atMost(64, "MB beyond the document", "mesh, save", peakMegabytes);
  targets.atMost(64, "MB beyond the document", "points, save", peakMegabytes);
  addTargetsOfSmallElements(targets);
  targets.atMost(0.6, "x reference", "mixed, load", ratioToReference);
  targets.atMost(0.7, "x reference", "mixed, save", ratioToReference);
  for (const std::string name : {"mesh, load", "points, load"}) {
    for (const FormName& form : forms) {
      targets.atMost(2, "x the plain form", name + form.suffix, ratioToReference);
      targets.atMost(2, "x its memory beyond the file", name + form.suffix, memoryRatioToReference);
    }
  }
  targets.atMost(1.15, "x load", "mesh, review", ratioToReference);
  targets.atMost(3, "x plain structs", "vertices, build", ratioToReference);
  for (const char* const name :
       {"points, load", "points with one name, load", "points with one name, review",
        "points in structures, load", "points, save", "points with one name, first save",
        "points with one name, second save", "points in structures, check (cold)",
        "template points, check (cold)", "points, delete"})
    targets.growsLinearly(name);
  targets.atMost(0.6, "x one job", "program, check with two jobs (reference: one)", ratioToReference);
  targets.atMost(1.2, "x a load", "program, info (reference: a load)", ratioToReference);
  targets.atMost(2.5, "x a load", "mesh, diff of two (reference: a load of one)", ratioToReference);
  targets.print(out, markdown);
  return targets.areMet();
}

}  // namespace benchmarks
