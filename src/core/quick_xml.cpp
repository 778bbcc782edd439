#include "quick_xml.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <limits>
#include <QtAlgorithms>
#include <system_error>
#include <vector>

#include "narrow_text.h"
#include "number_text.h"
#include "sse2.h"
#include "windows1251.h"
#include "xml_parse.h"

namespace ztcad {

namespace {

/// Thrown where the text is not, or may not be, of the plain kind; ends in `readPlainXml`.
struct NotPlain {};

void require(bool isPlain) {
  if (!isPlain) throw NotPlain();
}

// -------------------------------------------------------------------------------- characters

enum CharacterClass : unsigned char { Ordinary, Blank, Control, Markup, NonAscii };

constexpr std::array<CharacterClass, 256> classify() {
  std::array<CharacterClass, 256> classes{};
  for (std::size_t byte = 0; byte < 256; ++byte)
    classes[byte] = byte < 0x20 ? Control : byte < 0x80 ? Ordinary : NonAscii;
  for (const unsigned char blank : {' ', '\t', '\n', '\r'})
    classes[blank] = Blank;
  for (const unsigned char markup : {'<', '&', ']'})
    classes[markup] = Markup;
  return classes;
}
constexpr auto classes = classify();

CharacterClass classOf(char byte) { return classes[static_cast<unsigned char>(byte)]; }
bool isBlank(char byte) { return classOf(byte) == Blank; }

/// Those of an attribute's value that need no second look, whichever its quote is. A mark "]" is none to look at there.
constexpr std::array<bool, 256> findValueCharacters() {
  std::array<bool, 256> found{};
  for (std::size_t byte = 0; byte < 128; ++byte)
    found[byte] = classes[byte] == Ordinary && byte != '"' && byte != '\'';
  found[' '] = true;
  found[']'] = true;
  return found;
}
constexpr auto valueCharacters = findValueCharacters();

/// Up to the first byte of an attribute's value that needs a second look: a quote of either kind, "<", "&", a control
/// character or one beyond ASCII. Sixteen at once where the processor can.
const char* skipValueCharacters(const char* at, const char* end) {
#if defined(ZTCAD_SSE2)
  constexpr std::ptrdiff_t width = sizeof(__m128i);
  for (; end - at >= width; at += width) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
    const auto are = [&bytes](char c) { return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c)); };
    const __m128i quotes = _mm_or_si128(are('"'), are('\''));
    const __m128i markup = _mm_or_si128(are('<'), are('&'));
    const __m128i others =
        _mm_cmplt_epi8(bytes, _mm_set1_epi8(' '));  // as signed numbers: 80 hex and above are below 0
    const int found = _mm_movemask_epi8(_mm_or_si128(_mm_or_si128(quotes, markup), others));
    if (found != 0) return at + qCountTrailingZeroBits(static_cast<quint32>(found));
  }
#endif
  while (at != end && valueCharacters[static_cast<unsigned char>(*at)])
    ++at;
  return at;
}

constexpr bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }

constexpr std::array<bool, 256> findNameCharacters() {
  std::array<bool, 256> found{};
  for (std::size_t byte = 0; byte < 128; ++byte) {
    const char c = static_cast<char>(byte);
    found[byte] = isLetter(c) || (c >= '0' && c <= '9') || c == '-' || c == '.';
  }
  return found;
}
constexpr auto nameCharacters = findNameCharacters();

bool isNameCharacter(char c) { return nameCharacters[static_cast<unsigned char>(c)]; }

quint64 unicodeOf(char ascii) { return static_cast<unsigned char>(ascii); }
quint64 unicodeOf(QChar character) { return character.unicode(); }

/// memcmp, without a call for the lengths that stand between the values of attributes.
bool isSame(const char* a, const char* b, std::size_t size) {
  constexpr std::size_t half = sizeof(quint64);
  if (size < half || size > 2 * half) return size == 0 || std::memcmp(a, b, size) == 0;
  const auto word = [](const char* at) {
    quint64 bytes = 0;
    std::memcpy(&bytes, at, half);
    return bytes;
  };
  return word(a) == word(b) && word(a + size - half) == word(b + size - half);
}

