#include "scene.h"

#include <new>

#include "input_file.h"
#include "platform/file_names.h"

namespace cli {

std::string folderOf(const std::string& file) {
  return file == standardStream ? "" : nameOf(pathOf(file).parent_path());
}

OpenScene openScene(ztCAD_GMDDocument* document, const std::string& file,
                    const ztCADInspect_Options* options) {
  return openSceneIn(document, folderOf(file), options);
}

OpenScene openSceneIn(ztCAD_GMDDocument* document, const std::string& folder,
                      const ztCADInspect_Options* options) {
  OpenScene scene(ztCADInspect_openScene(document, folder.c_str(), options));
  if (!scene) throw std::bad_alloc();
  return scene;
}

}  // namespace cli
