#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <QString>
#include <string_view>
#include <vector>

#include "../number/number_text.h"
#include "../text/element_text.h"
#include "plain_characters.h"
#include "plain_decoder.h"
#include "plain_xml.h"
#include "read_observer.h"
#include "shared_texts.h"
#include "sibling_cache.h"
#include "unread.h"
#include "xml_outcome.h"

namespace ztcad {

/// Scans the bytes of a plain document once, from start to end. Throws `NotPlain`.
///
/// The buffer ends in ">", which stops every name and whitespace scan; bounds are checked only after ">" and
/// inside values.
class PlainReader {
 public:
  /// @param observer may be null
  PlainReader(std::string_view bytes, XmlBytes kind, ReadObserver* observer);

  /// Reads the whole document and calls `visit` with the root.
  void readDocument(const std::function<void(const ElementView& root)>& visit);

  // The parts of an element. Each call leaves the position after what it has read.

  /// Moves to the next child or to the end tag of the open element.
  /// @param observer learns of text before it; may be null
  /// @return true, with the position after "<", for a child
  bool nextChild(std::string_view tag, ReadObserver* observer);

  /// Reads the start tag whose "<" has been read.
  PlainStartTag readStartTag() {
    const char* const first = m_at;
    const bool isSibling = m_siblings.last().firstAttribute == m_attributeCount && readSibling();
    if (isSibling) {
      m_siblings.keepSibling(since(first));
    } else {
      const PlainStartTag tag = readAnyStartTag();
      m_siblings.keep(tag, since(first));
    }
    m_attributeCount = m_siblings.last().attributeEnd;
    return m_siblings.last();
  }

  /// Reads an element that holds text only, with its end tag.
  std::string_view readText(std::string_view tag);

  const PlainAttribute* findAttribute(const PlainStartTag& tag, const QString& name) {
    return m_siblings.find(tag, name, [this](const PlainStartTag& where, const QString& wanted) {
      return searchAttribute(where, wanted);
    });
  }
  /// Drops the attributes of an element that was read to its end.
  void forgetAttributes(const PlainStartTag& tag) { m_attributeCount = tag.firstAttribute; }

  QString valueOf(const PlainAttribute& attribute) {
    const std::string_view value = attribute.value;
    if (attribute.hasReferences) return m_decoder.withoutReferences(value);
    if (!attribute.isAscii) return m_decoder.characters(value);
    if (SharedTexts::isWorthSharing(value)) return m_sharedTexts.get(value);
    return PlainDecoder::ascii(value);
  }

  /// Bytes for a parser of numbers.
  ElementText numbers(std::string_view bytes) {
    beginNumbers();
    return ElementText(bytes, m_decoder, m_end);
  }
  /// The first call of a document sets the default locale to C.
  void beginNumbers() {
    if (!m_hasNumbers) useCLocale();
    m_hasNumbers = true;
  }

  /// End of the bytes.
  const char* end() const { return m_end; }

  ReadObserver* observer() const { return m_observer; }
  /// Tells the observer of an element which of its attributes nobody has asked for.
  void reportUnread(const PlainStartTag& tag, ReadObserver& observer) const {
    const PlainAttribute* const attributes = m_attributes.data();
    reportUnreadAttributes(attributes + tag.firstAttribute, attributes + tag.attributeEnd,
                           tag.name.data() - 1, observer);
  }

  void enter() { require(++m_depth <= maximalDepth); }
  void leave() { --m_depth; }

 private:
  void readDeclaration(XmlBytes kind);
  void readBetweenElements();
  bool readIgnored();
  void readComment();
  void readInstruction();
  static constexpr std::string_view startOfCdata = "![CDATA[";
  bool isAtCdata() const { return startsWith(startOfCdata); }
  std::string_view readCdata();
  void readEndTag(std::string_view tag);
  PlainStartTag readAnyStartTag();
  bool readSibling();
  void readAttribute(PlainAttribute& attribute);
  void readValue(PlainAttribute& attribute);
  std::string_view readName();
  std::string_view readUntilMarkup();
  const PlainAttribute* searchAttribute(const PlainStartTag& tag, const QString& name) const;

  std::string_view since(const char* first) const { return {first, static_cast<std::size_t>(m_at - first)}; }

  bool startsWith(std::string_view text) const {
    return static_cast<std::size_t>(m_end - m_at) >= text.size() &&
           equalBytes(m_at, text.data(), text.size());
  }

  void skip(char c) {
    require(*m_at == c);
    ++m_at;
  }

  bool skipWhitespace() {
    const char* at = m_at;
    while (isWhitespace(*at))
      ++at;
    const bool skipped = at != m_at;
    m_at = at;
    return skipped;
  }

  /// How many of the bytes from `begin` to `end` the input continues with.
  std::ptrdiff_t equalLength(const char* begin, const char* end) const {
    return commonPrefix(begin, m_at, std::min(end - begin, m_end - m_at));
  }

  const char* m_at;
  const char* m_end;
  ReadObserver* const m_observer;
  PlainDecoder m_decoder;
  SharedTexts m_sharedTexts;
  TagTexts m_tagTexts;
  SiblingCache m_siblings;
  std::vector<PlainAttribute> m_attributes;  // of all open elements, the innermost one last
  std::size_t m_attributeCount = 0;  // entries from here on belong to the last element that was closed
  int m_depth = 0;
  bool m_hasNumbers = false;
};

}  // namespace ztcad
