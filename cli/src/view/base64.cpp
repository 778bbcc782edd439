#include "base64.h"

#include <algorithm>

namespace cli {

namespace {

constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// Three bytes as four digits.
void append(std::string& text, const char* bytes) {
  unsigned number = 0;
  for (int i = 0; i < 3; ++i)
    number = number << 8U | static_cast<unsigned char>(bytes[i]);
  for (const unsigned shift : {18U, 12U, 6U, 0U})
    text += digits[number >> shift & 63U];
}

}  // namespace

void Base64::write(std::string_view bytes) {
  constexpr std::size_t piece = 3 << 14;
  while (!bytes.empty()) {
    const std::size_t taken = std::min(bytes.size(), piece - m_rest.size());
    m_rest += bytes.substr(0, taken);
    bytes.remove_prefix(taken);
    std::string text;
    const std::size_t whole = m_rest.size() / 3 * 3;
    for (std::size_t i = 0; i < whole; i += 3)
      append(text, m_rest.data() + i);
    m_file.write(text);
    m_rest.erase(0, whole);
  }
}

void Base64::finish() {
  if (m_rest.empty()) return;
  const std::size_t missing = 3 - m_rest.size();
  m_rest.resize(3, '\0');
  std::string text;
  append(text, m_rest.data());
  text.replace(4 - missing, missing, missing, '=');
  m_file.write(text);
  m_rest.clear();
}

}  // namespace cli
