#include "c/element_arrays.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "../text/narrow_text.h"
#include "c/counted_contents.h"
#include "c/fields.h"
#include "field_access.h"
#include "guard.h"

using ztcad::guarded;

namespace {

constexpr int massNumbers = 10;
constexpr double noValue = std::numeric_limits<double>::quiet_NaN();

/// Appends one by one and, if that fails, removes what was appended.
template <typename Append, typename Remove>
bool appendMany(std::int32_t count, ztCAD_Base** elements, Append&& append, Remove&& remove) noexcept {
  return guarded(false, [&] {
    if (count < 0) return false;
    const auto wanted = static_cast<std::size_t>(count);
    std::vector<ztCAD_Base*> appended;
    appended.reserve(wanted);
    while (appended.size() < wanted) {
      ztCAD_Base* const element = append();
      if (!element) {
        for (; !appended.empty(); appended.pop_back())
          remove(appended.back());
        return false;
      }
      appended.push_back(element);
    }
    if (elements) std::copy(appended.begin(), appended.end(), elements);
    return true;
  });
}

/// Calls `read(element, values of the element)` for each element, which returns whether there is a value;
/// fills the values with `absent` where there is none.
template <int Width, typename Number, typename Flag, typename Read>
std::int32_t readEach(const ztCAD_Base* const* elements, std::int32_t count, Number* values, Flag* present,
                      Number absent, Read&& read) noexcept {
  std::int32_t found = 0;
  if (!elements || !values) return found;
  for (std::int32_t i = 0; i < count; ++i, values += Width) {
    const bool has = elements[i] && read(elements[i], values);
    if (!has) std::fill_n(values, Width, absent);
    if (present) present[i] = Flag{has};
    found += has ? 1 : 0;
  }
  return found;
}

/// Calls `write(element, values of the element or null)` for each element, which returns whether the element
/// has the field.
template <int Width, typename Number, typename Write>
std::int32_t writeEach(ztCAD_Base* const* elements, std::int32_t count, const Number* values,
                       const std::uint8_t* present, Write&& write) noexcept {
  std::int32_t written = 0;
  guarded([&] {
    if (!elements || !values) return;
    for (std::int32_t i = 0; i < count; ++i, values += Width)
      if (elements[i] && write(elements[i], !present || present[i] ? values : nullptr)) ++written;
  });
  return written;
}

/// Systems have no flags but sizes.
template <typename Get>
std::int32_t readSystems(const ztCAD_Base* const* elements, std::int32_t count, double* values,
                         std::int32_t* sizes, Get&& get) noexcept {
  std::int32_t found = 0;
  if (!elements || !values) return found;
  for (std::int32_t i = 0; i < count; ++i, values += ztCAD_LCS::valueCount) {
    const std::int32_t size = get(elements[i], values, ztCAD_LCS::valueCount);
    const bool isWhole = size == ztCAD_LCS::valueCount;
    if (!isWhole) std::fill_n(values, ztCAD_LCS::valueCount, noValue);
    if (sizes) sizes[i] = size;
    found += isWhole ? 1 : 0;
  }
  return found;
}

/// Calls `set(element, system or null to clear it)`, which returns whether it was changed.
template <typename Set>
std::int32_t writeSystems(ztCAD_Base* const* elements, std::int32_t count, const double* values,
                          const std::int32_t* sizes, Set&& set) noexcept {
  std::int32_t changed = 0;
  guarded([&] {
    if (!elements || !values) return;
    ztCAD_LCS system;
    for (std::int32_t i = 0; i < count; ++i, values += ztCAD_LCS::valueCount) {
      const std::int32_t size = sizes ? sizes[i] : ztCAD_LCS::valueCount;
      const bool clears = size == -1;
      if (!elements[i] || (!clears && size != 0 && size != ztCAD_LCS::valueCount)) continue;
      if (!clears) system.setValues(std::vector<double>(values, values + size));
      if (set(elements[i], clears ? nullptr : &system)) ++changed;
    }
  });
  return changed;
}

/// A text of an element; std::nullopt and false if the element has none.
struct TextField {
  std::optional<QString> (*get)(const ztCAD_Base* element);
  bool (*set)(ztCAD_Base* element, const QString& text);
};

/// A text of the property block, which every element has.
template <auto Get, auto Set>
constexpr TextField textOfAll() {
  return {[](const ztCAD_Base* element) -> std::optional<QString> {
            return element ? std::optional<QString>(std::invoke(Get, element->property())) : std::nullopt;
          },
          [](ztCAD_Base* element, const QString& text) {
            if (element) std::invoke(Set, element->property(), text);
            return element != nullptr;
          }};
}

/// By `ztCAD_TextField`.
constexpr TextField textFields[] = {
    textOfAll<&ztCAD_cmnProperty::name, &ztCAD_cmnProperty::setName>(),
    textOfAll<&ztCAD_cmnProperty::comment, &ztCAD_cmnProperty::setComment>(),
    textOfAll<&ztCAD_cmnProperty::inform, &ztCAD_cmnProperty::setInform>(),
    {[](const ztCAD_Base* element) -> std::optional<QString> {
       const ztCAD_gMethod* const method = ztcad::methodOf(element);
       return method ? std::optional<QString>(method->method()) : std::nullopt;
     },
     ztcad::setMethod},
    {ztcad::templateName, ztcad::setTemplateName},
    {ztcad::templateFile, ztcad::setTemplateFile},
};
static_assert(std::size(textFields) == ztCAD_TextTemplateFile + 1);

/// Null for an unknown field.
const TextField* textField(std::int32_t field) {
  return field >= 0 && field < std::int32_t{std::size(textFields)} ? &textFields[field] : nullptr;
}

/// Replaces or extends one of an element's lists, whose present content is `list`.
template <typename List, typename Number, typename Set>
bool changeList(ztCAD_Base* element, const List* list, bool extend, const Number* triples, std::int32_t count,
                Set&& set) noexcept {
  return guarded(false, [&] {
    if (!list || count < 0 || (!triples && count > 0)) return false;
    List changed;
    if (extend) changed = *list;
    if (count > 0) changed.add(triples, static_cast<std::size_t>(count));
    return set(element, changed);
  });
}

}  // namespace

