#include "plain_xml.h"

#include "plain_reader.h"

namespace ztcad {

namespace {

class PlainView final : public ElementView {
 public:
  /// The reader's position is after the "<" of the element.
  PlainView(PlainReader& reader, ReadObserver* observer)
      : ElementView(observer), m_reader(reader), m_tag(reader.readStartTag()), m_isRead(m_tag.isEmpty) {
    m_reader.enter();
  }

  const QString& tag() const override {
    if (m_tag.text) return *m_tag.text;
    if (m_rareTag.isNull())
      m_rareTag = QString::fromLatin1(m_tag.name.data(), static_cast<int>(m_tag.name.size()));
    return m_rareTag;
  }

  std::optional<QString> attribute(const QString& name) const override {
    const PlainAttribute* const found = find(name);
    return found ? std::optional(m_reader.valueOf(*found)) : std::nullopt;
  }

  std::optional<ElementText> attributeText(const QString& name) const override {
    const PlainAttribute* const found = find(name);
    if (!found) return std::nullopt;
    if (found->hasReferences || !found->isAscii) return ElementText(m_reader.valueOf(*found));
    return m_reader.numbers(found->value);
  }

  bool hasAttribute(const QString& name) const override { return find(name) != nullptr; }

  AttributeBytes numberBytes(const QString& name) const override {
    const AttributeBytes found = attributeBytes(name);
    if (found.state == AttributeBytes::Known) m_reader.beginNumbers();
    return found;
  }

  AttributeBytes attributeBytes(const QString& name) const override {
    const PlainAttribute* const found = m_reader.findAttribute(m_tag, name);
    if (!found) return {AttributeBytes::Absent, {}, nullptr};
    if (observer() || found->hasReferences || !found->isAscii || found->value.size() > limits.text) return {};
    return {AttributeBytes::Known, found->value, m_reader.end()};
  }

  ElementText text() const override {
    reportUnreadAttributes();
    if (m_isRead) return ElementText(QString());
    m_isRead = true;
    return m_reader.numbers(m_reader.readText(m_tag.name));
  }

  void forEachChild(const ChildVisitor& visit) const override {
    reportUnreadAttributes();
    if (m_isRead) return;
    m_isRead = true;
    while (m_reader.nextChild(m_tag.name, observer())) {
      const PlainView child(m_reader, observer());
      visit(child);
      child.finish();
    }
  }

  void reportUnread() const override { forEachChild(skipUnread); }

  const char* position() const override { return m_tag.name.data() - 1; }

  const char* attributePosition(const QString& name) const override {
    const PlainAttribute* const found = find(name);
    return found ? found->position() : nullptr;
  }

  /// Moves to the end of the element, however much of it was read.
  void finish() const {
    reportUnreadAttributes();
    if (!m_isRead) forEachChild(skipUnread);
    m_reader.forgetAttributes(m_tag);
    m_reader.leave();
  }

 private:
  const PlainAttribute* find(const QString& name) const {
    const PlainAttribute* const found = m_reader.findAttribute(m_tag, name);
    if (found && observer()) found->isRead = true;
    return found;
  }

  /// Once, after the attributes were read and before anything else is.
  void reportUnreadAttributes() const {
    if (m_areUnreadReported || !observer()) return;
    m_areUnreadReported = true;
    m_reader.reportUnread(m_tag, *observer());
  }

  PlainReader& m_reader;
  const PlainStartTag m_tag;
  mutable QString m_rareTag;  // where the reader holds no text for the tag
  mutable bool m_isRead;      // whether children or text were read
  mutable bool m_areUnreadReported = false;
};

}  // namespace

void PlainReader::readDocument(const std::function<void(const ElementView& root)>& visit) {
  readBetweenElements();
  require(m_at != m_end);
  {
    const PlainView root(*this, m_observer);
    visit(root);
    root.finish();
  }
  readBetweenElements();
  require(m_at == m_end);
}

bool readPlainXml(std::string_view bytes, XmlBytes kind,
                  const std::function<void(const ElementView& root)>& visit, ReadObserver* observer) {
  try {
    PlainReader(bytes, kind, observer).readDocument(visit);
    return true;
  } catch (const NotPlain&) {
    return false;
  } catch (const TooLong&) {
    return false;
  }
}

}  // namespace ztcad
