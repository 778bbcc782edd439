#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <QString>
#include <string_view>

#include "number_text.h"

namespace ztcad {

/// The text of a colour, a coordinate system or mass-inertia data: a word and numbers, "RGB, 255, 128, 0".
class WordAndNumbers {
 public:
  /// @param word  ASCII, at most eight characters
  /// @param begin the numbers, reals or indices
  template <typename Number>
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): the array is written up to its text's end
  WordAndNumbers(const QString& word, const Number* begin, const Number* end) {
    const auto count = static_cast<std::size_t>(end - begin);
    if (count > usualCount) m_long.reset(new char[longestWord + count * longestItem]);
    char* const text = m_long ? m_long.get() : m_usual.data();
    char* out = std::transform(word.begin(), word.end(), text, [](QChar c) { return c.toLatin1(); });
    for (; begin != end; ++begin) {
      *out++ = ',';
      *out++ = ' ';
      out = write(*begin, out);
    }
    m_text = {text, static_cast<std::size_t>(out - text)};
  }
  WordAndNumbers(const WordAndNumbers&) = delete;
  WordAndNumbers& operator=(const WordAndNumbers&) = delete;
  ~WordAndNumbers() = default;

  std::string_view text() const { return m_text; }
  void appendTo(QString& out) const { out += QLatin1String(m_text.data(), static_cast<int>(m_text.size())); }

 private:
  static constexpr std::size_t usualCount = 12;
  static constexpr std::size_t longestWord = 8;
  static constexpr std::size_t longestItem = 2 + longestNumber;

  static char* write(double number, char* out) { return writeReal(number, out); }
  static char* write(std::uint32_t number, char* out) { return writeIndex(number, out); }

  std::array<char, longestWord + usualCount * longestItem> m_usual;
  std::unique_ptr<char[]> m_long;  // null: the text is in the array
  std::string_view m_text;
};

}  // namespace ztcad
