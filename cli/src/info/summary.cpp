#include "summary.h"

#include <algorithm>
#include <cmath>

#include "contents.h"

namespace cli {

namespace {

std::optional<std::uint32_t> numberOf(const ztCAD_HeaderNode* header, std::int32_t field) {
  std::uint32_t value = 0;
  if (!ztCAD_getHeaderNumber(header, field, &value)) return std::nullopt;
  return value;
}

std::string stateWord(std::optional<std::uint32_t> state) {
  constexpr std::array<const char*, 4> words{"ok", "unknown", "warning", "error"};
  return state && *state < words.size() ? words.at(*state) : "unknown";
}

Header headerOf(const ztCAD_GMDDocument* document) {
  const ztCAD_HeaderNode* const source = ztCAD_getHeader(document);
  Header header;
  header.majorVersion = numberOf(source, ztCAD_HeaderMajorVersion);
  header.minorVersion = numberOf(source, ztCAD_HeaderMinorVersion);
  header.state = stateWord(numberOf(source, ztCAD_HeaderState));
  if (ztCAD_getHeaderText(source, ztCAD_HeaderInform, nullptr, 0) >= 0)
    header.inform = textOf(source, [](const ztCAD_HeaderNode* node, char* text, std::int64_t size) {
      return ztCAD_getHeaderText(node, ztCAD_HeaderInform, text, size);
    });
  return header;
}

/// Extends a box. Starts with an empty one: no coordinate is less than its greatest.
class BoxBuilder {
 public:
  void add(const double* xyz, double radius = 0) {
    for (std::size_t i = 0; i < 3; ++i)
      if (std::isfinite(xyz[i])) {
        m_box.min[i] = std::min(m_box.min[i], xyz[i] - radius);
        m_box.max[i] = std::max(m_box.max[i], xyz[i] + radius);
      }
  }

  std::optional<Box> box() const {
    for (std::size_t i = 0; i < 3; ++i)
      if (!(m_box.min[i] <= m_box.max[i])) return std::nullopt;
    return m_box;
  }

 private:
  Box m_box{{HUGE_VAL, HUGE_VAL, HUGE_VAL}, {-HUGE_VAL, -HUGE_VAL, -HUGE_VAL}};
};

class Summariser {
 public:
  explicit Summariser(ztCAD_GMDDocument* document) {
    m_summary.header = headerOf(document);
    addContentOf(document);
    m_summary.box = m_box.box();
    m_summary.mass = MassSum(document).result();
  }

  DocumentSummary take() { return std::move(m_summary); }

 private:
  template <typename Holder>
  void addContentOf(Holder* holder) {
    for (const std::int32_t kind : allKinds())
      for (ztCAD_Base* element : elementsOf(holder, kind))
        add(element, kind);
  }

  /// @param kind that of the list: structures nested in a template are structures of the document
  void add(ztCAD_Base* element, std::int32_t kind) {
    ++m_summary.elements[kind];
    addGeometry(element);
    if (isHolder(kind)) addContentOf(element);
  }

  void addGeometry(const ztCAD_Base* element) {
    std::array<double, 3> center{};
    double radius = 0;
    ztCAD_getRadius(element, &radius);
    if (ztCAD_getCenter(element, center.data()))
      m_box.add(center.data(), std::isfinite(radius) ? std::abs(radius) : 0);
    if (const ztCAD_Vertices* vertices = ztCAD_getVertices(element)) addVertices(vertices);
    m_summary.facets += ztCAD_getFacetCount(ztCAD_getFaces(element));
  }

  void addVertices(const ztCAD_Vertices* vertices) {
    const std::int32_t count = ztCAD_getVertexCount(vertices);
    const double* xyz = ztCAD_getVertexData(vertices);
    m_summary.vertices += count;
    for (std::int32_t i = 0; i < count; ++i, xyz += 3)
      m_box.add(xyz);
  }

  DocumentSummary m_summary;
  BoxBuilder m_box;
};

}  // namespace

DocumentSummary summarise(ztCAD_GMDDocument* document) { return Summariser(document).take(); }

}  // namespace cli
