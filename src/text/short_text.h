#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <new>
#include <QString>
#include <QtAlgorithms>
#include <QtEndian>
#include <QtGlobal>
#include <string_view>
#include <utility>

/// @file
/// Short texts.

/// A text that needs no memory of its own if it is short: up to fifteen ASCII characters (with Qt 6: 31) lie
/// in the object, every other text is held as a QString. Most names, words and comments of a document are
/// short.
class ztCAD_ShortText {
 public:
  /// The greatest number of characters that lie in the object.
  static constexpr std::size_t longestShort = (sizeof(QString) > 16 ? 32 : 16) - 1;

  /// An empty text.
  ztCAD_ShortText() noexcept { setShort({}); }
  /// Needs no memory: a QString shares its characters.
  explicit ztCAD_ShortText(const QString& text) : ztCAD_ShortText() { set(text); }
  /// Need no memory. A text that was moved from is empty.
  /// @{
  ztCAD_ShortText(const ztCAD_ShortText& other) noexcept { copy(other); }
  ztCAD_ShortText(ztCAD_ShortText&& other) noexcept { take(other); }
  ztCAD_ShortText& operator=(const ztCAD_ShortText& other) noexcept {
    if (this == &other) return *this;
    release();
    copy(other);
    return *this;
  }
  ztCAD_ShortText& operator=(ztCAD_ShortText&& other) noexcept {
    if (this == &other) return *this;
    release();
    take(other);
    return *this;
  }
  /// @}
  ~ztCAD_ShortText() { release(); }

  /// @param ascii characters below 128
  static ztCAD_ShortText fromAscii(std::string_view ascii) {
    ztCAD_ShortText text;
    if (ascii.size() <= longestShort)
      text.setShort(ascii);
    else
      text.setLong(QString::fromLatin1(ascii.data(), static_cast<int>(ascii.size())));
    return text;
  }

  /// Needs no memory: a QString shares its characters.
  void set(const QString& text) noexcept {
    char ascii[longestShort];
    const bool isShort = toAscii(text, ascii);
    QString shared = isShort ? QString() : text;
    release();
    if (isShort)
      setShort({ascii, static_cast<std::size_t>(text.size())});
    else
      setLong(std::move(shared));
  }

  /// Whether the text has no characters.
  bool isEmpty() const { return m_bytes[longestShort] == 0; }
  /// Whether the text lies in the object.
  bool isShort() const { return m_bytes[longestShort] != longText; }
  /// The text. Needs no memory for one that is not short.
  QString toString() const {
    return isShort() ? QString::fromLatin1(bytes().data(), static_cast<int>(bytes().size())) : longOne();
  }
  /// The characters of a short text, all of them ASCII.
  std::string_view bytes() const { return {m_bytes, static_cast<unsigned char>(m_bytes[longestShort])}; }
  /// A text that is not short.
  const QString& longOne() const { return *std::launder(reinterpret_cast<const QString*>(m_bytes)); }

  /// Whether the characters are the same.
  /// @{
  friend bool operator==(const ztCAD_ShortText& a, const ztCAD_ShortText& b) {
    if (a.isShort() != b.isShort()) return false;
    return a.isShort() ? std::memcmp(a.m_bytes, b.m_bytes, sizeof a.m_bytes) == 0
                       : a.longOne() == b.longOne();
  }
  friend bool operator!=(const ztCAD_ShortText& a, const ztCAD_ShortText& b) { return !(a == b); }
  /// @}
  /// Whether this text comes after `other` in an order of all texts. Numbers in it are compared by their
  /// number of digits first: "A 10" comes after "A 9", and both before "B 1". Short texts come first.
  bool isAfter(const ztCAD_ShortText& other) const {
    if (!isShort() || !other.isShort()) return isLongAfter(other);
    const std::size_t at = commonLength(m_bytes, other.m_bytes, sizeof m_bytes);
    if (at >= longestShort) return m_bytes[longestShort] > other.m_bytes[longestShort];
    return isAfter([this](std::size_t i) { return m_bytes[i]; },
                   [&other](std::size_t i) { return other.m_bytes[i]; }, at);
  }

