#include "comparison.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <string_view>

#include "../info/contents.h"
#include "matching.h"

namespace cli {

namespace {

using nlohmann::ordered_json;

constexpr std::size_t mostPlaces = 5;

/// A text of an element, in a buffer that fits nearly all.
class Text {
 public:
  template <typename Object, typename Getter>
  Text(const Object* object, Getter getter) {  // NOLINT(cppcoreguidelines-pro-type-member-init): m_short
    m_length = getter(object, m_short.data(), m_short.size());
    if (m_length < static_cast<std::int64_t>(m_short.size())) return;
    m_long.resize(static_cast<std::size_t>(m_length) + 1);
    getter(object, m_long.data(), m_length + 1);
  }

  bool operator==(const Text& other) const { return m_length == other.m_length && view() == other.view(); }
  ordered_json json() const { return m_length < 0 ? ordered_json() : ordered_json(std::string(view())); }
  std::string string() const { return std::string(view()); }

 private:
  std::string_view view() const {
    if (m_length < 0) return {};
    return {m_long.empty() ? m_short.data() : m_long.data(), static_cast<std::size_t>(m_length)};
  }

  std::array<char, 256> m_short;  // the getter fills it
  std::vector<char> m_long;
  std::int64_t m_length = 0;
};

/// Numbers of an element; nothing if it has none.
class Numbers {
 public:
  using Getter = std::int32_t (*)(const ztCAD_Base*, double*, std::int32_t);

  void read(const ztCAD_Base* element, Getter getter) {
    m_count = getter(element, m_values.data(), static_cast<std::int32_t>(m_values.size()));
    if (m_count <= static_cast<std::int32_t>(m_values.size())) return;
    m_values.resize(static_cast<std::size_t>(m_count));
    getter(element, m_values.data(), m_count);
  }

  bool equals(const Numbers& other, const Tolerance& tolerance) const {
    if (m_count != other.m_count) return false;
    for (std::int32_t i = 0; i < m_count; ++i)
      if (!tolerance.areEqual(m_values[static_cast<std::size_t>(i)],
                              other.m_values[static_cast<std::size_t>(i)]))
        return false;
    return true;
  }
  ordered_json json() const {
    if (m_count < 0) return {};
    return std::vector<double>(m_values.begin(), m_values.begin() + m_count);
  }

 private:
  std::vector<double> m_values = std::vector<double>(16);
  std::int32_t m_count = -1;
};

std::int32_t getCenter(const ztCAD_Base* element, double* xyz, std::int32_t /*capacity*/) {
  return ztCAD_getCenter(element, xyz) ? 3 : -1;
}

std::int32_t getRadius(const ztCAD_Base* element, double* radius, std::int32_t /*capacity*/) {
  return ztCAD_getRadius(element, radius) ? 1 : -1;
}

ordered_json colourOf(const ztCAD_Base* element) {
  std::array<std::uint32_t, 3> rgb{};
  return ztCAD_getColor(element, rgb.data()) ? ordered_json(rgb) : ordered_json();
}

bool haveEqualColours(const ztCAD_Base* a, const ztCAD_Base* b) {
  std::array<std::uint32_t, 3> first{};
  std::array<std::uint32_t, 3> second{};
  return ztCAD_getColor(a, first.data()) == ztCAD_getColor(b, second.data()) && first == second;
}

ordered_json visibilityJson(std::int32_t visible) {
  return visible < 0 ? ordered_json() : ordered_json(visible > 0);
}

enum Field : unsigned {
  Method = 1U << 0U,
  Center = 1U << 1U,
  Radius = 1U << 2U,
  Vertices = 1U << 3U,
  Faces = 1U << 4U,
  Mass = 1U << 5U,
  Reference = 1U << 6U
};

/// The fields that a kind has beside those of every element.
unsigned fieldsOf(std::int32_t kind) {
  switch (kind) {
    case ztCAD_ElementPoint:
    case ztCAD_ElementTmplPoint:
      return Method | Center;
    case ztCAD_ElementLine:
    case ztCAD_ElementTmplLine:
      return Method | Vertices;
    case ztCAD_ElementSphere:
      return Method | Center | Radius | Mass;
    case ztCAD_ElementTriangle:
    case ztCAD_ElementTmplTriangle:
      return Method | Vertices | Faces | Mass;
    case ztCAD_ElementElementMIP:
    case ztCAD_ElementTmplElementMIP:
      return Method | Mass;
    case ztCAD_ElementDetail:
    case ztCAD_ElementTmplDetail:
      return Mass;
    case ztCAD_ElementStructure:
    case ztCAD_ElementTmplStructure:
      return 0;
    default:
      return Reference;
  }
}

/// Entries of three numbers each.
template <typename Number>
struct Triples {
  const Number* data;
  std::size_t count;

