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
std::string milliseconds(const std::optional<Figures>& figures) {
  return figures ? milliseconds(figures->seconds) : "-";
}
std::string ratio(const Row& row, const std::optional<Figures>& other) {
  return other ? formatted(row.ours.seconds / other->seconds, 2) : "-";
}
std::string megabytes(double bytes) { return formatted(bytes / million, 1); }
std::string rate(const Row& row) {
  return row.bytes > 0 ? formatted(row.bytes / million / row.ours.seconds, 0) : "-";
}

using Cells = std::vector<std::string>;

class Table {
 public:
  explicit Table(Cells head) : m_lines{std::move(head)} {}
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

  /// The first column is text, the others are numbers.
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
  Table table({"case", "size", "file MB", "ours ms", "stock ms", "ref ms", "/stock", "/ref", "MB/s",
               "disk ms", "ref disk ms"});
  for (const Row& row : results.rows())
    table.add({row.what, std::to_string(row.size), row.bytes > 0 ? megabytes(row.bytes) : "-",
               milliseconds(row.ours.seconds), milliseconds(row.stock), milliseconds(row.reference),
               ratio(row, row.stock), ratio(row, row.reference), rate(row),
               milliseconds(row.ours.diskSeconds),
               row.reference ? milliseconds(row.reference->diskSeconds) : "-"});
  table.print(out, markdown);
}

std::string peakOf(const std::optional<Figures>& figures) { return figures ? megabytes(figures->peak) : "-"; }

void printMemory(std::ostream& out, const Results& results, bool markdown) {
  Table table({"memory of", "size", "file MB", "peak MB", "stays MB", "peak/file", "(peak-file)/size B",
               "(stays-file)/size B", "stock peak MB", "ref peak MB"});
  for (const Row& row : results.rows()) {
    if (row.memory == Memory::NotAsked) continue;
    const bool load = row.memory == Memory::OfLoad;
    const auto size = static_cast<double>(row.size);
    table.add({row.what, std::to_string(row.size), megabytes(row.bytes), megabytes(row.ours.peak),
               megabytes(row.ours.settled), formatted(row.ours.peak / row.bytes, 2),
               load ? formatted((row.ours.peak - row.bytes) / size, 0) : "-",
               load ? formatted((row.ours.settled - row.bytes) / size, 0) : "-", peakOf(row.stock),
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
  out << "Times: the best of up to three runs, each in a process of its own, without the wait for the disk, "
         "which stands apart.\nMemory: beyond what the process held before.\n\n";
  printTimes(out, results, markdown);
  printMemory(out, results, markdown);
}

// -------------------------------------------------------------------------------- targets

namespace {

class Targets {
 public:
  explicit Targets(const Results& results) : m_results(results) {}

  /// `measured` gives a figure of a case at its largest size (or at the one before it, `back` 1), which is to be at most
  /// `limit`.
  template <typename Measured>
  void atMost(double limit, const std::string& unit, const std::string& what, Measured&& measured,
              std::size_t back = 0) {
    const Row* const row = m_results.largest(what, back);
    if (row) add(what + " " + std::to_string(row->size), unit, measured(*row), limit);
  }

  /// Ten times the elements in at most twelve times the time.
  void grows(const std::string& what) {
    const Row* const large = m_results.largest(what);
    const Row* const small = m_results.largest(what, 1);
    if (!large || !small) return;
    const double elements = static_cast<double>(large->size) / static_cast<double>(small->size);
    const double time = large->ours.seconds / small->ours.seconds;
    add(what + " " + std::to_string(small->size) + " to " + std::to_string(large->size),
        "x the time for 10 x the size", 10 * time / elements, 12);
  }

  void print(std::ostream& out, bool markdown) const { m_table.print(out, markdown); }

 private:
  void add(const std::string& what, const std::string& unit, double measured, double limit) {
    m_table.add({what, formatted(measured, 3), formatted(limit, 2), unit,
                 !std::isfinite(measured) ? "not measured"
                 : measured <= limit      ? "PASS"
                                          : "FAIL"});
  }

  const Results& m_results;
  Table m_table{{"target", "measured", "at most", "unit", "verdict"}};
};

double overReference(const Row& row) {
  return row.reference ? row.ours.seconds / row.reference->seconds : std::nan("");
}
double peakOverFile(const Row& row) { return row.ours.peak / row.bytes; }
double peakMegabytes(const Row& row) { return row.ours.peak / (1024.0 * 1024.0); }
double bytesForPoint(const Row& row) { return (row.ours.peak - row.bytes) / static_cast<double>(row.size); }

}  // namespace

void printTargets(std::ostream& out, const Results& results, bool markdown) {
  Targets targets(results);
  targets.atMost(1.0, "x the reference", "mesh, load", overReference);
  targets.atMost(0.7, "x the reference", "mesh, save", overReference);
  targets.atMost(3, "x the file's size", "mesh, load", peakOverFile);
  targets.atMost(64, "MB beside the document", "mesh, save", peakMegabytes);
  targets.atMost(64, "MB beside the document", "points, save", peakMegabytes);
  for (const char* const what : {"points, load", "points in structures, load"}) {
    targets.atMost(700, "bytes a point beside the text", what, bytesForPoint);
    for (const std::size_t back : {1, 0})
      targets.atMost(0.05, "x its own way through a tree", std::string(what) + " (ref: through its own tree)",
                     overReference, back);
  }
  targets.atMost(3, "x the bare work", "vertices, build", overReference);
  targets.atMost(3, "x the bare work", "points, build", overReference);
  for (const char* const what :
       {"points, load", "points of one name, load", "points in structures, load", "points, save",
        "points of one name, first save", "points of one name, next save",
        "points in structures, check (cold)", "template points, check (cold)", "points, delete"})
    targets.grows(what);
  targets.print(out, markdown);
}

}  // namespace benchmarks
