#include <array>

#include "../report/json_text.h"
#include "diff_printers.h"

namespace cli {

namespace {

using nlohmann::ordered_json;

const char* wordFor(Change change) {
  switch (change) {
    case Change::Added:
      return "added";
    case Change::Removed:
      return "removed";
    case Change::Moved:
      return "moved";
    case Change::Changed:
      break;
  }
  return "changed";
}

ordered_json toJson(const ElementPath& path) {
  ordered_json steps = ordered_json::array();
  for (const ElementStep& step : path)
    steps.push_back({{"kind", step.kind}, {"name", step.name}});
  return steps;
}

ordered_json placesOf(const Difference& difference) {
  ordered_json places = ordered_json::array();
  for (const DifferentPlace& place : difference.places) {
    if (difference.change == Change::Moved)
      places.push_back({{"name", place.a}, {"a", place.index}, {"b", place.b}});
    else
      places.push_back({{"index", place.index}, {"a", place.a}, {"b", place.b}});
  }
  return places;
}

ordered_json toJson(const Difference& difference) {
  ordered_json object{{"change", wordFor(difference.change)}, {"element", toJson(difference.element)}};
  if (difference.change == Change::Changed) {
    object["field"] = difference.field;
    object["a"] = difference.a;
    object["b"] = difference.b;
  } else if (difference.change == Change::Moved) {
    object["kind"] = difference.field;
  }
  if (difference.count == 0) return object;
  object["count"] = difference.count;
  if (difference.change == Change::Changed) {
    object["greatest"] = difference.greatest ? ordered_json(*difference.greatest) : ordered_json();
    object["equalBefore"] = difference.equalBefore;
    object["equalAfter"] = difference.equalAfter;
  }
  object["places"] = placesOf(difference);
  return object;
}

/// docs/diff.schema.json describes the form. Each difference is a line.
class DiffJson : public DifferencePrinter {
 public:
  DiffJson(Output& output, const DiffOptions& options) : m_output(output), m_options(options) {}

  void begin() override {
    const Tolerance& tolerance = m_options.tolerance;
    const ordered_json bounds{{"absolute", tolerance.absolute}, {"relative", tolerance.relative}};
    m_output << jsonHead() << "  \"a\": " << jsonText(ordered_json(m_options.a))
             << ",\n  \"b\": " << jsonText(ordered_json(m_options.b))
             << ",\n  \"tolerance\": " << jsonText(bounds) << ",\n  \"differences\": [";
  }

  void add(const Difference& difference) override {
    m_output << (m_total == 0 ? "\n    " : ",\n    ") << jsonText(toJson(difference));
    ++m_total;
    ++m_counts.at(static_cast<std::size_t>(difference.change));
  }

  void end() override {
    const auto count = [&](Change change) { return m_counts.at(static_cast<std::size_t>(change)); };
    const ordered_json summary{{"differences", m_total},
                               {"added", count(Change::Added)},
                               {"removed", count(Change::Removed)},
                               {"moved", count(Change::Moved)},
                               {"changed", count(Change::Changed)}};
    m_output << (m_total == 0 ? "]" : "\n  ]") << ",\n  \"summary\": " << jsonText(summary) << "\n}\n";
  }

 private:
  Output& m_output;
  const DiffOptions& m_options;
  std::int64_t m_total = 0;
  std::array<std::int64_t, 4> m_counts{};
};

}  // namespace

std::unique_ptr<DifferencePrinter> makeDiffJson(Output& output, const DiffOptions& options) {
  return std::make_unique<DiffJson>(output, options);
}

}  // namespace cli
