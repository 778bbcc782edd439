#pragma once

#include <fast_float/fast_float.h>
#include <unistd.h>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "documents.h"

/// @file
/// What the hand-tuned reference implementations share: reading a file into a tree, numbers in place, and one
/// buffer for a file to write.

namespace benchmarks {

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

// --------------------------------------------------------------------------------------------------- loading

/// A parsed file and the buffer that its nodes point into.
struct Tree {
  std::unique_ptr<char[]> bytes;
  pugi::xml_document xml;
};

inline bool parse(const Document& document, Tree& tree) {
  const auto size = static_cast<std::size_t>(document.bytes);
  tree.bytes.reset(new char[size]);  // not zeroed: fread fills it
  const File file(std::fopen(document.file.c_str(), "rb"));
  if (!file || std::fread(tree.bytes.get(), 1, size, file.get()) != size) return false;
  // the documents are ASCII, so pugixml may skip the conversion from windows-1251
  return tree.xml.load_buffer_inplace(tree.bytes.get(), size, pugi::parse_default, pugi::encoding_utf8);
}

inline const char* readNumber(const char* first, const char* last, double& value) {
  return fast_float::from_chars(first, last, value).ptr;
}
inline const char* readNumber(const char* first, const char* last, std::uint32_t& value) {
  return std::from_chars(first, last, value).ptr;
}

inline bool isNumberPart(char c) { return (c >= '0' && c <= '9') || c == '-'; }

/// Characters of a number with its separator, by which the room for a list is estimated.
constexpr std::ptrdiff_t usualLength = 8;

template <typename Number>
void readNumbers(const char* text, std::vector<Number>& numbers, std::ptrdiff_t length = usualLength) {
  const char* const end = text + std::strlen(text);
  numbers.reserve(static_cast<std::size_t>((end - text) / length));
  for (const char* at = text; at != end;) {
    if (!isNumberPart(*at)) {
      ++at;
      continue;
    }
    at = readNumber(at, end, numbers.emplace_back());
  }
}

/// Reads as many numbers as there is room for; words between them are skipped.
template <typename Number, std::size_t Count>
void readNumbers(const char* text, std::array<Number, Count>& numbers) {
  const char* const end = text + std::strlen(text);
  std::size_t read = 0;
  while (text != end && read < Count) {
    if (isNumberPart(*text))
      text = readNumber(text, end, numbers[read++]);
    else
      ++text;
  }
}

// ---------------------------------------------------------------------------------------------------- saving

/// An output buffer of fixed capacity, allocated once.
class Text {
 public:
  explicit Text(std::size_t capacity) : m_bytes(new char[capacity]), m_end(m_bytes.get()) {}

  Text& operator<<(std::string_view text) {
    std::memcpy(m_end, text.data(), text.size());
    m_end += text.size();
    return *this;
  }
  Text& operator<<(double value) {
    m_end = std::to_chars(m_end, m_end + longestNumber, value, std::chars_format::general, 6).ptr;
    return *this;
  }
  Text& operator<<(std::uint32_t value) {
    m_end = std::to_chars(m_end, m_end + longestNumber, value).ptr;
    return *this;
  }

  bool save(const std::string& name) const {
    const File file(std::fopen(name.c_str(), "wb"));
    const auto size = static_cast<std::size_t>(m_end - m_bytes.get());
    return file && std::fwrite(m_bytes.get(), 1, size, file.get()) == size && std::fflush(file.get()) == 0 &&
           ::fsync(::fileno(file.get())) == 0;
  }

  static constexpr std::size_t longestNumber = 16;

 private:
  std::unique_ptr<char[]> m_bytes;
  char* m_end;
};

constexpr std::size_t capacityForFrame = 4096;

inline void beginDocument(Text& text, std::string_view inform) {
  text << "<?xml version=\"1.0\" encoding=\"windows-1251\"?>\n<GMD>\n   <header inform=\"" << inform
       << "\" majorVersion=\"2\" minorVersion=\"1\"/>\n";
}

/// Writes a word and the numbers that it introduces.
template <typename Number, std::size_t Count>
void writeRecord(Text& text, std::string_view word, const std::array<Number, Count>& numbers) {
  text << word;
  for (const Number number : numbers)
    text << ", " << number;
}

template <typename Number>
void writeTriples(Text& text, const std::vector<Number>& numbers) {
  for (std::size_t i = 0; i + 3 <= numbers.size(); i += 3)
    text << numbers[i] << ", " << numbers[i + 1] << ", " << numbers[i + 2] << ";\n";
}

}  // namespace benchmarks
