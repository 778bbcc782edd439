#include "mesh_format.h"

#include <algorithm>

#include "../failure.h"
#include "../platform/file_names.h"

namespace cli {

const std::vector<MeshFormatName>& meshFormats() {
  static const std::vector<MeshFormatName> formats{
      {"xml", MeshFormat::Document}, {"stl", MeshFormat::Stl},    {"stl-text", MeshFormat::StlText},
      {"obj", MeshFormat::Obj},      {"ply", MeshFormat::Ply},    {"ply-text", MeshFormat::PlyText},
      {"glb", MeshFormat::Glb},      {"3mf", MeshFormat::ThreeMf}};
  return formats;
}

std::string wordFor(MeshFormat format) {
  for (const MeshFormatName& name : meshFormats())
    if (name.format == format) return name.word;
  return {};
}

MeshFormat formatOfFile(const std::string& file, const std::string& option) {
  std::string extension = pathOf(file).extension().u8string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  for (const MeshFormatName& name : meshFormats())
    if (extension == "." + name.word) return name.format;
  throw UsageError(file + ": the extension is of no format that is known; give one with " + option);
}

}  // namespace cli
