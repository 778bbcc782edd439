#include "xml_view.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include "../number/number_text.h"
#include "../text/text_limits.h"
#include "../text/wide_utf8.h"
#include "plain_characters.h"
#include "read_observer.h"
#include "shared_texts.h"
#include "text_places.h"
#include "unread.h"
#include "xml_reader.h"

namespace ztcad {

namespace {

class WideUtf8Decoder final : public TextDecoder {
 public:
  QString decoded(std::string_view part) const override { return fromWideUtf8(part); }
};

/// The start of the first character of a run that is no ASCII whitespace.
const char* afterWhitespace(std::string_view run) {
  return std::find_if_not(run.begin(), run.end(), XmlCursor::isXmlWhitespace);
}

/// What the views of one text share.
struct ViewedText {
  ViewedText(std::string_view text, ReadObserver* textObserver) : reader(text), observer(textObserver) {}

  XmlEvent next() {
    const XmlEvent event = reader.next();
    if (observer) observe(event);
    return event;
  }

  void observe(XmlEvent event) const {
    using Markup = ReadObserver::Markup;
    const char* const name = reader.name().data();
    if (event == XmlEvent::Comment)
      observer->unreadMarkup(Markup::Comment, reader.text().data() - std::string_view("<!--").size());
    if (event == XmlEvent::Instruction && !reader.isDeclaration())
      observer->unreadMarkup(Markup::Instruction, name - std::string_view("<?").size());
    if (event == XmlEvent::EntityReference) observer->unreadMarkup(Markup::EntityReference, name - 1);
    if (event == XmlEvent::DocumentType)
      observer->unreadMarkup(
          Markup::DocumentType,
          reader.wholeText().data() +
              reader.wholeText().rfind('<', static_cast<std::size_t>(name - reader.wholeText().data())));
  }

  QString decoded(std::string_view bytes) {
    const bool mayBeShared = SharedTexts::isWorthSharing(bytes) && isAscii(bytes);
    return mayBeShared ? shared.get(bytes) : fromWideUtf8(bytes);
  }

  /// Bytes for a parser of numbers. The first call of a document sets the default locale to C.
  ElementText numbers(std::string_view bytes, const char* endOfMemory) {
    beginNumbers();
    return ElementText(bytes, decoder, endOfMemory);
  }
  void beginNumbers() {
    if (!hasNumbers) useCLocale();
    hasNumbers = true;
  }

  /// Adds a piece to the text of an element.
  void join(std::string_view piece, bool hasReferences) {
    if (observer) pieces.push_back({joinedText.size(), piece.data(), hasReferences});
    if (hasReferences) {
      appendWithoutReferences(piece, joinedText);
    } else {
      joinedText += piece;
    }
  }

  /// Where a byte of the joined text comes from: exactly, or for a piece with references its start.
  const char* sourceOf(const char* byte) const {
    if (!isIn(byte, joinedText) || pieces.empty()) return byte;
    const auto offset = static_cast<std::size_t>(byte - joinedText.data());
    const auto after = std::upper_bound(pieces.begin(), pieces.end(), offset,
                                        [](std::size_t at, const Piece& piece) { return at < piece.start; });
    const Piece& piece = *std::prev(after);
    return piece.hasReferences ? piece.source : piece.source + (offset - piece.start);
  }

  struct Piece {
    std::size_t start;  // in the joined text
    const char* source;
    bool hasReferences;
  };

  XmlReader reader;
  ReadObserver* const observer;
  WideUtf8Decoder decoder;
  SharedTexts shared;
  std::string joinedText;     // of the last element whose text consists of several pieces
  std::vector<Piece> pieces;  // of that text, for observers only
  bool hasNumbers = false;
};

class XmlView final : public ElementView {
 public:
  /// The reader has just returned the start of the element.
  XmlView(ViewedText& text, ReadObserver* observer)
      : ElementView(observer),
        m_text(text),
        m_tag(text.reader.name()),
        m_tagText(text.decoded(m_tag)),
        m_firstAttribute(text.reader.firstAttribute()),
        m_attributeEnd(text.reader.attributes().size()) {}

  const QString& tag() const override { return m_tagText; }

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

  AttributeBytes attributeBytes(const QString& name) const override {
    const XmlAttribute* const found = find(name);
    if (!found) return {AttributeBytes::Absent, {}, nullptr};
    if (observer() || found->hasReferences || found->value.size() > limits.text || !found->isAscii) return {};
    return {AttributeBytes::Known, found->value, m_text.reader.endOfText()};
  }

  AttributeBytes numberBytes(const QString& name) const override {
    const AttributeBytes found = attributeBytes(name);
    if (found.state == AttributeBytes::Known) m_text.beginNumbers();
    return found;
  }

  ElementText text() const override {
    reportUnreadAttributes();
    std::string_view only;
    bool isJoined = false;
    m_text.joinedText.clear();
    m_text.pieces.clear();
    forEachEvent([&](XmlEvent event) {
      const XmlReader& reader = m_text.reader;
      if (event == XmlEvent::StartElement && observer())
        observer()->unreadElement(reader.name().data() - 1, m_text.decoded(reader.name()));
      if (event != XmlEvent::Text && event != XmlEvent::Cdata) return;
      if (!isJoined && only.empty() && !reader.hasReferences()) {
        only = reader.text();
        return;
      }
      if (!isJoined) m_text.join(only, false);
      isJoined = true;
      m_text.join(reader.text(), reader.hasReferences());
    });
    if (isJoined) return m_text.numbers(m_text.joinedText, nullptr);
    return m_text.numbers(only, only.empty() ? nullptr : m_text.reader.endOfText());
  }