  const Number* at(std::size_t index) const { return data + 3 * index; }
  ordered_json json(std::size_t index) const {
    if (index >= count) return {};
    return {at(index)[0], at(index)[1], at(index)[2]};
  }
};

class Comparison {
 public:
  Comparison(const Tolerance& tolerance, DifferencePrinter& printer)
      : m_tolerance(tolerance), m_printer(printer) {}

  void compare(ztCAD_GMDDocument* a, ztCAD_GMDDocument* b) {
    compareHeaders(ztCAD_getHeader(a), ztCAD_getHeader(b));
    compareContents(a, b);
  }

 private:
  /// The fields of two elements. Without reports only whether they are equal is found.
  class Fields {
   public:
    Fields(Comparison& comparison, std::int32_t kind, const ztCAD_Base* a, const ztCAD_Base* b, bool reports)
        : m_comparison(comparison), m_kind(kind), m_a(a), m_b(b), m_reports(reports) {}

    /// Without reports the first difference ends the comparison.
    bool areEqual() {
      const unsigned fields = fieldsOf(m_kind);
      if ((fields & Vertices) != 0U && !goOn(vertices())) return false;
      if ((fields & Faces) != 0U && !goOn(faces())) return false;
      if ((fields & Center) != 0U && !goOn(numbers("center", getCenter))) return false;
      if ((fields & Radius) != 0U && !goOn(numbers("radius", getRadius))) return false;
      if ((fields & Reference) != 0U && !goOn(reference())) return false;
      if ((fields & Mass) != 0U && !goOn(numbers("mass data", ztCAD_getMIP))) return false;
      if ((fields & Method) != 0U && !goOn(text("method", ztCAD_getMethod))) return false;
      return goOn(property()) && m_areEqual;
    }

   private:
    /// Whether to compare the next field.
    bool goOn(bool isEqual) {
      m_areEqual = m_areEqual && isEqual;
      return m_reports || m_areEqual;
    }

    bool property() {
      bool isEqual = text("comment", ztCAD_getComment);
      isEqual = text("inform", ztCAD_getInform) && isEqual;
      isEqual = numbers("coordinate system", ztCAD_getLCS) && isEqual;
      if (!haveEqualColours(m_a, m_b)) isEqual = differ("color", colourOf(m_a), colourOf(m_b));
      const std::int32_t a = ztCAD_getVisible(m_a);
      const std::int32_t b = ztCAD_getVisible(m_b);
      return a == b ? isEqual : differ("visible", visibilityJson(a), visibilityJson(b));
    }

    bool reference() {
      bool isEqual = numbers("placement", ztCAD_getPlacement);
      isEqual = text("template", ztCAD_getTemplateName) && isEqual;
      return text("template file", ztCAD_getTemplateFile) && isEqual;
    }

    template <typename Getter>
    bool text(const char* field, Getter getter) {
      const Text a(m_a, getter);
      const Text b(m_b, getter);
      return a == b || differ(field, a.json(), b.json());
    }

    bool numbers(const char* field, Numbers::Getter getter) {
      Numbers& a = m_comparison.m_numbersA;
      Numbers& b = m_comparison.m_numbersB;
      a.read(m_a, getter);
      b.read(m_b, getter);
      return a.equals(b, m_comparison.m_tolerance) || differ(field, a.json(), b.json());
    }

    bool vertices() {
      const auto triples = [](const ztCAD_Base* element) {
        const ztCAD_Vertices* const list = ztCAD_getVertices(element);
        return Triples<double>{ztCAD_getVertexData(list),
                               static_cast<std::size_t>(ztCAD_getVertexCount(list))};
      };
      const Tolerance& tolerance = m_comparison.m_tolerance;
      return list("vertices", triples(m_a), triples(m_b), [&tolerance](const double* a, const double* b) {
        return tolerance.areEqual(a[0], b[0]) && tolerance.areEqual(a[1], b[1]) &&
               tolerance.areEqual(a[2], b[2]);
      });
    }

    bool faces() {
      const auto triples = [](const ztCAD_Base* element) {
        const ztCAD_Faces* const list = ztCAD_getFaces(element);
        return Triples<std::uint32_t>{ztCAD_getFacetData(list),
                                      static_cast<std::size_t>(ztCAD_getFacetCount(list))};
      };
      return list("faces", triples(m_a), triples(m_b),
                  [](const std::uint32_t* a, const std::uint32_t* b) { return std::equal(a, a + 3, b); });
    }

