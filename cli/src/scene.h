#pragma once

#include <ztCAD/inspect.h>

#include <memory>
#include <string>

namespace cli {

struct EndScene {
  void operator()(ztCADInspect_Scene* scene) const { ztCADInspect_endScene(scene); }
};

/// A scene that ends with this pointer, which the document must outlive.
using OpenScene = std::unique_ptr<ztCADInspect_Scene, EndScene>;

/// Opens the scene of a document.
/// @param folder  where references are looked for, in it and below; empty: the current one
/// @param options null: the defaults
OpenScene openSceneIn(ztCAD_GMDDocument* document, const std::string& folder,
                      const ztCADInspect_Options* options);

/// The folder of a document. That of standard input, "-", is the current one.
std::string folderOf(const std::string& file);

/// Opens the scene of a document. References read files in the folder of the document and below.
/// @param file    name of the document; "-": its references are relative to the current folder
/// @param options null: the defaults
OpenScene openScene(ztCAD_GMDDocument* document, const std::string& file,
                    const ztCADInspect_Options* options);

}  // namespace cli
