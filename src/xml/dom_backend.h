#pragma once

#include <QDomDocument>
#include <QDomElement>
#include <vector>

#include "element_sink.h"
#include "element_view.h"

namespace ztcad {

/// Writes elements into a DOM tree, below and onto the element that it is given.
class DomSink final : public ElementSink {
 public:
  DomSink(const QDomElement& element, const QDomDocument& document);

  void attribute(const QString& name, const QString& value) override;
  void text(std::string_view ascii) override;

 private:
  void open(const QString& tag) override;
  void close() override;
  void flushText();

  QDomDocument m_document;
  std::vector<QDomElement> m_path;  // from the given element to the one that is open
  QString m_text;
};

/// Reads elements from a DOM tree.
class DomView final : public ElementView {
 public:
  explicit DomView(const QDomElement& element) : m_element(element) {}

  QString tag() const override;
  std::optional<QString> attribute(const QString& name) const override;
  ElementText text() const override;
  void forEachChild(const ChildVisitor& visit) const override;

 private:
  QDomElement m_element;
};

}  // namespace ztcad