    template <typename Number, typename AreEqual>
    bool list(const char* field, Triples<Number> a, Triples<Number> b, AreEqual areEqual) {
      const std::size_t shorter = std::min(a.count, b.count);
      if (a.count == b.count &&
          (shorter == 0 || std::memcmp(a.data, b.data, 3 * shorter * sizeof(Number)) == 0))
        return true;
      std::size_t head = 0;
      while (head < shorter && areEqual(a.at(head), b.at(head)))
        ++head;
      if (head == a.count && head == b.count) return true;
      if (!m_reports) return false;
      Difference difference = changed(field, a.count, b.count);
      difference.equalBefore = static_cast<std::int64_t>(head);
      if (a.count == b.count)
        addEntries(difference, head, a, b, areEqual);
      else
        addGap(difference, head, a, b, areEqual);
      m_comparison.m_printer.add(difference);
      return false;
    }

    /// Lists of one length: each entry is compared with its counterpart.
    template <typename Number, typename AreEqual>
    static void addEntries(Difference& difference, std::size_t first, Triples<Number> a, Triples<Number> b,
                           AreEqual areEqual) {
      for (std::size_t i = first; i < a.count; ++i) {
        if (areEqual(a.at(i), b.at(i))) continue;
        ++difference.count;
        for (std::size_t k = 0; k < 3; ++k) {
          const double deviation =
              std::abs(static_cast<double>(a.at(i)[k]) - static_cast<double>(b.at(i)[k]));
          if (std::is_floating_point_v<Number> && std::isfinite(deviation))
            difference.greatest = std::max(difference.greatest.value_or(0), deviation);
        }
        addPlace(difference, i, a, b);
      }
    }

    /// Lists of different length: what is between the equal entries at the start and at the end differs.
    template <typename Number, typename AreEqual>
    static void addGap(Difference& difference, std::size_t head, Triples<Number> a, Triples<Number> b,
                       AreEqual areEqual) {
      const std::size_t shorter = std::min(a.count, b.count);
      std::size_t tail = 0;
      while (tail < shorter - head && areEqual(a.at(a.count - 1 - tail), b.at(b.count - 1 - tail)))
        ++tail;
      difference.equalAfter = static_cast<std::int64_t>(tail);
      const std::size_t longer = std::max(a.count, b.count);
      difference.count = static_cast<std::int64_t>(longer - head - tail);
      for (std::size_t i = head; i < longer - tail && difference.places.size() < mostPlaces; ++i)
        addPlace(difference, i, Triples<Number>{a.data, std::max(head, a.count - tail)},
                 Triples<Number>{b.data, std::max(head, b.count - tail)});
    }

    template <typename Number>
    static void addPlace(Difference& difference, std::size_t index, Triples<Number> a, Triples<Number> b) {
      if (difference.places.size() < mostPlaces)
        difference.places.push_back({static_cast<std::int64_t>(index), a.json(index), b.json(index)});
    }

    Difference changed(const char* field, ordered_json a, ordered_json b) const {
      Difference difference;
      difference.element = m_comparison.pathTo(m_kind, m_a);
      difference.field = field;
      difference.a = std::move(a);
      difference.b = std::move(b);
      return difference;
    }

    bool differ(const char* field, ordered_json a, ordered_json b) const {
      if (m_reports) m_comparison.m_printer.add(changed(field, std::move(a), std::move(b)));
      return false;
    }

    Comparison& m_comparison;
    std::int32_t m_kind;
    const ztCAD_Base* m_a;
    const ztCAD_Base* m_b;
    bool m_reports;
    bool m_areEqual = true;
  };

  void compareHeaders(const ztCAD_HeaderNode* a, const ztCAD_HeaderNode* b) {
    const auto number = [](const ztCAD_HeaderNode* header, std::int32_t field) {
      std::uint32_t value = 0;
      return ztCAD_getHeaderNumber(header, field, &value) ? ordered_json(value) : ordered_json();
    };
    const auto inform = [](const ztCAD_HeaderNode* header) {
      return Text(header,
                  [](const ztCAD_HeaderNode* node, char* text, std::int64_t size) {
                    return ztCAD_getHeaderText(node, ztCAD_HeaderInform, text, size);
                  })
          .json();
    };
    compareHeaderField("header majorVersion", number(a, ztCAD_HeaderMajorVersion),
                       number(b, ztCAD_HeaderMajorVersion));
    compareHeaderField("header minorVersion", number(a, ztCAD_HeaderMinorVersion),
                       number(b, ztCAD_HeaderMinorVersion));
    compareHeaderField("header inform", inform(a), inform(b));
  }

