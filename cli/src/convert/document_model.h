#pragma once

#include <memory>
#include <string>

#include "model.h"

namespace cli {

/// A document as a model: its scene, one node for each placed item, spheres as triangles.
class DocumentModel {
 public:
  /// Loads the document. Prints what is left out. Throws `Failure` if it does not load.
  /// @param path   where the document is
  /// @param file   the name by which the user knows it
  DocumentModel(const std::string& path, const std::string& file);
  ~DocumentModel();
  DocumentModel(const DocumentModel&) = delete;
  DocumentModel& operator=(const DocumentModel&) = delete;

  Model& model();
  /// Whether nothing was left out, and the document loaded without errors.
  bool isWhole() const;

 private:
  class Scene;
  std::unique_ptr<Scene> m_scene;
};

}  // namespace cli