  void forEachChild(const ChildVisitor& visit) const override {
    reportUnreadAttributes();
    if (m_isRead) return;
    m_isRead = true;
    while (true) {
      const XmlEvent event = m_text.next();
      if (event == XmlEvent::EndElement || event == XmlEvent::End) return;
      if ((event == XmlEvent::Text || event == XmlEvent::Cdata) && observer())
        observer()->unreadText(position(), afterWhitespace(m_text.reader.text()));
      if (event != XmlEvent::StartElement) continue;
      const XmlView child(m_text, observer());
      visit(child);
      child.finish();
    }
  }

  void reportUnread() const override {
    if (observer()) forEachChild(skipUnread);
  }

  const char* position() const override { return m_tag.data() - 1; }

  const char* attributePosition(const QString& name) const override {
    const XmlAttribute* const found = find(name);
    return found ? found->position() : nullptr;
  }

  const char* textPosition(const char* byte) const override { return m_text.sourceOf(byte); }

  /// Moves to the end of the element, however much of it was read.
  void finish() const {
    reportUnread();
    forEachEvent([](XmlEvent) {});
  }

 private:
  /// Reads the element with all its descendants, unless that was done.
  template <typename Take>
  void forEachEvent(Take&& take) const {
    for (int depth = m_isRead ? 0 : 1; depth > 0;) {
      const XmlEvent event = m_text.next();
      if (event == XmlEvent::End) break;
      if (event == XmlEvent::StartElement) ++depth;
      if (event == XmlEvent::EndElement) --depth;
      take(event);
    }
    m_isRead = true;
  }

  const XmlAttribute* find(const QString& name) const {
    const XmlAttribute* const found = search(name);
    if (found && observer()) found->isRead = true;
    return found;
  }

  /// The last attribute of this name, as in Qt.
  const XmlAttribute* search(const QString& name) const {
    const quint64 key = keyOf(name.constData(), static_cast<std::size_t>(name.size()));
    const auto found = findLast([&name, key](const XmlAttribute& attribute) {
      return attribute.key == key && equalsAscii(name, attribute.name);
    });
    if (found || isAsciiText(name)) return found;
    return findLast([&name](const XmlAttribute& attribute) { return fromWideUtf8(attribute.name) == name; });
  }

  /// Once, after the attributes were read and before anything else is.
  void reportUnreadAttributes() const {
    if (m_areUnreadReported || !observer()) return;
    m_areUnreadReported = true;
    const XmlAttribute* const attributes = m_text.reader.attributes().data();
    ztcad::reportUnreadAttributes(attributes + m_firstAttribute, attributes + m_attributeEnd, position(),
                                  *observer());
  }

  static bool isAsciiText(const QString& name) {
    return std::all_of(name.begin(), name.end(), [](QChar c) { return c.unicode() < 0x80; });
  }

  template <typename IsWanted>
  const XmlAttribute* findLast(IsWanted&& isWanted) const {
    const auto& attributes = m_text.reader.attributes();
    for (std::size_t i = m_attributeEnd; i > m_firstAttribute; --i)
      if (isWanted(attributes[i - 1])) return &attributes[i - 1];
    return nullptr;
  }

  ViewedText& m_text;
  const std::string_view m_tag;
  const QString m_tagText;
  const std::size_t m_firstAttribute;
  const std::size_t m_attributeEnd;
  mutable bool m_isRead = false;  // whether children or text were read
  mutable bool m_areUnreadReported = false;
};

void readDocument(ViewedText& viewed, const std::function<void(const ElementView& root)>& visit) {
  XmlEvent event = viewed.next();
  while (event != XmlEvent::StartElement && event != XmlEvent::End)
    event = viewed.next();
  if (event == XmlEvent::StartElement) {
    const XmlView root(viewed, viewed.observer);
    visit(root);
    root.finish();
  }
  while (viewed.next() != XmlEvent::End) {
  }
}

/// The outcome for a text with a part beyond a limit.
ParseOutcome refused(const ViewedText& viewed, const TooLong& error) {
  const std::string_view text = viewed.reader.wholeText();
  const char* at = viewed.sourceOf(error.position());
  if (!isIn(at, text)) at = viewed.reader.position();  // of a joined text its end is known
  return failedParse(text, {error.message(), static_cast<std::size_t>(at - text.data()), true});
}

}  // namespace

ParseOutcome readXml(const XmlText& text, const std::function<void(const ElementView& root)>& visit,
                     ReadObserver* observer) {
  if (text.refusal()) return *text.refusal();
  ViewedText viewed(text.characters(), observer);
  try {
    readDocument(viewed, visit);
  } catch (const TooLong& error) {
    return refused(viewed, error);
  }
  return viewed.reader.outcome();
}

}  // namespace ztcad