bool equals(std::string_view ascii, const QString& text) {
  if (ascii.size() != static_cast<std::size_t>(text.size())) return false;
  const QChar* units = text.constData();
  for (const char c : ascii)
    if (static_cast<ushort>(c) != (units++)->unicode()) return false;
  return true;
}

bool equalsIgnoringCase(std::string_view text, std::string_view lowerCase) {
  return text.size() == lowerCase.size() &&
         std::equal(text.begin(), text.end(), lowerCase.begin(),
                    [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b; });
}

// -------------------------------------------------------------------------------- encodings

class PlainDecoder final : public TextDecoder {
 public:
  bool isWindows1251 = false;

  /// Texts and their parts: no references, no other mark-up.
  QString decoded(std::string_view part) const override {
    checkText(part);
    return characters(part);
  }

  /// What stands between mark-up and is not looked at any further.
  void checkText(std::string_view text) const {
    bool isAscii = true;
    for (const char byte : text) {
      const CharacterClass kind = classOf(byte);
      require(kind != Control && kind != Markup);
      isAscii = isAscii && kind != NonAscii;
    }
    if (!isAscii) checkNonAscii(text);
  }

  void checkComment(std::string_view text) const {
    for (const char byte : text)
      require(classOf(byte) != Control);
    checkNonAscii(text);
  }

  QString characters(std::string_view bytes) const {
    if (!isWindows1251) return QString::fromUtf8(bytes.data(), static_cast<int>(bytes.size()));
    QString text(static_cast<int>(bytes.size()), Qt::Uninitialized);
    QChar* to = text.data();
    for (const char byte : bytes)
      *to++ = windows1251ToUnicode(static_cast<unsigned char>(byte));
    return text;
  }

  /// The lead byte EF hex is that of the byte order mark and of the characters at which parsers stop.
  void checkNonAscii(std::string_view bytes) const {
    if (!isWindows1251) require(isUtf8(bytes) && bytes.find('\xEF') == std::string_view::npos);
  }
};

/// The character of a reference, `name` being what stands between "&" and ";".
char32_t referredCharacter(std::string_view name) {
  struct Entity {
    std::string_view name;
    char character;
  };
  constexpr Entity entities[] = {{"lt", '<'}, {"gt", '>'}, {"amp", '&'}, {"quot", '"'}, {"apos", '\''}};
  for (const Entity& entity : entities)
    if (name == entity.name) return static_cast<unsigned char>(entity.character);
  require(name.size() > 1 && name.front() == '#');
  const bool isHexadecimal = name[1] == 'x';
  name.remove_prefix(isHexadecimal ? 2 : 1);
  std::uint32_t code = 0;
  const auto [end, error] =
      std::from_chars(name.data(), name.data() + name.size(), code, isHexadecimal ? 16 : 10);
  require(error == std::errc() && end == name.data() + name.size());
  const bool isCharacter = code >= 0x20 || code == '\t' || code == '\n' || code == '\r';
  require(isCharacter && !QChar::isSurrogate(code) && code != 0xFFFE && code != 0xFFFF && code <= 0x10FFFF);
  return code;
}

void append(char32_t character, QString& text) {
  if (QChar::requiresSurrogates(character)) {
    text += QChar(QChar::highSurrogate(character));
    text += QChar(QChar::lowSurrogate(character));
  } else {
    text += QChar(static_cast<ushort>(character));
  }
}

/// Texts that stand again and again in a document, as QStrings that share their characters.
class SharedTexts {
 public:
  const QString& get(std::string_view ascii) {
    Entry& entry = m_entries[hash(ascii)];
    if (entry.bytes.size() != ascii.size() || !isSame(entry.bytes.data(), ascii.data(), ascii.size())) {
      entry.text = QString::fromLatin1(ascii.data(), static_cast<int>(ascii.size()));
      entry.bytes = ascii;
    }
    return entry.text;
  }

