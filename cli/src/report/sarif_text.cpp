#include "sarif_text.h"

#include <algorithm>
#include <filesystem>
#include <string_view>

#include "../platform/file_names.h"

namespace cli {

namespace {

bool isUnreserved(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' || c == '.' ||
         c == '_' || c == '~' || c == '/';
}

std::string percentEncoded(const std::string& bytes) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string text;
  for (const char byte : bytes) {
    const auto code = static_cast<unsigned char>(byte);
    if (isUnreserved(byte))
      text += byte;
    else
      text.append({'%', digits[code >> 4U], digits[code & 15U]});
  }
  return text;
}

/// Characters of UTF-8 text: all bytes but those that continue a character.
std::int64_t characters(std::string_view text) {
  return std::count_if(text.begin(), text.end(),
                       [](char byte) { return (static_cast<unsigned char>(byte) & 0xc0U) != 0x80U; });
}

/// The tag of the last element of a path such as "/GMD/structure[1]/point[2]".
std::string_view lastTag(std::string_view path) {
  const std::string_view step = path.substr(path.rfind('/') + 1);
  return step.substr(0, step.find('['));
}

}  // namespace

std::string sarifUri(const std::string& file) {
  const std::filesystem::path path = pathOf(file);
  if (path.is_relative()) return percentEncoded(file);
  std::error_code error;
  const std::string folder = nameOf(std::filesystem::current_path(error)) + "/";
  const std::string name = nameOf(path);
  if (!error && name.compare(0, folder.size(), folder) == 0)
    return percentEncoded(name.substr(folder.size()));
  return (name.front() == '/' ? "file://" : "file:///") + percentEncoded(name);
}

std::string sarifMessage(const std::string& text) {
  std::string message;
  for (const char c : text)
    message.append(c == '{' || c == '}' ? 2 : 1, c);
  return message;
}

std::int64_t regionLength(const Finding& finding) {
  if (finding.attribute) return std::max<std::int64_t>(characters(*finding.attribute), 1);
  const std::string_view tag = lastTag(finding.path);
  return 1 + characters(tag);
}

}  // namespace cli
