#include "base85.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace cli {

namespace {

constexpr std::size_t group = 4;        // bytes
constexpr std::size_t groupDigits = 5;  // of 85 each

/// Four bytes, the first one highest, as five digits.
void append(std::string& text, const char* bytes) {
  constexpr std::string_view digits =
      "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz!#$%.()*+-;,=/?@^_`{|}~";
  static_assert(digits.size() == 85);
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < group; ++i)
    number = number << 8U | static_cast<unsigned char>(bytes[i]);
  char reversed[groupDigits];
  for (char& digit : reversed) {
    digit = digits[number % digits.size()];
    number /= static_cast<std::uint32_t>(digits.size());
  }
  text.append(std::rbegin(reversed), std::rend(reversed));
}

}  // namespace

void Base85::write(std::string_view bytes) {
  constexpr std::size_t piece = group << 14U;
  while (!bytes.empty()) {
    const std::size_t taken = std::min(bytes.size(), piece - m_rest.size());
    m_rest += bytes.substr(0, taken);
    bytes.remove_prefix(taken);
    std::string text;
    const std::size_t whole = m_rest.size() / group * group;
    for (std::size_t i = 0; i < whole; i += group)
      append(text, m_rest.data() + i);
    m_file.write(text);
    m_rest.erase(0, whole);
  }
}

void Base85::finish() {
  if (m_rest.empty()) return;
  const std::size_t missing = group - m_rest.size();
  m_rest.resize(group, '\0');
  std::string text;
  append(text, m_rest.data());
  text.resize(groupDigits - missing);
  m_file.write(text);
  m_rest.clear();
}

}  // namespace cli