  /// Short words, of which there are few; what ends in a digit is more likely one of many.
  static bool mayComeAgain(std::string_view ascii) {
    constexpr std::size_t longest = 16;
    return ascii.empty() || (ascii.size() <= longest && isLetter(ascii.back()));
  }

 private:
  struct Entry {
    std::string_view bytes;
    QString text;
  };
  static constexpr std::size_t entryCount = 256;

  static std::size_t hash(std::string_view bytes) {
    if (bytes.empty()) return 0;
    const auto first = static_cast<unsigned char>(bytes.front());
    const auto last = static_cast<unsigned char>(bytes.back());
    return (37U * first + 7U * last + bytes.size()) % entryCount;
  }

  std::array<Entry, entryCount> m_entries;
};

// -------------------------------------------------------------------------------- the reader

/// Tells most names apart at once: length, first and last character.
template <typename Character>
quint64 keyOf(const Character* name, std::size_t length) {
  if (length == 0) return 0;
  return quint64{length} << 32 | unicodeOf(name[0]) << 16 | unicodeOf(name[length - 1]);
}

struct Attribute {
  std::string_view name;
  std::string_view value;
  quint64 key = 0;
  bool hasReferences = false;
  bool isAscii = true;
};

/// Goes through the bytes once, from the front.
///
/// The last byte is a ">", which no name, no blanks and no mark but itself go beyond: only behind a ">" and in attribute
/// values the end has to be looked for.
class Reader {
 public:
  Reader(std::string_view bytes, XmlBytes kind) : m_at(bytes.data()), m_end(withoutBlanksAtEnd(bytes)) {
    require(m_at != m_end && m_end[-1] == '>');
    readDeclaration(kind);
  }

  void readDocument(const std::function<void(const ElementView& root)>& visit);

  // What an element is made of. Each leaves the position behind what it has read.

  /// Up to the next start tag or the end tag of the open element; true, and the position behind "<", for a start tag.
  bool nextChild(std::string_view tag) {
    while (true) {
      require(m_at != m_end);
      skipBlanks();
      if (*m_at != '<') m_decoder.checkText(untilMarkup());
      ++m_at;
      if (*m_at == '/') {
        readEndTag(tag);
        return false;
      }
      if (*m_at != '!') return true;
      readComment();
    }
  }

  struct StartTag {
    std::string_view name;
    std::size_t firstAttribute;
    std::size_t attributeEnd;
    bool isEmpty;
  };

  StartTag readStartTag() {
    const char* const first = m_at;
    m_nextQuestion = 0;
    m_isLikeLast = m_last.firstAttribute == m_attributeCount && readLikeLast();
    if (m_isLikeLast) {
      m_last.name = {first, m_last.name.size()};
    } else {
      m_questions.clear();
      m_last = readAnyStartTag();
    }
    m_attributeCount = m_last.attributeEnd;
    m_lastTag = since(first);
    return m_last;
  }

  std::string_view readText(std::string_view tag) {
    std::string_view text = untilMarkup();
    ++m_at;
    require(*m_at == '/');
    readEndTag(tag);
    // as for Qt: nothing but blanks is no text; which characters beyond ASCII are blank is Qt's to say
    const auto first = std::find_if_not(text.begin(), text.end(), isBlank);
    if (first == text.end()) return text.substr(text.size());
    require(classOf(*first) != NonAscii);
    return text;
  }

  /// Elements that are alike are mostly asked alike.
  const Attribute* findAttribute(const StartTag& tag, const QString& name) {
    const bool isLast = tag.name.data() == m_last.name.data();
    if (isLast && m_nextQuestion < m_questions.size()) {
      const Question& question = m_questions[m_nextQuestion];
      if (question.name.constData() == name.constData()) {
        ++m_nextQuestion;
        return question.answer;
      }
    }
    const Attribute* const found = searchAttribute(tag, name);
    constexpr std::size_t most = 16;
    if (isLast && m_isLikeLast && m_nextQuestion == m_questions.size() && m_nextQuestion < most) {
      m_questions.push_back({name, found});
      ++m_nextQuestion;
    }
    return found;
  }
  void forgetAttributes(const StartTag& tag) { m_attributeCount = tag.firstAttribute; }

