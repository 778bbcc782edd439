#include "checks.h"

#include <algorithm>
#include <cmath>
#include <Eigen/Eigenvalues>

#include "element.h"
#include "mass_table.h"

namespace ztcad::inspect {

namespace {

class Checks {
 public:
  explicit Checks(Scene& scene) : m_scene(scene), m_settings(scene.settings()) {}

  void addScene() {
    const FindingList& findings = m_scene.findings();
    m_findings = findings;
    m_keys = m_scene.findingNodes();
  }

  void addMeshes() {
    forEachNode([&](NodeIndex index, const Node& node) {
      if (isSolid(node.kind))
        append(index, m_scene.analysis({0, index}).findings);
      else if (isLine(node.kind))
        checkLine(index, node);
      else if (isPoint(node.kind) || node.kind == ztCAD_ElementSphere)
        checkCenter(index, node);
    });
  }

  void addMass() {
    const MassTable table(m_scene);
    forEachNode([&](NodeIndex index, const Node& node) {
      if (canHaveMass(node.kind) && !isReference(node.kind)) checkData(index, node, *table.rowOf(index));
    });
  }

  FindingList result() {
    m_findings.sortBy(m_keys);
    return std::move(m_findings);
  }

 private:
  template <class Function>
  void forEachNode(const Function& function) {
    const std::vector<Node>& nodes = m_scene.tree(0).nodes();
    for (std::size_t i = 0; i < nodes.size(); ++i)
      function(static_cast<NodeIndex>(i), nodes[i]);
  }

  void add(NodeIndex node, Rule rule, const char* attribute, std::initializer_list<std::string> arguments,
           std::optional<int> severity = {}) {
    m_findings.add(rule, m_scene.subject(node), attribute, arguments, 1, {}, severity);
    m_keys.push_back(node);
  }

  void append(NodeIndex node, const FindingList& more) {
    m_findings.append(more, m_scene.subject(node));
    m_keys.resize(static_cast<std::size_t>(m_findings.count()), node);
  }

  void addNoValue(NodeIndex node, const char* attribute, const std::string& what, std::int64_t count) {
    if (count > 0) add(node, Rule::no_value, attribute, {what, numberText(count)});
  }

  static std::int64_t valueless(const double* values, std::size_t count) {
    return std::count_if(values, values + count, [](double value) { return !std::isfinite(value); });
  }

  void checkLine(NodeIndex index, const Node& node) {
    const MeshView mesh = viewOf(node.element);
    std::int64_t count = 0;
    for (std::size_t i = 0; i < mesh.vertexCount; ++i)
      count += mesh.hasValue(i) ? 0 : 1;
    addNoValue(index, nullptr, "list of vertices", count);
  }

  void checkCenter(NodeIndex index, const Node& node) {
    double center[3];
    double radius = 0;
    if (ztCAD_getCenter(node.element, center)) addNoValue(index, "center", "centre", valueless(center, 3));
    if (ztCAD_getRadius(node.element, &radius)) addNoValue(index, "radius", "radius", valueless(&radius, 1));
  }

  void checkData(NodeIndex index, const Node& node, const MassRow& row) {
    double values[10];
    if (ztCAD_getMIP(node.element, values, 10) < 10) return;
    if (row.ownData == 0) {
      addNoValue(index, "MIP", "mass-inertia data", valueless(values, 10));
      return;
    }
    const Mass& mass = row.declared;
    if (!(mass.mass > 0)) {
      // frames without a mass are common in models of mechanisms
      const bool isEmpty = std::all_of(values, values + 10, [](double value) { return value == 0; });
      add(index, Rule::mass_not_positive, "MIP", {numberText(mass.mass)},
          isEmpty ? std::optional<int>(ztCAD_SeverityNote) : std::nullopt);
      if (isEmpty) return;
    }
    checkTensor(index, mass);
    const Box box = boxOf(index, node);
    checkCenterOfMass(index, mass, box);
    if (row.computedProblem == ztCADInspect_MassKnown && mass.mass > 0)
      compare(index, mass, row.computed, box);
  }

  void checkTensor(NodeIndex index, const Mass& mass) {
    const Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d> solver(inertiaOf(mass), Eigen::EigenvaluesOnly);
    const Eigen::Vector3d moments = solver.eigenvalues();  // ascending
    const double trace = moments.sum();
    const double tolerance = m_settings.values.principalTolerance * std::abs(trace);
    if (!(moments[0] > 0)) {
      // six digits can turn the least moment of a thin rod negative
      const bool isRounding = trace > 0 && moments[0] >= -tolerance;
      add(index, Rule::tensor_not_positive, "MIP", {tripleText(moments.data())},
          isRounding ? std::optional<int>(ztCAD_SeverityWarning) : std::nullopt);
      if (!isRounding) return;
    }
    const double excess = moments[2] - (moments[0] + moments[1]);
    if (excess > tolerance)
      add(index, Rule::tensor_triangle_inequality, "MIP",
          {numberText(moments[2]), numberText(moments[0] + moments[1]), numberText(excess / trace)});
  }

