#include "narrow_text.h"

#include <algorithm>
#include <QVector>

#include "qt_size.h"
#include "wide_utf8.h"
#include "windows1251.h"

namespace ztcad {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

bool isBetween(char byte, unsigned char low, unsigned char high) {
  const auto code = static_cast<unsigned char>(byte);
  return low <= code && code <= high;
}

// After four of the first bytes the range of the second one excludes overlong forms, surrogates and values
// beyond U+10FFFF.
bool isSecondByte(char first, char byte) {
  switch (static_cast<unsigned char>(first)) {
    case 0xE0:
      return isBetween(byte, 0xA0, 0xBF);
    case 0xED:
      return isBetween(byte, 0x80, 0x9F);
    case 0xF0:
      return isBetween(byte, 0x90, 0xBF);
    case 0xF4:
      return isBetween(byte, 0x80, 0x8F);
    default:
      return isBetween(byte, 0x80, 0xBF);
  }
}

bool isSequence(std::string_view bytes) {
  if (bytes.size() > 1 && !isSecondByte(bytes[0], bytes[1])) return false;
  for (std::size_t i = 2; i < bytes.size(); ++i)
    if (!isBetween(bytes[i], 0x80, 0xBF)) return false;
  return true;
}

// QString::fromUtf8 drops a leading byte order mark.
QString fromUtf8(std::string_view bytes) {
  QString text;
  for (; bytes.substr(0, byteOrderMark.size()) == byteOrderMark; bytes.remove_prefix(byteOrderMark.size()))
    text += QChar(QChar::ByteOrderMark);
  return text + QString::fromUtf8(bytes.data(), qtSize(bytes));
}

std::string toNarrowInPieces(const QString& text, int pieceSize) {
  std::string narrow;
  int size = 0;
  for (int start = 0; start < text.size(); start += size) {
    size = std::min(pieceSize, static_cast<int>(text.size()) - start);
    if (start + size < text.size() && text.at(start + size - 1).isHighSurrogate()) --size;
    narrow += toNarrow(text.mid(start, size));
  }
  return narrow;
}

std::string toWindows1251(const QString& text) {
  std::string bytes;
  bytes.reserve(static_cast<std::size_t>(text.size()));
  for (const uint character : text.toUcs4())
    bytes += static_cast<char>(windows1251FromUnicode(character).value_or('?'));
  return bytes;
}

}  // namespace

std::size_t utf8SequenceLength(char first) {
  if (isBetween(first, 0x00, 0x7F)) return 1;
  if (isBetween(first, 0xC2, 0xDF)) return 2;
  if (isBetween(first, 0xE0, 0xEF)) return 3;
  if (isBetween(first, 0xF0, 0xF4)) return 4;
  return 0;
}

bool isUtf8(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::size_t length = utf8SequenceLength(bytes.front());
    if (length == 0 || length > bytes.size() || !isSequence(bytes.substr(0, length))) return false;
    bytes.remove_prefix(length);
  }
  return true;
}

NarrowEncoding narrowEncodingOf(std::string_view bytes) {
  return isAscii(bytes) || isUtf8(bytes) ? NarrowEncoding::Utf8 : NarrowEncoding::Windows1251;
}

NarrowCharacter firstCharacter(std::string_view bytes, NarrowEncoding encoding) {
  const auto first = static_cast<unsigned char>(bytes.front());
  if (first < 0x80) return {first, 1};
  if (encoding == NarrowEncoding::Windows1251) return {windows1251ToUnicode(first).unicode(), 1};
  const Utf8Character character = utf8Character(bytes.data());
  return {character.code, character.length};
}

QString fromNarrow(std::string_view bytes) {
  if (isAscii(bytes)) return QString::fromLatin1(bytes.data(), qtSize(bytes));
  return isUtf8(bytes) ? fromUtf8(bytes) : fromWindows1251(bytes);
}

std::string toNarrow(const QString& text) {
  constexpr int pieceSize = 65536;  // units: Qt takes three bytes for each at first, and counts them in int
  if (text.size() > pieceSize) return toNarrowInPieces(text, pieceSize);
  const QByteArray utf8 = text.toUtf8();
  return {utf8.constData(), static_cast<std::size_t>(utf8.size())};
}

std::string toNarrow(const QString& text, NarrowEncoding encoding) {
  return encoding == NarrowEncoding::Utf8 ? toNarrow(text) : toWindows1251(text);
}

QString fileNameFromNarrow(std::string_view bytes) {
  return isUtf8(bytes) ? fromNarrow(bytes) : QString::fromLocal8Bit(bytes.data(), qtSize(bytes));
}

}  // namespace ztcad