  /// A short text as two numbers, for hashes.
  std::pair<quint64, quint64> words() const {
    static_assert(sizeof(m_bytes) % sizeof(quint64) == 0);
    quint64 all[sizeof(m_bytes) / sizeof(quint64)];
    std::memcpy(all, m_bytes, sizeof m_bytes);
    quint64 first = all[0];
    for (std::size_t i = 1; i + 1 < std::size(all); ++i)
      first = (first ^ (first >> 29)) * 0xbf58476d1ce4e5b9U + all[i];
    return {first, all[std::size(all) - 1]};
  }

 private:
  static constexpr char longText = -1;

  /// False for a text that is not short; `ascii` is then unspecified.
  static bool toAscii(const QString& text, char* ascii) {
    const auto size = static_cast<std::size_t>(text.size());
    if (size > longestShort) return false;
    const QChar* const characters = text.constData();
    unsigned all = 0;
    for (std::size_t i = 0; i < size; ++i) {
      const ushort unit = characters[i].unicode();
      all |= unit;
      ascii[i] = static_cast<char>(unit);
    }
    return all < 128;
  }

  bool isLongAfter(const ztCAD_ShortText& other) const {
    if (isShort() || other.isShort()) return other.isShort();
    const QString& mine = longOne();
    const QString& others = other.longOne();
    const auto shorter = static_cast<std::size_t>(std::min(mine.size(), others.size()));
    const std::size_t at = commonLength(mine.constData(), others.constData(), shorter);
    if (at == shorter) return mine.size() > others.size();
    const auto unit = [](const QString& text) {
      return [&text](std::size_t i) {
        return i < static_cast<std::size_t>(text.size()) ? text.constData()[i].unicode() : ushort{0};
      };
    };
    return isAfter(unit(mine), unit(others), at);
  }

  /// How many of the characters of two texts are equal, from the first one on.
  template <typename Character>
  static std::size_t commonLength(const Character* a, const Character* b, std::size_t count) {
    constexpr std::size_t atOnce = sizeof(quint64) / sizeof(Character);
    std::size_t at = 0;
    for (; at + atOnce <= count; at += atOnce) {
      quint64 first = 0;
      quint64 second = 0;
      std::memcpy(&first, a + at, sizeof first);
      std::memcpy(&second, b + at, sizeof second);
      const quint64 difference = qFromLittleEndian(first ^ second);
      if (difference != 0) return at + qCountTrailingZeroBits(difference) / (64 / atOnce);
    }
    while (at < count && a[at] == b[at])
      ++at;
    return at;
  }

  /// @param a  returns the characters of this text, and none of a number for those after its end
  /// @param b  those of the other
  /// @param at where the texts differ first
  template <typename Characters, typename OtherCharacters>
  static bool isAfter(Characters a, OtherCharacters b, std::size_t at) {
    const auto isDigit = [](auto character) { return character >= '0' && character <= '9'; };
    if (isDigit(a(at)) != isDigit(b(at)))  // the longer of two numbers, or a number and something else
      return at > 0 && isDigit(a(at - 1)) ? isDigit(a(at)) : a(at) > b(at);
    std::size_t end = at;
    while (isDigit(a(end)) && isDigit(b(end)))
      ++end;
    if (isDigit(a(end)) != isDigit(b(end))) return isDigit(a(end));
    return a(at) > b(at);
  }

  QString& held() { return *std::launder(reinterpret_cast<QString*>(m_bytes)); }
  /// All bytes after the characters are 0, so that texts can be compared as a whole.
  void setShort(std::string_view ascii) {
    std::memset(m_bytes, 0, sizeof m_bytes);
    if (!ascii.empty()) std::memcpy(m_bytes, ascii.data(), ascii.size());
    m_bytes[longestShort] = static_cast<char>(ascii.size());
  }
  void setLong(QString&& text) {
    new (m_bytes) QString(std::move(text));
    m_bytes[longestShort] = longText;
  }
  void copy(const ztCAD_ShortText& other) {
    if (other.isShort())
      std::memcpy(m_bytes, other.m_bytes, sizeof m_bytes);
    else
      setLong(QString(other.longOne()));
  }
  void take(ztCAD_ShortText& other) {
    if (other.isShort()) return copy(other);
    setLong(std::move(other.held()));
    other.release();
    other.setShort({});
  }
  void release() {
    if (!isShort()) held().~QString();
  }

  /// The characters, or a QString; in the last byte the number of the characters, or `longText`.
  alignas(QString) char m_bytes[longestShort + 1] = {};
};