  void compareHeaderField(const char* field, ordered_json a, ordered_json b) {
    if (a == b) return;
    Difference difference;
    difference.field = field;
    difference.a = std::move(a);
    difference.b = std::move(b);
    m_printer.add(difference);
  }

  template <typename Holder>
  void compareContents(Holder* a, Holder* b) {
    for (const std::int32_t kind : allKinds()) {
      const Elements first = elementsOf(a, kind);
      const Elements second = elementsOf(b, kind);
      if (first.empty() && second.empty()) continue;
      if (haveEqualNames(first, second))
        for (std::size_t i = 0; i < first.size(); ++i)
          compareElements(kind, first[i], second[i]);
      else
        compareByName(kind, first, second);
    }
  }

  using Elements = std::vector<ztCAD_Base*>;

  /// The usual case, for which nothing is stored.
  static bool haveEqualNames(const Elements& a, const Elements& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const ztCAD_Base* x, const ztCAD_Base* y) {
      return Text(x, ztCAD_getName) == Text(y, ztCAD_getName);
    });
  }

  static std::vector<std::string> namesOf(const Elements& elements) {
    std::vector<std::string> names;
    names.reserve(elements.size());
    for (const ztCAD_Base* element : elements)
      names.push_back(Text(element, ztCAD_getName).string());
    return names;
  }

  void compareByName(std::int32_t kind, const Elements& a, const Elements& b) {
    const Matching matching = match(namesOf(a), namesOf(b), [&](std::size_t i, std::size_t j) {
      return Fields(*this, kind, a[i], b[j], false).areEqual();
    });
    auto removed = matching.onlyA.begin();
    for (const auto& [i, j] : matching.pairs) {
      for (; removed != matching.onlyA.end() && *removed < i; ++removed)
        addWhole(Change::Removed, kind, a[*removed]);
      compareElements(kind, a[i], b[j]);
    }
    for (; removed != matching.onlyA.end(); ++removed)
      addWhole(Change::Removed, kind, a[*removed]);
    for (const std::size_t j : matching.onlyB)
      addWhole(Change::Added, kind, b[j]);
    if (!matching.moved.empty()) addMoved(kind, a, matching);
  }

  void addWhole(Change change, std::int32_t kind, const ztCAD_Base* element) {
    Difference difference;
    difference.change = change;
    difference.element = pathTo(kind, element);
    m_printer.add(difference);
  }

  void addMoved(std::int32_t kind, const Elements& a, const Matching& matching) {
    Difference difference;
    difference.change = Change::Moved;
    difference.element = m_holders;
    difference.field = ztCAD_kindWord(kind);
    difference.count = static_cast<std::int64_t>(matching.moved.size());
    for (const std::size_t pair : matching.moved) {
      if (difference.places.size() == mostPlaces) break;
      const auto [i, j] = matching.pairs[pair];
      difference.places.push_back({static_cast<std::int64_t>(i), Text(a[i], ztCAD_getName).json(), j});
    }
    m_printer.add(difference);
  }

  void compareElements(std::int32_t kind, ztCAD_Base* a, ztCAD_Base* b) {
    Fields(*this, kind, a, b, true).areEqual();
    if (!isHolder(kind)) return;
    m_holders.push_back({ztCAD_kindWord(kind), Text(a, ztCAD_getName).string()});
    compareContents(a, b);
    m_holders.pop_back();
  }

  ElementPath pathTo(std::int32_t kind, const ztCAD_Base* element) const {
    ElementPath path = m_holders;
    path.push_back({ztCAD_kindWord(kind), Text(element, ztCAD_getName).string()});
    return path;
  }

  const Tolerance& m_tolerance;
  DifferencePrinter& m_printer;
  ElementPath m_holders;
  Numbers m_numbersA;
  Numbers m_numbersB;
};

}  // namespace

bool Tolerance::areEqual(double a, double b) const {
  if (a == b || (std::isnan(a) && std::isnan(b))) return true;
  const double greatest = std::max(std::abs(a), std::abs(b));
  return std::isfinite(greatest) && std::abs(a - b) <= std::max(absolute, relative * greatest);
}

void compareDocuments(ztCAD_GMDDocument* a, ztCAD_GMDDocument* b, const Tolerance& tolerance,
                      DifferencePrinter& printer) {
  Comparison(tolerance, printer).compare(a, b);
}

}  // namespace cli
