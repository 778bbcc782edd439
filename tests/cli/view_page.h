#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include <exit_code.h>

/// A page as `ztcad view` writes it, made from a page without a viewer.
struct ViewPage {
  cli::ExitCode exitCode = cli::ExitCode::Failed;
  std::string html;
  nlohmann::json document;  // the data of the page
  std::string glb;          // empty if there is none
};

/// Runs the command in this process.
/// @param file a document, by its path
ViewPage viewPageOf(const std::string& file);
/// The same for a text, which is written into a file.
ViewPage viewPageOfText(const std::string& text, const std::string& fileName = "page.xml");

/// A mesh of a GLB file, decompressed.
struct DecodedMesh {
  int mode = 4;
  std::vector<float> positions;
  std::vector<std::uint32_t> indices;
};

/// The meshes of a GLB file whose buffer views are compressed. Throws if one does not decode.
std::vector<DecodedMesh> decodedMeshes(const std::string& glb);
