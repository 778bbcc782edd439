#include "scene.h"

#include <new>

#include "input_file.h"
#include "platform/file_names.h"

namespace cli {

OpenScene openScene(ztCAD_GMDDocument* document, const std::string& file,
                    const ztCADInspect_Options* options) {
  const std::string folder = file == standardStream ? "" : nameOf(pathOf(file).parent_path());
  OpenScene scene(ztCADInspect_openScene(document, folder.c_str(), options));
  if (!scene) throw std::bad_alloc();
  return scene;
}

}  // namespace cli
