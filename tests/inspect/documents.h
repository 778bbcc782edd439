#pragma once

#include <string>
#include <vector>

#include "meshes.h"

/// A document from the content of its root element.
inline DocumentHandle loaded(const std::string& content) {
  const bool isWhole = content.find("<GMD") != std::string::npos;
  const std::string text = isWhole ? content : "<GMD>" + content + "</GMD>";
  return DocumentHandle(
      ztCAD_loadDocumentFromText(text.data(), static_cast<std::int64_t>(text.size()), nullptr));
}

inline SceneHandle sceneOf(const DocumentHandle& document, const ztCADInspect_Options* options = nullptr,
                           const std::string& folder = {}) {
  return SceneHandle(ztCADInspect_openScene(document.get(), folder.c_str(), options));
}

/// "rule path" of each finding.
inline std::vector<std::string> findingsOf(const SceneHandle& scene, int checks = ztCADInspect_CheckAll) {
  std::vector<std::string> found;
  const FindingsHandle findings(ztCADInspect_check(scene.get(), checks));
  for (std::int64_t i = 0; i < ztCADInspect_findingCount(findings.get()); ++i) {
    const ztCADInspect_Finding& finding = *ztCADInspect_findingAt(findings.get(), i);
    std::string text = finding.rule;
    text += ' ';
    text += finding.path;
    if (finding.count > 1) text += " x" + std::to_string(finding.count);
    found.push_back(text);
  }
  return found;
}

inline std::string pathOf(const SceneHandle& scene, std::int64_t item) {
  char text[400];
  return ztCADInspect_itemPath(scene.get(), item, text, sizeof text) < 0 ? "none" : text;
}

/// "depth kind name" of each item.
inline std::vector<std::string> itemsOf(const SceneHandle& scene) {
  std::vector<std::string> items;
  const ztCADInspect_Item* const all = ztCADInspect_items(scene.get());
  for (std::int64_t i = 0; i < ztCADInspect_itemCount(scene.get()); ++i) {
    int depth = 0;
    for (std::int64_t at = all[i].parent; at >= 0; at = all[at].parent)
      ++depth;
    items.push_back(std::to_string(depth) + ' ' + ztCAD_kindWord(all[i].kind) + ' ' + all[i].name);
  }
  return items;
}

const char* const turnedAboutZ = "CS, 10, 20, 30, 0, 1, 0, -1, 0, 0, 0, 0, 1";
const char* const movedByX = "CS, 1, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1";
const char* const tetrahedronLists =
    "<vertices>0, 0, 0; 1, 0, 0; 0, 1, 0; 0, 0, 1;</vertices><faces>0, 2, 1; 0, 1, 3; 0, 3, 2; 1, 2, 3;</faces>";

inline std::string tetrahedron(const std::string& attributes) {
  return "<solid " + attributes + " method=\"triangulation\">" + tetrahedronLists + "</solid>";
}