  /// The box around the geometry of an element in its frame.
  Box boxOf(NodeIndex index, const Node& node) {
    Box box;
    addTo(box, {0, index}, Transform());
    if (isDetail(node.kind)) {
      const DocumentTree& tree = m_scene.tree(0);
      for (const NodeIndex* child = tree.begin(node); child != tree.end(node); ++child)
        addTo(box, {0, *child}, m_scene.transformOf({0, *child}));
    }
    return box;
  }

  void addTo(Box& box, Located at, const Transform& transform) {
    const Node& node = m_scene.node(at);
    Box own;
    double center[3];
    if (isSolid(node.kind)) {
      const ztCADInspect_MeshState& state = m_scene.analysis(at).state;
      if (state.vertexCount == state.valuelessVertices) return;
      own.add(state.boxLow);
      own.add(state.boxHigh);
    } else if (isLine(node.kind)) {
      const MeshView mesh = viewOf(node.element);
      for (std::size_t i = 0; i < mesh.vertexCount; ++i)
        if (mesh.hasValue(i)) own.add(mesh.vertex(i));
    } else if (ztCAD_getCenter(node.element, center) && valueless(center, 3) == 0) {
      double radius = 0;
      ztCAD_getRadius(node.element, &radius);
      if (!std::isfinite(radius)) return;
      for (const double sign : {-1.0, 1.0}) {
        const double corner[3] = {center[0] + sign * radius, center[1] + sign * radius,
                                  center[2] + sign * radius};
        own.add(corner);
      }
    }
    if (own.isEmpty) return;
    for (int corner = 0; corner < 8; ++corner) {
      const Eigen::Vector3d at3((corner & 1) != 0 ? own.high[0] : own.low[0],
                                (corner & 2) != 0 ? own.high[1] : own.low[1],
                                (corner & 4) != 0 ? own.high[2] : own.low[2]);
      const Eigen::Vector3d placed = transform.axes * at3 + transform.origin;
      box.add(placed.data());
    }
  }

  void checkCenterOfMass(NodeIndex index, const Mass& mass, const Box& box) {
    if (box.isEmpty) return;
    const double margin = 1e-6 * box.diagonal();  // of numbers in six digits
    for (int i = 0; i < 3; ++i) {
      if (mass.center[i] >= box.low[i] - margin && mass.center[i] <= box.high[i] + margin) continue;
      add(index, Rule::centre_outside_box, "MIP",
          {tripleText(mass.center), tripleText(box.low), tripleText(box.high)});
      return;
    }
  }

  void compare(NodeIndex index, const Mass& declared, const Mass& computed, const Box& box) {
    const double tolerance = m_settings.values.declaredTolerance;
    std::string differences;
    const auto differ = [&](const std::string& text) {
      differences += differences.empty() ? text : "; " + text;
    };
    if (computed.hasMass != 0 && std::abs(declared.mass - computed.mass) > tolerance * computed.mass)
      differ("its mass is " + numberText(declared.mass) + ", the geometry has " + numberText(computed.mass));
    const double distance = (centerOf(declared) - centerOf(computed)).norm();
    if (distance > tolerance * box.diagonal())
      differ("its centre is (" + tripleText(declared.center) + "), the geometry has (" +
             tripleText(computed.center) + ")");
    // by mass, so that the density does not matter
    const Eigen::Matrix3d expected = inertiaOf(computed) / computed.mass;
    const Eigen::Matrix3d found = inertiaOf(declared) / declared.mass;
    const double deviation = (found - expected).cwiseAbs().maxCoeff() / expected.trace();
    if (deviation > tolerance)
      differ("its inertia per mass differs by " + numberText(deviation) + " of the trace");
    if (!differences.empty()) add(index, Rule::declared_differs, "MIP", {differences});
  }

  Scene& m_scene;
  const Settings& m_settings;
  FindingList m_findings;
  std::vector<std::int64_t> m_keys;
};

}  // namespace

FindingList check(Scene& scene, int checks) {
  Checks all(scene);
  if ((checks & ztCADInspect_CheckScene) != 0) all.addScene();
  if ((checks & ztCADInspect_CheckMeshes) != 0) all.addMeshes();
  if ((checks & ztCADInspect_CheckMass) != 0) all.addMass();
  return all.result();
}

}  // namespace ztcad::inspect
