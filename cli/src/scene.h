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

/// Opens the scene of a document. References read files in the folder of the document and below.
/// @param file    name of the document; "-": its references are relative to the current folder
/// @param options null: the defaults
OpenScene openScene(ztCAD_GMDDocument* document, const std::string& file,
                    const ztCADInspect_Options* options);

}  // namespace cli