// -------------------------------------------------------------------------------- appending

bool ztCAD_appendManyToDoc(ztCAD_GMDDocument* document, std::int32_t kind, std::int32_t count,
                           ztCAD_Base** elements) {
  return appendMany(
      count, elements, [&] { return ztCAD_appendToDoc(document, kind); },
      [&](const ztCAD_Base* element) { ztCAD_removeFromDoc(element, document, kind); });
}
bool ztCAD_appendManyToStructure(ztCAD_commonStructure* structure, std::int32_t kind, std::int32_t count,
                                 ztCAD_Base** elements) {
  return appendMany(
      count, elements, [&] { return ztCAD_appendToStructure(structure, kind); },
      [&](const ztCAD_Base* element) { ztCAD_removeFromStructure(element, structure, kind); });
}
bool ztCAD_appendManyToDetail(ztCAD_cmnDetail* detail, std::int32_t kind, std::int32_t count,
                              ztCAD_Base** elements) {
  return appendMany(
      count, elements, [&] { return ztCAD_appendToDetail(detail, kind); },
      [&](const ztCAD_Base* element) { ztCAD_removeFromDetail(element, detail, kind); });
}

// -------------------------------------------------------------------------------- numbers

std::int32_t ztCAD_getCenters(const ztCAD_Base* const* elements, std::int32_t count, double* xyz,
                              std::uint8_t* present) {
  return readEach<3>(elements, count, xyz, present, noValue, ztCAD_getCenter);
}
std::int32_t ztCAD_setCenters(ztCAD_Base* const* elements, std::int32_t count, const double* xyz,
                              const std::uint8_t* present) {
  return writeEach<3>(elements, count, xyz, present, ztcad::setCenter);
}

std::int32_t ztCAD_getRadii(const ztCAD_Base* const* elements, std::int32_t count, double* radii,
                            std::uint8_t* present) {
  return readEach<1>(elements, count, radii, present, noValue, ztCAD_getRadius);
}
std::int32_t ztCAD_setRadii(ztCAD_Base* const* elements, std::int32_t count, const double* radii,
                            const std::uint8_t* present) {
  return writeEach<1>(elements, count, radii, present, ztcad::setRadius);
}

std::int32_t ztCAD_getColors(const ztCAD_Base* const* elements, std::int32_t count, std::uint32_t* rgb,
                             std::uint8_t* present) {
  return readEach<3>(elements, count, rgb, present, std::uint32_t{0}, ztCAD_getColor);
}
std::int32_t ztCAD_setColors(ztCAD_Base* const* elements, std::int32_t count, const std::uint32_t* rgb,
                             const std::uint8_t* present) {
  return writeEach<3>(elements, count, rgb, present, [](ztCAD_Base* element, const std::uint32_t* color) {
    ztcad::setColor(*element, color);
    return true;
  });
}

std::int32_t ztCAD_getVisibilities(const ztCAD_Base* const* elements, std::int32_t count,
                                   std::int8_t* visible) {
  std::uint8_t* const noFlags = nullptr;
  return readEach<1>(elements, count, visible, noFlags, std::int8_t{-1},
                     [](const ztCAD_Base* element, std::int8_t* value) {
                       *value = static_cast<std::int8_t>(ztCAD_getVisible(element));
                       return *value >= 0;
                     });
}
std::int32_t ztCAD_setVisibilities(ztCAD_Base* const* elements, std::int32_t count,
                                   const std::int8_t* visible) {
  return writeEach<1>(elements, count, visible, nullptr, [](ztCAD_Base* element, const std::int8_t* value) {
    ztCAD_setVisible(element, *value);
    return true;
  });
}

