#include "unicode_bytes.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "../text/append_character.h"
#include "../text/narrow_text.h"

namespace ztcad {

namespace {

constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view replacement = "\xEF\xBF\xBD";
constexpr char32_t byteOrderMark = 0xfeff;

bool startsWith(std::string_view bytes, std::string_view start) {
  return bytes.substr(0, start.size()) == start;
}

bool isSurrogate(char32_t unit, char32_t first) { return unit >= first && unit < first + 0x400; }

/// Joins the halves of surrogate pairs.
class Utf16Joiner {
 public:
  explicit Utf16Joiner(std::string& out) : m_out(out) {}
  ~Utf16Joiner() { flush(); }

  void take(char32_t unit) {
    if (m_high == 0 && unit < 0x80) {
      m_out += static_cast<char>(unit);
      return;
    }
    if (m_high != 0 && isSurrogate(unit, 0xdc00)) {
      appendUtf8(0x10000 + ((m_high - 0xd800) << 10) + (unit - 0xdc00), m_out);
      m_high = 0;
      return;
    }
    flush();
    if (isSurrogate(unit, 0xd800)) {
      m_high = unit;
    } else {
      appendUtf8(unit, m_out);
    }
  }

  bool isComplete() const { return m_high == 0; }

  void flush() {
    if (m_high != 0) appendUtf8(m_high, m_out);
    m_high = 0;
  }

 private:
  std::string& m_out;
  char32_t m_high = 0;  // a high surrogate that waits for its partner
};

/// The number at the start of `bytes`, which has as many bytes as `Number`.
template <typename Number>
char32_t numberAt(const char* bytes, bool isBigEndian) {
  constexpr std::size_t last = sizeof(Number) - 1;
  char32_t number = 0;
  for (std::size_t i = 0; i <= last; ++i)
    number = number << 8 | static_cast<unsigned char>(bytes[isBigEndian ? i : last - i]);
  return number;
}

/// Appends the ASCII characters at the start of UTF-16, in blocks; returns their size in bytes.
std::size_t appendAsciiBlocks(std::string_view bytes, bool isBigEndian, std::string& out) {
  constexpr std::size_t blockSize = 64;
  std::array<char, blockSize> block = {};
  const std::size_t low = isBigEndian ? 1 : 0;
  std::size_t read = 0;
  for (; read + 2 * blockSize <= bytes.size(); read += 2 * blockSize) {
    const char* const units = bytes.data() + read;
    unsigned seen = 0;  // loops without branches, which compilers vectorise
    for (std::size_t i = 0; i < blockSize; ++i) {
      block[i] = units[2 * i + low];
      seen |= static_cast<unsigned char>(block[i]) & 0x80U;
      seen |= static_cast<unsigned char>(units[2 * i + 1 - low]);
    }
    if (seen != 0) break;
    out.append(block.data(), blockSize);
  }
  return read;
}

/// Decodes numbers of 16 or 32 bits.
template <typename Number>
std::string decodeWide(std::string_view bytes, bool isBigEndian) {
  std::string text;
  text.reserve(bytes.size() / sizeof(Number));
  Utf16Joiner joiner(text);
  constexpr std::size_t tryAsciiEvery = 128;  // bytes
  for (std::size_t at = 0; at + sizeof(Number) <= bytes.size(); at += sizeof(Number)) {
    if (sizeof(Number) == 2 && at % tryAsciiEvery == 0 && joiner.isComplete())
      at += appendAsciiBlocks(bytes.substr(at), isBigEndian, text);
    if (at + sizeof(Number) > bytes.size()) break;
    const char32_t code = numberAt<Number>(bytes.data() + at, isBigEndian);
    if (at == 0 && code == byteOrderMark) continue;
    if (code > 0xffff) joiner.take(((code >> 10) + 0xd7c0) & 0xffff);
    joiner.take(code > 0xffff ? code % 0x400 + 0xdc00 : code);
  }
  joiner.flush();
  return text;
}

/// Length of the longest start of a sequence that lies in `bytes`, if the sequence is valid so far; 0 for an
/// invalid start.
std::size_t validLength(std::string_view bytes) {
  const std::size_t needed = utf8SequenceLength(bytes.front());
  const std::size_t available = std::min(needed, bytes.size());
  const auto isContinuation = [](char byte) { return (static_cast<unsigned char>(byte) & 0xc0) == 0x80; };
  if (!std::all_of(bytes.begin() + 1, bytes.begin() + static_cast<std::ptrdiff_t>(available), isContinuation))
    return 0;
  return available;
}

/// The bytes from an offset on that become one character, or U+FFFD.
struct Utf8Source {
  std::size_t length;  // 0: incomplete bytes at the end of the text, which become nothing
  bool isValid;
};

/// Qt reads blocks of 1024 bytes: an invalid sequence that the end of a block cuts becomes one U+FFFD up to
/// the cut, any other invalid byte one of its own.
Utf8Source utf8Source(std::string_view bytes, std::size_t at) {
  constexpr std::size_t blockSize = 1024;
  const std::size_t length = utf8SequenceLength(bytes[at]);
  const std::string_view sequence = bytes.substr(at, length);
  if (length > 0 && sequence.size() == length && isUtf8(sequence)) return {length, true};
  if (length > sequence.size() && validLength(sequence) == sequence.size()) return {0, false};
  const std::size_t toBlockEnd = blockSize - at % blockSize;
  const bool isCut = length > toBlockEnd && bytes.size() - at > toBlockEnd &&
                     validLength(bytes.substr(at, toBlockEnd)) == toBlockEnd;
  return {isCut ? toBlockEnd : 1, false};
}

/// Decodes UTF-8 with invalid bytes.
std::string repairUtf8(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size());
  for (std::size_t at = markSize(bytes, UnicodeEncoding::Utf8); at < bytes.size();) {
    const Utf8Source source = utf8Source(bytes, at);
    if (source.length == 0) break;
    text += source.isValid ? bytes.substr(at, source.length) : replacement;
    at += source.length;
  }
  return text;
}

}  // namespace

