#include "number_text.h"

#include <array>
#include <charconv>

namespace cli {

std::string numberText(double number) {
  std::array<char, 32> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr;
  return {buffer.data(), end};
}

std::string tripleText(const double* xyz) {
  return numberText(xyz[0]) + ", " + numberText(xyz[1]) + ", " + numberText(xyz[2]);
}

}  // namespace cli
