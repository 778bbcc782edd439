#pragma once

#include <QString>
#include <string_view>
#include <utility>

namespace ztcad {

/// Makes characters of the bytes of a carrier.
class TextDecoder {
 public:
  virtual ~TextDecoder() = default;
  /// The characters of a part of a text that its carrier handed out as bytes.
  virtual QString decoded(std::string_view part) const = 0;
};

/// The text of an element or of an attribute as its carrier holds it: characters, or bytes that nobody has looked at
/// yet. Lists of numbers are read from the bytes without a copy. Holds good only while the carrier visits the element.
///
/// Reading numbers leaves C as the default locale: from characters each read sees to it, from bytes the carrier has done
/// it when it handed out the first of them.
class ElementText {
 public:
  explicit ElementText(QString text) : m_text(std::move(text)) {}
  /// @param decoder     not owned
  /// @param endOfMemory how far behind the bytes may be looked; null: not at all
  ElementText(std::string_view bytes, const TextDecoder& decoder, const char* endOfMemory = nullptr)
      : m_bytes(bytes), m_decoder(&decoder), m_endOfMemory(endOfMemory) {}

  QString toString() const { return m_decoder ? m_decoder->decoded(m_bytes) : m_text; }

  bool isBytes() const { return m_decoder != nullptr; }
  /// Codes below 128 are ASCII; what else stands there, only `decoded` tells.
  std::string_view bytes() const { return m_bytes; }
  /// Not before the end of the bytes. What stands behind them is not theirs: first a mark, which is part of no number.
  const char* endOfMemory() const { return m_endOfMemory ? m_endOfMemory : m_bytes.data() + m_bytes.size(); }
  /// The characters of a part of `bytes()` that was found not to be plain numbers.
  QString decoded(std::string_view part) const { return m_decoder->decoded(part); }

 private:
  QString m_text;
  std::string_view m_bytes;
  const TextDecoder* m_decoder = nullptr;
  const char* m_endOfMemory = nullptr;
};

}  // namespace ztcad
