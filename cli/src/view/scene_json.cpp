#include "scene_json.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>

#include "../report/json_text.h"
#include "page_colour.h"

namespace cli {

namespace {

using nlohmann::ordered_json;

constexpr std::array<double, 12> identity{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0};

const char* wordFor(std::int32_t shapeKind) {
  switch (shapeKind) {
    case ztCADInspect_ShapePoint:
      return "point";
    case ztCADInspect_ShapePolyline:
      return "polyline";
    case ztCADInspect_ShapeSphere:
      return "sphere";
    default:
      return "mesh";
  }
}

class SceneJson {
 public:
  SceneJson(JsonWriter& json, const ztCADInspect_Scene* scene, const ElementList& elements,
            const ShapeList* shapes)
      : m_json(json), m_scene(scene), m_elements(elements), m_shapes(shapes) {
    const ztCADInspect_Item* const items = ztCADInspect_items(scene);
    for (std::int64_t i = 0; i < ztCADInspect_itemCount(scene); ++i)
      m_items.emplace_back(items[i]);
  }

  void write() {
    writeBounds();
    m_json.raw(",\n\"items\":{");
    writeItems();
    m_json.raw("},\n\"shapes\":{");
    writeShapes();
    m_json.raw("}");
  }

 private:
  using Item = const ztCADInspect_Item&;
  using Shape = const ShownShape&;

  static bool isPlaced(Item item) {
    return std::all_of(item.transform, item.transform + 12, [](double n) { return std::isfinite(n); });
  }
  std::int64_t shapeOf(Item item) const { return isPlaced(item) ? m_shapes->indexOf(item.shape) : -1; }

  void writeBounds() {
    Bounds bounds;
    for (Item item : m_items) {
      const std::int64_t shape = shapeOf(item);
      if (item.isVisible != 0 && shape >= 0)
        bounds.add(m_shapes->shapes()[static_cast<std::size_t>(shape)].bounds.placed(item.transform));
    }
    m_json.raw("\"bounds\":");
    if (bounds.isEmpty())
      m_json.raw("null");
    else
      m_json.json(ordered_json{{"low", bounds.low()}, {"high", bounds.high()}});
  }

  void writeItems() {
    m_json.column("element", m_items, [&](Item item) { m_json.integer(m_elements.find(item.element)); });
    m_json.raw(",\n");
    m_json.column("source", m_items, [&](Item item) { m_json.integer(m_elements.find(item.source)); });
    m_json.raw(",\n\"other\":");
    writeOther();
    m_json.raw(",\n");
    m_json.column("parent", m_items, [&](Item item) { m_json.integer(item.parent); });
    m_json.raw(",\n");
    m_json.column("shape", m_items, [&](Item item) { m_json.integer(shapeOf(item)); });
    m_json.raw(",\n");
    m_json.column("color", m_items, [&](Item item) {
      if (item.hasColor != 0)
        m_json.string(pageColour(std::array{item.color[0], item.color[1], item.color[2]}));
      else
        m_json.raw("null");
    });
    m_json.raw(",\n");
    m_json.column("visible", m_items, [&](Item item) { m_json.raw(item.isVisible != 0 ? "1" : "0"); });
    m_json.raw(",\n");
    writeTransforms();
  }

  /// Kind, name and file of the items whose elements are in other files.
  void writeOther() {
    ordered_json other = ordered_json::object();
    for (std::size_t i = 0; i < m_items.size(); ++i) {
      Item item = m_items[i];
      if (item.file == 0) continue;
      const char* const file = ztCADInspect_fileName(m_scene, item.file);
      other[std::to_string(i)] = {ztCAD_kindWord(item.kind), item.name, file ? file : ""};
    }
    m_json.json(other);
  }

  void writeTransforms() {
    const auto isIdentity = [](Item item) {
      return std::equal(identity.begin(), identity.end(), item.transform);
    };
    if (std::all_of(m_items.begin(), m_items.end(), isIdentity)) {
      m_json.raw("\"transform\":null");
      return;
    }
    m_json.column("transform", m_items, [&](Item item) {
      const double* const transform = isPlaced(item) ? item.transform : identity.data();
      for (std::size_t i = 0; i < identity.size(); ++i) {
        if (i > 0) m_json.raw(",");
        m_json.number(transform[i]);
      }
    });
  }

  void writeShapes() {
    const std::vector<ShownShape> none;
    const std::vector<ShownShape>& shapes = m_shapes ? m_shapes->shapes() : none;
    m_json.column("kind", shapes, [&](Shape shape) { m_json.string(wordFor(shape.kind)); });
    m_json.raw(",\n");
    m_json.column("origin", shapes, [&](Shape shape) {
      m_json.number(shape.origin[0]);
      m_json.raw(",");
      m_json.number(shape.origin[1]);
      m_json.raw(",");
      m_json.number(shape.origin[2]);
    });
    m_json.raw(",\n");
    m_json.column("radius", shapes, [&](Shape shape) {
      if (shape.radius)
        m_json.number(*shape.radius);
      else
        m_json.raw("null");
    });
    m_json.raw(",\n");
    m_json.column("mesh", shapes, [&](Shape shape) { m_json.integer(shape.mesh); });
    m_json.raw(",\n");
    m_json.column("vertices", shapes, [&](Shape shape) { m_json.integer(shape.vertices); });
    m_json.raw(",\n");
    m_json.column("facets", shapes, [&](Shape shape) { m_json.integer(shape.facets); });
  }

  JsonWriter& m_json;
  const ztCADInspect_Scene* m_scene;
  const ElementList& m_elements;
  const ShapeList* m_shapes;
  std::vector<std::reference_wrapper<const ztCADInspect_Item>> m_items;
};

}  // namespace

void writeScene(JsonWriter& json, const ztCADInspect_Scene* scene, const ElementList& elements,
                const ShapeList* shapes) {
  SceneJson(json, scene, elements, shapes).write();
}

}  // namespace cli
