#pragma once

#include <ztCAD/inspect.h>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "document_tree.h"
#include "finding_list.h"
#include "frame.h"
#include "mesh_analysis.h"
#include "referenced_files.h"
#include "settings.h"

namespace ztcad::inspect {

/// A node of one of the files: 0 is the opened document.
struct Located {
  std::int32_t file = 0;
  NodeIndex node = noNode;
};

/// A document with the files that its references name, placed in space.
///
/// Construction resolves every reference once and cuts rings, then counts what each element places before
/// anything is placed: what exceeds the limit is never made.
class Scene {
 public:
  Scene(ztCAD_GMDDocument* document, const char* folder, const ztCADInspect_Options* options);
  Scene(const Scene&) = delete;
  Scene& operator=(const Scene&) = delete;

  const Settings& settings() const { return m_settings; }
  const std::vector<ztCADInspect_Item>& items() const { return m_items; }
  const std::vector<ztCADInspect_Shape>& shapes() const { return m_shapes; }
  std::string itemPath(std::size_t index) const;
  std::int32_t fileCount() const { return 1 + m_referenced.count(); }
  const char* fileName(std::int32_t file) const { return file == 0 ? "" : m_referenced.name(file).c_str(); }

  const DocumentTree& tree(std::int32_t file) const { return m_files[static_cast<std::size_t>(file)]->tree; }
  const Node& node(Located at) const { return tree(at.file).node(at.node); }
  /// All elements that the document holds or places, each after what it holds and places.
  const std::vector<Located>& inward() const { return m_inward; }
  /// What a reference places; node -1: nothing.
  Located target(Located reference) const {
    return m_files[static_cast<std::size_t>(reference.file)]
        ->targets[static_cast<std::size_t>(reference.node)];
  }
  /// The finding's subject for an element of the opened document.
  Subject subject(NodeIndex node) const;

  /// The analysis of a solid of any file, made at the first call.
  const MeshAnalysis& analysis(Located solid);

  /// Findings about references, files and systems, and the nodes that they are about.
  const FindingList& findings() const { return m_findings; }
  const std::vector<std::int64_t>& findingNodes() const { return m_findingNodes; }

  /// From the frame of what an element or its template holds to the frame of the element's holder.
  Transform transformOf(Located at) const;

 private:
  struct File {
    DocumentTree tree;
    std::map<int, std::unordered_map<std::string, NodeIndex>> templates;  // by kind and name
    std::vector<Located> targets;                                         // of references
    std::vector<std::int64_t> counts;                                     // items that each node places
    std::vector<unsigned char> states;
    std::vector<std::int64_t> shapes;
    std::vector<NodeIndex> origins;  // the reference of the opened document that led here first
  };
  struct Holder;
  struct Visit;

  File& file(std::int32_t index) { return *m_files[static_cast<std::size_t>(index)]; }
  void addFile(ztCAD_GMDDocument* document);
  void resolveFrom(NodeIndex start);
  void enter(std::vector<Visit>& visits, Located at, NodeIndex origin);
  void enterTarget(std::vector<Visit>& visits);
  void finish(Located at);
  Located resolve(Located reference, NodeIndex origin);
  void reportRing(const std::vector<Visit>& visits, Located reference, Located target, NodeIndex origin);
  void reportSystems();
  void place(Located at, const Holder& holder);
  Holder insideOf(const Holder& holder, Located at, Located content) const;
  void placeContent(Located content, const Holder& inside);
  std::int64_t shapeOf(Located at);
  void report(Rule rule, NodeIndex origin, const char* attribute, const std::string& key,
              std::initializer_list<std::string> arguments, std::optional<int> severity = {});

  Settings m_settings;
  ReferencedFiles m_referenced;
  std::vector<std::unique_ptr<File>> m_files;
  std::vector<ztCADInspect_Item> m_items;
  std::vector<NodeIndex> m_itemNodes;
  std::vector<ztCADInspect_Shape> m_shapes;
  std::vector<Located> m_inward;
  FindingList m_findings;
  std::vector<std::int64_t> m_findingNodes;
  std::map<std::string, std::int64_t> m_reported;  // by rule and what it is about
  std::map<std::pair<std::int32_t, NodeIndex>, std::unique_ptr<MeshAnalysis>> m_analyses;
};

}  // namespace ztcad::inspect

/// What the C interface knows as a scene.
struct ztCADInspect_Scene {
  ztcad::inspect::Scene scene;
};
