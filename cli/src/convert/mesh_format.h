#pragma once

#include <string>
#include <vector>

namespace cli {

/// The forms of files that `convert` reads and writes.
enum class MeshFormat { Document, Stl, StlText, Obj, Ply, PlyText, Glb, ThreeMf };

struct MeshFormatName {
  std::string word;  // for --from and --to
  MeshFormat format;
};

/// All formats. The extension of a file is a word of this list.
const std::vector<MeshFormatName>& meshFormats();

/// The format for the extension of a file. Throws `UsageError` if there is none.
/// @param option the option that gives the format instead
MeshFormat formatOfFile(const std::string& file, const std::string& option);

std::string wordFor(MeshFormat format);

}  // namespace cli
