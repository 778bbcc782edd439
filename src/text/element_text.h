#pragma once

#include <QString>
#include <string_view>
#include <utility>

namespace ztcad {

/// Decodes bytes that an XML backend returns in place of characters.
class TextDecoder {
 public:
  virtual ~TextDecoder() = default;
  /// Decodes a part of a text that the backend returned as bytes.
  virtual QString decoded(std::string_view part) const = 0;
};

/// The text of an element or attribute in the form of its backend: characters, or bytes that are not decoded
/// yet. Lists of numbers are parsed from the bytes without a copy. Valid only while the backend visits the
/// element.
///
/// Reading numbers sets the default locale to C: for characters each parser does so, for bytes the backend
/// does so before it returns the first of them.
class ElementText {
 public:
  explicit ElementText(QString text) : m_text(std::move(text)) {}
  /// @param bytes       text without references, valid as long as this object
  /// @param decoder     not owned
  /// @param endOfMemory end of readable memory, not before the end of `bytes`; null: memory ends with
  ///                    `bytes`. The byte after `bytes`, if readable, must not be part of a number
  ElementText(std::string_view bytes, const TextDecoder& decoder, const char* endOfMemory = nullptr)
      : m_bytes(bytes), m_decoder(&decoder), m_endOfMemory(endOfMemory) {}

  QString toString() const { return m_decoder ? m_decoder->decoded(m_bytes) : m_text; }

  bool isBytes() const { return m_decoder != nullptr; }
  /// Bytes below 128 are ASCII; all others must be passed to `decoded`.
  std::string_view bytes() const { return m_bytes; }
  /// End of readable memory; the first byte past bytes() is markup, never part of a number.
  const char* endOfMemory() const { return m_endOfMemory ? m_endOfMemory : m_bytes.data() + m_bytes.size(); }
  /// Decodes a part of `bytes()` that is not a plain number. Requires `isBytes()`.
  QString decoded(std::string_view part) const { return m_decoder->decoded(part); }

 private:
  QString m_text;
  std::string_view m_bytes;
  const TextDecoder* m_decoder = nullptr;
  const char* m_endOfMemory = nullptr;
};

}  // namespace ztcad
