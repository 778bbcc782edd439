#include "xml_view.h"

#include <algorithm>
#include <string>

#include "../number/number_text.h"
#include "../text/wide_utf8.h"
#include "plain_characters.h"
#include "shared_texts.h"
#include "xml_reader.h"

namespace ztcad {

namespace {

class WideUtf8Decoder final : public TextDecoder {
 public:
  QString decoded(std::string_view part) const override { return fromWideUtf8(part); }
};

/// What the views of one text share.
struct ViewedText {
  explicit ViewedText(std::string_view text) : reader(text) {}

  QString decoded(std::string_view bytes) {
    const bool mayBeShared = SharedTexts::isWorthSharing(bytes) && isAscii(bytes);
    return mayBeShared ? shared.get(bytes) : fromWideUtf8(bytes);
  }

  /// Bytes for a parser of numbers. The first call of a document sets the default locale to C.
  ElementText numbers(std::string_view bytes, const char* endOfMemory) {
    if (!hasNumbers) useCLocale();
    hasNumbers = true;
    return ElementText(bytes, decoder, endOfMemory);
  }

  XmlReader reader;
  WideUtf8Decoder decoder;
  SharedTexts shared;
  std::string joinedText;  // of the last element whose text consists of several pieces
  bool hasNumbers = false;
};

class XmlView final : public ElementView {
 public:
  /// The reader has just returned the start of the element.
  explicit XmlView(ViewedText& text)
      : m_text(text),
        m_tag(text.reader.name()),
        m_firstAttribute(text.reader.firstAttribute()),
        m_attributeEnd(text.reader.attributes().size()) {}

  QString tag() const override { return m_text.decoded(m_tag); }

  std::optional<QString> attribute(const QString& name) const override {
    const XmlAttribute* const found = find(name);
    if (!found) return std::nullopt;
    return found->hasReferences ? withoutReferences(found->value) : m_text.decoded(found->value);
  }

  std::optional<ElementText> attributeText(const QString& name) const override {
    const XmlAttribute* const found = find(name);
    if (!found) return std::nullopt;
    if (found->hasReferences) return ElementText(withoutReferences(found->value));
    return m_text.numbers(found->value, m_text.reader.endOfText());
  }

  bool hasAttribute(const QString& name) const override { return find(name) != nullptr; }

  ElementText text() const override {
    std::string& joined = m_text.joinedText;
    std::string_view only;
    bool isJoined = false;
    forEachEvent([&](XmlEvent event) {
      if (event != XmlEvent::Text && event != XmlEvent::Cdata) return;
      const XmlReader& reader = m_text.reader;
      if (!isJoined && only.empty() && !reader.hasReferences()) {
        only = reader.text();
        return;
      }
      if (!isJoined) joined = only;
      isJoined = true;
      if (reader.hasReferences()) {
        appendWithoutReferences(reader.text(), joined);
      } else {
        joined += reader.text();
      }
    });
    if (isJoined) return m_text.numbers(joined, nullptr);
    return m_text.numbers(only, only.empty() ? nullptr : m_text.reader.endOfText());
  }

  void forEachChild(const ChildVisitor& visit) const override {
    if (m_isRead) return;
    m_isRead = true;
    while (true) {
      const XmlEvent event = m_text.reader.next();
      if (event == XmlEvent::EndElement || event == XmlEvent::End) return;
      if (event != XmlEvent::StartElement) continue;
      const XmlView child(m_text);
      visit(child);
      child.finish();
    }
  }

  /// Moves to the end of the element, however much of it was read.
  void finish() const {
    forEachEvent([](XmlEvent) {});
  }

 private:
  /// Reads the element with all its descendants, unless that was done.
  template <typename Take>
  void forEachEvent(Take&& take) const {
    for (int depth = m_isRead ? 0 : 1; depth > 0;) {
      const XmlEvent event = m_text.reader.next();
      if (event == XmlEvent::End) break;
      if (event == XmlEvent::StartElement) ++depth;
      if (event == XmlEvent::EndElement) --depth;
      take(event);
    }
    m_isRead = true;
  }

  /// The last attribute of this name, as in Qt.
  const XmlAttribute* find(const QString& name) const {
    const auto found = findLast([&name](std::string_view other) { return equals(other, name); });
    if (found || isAsciiText(name)) return found;
    return findLast([&name](std::string_view other) { return fromWideUtf8(other) == name; });
  }

  static bool isAsciiText(const QString& name) {
    return std::all_of(name.begin(), name.end(), [](QChar c) { return c.unicode() < 0x80; });
  }

  template <typename IsWanted>
  const XmlAttribute* findLast(IsWanted&& isWanted) const {
    const auto& attributes = m_text.reader.attributes();
    for (std::size_t i = m_attributeEnd; i > m_firstAttribute; --i)
      if (isWanted(attributes[i - 1].name)) return &attributes[i - 1];
    return nullptr;
  }

  ViewedText& m_text;
  const std::string_view m_tag;
  const std::size_t m_firstAttribute;
  const std::size_t m_attributeEnd;
  mutable bool m_isRead = false;  // whether children or text were read
};

}  // namespace

ParseOutcome readXml(const XmlText& text, const std::function<void(const ElementView& root)>& visit) {
  if (text.refusal()) return *text.refusal();
  ViewedText viewed(text.characters());
  XmlEvent event = viewed.reader.next();
  while (event != XmlEvent::StartElement && event != XmlEvent::End)
    event = viewed.reader.next();
  if (event == XmlEvent::StartElement) {
    const XmlView root(viewed);
    visit(root);
    root.finish();
  }
  while (viewed.reader.next() != XmlEvent::End) {
  }
  return viewed.reader.outcome();
}

}  // namespace ztcad
