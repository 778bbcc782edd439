#include "../number_text.h"
#include "diff_printers.h"

namespace cli {

namespace {

using nlohmann::ordered_json;

std::string valueText(const ordered_json& value) {
  if (value.is_null()) return "none";
  if (value.is_boolean()) return value.get<bool>() ? "yes" : "no";
  if (value.is_string()) return "\"" + onOneLine(value.get<std::string>()) + "\"";
  if (value.is_number_float()) return numberText(value.get<double>());
  if (!value.is_array()) return value.dump();
  std::string text = "(";
  for (const ordered_json& item : value)
    text += (text.size() > 1 ? ", " : "") + valueText(item);
  return text + ")";
}

std::string pathText(const ElementPath& path) {
  std::string text;
  for (const ElementStep& step : path)
    text += (text.empty() ? "" : " / ") + step.kind + " \"" + onOneLine(step.name) + "\"";
  return text;
}

std::string changeText(const ordered_json& a, const ordered_json& b) {
  return valueText(a) + " -> " + valueText(b);
}

/// One line for each difference.
class DiffText : public DifferencePrinter {
 public:
  DiffText(Output& output, const DiffOptions& options) : m_output(output), m_options(options) {}

  void add(const Difference& difference) override {
    const std::string path = pathText(difference.element);
    m_output << path << (path.empty() ? "" : ": ") << textOf(difference) << "\n";
  }

 private:
  std::string textOf(const Difference& difference) const {
    switch (difference.change) {
      case Change::Added:
        return "only in " + onOneLine(m_options.b);
      case Change::Removed:
        return "only in " + onOneLine(m_options.a);
      case Change::Moved:
        return movedText(difference);
      case Change::Changed:
        break;
    }
    if (difference.count > 0) return difference.field + ": " + listText(difference);
    return difference.field + ": " + changeText(difference.a, difference.b);
  }

  static std::string movedText(const Difference& difference) {
    std::string text = "order of " + difference.field + ": " + std::to_string(difference.count) + " moved: ";
    const char* separator = "";
    for (const DifferentPlace& place : difference.places) {
      text += separator + valueText(place.a);
      separator = ", ";
    }
    return static_cast<std::size_t>(difference.count) > difference.places.size() ? text + ", ..." : text;
  }

  static std::string listText(const Difference& difference) {
    const DifferentPlace& first = difference.places.front();
    const std::string place = "[" + std::to_string(first.index) + "]: " + changeText(first.a, first.b);
    if (difference.a != difference.b)
      return changeText(difference.a, difference.b) + " entries; equal are the first " +
             std::to_string(difference.equalBefore) + " and the last " +
             std::to_string(difference.equalAfter) + "; " + place;
    std::string text = std::to_string(difference.count) + " of " + valueText(difference.a) + " differ";
    if (difference.greatest) text += ", by at most " + numberText(*difference.greatest);
    return text + "; first " + place;
  }

  Output& m_output;
  const DiffOptions& m_options;
};

}  // namespace

std::unique_ptr<DifferencePrinter> makeDiffText(Output& output, const DiffOptions& options) {
  return std::make_unique<DiffText>(output, options);
}

}  // namespace cli
