#include "glb.h"

#include <ztCAD/ztCAD_c.h>

#include <limits>

#include "../failure.h"

namespace cli::gltf {

namespace {

void append(std::string& bytes, std::uint64_t number) {
  for (unsigned i = 0; i < 4; ++i)
    bytes += static_cast<char>(number >> (8 * i) & 0xFFU);
}

}  // namespace

std::string assetMember() {
  return std::string(R"("asset":{"version":"2.0","generator":"ztcad )") + ztCADVersion() + "\"}";
}

std::string listMember(const char* name, const std::vector<std::string>& items) {
  if (items.empty()) return {};
  std::string text = std::string(",\"") + name + "\":[";
  for (std::size_t i = 0; i < items.size(); ++i)
    text += (i > 0 ? "," : "") + items[i];
  return text + "]";
}

std::string glbStart(std::string json, std::uint64_t binarySize) {
  json.resize((json.size() + 3) / 4 * 4, ' ');
  constexpr std::uint64_t header = 12;
  constexpr std::uint64_t chunkHeader = 8;
  const std::uint64_t total = header + chunkHeader + json.size() + chunkHeader + binarySize;
  if (total > std::numeric_limits<std::uint32_t>::max())
    throw Failure("the model needs more than the 4 GiB that a GLB file can have");
  std::string bytes = "glTF";
  append(bytes, 2);
  append(bytes, total);
  append(bytes, json.size());
  bytes += "JSON" + json;
  append(bytes, binarySize);
  bytes.append("BIN\0", 4);
  return bytes;
}

}  // namespace cli::gltf
