// The exported functions: null and invalid arguments, exceptions, ownership.

#include <ztCAD/inspect.h>
#include <ztCAD/version.h>
#include <algorithm>
#include <cstring>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "checks.h"
#include "element.h"
#include "element_index.h"
#include "finding_list.h"
#include "mass.h"
#include "mass_table.h"
#include "mesh_analysis.h"
#include "rule.h"
#include "scene.h"
#include "settings.h"

namespace inspect = ztcad::inspect;

namespace {

/// Runs the body of an exported function; exceptions, which are those of memory that ran out, become the
/// failure value.
template <class Result, class Body>
Result guarded(Result onFailure, const Body& body) noexcept {
  try {
    return body();
  } catch (...) {
    return onFailure;
  }
}

std::int64_t written(const std::string& result, char* text, std::int64_t size) {
  const auto length = static_cast<std::int64_t>(result.size());
  if (!text || size < 1) return length;
  if (length < size)
    std::memcpy(text, result.c_str(), result.size() + 1);
  else
    text[0] = '\0';
  return length;
}

std::int64_t noText(char* text, std::int64_t size) {
  if (text && size > 0) text[0] = '\0';
  return -1;
}

}  // namespace

extern "C" {

const char* ztCADInspect_version() { return ZTCADINSPECT_VERSION; }

// ------------------------------------------------------------------------------------------------ options

void ztCADInspect_initOptions(ztCADInspect_Options* options, std::int64_t size) {
  if (!options || size <= 0) return;
  ztCADInspect_Options defaults = inspect::defaultOptions();
  defaults.size = std::min<std::int64_t>(size, sizeof defaults);
  std::memset(static_cast<void*>(options), 0, static_cast<std::size_t>(size));
  std::memcpy(static_cast<void*>(options), &defaults, static_cast<std::size_t>(defaults.size));
}

const char* ztCADInspect_optionsProblem(const ztCADInspect_Options* options) {
  return options ? inspect::problemOf(inspect::completed(*options)) : nullptr;
}

// ------------------------------------------------------------------------------------------------ findings

std::int64_t ztCADInspect_findingCount(const ztCADInspect_Findings* findings) {
  return findings ? findings->list.count() : 0;
}

const ztCADInspect_Finding* ztCADInspect_findingAt(const ztCADInspect_Findings* findings,
                                                   std::int64_t index) {
  return findings ? findings->list.at(index) : nullptr;
}

void ztCADInspect_endFindings(ztCADInspect_Findings* findings) { delete findings; }

std::int32_t ztCADInspect_ruleCount() { return inspect::ruleCount(); }

const ztCAD_Rule* ztCADInspect_ruleAt(std::int32_t index) {
  if (index < 0 || index >= inspect::ruleCount()) return nullptr;
  return &inspect::infoOf(static_cast<inspect::Rule>(index));
}

// ---------------------------------------------------------------------------------------- mass properties

const char* ztCADInspect_massProblemText(std::int32_t problem) { return inspect::massProblemText(problem); }

std::int32_t ztCADInspect_declaredMass(const ztCAD_Base* element, const ztCADInspect_Options* options,
                                       ztCADInspect_MassProperties* mass) {
  if (!element || !mass) return ztCADInspect_MassBadArgument;
  return guarded<std::int32_t>(ztCADInspect_MassNoMemory, [&] {
    ztCADInspect_MassProperties found = {};
    const int problem =
        inspect::declaredMass(element, ztCAD_getKind(element), inspect::settingsFrom(options), found);
    if (problem == ztCADInspect_MassKnown) *mass = found;
    return problem;
  });
}

std::int32_t ztCADInspect_sphereMass(const double* center, double radius, const ztCADInspect_Options* options,
                                     ztCADInspect_MassProperties* mass) {
  if (!center || !mass) return ztCADInspect_MassBadArgument;
  return guarded<std::int32_t>(ztCADInspect_MassNoMemory, [&] {
    ztCADInspect_MassProperties found = {};
    const int problem = inspect::sphereMass(center, radius, inspect::settingsFrom(options), found);
    if (problem == ztCADInspect_MassKnown) *mass = found;
    return problem;
  });
}

bool ztCADInspect_massToNumbers(const ztCADInspect_MassProperties* mass, const ztCAD_Base* element,
                                const ztCADInspect_Options* options, double* values) {
  if (!mass || !values) return false;
  return guarded(false, [&] {
    inspect::massToNumbers(*mass, element, inspect::settingsFrom(options), values);
    return true;
  });
}

bool ztCADInspect_transformMass(const ztCADInspect_MassProperties* mass, const double* transform,
                                const ztCADInspect_Options* options, ztCADInspect_MassProperties* result) {
  if (!mass || !transform || !result) return false;
  return guarded(false, [&] {
    const inspect::Transform map = inspect::Transform::read(transform);
    if (!map.isFinite() || !inspect::isFinite(*mass)) return false;
    const inspect::Mass seen = inspect::transformed(*mass, map, inspect::settingsFrom(options));
    if (!inspect::isFinite(seen)) return false;
    *result = seen;
    return true;
  });
}

bool ztCADInspect_sumMass(const ztCADInspect_MassProperties* bodies, std::int64_t count,
                          ztCADInspect_MassProperties* result) {
  if (!bodies || count < 1 || !result) return false;
  return guarded(false, [&] {
    const inspect::Mass sum = inspect::sumOf(bodies, static_cast<std::size_t>(count));
    if (sum.mass == 0 || !inspect::isFinite(sum)) return false;
    *result = sum;
    return true;
  });
}

// ------------------------------------------------------------------------------------------------ meshes

ztCADInspect_Mesh* ztCADInspect_analyseMesh(const double* vertices, std::int64_t vertexCount,
                                            const std::uint32_t* facets, std::int64_t facetCount,
                                            const ztCADInspect_Options* options) {
  const std::int64_t most = std::numeric_limits<std::int32_t>::max();
  vertexCount = std::max<std::int64_t>(vertexCount, 0);
  facetCount = std::max<std::int64_t>(facetCount, 0);
  if (vertexCount > most || facetCount > most) return nullptr;
  if ((!vertices && vertexCount > 0) || (!facets && facetCount > 0)) return nullptr;
  return guarded<ztCADInspect_Mesh*>(nullptr, [&] {
    const inspect::MeshView view = {vertices, static_cast<std::size_t>(vertexCount), facets,
                                    static_cast<std::size_t>(facetCount)};
    inspect::MeshAnalysis found = inspect::analyse(view, {}, inspect::settingsFrom(options));
    return new ztCADInspect_Mesh{found.state, {std::move(found.findings)}, found.massProblem, found.mass};
  });
}

ztCADInspect_Mesh* ztCADInspect_analyseElement(const ztCAD_Base* element,
                                               const ztCADInspect_Options* options) {
  if (!element || !inspect::isSolid(ztCAD_getKind(element))) return nullptr;
  return guarded<ztCADInspect_Mesh*>(nullptr, [&] {
    inspect::MeshAnalysis found =
        inspect::analyse(inspect::viewOf(element), {element, {}}, inspect::settingsFrom(options));
    return new ztCADInspect_Mesh{found.state, {std::move(found.findings)}, found.massProblem, found.mass};
  });
}

const ztCADInspect_MeshState* ztCADInspect_meshState(const ztCADInspect_Mesh* mesh) {
  return mesh ? &mesh->state : nullptr;
}

const ztCADInspect_Findings* ztCADInspect_meshFindings(const ztCADInspect_Mesh* mesh) {
  return mesh ? &mesh->findings : nullptr;
}

std::int32_t ztCADInspect_meshMass(const ztCADInspect_Mesh* mesh, ztCADInspect_MassProperties* mass) {
  if (!mesh || !mass) return ztCADInspect_MassBadArgument;
  if (mesh->massProblem == ztCADInspect_MassKnown) *mass = mesh->mass;
  return mesh->massProblem;
}

void ztCADInspect_endMesh(ztCADInspect_Mesh* mesh) { delete mesh; }

// ------------------------------------------------------------------------------------------------ scenes

ztCADInspect_Scene* ztCADInspect_openScene(ztCAD_GMDDocument* document, const char* folder,
                                           const ztCADInspect_Options* options) {
  if (!document) return nullptr;
  return guarded<ztCADInspect_Scene*>(nullptr, [&] {
    return new ztCADInspect_Scene{{document, folder, options}};
  });
}

std::int64_t ztCADInspect_itemCount(const ztCADInspect_Scene* scene) {
  return scene ? static_cast<std::int64_t>(scene->scene.items().size()) : 0;
}

const ztCADInspect_Item* ztCADInspect_items(const ztCADInspect_Scene* scene) {
  return scene && !scene->scene.items().empty() ? scene->scene.items().data() : nullptr;
}

std::int64_t ztCADInspect_shapeCount(const ztCADInspect_Scene* scene) {
  return scene ? static_cast<std::int64_t>(scene->scene.shapes().size()) : 0;
}

const ztCADInspect_Shape* ztCADInspect_shapes(const ztCADInspect_Scene* scene) {
  return scene && !scene->scene.shapes().empty() ? scene->scene.shapes().data() : nullptr;
}

std::int64_t ztCADInspect_itemPath(const ztCADInspect_Scene* scene, std::int64_t index, char* text,
                                   std::int64_t size) {
  if (index < 0 || index >= ztCADInspect_itemCount(scene)) return noText(text, size);
  return guarded(noText(text, size),
                 [&] { return written(scene->scene.itemPath(static_cast<std::size_t>(index)), text, size); });
}

std::int32_t ztCADInspect_fileCount(const ztCADInspect_Scene* scene) {
  return scene ? scene->scene.fileCount() : 0;
}

const char* ztCADInspect_fileName(const ztCADInspect_Scene* scene, std::int32_t index) {
  if (index < 0 || index >= ztCADInspect_fileCount(scene)) return nullptr;
  return scene->scene.fileName(index);
}

void ztCADInspect_endScene(ztCADInspect_Scene* scene) { delete scene; }

ztCADInspect_Findings* ztCADInspect_check(ztCADInspect_Scene* scene, std::int32_t checks) {
  if (!scene) return nullptr;
  return guarded<ztCADInspect_Findings*>(
      nullptr, [&] { return new ztCADInspect_Findings{inspect::check(scene->scene, checks)}; });
}

// -------------------------------------------------------------------------------------------- mass tables

ztCADInspect_MassTable* ztCADInspect_openMassTable(ztCADInspect_Scene* scene) {
  if (!scene) return nullptr;
  return guarded<ztCADInspect_MassTable*>(
      nullptr, [&] { return new ztCADInspect_MassTable{inspect::MassTable(scene->scene)}; });
}

std::int64_t ztCADInspect_massRowCount(const ztCADInspect_MassTable* table) {
  return table ? static_cast<std::int64_t>(table->table.rows().size()) : 0;
}

const ztCADInspect_MassRow* ztCADInspect_massRows(const ztCADInspect_MassTable* table) {
  return table && !table->table.rows().empty() ? table->table.rows().data() : nullptr;
}

const ztCADInspect_MassRow* ztCADInspect_massTotal(const ztCADInspect_MassTable* table) {
  return table ? &table->table.total() : nullptr;
}

void ztCADInspect_endMassTable(ztCADInspect_MassTable* table) { delete table; }

// ---------------------------------------------------------------------------------------- finding elements

ztCADInspect_Index* ztCADInspect_openIndex(ztCAD_GMDDocument* document) {
  if (!document) return nullptr;
  return guarded<ztCADInspect_Index*>(nullptr, [&] { return new ztCADInspect_Index{document, nullptr}; });
}

const ztCAD_Base* ztCADInspect_findPath(ztCADInspect_Index* index, const char* path) {
  if (!index || !path) return nullptr;
  return guarded<const ztCAD_Base*>(nullptr, [&]() -> const ztCAD_Base* {
    const inspect::NodeIndex found = index->index().findPath(path);
    return found == inspect::noNode ? nullptr : index->index().tree().node(found).element;
  });
}

const ztCAD_Base* ztCADInspect_findName(ztCADInspect_Index* index, const char* name, std::int64_t* count) {
  const ztCAD_Base* first = nullptr;
  const std::int64_t found = ztCADInspect_listName(index, name, &first, 1);
  if (count) *count = found;
  return first;
}

std::int64_t ztCADInspect_listName(ztCADInspect_Index* index, const char* name, const ztCAD_Base** elements,
                                   std::int64_t capacity) {
  if (!index || !name) return 0;
  return guarded<std::int64_t>(0, [&]() -> std::int64_t {
    const std::vector<inspect::NodeIndex>* const found = index->index().named(name);
    if (!found) return 0;
    const auto size = static_cast<std::int64_t>(found->size());
    for (std::int64_t i = 0; elements && i < std::min(size, capacity); ++i)
      elements[i] = index->index().tree().node((*found)[static_cast<std::size_t>(i)]).element;
    return size;
  });
}

std::int64_t ztCADInspect_pathOf(ztCADInspect_Index* index, const ztCAD_Base* element, char* text,
                                 std::int64_t size) {
  const std::int64_t none = noText(text, size);
  if (!index || !element) return none;
  return guarded(none, [&] {
    const inspect::NodeIndex found = index->index().find(element);
    if (found == inspect::noNode) return none;
    return written(index->index().tree().path(found), text, size);
  });
}

const ztCAD_Base* ztCADInspect_holderOf(ztCADInspect_Index* index, const ztCAD_Base* element) {
  if (!index || !element) return nullptr;
  return guarded<const ztCAD_Base*>(nullptr, [&]() -> const ztCAD_Base* {
    const inspect::NodeIndex found = index->index().find(element);
    if (found == inspect::noNode) return nullptr;
    const inspect::NodeIndex holder = index->index().tree().node(found).holder;
    return holder == inspect::noNode ? nullptr : index->index().tree().node(holder).element;
  });
}

void ztCADInspect_endIndex(ztCADInspect_Index* index) { delete index; }

}  // extern "C"
