#include "assimp_module.h"

#include "../failure.h"
#include "../platform/module.h"

namespace cli {

Model readByAssimp(const std::string& path, const std::string& extension) {
  const auto read = reinterpret_cast<AssimpRead>(functionOfModule(assimpModuleName, assimpReadName));
  Model model;
  std::string problem;
  if (!read(path.c_str(), extension.c_str(), model, problem)) throw Failure(problem);
  return model;
}

}  // namespace cli