  QString valueOf(const Attribute& attribute) {
    const std::string_view value = attribute.value;
    if (attribute.hasReferences) return withoutReferences(value);
    if (!attribute.isAscii) return m_decoder.characters(value);
    if (SharedTexts::mayComeAgain(value)) return m_shared.get(value);
    return QString::fromLatin1(value.data(), static_cast<int>(value.size()));
  }

  QString tagText(std::string_view tag) { return m_shared.get(tag); }

  /// Bytes for a reader of numbers.
  ElementText numbers(std::string_view bytes) {
    if (!m_hasNumbers) useCLocale();
    m_hasNumbers = true;
    return ElementText(bytes, m_decoder, m_end);
  }

  void enter() { require(++m_depth <= maximalDepth); }
  void leave() { --m_depth; }

 private:
  bool startsWith(std::string_view text) const {
    return static_cast<std::size_t>(m_end - m_at) >= text.size() && isSame(m_at, text.data(), text.size());
  }

  static const char* withoutBlanksAtEnd(std::string_view bytes) {
    while (!bytes.empty() && isBlank(bytes.back()))
      bytes.remove_suffix(1);
    return bytes.data() + bytes.size();
  }

  void skip(char c) {
    require(*m_at == c);
    ++m_at;
  }

  bool skipBlanks() {
    const char* at = m_at;
    while (isBlank(*at))
      ++at;
    const bool skipped = at != m_at;
    m_at = at;
    return skipped;
  }

  std::string_view since(const char* first) const { return {first, static_cast<std::size_t>(m_at - first)}; }

  std::string_view untilMarkup() {
    const char* const first = m_at;
    const void* const found = std::memchr(first, '<', static_cast<std::size_t>(m_end - first));
    require(found != nullptr);
    m_at = static_cast<const char*>(found);
    return since(first);
  }

  std::string_view readName() {
    const char* const first = m_at;
    require(isLetter(*first));
    const char* at = first + 1;
    while (isNameCharacter(*at))
      ++at;
    m_at = at;
    return since(first);
  }

  void readEndTag(std::string_view tag) {
    ++m_at;  // the slash
    require(startsWith(tag));
    m_at += tag.size();
    skip('>');
  }

  void readComment() {
    require(startsWith("!--"));
    m_at += 3;
    const std::string_view rest(m_at, static_cast<std::size_t>(m_end - m_at));
    const std::size_t end = rest.find("--");
    require(end != std::string_view::npos);
    m_decoder.checkComment(rest.substr(0, end));
    m_at += end + 2;
    skip('>');
  }

  StartTag readAnyStartTag() {
    StartTag tag = {readName(), m_attributeCount, m_attributeCount, false};
    while (true) {
      const bool isApart = skipBlanks();
      if (*m_at == '>' || *m_at == '/') break;
      require(isApart);
      if (tag.attributeEnd == m_attributes.size()) m_attributes.emplace_back();
      readAttribute(m_attributes[tag.attributeEnd++]);
    }
    tag.isEmpty = *m_at == '/';
    if (tag.isEmpty) ++m_at;
    skip('>');
    return tag;
  }

  /// Reads a start tag that differs from the last one in the values of its attributes alone, as is the rule in a series of
  /// elements: what stands between the values is compared and not looked at a second time. False, and still before the tag,
  /// for any other.
  bool readLikeLast() {
    const char* const first = m_at;
    const char* same = m_lastTag.data();
    for (std::size_t i = m_last.firstAttribute; i != m_last.attributeEnd; ++i) {
      Attribute& attribute = m_attributes[i];
      const std::string_view value = attribute.value;
      if (!skipSame(same, value.data())) {
        m_at = first;
        return false;
      }
      readValue(attribute);
      same = value.data() + value.size();
    }
    if (skipSame(same, m_lastTag.data() + m_lastTag.size())) return true;
    m_at = first;
    return false;
  }

