// Corrects an arbitrary name; the bytes after the first 0 byte are the fallback name.

#include <algorithm>
#include <cstring>
#include <vector>

#include "fuzzing.h"
#include "text/narrow_text.h"
#include "ztCAD.h"

namespace {

using fuzzing::require;

/// Corrects with the function for hosts without std::string, into a buffer of the smallest documented size.
std::string correctedByNostl(const std::string& name, const std::string& fallback, bool& differs) {
  const std::size_t longest = std::max({name.size(), fallback.size(), std::size_t{1}});
  std::vector<char> buffer(longest + 2, '\xAA');
  differs = doCorrectName_nostl(name.c_str(), buffer.data(), fallback.c_str());
  require(std::memchr(buffer.data(), '\0', buffer.size()) != nullptr, "the corrected name is terminated");
  return buffer.data();
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = fuzzing::bytesOf(data, size);
  const std::size_t end = std::min(bytes.find('\0'), bytes.size());
  const std::string name(bytes.substr(0, end));
  const std::string fallback(
      bytes.substr(std::min(end + 1, bytes.size())).substr(0, bytes.find('\0', end + 1)));

  std::string corrected = "earlier";
  const bool differs = doCorrectName(name, corrected, fallback);
  require(!corrected.empty(), "a corrected name is never empty");
  require(differs == (corrected != name), "the result reports whether the name was changed");

  // a correction may leave windows-1251 bytes that happen to be valid UTF-8 and then stand for other
  // characters
  if (ztcad::isUtf8(name.empty() ? fallback : name)) {
    std::string same = corrected;
    require(!doCorrectName(same, same, "other") && same == corrected, "a corrected name is correct");
  }

  const std::string plainFallback = fallback.substr(0, fallback.find('\0'));
  bool nostlDiffers = false;
  const std::string byNostl = correctedByNostl(name, plainFallback, nostlDiffers);
  std::string expected;
  require(doCorrectName(name, expected, plainFallback) == nostlDiffers && byNostl == expected,
          "both functions return the same");
  return 0;
}
