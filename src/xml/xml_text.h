#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "../text/wide_utf8.h"
#include "unicode_bytes.h"
#include "xml_outcome.h"

namespace ztcad {

/// How bytes are decoded.
enum class XmlBytes {
  AsDeclared,  ///< by their byte order mark or XML declaration; without one as UTF-8
  Utf8,        ///< as UTF-8, whatever the declaration says. The bytes must be valid UTF-8
};

/// The characters of an XML text, in the form that `XmlReader` takes. Valid UTF-8 is not copied.
///
/// Bytes are decoded as Qt 5.15 decodes them: UTF-8, UTF-16, UTF-32, windows-1251 and the other single-byte
/// encodings of code_pages.h; invalid bytes become U+FFFD, and an encoding that Qt does not know is read as
/// UTF-8. An encoding that Qt 5.15 knows and this library does not is refused.
class XmlText {
 public:
  /// @param bytes must stay valid as long as this object
  XmlText(std::string_view bytes, XmlBytes kind);
  XmlText(const XmlText&) = delete;
  XmlText& operator=(const XmlText&) = delete;

  std::string_view characters() const { return m_characters; }
  /// Set if the encoding is refused.
  const std::optional<ParseOutcome>& refusal() const { return m_refusal; }

  // How the source of the text was decoded.

  /// Whether invalid bytes of UTF-8 were replaced.
  bool isRepaired() const { return m_form == Form::RepairedUtf8; }
  /// The name of an encoding that is not known, so that the text was read as UTF-8; empty without one.
  std::string_view unknownEncoding() const { return m_unknownEncoding; }
  /// Length of a byte order mark at the start of the source, which the text lacks.
  std::size_t sourceStart() const { return m_sourceStart; }
  /// How many bytes of the source a character was decoded from.
  /// @param offset its start in `bytes`
  std::size_t sourceLength(const Utf8Character& character, std::string_view bytes, std::size_t offset) const;

 private:
  enum class Form { Utf8, RepairedUtf8, SingleByte, Wide16, Wide32 };

  void decode(std::string_view bytes);
  void decode(std::string_view bytes, UnicodeEncoding encoding);

  std::string m_decoded;
  std::string_view m_characters;
  Form m_form = Form::Utf8;
  std::size_t m_sourceStart = 0;
  std::string m_unknownEncoding;
  std::optional<ParseOutcome> m_refusal;
};

}  // namespace ztcad
