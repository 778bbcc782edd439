#include "xml_text.h"

#include "../text/append_character.h"
#include "../text/code_pages.h"
#include "../text/narrow_text.h"
#include "../text/wide_utf8.h"
#include "../text/windows1251.h"
#include "unicode_bytes.h"
#include "xml_cursor.h"

namespace ztcad {

namespace {

bool startsWith(std::string_view text, std::string_view start) {
  return text.substr(0, start.size()) == start;
}

/// The value of the encoding in the XML declaration at the start of `text`, found as Qt finds it; empty
/// without one.
std::string_view declaredEncoding(std::string_view text) {
  if (!startsWith(text, std::string_view("<?xml").substr(0, text.size()))) return {};
  const std::string_view declaration = text.substr(0, text.find('>'));
  if (declaration.size() == text.size()) return {};
  const std::size_t word = declaration.find("encoding");
  if (word == std::string_view::npos) return {};
  const std::size_t opening = declaration.find_first_of("'\"", word);
  if (opening == std::string_view::npos) return {};
  const std::string_view value = declaration.substr(opening + 1);
  return value.substr(0, value.find_first_of("'\""));
}

struct UnicodeNames {
  std::string_view names;  // in the form of encodingName
  UnicodeEncoding encoding;
};
constexpr UnicodeNames unicodeNames[] = {
    {" utf8 cp1208 ibm1208 ibm1209 ibm13496 ibm13497 ibm17592 ibm17593 ibm5304 ibm5305 unicode11utf8 "
     "unicode20utf8 windows65001 xutf8j ",
     UnicodeEncoding::Utf8},
    {" utf16 csunicode ibm1204 ibm1205 iso10646ucs2 ucs2 unicode ", UnicodeEncoding::Utf16},
    {" utf16be cp1200 cp1201 ibm1200 ibm1201 ibm13488 ibm13489 ibm17584 ibm17585 ibm21680 ibm21681 ibm25776 "
     "ibm25777 ibm29872 ibm29873 ibm61955 ibm61956 unicodebigunmarked utf16bigendian windows1201 xutf16be ",
     UnicodeEncoding::Utf16Be},
    {" utf16le ibm1202 ibm1203 ibm13490 ibm13491 ibm17586 ibm17587 ibm21682 ibm21683 ibm25778 ibm25779 "
     "ibm29874 ibm29875 unicodelittleunmarked utf16littleendian windows1200 xutf16le ",
     UnicodeEncoding::Utf16Le},
    {" utf32 csucs4 ibm1236 ibm1237 iso10646ucs4 ucs4 ", UnicodeEncoding::Utf32},
    {" utf32be ibm1232 ibm1233 ibm9424 utf32bigendian ", UnicodeEncoding::Utf32Be},
    {" utf32le ibm1234 ibm1235 utf32littleendian ", UnicodeEncoding::Utf32Le},
};

std::optional<UnicodeEncoding> unicodeEncoding(const std::string& name) {
  for (const UnicodeNames& candidate : unicodeNames)
    if (candidate.names.find(' ' + name + ' ') != std::string_view::npos) return candidate.encoding;
  return std::nullopt;
}

/// Decodes a single-byte encoding that agrees with ASCII.
template <typename ToUnicode>
std::string decodeBytes(std::string_view bytes, ToUnicode&& toUnicode) {
  std::string text;
  text.reserve(bytes.size() + bytes.size() / 8);
  while (true) {
    const std::size_t ascii = asciiLength(bytes);
    text += bytes.substr(0, ascii);
    bytes.remove_prefix(ascii);
    if (bytes.empty()) return text;
    appendUtf8(toUnicode(static_cast<unsigned char>(bytes.front())), text);
    bytes.remove_prefix(1);
  }
}

}  // namespace

XmlText::XmlText(std::string_view bytes, XmlBytes kind) {
  constexpr std::string_view mark = "\xEF\xBB\xBF";
  m_sourceStart = startsWith(bytes, mark) ? mark.size() : 0;
  m_characters = bytes.substr(m_sourceStart);
  if (kind == XmlBytes::AsDeclared) decode(bytes);
}

void XmlText::decode(std::string_view bytes) {
  constexpr std::size_t blockSize = 1024;  // Qt looks for the declaration in the first block
  const UnicodeEncoding detected = detectUnicode(bytes);
  const std::string start = decodeUnicode(bytes.substr(0, blockSize), detected);
  const std::string_view declared = declaredEncoding(start);
  const std::string name = encodingName(declared.substr(0, declared.find('\0')));  // Qt reads no further
  if (isForeignEncoding(name)) {
    const auto offset = static_cast<std::size_t>(declared.data() - start.data());
    m_refusal = failedParse(start, {"encoding not supported", offset, true});
    m_refusal->message += QLatin1String(": ") + fromWideUtf8(declared);
    decode(bytes.substr(0, blockSize), detected);
    return;
  }
  const CodePage* const page = findCodePage(name);
  if ((page || isWindows1251(name)) && isAscii(bytes)) return;  // not copied
  if (page) {
    m_decoded = decodeBytes(bytes, [page](unsigned char byte) { return toUnicode(*page, byte); });
  } else if (isWindows1251(name)) {
    m_decoded = decodeBytes(bytes, [](unsigned char byte) { return windows1251ToUnicode(byte).unicode(); });
  } else {
    const auto encoding = unicodeEncoding(name);
    if (!encoding && !name.empty()) m_unknownEncoding = declared;
    decode(bytes, encoding.value_or(detected));
    return;
  }
  m_form = Form::SingleByte;
  m_sourceStart = 0;
  m_characters = m_decoded;
}

void XmlText::decode(std::string_view bytes, UnicodeEncoding encoding) {
  if (encoding == UnicodeEncoding::Utf8 && isUtf8(bytes)) return;  // not copied
  m_decoded = decodeUnicode(bytes, encoding);
  m_characters = m_decoded;
  const int unit = unitSize(encoding);
  m_form = unit == 1 ? Form::RepairedUtf8 : unit == 2 ? Form::Wide16 : Form::Wide32;
  m_sourceStart = markSize(bytes, encoding);
}

std::size_t XmlText::sourceLength(const Utf8Character& character, std::string_view bytes,
                                  std::size_t offset) const {
  switch (m_form) {
    case Form::SingleByte:
      return 1;
    case Form::Wide16:
      return character.code > 0xffff ? 4 : 2;
    case Form::Wide32:
      return utf32SourceLength(bytes, offset, character.code);
    case Form::RepairedUtf8:
      return utf8SourceLength(bytes, offset);
    case Form::Utf8:
      break;
  }
  return character.length;
}

}  // namespace ztcad
