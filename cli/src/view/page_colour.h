#pragma once

#include <algorithm>
#include <array>
#include <string>

namespace cli {

/// "#rrggbb". Components above 255 count as 255.
template <typename Component>
std::string pageColour(const std::array<Component, 3>& rgb) {
  constexpr const char* digits = "0123456789abcdef";
  std::string text = "#";
  for (const Component component : rgb) {
    const unsigned value = std::min<unsigned>(component, 255);
    text += digits[value / 16];
    text += digits[value % 16];
  }
  return text;
}

}  // namespace cli
