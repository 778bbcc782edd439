#include "element_columns.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "../info/contents.h"
#include "../number_text.h"
#include "page_colour.h"

namespace cli {

namespace {

using NumberGetter = std::int32_t (*)(const ztCAD_Base*, double*, std::int32_t);

std::vector<double> numbersOf(const ztCAD_Base* element, NumberGetter getter) {
  const std::int32_t count = getter(element, nullptr, 0);
  std::vector<double> numbers(static_cast<std::size_t>(std::max(count, 0)));
  if (count > 0) getter(element, numbers.data(), count);
  return numbers;
}

/// The fields of an element that are not empty, each as the format spells it.
class Fields {
 public:
  Fields(JsonWriter& json, const ztCAD_Base* element) : m_json(json), m_element(element) {
    m_json.raw("[");
    text("comment", ztCAD_getComment);
    text("inform", ztCAD_getInform);
    color();
    const std::int32_t visible = ztCAD_getVisible(element);
    if (visible >= 0) add("visible", visible > 0 ? "true" : "false");
    numbers("LCS", "CS", ztCAD_getLCS);
    text("method", ztCAD_getMethod);
    geometry();
    numbers("MIP", "MIP", ztCAD_getMIP);
    text("template", ztCAD_getTemplateName);
    text("file", ztCAD_getTemplateFile);
    numbers("MCS", "CS", ztCAD_getPlacement);
    m_json.raw("]");
  }

 private:
  void add(const char* name, std::string_view value) {
    m_json.raw(m_isFirst ? "[" : ",[");
    m_isFirst = false;
    m_json.string(name);
    m_json.raw(",");
    m_json.string(value);
    m_json.raw("]");
  }

  template <typename Getter>
  void text(const char* name, Getter getter) {
    const std::string value = textOf(m_element, getter);
    if (!value.empty()) add(name, value);
  }

  void numbers(const char* name, std::string value, NumberGetter getter) {
    const std::vector<double> numbers = numbersOf(m_element, getter);
    if (numbers.empty()) return;
    for (const double number : numbers)
      value += ", " + numberText(number);
    add(name, value);
  }

  void color() {
    std::array<std::uint32_t, 3> rgb{};
    if (!ztCAD_getColor(m_element, rgb.data())) return;
    std::string value = "RGB";
    for (const std::uint32_t component : rgb)
      value += ", " + std::to_string(component);
    add("color", value);
  }

  void geometry() {
    std::array<double, 3> center{};
    double radius = 0;
    if (ztCAD_getCenter(m_element, center.data())) add("center", tripleText(center.data()));
    if (ztCAD_getRadius(m_element, &radius)) add("radius", numberText(radius));
  }

  JsonWriter& m_json;
  const ztCAD_Base* m_element;
  bool m_isFirst = true;
};

void writeColor(JsonWriter& json, const ztCAD_Base* element) {
  std::array<std::uint32_t, 3> rgb{};
  if (ztCAD_getColor(element, rgb.data()))
    json.string(pageColour(rgb));
  else
    json.raw("null");
}

/// The twelve numbers of the element's coordinate system; null without one.
void writeSystem(JsonWriter& json, const ztCAD_Base* element) {
  const std::vector<double> numbers = numbersOf(element, ztCAD_getLCS);
  constexpr std::size_t complete = 12;
  if (numbers.size() != complete ||
      !std::all_of(numbers.begin(), numbers.end(), [](double number) { return std::isfinite(number); })) {
    json.raw("null");
    return;
  }
  const char* separator = "[";
  for (const double number : numbers) {
    json.raw(separator);
    json.number(number);
    separator = ",";
  }
  json.raw("]");
}

}  // namespace

void writeElementColumns(JsonWriter& json, const ElementList& elements) {
  const std::vector<ListedElement>& list = elements.elements();
  using Listed = const ListedElement&;
  json.column("kind", list, [&](Listed listed) { json.string(ztCAD_kindWord(listed.kind)); });
  json.raw(",\n");
  json.column("name", list, [&](Listed listed) { json.string(nameOf(listed.element)); });
  json.raw(",\n\"path\":null,\n");
  json.column("tag", list, [&](Listed listed) { json.string(listed.tag); });
  json.raw(",\n");
  json.column("number", list, [&](Listed listed) { json.integer(listed.number); });
  json.raw(",\n");
  json.column("parent", list, [&](Listed listed) { json.integer(listed.parent); });
  json.raw(",\n");
  json.column("visible", list,
              [&](Listed listed) { json.raw(ztCAD_getVisible(listed.element) == 0 ? "0" : "1"); });
  json.raw(",\n");
  json.column("color", list, [&](Listed listed) { writeColor(json, listed.element); });
  json.raw(",\n");
  json.column("fields", list, [&](Listed listed) { Fields(json, listed.element); });
  json.raw(",\n");
  json.column("system", list, [&](Listed listed) { writeSystem(json, listed.element); });
}

}  // namespace cli