UnicodeEncoding detectUnicode(std::string_view bytes) {
  const std::string_view four = bytes.size() >= 4 ? bytes.substr(0, 4) : std::string_view();
  if (four == std::string_view("\0\0\xFE\xFF", 4) || four == std::string_view("\xFF\xFE\0\0", 4))
    return UnicodeEncoding::Utf32;
  if (four == std::string_view("<\0\0\0", 4)) return UnicodeEncoding::Utf32Le;
  if (four == std::string_view("\0\0\0<", 4)) return UnicodeEncoding::Utf32Be;
  if (startsWith(bytes, "\xFE\xFF") || startsWith(bytes, "\xFF\xFE")) return UnicodeEncoding::Utf16;
  if (startsWith(bytes, std::string_view("<\0", 2))) return UnicodeEncoding::Utf16Le;
  if (startsWith(bytes, std::string_view("\0<", 2))) return UnicodeEncoding::Utf16Be;
  return UnicodeEncoding::Utf8;
}

std::string decodeUnicode(std::string_view bytes, UnicodeEncoding encoding) {
  switch (encoding) {
    case UnicodeEncoding::Utf16:
      return decodeWide<std::uint16_t>(bytes, startsWith(bytes, "\xFE\xFF"));
    case UnicodeEncoding::Utf16Be:
      return decodeWide<std::uint16_t>(bytes, true);
    case UnicodeEncoding::Utf16Le:
      return decodeWide<std::uint16_t>(bytes, false);
    case UnicodeEncoding::Utf32:
      return decodeWide<std::uint32_t>(bytes, startsWith(bytes, std::string_view("\0\0\xFE\xFF", 4)));
    case UnicodeEncoding::Utf32Be:
      return decodeWide<std::uint32_t>(bytes, true);
    case UnicodeEncoding::Utf32Le:
      return decodeWide<std::uint32_t>(bytes, false);
    case UnicodeEncoding::Utf8:
      break;
  }
  return repairUtf8(bytes);
}

int unitSize(UnicodeEncoding encoding) {
  switch (encoding) {
    case UnicodeEncoding::Utf8:
      return 1;
    case UnicodeEncoding::Utf16:
    case UnicodeEncoding::Utf16Be:
    case UnicodeEncoding::Utf16Le:
      return 2;
    default:
      return 4;
  }
}

std::size_t markSize(std::string_view bytes, UnicodeEncoding encoding) {
  if (encoding == UnicodeEncoding::Utf8) return startsWith(bytes, utf8Mark) ? utf8Mark.size() : 0;
  const auto unit = static_cast<std::size_t>(unitSize(encoding));
  // nothing but a mark is decoded to nothing
  return bytes.size() >= unit && decodeUnicode(bytes.substr(0, unit), encoding).empty() ? unit : 0;
}

std::size_t utf8SourceLength(std::string_view bytes, std::size_t offset) {
  return utf8Source(bytes, offset).length;
}

std::size_t utf32SourceLength(std::string_view bytes, std::size_t offset, char32_t decoded) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes[offset + i]); };
  const auto isHigh = [&byte](std::size_t i) { return (byte(i) & 0xfcU) == 0xd8U; };
  // a surrogate pair takes two numbers
  const bool isLittleEndian = byte(2) == 0 && byte(3) == 0 && isHigh(1);
  const bool isBigEndian = byte(0) == 0 && byte(1) == 0 && isHigh(2);
  return decoded > 0xffff && (isLittleEndian || isBigEndian) ? 8 : 4;
}

}  // namespace ztcad