  /// Goes behind a text that stands here as it stands from `begin` to `end`.
  bool skipSame(const char* begin, const char* end) {
    const std::string_view text(begin, static_cast<std::size_t>(end - begin));
    if (!startsWith(text)) return false;
    m_at += text.size();
    return true;
  }

  void readAttribute(Attribute& attribute) {
    attribute.name = readName();
    attribute.key = keyOf(attribute.name.data(), attribute.name.size());
    skip('=');
    require(*m_at == '"' || *m_at == '\'');
    ++m_at;
    readValue(attribute);
    ++m_at;
  }

  /// From behind the opening quote up to the closing one.
  void readValue(Attribute& attribute) {
    const char quote = m_at[-1];
    const char* const first = m_at;
    const char* at = first;
    attribute.hasReferences = false;
    attribute.isAscii = true;
    while (true) {
      at = skipValueCharacters(at, m_end);
      require(at != m_end);
      if (*at == quote) break;
      const CharacterClass kind = classOf(*at);
      if (kind == NonAscii) {
        attribute.isAscii = false;
        while (classOf(at[1]) == NonAscii)  // words of such are the rule then
          ++at;
      } else if (*at == '&') {
        attribute.hasReferences = true;
      } else {
        require(kind == Ordinary);  // the other quote
      }
      ++at;
    }
    m_at = at;
    attribute.value = since(first);
    if (!attribute.isAscii) m_decoder.checkNonAscii(attribute.value);
    if (attribute.hasReferences)
      withoutReferences(attribute.value);  // they have to be known, also where nobody asks
  }

  QString withoutReferences(std::string_view value) const {
    QString text;
    for (std::size_t found = value.find('&'); found != std::string_view::npos; found = value.find('&')) {
      const std::size_t end = value.find(';', found);
      require(end != std::string_view::npos);
      text += m_decoder.characters(value.substr(0, found));
      append(referredCharacter(value.substr(found + 1, end - found - 1)), text);
      value.remove_prefix(end + 1);
    }
    return text + m_decoder.characters(value);
  }

  const Attribute* searchAttribute(const StartTag& tag, const QString& name) const {
    const quint64 key = keyOf(name.constData(), static_cast<std::size_t>(name.size()));
    for (std::size_t i = tag.attributeEnd; i > tag.firstAttribute; --i) {  // of several the last one holds
      const Attribute& attribute = m_attributes[i - 1];
      if (attribute.key == key && equals(attribute.name, name)) return &attribute;
    }
    return nullptr;
  }

  /// What an element was asked for, and where it was found; null: nowhere.
  struct Question {
    QString name;
    const Attribute* answer;
  };

  void readDeclaration(XmlBytes kind);
  void readBetweenElements();

  const char* m_at;
  const char* m_end;
  PlainDecoder m_decoder;
  SharedTexts m_shared;
  std::vector<Attribute> m_attributes;  // of all open elements, the innermost one's last
  std::size_t m_attributeCount = 0;     // behind them are some that may be like the next ones

  static constexpr auto none = std::numeric_limits<std::size_t>::max();
  StartTag m_last = {{}, none, none, false};  // that was read last; its attributes are still there
  std::string_view m_lastTag;                 // the whole of it, from the name on
  bool m_isLikeLast = false;                  // it differs from the one before it in values alone
  std::vector<Question> m_questions;          // that all elements in a series of such were asked
  std::size_t m_nextQuestion = 0;

  int m_depth = 0;
  bool m_hasNumbers = false;
};

// -------------------------------------------------------------------------------- one element

