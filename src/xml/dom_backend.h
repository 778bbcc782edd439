#pragma once

#include <QDomDocument>
#include <QDomElement>
#include <vector>

#include "element_sink.h"
#include "element_view.h"

namespace ztcad {

/// The sink backend that writes into a DOM tree. Attributes and text of the top level go to the given
/// element, other elements become its descendants.
class DomSink final : public ElementSink {
 public:
  DomSink(const QDomElement& element, const QDomDocument& document);

  void attribute(const QString& name, const QString& value) override;
  void plainAttribute(const QString& name, std::string_view ascii) override;
  void text(std::string_view ascii) override;

 private:
  void open(const QString& tag) override;
  void close() override;
  void flushText();

  QDomDocument m_document;
  std::vector<QDomElement> m_path;  // from the given element to the innermost open one
  QString m_text;
};

/// The view backend that reads a DOM tree.
class DomView final : public ElementView {
 public:
  explicit DomView(const QDomElement& element) : m_element(element), m_tag(element.tagName()) {}

  const QString& tag() const override { return m_tag; }
  std::optional<QString> attribute(const QString& name) const override;
  ElementText text() const override;
  void forEachChild(const ChildVisitor& visit) const override;

 private:
  QDomElement m_element;
  QString m_tag;
};

}  // namespace ztcad