std::int32_t ztCAD_getSystems(const ztCAD_Base* const* elements, std::int32_t count, double* values,
                              std::int32_t* sizes) {
  return readSystems(elements, count, values, sizes, ztCAD_getLCS);
}
std::int32_t ztCAD_getPlacements(const ztCAD_Base* const* elements, std::int32_t count, double* values,
                                 std::int32_t* sizes) {
  return readSystems(elements, count, values, sizes, ztCAD_getPlacement);
}
std::int32_t ztCAD_setSystems(ztCAD_Base* const* elements, std::int32_t count, const double* values,
                              const std::int32_t* sizes) {
  return writeSystems(elements, count, values, sizes, ztcad::setLcs);
}
std::int32_t ztCAD_setPlacements(ztCAD_Base* const* elements, std::int32_t count, const double* values,
                                 const std::int32_t* sizes) {
  return writeSystems(elements, count, values, sizes, [](ztCAD_Base* element, const ztCAD_LCS* placement) {
    return placement && ztcad::setPlacement(element, *placement);
  });
}

std::int32_t ztCAD_getMIPs(const ztCAD_Base* const* elements, std::int32_t count, double* values,
                           std::uint8_t* present) {
  return readEach<massNumbers>(elements, count, values, present, noValue,
                               [](const ztCAD_Base* element, double* numbers) {
                                 return ztCAD_getMIP(element, numbers, massNumbers) > 0;
                               });
}
std::int32_t ztCAD_setMIPs(ztCAD_Base* const* elements, std::int32_t count, const double* values,
                           const std::uint8_t* present) {
  return writeEach<massNumbers>(
      elements, count, values, present, [](ztCAD_Base* element, const double* numbers) {
        return ztcad::setMip(
            element, numbers ? std::optional(ztCAD_MIP(std::vector<double>(numbers, numbers + massNumbers)))
                             : std::nullopt);
      });
}

// -------------------------------------------------------------------------------- texts

std::int64_t ztCAD_getTexts(const ztCAD_Base* const* elements, std::int32_t count, std::int32_t field,
                            char* text, std::int64_t size, std::int64_t* ends) {
  const TextField* const known = textField(field);
  if (!known) return -1;
  return guarded(std::int64_t{-1}, [&] {
    std::int64_t length = 0;
    bool fits = text != nullptr;
    for (std::int32_t i = 0; elements && i < count; ++i) {
      const std::optional<QString> one = elements[i] ? known->get(elements[i]) : std::nullopt;
      const std::string bytes = one ? ztcad::toNarrow(*one) : std::string();
      const auto end = length + static_cast<std::int64_t>(bytes.size());
      fits = fits && end <= size;
      if (fits) std::copy(bytes.begin(), bytes.end(), text + length);
      length = end;
      if (ends) ends[i] = length;
    }
    return length;
  });
}
std::int32_t ztCAD_setTexts(ztCAD_Base* const* elements, std::int32_t count, std::int32_t field,
                            const char* text, const std::int64_t* ends) {
  std::int32_t written = 0;
  guarded([&] {
    const TextField* const known = textField(field);
    if (!known || !elements || !ends) return;
    std::int64_t begin = 0;
    for (std::int32_t i = 0; i < count; ++i) {
      const std::int64_t size = text ? std::max<std::int64_t>(0, ends[i] - begin) : 0;
      const std::string_view bytes = size > 0 ? std::string_view(text + begin, size) : std::string_view();
      if (elements[i] && known->set(elements[i], ztcad::fromNarrow(bytes))) ++written;
      begin = std::max(begin, ends[i]);
    }
  });
  return written;
}

// -------------------------------------------------------------------------------- one list, one call

bool ztCAD_setVertexXYZ(ztCAD_Base* element, const double* xyz, std::int32_t count) {
  return changeList(element, ztCAD_getVertices(element), false, xyz, count, ztcad::setVertices);
}
bool ztCAD_addVertexXYZ(ztCAD_Base* element, const double* xyz, std::int32_t count) {
  return changeList(element, ztCAD_getVertices(element), true, xyz, count, ztcad::setVertices);
}
bool ztCAD_setFacetIJK(ztCAD_Base* element, const std::uint32_t* ijk, std::int32_t count) {
  return changeList(element, ztCAD_getFaces(element), false, ijk, count, ztcad::setFaces);
}
bool ztCAD_addFacetIJK(ztCAD_Base* element, const std::uint32_t* ijk, std::int32_t count) {
  return changeList(element, ztCAD_getFaces(element), true, ijk, count, ztcad::setFaces);
}