class PlainView final : public ElementView {
 public:
  /// The position is behind the "<" of the element.
  explicit PlainView(Reader& reader)
      : m_reader(reader), m_tag(reader.readStartTag()), m_isRead(m_tag.isEmpty) {
    m_reader.enter();
  }

  QString tag() const override { return m_reader.tagText(m_tag.name); }

  std::optional<QString> attribute(const QString& name) const override {
    const Attribute* const found = find(name);
    return found ? std::optional(m_reader.valueOf(*found)) : std::nullopt;
  }

  std::optional<ElementText> attributeText(const QString& name) const override {
    const Attribute* const found = find(name);
    if (!found) return std::nullopt;
    if (found->hasReferences || !found->isAscii) return ElementText(m_reader.valueOf(*found));
    return m_reader.numbers(found->value);
  }

  bool hasAttribute(const QString& name) const override { return find(name) != nullptr; }

  ElementText text() const override {
    if (m_isRead) return ElementText(QString());
    m_isRead = true;
    return m_reader.numbers(m_reader.readText(m_tag.name));
  }

  void forEachChild(const ChildVisitor& visit) const override {
    if (m_isRead) return;
    m_isRead = true;
    while (m_reader.nextChild(m_tag.name)) {
      const PlainView child(m_reader);
      visit(child);
      child.finish();
    }
  }

  /// Goes on to the end of the element, whatever was read of it.
  void finish() const {
    if (!m_isRead) forEachChild([](const ElementView&) {});
    m_reader.forgetAttributes(m_tag);
    m_reader.leave();
  }

 private:
  const Attribute* find(const QString& name) const { return m_reader.findAttribute(m_tag, name); }

  Reader& m_reader;
  const Reader::StartTag m_tag;
  mutable bool m_isRead;  // children or text
};

/// "<?xml version="1.0" encoding="..." standalone="..."?>", the last two if they are there.
void Reader::readDeclaration(XmlBytes kind) {
  const bool hasMark = startsWith("\xEF\xBB\xBF");
  if (hasMark) m_at += 3;
  if (!startsWith("<?xml ")) return;
  m_at += std::strlen("<?xml");
  std::string_view encoding = "utf-8";
  constexpr std::string_view expected[] = {"version", "encoding", "standalone"};
  std::size_t next = 0;
  while (skipBlanks() && *m_at != '?') {
    Attribute attribute;
    readAttribute(attribute);
    require(next > 0 || attribute.name == expected[0]);
    while (next < 3 && expected[next] != attribute.name)
      ++next;
    require(next < 3 && !attribute.hasReferences && attribute.isAscii);
    if (next == 0) require(attribute.value == "1.0");
    if (next == 1) encoding = attribute.value;
    if (next == 2) require(attribute.value == "yes" || attribute.value == "no");
    ++next;
  }
  require(next > 0);
  skip('?');
  skip('>');
  if (kind == XmlBytes::Utf8 || equalsIgnoringCase(encoding, "utf-8")) return;
  require(!hasMark && equalsIgnoringCase(encoding, "windows-1251"));
  m_decoder.isWindows1251 = true;
}

/// Blanks and comments outside the root, up to the next "<" or the end.
void Reader::readBetweenElements() {
  while (true) {
    if (m_at == m_end) return;
    skipBlanks();
    skip('<');
    if (*m_at != '!') return;
    readComment();
  }
}

void Reader::readDocument(const std::function<void(const ElementView& root)>& visit) {
  readBetweenElements();
  require(m_at != m_end);
  {
    const PlainView root(*this);
    visit(root);
    root.finish();
  }
  readBetweenElements();
  require(m_at == m_end);
}

}  // namespace

bool readPlainXml(std::string_view bytes, XmlBytes kind,
                  const std::function<void(const ElementView& root)>& visit) {
  if (bytes.size() > longestXml) return false;
  try {
    Reader(bytes, kind).readDocument(visit);
    return true;
  } catch (const NotPlain&) {
    return false;
  }
}

}  // namespace ztcad
