#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// A sum of texts (64-bit FNV-1a), the same with every compiler and library.
class Sum {
 public:
  /// Adds a text and its end.
  Sum& add(std::string_view text) {
    for (const char byte : text)
      addByte(static_cast<unsigned char>(byte));
    constexpr unsigned end = 0x100;
    addByte(end);
    return *this;
  }

  /// 16 hexadecimal digits.
  std::string text() const {
    std::string digits;
    for (int shift = 60; shift >= 0; shift -= 4)
      digits += "0123456789abcdef"[(m_value >> shift) & 0xfU];
    return digits;
  }

 private:
  void addByte(unsigned byte) { m_value = (m_value ^ byte) * 0x100000001b3U; }

  std::uint64_t m_value = 0xcbf29ce484222325U;
};

inline std::string sumOf(std::string_view text) { return Sum().add(text).text(); }
