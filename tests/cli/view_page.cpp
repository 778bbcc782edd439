#include "view_page.h"

#include <meshoptimizer.h>
#include <view/view.h>

#include <cstdint>
#include <cstring>
#include <stdexcept>

#include "schemas.h"
#include "temporary_files.h"

namespace {

using nlohmann::json;

const char* const emptyPage =
    "<!doctype html>\n<title>\n<!--ztcad:title-->\n</title>\n<body>\n<!--ztcad:document-->\n"
    "<!--ztcad:scene-->\n</body>\n";

/// The content of a script element; empty if the page has none of that name.
std::string scriptOf(const std::string& html, const std::string& id) {
  const std::size_t tag = html.find("id=\"" + id + "\">");
  if (tag == std::string::npos) return {};
  const std::size_t begin = html.find('>', tag) + 1;
  return html.substr(begin, html.find("</script>", begin) - begin);
}

std::string decodedBase85(std::string text) {
  const std::string digits =
      "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz!#$%.()*+-;,=/?@^_`{|}~";
  const std::size_t missing = (5 - text.size() % 5) % 5;
  text.append(missing, digits.back());
  std::string bytes;
  for (std::size_t at = 0; at < text.size(); at += 5) {
    std::uint64_t number = 0;
    for (const char digit : text.substr(at, 5)) {
      const std::size_t value = digits.find(digit);
      if (value == std::string::npos) throw std::runtime_error("no base 85");
      number = 85 * number + value;
    }
    for (const unsigned shift : {24U, 16U, 8U, 0U})
      bytes += static_cast<char>(number >> shift & 0xffU);
  }
  bytes.resize(bytes.size() - missing);
  return bytes;
}

std::uint32_t numberAt(const std::string& bytes, std::size_t offset) {
  std::uint32_t number = 0;
  std::memcpy(&number, bytes.data() + offset, sizeof number);  // this machine and the format: little-endian
  return number;
}

/// A buffer view, decompressed.
std::vector<unsigned char> decodedView(const json& view, const std::string& binary) {
  const json& packed = view.at("extensions").at("EXT_meshopt_compression");
  const auto count = packed.at("count").get<std::size_t>();
  const auto stride = packed.at("byteStride").get<std::size_t>();
  const auto* const bytes =
      reinterpret_cast<const unsigned char*>(binary.data()) + packed.at("byteOffset").get<std::size_t>();
  const auto size = packed.at("byteLength").get<std::size_t>();
  std::vector<unsigned char> result(count * stride);
  const int problem = packed.at("mode") == "TRIANGLES"
                          ? meshopt_decodeIndexBuffer(result.data(), count, stride, bytes, size)
                          : meshopt_decodeVertexBuffer(result.data(), count, stride, bytes, size);
  if (problem != 0 || view.at("byteLength") != result.size()) throw std::runtime_error("a bad buffer view");
  return result;
}

template <typename Number>
std::vector<Number> numbersOf(const json& accessor, const std::vector<std::vector<unsigned char>>& views) {
  const auto& view = views.at(accessor.at("bufferView").get<std::size_t>());
  const std::size_t components = accessor.at("type") == "VEC3" ? 3 : 1;
  std::vector<Number> numbers(components * accessor.at("count").get<std::size_t>());
  const auto offset = accessor.at("byteOffset").get<std::size_t>();
  if (offset + numbers.size() * sizeof(Number) > view.size()) throw std::runtime_error("a bad accessor");
  std::memcpy(numbers.data(), view.data() + offset, numbers.size() * sizeof(Number));
  return numbers;
}

}  // namespace

ViewPage viewPageOf(const std::string& file) {
  const TemporaryFiles files;
  ViewPage page;
  page.exitCode = cli::viewWith({file, files.path("page.html")}, emptyPage);
  page.html = bytesOf(files.path("page.html"));
  const std::string text = scriptOf(page.html, "ztcad-document");
  EXPECT_TRUE(validates(text, schemaOf("view-page")));
  page.document = json::parse(text);
  page.glb = decodedBase85(scriptOf(page.html, "ztcad-scene"));
  return page;
}

ViewPage viewPageOfText(const std::string& text, const std::string& fileName) {
  const TemporaryFiles files;
  return viewPageOf(files.put(fileName, text));
}

std::vector<DecodedMesh> decodedMeshes(const std::string& glb) {
  if (glb.substr(0, 4) != "glTF" || numberAt(glb, 8) != glb.size()) throw std::runtime_error("no GLB");
  const std::uint32_t length = numberAt(glb, 12);
  const json file = json::parse(glb.substr(20, length));
  const std::string binary = glb.substr(20 + length + 8);
  std::vector<std::vector<unsigned char>> views;
  for (const json& view : file.at("bufferViews"))
    views.push_back(decodedView(view, binary));
  std::vector<DecodedMesh> meshes;
  for (const json& mesh : file.at("meshes")) {
    const json& primitive = mesh.at("primitives").at(0);
    const auto accessor = [&](const json& index) -> const json& {
      return file.at("accessors").at(index.get<std::size_t>());
    };
    DecodedMesh& decoded = meshes.emplace_back();
    decoded.mode = primitive.value("mode", 4);
    decoded.positions = numbersOf<float>(accessor(primitive.at("attributes").at("POSITION")), views);
    if (primitive.contains("indices"))
      decoded.indices = numbersOf<std::uint32_t>(accessor(primitive.at("indices")), views);
  }
  return meshes;
}
